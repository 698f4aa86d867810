// The kinds of transactions that the company file keeps, as descriptions. A new kind is a description here and rows in
// the message table: requests <name>AddRq, <name>QueryRq, and the record <name>Ret.
//
// No field stands here that the message table can tell.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "adapters/companyfile/CompanyConditions.h"
#include "adapters/companyfile/ListKind.h"

namespace twqb::company {

// What stands in a line, beside what the rows say.
enum class LineRole : std::uint8_t {
  Item,         // an item, with a quantity and a rate
  ItemGroup,    // a group of items, which brings its own item lines
  Account,      // an account and an amount
  Application,  // another transaction, to which this one is applied; kept as links
};

struct TxnLineKind {
  std::string_view name;  // "InvoiceLine": given as <name>Add, answered as <name>Ret
  LineRole role = LineRole::Item;
};

// Which of its prices and descriptions an item brings to a line, and what the field of the rate is called.
enum class ItemSide : std::uint8_t { Sales, Purchase };

// What a transaction does to the balance of its entity or account.
enum class BalanceEffect : std::int8_t { Lowers = -1, None = 0, Raises = 1 };

// What can be settled between transactions, and so what its open amount means.
enum class Settlement : std::uint8_t {
  None,
  Charge,   // open: what is still to be paid
  Credit,   // open: what can still be set against charges
  Payment,  // open: what is applied to nothing
};

// Which transactions come to nothing, so that QuickBooks does not take them at all.
enum class ZeroTotal : std::uint8_t { Taken, Refused };

struct TxnKind {
  std::string_view name;     // "Invoice"
  std::string_view entity;   // the field that names whom it is about: "CustomerRef"
  std::string_view account;  // the field of the account that it stands on; empty: it stands on none
  std::span<const std::string_view> accountTypes = {};  // of which that account must be
  std::span<const TxnLineKind> lines = {};
  ItemSide side = ItemSide::Sales;
  Settlement settlement = Settlement::None;
  BalanceEffect entityBalance = BalanceEffect::None;
  BalanceEffect accountBalance = BalanceEffect::None;
  ZeroTotal zeroTotal = ZeroTotal::Taken;
  std::span<const FieldDefault> defaults = {};
  std::string_view numbers = {};  // the sequence of its reference numbers; empty: QuickBooks gives it none
  Feature CompanyConditions::*feature = nullptr;  // that has to be enabled for it
};

[[nodiscard]] std::span<const TxnKind> TxnKinds();
// The kind of that name; nullptr when the file keeps none.
[[nodiscard]] const TxnKind* FindTxnKind(std::string_view name);
// The line kind whose element is `name` without the suffix "Add" or "Ret"; nullptr when there is none.
[[nodiscard]] const TxnLineKind* FindLineKind(const TxnKind& kind, std::string_view name);

}  // namespace twqb::company
