#include "services/Conversions.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <optional>

#include "platform/Text.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"

namespace twqb {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Minutes to add to local time for UTC.
int BiasOf(Machine& machine) {
  const auto zone = machine.GetTimeZoneInformation();
  return zone.state == TimeZoneState::Daylight ? zone.bias + zone.daylightBias : zone.bias;
}

int BiasNow() { return BiasOf(TheMachine()); }

struct LinkLookup {
  std::string_view kind;
  std::string_view statement;  // {} is the key
};
constexpr std::array kLinkLookups = {
    LinkLookup{"EMPLOYEE", "SELECT QBLinkID, EmployeeID FROM Employee WHERE EmployeeID = '{}';"},
    LinkLookup{"CLIENT", "SELECT QBLinkID, ClientID FROM Client WHERE ClientID = '{}';"},
    LinkLookup{"PROJECT", "SELECT QBLinkID, ProjectID FROM Project WHERE ProjectID = '{}';"},
    LinkLookup{"ACTIVITY", "SELECT QBLinkID, ActivityID FROM Activity WHERE ActivityID = '{}';"},
    LinkLookup{"EXPENSE", "SELECT QBLinkID, ExpID FROM Expense WHERE ExpID = '{}';"},
};

// The rest of a rich-text note behind a backslash at depth 1: takes the control word, gives what is kept of it.
std::string TakeControlWord(std::string_view& rest) {
  constexpr std::string_view kParagraph = "par";
  constexpr std::string_view kBehindParagraph = "\\ \r";
  if (rest.starts_with(kParagraph) && rest.size() > kParagraph.size() &&
      kBehindParagraph.find(rest[kParagraph.size()]) != std::string_view::npos) {
    rest.remove_prefix(kParagraph.size());
    if (rest.starts_with(' ')) rest.remove_prefix(1);
    return std::string(kCrLf);
  }
  if (!rest.empty() && std::string_view("\\{}").find(rest.front()) != std::string_view::npos) {
    std::string kept(1, rest.front());
    rest.remove_prefix(1);
    return kept;
  }
  rest.remove_prefix(std::min(rest.size(), rest.find_first_of("\\{} \r")));
  if (rest.starts_with(' ')) rest.remove_prefix(1);
  return {};
}

}  // namespace

std::string ReplaceJunkChars(std::string_view text) {
  std::string result(text);
  for (const char junk : std::string_view(",#;:'")) std::ranges::replace(result, junk, ' ');
  return result;
}

std::string FormatPhoneForQB(std::string_view text) {
  std::string digits;
  std::ranges::copy_if(text, std::back_inserter(digits), IsDigit);
  if (digits.empty()) return {};
  constexpr std::size_t kArea = 3;
  constexpr std::size_t kExchange = 6;
  std::string result = "(";
  for (std::size_t i = 0; i < digits.size(); ++i) {
    result += digits[i];
    if (i + 1 == kArea) result += ")-";
    if (i + 1 == kExchange) result += "-";
  }
  if (digits.size() < kArea) result += ")";
  return result;
}

std::string CleanPhoneFromQB(std::string_view text) {
  std::string result(text);
  std::erase_if(result, [](char c) { return std::string_view(" ().-_[],").find(c) != std::string_view::npos; });
  return result;
}

std::string DoubleQuotes(std::string_view text) { return ReplaceAll(text, "'", "''"); }
std::string FixQuote(std::string_view text) { return DoubleQuotes(text); }

bool IsDaylightTime() {
  bool daylight = false;
  IgnoreErrors([&] { daylight = TheMachine().GetTimeZoneInformation().state == TimeZoneState::Daylight; });
  return daylight;
}

Date LocalToUTC(Date date) { return date.PlusMinutes(BiasNow()); }
Date UTCToLocal(Date date) { return date.PlusMinutes(-BiasNow()); }

std::string ZoneName(Machine& machine) {
  constexpr int kMinutesOfHour = 60;
  const auto ahead = -BiasOf(machine);
  if (ahead == 0) return "UTC";
  const auto size = std::abs(ahead);
  const auto rest = size % kMinutesOfHour;
  return fmt::format("UTC{}{}{}", ahead < 0 ? "-" : "+", size / kMinutesOfHour,
                     rest == 0 ? "" : fmt::format(":{:02}", rest));
}

std::string FormatSQLDate(Date date, DateForm form) {
  const auto c = date.ToCivil();
  auto text = fmt::format("{:02}/{:02}/{:04}", c.month, c.day, c.year);
  if (form == DateForm::WithTime) text += fmt::format(" {:02}:{:02}:{:02}", c.hour, c.minute, c.second);
  return text;
}

Date DateFloor(Date date) {
  static const auto kEarliest = Date::FromCivil({.year = 1901, .month = 1, .day = 1});
  return std::max(date, kEarliest);
}

std::string GetQBLinkIDOf(std::string_view kind, std::string_view key) {
  const auto upper = UpperCase(kind);
  for (const auto& lookup : kLinkLookups) {
    if (lookup.kind == upper) return GetScalarFromSQL(Sql(fmt::runtime(lookup.statement), key));
  }
  return {};
}

bool ValidateSIN(std::string_view text) {
  constexpr std::size_t kLength = 11;
  auto sin = Trim(text);
  while (sin.find("  ") != std::string::npos) sin = ReplaceAll(sin, "  ", " ");
  if (sin.size() != kLength) return false;
  int sum = 0;
  int position = 0;
  for (std::size_t i = 0; i < kLength; ++i) {
    const char c = sin[i];
    if (i == 3 || i == 7) {
      if (c != ' ' && c != '-') return false;
      continue;
    }
    if (!IsDigit(c)) return false;
    const int value = (c - '0') * (++position % 2 == 0 ? 2 : 1);
    sum += value / 10 + value % 10;
  }
  return sum % 10 == 0;
}

std::string GenerateGUID() {
  std::optional<GuidBytes> bytes;
  IgnoreErrors([&] { bytes = TheMachine().CreateGuid(); });
  if (!bytes) {
    TellErrorToObserver("GenerateGUID", 0, "no GUID could be generated");
    TheDesk().ShowMessageBox(
        {.text = "Could Not Generate A GUID", .title = "Tallywick - QuickBooks Client", .icon = BoxIcon::Error});
    return {};
  }
  std::string text = "{";
  for (std::size_t i = 0; i < bytes->size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += fmt::format("{:02X}", (*bytes)[i]);
  }
  return text + "}";
}

std::string StripRichText(std::string_view text) {
  std::string result;
  int depth = 0;
  std::string_view rest = text;
  while (!rest.empty()) {
    const char c = rest.front();
    rest.remove_prefix(1);
    if (c == '{') {
      ++depth;
    } else if (c == '}') {
      --depth;
    } else if (depth == 1 && c == '\\') {
      result += TakeControlWord(rest);
    } else if (depth == 1 && c != '\r' && c != '\n') {
      result += c;
    }
  }
  return result.empty() ? std::string(text) : result;
}

}  // namespace twqb
