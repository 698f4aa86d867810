// The text form of scripted faults: one fault a line, blank lines and lines that begin with # aside.
//
//   REQUEST N status CODE SEVERITY ["text"]         the N-th request element of that name (CustomerAddRq) is answered
//   so POINT N raise|raise-after NUMBER ["text"] [WHAT]  the N-th call at that point (for which WHAT holds) raises
//
// N counts from 1 in this process, for each line on its own. SEVERITY is Info, Warn or Error. NUMBER is hexadecimal
// (0x80040416) or decimal. A quote inside a text is doubled; without a text, or with an empty one, an error has the
// published text of its number. `raise` fails before the call takes effect, `raise-after` once it has. Points, and what
// WHAT says there, are in `FaultPoint`. This file reads; FaultGate.h and FaultAnswers.h carry out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/PlatformError.h"

namespace twqb {

enum class FaultTiming : std::uint8_t { Before, After };

// Where a scripted error can strike; the word of the file, and what WHAT may say.
enum class FaultPoint : std::uint8_t {
  CreateTransport,  // the operations of the session by their names; no WHAT
  GetVersion,
  OpenConnection,
  BeginSession,
  GetCurrentCompanyFileName,
  DoRequests,              // a document of requests
  DoSubscriptionRequests,  // a document of subscription requests
  EndSession,
  CloseConnection,
  Sql,      // sql: a statement, SELECTs and the opening of tables too; how it begins, without regard to case and blanks
  Connect,  // connect: a database connection is opened
  Row,      // row: a row is written through a recordset; the table
  Settings,  // settings: a profile value is read or written; `read` or `write`, and behind it or alone the key
  Log,       // log: a line of the log; how it begins
  File,      // file: the file dialog
  Copy,      // copy: a file is copied
  Guid,      // guid: a GUID is asked for
  Box,       // box: a message box; how its text begins
  Form,      // form: show, update or unload (of msgForm), or vendor (frmPickVendor)
  Callback,  // callback: create, mode (read or set) or text
};

struct RaiseFault {
  FaultPoint point = FaultPoint::Sql;
  std::size_t nth = 1;
  FaultTiming timing = FaultTiming::Before;
  ErrorNumber number = 0;
  std::string description;
  std::string access;  // settings alone: "read", "write", or empty for both
  std::string what;    // empty: every call at the point
};

struct StatusFault {
  std::string request;  // "CustomerAddRq"
  std::size_t nth = 1;
  int code = 0;
  std::string severity;
  std::string message;
};

struct FaultScript {
  std::vector<RaiseFault> raises;
  std::vector<StatusFault> statuses;
};

// A line that is none of the above. `what()` names the line, its text, and what may stand there.
class FaultsError : public std::runtime_error {
 public:
  FaultsError(std::size_t line, const std::string& message) : std::runtime_error(message), line_(line) {}
  [[nodiscard]] std::size_t line() const noexcept { return line_; }  // from 1

 private:
  std::size_t line_;
};

// Raises FaultsError at the first line that can't be read.
[[nodiscard]] FaultScript ParseFaults(std::string_view text);

// What an error of that number says when its line gives no text.
[[nodiscard]] std::string FaultDescription(ErrorNumber number);

}  // namespace twqb
