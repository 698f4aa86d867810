// What goes to QuickBooks comes back into an empty BillingDb as it was, column by column, but for the exceptions that
// are named here. The exceptions are the rules of the link, seen from a row.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <set>

#include "tests/firm/Returned.h"

namespace twqb {
namespace {

constexpr const char* kDayOfTheRun = "3/5/2008";

// What is known of a firm on both sides of the way.
class Return {
 public:
  Return(FirmHouse& house, FirmHouse& empty, Exceptions& exceptions)
      : house_(house), empty_(empty), exceptions_(exceptions) {
    for (const auto* kind : {"Customer", "Employee", "Vendor", "ItemService", "ItemOtherCharge"}) {
      house.ForEachRecord(kind, "<ActiveStatus>All</ActiveStatus>", [&](const pugi::xml_node& record) {
        names_[record.child_value("ListID")] = record.child_value("Name");
        inUse_.insert(Trim(record.child_value("Name")));
      });
    }
    ReadKeys("Employee", "EmployeeID");
    ReadKeys("Client", "ClientID");
    ReadKeys("Project", "ProjectID");
    ReadKeys("Activity", "ActivityID");
    ReadKeys("Expense", "ExpID");
    ReadKeys("VendorBill", "VendorBillID");
    for (const auto& row : empty.RowsOf("SELECT * FROM Activity")) activities_[row.at("ActivityID").value()] = row;
    for (const auto& row : empty.RowsOf("SELECT * FROM Expense")) codes_[row.at("ExpID").value()] = row;
    for (const auto& row : empty.RowsOf("SELECT * FROM Project")) projects_[row.at("ProjectID").value()] = row;
  }

  void Compare() {
    Each("Client", "Client", "", [&](const Pair& pair) { CompareClient(pair); });
    Each("Project", "Project", "", [&](const Pair& pair) { CompareProject(pair); });
    Each("Employee", "Employee", "IsSub = 0", [&](const Pair& pair) { CompareEmployee(pair); });
    Each("Vendor", "Employee", "IsSub = -1", [&](const Pair& pair) { CompareVendor(pair); });
    Each("Activity", "Activity", "", [&](const Pair& pair) { CompareActivity(pair); });
    Each("Expense", "Expense", "", [&](const Pair& pair) { CompareExpenseCode(pair); });
    Each("AccountList", "AccountList", "", [&](const Pair& pair) { CompareAccount(pair); });
    Each("TimeEntry", "TimeEntry", "VendorBillID IS NULL", [&](const Pair& pair) { CompareHours(pair); });
    Each("BilledHours", "TimeEntry", "VendorBillID IS NOT NULL", [&](const Pair& pair) { CompareBilledHours(pair); });
    Each("BilledExpense", "ExpenseLog", "VendorBillID IS NOT NULL",
         [&](const Pair& pair) { CompareBilledExpense(pair); });
    Each("NamedExpense", "ExpenseLog", "VendorBillID IS NULL", [&](const Pair& pair) { CompareNamedExpense(pair); });
    Each("VendorBill", "VendorBill", "", [&](const Pair& pair) { CompareBill(pair); });
    Each("Invoice", "TransactionTable", "PayID IS NULL", [&](const Pair& pair) { CompareInvoice(pair); });
    ComparePayments();
  }

 private:
  using Keys = std::map<std::string, std::string>;

  // Which key came back for a key.
  void ReadKeys(const std::string& table, const std::string& key) {
    Keys byLink;
    const auto statement = fmt::format("SELECT {}, QBLinkID FROM {} WHERE QBLinkID <> ''", key, table);
    for (const auto& row : empty_.RowsOf(statement)) byLink[row.at("QBLinkID").value()] = row.at(key).value();
    for (const auto& row : house_.RowsOf(statement))
      keys_[table][row.at(key).value()] = byLink[row.at("QBLinkID").value()];
  }
  [[nodiscard]] std::string Back(const std::string& table, const std::string& key) {
    return key.empty() ? "" : keys_[table][key];
  }
  [[nodiscard]] std::string NameOf(const Pair& pair) { return names_[pair.Link()]; }
  static std::string WithoutJunk(std::string text) {
    for (char& c : text) {
      if (std::string_view(",#;:'").find(c) != std::string_view::npos) c = ' ';
    }
    return text;
  }

