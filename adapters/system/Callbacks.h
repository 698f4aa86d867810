// Call-back classes for hosts of this system: none at all, and one that records what it is told.
//
// They stand behind the call-back seam. Neither does anything with what it is told.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/callback.h"

namespace twqb {

// A host without the class.
class NoCallbackFactory : public CallbackFactory {
 public:
  // Raises 429.
  std::unique_ptr<Callback> CreateCallback() override;
};

// What a call-back object was told: a mode or a text.
using CallbackEvent = std::variant<int, std::string>;

// Makes objects that begin in mode 0 and record every mode and text that they are given, all into one list.
class RecordingCallbackFactory : public CallbackFactory {
 public:
  std::unique_ptr<Callback> CreateCallback() override;

  // In order. Objects may outlive the factory; what they are told then is recorded nowhere.
  [[nodiscard]] const std::vector<CallbackEvent>& Events() const { return *events_; }
  void Clear() { events_->clear(); }

 private:
  std::shared_ptr<std::vector<CallbackEvent>> events_ = std::make_shared<std::vector<CallbackEvent>>();
};

}  // namespace twqb
