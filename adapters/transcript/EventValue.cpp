#include "adapters/transcript/EventValue.h"

#include <algorithm>
#include <utility>

namespace twqb {

namespace {

struct ShownValue {
  EventValue::Variant operator()(Null /*null*/) const { return nullptr; }
  EventValue::Variant operator()(Currency value) const { return value.ToDouble(); }
  EventValue::Variant operator()(Date value) const { return IsoDate(value); }
  template <typename Plain>
  EventValue::Variant operator()(const Plain& value) const {
    return value;
  }
};

}  // namespace

EventFields::EventFields() = default;
EventFields::EventFields(std::initializer_list<EventField> fields) : fields_(fields) {}
EventFields::~EventFields() = default;
EventFields::EventFields(const EventFields& other) = default;
EventFields::EventFields(EventFields&& other) noexcept = default;
EventFields& EventFields::operator=(const EventFields& other) = default;
EventFields& EventFields::operator=(EventFields&& other) noexcept = default;

EventValue& EventFields::operator[](std::string_view name) {
  const auto found = std::ranges::find(fields_, name, &EventField::name);
  if (found != fields_.end()) return found->value;
  return fields_.emplace_back(EventField{.name = std::string(name), .value = {}}).value;
}

EventValue::EventValue(std::nullptr_t null) : value_(null) {}
EventValue::EventValue(bool value) : value_(value) {}
EventValue::EventValue(int value) : value_(std::int64_t{value}) {}
EventValue::EventValue(std::int64_t value) : value_(value) {}
EventValue::EventValue(std::size_t value) : value_(static_cast<std::int64_t>(value)) {}
EventValue::EventValue(const char* text) : value_(std::string(text)) {}
EventValue::EventValue(std::string_view text) : value_(std::string(text)) {}
EventValue::EventValue(std::string text) : value_(std::move(text)) {}
EventValue::EventValue(EventList list) : value_(std::move(list)) {}
EventValue::EventValue(EventFields fields) : value_(std::move(fields)) {}
EventValue::EventValue(const Value& value) : value_(std::visit(ShownValue{}, value)) {}

EventValue::~EventValue() = default;
EventValue::EventValue(const EventValue& other) = default;
EventValue::EventValue(EventValue&& other) noexcept = default;
EventValue& EventValue::operator=(const EventValue& other) = default;
EventValue& EventValue::operator=(EventValue&& other) noexcept = default;

}  // namespace twqb
