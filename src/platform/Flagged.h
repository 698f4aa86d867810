// Sets a flag for as long as it lives, whichever way its scope is left.
#pragma once

namespace twqb {

class Flagged {
 public:
  explicit Flagged(bool& flag) : flag_(flag) { flag_ = true; }
  ~Flagged() { flag_ = false; }
  Flagged(const Flagged&) = delete;
  Flagged& operator=(const Flagged&) = delete;

 private:
  bool& flag_;
};

}  // namespace twqb
