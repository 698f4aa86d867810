#include "lists/EmployeeNumbers.h"

#include <fmt/core.h>

#include <limits>

#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

constexpr std::size_t kToTheEnd = std::numeric_limits<std::size_t>::max();
constexpr std::size_t kGreatestLength = 15;
constexpr std::string_view kBritishMask = "AA 00 00 00 A";

// `count` characters from a position on, which counts from 1.
std::string Mid(std::string_view text, std::size_t position, std::size_t count) {
  return Left(text.substr(Left(text, position - 1).size()), count);
}

bool IsDigit(std::string_view character) { return character.size() == 1 && character[0] >= '0' && character[0] <= '9'; }

bool FileOrHostIs(std::string_view country) {
  return UpperCase(Vars().g_QBCountry) == country || UpperCase(Vars().g_HostCountry) == country;
}

// The third group begins with the last character of the second: a stored number has eight characters. Nine make a text
// of twelve, which is no number.
void AssignSocialInsurance(const RequestField& request, std::string_view stored, std::string_view employeeId) {
  const auto number = fmt::format("{} {} {}", Left(stored, 3), Mid(stored, 4, 3), Mid(stored, 6, kToTheEnd));
  if (CharacterCount(number) != 11 || !ValidateSIN(number)) {
    WriteLog(fmt::format("\"{}\" is not a valid Social Insurance Number. EmployeeID = \"{}\"", number, employeeId));
    return;
  }
  request["Sin"].SetValue(Left(number, kGreatestLength));
}

// Two letters, three pairs of digits, a letter. The pairs are not looked at.
std::string NationalInsurance(std::string_view stored) {
  auto number = fmt::format("{} {} {} {} {}", Left(stored, 2), Mid(stored, 3, 2), Mid(stored, 5, 2), Mid(stored, 7, 2),
                            Mid(stored, 9, 1));
  const bool isNumber = CharacterCount(number) == 13 && !IsDigit(Mid(number, 1, 1)) && !IsDigit(Mid(number, 2, 1)) &&
                        !IsDigit(Mid(number, 13, 1));
  return isNumber ? number : std::string(kBritishMask);
}

void AssignSocialSecurity(const RequestField& request, std::string_view stored) {
  const auto number = fmt::format("{}-{}-{}", Left(stored, 3), Mid(stored, 4, 2), Mid(stored, 6, kToTheEnd));
  // The two are what people type in for want of a number.
  if (CharacterCount(number) != 11 || number == "111-11-1111" || number == "333-33-3333") return;
  request["SSN"].SetValue(Left(number, kGreatestLength));
}

}  // namespace

void AssignEmployeeNumber(const RequestField& request, std::string_view stored, std::string_view employeeId) {
  if (stored.empty()) {
    if (UpperCase(Vars().g_QBCountry) == "UK") request["NiNumber"].SetValue(kBritishMask);
  } else if (FileOrHostIs("CA")) {
    AssignSocialInsurance(request, stored, employeeId);
  } else if (FileOrHostIs("UK")) {
    request["NiNumber"].SetValue(NationalInsurance(stored));
  } else {
    AssignSocialSecurity(request, stored);
  }
}

std::string EmployeeNumberOf(const Record& employee) {
  const auto country = UpperCase(Vars().g_QBCountry);
  const auto without = [](const Record& number, std::string_view separator) {
    return ReplaceAll(number.GetValueOrEmpty(), separator, "");
  };
  if (country == "CA") return ReplaceAll(without(employee["Sin"], "-"), " ", "");
  if (country == "UK") return ReplaceAll(without(employee["NiNumber"], "-"), " ", "");
  return without(employee["SSN"], "-");
}

}  // namespace twqb
