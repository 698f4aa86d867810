#include "tests/firm/Books.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

namespace twqb {

namespace {

// The kinds that transfers read or write, with what a query needs to answer all of a record.
struct Kind {
  const char* name;
  const char* fields = "";
};
constexpr const char* kAll = "<ActiveStatus>All</ActiveStatus>";
constexpr const char* kLines = "<IncludeLineItems>true</IncludeLineItems>";
constexpr Kind kKinds[] = {{"Account", kAll},
                           {"Customer", kAll},
                           {"Employee", kAll},
                           {"Vendor", kAll},
                           {"ItemService", kAll},
                           {"ItemOtherCharge", kAll},
                           {"ItemNonInventory", kAll},
                           {"ItemInventory", kAll},
                           {"ItemPayment", kAll},
                           {"PaymentMethod", kAll},
                           {"TimeTracking"},
                           {"Invoice", kLines},
                           {"ReceivePayment", kLines},
                           {"CreditMemo", kLines},
                           {"Bill", kLines},
                           {"Check", kLines},
                           {"CreditCardCharge", kLines},
                           {"Estimate", kLines}};

constexpr std::string_view kOfTheRun[] = {"ListID",       "TxnID",        "TxnLineID", "TimeCreated",
                                          "TimeModified", "EditSequence", "TxnNumber"};

using Links = std::map<std::string, std::string>;

// The record or line as text; `links` learns what its identifier stands for.
std::string TextOf(const pugi::xml_node& node, const std::set<std::string>& without, Links& links) {
  std::string text = fmt::format("<{}>", node.name());
  std::string id;
  for (const auto& child : node.children()) {
    const std::string_view name = child.name();
    if (without.contains(fmt::format("{}.{}", node.name(), name))) continue;
    if (std::ranges::find(kOfTheRun, name) == std::end(kOfTheRun)) {
      if (child.first_child().type() != pugi::node_element) {
        text += fmt::format("{}={};", name, child.child_value());
      } else if (const auto inside = TextOf(child, without, links); inside != fmt::format("<{}>", name)) {
        text += inside;  // of one whose fields are all left out nothing is there
      }
    } else if (name.ends_with("ID")) {
      id = child.child_value();
    }
  }
  // A reference to a record has its identifier, too, and tells less than the record.
  if (!id.empty() && !std::string_view(node.name()).ends_with("Ref")) links.try_emplace(id, text);
  return text;
}

constexpr const char* kTables[] = {"Employee",  "Client",           "Project", "Activity",   "Expense",   "AccountList",
                                   "TimeEntry", "TransactionTable", "Payment", "VendorBill", "ExpenseLog"};

std::string TextOf(const std::string& table, const Fields& row, const std::set<std::string>& without,
                   const Links& links) {
  const bool isVendor = table == "Employee" && row.at("IsSub") == "-1";
  auto text = isVendor ? "Vendor" : table;
  const auto kind = text;
  for (const auto& [column, value] : row) {
    // Stamps of the run.
    if (without.contains(fmt::format("{}.{}", kind, column)) || column == "LastUpdated" || column == "LastUpdate")
      continue;
    if (column != "QBLinkID" || value.value_or("").empty()) {
      text += fmt::format(" {}={}", column, value.value_or("NULL"));
    } else {
      const auto found = links.find(*value);
      text += " -> " + (found == links.end() ? "nothing" : found->second);
    }
  }
  return text;
}

}  // namespace

Books ReadBooks(FirmHouse& house, const std::set<std::string>& without) {
  Books books;
  Links links;
  for (const auto& kind : kKinds) {
    house.ForEachRecord(kind.name, kind.fields,
                        [&](const pugi::xml_node& record) { books.records.insert(TextOf(record, without, links)); });
  }
  for (const std::string table : kTables) {
    for (const auto& row : house.RowsOf("SELECT * FROM " + table))
      books.rows.insert(TextOf(table, row, without, links));
  }
  return books;
}

std::string DifferenceOf(const std::multiset<std::string>& one, const std::multiset<std::string>& other) {
  constexpr std::size_t kMost = 4;
  std::string text;
  const auto tell = [&](const std::string& sign, const auto& left, const auto& right) {
    std::vector<std::string> found;
    std::ranges::set_difference(left, right, std::back_inserter(found));
    for (std::size_t i = 0; i < std::min(found.size(), kMost); ++i) text += sign + found[i] + "\n";
    if (found.size() > kMost) text += fmt::format("{}and {} more\n", sign, found.size() - kMost);
  };
  tell("- ", one, other);
  tell("+ ", other, one);
  return text;
}

}  // namespace twqb
