// The rule that no error reaches the host: the guards around a routine's body, the one error box, and the log.
//
// The guards catch PlatformError alone. A desk that gives up passes through them to the host.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/PlatformError.h"
#include "platform/machine.h"

namespace twqb {

// Shows the error box (warning icon, "WARNING"), pumps messages and beeps. Ignores errors of its own.
void ErrorHandler(ErrorNumber lngNumber, std::string_view strDescription, std::string_view strProcedure);

// The box that the routines of some tables show instead: plain, titled "Error", in words of its own.
void ShowErrorIn(std::string_view strProcedure, const PlatformError& raised);

// In whose words an error of a routine is told.
enum class ErrorReport : std::uint8_t { ErrorHandler, OwnBox };
void ReportError(ErrorReport report, std::string_view strProcedure, const PlatformError& raised);

// As boxes and logs print it: 0x8004040C is -2147220468.
[[nodiscard]] std::int32_t SignedNumber(ErrorNumber number);

// The log of this month, by the machine's clock.
[[nodiscard]] std::string LogFile(Machine& machine);

// Appends one line to the month's log beside the library. A line that can't be written is lost without a word.
void WriteLog(std::string_view strLine);
// Writes a line that tells of an error which no box tells of.
void LogError(std::string_view strProcedure, std::string_view strLine, ErrorNumber number = 0);

// The error that `body` raised, or nothing.
template <typename Body>
[[nodiscard]] std::optional<PlatformError> CatchError(Body&& body) {
  try {
    std::forward<Body>(body)();
  } catch (const PlatformError& raised) {
    return raised;
  }
  return std::nullopt;
}

// Runs a section whose errors are ignored; answers whether it went through.
template <typename Body>
bool IgnoreErrors(Body&& body) {
  return !CatchError(std::forward<Body>(body)).has_value();
}

// Runs a routine's body under its name: an error goes to ErrorHandler and the result is `failure`.
template <typename Result, typename Body>
[[nodiscard]] Result RunAs(std::string_view strProcedure, Result failure, Body&& body) {
  std::optional<Result> result;
  if (const auto raised = CatchError([&] { result.emplace(std::forward<Body>(body)()); })) {
    ErrorHandler(raised->number(), raised->description(), strProcedure);
    return failure;
  }
  return std::move(*result);
}

// The same for a routine without a result; answers whether it went through.
template <typename Body>
bool RunAs(std::string_view strProcedure, Body&& body) {
  return RunAs(strProcedure, false, [&] {
    std::forward<Body>(body)();
    return true;
  });
}

}  // namespace twqb
