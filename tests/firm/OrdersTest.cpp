// The tables sent one by one, in this order and that: to the same end as in a run over all, but where the order leaves
// out what a table refers to, and that has its price.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <vector>

#include "samples/firm/Dice.h"
#include "tests/firm/Properties.h"

namespace twqb {
namespace {

using Order = std::vector<enTables>;

// As in a run over all.
constexpr std::array kInARun = {enEmployees, enVendors,     enClients,  enProjects, enActivities, enExpenseCodes,
                                enAccounts,  enTimeEntries, enInvoices, enPayments, enVendorBill};

struct Behind {
  enTables table;
  std::vector<enTables> those;
};
// What a table refers to; and those with whose records it shares its names, where who comes first has the name.
const std::vector<Behind>& References() {
  static const std::vector<Behind> references = {
      {enVendors, {enEmployees}},
      {enClients, {enVendors}},
      {enProjects, {enClients}},
      {enExpenseCodes, {enActivities}},
      {enTimeEntries, {enEmployees, enVendors, enProjects, enActivities}},
      {enInvoices, {enProjects, enActivities, enExpenseCodes}},
      {enPayments, {enInvoices}},
      {enVendorBill, {enVendors, enProjects, enActivities, enExpenseCodes}},
  };
  return references;
}

bool MayFollow(enTables table, const Order& sent) {
  const auto found = std::ranges::find(References(), table, &Behind::table);
  if (found == References().end()) return true;
  return std::ranges::all_of(found->those,
                             [&](enTables other) { return std::ranges::find(sent, other) != sent.end(); });
}

// Any order in which each table is behind those that it refers to.
Order AnyOrder(std::uint64_t seed) {
  firm::Dice dice(seed, 99);
  Order sent;
  while (sent.size() < kInARun.size()) {
    const auto table = dice.OneOf(kInARun);
    if (std::ranges::find(sent, table) == sent.end() && MayFollow(table, sent)) sent.push_back(table);
  }
  return sent;
}

// What refers to others goes ahead of them.
Order Backwards() {
  return {enVendorBill, enPayments, enInvoices, enTimeEntries, enProjects,    enAccounts,
          enEmployees,  enVendors,  enClients,  enActivities,  enExpenseCodes};
}

void ExpectTheSame(const Books& one, const Books& other) {
  EXPECT_GT(one.rows.size(), 10U);
  EXPECT_EQ(
      std::ranges::count_if(one.rows, [](const auto& row) { return row.find(" -> nothing") != std::string::npos; }), 0);
  EXPECT_TRUE(one.records == other.records) << DifferenceOf(one.records, other.records);
  EXPECT_TRUE(one.rows == other.rows) << DifferenceOf(one.rows, other.rows);
}

}  // namespace

void ExpectThatOrdersEndAlike(const firm::FirmPlan& plan, const std::string& prepared, const Books& all) {
  const TemporaryFolder folder;
  CopyFiles(prepared, folder.Path());
  FirmHouse house(HouseOptions{.folder = folder.Path()});
  switch (plan.seed % 3) {
    case 0:
      for (const auto table : kInARun) house.Send(table);
      break;
    case 1:
      for (const auto table : AnyOrder(plan.seed)) house.Send(table);
      break;
    default:
      // Nothing goes that lacks something, which boxes tell; the run behind it heals that.
      for (const auto table : Backwards()) house.TrySend(table);
      house.Send();
  }
  ExpectTheSame(all, ReadBooks(house));
}

namespace {

// What the invoices come to by project, and how many of their lines have no item of their own.
struct Invoiced {
  std::map<std::string, std::string> totals;
  int withoutItem = 0;
};
Invoiced InvoicedIn(FirmHouse& house) {
  Invoiced invoiced;
  house.ForEachRecord("Invoice", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& record) {
    invoiced.totals[fmt::format("{} {}", record.child("CustomerRef").child_value("FullName"),
                                record.child_value("RefNumber"))] = record.child_value("Subtotal");
    for (const auto line : record.children("InvoiceLineRet")) {
      if (std::string(line.child("ItemRef").child_value("FullName")) == "From Tallywick") ++invoiced.withoutItem;
    }
  });
  return invoiced;
}

constexpr firm::FirmPlan kFirm = {.clients = 24, .seed = 2, .months = 1, .hours = 4};

TEST(FirmOrder, In_which_invoices_go_ahead_of_codes_leaves_their_lines_without_items_for_good) {
  FirmHouse all(kFirm);
  all.Send();
  FirmHouse house(kFirm);
  for (const auto table : {enClients, enProjects, enInvoices}) house.Send(table);
  house.Send();
  const auto usual = InvoicedIn(all);
  const auto early = InvoicedIn(house);
  EXPECT_EQ(early.totals, usual.totals);
  // Hours of no activity have none in any order.
  EXPECT_GT(early.withoutItem, usual.withoutItem + 20);
}

TEST(FirmOrder, In_which_bills_go_ahead_of_expense_codes_leaves_what_is_behind_an_expense_off_them_for_good) {
  FirmHouse house(kFirm);
  for (const auto table : {enVendors, enClients, enProjects, enActivities, enVendorBill}) house.Send(table);
  house.Send();
  const std::string left =
      "SELECT COUNT(*) FROM ExpenseLog AS e JOIN VendorBill AS b ON b.VendorBillID = e.VendorBillID WHERE ";
  EXPECT_NE(house.Scalar(left + "b.QBLinkID <> '' AND (e.QBLinkID IS NULL OR e.QBLinkID = '')"), "0");
  // A bill whose first row is an expense has waited.
  EXPECT_NE(house.Scalar(left + "b.QBLinkID <> '' AND e.QBLinkID <> ''"), "0");
}

}  // namespace
}  // namespace twqb
