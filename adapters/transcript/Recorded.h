// The event of one call: written once the call has returned or failed, and then the failure goes on its way.
#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "adapters/transcript/EventValue.h"
#include "adapters/transcript/TranscriptWriter.h"
#include "platform/PlatformError.h"

namespace twqb::transcript {

[[nodiscard]] inline EventFields Raised(const PlatformError& failure) {
  return {{"number", HexNumber(failure.number())}, {"description", failure.description()}};
}

// A failure that has no number: a desk that gave up.
[[nodiscard]] inline EventFields Raised(const std::exception& failure) {
  return {{"number", nullptr}, {"description", failure.what()}};
}

// Runs `call` and writes nothing when it succeeds; when it raises, the event with "raised" behind `fields`.
template <typename Function>
auto RecordFailure(TranscriptWriter& writer, std::string_view kind, const EventFields& fields, Function call) {
  const auto writeRaised = [&](EventFields raised) {
    auto event = fields;
    event["raised"] = std::move(raised);
    writer.Write(kind, event);
  };
  try {
    return call();
  } catch (const PlatformError& failure) {
    writeRaised(Raised(failure));
    throw;
  } catch (const std::exception& failure) {
    writeRaised(Raised(failure));
    throw;
  }
}

// Runs `call` and writes its event. `addResult(event, result)` adds what the result has to tell.
template <typename Function, typename AddResult>
auto Record(TranscriptWriter& writer, std::string_view kind, EventFields fields, Function call, AddResult addResult) {
  auto result = RecordFailure(writer, kind, fields, call);
  addResult(fields, result);
  writer.Write(kind, fields);
  return result;
}

// The same for a call whose event tells nothing of a result.
template <typename Function>
auto Record(TranscriptWriter& writer, std::string_view kind, const EventFields& fields, Function call) {
  if constexpr (std::is_void_v<decltype(call())>) {
    RecordFailure(writer, kind, fields, call);
    writer.Write(kind, fields);
  } else {
    return Record(writer, kind, fields, call, [](EventFields&, const auto&) {});
  }
}

}  // namespace twqb::transcript
