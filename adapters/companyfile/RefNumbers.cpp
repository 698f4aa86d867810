#include "adapters/companyfile/RefNumbers.h"

#include <algorithm>

#include "platform/Text.h"

namespace twqb::company {

std::string RefOrderKey(std::string_view refNumber) {
  constexpr std::size_t kWidth = 20;
  const auto key = FoldCase(refNumber);
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  std::string order;
  for (auto at = key.begin(); at != key.end();) {
    const auto end = std::find_if_not(at, key.end(), isDigit);
    const auto length = static_cast<std::size_t>(end - at);
    if (length == 0) {
      order += *at++;
      continue;
    }
    if (length < kWidth) order.append(kWidth - length, '0');
    order.append(at, end);
    at = end;
  }
  return order;
}

}  // namespace twqb::company
