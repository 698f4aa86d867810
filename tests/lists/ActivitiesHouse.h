// A house in which the activity routines are called as the dispatcher calls them, with the default account in
// QuickBooks.
#pragma once

#include "lists/modActivities.h"
#include "tests/lists/ListHouse.h"

namespace twqb {

inline constexpr TestedTable kActivityTable = {.table = enActivities,
                                               .name = "Activity",
                                               .keyColumn = "ActivityID",
                                               .toQB = MoveActivityToQB,
                                               .toTW = MoveActivitiesToTW};

class ActivitiesHouse : public ListHouse {
 public:
  explicit ActivitiesHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : ListHouse(kActivityTable, std::move(options), faults, country), income(Account("Other Income")) {}

  // Columns beside the key, as "ActivityDescription, ..." and their SQL expressions.
  void Activity(std::string_view key, std::string_view columns = {}, std::string_view values = {}) {
    Row("ActivityID" + (columns.empty() ? std::string() : ", " + std::string(columns)),
        "'" + std::string(key) + "'" + (values.empty() ? std::string() : ", " + std::string(values)));
  }
  // An account of that name; its ListID.
  std::string Account(std::string_view name) {
    return Added("<AccountAddRq><AccountAdd><Name>" + std::string(name) +
                 "</Name><AccountType>OtherIncome</AccountType></AccountAdd></AccountAddRq>");
  }
  // A service item with its fields in wire order; its ListID.
  std::string Item(std::string_view fields) {
    return Added("<ItemServiceAddRq><ItemServiceAdd>" + std::string(fields) + "</ItemServiceAdd></ItemServiceAddRq>");
  }
  // The same with one side and with both, by what stands ahead of the side, and in it ahead of the first account.
  std::string OneSided(std::string_view name, std::string_view inside = {}) {
    return Item(Named(name) + "<SalesOrPurchase>" + std::string(inside) + Ref("AccountRef") + "</SalesOrPurchase>");
  }
  std::string TwoSided(std::string_view name, std::string_view sales = {}, std::string_view purchase = {}) {
    return Item(Named(name) + "<SalesAndPurchase>" + std::string(sales) + Ref("IncomeAccountRef") +
                std::string(purchase) + Ref("ExpenseAccountRef") + "</SalesAndPurchase>");
  }
  // One side, below another item.
  std::string SubItem(std::string_view name, std::string_view parent) {
    return Item(Named(name) + "<ParentRef><ListID>" + std::string(parent) + "</ListID></ParentRef><SalesOrPurchase>" +
                Ref("AccountRef") + "</SalesOrPurchase>");
  }
  // The value of an element of the item with that identifier; "(none)" when it has none.
  std::string ItemField(std::string_view listId, std::string_view element) {
    return TextOf(
        Company("<ItemServiceQueryRq><ListID>" + std::string(listId) + "</ListID></ItemServiceQueryRq>", Tag()),
        element);
  }
  // The ListID of the item of that name; "(none)" without one.
  std::string ItemId(std::string_view fullName) {
    return TextOf(
        Company("<ItemServiceQueryRq><FullName>" + std::string(fullName) + "</FullName></ItemServiceQueryRq>", Tag()),
        "ListID");
  }
  // The only request of that kind, what it adds or modifies alone: without its own tags and, of a Mod, its identity.
  [[nodiscard]] std::string Sent(std::string_view request) const {
    const auto all = Requests(request);
    EXPECT_EQ(all.size(), 1U);
    if (all.size() != 1) return {};
    auto text = all[0].substr(all[0].find('>') + 1);
    text.resize(text.rfind("</"));
    if (const auto identity = text.find("</EditSequence>"); identity != std::string::npos) {
      text.erase(0, identity + std::string_view("</EditSequence>").size());
    }
    return text;
  }

  std::string income;  // the ListID of "Other Income"

 private:
  static std::string Named(std::string_view name) { return "<Name>" + std::string(name) + "</Name>"; }
  static std::string Ref(const std::string& element) {
    return "<" + element + "><FullName>Other Income</FullName></" + element + ">";
  }
  std::string Added(const std::string& request) {
    const auto answer = Company(request, Tag());
    EXPECT_NE(answer.find("statusCode=\"0\""), std::string::npos) << answer;
    return TextOf(answer, "ListID");
  }
};

}  // namespace twqb
