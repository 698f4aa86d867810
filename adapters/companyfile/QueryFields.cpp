#include "adapters/companyfile/QueryFields.h"

#include <charconv>

#include "messages/ValueFormat.h"

namespace twqb::company {

std::span<const messages::Element> RowsInside(std::span<const messages::Element> rows, std::string_view name) {
  const auto* row = FindRow(rows, name);
  return row == nullptr ? std::span<const messages::Element>{} : row->Children();
}

Date EndOfDay(Date day) { return day.PlusDays(1).PlusMilliseconds(-Date::kSecond); }

std::optional<std::int64_t> ReadTime(pugi::xml_node parent, std::string_view name, Bound bound,
                                     const ClockReading& clock) {
  const auto text = ChildText(parent, name);
  const auto time = messages::ParseDateTime(text);
  if (!time) return std::nullopt;
  auto local = time->local;
  if (bound == Bound::Upper && messages::ParseDateText(text)) local = EndOfDay(local);
  return FromWallClock(local, bound == Bound::Lower ? Occurrence::First : Occurrence::Last, clock);
}

std::optional<std::int64_t> ReadMaxReturned(pugi::xml_node query) {
  const auto text = ChildText(query, "MaxReturned");
  if (text.empty()) return std::nullopt;
  std::int64_t count = 0;
  const auto digits = text.substr(text.starts_with('+') ? 1 : 0);
  std::from_chars(digits.data(), digits.data() + digits.size(), count);
  return count;
}

}  // namespace twqb::company
