// Decorators over the five seams that write what passes through them as events of a transcript.
//
// They stand between the library and the adapters of a host; neither knows of them, and no call, result or error
// changes on its way. An event is written when its call has returned, with its result, or with "raised" in its place
// when it failed; a document is written before it goes out. Not written, for they would flood the record or tell
// nothing: clock, time zone, GUIDs, random numbers, message pump, beep, reads of fields and moves in a recordset, reads
// of the call-back's mode that succeed.
#pragma once

#include <memory>
#include <string_view>

#include "adapters/transcript/EventValue.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"

namespace twqb {

class TranscriptWriter;

class TranscriptPlatform {
 public:
  // The seams of `inner` and the writer must outlive this object. A seam that `inner` does not have is not there in
  // the decorated platform either.
  TranscriptPlatform(const Platform& inner, TranscriptWriter& writer);
  ~TranscriptPlatform();
  TranscriptPlatform(const TranscriptPlatform&) = delete;
  TranscriptPlatform& operator=(const TranscriptPlatform&) = delete;

  // What the library is to be composed with; valid as long as this object.
  [[nodiscard]] Platform Decorated() const;

  // The host's own events: an operation of the library begins, returns a value, or raises.
  void Call(std::string_view operation, const EventList& arguments);
  void Return(std::string_view operation, const EventValue& value);
  void Return(std::string_view operation, const PlatformError& raised);
  void Return(std::string_view operation, const DeskGaveUp& gaveUp);

 private:
  TranscriptWriter& writer_;
  std::unique_ptr<ado::Provider> database_;
  std::unique_ptr<TransportFactory> quickbooks_;
  std::unique_ptr<Desk> desk_;
  std::unique_ptr<Machine> machine_;
  std::unique_ptr<CallbackFactory> callback_;
};

}  // namespace twqb
