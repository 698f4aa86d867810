// The session library's own object of the last answer, for a host that is to have a list of it as it came.
//
// The transports of a factory note each answer here. One is held only while somebody keeps it: all that the product
// reads itself it reads from the text, and answers may be large.
#pragma once

#include "adapters/windows/late/LateObject.h"

namespace twqb::windows {

class LastAnswer {
 public:
  // Answers are held while one lives.
  class Kept {
   public:
    explicit Kept(LastAnswer& last) : last_(last) { ++last_.keepers_; }
    ~Kept();
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;

   private:
    LastAnswer& last_;
  };

  void Note(LateObject answer);

  // What came for the first request of the set, a list for a query. Raises 91 where nothing did, and what the library
  // raises.
  [[nodiscard]] LateObject Detail();

 private:
  LateObject answer_;
  int keepers_ = 0;
};

}  // namespace twqb::windows
