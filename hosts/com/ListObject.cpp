#include "com/ListObject.h"

#include <utility>

#include "com/NamedObject.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::com {

namespace {

using windows::Variant;
using Arguments = std::vector<Variant>;

Variant ObjectVariant(IDispatch* counted) {
  Variant object;
  object.Get()->vt = VT_DISPATCH;
  object.Get()->pdispVal = counted;
  return object;
}

Variant NumberVariant(double number) {
  Variant value;
  value.Get()->vt = VT_R8;
  value.Get()->dblVal = number;
  return value;
}

Variant DateVariant(Date date) {
  Variant value;
  value.Get()->vt = VT_DATE;
  value.Get()->date = date.Serial();
  return value;
}

std::size_t IndexIn(const Arguments& arguments) {
  if (arguments.size() != 1) throw PlatformError(error::kBadArgument);
  const auto index = arguments[0].Number();
  if (index < 0) throw PlatformError(error::kBadArgument);
  return static_cast<std::size_t>(index);
}

void ExpectNone(const Arguments& arguments) {
  if (!arguments.empty()) throw PlatformError(error::kBadArgument);
}

// A value in the form that its type has at QuickBooks' object library.
Variant ValueOf(const Record& field) {
  using messages::Type;
  switch (field.ValueType()) {
    case Type::Bool:
      return Variant(field.GetBoolean());
    case Type::Int:
    case Type::Enum:
      return Variant(static_cast<long>(field.GetInteger()));
    case Type::Amt:
      return NumberVariant(field.GetAmount().ToDouble());
    case Type::Price:
    case Type::Quan:
    case Type::Percent:
    case Type::Float:
      return NumberVariant(field.GetNumber());
    case Type::Date:
    case Type::DateTime:
      return DateVariant(field.GetDate());
    default:
      return Variant(field.GetValue());
  }
}

// A field, a record, or the list of a repeating field.
class RecordObject : public NamedObject {
 public:
  explicit RecordObject(Record record) : record_(std::move(record)) {}

 protected:
  [[nodiscard]] bool Knows(const std::string& name) const override {
    for (const auto* own : {"GetValue", "GetAsString", "Count", "GetAt", "ORType"}) {
      if (SameName(own, name)) return true;
    }
    try {
      static_cast<void>(record_[name]);
      return true;
    } catch (const PlatformError&) {
      return false;
    }
  }

  [[nodiscard]] Variant Member(const std::string& name, const Arguments& arguments) const override {
    if (SameName(name, "GetAt")) return ObjectVariant(MakeRecordObject(record_.GetAt(IndexIn(arguments))));
    if (SameName(name, "GetValue") && !record_.IsNothing() && record_.ValueType() == messages::Type::TimeInterval) {
      return GiveTimeInterval(arguments);
    }
    ExpectNone(arguments);
    if (SameName(name, "GetValue")) return ValueOf(record_);
    if (SameName(name, "GetAsString")) return Variant(record_.GetAsString());
    if (SameName(name, "Count")) return Variant(static_cast<long>(record_.Count()));
    if (SameName(name, "ORType")) return Variant(static_cast<long>(record_.ORType()));
    return ObjectVariant(MakeRecordObject(record_[name]));
  }

 private:
  // By four references: hours, minutes, seconds, and whether it is negative, which none is that QuickBooks keeps.
  [[nodiscard]] Variant GiveTimeInterval(const Arguments& arguments) const {
    constexpr std::size_t kResults = 4;
    if (arguments.size() != kResults) throw PlatformError(error::kBadArgument);
    const auto span = record_.GetTimeInterval();
    const bool given = GiveByReference(0, Variant(static_cast<long>(span.hours))) &&
                       GiveByReference(1, Variant(static_cast<long>(span.minutes))) &&
                       GiveByReference(2, Variant(static_cast<long>(span.seconds))) &&
                       GiveByReference(3, Variant(false));
    if (!given) throw PlatformError(error::kConversion);
    return {};
  }

  Record record_;
};

class ListObject : public NamedObject {
 public:
  explicit ListObject(ReturnedList list) : list_(std::move(list)) {}

 protected:
  [[nodiscard]] bool Knows(const std::string& name) const override {
    return SameName(name, "Count") || SameName(name, "GetAt");
  }

  [[nodiscard]] Variant Member(const std::string& name, const Arguments& arguments) const override {
    if (SameName(name, "GetAt")) return ObjectVariant(MakeRecordObject(list_.GetAt(IndexIn(arguments))));
    ExpectNone(arguments);
    return Variant(static_cast<long>(list_.Count()));
  }

 private:
  ReturnedList list_;
};

}  // namespace

IDispatch* MakeListObject(ReturnedList list) { return list.IsNothing() ? nullptr : new ListObject(std::move(list)); }

IDispatch* MakeRecordObject(Record record) {
  return record.IsNothing() ? nullptr : new RecordObject(std::move(record));
}

}  // namespace twqb::com
