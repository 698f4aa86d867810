// What activities and expense codes have in common: both are items in QuickBooks, and both have keys of two parts with
// a colon between them.
//
// Nothing here talks to QuickBooks or to a table of rows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

// Where an item keeps its texts, prices and accounts. Inventory items have neither form.
enum class ItemForm : std::uint8_t { Neither, SalesOrPurchase, SalesAndPurchase };
[[nodiscard]] ItemForm FormOf(const Record& item);

// The name of an item: its key with a blank for each colon.
[[nodiscard]] std::string ItemName(std::string_view key);
// "CODE:SUB"; the colon stands behind a code alone, too.
[[nodiscard]] std::string ItemKey(std::string_view code, std::string_view sub);

// The accounts of new items that have none of their own, by name, out of the settings.
[[nodiscard]] std::string DefaultIncomeAccount();
[[nodiscard]] std::string DefaultExpenseAccount();

}  // namespace twqb