  template <typename CompareRow>
  void Each(const std::string& shown, const std::string& table, const std::string& condition, CompareRow compare) {
    std::map<std::string, Fields> back;
    for (auto& row : empty_.RowsOf("SELECT * FROM " + table)) back.emplace(row["QBLinkID"].value_or(""), row);
    for (const auto& row : house_.RowsOf("SELECT * FROM " + table + " WHERE QBLinkID <> ''" +
                                         (condition.empty() ? "" : " AND " + condition))) {
      const auto found = back.find(row.at("QBLinkID").value());
      if (found == back.end()) {
        ADD_FAILURE() << shown << " " << row.at("QBLinkID").value() << " did not come back";
        continue;
      }
      compare(Pair(shown, row, found->second, exceptions_));
    }
  }

  // The name that a record has: the one it was to have, cut, or with a counter where that one is in use.
  void CompareName(const Pair& pair, const std::string& column, const std::string& wanted, std::size_t longest) {
    const auto name = NameOf(pair);
    const auto cut = Left(wanted, longest);
    auto& met = exceptions_[column + ": a name in use gets a counter"];
    if (Trim(name) == Trim(cut)) return;
    ++met;
    const auto counted = [&](const std::string& base) { return Trim(name).starts_with(Trim(Left(base, longest - 2))); };
    EXPECT_TRUE(counted(cut) && inUse_.contains(Trim(cut))) << column << ": " << name << ", not " << cut;
  }

  void CompareClient(const Pair& pair) {
    const auto key = pair.Was("ClientID");
    const auto company = pair.Was("ClientCompany");
    CompareName(pair, "Client.Name", company.empty() ? key : fmt::format("{} ({})", company, key), 41);
    pair["ClientID"].Unless(true, WithoutJunk(NameOf(pair)), "is made of QuickBooks' name").IsBack();
    pair["ClientCompany"].Cut(41).IsBack();
    pair["ClientFName"].Cut(25).IsBack();
    pair["ClientLName"].Cut(25).IsBack();
    pair["ClientMI"].IsBack();
    pair["ClientMainSalt"].NotBlank().IsBack();
    pair["ClientStreet"].Cut(41).IsBack();
    pair["ClientStreet2"].Cut(41).IsBack();
    pair["ClientCity"].Cut(31).IsBack();
    pair["ClientState"].Cut(21).IsBack();
    pair["ClientZip"].Cut(13).IsBack();
    for (const auto* column : {"ClientPhone", "ClientMainPhone", "ClientFax"}) pair[column].Phone().IsBack();
    pair["ClientEmail"].IsBack();
    pair["ClientSince"].Unless(true, kDayOfTheRun, "is the day on which QuickBooks got it").IsBack();
    pair["Status"].StaysHere("Active").IsBack();
  }

