#include "adapters/companyfile/CompanyConditions.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "messages/ValueFormat.h"
#include "platform/Text.h"

namespace twqb::company {

namespace {

// The words of each enumeration, in the order of its values.
template <std::size_t kCount>
using Words = std::array<std::string_view, kCount>;
constexpr Words<2> WordsOf(Permission) { return {"granted", "withheld"}; }
constexpr Words<2> WordsOf(DialogState) { return {"closed", "open"}; }
constexpr Words<2> WordsOf(Feature) { return {"enabled", "disabled"}; }
constexpr Words<3> WordsOf(RecoveryReading) { return {"strict", "lenient", "late"}; }
constexpr Words<3> WordsOf(HostAnswer) { return {"answered", "refused", "unknown"}; }

template <auto kField>
std::string WordText(const CompanyConditions& conditions) {
  const auto value = conditions.*kField;
  return std::string(WordsOf(value)[static_cast<std::size_t>(value)]);
}

template <auto kField>
bool SetWord(CompanyConditions& conditions, std::string_view word) {
  auto& value = conditions.*kField;
  const auto words = WordsOf(value);
  const auto* const found = std::ranges::find_if(words, [&](auto known) { return SameName(known, word); });
  if (found == words.end()) return false;
  value = static_cast<std::remove_reference_t<decltype(value)>>(found - words.begin());
  return true;
}

std::optional<int> SmallNumber(std::string_view digits) {
  constexpr std::size_t kMostDigits = 2;
  constexpr std::string_view kDigits = "0123456789";
  if (digits.empty() || digits.size() > kMostDigits) return std::nullopt;
  if (digits.find_first_not_of(kDigits) != std::string_view::npos) return std::nullopt;
  int number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

std::string VersionText(const CompanyConditions& conditions) {
  return fmt::format("{}.{}", conditions.interfaceVersion.major, conditions.interfaceVersion.minor);
}

bool SetVersion(CompanyConditions& conditions, std::string_view text) {
  const auto point = text.find('.');
  if (point == std::string_view::npos) return false;
  const auto major = SmallNumber(text.substr(0, point));
  const auto minor = SmallNumber(text.substr(point + 1));
  if (!major || !minor) return false;
  conditions.interfaceVersion = {.major = *major, .minor = *minor};
  return true;
}

std::string ClosingDateText(const CompanyConditions& conditions) { return conditions.closingDate; }

bool SetClosingDate(CompanyConditions& conditions, std::string_view text) {
  if (SameName(text, kNeverClosed)) {
    conditions.closingDate = kNeverClosed;
    return true;
  }
  const auto date = messages::ParseDateText(text);
  if (date) conditions.closingDate = messages::DateText(*date);
  return date.has_value();
}

constexpr std::array kConditions = {
    Condition{.name = "permission",
              .allowed = "granted or withheld",
              .meaning = "no session begins",
              .text = WordText<&CompanyConditions::application>,
              .set = SetWord<&CompanyConditions::application>},
    Condition{.name = "auto-logon",
              .allowed = "granted or withheld",
              .meaning = "no session begins unless QuickBooks has the file open",
              .text = WordText<&CompanyConditions::automaticLogon>,
              .set = SetWord<&CompanyConditions::automaticLogon>},
    Condition{.name = "dialog",
              .allowed = "closed or open",
              .meaning = "no session begins: QuickBooks waits for an answer",
              .text = WordText<&CompanyConditions::dialog>,
              .set = SetWord<&CompanyConditions::dialog>},
    Condition{.name = "host-query",
              .allowed = "answered, refused or unknown",
              .meaning = "the query for the host gets status 3260, or no form of it is understood",
              .text = WordText<&CompanyConditions::hostQuery>,
              .set = SetWord<&CompanyConditions::hostQuery>},
    Condition{.name = "personal-data",
              .allowed = "granted or withheld",
              .meaning = "an employee's number is left out of answers and refused with status 3261",
              .text = WordText<&CompanyConditions::personalData>,
              .set = SetWord<&CompanyConditions::personalData>},
    Condition{.name = "time-tracking",
              .allowed = "enabled or disabled",
              .meaning = "requests for time tracking are answered with status 3250",
              .text = WordText<&CompanyConditions::timeTracking>,
              .set = SetWord<&CompanyConditions::timeTracking>},
    Condition{.name = "recovery",
              .allowed = "strict, lenient or late",
              .meaning = "lenient: what is open about sets with identifiers is taken the way that is easier for "
                         "programs; late: an answer is stored behind the work, so that a crash loses it",
              .text = WordText<&CompanyConditions::recovery>,
              .set = SetWord<&CompanyConditions::recovery>},
    Condition{.name = "closing-date",
              .allowed = "none or a date yyyy-mm-dd",
              .meaning = "transactions of that day or before are answered with status 3171",
              .text = ClosingDateText,
              .set = SetClosingDate},
    Condition{.name = "interface-version",
              .allowed = "a version such as 5.0",
              .meaning = "what QuickBooks' interface reports before a session",
              .text = VersionText,
              .set = SetVersion},
};

}  // namespace

std::span<const Condition> Conditions() { return kConditions; }

const Condition* FindCondition(std::string_view name) {
  const auto* const found =
      std::ranges::find_if(kConditions, [&](const auto& condition) { return SameName(condition.name, name); });
  return found == kConditions.end() ? nullptr : found;
}

}  // namespace twqb::company
