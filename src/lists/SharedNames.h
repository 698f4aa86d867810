// Which lists of QuickBooks share their names: two records below the same parent can't have one, whichever of the lists
// they are in.
//
// Other names (OtherName) share those of people, too; there is no message for them here.
#pragma once

#include <array>
#include <string_view>

namespace twqb {

inline constexpr std::array<std::string_view, 3> kListsOfPeople = {"CustomerQueryRq", "VendorQueryRq",
                                                                   "EmployeeQueryRq"};
inline constexpr std::array<std::string_view, 7> kListsOfItems = {
    "ItemServiceQueryRq", "ItemOtherChargeQueryRq", "ItemNonInventoryQueryRq", "ItemInventoryQueryRq",
    "ItemGroupQueryRq",   "ItemPaymentQueryRq",     "ItemSalesTaxQueryRq"};
inline constexpr std::array<std::string_view, 1> kListsOfAccounts = {"AccountQueryRq"};

}  // namespace twqb