  void CompareProject(const Pair& pair) {
    const auto name = ReplaceAll(pair.Was("ProjectName"), ":", " ");
    const auto prefix = ReplaceAll(pair.Was("ProjectID"), ":", "-") + " ";
    const auto begins = prefix.ends_with("- ") ? prefix.substr(0, prefix.size() - 2) : prefix;
    const bool hasKey = UpperCase(name).starts_with(UpperCase(begins)) || CharacterCount(prefix) > 41;
    CompareName(pair, "Project.Name", hasKey ? name : prefix + name, 41);
    pair["ProjectName"].Unless(true, NameOf(pair), "is QuickBooks' name").IsBack();
    pair["ClientID"].Unless(true, Back("Client", pair.Was("ClientID")), "is the client's key there").IsBack();
    const auto parent = Back("Project", pair.Was("ParentProjectID"));
    pair["ParentProjectID"].Unless(true, parent, "is the parent's key there").IsBack();
    pair["ProjectIsPhase"].IsBack();
    pair["PhaseDescription"]
        .Unless(!parent.empty(), Left("Phase of " + parent, 120), "is made of the parent's key")
        .IsBack();
    pair["EmployeeID"].Unless(true, "From QuickBooks", "nobody has the manager's key there").IsBack();
    pair["ProjectConType"].StaysHere("Hourly").IsBack();
    pair["ProjectStatus"].Unless(true, "Active", "the way out and the way back do not match").IsBack();
    pair["ProjectStartDate"]
        .Unless(pair.Was("ProjectStartDate").empty(), kDayOfTheRun, "is the day of QuickBooks")
        .IsBack();
    pair["ProjectStreet"].Cut(41).IsBack();
    pair["ProjectStreet2"].Cut(41).IsBack();
    pair["ProjectCity"].Cut(31).IsBack();
    pair["ProjectState"].NotBlank().Cut(21).IsBack();
    pair["ProjectZip"].Cut(13).IsBack();
    pair["ProjectMemo"].StaysHere("").IsBack();
  }

  // Name, numbers, and what both kinds of people have.
  void ComparePerson(const Pair& pair) {
    pair["EmployeeID"].Unless(true, WithoutJunk(NameOf(pair)), "is made of QuickBooks' name").IsBack();
    pair["EmpMI"].IsBack();
    pair["EmpSalt"].NotBlank().IsBack();
    pair["EmpCity"].Cut(31).IsBack();
    pair["EmpState"].NotBlank().Cut(21).IsBack();
    pair["EmpZip"].Cut(13).IsBack();
    pair["EmpHPhone"].Phone().IsBack();
    pair["EmpContactPhone"].Phone().IsBack();
    pair["EmpEmail"].IsBack();
    pair["EmpBillRate"].StaysHere("1").IsBack();
    pair["EmpCostRate"].StaysHere("1").IsBack();
    pair["IsSub"].IsBack();
    pair["Status"].Unless(pair.Was("Status").empty(), "Active", "without one it is active").IsBack();
  }
  void CompareFirstName(const Pair& pair, Column column) {
    const auto first = pair.Was("EmpFName");
    std::string counted;
    for (int counter = 1; counter < 10; ++counter) {
      const auto name = Left(fmt::format("{}{}", first, counter), 25);
      if (NameOf(pair).starts_with(name)) counted = name;
    }
    column.Cut(25).Unless(!counted.empty(), counted, "a name in use gets a counter").IsBack();
  }
  void CompareEmployee(const Pair& pair) {
    ComparePerson(pair);
    CompareFirstName(pair, pair["EmpFName"]);
    pair["EmpLName"].IsBack();
    pair["EmpStreet"].Cut(41).IsBack();
    pair["EmpStreet2"].Cut(41).IsBack();
    pair["MobileNumber"].Phone().IsBack();
    pair["EmpHFax"].StaysHere("").IsBack();
    pair["EmpDateHired"].IsBack();
    pair["EmpDateReleased"].IsBack();
    pair["EmpSSN"].Unless(pair.Was("EmpSSN") == "111111111", "", "is typed in for want of a number").IsBack();
  }
  void CompareVendor(const Pair& pair) {
    ComparePerson(pair);
    constexpr std::string_view kNobody = "a name that nobody gave";
    CompareFirstName(pair, pair["EmpFName"].Unless(pair.Was("EmpFName").empty(), "Missing Data", kNobody));
    pair["EmpLName"].Unless(pair.Was("EmpLName").empty(), "Missing Data", kNobody).IsBack();
    pair["EmpCompany"].IsBack();
    pair["EmpStreet"].Unless(true, pair.Was("EmpCompany"), "the company stands in the first line").IsBack();
    pair["EmpStreet2"].Unless(true, Left(pair.Was("EmpStreet"), 41), "the company stands in the first line").IsBack();
    pair["MobileNumber"].StaysHere("").IsBack();
    pair["EmpHFax"].Phone().IsBack();
    pair["EmpDateHired"].Unless(true, "", "does not come back").IsBack();
    pair["EmpSSN"].Unless(true, "", "does not come back").IsBack();
  }

