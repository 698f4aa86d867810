#include "tests/firm/Amounts.h"
#include "tests/firm/Return.h"

namespace twqb {

// Which lines are on which bill.
void Return::ReadBills() {
  house_.ForEachRecord("Bill", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& bill) {
    std::vector<std::string> lines;
    for (const auto line : bill.children("ItemLineRet")) lines.emplace_back(line.child_value("TxnLineID"));
    for (const auto& line : lines) {
      bills_[line] = bill.child_value("TxnID");
      lastLines_[line] = lines.back();
    }
  });
}

void Return::CompareWork() {
  ReadBills();
  Each("TimeEntry", "TimeEntry", "VendorBillID IS NULL", [&](const Pair& pair) { CompareHours(pair); });
  Each("BilledHours", "TimeEntry", "VendorBillID IS NOT NULL", [&](const Pair& pair) { CompareBilledHours(pair); });
  Each("BilledExpense", "ExpenseLog", "VendorBillID IS NOT NULL",
       [&](const Pair& pair) { CompareBilledExpense(pair); });
  Each("NamedExpense", "ExpenseLog", "VendorBillID IS NULL", [&](const Pair& pair) { CompareNamedExpense(pair); });
  Each("VendorBill", "VendorBill", "", [&](const Pair& pair) { CompareBill(pair); });
}

// Who did it, for what, as they are called there.
void Return::CompareJob(const Pair& pair, const std::string& code) {
  const auto project = Back("Project", pair.Was("ProjectID"));
  pair["ProjectID"].Unless(true, project, "is the project's key there").IsBack();
  pair[code]
      .Unless(true, Back(code == "ExpID" ? "Expense" : "Activity", pair.Was(code)), "is the code's key there")
      .IsBack();
}
Column Return::PersonOf(const Pair& pair) {
  return pair["EmployeeID"].Unless(true, Back("Employee", pair.Was("EmployeeID")), "is the person's key there");
}
void Return::CompareHours(const Pair& pair) {
  CompareJob(pair, "ActivityID");
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
  for (const auto& [column, rate] : {std::pair("TEBillRate", "AC_BillRate"), std::pair("TECostRate", "AC_CostRate")}) {
    const auto ofActivity = activity.at(rate).value_or("");
    const bool hasRate = !ofActivity.empty() && ofActivity != "0";
    pair[column].Unless(true, hasRate ? ofActivity : "1", "is the activity's").IsBack();
  }
  pair["TEBillStatus"].StaysHere("N").IsBack();
  pair["TEPosted"].IsBack();
  for (const auto* flag : {"TEOT", "TEXtraWork", "TEFlag1", "TEFlag2", "isSub"}) pair[flag].StaysHere("0").IsBack();
  pair["TEID"].IsNewKey();
  pair.StayHere({"WUD", "TECompTime", "TransactionID"}, "");
  pair.StayHere({"TETax1", "TETax2", "TETax3"}, "0");
  pair.AreBack({"TEFlag3", "ShowMemoOnInvoice", "ShowMemoOnJournal", "VendorBillID", "ApprovalStatus", "ApprovedBy"});
}

