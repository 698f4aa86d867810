#include "adapters/windows/qbfc/HostCallback.h"

#include "adapters/windows/late/LateObject.h"
#include "platform/PlatformError.h"

namespace twqb::windows {

namespace {

class HostCallback : public Callback {
 public:
  explicit HostCallback(LateObject object) : object_(std::move(object)) {}

  int Mode() override { return static_cast<int>(object_.Get("Mode").Number()); }
  void SetMode(int mode) override { object_.Put("Mode", Variant(static_cast<long>(mode))); }
  void SetText(std::string_view text) override { object_.Put("Text", Variant(text)); }

 private:
  LateObject object_;
};

}  // namespace

std::unique_ptr<Callback> HostCallbackFactory::CreateCallback() {
  try {
    return std::make_unique<HostCallback>(LateObject::Create("TWQBCallback90.CMain"));
  } catch (const PlatformError&) {
    throw PlatformError(error::kCannotCreateObject);
  }
}

}  // namespace twqb::windows
