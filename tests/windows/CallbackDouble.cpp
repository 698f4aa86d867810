// The double of a host's call-back class TWQBCallback90.CMain: a line for each mode and text that it is given.

#include <cstdlib>
#include <fstream>

#include "tests/windows/Doubles.h"

namespace twqb::doubles {

namespace {

using windows::Variant;

void Note(const std::string& line) {
  const char* const file = std::getenv("TWQB_DOUBLE_CALLBACK");
  if (file != nullptr) std::ofstream(file, std::ios::app | std::ios::binary) << line << '\n';
}

class CallbackDouble : public Double<CallbackDouble> {
 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {
        {"mode", [](const CallbackDouble& own, const Arguments&) { return Variant(own.mode_); }}, {"text", nullptr}};
    return members;
  }
  void SetMember(const std::string& name, const Variant& value) override {
    if (SameName(name, "Mode")) {
      mode_ = value.Number();
      Note("mode " + value.Text());
    } else {
      Note("text " + value.Text());
    }
  }

 private:
  long mode_ = 0;
};

}  // namespace

IDispatch* MakeCallback() { return new CallbackDouble; }

}  // namespace twqb::doubles
