// A row of each kind whose link got lost: the send in hand finds it again, or the next process.

#include <tuple>

#include "tests/bridge/LostLinksHouse.h"

namespace twqb {
namespace {

struct Kind {
  std::string_view name;
  enTables table;
  void (*addRow)(TestHouse& house);
  std::string_view named = {};  // the key that a host names; "": none
  std::string_view request;
  std::string_view kind;        // of the record, and the element that the link is
  std::string_view element;     //
  std::string_view linkTable;   // of the row, and its key
  std::string_view row;         //
  std::string_view stamp = {};  // where its date stands; "": the send writes none
  std::string_view date = "LastUpdated";
  std::string_view told;  // how it is called
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

const Kind kKinds[] = {
    {.name = "Client",
     .table = enClients,
     .addRow = [](TestHouse& house) { LostLinksFirm::AddClient(house, "NEW", "New Company"); },
     .request = "<CustomerAddRq",
     .kind = "Customer",
     .element = "ListID",
     .linkTable = "Client",
     .row = "ClientID = 'NEW'",
     .stamp = "Client",
     .date = "LastUpdate",
     .told = "client NEW is customer "},
    {.name = "TimeEntry",
     .table = enTimeEntries,
     .addRow = [](TestHouse& house) { LostLinksFirm::AddEntry(house, "{E1}"); },
     .request = "<TimeTrackingAddRq",
     .kind = "TimeTracking",
     .element = "TxnID",
     .linkTable = "TimeEntry",
     .row = "TEID = '{E1}'",
     .stamp = "TimeEntry",
     .told = "time entry {E1} is time activity "},
    {.name = "Invoice",
     .table = enInvoices,
     .addRow = [](TestHouse& house) { LostLinksFirm::AddInvoice(house, "I-1"); },
     .request = "<InvoiceAddRq",
     .kind = "Invoice",
     .element = "TxnID",
     .linkTable = "TransactionTable",
     .row = "TransactionID = 'I-1'",
     .stamp = "TransactionTable",
     .told = "invoice I-1 is invoice "},
    {.name = "Payment",
     .table = enPayments,
     .addRow =
         [](TestHouse& house) {
           LostLinksFirm::AddLinkedInvoice(house, "I-2");
           LostLinksFirm::AddPayment(house, "P-1", false);
           LostLinksFirm::AddPart(house, "P-1", "I-2");
         },
     .request = "<ReceivePaymentAddRq",
     .kind = "ReceivePayment",
     .element = "TxnID",
     .linkTable = "Payment",
     .row = "TransactionID = 'P-1 to I-2'",
     .stamp = "TransactionTable",
     .told = "payment P-1 to I-2 is payment "},
    {.name = "Retainer",
     .table = enPayments,
     .addRow =
         [](TestHouse& house) {
           LostLinksFirm::AddPayment(house, "R-1", true);
           LostLinksFirm::AddPart(house, "R-1", "0");
         },
     .request = "<InvoiceAddRq",
     .kind = "Invoice",
     .element = "TxnID",
     .linkTable = "Payment",
     .row = "PayID = 'R-1'",
     .told = "payment R-1 is payment "},
    {.name = "VendorBill",
     .table = enVendorBill,
     .addRow = [](TestHouse& house) { LostLinksFirm::AddVendorBill(house, "B-1"); },
     .request = "<BillAddRq",
     .kind = "Bill",
     .element = "TxnID",
     .linkTable = "VendorBill",
     .row = "VendorBillID = 'B-1'",
     .stamp = "ExpenseLog",
     .told = "vendor bill B-1 is bill "},
    {.name = "Expense",
     .table = enExpenseLog,
     .addRow = [](TestHouse& house) { LostLinksFirm::AddExpense(house, "train"); },
     .named = "'train'",
     .request = "<BillAddRq",
     .kind = "Bill",
     .element = "TxnLineID",
     .linkTable = "ExpenseLog",
     .row = "ELID = 'train'",
     .stamp = "ExpenseLog",
     .told = "expense train is bill "},
};

enum class Lost : std::uint8_t { TheAnswer, TheWrittenLink };
enum class Finder : std::uint8_t { TheSameRun, TheNextProcess };

using Case = std::tuple<Kind, Lost, Finder, const char*>;

class LostLinksOfEachKind : public testing::TestWithParam<Case> {
 protected:
  static bool Send(Process& process) {
    const auto& kind = std::get<Kind>(GetParam());
    return kind.named.empty() ? process.Send(kind.table) : process.SendNamed(kind.table, kind.named);
  }
};

std::string CaseName(const testing::TestParamInfo<Case>& test) {
  const auto& [kind, lost, finder, reading] = test.param;
  return fmt::format("{}_{}_{}_{}", kind.name, lost == Lost::TheAnswer ? "answer" : "link",
                     finder == Finder::TheSameRun ? "same_run" : "next_process", reading);
}

INSTANTIATE_TEST_SUITE_P(All, LostLinksOfEachKind,
                         testing::Combine(testing::ValuesIn(kKinds),
                                          testing::Values(Lost::TheAnswer, Lost::TheWrittenLink),
                                          testing::Values(Finder::TheSameRun, Finder::TheNextProcess),
                                          testing::Values("strict", "lenient")),
                         CaseName);

TEST_P(LostLinksOfEachKind, A_lost_link_is_found_again_told_once_and_nothing_is_doubled) {
  const auto& [kind, lost, finder, reading] = GetParam();
  LostLinksFirm firm(reading);
  std::set<std::string> before;
  {
    const bool losesLink = lost == Lost::TheWrittenLink;
    Process first(firm.Folder(),
                  {.faults = losesLink ? FailsToWrite(fmt::format("UPDATE {} SET QBLinkID", kind.linkTable)) : ""});
    kind.addRow(first);
    before = LostLinksFirm::AllOf(first, kind.kind, kind.element);
    using When = WireBreak::When;
    const bool dies = finder == Finder::TheNextProcess;
    if (dies || !losesLink) {
      first.wire.breaks = {.at = std::string(kind.request),
                           .when = losesLink ? When::BehindTheAnswer : When::AnswerIsLost,
                           .alsoFailing = dies ? kForGood : 0};
    }
    static_cast<void>(Send(first));
    EXPECT_EQ(first.told.found.size(), dies ? 0U : 1U);
    EXPECT_TRUE(first.told.open.empty()) << first.told.open.front();
  }
  Process second(firm.Folder(), {.now = "2008-03-05T11:30:00"});
  // What a host names goes again, linked or not.
  if (kind.named.empty() || finder == Finder::TheNextProcess) {
    EXPECT_TRUE(Send(second)) << (second.BoxTexts().empty() ? "" : second.BoxTexts().front());
  }
  EXPECT_EQ(second.told.found.size(), finder == Finder::TheSameRun ? 0U : 1U);
  EXPECT_TRUE(second.told.open.empty()) << second.told.open.front();

  std::vector<std::string> added;
  std::ranges::set_difference(LostLinksFirm::AllOf(second, kind.kind, kind.element), before, std::back_inserter(added));
  ASSERT_EQ(added.size(), 1U);
  const auto from = kind.name == "Payment" ? "TransactionTable" : kind.linkTable;
  EXPECT_EQ(second.Scalar(fmt::format("SELECT QBLinkID FROM {} WHERE {}", from, kind.row)), added[0]);
  const auto lines = LinesWith(second.Log(), fmt::format("Found again: {}", kind.told));
  EXPECT_EQ(lines.size(), 1U) << Join(LinesWith(second.Log(), "Found again"), "\n");
  EXPECT_EQ(LinesWith(second.Log(), "Found again").size(), 1U);
  if (kind.name == "Payment") {
    EXPECT_EQ(second.Scalar("SELECT QBLinkID FROM Payment WHERE PayID = 'P-1'"), added[0]);
  }
  if (kind.name == "Retainer") {
    EXPECT_EQ(second.Scalar("SELECT QBLinkID FROM TransactionTable WHERE PayID = 'R-1'"), added[0]);
  }
  if (kind.name == "VendorBill") {
    EXPECT_EQ(second.Scalar("SELECT QBLinkID FROM ExpenseLog WHERE ELID = 'of B-1'"),
              *LostLinksFirm::AllOf(second, "Bill", "TxnLineID").begin());
  }
  if (!kind.stamp.empty()) {
    const auto row = kind.name == "VendorBill" ? std::string_view("ELID = 'of B-1'") : kind.row;
    EXPECT_NE(second.Scalar(fmt::format("SELECT {} FROM {} WHERE {}", kind.date, kind.stamp, row)), "NULL");
  }
}

TEST(LostLinksBehind, What_is_settled_is_no_longer_kept_and_the_next_process_has_nothing_to_tell) {
  LostLinksFirm firm;
  {
    Process first(firm.Folder());
    LostLinksFirm::AddClient(first, "NEW", "New Company");
    EXPECT_TRUE(first.Send(enClients));
    LostLinksFirm::AddClient(first, "NEXT", "Next Company");
    EXPECT_TRUE(first.Send(enClients));
  }
  Process second(firm.Folder());
  std::vector<std::string> told;
  second.wire.answers = [&](const std::string& document, const SendOn& sendOn) -> std::optional<std::string> {
    const auto answer = sendOn(document);
    if (document.find("newMessageSetID") != std::string::npos && document.find("requestID") == std::string::npos) {
      told.push_back(answer);
    }
    return answer;
  };
  LostLinksFirm::AddClient(second, "LATER", "Later Company");
  EXPECT_TRUE(second.Send(enClients));
  EXPECT_EQ(told.size(), 2U);
  EXPECT_TRUE(LinesWith(told, "<CustomerAddRs").empty());
  EXPECT_TRUE(LinesWith(second.Log(), "QuickBooks tells").empty());
  EXPECT_TRUE(second.told.found.empty());
  EXPECT_NE(second.ColumnOf("LATER", "QBLinkID"), "NULL");
}

}  // namespace
}  // namespace twqb
