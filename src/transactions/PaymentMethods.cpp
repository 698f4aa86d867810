#include "transactions/PaymentMethods.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/Text.h"
#include "services/Countries.h"

namespace twqb {

namespace {

struct Method {
  char code;
  std::string_view name;
};
// What comes out of a retainer goes under the name of a credit, and a credit comes in as one. A check has its name by
// country, and comes in under either.
constexpr std::array kMethods = {
    Method{'1', "Check"},  Method{'1', "Cheque"},      Method{'2', "Cash"},     Method{'3', "Credit"},
    Method{'A', "Credit"}, Method{'a', "Credit"},      Method{'4', "WriteOff"}, Method{'5', "Other"},
    Method{'6', "Debit"},  Method{'7', "Credit Card"}, Method{'8', "EFT"},      Method{'9', "Money Order"},
};
static_assert(kMethods.front().code - '0' == kCheckMethod);

}  // namespace

std::string_view PaymentMethodName(std::string_view code) {
  const auto* found =
      std::ranges::find_if(kMethods, [&](const Method& method) { return code == std::string_view(&method.code, 1); });
  if (found != kMethods.end() && found->code != kMethods.front().code) return found->name;
  return IsCanadianOrBritish(FileCountry()) ? "Cheque" : "Check";
}

std::int16_t PaymentMethodCode(std::string_view name) {
  const auto upper = UpperCase(name);
  const auto* found =
      std::ranges::find_if(kMethods, [&](const Method& method) { return UpperCase(method.name) == upper; });
  return found == kMethods.end() ? kCheckMethod : static_cast<std::int16_t>(found->code - '0');
}

}  // namespace twqb
