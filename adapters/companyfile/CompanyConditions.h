// How a program is met that wants a session with a company file: what its administrator allows, and what QuickBooks
// is busy with. Stored in the file, so that each way in which a connection fails can be set up and met again.
//
// The values are plain, and each has a name and a text form, for storage and hosts alike. The errors that they lead to
// are CompanyTransport's; documents that are carried out without a session do not meet them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/transport.h"

namespace twqb::company {

enum class Permission : std::uint8_t { Granted, Withheld };
enum class DialogState : std::uint8_t { Closed, Open };
enum class Feature : std::uint8_t { Enabled, Disabled };
// How the file takes what is not settled about sets that are remembered: the way that is harder for a program, or the
// easier one. Late is as Strict, and an answer is stored behind the work, so that a crash between them loses it.
enum class RecoveryReading : std::uint8_t { Strict, Lenient, Late };
enum class HostAnswer : std::uint8_t { Answered, Refused, Unknown };

inline constexpr std::string_view kNeverClosed = "none";  // in place of a closing date

// What a new file begins with.
struct CompanyConditions {
  Permission application = Permission::Granted;     // to use the file at all
  Permission automaticLogon = Permission::Granted;  // to have it opened when QuickBooks has none open
  DialogState dialog = DialogState::Closed;         // a window of QuickBooks waits for the person at it
  HostAnswer hostQuery = HostAnswer::Answered;      // refused: with status 3260; unknown: no document has it
  Permission personalData = Permission::Granted;    // to see and to set the numbers of employees
  Feature timeTracking = Feature::Enabled;          // disabled: its requests get status 3250
  RecoveryReading recovery = RecoveryReading::Strict;
  std::string closingDate{kNeverClosed};  // yyyy-mm-dd: the last day of which the books are closed
  InterfaceVersion interfaceVersion = {.major = 5, .minor = 0};  // of the QuickBooks that has the file open
};

// One of the conditions, by its name.
struct Condition {
  std::string_view name;     // "auto-logon"
  std::string_view allowed;  // the values for a person to read: "granted or withheld"
  std::string_view meaning;  // what a value beside the first leads to
  std::string (*text)(const CompanyConditions& conditions);
  // False, with nothing changed, for a value that is not allowed. Words are read in any case.
  bool (*set)(CompanyConditions& conditions, std::string_view value);
};

// All of them, in the order in which they are shown.
[[nodiscard]] std::span<const Condition> Conditions();
// The condition of that name, in any case; nullptr when there is none.
[[nodiscard]] const Condition* FindCondition(std::string_view name);

}  // namespace twqb::company
