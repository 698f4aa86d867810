#include "adapters/system/Callbacks.h"

#include <utility>

#include "platform/PlatformError.h"

namespace twqb {

namespace {

class RecordingCallback : public Callback {
 public:
  explicit RecordingCallback(std::shared_ptr<std::vector<CallbackEvent>> events) : events_(std::move(events)) {}

  [[nodiscard]] int Mode() override { return mode_; }
  void SetMode(int mode) override {
    mode_ = mode;
    events_->emplace_back(mode);
  }
  void SetText(std::string_view text) override { events_->emplace_back(std::string(text)); }

 private:
  std::shared_ptr<std::vector<CallbackEvent>> events_;
  int mode_ = 0;
};

}  // namespace

std::unique_ptr<Callback> NoCallbackFactory::CreateCallback() { throw PlatformError(error::kCannotCreateObject); }

std::unique_ptr<Callback> RecordingCallbackFactory::CreateCallback() {
  return std::make_unique<RecordingCallback>(events_);
}

}  // namespace twqb
