// The words that message rows are written in. Only the files that hold rows include this.
#pragma once

#include <span>

#include "messages/Schema.h"

namespace twqb::messages::rows {

constexpr Element Leaf(std::string_view name, Type type) { return {.name = name, .type = type}; }
constexpr Element Text(std::string_view name, int maxLength = 0) {
  return {.name = name, .type = Type::Str, .maxLength = maxLength};
}
constexpr Element Enumeration(std::string_view name, std::span<const EnumValue> values) {
  return {.name = name, .type = Type::Enum, .firstValue = values.data(), .valueCount = values.size()};
}
constexpr Element Nested(std::string_view name, Type type, std::span<const Element> children) {
  return {.name = name, .type = type, .firstChild = children.data(), .childCount = children.size()};
}
constexpr Element Aggregate(std::string_view name, std::span<const Element> children) {
  return Nested(name, Type::Aggregate, children);
}
constexpr Element Choice(std::string_view name, std::span<const Element> branches) {
  return Nested(name, Type::Choice, branches);
}
constexpr Element Step(std::string_view name, std::span<const Element> fields) {
  return Nested(name, Type::Step, fields);
}

// A reference to another record. The number is the greatest length of the full name; 0 is no limit.
template <int MaxLength>
inline constexpr Element kReference[] = {
    Leaf("ListID", Type::Id).Opt(),
    Text("FullName", MaxLength).Opt(),
};
template <int MaxLength>
constexpr Element Ref(std::string_view name) {
  return Aggregate(name, kReference<MaxLength>);
}

inline constexpr Element kAddress[] = {
    Text("Addr1", 41).Opt(),
    Text("Addr2", 41).Opt(),
    Text("Addr3", 41).Opt(),
    Text("Addr4", 41).Opt().Since(2, 0),
    Text("City", 31).Opt(),
    Text("State", 21).Opt().In(kUnitedStates),
    Text("Province", 21).Opt().In(kCanada),
    Text("County", 21).Opt().In(kBritain),
    Text("PostalCode", 13).Opt(),
    Text("Country", 31).Opt(),
};

inline constexpr Element kCreditCardInfo[] = {
    Text("CreditCardNumber", 25).Opt(),      Leaf("ExpirationMonth", Type::Int).Opt(),
    Leaf("ExpirationYear", Type::Int).Opt(), Text("NameOnCard", 41).Opt(),
    Text("CreditCardAddress", 41).Opt(),     Text("CreditCardPostalCode", 41).Opt(),
};

inline constexpr EnumValue kDataExtTypes[] = {
    {"AMTTYPE", 0},   {"DATETIMETYPE", 1}, {"INTTYPE", 2},     {"PERCENTTYPE", 3},
    {"PRICETYPE", 4}, {"QUANTYPE", 5},     {"STR1024TYPE", 6}, {"STR255TYPE", 7},
};
inline constexpr Element kDataExt[] = {
    Leaf("OwnerID", Type::Guid).Opt(),
    Text("DataExtName", 31),
    Enumeration("DataExtType", kDataExtTypes),
    Text("DataExtValue"),
};

inline constexpr EnumValue kActiveStatuses[] = {{"ActiveOnly", 0}, {"InactiveOnly", 1}, {"All", 2}};
inline constexpr EnumValue kMatchCriteria[] = {{"StartsWith", 0}, {"Contains", 1}, {"EndsWith", 2}};
inline constexpr EnumValue kOperators[] = {
    {"LessThan", 0}, {"LessThanEqual", 1}, {"Equal", 2}, {"GreaterThan", 3}, {"GreaterThanEqual", 4}};

inline constexpr Element kNameFilter[] = {Enumeration("MatchCriterion", kMatchCriteria), Text("Name")};
inline constexpr Element kNameRangeFilter[] = {Text("FromName").Opt(), Text("ToName").Opt()};
inline constexpr Element kNameFilterBranches[] = {
    Aggregate("NameFilter", kNameFilter),
    Aggregate("NameRangeFilter", kNameRangeFilter),
};
inline constexpr Element kTotalBalanceFilter[] = {Enumeration("Operator", kOperators), Leaf("Amount", Type::Amt)};

// What most list queries ask for.
inline constexpr Element kListFilter[] = {
    Leaf("MaxReturned", Type::Int).Opt(),
    Enumeration("ActiveStatus", kActiveStatuses).Opt(),
    Leaf("FromModifiedDate", Type::DateTime).Opt(),
    Leaf("ToModifiedDate", Type::DateTime).Opt(),
    Choice("ORNameFilter", kNameFilterBranches).Opt(),
};

inline constexpr Element kListQueryBranches[] = {
    Leaf("ListID", Type::Id).Rep(),
    Text("FullName").Rep(),
    Step("ListFilter", kListFilter),
};

// The same for lists with balances.
inline constexpr Element kBalanceListFilter[] = {
    Leaf("MaxReturned", Type::Int).Opt(),
    Enumeration("ActiveStatus", kActiveStatuses).Opt(),
    Leaf("FromModifiedDate", Type::DateTime).Opt(),
    Leaf("ToModifiedDate", Type::DateTime).Opt(),
    Choice("ORNameFilter", kNameFilterBranches).Opt(),
    Aggregate("TotalBalanceFilter", kTotalBalanceFilter).Opt(),
};

inline constexpr Element kBalanceListQueryBranches[] = {
    Leaf("ListID", Type::Id).Rep(),
    Text("FullName").Rep(),
    Step("ListFilter", kBalanceListFilter),
};

inline constexpr Element kOwnedListQuery[] = {
    Choice("ORListQuery", kListQueryBranches).Opt(),
    Leaf("OwnerID", Type::Guid).Opt().Rep().Since(2, 0),
};

inline constexpr Element kListQuery[] = {
    Choice("ORListQuery", kListQueryBranches).Opt(),
};

inline constexpr Element kRateBranches[] = {
    Leaf("Rate", Type::Price),
    Leaf("RatePercent", Type::Percent),
};

}  // namespace twqb::messages::rows
