#include "services/TableNames.h"

#include <array>
#include <cstddef>

namespace twqb {

namespace {

struct Names {
  std::string_view send;
  std::string_view get;
};

// In the order of enTables. Keys in the hosts' settings are made of these: the blanks before some brackets, and their
// absence before others, stay.
constexpr std::array kNames = {
    Names{"Employees", "Employees(QB)"},
    Names{"Vendors", "Vendors(QB)"},
    Names{"Clients", "Customers"},
    Names{"Projects", "Jobs"},
    Names{"Activities", "Activities(QB)"},
    Names{"Expense Codes", "Expense Codes (QB)"},
    Names{"Accounts", "Accounts(QB)"},
    Names{"Expense Log", "Expense Log (QB)"},
    Names{"Time Entries", "Time Entries(QB)"},
    Names{"Invoices", "Invoices(QB)"},
    Names{"Payments", "Payments(QB)"},
    Names{"Vendor Bill", "Vendor Bill(QB)"},
    Names{"Estimates", "Estimates(QB)"},
};

}  // namespace

std::string_view GetTableName(Direction direction, std::int32_t table) {
  if (table < 0 || static_cast<std::size_t>(table) >= kNames.size()) return "All Tables";
  const auto& names = kNames[static_cast<std::size_t>(table)];
  return direction == Direction::Send ? names.send : names.get;
}

}  // namespace twqb
