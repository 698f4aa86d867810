// Bills of several rows whose links got lost, and lists below a parent.

#include "tests/bridge/LostLinksHouse.h"

namespace twqb {
namespace {

constexpr std::string_view kLater = "2008-03-05T11:30:00";

class LostLines : public testing::TestWithParam<const char*> {
 protected:
  static std::string Link(Process& process, std::string_view table, std::string_view row) {
    return process.Scalar(fmt::format("SELECT QBLinkID FROM {} WHERE {}", table, row));
  }
  LostLinksFirm firm{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Readings, LostLines, testing::Values("strict", "lenient"),
                         [](const auto& test) { return std::string(test.param); });

// Three rows of one vendor are one bill; two of them say the same.
void AddExpenses(Process& process) {
  for (const auto* key : {"train", "taxi", "taxi again"}) LostLinksFirm::AddExpense(process, key);
  process.Sql("UPDATE ExpenseLog SET ELDescription = 'taxi', ELCost = 20 WHERE ELID <> 'train'");
}
constexpr std::string_view kExpenses = "'train','taxi','taxi again'";

void ExpectLinesLinkedOnce(Process& process) {
  const auto bill = process.Company("<BillQueryRq><IncludeLineItems>1</IncludeLineItems></BillQueryRq>");
  EXPECT_EQ(LostLinksFirm::AllOf(process, "Bill", "TxnID").size(), 1U);
  std::set<std::string> lines;
  for (auto at = bill.find("<TxnLineID>"); at != std::string::npos; at = bill.find("<TxnLineID>", at + 1)) {
    lines.insert(SpiedHouse::TextOf(std::string_view(bill).substr(at), "TxnLineID"));
  }
  EXPECT_EQ(lines.size(), 3U);
  std::set<std::string> links;
  for (const auto* key : {"train", "taxi", "taxi again"}) {
    links.insert(process.Scalar(fmt::format("SELECT QBLinkID FROM ExpenseLog WHERE ELID = '{}'", key)));
  }
  EXPECT_EQ(links, lines);
}

TEST_P(LostLines, Every_row_of_a_bill_gets_its_line_from_the_next_process) {
  {
    Process first(firm.Folder());
    AddExpenses(first);
    first.wire.breaks = {.at = "<BillAddRq", .alsoFailing = kForGood};
    static_cast<void>(first.SendNamed(enExpenseLog, kExpenses));
  }
  Process second(firm.Folder(), {.now = kLater});
  EXPECT_TRUE(second.SendNamed(enExpenseLog, kExpenses));
  EXPECT_EQ(second.told.found.size(), 1U);
  ExpectLinesLinkedOnce(second);
  EXPECT_EQ(second.Scalar("SELECT COUNT(*) FROM ExpenseLog WHERE LastUpdated IS NULL"), "0");
}

class BrokenLine : public testing::TestWithParam<std::tuple<const char*, int>> {};

INSTANTIATE_TEST_SUITE_P(All, BrokenLine,
                         testing::Combine(testing::Values("strict", "lenient"), testing::Values(1, 2, 3)));

TEST_P(BrokenLine, Of_a_bill_whose_rows_were_linked_in_part_the_others_get_their_lines) {
  const auto& [reading, nth] = GetParam();
  LostLinksFirm firm(reading);
  Process process(firm.Folder(),
                  {.faults = fmt::format("sql {} raise 0x80040E14 \"Broken.\" UPDATE ExpenseLog SET QBLinkID\n", nth)});
  AddExpenses(process);
  static_cast<void>(process.SendNamed(enExpenseLog, kExpenses));
  EXPECT_EQ(process.told.found.size(), 1U);
  EXPECT_TRUE(process.told.open.empty()) << process.told.open[0];
  ExpectLinesLinkedOnce(process);
}

TEST_P(LostLines, A_vendor_bill_of_several_lines_is_found_with_all_of_them) {
  {
    Process first(firm.Folder());
    LostLinksFirm::AddVendorBill(first, "B-1");
    LostLinksFirm::AddExpense(first, "more", "'B-1'");
    first.wire.breaks = {.at = "<BillAddRq", .alsoFailing = kForGood};
    static_cast<void>(first.Send(enVendorBill));
  }
  Process second(firm.Folder(), {.now = kLater});
  EXPECT_TRUE(second.Send(enVendorBill));
  EXPECT_EQ(second.told.found.size(), 1U);
  EXPECT_EQ(LostLinksFirm::AllOf(second, "Bill", "TxnID"),
            std::set{Link(second, "VendorBill", "VendorBillID = 'B-1'")});
  EXPECT_NE(Link(second, "ExpenseLog", "ELID = 'of B-1'"), "NULL");
  EXPECT_NE(Link(second, "ExpenseLog", "ELID = 'more'"), "NULL");
}

TEST_P(LostLines, A_job_is_found_below_its_client_though_another_one_has_a_job_of_that_name) {
  {
    Process first(firm.Folder());
    first.Sql("INSERT INTO Project (ProjectID, ProjectName, ClientID) VALUES ('ROOF:', 'Roof', 'ACME')");
    first.wire.breaks = {.at = "<CustomerAddRq", .alsoFailing = kForGood};
    static_cast<void>(first.Send(enProjects));
    EXPECT_EQ(first.wire.breaks.nth, 0);
  }
  Process second(firm.Folder(), {.now = kLater});
  LostLinksFirm::AddNamed(second, "Customer", "Zeta");
  LostLinksFirm::Added(second, "Customer", "<Name>Roof</Name><ParentRef><FullName>Zeta</FullName></ParentRef>");
  const auto before = LostLinksFirm::AllOf(second, "Customer", "ListID");
  EXPECT_TRUE(second.Send(enProjects));
  EXPECT_EQ(LostLinksFirm::AllOf(second, "Customer", "ListID"), before);
  EXPECT_EQ(second.told.found.size(), 1U) << (second.told.open.empty() ? "" : second.told.open[0]);
  const auto link = Link(second, "Project", "ProjectID = 'ROOF:'");
  EXPECT_EQ(second.CustomerField(link, "FullName"), "Acme:Roof");
}

}  // namespace
}  // namespace twqb
