// The KIND of a command line: a list of QuickBooks that the public object hands out.
//
// Which operation it is and which fields of its records are worth a column. Reads no record.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "twqb/CTWQBBridge.h"

namespace twqb::cli {

struct LookupKind {
  std::string_view operation;  // "GetCustomers"
  bool takesAll = false;
  ReturnedList (*look)(CTWQBBridge& bridge, bool all) = nullptr;  // `all` counts only where it takes it
  std::span<const std::string_view> columns;                      // of a reference, its FullName is shown

  // As it is typed: "customers".
  [[nodiscard]] std::string TypedName() const;
};

// The kind of that name, written with or without "Get", in any case. Raises UsageError, with the names that there are.
[[nodiscard]] const LookupKind& LookupKindFromName(std::string_view name);
// Every typed name, between commas.
[[nodiscard]] std::string LookupKindList();

}  // namespace twqb::cli
