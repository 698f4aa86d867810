// The seam to the host's call-back class: a numeric mode that can be read and set, and a text that can be set.
#pragma once

#include <memory>
#include <string_view>

namespace twqb {

class Callback {
 public:
  virtual ~Callback() = default;
  [[nodiscard]] virtual int Mode() = 0;
  virtual void SetMode(int mode) = 0;
  virtual void SetText(std::string_view text) = 0;
};

// Makes the host's object; raises when the class is not there.
class CallbackFactory {
 public:
  virtual ~CallbackFactory() = default;
  virtual std::unique_ptr<Callback> CreateCallback() = 0;
};

}  // namespace twqb