  // An item's key is its name, which is the key that it had, with a blank in the place of the colon.
  void CompareItemKey(const Pair& pair, const std::string& key, const std::string& code, const std::string& sub) {
    CompareName(pair, key, ReplaceAll(pair.Was(key), ":", " "), 31);
    pair[key].Unless(true, WithoutJunk(NameOf(pair)) + ":", "is made of QuickBooks' name").IsBack();
    pair[code].Unless(true, WithoutJunk(NameOf(pair)), "is QuickBooks' name").IsBack();
    pair[sub].Unless(true, "", "has become a part of the name").IsBack();
    for (const auto* tax : {"Tax1_Rate", "Tax2_Rate", "Tax3_Rate"}) pair[tax].StaysHere("0").IsBack();
    pair["IsInActive"].Unless(pair.Was("IsInActive").empty(), "0", "without one it is active").IsBack();
  }
  void CompareActivity(const Pair& pair) {
    CompareItemKey(pair, "ActivityID", "ActivityCode", "ActivitySub");
    pair["ActivityDescription"].IsBack();
    pair["AC_CostRate"].IsBack();
    pair["AC_BillRate"].IsBack();
    pair["AC_MinHours"].StaysHere("0").IsBack();
    pair["ActivityBillable"].StaysHere("-1").IsBack();
  }
  void CompareExpenseCode(const Pair& pair) {
    CompareItemKey(pair, "ExpID", "ExpCode", "ExpSub");
    pair["ExpDescription"]
        .Unless(pair.Was("ExpDescription").empty(), NameOf(pair), "without one it is the name")
        .IsBack();
    const auto cost = pair.Was("ExpCost");
    const auto markup = pair.Was("ExpMarkup");
    pair["ExpCost"].Unless(cost.empty(), "0", "without one it is nothing").IsBack();
    pair["ExpMarkup"]
        .Unless(cost.empty() || cost == "0", "0", "on a cost of nothing there is none")
        .Unless(markup.empty(), "0", "without one it is nothing")
        .Within(0.05, "is worked out of price and cost")
        .IsBack();
    pair["Exp_Memo"].StaysHere("").IsBack();
    pair["ExpBillable"].StaysHere("-1").IsBack();
    pair["Reimbursable"].StaysHere("0").IsBack();
  }

  void CompareAccount(const Pair& pair) {
    pair["AccountID"].IsBack();
    pair["AccountName"].Unless(true, WithoutJunk(pair.Was("AccountName")), "is without junk").IsBack();
    pair["AccountTypeID"].IsBack();
    const auto parent = pair.Was("ParentAccountID");
    const bool parentWent =
        house_.Scalar("SELECT COUNT(*) FROM AccountList WHERE QBLinkID <> '' AND AccountID = '" + parent + "'") == "1";
    pair["ParentAccountID"].Unless(!parentWent, "", "its parent's name is in use").IsBack();
    pair["AccountDesc"].Cut(29).IsBack();
    pair["OpenBalance"].Unless(true, "", "does not come back").IsBack();
    pair["OpenBalanceDate"].Unless(true, "", "does not come back").IsBack();
    pair["IsInActive"].IsBack();
  }

