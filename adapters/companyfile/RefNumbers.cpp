#include "adapters/companyfile/RefNumbers.h"

#include <algorithm>

#include "platform/Text.h"

namespace twqb::company {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string RefOrderKey(std::string_view refNumber) {
  constexpr std::size_t kWidth = 20;
  const auto key = FoldCase(refNumber);
  std::string order;
  for (auto at = key.begin(); at != key.end();) {
    const auto end = std::find_if_not(at, key.end(), IsDigit);
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

std::string NextRefNumber(std::string_view last) {
  constexpr std::size_t kLongest = 11;  // of the kinds that are numbered
  std::string next(last);
  auto at = next.size();
  while (at > 0 && IsDigit(next[at - 1])) {
    auto& digit = next[--at];
    if (digit != '9') {
      ++digit;
      return next;
    }
    digit = '0';
  }
  if (at == next.size()) return "1";
  next.insert(at, 1, '1');
  return next.size() > kLongest ? std::string{} : next;
}

}  // namespace twqb::company
