// A house in which the expense code routines are called as the dispatcher calls them, with accounts in QuickBooks.
#pragma once

#include "lists/modExpenseCodes.h"
#include "tests/lists/ListHouse.h"

namespace twqb {

inline constexpr TestedTable kExpenseCodeTable = {.table = enExpenseCodes,
                                                  .name = "Expense",
                                                  .keyColumn = "ExpID",
                                                  .toQB = MoveExpenseCodesToQB,
                                                  .toTW = MoveExpenseCodesToTW};

inline constexpr std::string_view kOtherChargeItem = "ItemOtherCharge";
inline constexpr std::string_view kInventoryItem = "ItemInventory";
inline constexpr std::string_view kNonInventoryItem = "ItemNonInventory";

class ExpenseCodesHouse : public ListHouse {
 public:
  // `country` is that of the company file, too.
  explicit ExpenseCodesHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : ListHouse(kExpenseCodeTable, In(country, std::move(options)), faults, country),
        otherIncome(Account("Other Income", "OtherIncome")),
        fees(Account("Fees", "Income")),
        costs(Account("Costs", "Expense")),
        goods(Account("Goods", "CostOfGoodsSold")) {
    Account("Stock", "OtherCurrentAsset");
  }

  // Columns beside the key, as "ExpCost, ..." and their SQL expressions.
  void Code(std::string_view key, std::string_view columns = {}, std::string_view values = {}) {
    Row("ExpID" + (columns.empty() ? std::string() : ", " + std::string(columns)),
        "'" + std::string(key) + "'" + (values.empty() ? std::string() : ", " + std::string(values)));
  }
  // The same of a code with that twin, which goes at any time.
  void Linked(std::string_view key, std::string_view twin, std::string_view columns = {},
              std::string_view values = {}) {
    Code(key, "QBLinkID" + (columns.empty() ? std::string() : ", " + std::string(columns)),
         "'" + std::string(twin) + "'" + (values.empty() ? std::string() : ", " + std::string(values)));
  }

  // Items with what stands behind their names, and inside their form, in the order of the wire; their ListIDs.
  std::string SoldAndBought(std::string_view kind, std::string_view name, std::string_view sale = {},
                            std::string_view purchase = {}, std::string_view behindName = {}) {
    return Add(kind, fmt::format("<Name>{}</Name>{}<SalesAndPurchase>{}<IncomeAccountRef><FullName>Fees</FullName>"
                                 "</IncomeAccountRef>{}<ExpenseAccountRef><FullName>Costs</FullName>"
                                 "</ExpenseAccountRef></SalesAndPurchase>",
                                 name, behindName, sale, purchase));
  }
  std::string SoldOrBought(std::string_view kind, std::string_view name, std::string_view inside = {},
                           std::string_view behindName = {}) {
    return Add(kind, fmt::format("<Name>{}</Name>{}<SalesOrPurchase>{}<AccountRef><FullName>Fees</FullName>"
                                 "</AccountRef></SalesOrPurchase>",
                                 name, behindName, inside));
  }
  std::string Inventory(std::string_view name, std::string_view sale = {}, std::string_view purchase = {},
                        std::string_view behindName = {}) {
    return Add(kInventoryItem, fmt::format("<Name>{}</Name>{}{}<IncomeAccountRef><FullName>Fees</FullName>"
                                           "</IncomeAccountRef>{}<COGSAccountRef><FullName>Goods</FullName>"
                                           "</COGSAccountRef><AssetAccountRef><FullName>Stock</FullName>"
                                           "</AssetAccountRef>",
                                           name, behindName, sale, purchase));
  }
  // The reader takes the other kinds only where there is one of these.
  void AddAnOtherCharge() { SoldOrBought(kOtherChargeItem, "Solo"); }

  [[nodiscard]] std::vector<std::string> Adds() const { return Requests("ItemOtherChargeAddRq"); }

  // ListIDs of the accounts.
  std::string otherIncome;
  std::string fees;
  std::string costs;
  std::string goods;

 private:
  static HouseOptions In(std::string_view country, HouseOptions options) {
    if (country == "CA") options.company.country = messages::Country::CA;
    if (country == "UK") options.company.country = messages::Country::UK;
    return options;
  }
  std::string Account(std::string_view name, std::string_view type) {
    return Add("Account", fmt::format("<Name>{}</Name><AccountType>{}</AccountType>", name, type));
  }
};

}  // namespace twqb