  // Who did it, for what, as they are called there.
  void CompareWork(const Pair& pair, const std::string& code) {
    const auto project = Back("Project", pair.Was("ProjectID"));
    pair["ProjectID"].Unless(true, project, "is the project's key there").IsBack();
    pair[code]
        .Unless(true, Back(code == "ExpID" ? "Expense" : "Activity", pair.Was(code)), "is the code's key there")
        .IsBack();
  }
  [[nodiscard]] Column PersonOf(const Pair& pair) {
    return pair["EmployeeID"].Unless(true, Back("Employee", pair.Was("EmployeeID")), "is the person's key there");
  }
  void CompareHours(const Pair& pair) {
    CompareWork(pair, "ActivityID");
    PersonOf(pair).IsBack();
    const auto& activity = activities_[Back("Activity", pair.Was("ActivityID"))];
    pair["ProjectName"]
        .Unless(true, projects_[Back("Project", pair.Was("ProjectID"))].at("ProjectName").value_or(""),
                "is the project's name there")
        .IsBack();
    pair["TEDate"].IsBack();
    const bool isLong = TextToNumber(pair.Was("TEHours")) > 24;
    for (const auto* hours : {"TEHours", "aHours"}) {
      constexpr double kMinute = 1.0 / 60 + 0.0003;
      pair[hours].Unless(isLong, "24", "more than a day is a day").Within(kMinute, "seconds are dropped").IsBack();
    }
    const auto note = pair.Was("TEDescription");
    const auto itemName = names_[activity.at("QBLinkID").value_or("")];
    pair["TEDescription"].Unless(note.empty(), itemName, "without one it is the item's name").IsBack();
    pair["TEMemo"].Unless(true, note, "is the description once more").IsBack();
    pair["TEMemoExists"].Unless(true, note.empty() ? "0" : "-1", "is the description once more").IsBack();
    pair["TEBill"].IsBack();
    for (const auto& [column, rate] :
         {std::pair("TEBillRate", "AC_BillRate"), std::pair("TECostRate", "AC_CostRate")}) {
      const auto ofActivity = activity.at(rate).value_or("");
      const bool hasRate = !ofActivity.empty() && ofActivity != "0";
      pair[column].Unless(true, hasRate ? ofActivity : "1", "is the activity's").IsBack();
    }
    pair["TEBillStatus"].StaysHere("N").IsBack();
    pair["TEPosted"].IsBack();
    for (const auto* flag : {"TEOT", "TEXtraWork", "TEFlag1", "TEFlag2", "isSub"}) pair[flag].StaysHere("0").IsBack();
    for (const auto* column : {"WUD", "TECompTime", "TransactionID"}) pair[column].StaysHere("").IsBack();
  }

  void CompareBilledHours(const Pair& pair) {
    CompareWork(pair, "ActivityID");
    PersonOf(pair).IsBack();
    pair["VendorBillID"].Unless(true, Back("VendorBill", pair.Was("VendorBillID")), "is the bill's key there").IsBack();
    pair["TEDate"].IsBack();
    pair["TEHours"].IsBack();
    const auto units = TextToNumber(pair.Was("TEHours"));
    pair["TECostRate"].Within(0.0051 / units + 0.0001, "is worked out of the line's amount").IsBack();
    const auto& activity = activities_[Back("Activity", pair.Was("ActivityID"))];
    pair["TEDescription"]
        .Unless(pair.Was("TEDescription").empty(), activity.at("ActivityDescription").value_or(""),
                "without one it is the activity's")
        .Unless(pair.Was("TEDescription").empty() && activity.at("ActivityDescription").value_or("").empty(),
                "From QuickBooks", "without that one, too, it tells where it is from")
        .IsBack();
    pair["TEBill"].Unless(true, "-1", "whatever it was").IsBack();
    pair["TEPosted"].Unless(true, "-1", "comes as posted").IsBack();
    pair["TEBillStatus"].IsBack();
    pair["isSub"].IsBack();
  }
  void CompareExpense(const Pair& pair) {
    CompareWork(pair, "ExpID");
    const auto person = Back("Employee", pair.Was("EmployeeID"));
    PersonOf(pair).Unless(true, Trim(person), "is without blanks at its ends").IsBack();
    pair["ELUnits"].IsBack();
    const auto units = TextToNumber(pair.Was("ELUnits"));
    pair["ELCost"].Within(0.0051 / units + 0.0001, "is worked out of the line's amount").IsBack();
    const auto& code = codes_[Back("Expense", pair.Was("ExpID"))];
    pair["ELDescription"]
        .Unless(pair.Was("ELDescription").empty(), code.at("ExpDescription").value_or(""),
                "without one it is the code's")
        .IsBack();
    pair["ELMarkup"].StaysHere("0").IsBack();
    pair["ELBillable"].Unless(true, "-1", "whatever it was").IsBack();
    pair["ELBilled"].IsBack();
    pair["ELPosted"].Unless(true, "0", "comes as not posted").IsBack();
    pair["isSub"].StaysHere("0").IsBack();
  }
  void CompareBilledExpense(const Pair& pair) {
    CompareExpense(pair);
    pair["ELDate"].IsBack();
    const auto bill = Back("VendorBill", pair.Was("VendorBillID"));
    pair["VendorBillID"].Unless(true, bill, "is the bill's key there").IsBack();
  }
  // Each vendor's are a bill there.
  void CompareNamedExpense(const Pair& pair) {
    CompareExpense(pair);
    pair["ELDate"].Beginning("", "is the day of the bill's last line").IsBack();
    pair["VendorBillID"].Beginning("{", "is a bill's there").IsBack();
  }
  void CompareBill(const Pair& pair) {
    pair["VendorID"].Unless(true, Back("Employee", pair.Was("VendorID")), "is the vendor's key there").IsBack();
    const auto number = empty_.Scalar("SELECT BillNumber FROM VendorBill WHERE QBLinkID = '" + pair.Link() + "'");
    pair["BillNumber"].Unless(pair.Was("BillNumber").empty(), number, "without one it gets one").IsBack();
    pair["BillDate"].IsBack();
    pair["BillDueDate"]
        .Unless(pair.Was("BillDueDate").empty(), "4/4/2008", "without one it is thirty days on")
        .IsBack();
    pair["BillMemo"].StaysHere("").IsBack();
    pair["BillRef"].StaysHere("From QuickBooks").IsBack();
  }

