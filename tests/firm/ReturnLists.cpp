#include "tests/firm/Return.h"

namespace twqb {

void Return::CompareLists() {
  Each("Client", "Client", "", [&](const Pair& pair) { CompareClient(pair); });
  Each("Project", "Project", "", [&](const Pair& pair) { CompareProject(pair); });
  Each("Employee", "Employee", "IsSub = 0", [&](const Pair& pair) { CompareEmployee(pair); });
  Each("Vendor", "Employee", "IsSub = -1", [&](const Pair& pair) { CompareVendor(pair); });
  Each("Activity", "Activity", "", [&](const Pair& pair) { CompareActivity(pair); });
  Each("Expense", "Expense", "", [&](const Pair& pair) { CompareExpenseCode(pair); });
  Each("AccountList", "AccountList", "", [&](const Pair& pair) { CompareAccount(pair); });
}

// The name that a record has: the one it was to have, cut, or with a counter where that one is in use, as are those
// with the counters before it. The counter takes the room that it needs, and nothing stands behind it.
void Return::CompareName(const Pair& pair, const std::string& column, const std::string& wanted, std::size_t longest) {
  const auto name = NameOf(pair);
  const auto cut = Left(wanted, longest);
  auto& met = exceptions_[column + ": a name in use gets a counter"];
  if (Trim(name) == Trim(cut)) return;
  ++met;
  std::string last = cut;
  for (int counter = 1; counter < 100; ++counter) {
    EXPECT_TRUE(inUse_.contains(Trim(last))) << column << ": " << last << " is not in use, and yet there is " << name;
    const auto digits = std::to_string(counter);
    last = Left(wanted, longest - digits.size()) + digits;
    if (Trim(last) == Trim(name)) return;
    if (!inUse_.contains(Trim(last))) break;
  }
  ADD_FAILURE() << column << ": " << name << ", not " << cut;
}

void Return::CompareClient(const Pair& pair) {
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
  pair["LastUpdate"].Unless(true, "", "is the stamp of a send").IsBack();
}

// Codes and phases come from full names, levels below the second dropped. A key that another row has gets a counter in
// the last two places of its phase.
Return::JobParts Return::PartsOfJob(const Pair& pair) {
  const auto names = Split(fullNames_[pair.Link()], ':');
  JobParts parts = {.code = WithoutJunk(names.at(1)), .phase = names.size() > 2 ? WithoutJunk(names[2]) : ""};
  parts.phase = Left(parts.phase, 30);
  const auto length = CharacterCount(parts.phase);
  const auto begin = length > 2 ? Left(parts.phase, length - 2) : "";
  for (int counter = 1; counter < 100; ++counter) {
    const auto other = projectLinks_.find(UpperCase(Trim(parts.code + ":" + parts.phase)));
    if (other == projectLinks_.end() || other->second == pair.Link()) break;
    parts.phase = begin + std::to_string(counter);
  }
  return parts;
}

void Return::CompareProject(const Pair& pair) {
  const auto name = ReplaceAll(pair.Was("ProjectName"), ":", " ");
  const auto prefix = ReplaceAll(pair.Was("ProjectID"), ":", "-") + " ";
  const auto begins = prefix.ends_with("- ") ? prefix.substr(0, prefix.size() - 2) : prefix;
  const bool hasKey = UpperCase(name).starts_with(UpperCase(begins)) || CharacterCount(prefix) > 41;
  CompareName(pair, "Project.Name", hasKey ? name : prefix + name, 41);
  pair["ProjectName"].Unless(true, NameOf(pair), "is QuickBooks' name").IsBack();
  const auto [code, phase] = PartsOfJob(pair);
  pair["ProjectCode"].Unless(true, code, "is the name of the job below the customer").IsBack();
  pair["ProjectPhase"].Unless(true, phase, "is the name of the job below that one, or a counter").IsBack();

  pair["ProjectID"].Unless(true, code + ":" + phase, "is made of both").IsBack();
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
  pair.AreBack({"EstimateID", "QBClassID"});
}

// Name, numbers, and what both kinds of people have.
void Return::ComparePerson(const Pair& pair) {
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
void Return::CompareFirstName(const Pair& pair, Column column) {
  const auto first = pair.Was("EmpFName");
  std::string counted;
  for (int counter = 1; counter < 10; ++counter) {
    const auto name = Left(fmt::format("{}{}", first, counter), 25);
    if (NameOf(pair).starts_with(name)) counted = name;
  }
  column.Cut(25).Unless(!counted.empty(), counted, "a name in use gets a counter").IsBack();
}
void Return::CompareEmployee(const Pair& pair) {
  ComparePerson(pair);
  pair["EmpCompany"].IsBack();
  CompareFirstName(pair, pair["EmpFName"]);
  pair["EmpLName"].IsBack();
  pair["EmpStreet"].Cut(41).IsBack();
  pair["EmpStreet2"].Cut(41).IsBack();
  pair["MobileNumber"].Phone().IsBack();
  pair["EmpHFax"].StaysHere("").IsBack();
  pair["EmpDateHired"].IsBack();
  pair["EmpDateReleased"].IsBack();
  constexpr std::size_t kLength = 9;
  pair["EmpSSN"]
      .Unless(pair.Was("EmpSSN") == "111111111", "", "is typed in for want of a number")
      .Unless(pair.Was("EmpSSN").size() != kLength, "", "is no number of the United States")
      .IsBack();
}
void Return::CompareVendor(const Pair& pair) {
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
  pair["EmpDateReleased"].IsBack();
  pair["EmpSSN"].Unless(true, "", "does not come back").IsBack();
}

// An item's key is its name, which is the key that it had, with a blank in the place of the colon.
void Return::CompareItemKey(const Pair& pair, const std::string& key, const std::string& code, const std::string& sub) {
  CompareName(pair, key, ReplaceAll(pair.Was(key), ":", " "), 31);
  pair[key].Unless(true, WithoutJunk(NameOf(pair)) + ":", "is made of QuickBooks' name").IsBack();
  pair[code].Unless(true, WithoutJunk(NameOf(pair)), "is QuickBooks' name").IsBack();
  pair[sub].Unless(true, "", "has become a part of the name").IsBack();
  for (const auto* tax : {"Tax1_Rate", "Tax2_Rate", "Tax3_Rate"}) pair[tax].StaysHere("0").IsBack();
  pair["IsInActive"].Unless(pair.Was("IsInActive").empty(), "0", "without one it is active").IsBack();
  for (const auto* column : {"QBAccountID1", "QBAccountID2"}) {
    pair[column].Unless(pair.Was(column).empty(), account_, "without one it is that of other income").IsBack();
  }
  pair["QBClassID"].IsBack();
}
void Return::CompareActivity(const Pair& pair) {
  CompareItemKey(pair, "ActivityID", "ActivityCode", "ActivitySub");
  pair["ActivityDescription"].IsBack();
  pair["AC_CostRate"].IsBack();
  pair["AC_BillRate"].IsBack();
  pair["AC_MinHours"].StaysHere("0").IsBack();
  pair["ActivityBillable"].StaysHere("-1").IsBack();
}
void Return::CompareExpenseCode(const Pair& pair) {
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
  pair["IsProduct"].IsBack();
}

void Return::CompareAccount(const Pair& pair) {
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

}  // namespace twqb
