// What QuickBooks has of its own: accounts, classes, vendors, employees, customers with their jobs, and items.
#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "platform/Text.h"
#include "samples/firm/Parts.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

// A name, or what else QuickBooks keeps: no colon, which divides full names, and no blank lost at an end.
std::string OwnText(Dice& dice, std::string_view text, std::size_t longest) {
  return Trim(ReplaceAll(SomeText(dice, text, longest), ":", ";"));
}

std::string OptionalText(Dice& dice, std::string_view text, std::size_t longest) {
  auto shaped = OwnText(dice, text, longest);
  return dice.OnceIn(4) ? std::string() : shaped;
}

// Unlike any other of its kind: the number stands in front, where nothing cuts it off.
std::string OwnName(Dice& dice, std::string_view text, std::int64_t number, std::size_t longest) {
  return OwnText(dice, fmt::format("Q{} {}", number, text), longest);
}

struct Account {
  std::string_view name;
  std::string_view type;
  std::string_view number;
  std::string_view parent = {};
};
constexpr std::array kAccounts = {
    Account{.name = "Checking", .type = "Bank", .number = "10000"},
    Account{.name = "Inventory Asset", .type = "OtherCurrentAsset", .number = "13400"},
    Account{.name = "Travel Card", .type = "CreditCard", .number = "21000"},
    Account{.name = "Professional Fees", .type = "Income", .number = "40000"},
    Account{.name = "Survey Fees", .type = "Income", .number = "40100", .parent = "Professional Fees"},
    Account{.name = "Cost of Goods Sold", .type = "CostOfGoodsSold", .number = "50000"},
    Account{.name = "Payroll Expenses", .type = "Expense", .number = "60000"},
    Account{.name = "Travel", .type = "Expense", .number = "61000"},
    Account{.name = "Subcontractors", .type = "Expense", .number = {}},
    Account{.name = "Discounts Given", .type = "Income", .number = {}},
    Account{.name = "Other Income", .type = "OtherIncome", .number = "90000"},
};
constexpr std::string_view kIncome = "Professional Fees";
constexpr std::string_view kSurveys = "Professional Fees:Survey Fees";
constexpr std::string_view kCosts = "Subcontractors";

// All kinds of items share their names: the numbers of each begin elsewhere.
constexpr std::int64_t kCharges = 500;
constexpr std::int64_t kPlots = 1'000;
constexpr std::int64_t kPins = 2'000;

constexpr std::array kJobTypes = {"Fixed", "Hourly", "Hourly Not To Exceed", "Percentage", "Recurring"};

class OwnListsOfAFirm {
 public:
  OwnListsOfAFirm(const Model& model, Requests& requests)
      : model_(model), plan_(model.plan), requests_(requests), dice_(DiceFor(model.plan, Purpose::OwnLists)) {}

  OwnRecords Add() {
    AddAccounts();
    AddPlainLists();
    const auto people = 1 + plan_.clients / 10;
    for (std::int64_t i = 1; i <= people; ++i) AddVendor(i);
    for (std::int64_t i = 1; i <= people; ++i) AddEmployee(i);
    const auto customers = 2 + plan_.clients / 4;
    for (std::int64_t i = 1; i <= customers; ++i) AddCustomer(i);
    for (std::size_t i = 0; i < model_.clients.size(); i += 10) AddNamesInUse(i);
    const auto items = std::min<std::int64_t>(2 + plan_.clients / 5, 60);
    for (std::int64_t i = 1; i <= items; ++i) AddService(i);
    for (std::int64_t i = 1; i <= items; ++i) AddCharge(i);
    AddGoods();
    return std::move(records_);
  }