  void CompareInvoice(const Pair& pair) {
    const auto total = pair.Was("TransactionInvBillAmt");
    pair["ClientID"].Unless(true, Back("Client", pair.Was("ClientID")), "is the client's key there").IsBack();
    pair["ProjectID"].Unless(true, Back("Project", pair.Was("ProjectID")), "is the project's key there").IsBack();
    pair["TransactionInvNum"].Cut(11).IsBack();
    pair["InvoiceDate"].IsBack();
    pair["TransactionInvDateTo"].IsBack();
    pair["TransactionInvDateFrom"].Unless(true, pair.Was("InvoiceDate"), "is the invoice's day").IsBack();
    pair["TransactionDate"].Beginning(kDayOfTheRun, "is when QuickBooks got it").IsBack();
    pair["TransactionInvBillAmt"].IsBack();
    pair["ServiceAmt"].Unless(true, total, "lines are not told apart").IsBack();
    for (const auto* column :
         {"ExpAmt", "ServiceTaxAmt", "ExpTaxAmt", "TransactionManInvMiscAmt", "TransactionInvDiscount"}) {
      pair[column].Unless(true, "0", "lines are not told apart").IsBack();
    }
    pair["MainServiceTaxAmt"].Unless(true, "", "lines are not told apart").IsBack();
    pair["TransactionManInv"].Unless(true, "-1", "comes as one by hand").IsBack();
    pair["TransactionInvSendBillFlag"].Unless(true, "B", "is never asked to be printed").IsBack();
    pair["TransactionMemo"].StaysHere("").IsBack();
    // Its details come to what it comes to.
    const auto details = empty_.Scalar(
        "SELECT COALESCE(SUM(ManInvDetailTot), 0) FROM ManInvDetail WHERE TransactionID = (SELECT TransactionID FROM "
        "TransactionTable WHERE QBLinkID = '" +
        pair.Link() + "' AND PayID IS NULL)");
    EXPECT_NEAR(TextToNumber(details), TextToNumber(total), 0.001)
        << "Invoice.ManInvDetail " << pair.Was("TransactionInvNum");
  }

