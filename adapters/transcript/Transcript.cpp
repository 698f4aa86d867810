#include "adapters/transcript/Transcript.h"

#include "adapters/transcript/Recorded.h"
#include "adapters/transcript/TranscriptDatabase.h"
#include "adapters/transcript/TranscriptSession.h"
#include "adapters/transcript/TranscriptSurroundings.h"

namespace twqb {

namespace {

template <typename Decorator, typename Seam>
std::unique_ptr<Decorator> Decorate(Seam* inner, TranscriptWriter& writer) {
  return inner == nullptr ? nullptr : std::make_unique<Decorator>(*inner, writer);
}

}  // namespace

TranscriptPlatform::TranscriptPlatform(const Platform& inner, TranscriptWriter& writer)
    : writer_(writer),
      database_(Decorate<transcript::TranscriptProvider>(inner.database, writer)),
      quickbooks_(Decorate<transcript::TranscriptTransportFactory>(inner.quickbooks, writer)),
      desk_(Decorate<transcript::TranscriptDesk>(inner.desk, writer)),
      machine_(Decorate<transcript::TranscriptMachine>(inner.machine, writer)),
      callback_(Decorate<transcript::TranscriptCallbackFactory>(inner.callback, writer)) {}

TranscriptPlatform::~TranscriptPlatform() = default;

Platform TranscriptPlatform::Decorated() const {
  return {.database = database_.get(),
          .quickbooks = quickbooks_.get(),
          .desk = desk_.get(),
          .machine = machine_.get(),
          .callback = callback_.get()};
}

void TranscriptPlatform::Call(std::string_view operation, const EventList& arguments) {
  writer_.Write("call", {{"operation", operation}, {"arguments", arguments}});
}

void TranscriptPlatform::Return(std::string_view operation, const EventValue& value) {
  writer_.Write("return", {{"operation", operation}, {"value", value}});
}

void TranscriptPlatform::Return(std::string_view operation, const PlatformError& raised) {
  writer_.Write("return", {{"operation", operation}, {"raised", transcript::Raised(raised)}});
}

void TranscriptPlatform::Return(std::string_view operation, const DeskGaveUp& gaveUp) {
  writer_.Write("return", {{"operation", operation}, {"raised", transcript::Raised(gaveUp)}});
}

}  // namespace twqb