 private:
  void AddAccounts() {
    for (const auto& account : kAccounts) {
      requests_.Add(Request("Account")
                        .Put("Name", account.name)
                        .Ref("ParentRef", account.parent)
                        .Put("AccountType", account.type)
                        .Put("AccountNumber", account.number)
                        .Put("Desc", OptionalText(dice_, "As in the books", 29)));
    }
    const auto more = plan_.clients / 8;
    for (std::int64_t i = 1; i <= more; ++i) {
      requests_.Add(Request("Account")
                        .Put("Name", OwnName(dice_, Place(dice_), i, 31))
                        .Ref("ParentRef", dice_.OnceIn(2) ? kCosts : std::string_view())
                        .Put("AccountType", "Expense")
                        .Put("AccountNumber", dice_.OnceIn(2) ? fmt::format("{}", 62'000 + i) : "")
                        .Put("Desc", OptionalText(dice_, Task(dice_), 29)));
    }
  }

  void AddPlainLists() {
    for (const auto* name : {"Surveys", "Water"}) requests_.Add(Request("Class").Put("Name", name));
    for (const auto* name : kJobTypes) requests_.Add(Request("JobType").Put("Name", name));
    requests_.Add(Request("PaymentMethod").Put("Name", "Bank Transfer"));
    // With Sick Hourly, which a Canadian file would refuse to be asked for, as a bookkeeper adds it by hand.
    for (const auto* name : {"Hourly Wage", "Sick Hourly"}) {
      requests_.Add(Request("PayrollItemWage")
                        .Put("Name", name)
                        .Put("WageType", "HourlyRegular")
                        .Ref("ExpenseAccountRef", "Payroll Expenses"));
    }
  }

  void PutPlace(Request& request, std::string_view field, std::string_view first) {
    request.Open(field).Put("Addr1", Trim(Left(first, 41))).Put("Addr2", OptionalText(dice_, Street(dice_), 41));
    request.Put("City", OptionalText(dice_, City(dice_), 31))
        .Put("PostalCode", OptionalText(dice_, PostalCode(dice_), 13));
    request.Close();
  }
  void PutPhone(Request& request, std::string_view field) {
    request.Put(field, Trim(Left(Phone(dice_).value_or(""), 21)));
  }

  void AddVendor(std::int64_t number) {
    const auto name = OwnName(dice_, CompanyWords(dice_), number, 41);
    Request request("Vendor");
    request.Put("Name", name).Put("CompanyName", dice_.OnceIn(3) ? std::string() : name);
    request.Put("Salutation", dice_.OnceIn(2) ? "Mr." : "").Put("FirstName", OptionalText(dice_, FirstName(dice_), 25));
    request.Put("LastName", OptionalText(dice_, LastName(dice_), 25));
    PutPlace(request, "VendorAddress", name);
    PutPhone(request, "Phone");
    request.Put("Email", dice_.OnceIn(2) ? fmt::format("v{}@own.example", number) : "");
    requests_.Add(request);
    records_.vendors.push_back(name);
  }

  void AddEmployee(std::int64_t number) {
    const auto first = fmt::format("{} Q{}", FirstName(dice_), number);
    const auto last = LastName(dice_);
    Request request("Employee");
    request.Put("Salutation", dice_.OnceIn(2) ? "Dr." : "").Put("FirstName", first).Put("LastName", last);
    PutPlace(request, "EmployeeAddress", Street(dice_));
    PutPhone(request, "Phone");
    request.Put("Email", dice_.OnceIn(2) ? fmt::format("e{}@own.example", number) : "");
    request.Put("Gender", dice_.OnceIn(2) ? "Female" : "Male").Put("HiredDate", "2001-06-04");
    requests_.Add(request);
    records_.employees.push_back(fmt::format("{} {}", first, last));
  }

  void AddCustomer(std::int64_t number) {
    const auto name = OwnName(dice_, CompanyWords(dice_), number, 41);
    Request request("Customer");
    request.Put("Name", name).Put("CompanyName", dice_.OnceIn(4) ? std::string() : name);
    const bool hasContact = dice_.OnceIn(5);
    if (!hasContact) {
      request.Put("Salutation", dice_.OnceIn(3) ? "Ms." : "")
          .Put("FirstName", OptionalText(dice_, FirstName(dice_), 25));
      request.Put("LastName", OptionalText(dice_, LastName(dice_), 25));
    }
    PutPlace(request, "BillAddress", name);
    PutPhone(request, "Phone");
    PutPhone(request, "Fax");
    request.Put("Contact", hasContact ? "Ward van der Hollis" : "");
    requests_.Add(request);
    records_.customers.push_back(name);
    for (auto left = dice_.Of(0, 2); left > 0; --left) AddJob(name, 1);
  }

  void AddJob(const std::string& above, int level) {
    const auto name = OwnName(dice_, Place(dice_), static_cast<std::int64_t>(records_.jobs.size()) + 1, 41);
    Request request("Customer");
    request.Put("Name", name).Ref("ParentRef", above);
    if (dice_.OnceIn(2)) PutPlace(request, "ShipAddress", Street(dice_));
    constexpr std::array kStatuses = {"Awarded", "Closed", "InProgress", "NotAwarded", "Pending"};
    request.Put("JobStatus", dice_.OnceIn(5) ? "" : dice_.OneOf(kStatuses));
    request.Put("JobStartDate", dice_.OnceIn(2) ? "2007-06-04" : "");
    request.Ref("JobTypeRef", dice_.OnceIn(2) ? "" : dice_.OneOf(kJobTypes));
    requests_.Add(request);
    const auto fullName = fmt::format("{}:{}", above, name);
    records_.jobs.push_back(fullName);
    if (level < 3 && dice_.OnceIn(3)) AddJob(fullName, level + 1);
  }

  // What that client and the activity of a tenth of its number would be called.
  void AddNamesInUse(std::size_t number) {
    const auto& client = model_.clients[number];
    const auto company = client.company.value_or("");
    const auto name = company.empty() ? client.key : fmt::format("{} ({})", company, client.key);
    // Behind one that is full no counter would fit.
    const bool isShort = CharacterCount(name) < 40 && Trim(name) == name;
    if (dice_.OnceIn(3) && isShort) requests_.Add(Request("Customer").Put("Name", name));
    const auto activity = number / 10;
    if (!dice_.OnceIn(3) || activity >= model_.activities.size()) return;
    Request request("ItemService");
    request.Put("Name", Trim(ReplaceAll(model_.activities[activity], ":", " ")));
    PutPrices(request);
    requests_.Add(request);
  }

  // Sold alone, or bought, too: then dearer than it costs.
  void PutPrices(Request& request) {
    const auto cost = dice_.Of(1, 900) * 25;
    if (dice_.OnceIn(2)) {
      request.Open("SalesOrPurchase").Put("Desc", OptionalText(dice_, Task(dice_), 300)).Money("Price", cost);
      request.Ref("AccountRef", dice_.OnceIn(2) ? kIncome : kSurveys).Close();
      return;
    }
    request.Open("SalesAndPurchase").Put("SalesDesc", OptionalText(dice_, Task(dice_), 300));
    request.Money("SalesPrice", cost + dice_.Of(0, 40) * 25).Ref("IncomeAccountRef", kIncome);
    request.Money("PurchaseCost", cost).Ref("ExpenseAccountRef", kCosts).Close();
  }

  void AddItem(const char* kind, std::int64_t number, std::vector<std::string>& names) {
    const auto name = OwnName(dice_, Task(dice_), number, 31);
    // Below the one before, now and then.
    const auto parent = !names.empty() && dice_.OnceIn(4) ? names.back() : std::string();
    const bool isTop = parent.empty() || parent.find(':') != std::string::npos;
    Request request(kind);
    request.Put("Name", name).Ref("ParentRef", isTop ? "" : parent);
    PutPrices(request);
    requests_.Add(request);
    names.push_back(isTop ? name : fmt::format("{}:{}", parent, name));
  }
  void AddService(std::int64_t number) { AddItem("ItemService", number, records_.services); }
  void AddCharge(std::int64_t number) { AddItem("ItemOtherCharge", kCharges + number, records_.charges); }

  void AddGoods() {
    const auto goods = 1 + plan_.clients / 20;
    for (std::int64_t i = 1; i <= goods; ++i) {
      const auto set = OwnName(dice_, "Plot Set", kPlots + i, 31);
      Request plots("ItemNonInventory");
      plots.Put("Name", set);
      PutPrices(plots);
      requests_.Add(plots);
      records_.charges.push_back(set);
      const auto pin = OwnName(dice_, "Iron Pin", kPins + i, 31);
      const auto cost = dice_.Of(1, 900);
      requests_.Add(Request("ItemInventory")
                        .Put("Name", pin)
                        .Put("SalesDesc", OptionalText(dice_, "Iron pin with cap", 300))
                        .Money("SalesPrice", cost * 3)
                        .Ref("IncomeAccountRef", kIncome)
                        .Money("PurchaseCost", cost)
                        .Ref("COGSAccountRef", "Cost of Goods Sold")
                        .Ref("AssetAccountRef", "Inventory Asset")
                        .Number("QuantityOnHand", dice_.Of(50, 90))
                        .Put("InventoryDate", "2006-12-31"));
      records_.charges.push_back(pin);
    }
  }

  const Model& model_;
  const FirmPlan& plan_;
  Requests& requests_;
  Dice dice_;
  OwnRecords records_;
};

}  // namespace

OwnRecords AddOwnLists(const Model& model, Requests& requests) { return OwnListsOfAFirm(model, requests).Add(); }

}  // namespace twqb::firm