  // Each row of where a payment went is a payment of its own in QuickBooks; of a discount that comes with nothing paid
  // a second one comes.
  void ComparePayments() {
    auto& inTwo = exceptions_["Payment: a discount comes as a payment of nothing beside that of the discount"];
    for (const auto& row :
         house_.RowsOf("SELECT t.*, p.PayMethod, p.PayDate, p.PayRef, p.PayMemo FROM TransactionTable AS t JOIN "
                       "Payment AS p ON p.PayID = t.PayID WHERE p.PayRetainer = 0")) {
      const auto link = row.at("QBLinkID").value_or("");
      const auto back = empty_.RowsOf(
          "SELECT t.*, p.PayMethod, p.PayDate, p.PayRef, p.PayMemo, p.PayAmt FROM TransactionTable AS t JOIN Payment "
          "AS p ON "
          "p.PayID = t.PayID WHERE p.QBLinkID = '" +
          link + "' ORDER BY t.TransactionPayAmtApplied DESC");
      const auto method = row.at("PayMethod").value_or("");
      const bool isDiscount = method == "3" || method == "4" || method == "A";
      if (back.size() != (isDiscount ? 2U : 1U)) {
        ADD_FAILURE() << "Payment " << row.at("PayID").value() << " by " << method << " came as " << back.size();
        continue;
      }
      if (isDiscount) ++inTwo;
      const Pair pair("Payment", row, back.front(), exceptions_);
      pair["ClientID"].Unless(true, Back("Client", pair.Was("ClientID")), "is the client's key there").IsBack();
      pair["ProjectID"].Unless(true, Back("Project", pair.Was("ProjectID")), "is the project's key there").IsBack();
      pair["TransactionInvNum"].Cut(11).IsBack();
      pair["TransactionPayAmtApplied"].IsBack();
      pair["PayMethod"].Unless(isDiscount, "3", "is a credit").IsBack();
      pair["PayDate"].IsBack();
      pair["PayRef"].Cut(20).IsBack();
      pair["PayMemo"].NotBlank().IsBack();
      if (!isDiscount) continue;
      EXPECT_EQ(TextToNumber(back.back().at("TransactionPayAmtApplied").value_or("0")), 0);
    }
  }

  FirmHouse& house_;
  FirmHouse& empty_;
  Exceptions& exceptions_;
  std::map<std::string, std::string> names_;  // by ListID
  std::set<std::string> inUse_;
  std::map<std::string, Keys> keys_;  // by table
  std::map<std::string, Fields> activities_;
  std::map<std::string, Fields> codes_;
  std::map<std::string, Fields> projects_;
};

void SendAndCompare(const firm::FirmPlan& plan, Exceptions& exceptions) {
  FirmHouse house(plan);
  house.Send();
  // Of vendors, and of some cents at least: a bill that comes to nothing does not go.
  std::vector<std::string> named;
  for (const auto& row :
       house.RowsOf("SELECT ELID FROM ExpenseLog WHERE isSub <> 0 AND ELPosted <> 0 AND VendorBillID IS "
                    "NULL AND ELUnits * ELCost >= 1 ORDER BY EmployeeID")) {
    named.push_back(row.at("ELID").value());
  }
  if (!named.empty()) house.SendExpenses(named);
  const TemporaryFolder folder;
  CopyCompany(house, folder.Path());
  FirmHouse empty(HouseOptions{.now = house.machine.Now(), .folder = folder.Path()});
  empty.Get();
  Return(house, empty, exceptions).Compare();
}

class FirmReturn : public AnyFirm {};

TEST_P(FirmReturn, Into_an_empty_database_brings_each_column_back_but_for_named_exceptions) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    Exceptions exceptions;
    SendAndCompare(plan, exceptions);
  });
}

INSTANTIATE_TEST_SUITE_P(Firm, FirmReturn, testing::Range(0U, kPartsOfFirms));

TEST(FirmExceptions, Are_all_met_in_a_few_larger_firms) {
  Exceptions exceptions;
  for (const std::uint64_t seed : {11, 1, 2, 3}) {
    SendAndCompare({.clients = 80, .seed = seed, .months = 1, .hours = 1}, exceptions);
  }
  for (const auto& [exception, times] : exceptions) EXPECT_GT(times, 0) << exception << " is never met";
}

}  // namespace
}  // namespace twqb