void Return::CompareBilledHours(const Pair& pair) {
  CompareJob(pair, "ActivityID");
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
  pair["TEID"].IsNewKey();
  pair["ProjectName"]
      .Unless(true, projects_[Back("Project", pair.Was("ProjectID"))].at("ProjectName").value_or(""),
              "is the project's name there")
      .IsBack();
  pair["aHours"].IsBack();
  const auto cost = empty_.Scalar("SELECT TECostRate FROM TimeEntry WHERE QBLinkID = '" + pair.Link() + "'");
  pair["TEBillRate"].Unless(true, cost, "is the cost").IsBack();
  pair.AreBack({"TEMemo", "TransactionID", "TEMemoExists", "TEFlag1", "TEFlag2", "TEFlag3", "TEXtraWork", "TEOT",
                "ShowMemoOnJournal"});
  pair.StayHere({"TETax1", "TETax2", "TETax3", "TECompTime", "WUD"}, "0");
  pair.StayHere({"ShowMemoOnInvoice"}, "-1");
  pair["ApprovalStatus"].Unless(true, "2", "comes as approved").IsBack();
  pair["ApprovedBy"].Unless(true, "SUPERVISOR", "comes as approved").IsBack();
}
// What its line comes to, to the cent.
void Return::CompareCharge(const Pair& pair) {
  const auto cents = LineInCents(TextToNumber(pair.Was("ELUnits")), TextToNumber(pair.Was("ELCost")));
  pair["ELChgAmt"]
      .Unless(true, NumberToText(static_cast<double>(cents) / 100), "is what the bill's line comes to")
      .Unless(pair.Was("ELBillable") == "0", "0", "what is not billable comes at no charge")
      .IsBack();
}
void Return::CompareExpense(const Pair& pair) {
  CompareJob(pair, "ExpID");
  const auto person = Back("Employee", pair.Was("EmployeeID"));
  PersonOf(pair).Unless(true, Trim(person), "is without blanks at its ends").IsBack();
  pair["ELUnits"].IsBack();
  const auto units = TextToNumber(pair.Was("ELUnits"));
  pair["ELCost"].Within(0.0051 / units + 0.0001, "is worked out of the line's amount").IsBack();
  const auto& code = codes_[Back("Expense", pair.Was("ExpID"))];
  pair["ELDescription"]
      .Unless(pair.Was("ELDescription").empty(), code.at("ExpDescription").value_or(""), "without one it is the code's")
      .IsBack();
  pair["ELMarkup"].StaysHere("0").IsBack();
  pair["ELBillable"].Unless(true, "-1", "whatever it was").IsBack();
  pair["ELBilled"].IsBack();
  pair["ELPosted"].Unless(true, "0", "comes as not posted").IsBack();
  CompareCharge(pair);
  pair["ELID"].IsNewKey();
  pair.StayHere({"isSub"}, "0");
  pair.StayHere({"ELTax1", "ELTax2", "ELTax3"}, "");
  pair.AreBack({"WUD", "TransactionID", "ELMemoFlag", "ELPaid", "ELFlag1", "ELFlag2", "ELFlag3", "ExpType", "isProduct",
                "ShowMemoOnInvoice", "ShowMemoOnJournal", "ApprovalStatus", "ApprovedBy"});
  pair.StayHere({"Reimbursable"}, "0");
}
void Return::CompareBilledExpense(const Pair& pair) {
  CompareExpense(pair);
  pair["ELDate"].IsBack();
  const auto bill = Back("VendorBill", pair.Was("VendorBillID"));
  pair["VendorBillID"].Unless(true, bill, "is the bill's key there").IsBack();
}
// Each vendor's are a bill there, of the day of its last line.
void Return::CompareNamedExpense(const Pair& pair) {
  CompareExpense(pair);
  const auto last = house_.Scalar("SELECT ELDate FROM ExpenseLog WHERE QBLinkID = '" + lastLines_[pair.Link()] + "'");
  pair["ELDate"].Unless(true, last, "is the day of the bill's last line").IsBack();
  const auto bill = empty_.Scalar("SELECT VendorBillID FROM VendorBill WHERE QBLinkID = '" + bills_[pair.Link()] + "'");
  pair["VendorBillID"].Unless(true, bill, "is the key there of the bill that its vendor's are").IsBack();
}
// Of the moment, and a number by chance behind it.
bool Return::IsMadeUp(const std::string& number) const {
  const auto now = empty_.machine.Now().ToCivil();
  const auto moment = fmt::format("{}{}{}{}", now.year, now.month, now.minute, now.second);
  const auto chance = number.substr(std::min(moment.size(), number.size()));
  return number.starts_with(moment) && !chance.empty() && chance.size() <= 9 &&
         chance.find_first_not_of(".0123456789") == std::string::npos;
}
void Return::CompareBill(const Pair& pair) {
  pair["VendorBillID"].IsNewKey();
  pair["VendorID"].Unless(true, Back("Employee", pair.Was("VendorID")), "is the vendor's key there").IsBack();
  auto number = pair.Was("BillNumber");
  if (number.empty()) {
    number = empty_.Scalar("SELECT BillNumber FROM VendorBill WHERE QBLinkID = '" + pair.Link() + "'");
    EXPECT_TRUE(IsMadeUp(number)) << number;
    EXPECT_EQ(empty_.Scalar("SELECT COUNT(*) FROM VendorBill WHERE BillNumber = '" + number + "'"), "1") << number;
  }
  pair["BillNumber"].Unless(pair.Was("BillNumber").empty(), number, "without one it gets one").IsBack();
  pair["BillDate"].IsBack();
  pair["BillDueDate"].Unless(pair.Was("BillDueDate").empty(), "4/4/2008", "without one it is thirty days on").IsBack();
  pair["BillMemo"].StaysHere("").IsBack();
  pair["BillRef"].StaysHere("From QuickBooks").IsBack();
}

}  // namespace twqb
