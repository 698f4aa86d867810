// What the conditions of queries have in common, whatever they ask for: enumerations, bounds of time, counts.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <span>
#include <string_view>

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "messages/Schema.h"

namespace twqb::company {

// The number of an enumeration's value; nothing when the element is not there.
template <typename Enumeration>
std::optional<Enumeration> ReadEnumeration(pugi::xml_node parent, std::span<const messages::Element> rows,
                                           std::string_view name) {
  const auto text = ChildText(parent, name);
  const auto* row = FindRow(rows, name);
  if (text.empty() || row == nullptr) return std::nullopt;
  const auto value = std::ranges::find(row->Values(), text, &messages::EnumValue::name);
  return static_cast<Enumeration>(value->number);
}

// The rows of an aggregate; none when there is no such row.
[[nodiscard]] std::span<const messages::Element> RowsInside(std::span<const messages::Element> rows,
                                                            std::string_view name);

// The last second of a day that is given at its midnight.
[[nodiscard]] Date EndOfDay(Date day);

// Unix seconds. The wall clock whatever its offset says, as all that QuickBooks writes is; of an hour that the clock
// shows twice, the bounds take in both. A date alone means the day as a whole, so its end where the time is an upper
// bound. Nothing when the element is not there.
enum class Bound : std::uint8_t { Lower, Upper };
[[nodiscard]] std::optional<std::int64_t> ReadTime(pugi::xml_node parent, std::string_view name, Bound bound,
                                                   const ClockReading& clock);

// Nothing when the query does not limit its answer.
[[nodiscard]] std::optional<std::int64_t> ReadMaxReturned(pugi::xml_node query);

}  // namespace twqb::company
