// What an event of a transcript tells: a single value, a list of values, or fields with names, in their order.
//
// The seams' decorators and the hosts put events together from these; TranscriptWriter turns them into JSON. They hold
// what they are given and check nothing.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/Value.h"

namespace twqb {

class EventValue;
struct EventField;
using EventList = std::vector<EventValue>;

class EventFields {
 public:
  EventFields();
  EventFields(std::initializer_list<EventField> fields);
  ~EventFields();
  EventFields(const EventFields& other);
  EventFields(EventFields&& other) noexcept;
  EventFields& operator=(const EventFields& other);
  EventFields& operator=(EventFields&& other) noexcept;

  // The field of that name, behind the others and null where there was none.
  [[nodiscard]] EventValue& operator[](std::string_view name);
  [[nodiscard]] const std::vector<EventField>& All() const { return fields_; }
  [[nodiscard]] std::vector<EventField>& All() { return fields_; }

 private:
  std::vector<EventField> fields_;
};

class EventValue {
 public:
  using Variant = std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, EventList, EventFields>;

  // Implicit, so that an event reads as what it tells.
  EventValue(std::nullptr_t null = nullptr);
  EventValue(bool value);
  EventValue(int value);
  EventValue(std::int64_t value);
  EventValue(std::size_t value);
  EventValue(const char* text);
  EventValue(std::string_view text);
  EventValue(std::string text);
  EventValue(EventList list);
  EventValue(EventFields fields);
  // As a transcript shows what a database holds: NULL is null, a Date `yyyy-mm-ddThh:mm:ss`, Currency a number.
  explicit EventValue(const Value& value);
  // Not inline: events are put together in many places, and what it takes to copy one would be compiled in each.
  ~EventValue();
  EventValue(const EventValue& other);
  EventValue(EventValue&& other) noexcept;
  EventValue& operator=(const EventValue& other);
  EventValue& operator=(EventValue&& other) noexcept;

  [[nodiscard]] const Variant& Get() const { return value_; }

 private:
  Variant value_;
};

struct EventField {
  std::string name;
  EventValue value;
};

// A list of texts, or of lists of texts.
template <typename Range>
[[nodiscard]] EventList ListOf(const Range& texts) {
  EventList list;
  for (const auto& text : texts) {
    if constexpr (std::constructible_from<std::string, decltype(text)>) {
      list.emplace_back(std::string(text));
    } else {
      list.emplace_back(ListOf(text));
    }
  }
  return list;
}

}  // namespace twqb
