// The answer of every table: what is kept and under which key, progress, statuses, and in whose words errors are told.

#include <gtest/gtest.h>

#include "platform/Forwarding.h"
#include "platform/PlatformError.h"
#include "tests/engine/ReaderHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

// A table with what its copy shows and how its routines tell an error.
struct CopyCase {
  ReadCase read;
  std::string_view key = "ListID";
  std::string_view firstText;  // of the form, ahead of the answer: the table's own between the two parts
  std::string_view readingText = {};
  bool showsTwo = false;  // the text is there for two records already
  std::string_view filterRoutine;
  std::string_view copyRoutine;
  bool ownBox = false;
};

const CopyCase kTables[] = {
    {.read = {.name = "Employees", .table = enEmployees, .message = "EmployeeQuery", .record = "EmployeeRet"},
     .firstText = "Employees(QB)",
     .readingText = "Reading Employees from QuickBooks...",
     .filterRoutine = "ApplyQBEmployeeFilters",
     .copyRoutine = "modEmployees GetQBEmployeeRecordsInCollectionObject"},
    {.read = {.name = "Vendors", .table = enVendors, .message = "VendorQuery", .record = "VendorRet"},
     .firstText = "Vendors(QB)",
     .readingText = "Reading Vendors from QuickBooks...",
     .filterRoutine = "ApplyQBEmployeeFilters",
     .copyRoutine = "modEmployees GetQBEmployeeRecordsInCollectionObject"},
    {.read = {.name = "Projects", .table = enProjects, .message = "CustomerQuery", .record = "CustomerRet"},
     .firstText = "Jobs",
     .readingText = "Reading Projects from QuickBooks...",
     .filterRoutine = "ApplyQBProjectFilters",
     .copyRoutine = "GetQBProjectRecordsInCollectionObject"},
    {.read = {.name = "Activities", .table = enActivities, .message = "ItemServiceQuery", .record = "ItemServiceRet"},
     .firstText = "Activities(QB)",
     .readingText = "Reading Projects from QuickBooks...",
     .filterRoutine = "ApplyQBActivityFilters",
     .copyRoutine = "GetQBActivityRecordsInCollectionObject"},
    {.read = {.name = "Accounts", .table = enAccounts, .message = "AccountQuery", .record = "AccountRet"},
     .firstText = "Accounts(QB)",
     .readingText = "Reading Accounts from QuickBooks...",
     .showsTwo = true,
     .filterRoutine = "ApplyQBActivityFilters",
     .copyRoutine = "GetQBActivityRecordsInCollectionObject"},
    {.read = {.name = "Checks", .table = enExpenseLog, .message = "CheckQuery", .record = "CheckRet"},
     .key = "TxnID",
     .firstText = "Expense Log (QB)",
     .filterRoutine = "ApplyQBExpenseLogFilters",
     .copyRoutine = "GetQBExpenseLogRecordsInCollectionObject",
     .ownBox = true},
    {.read = {.name = "CreditCardCharges",
              .table = enExpenseLog,
              .expenseLogKind = enCreditCardCharges,
              .message = "CreditCardChargeQuery",
              .record = "CreditCardChargeRet"},
     .key = "TxnID",
     .firstText = "Expense Log (QB)",
     .filterRoutine = "ApplyQBExpenseLogFilters",
     .copyRoutine = "GetQBExpenseLogRecordsInCollectionObject",
     .ownBox = true},
    {.read = {.name = "Bills",
              .table = enExpenseLog,
              .expenseLogKind = enBills,
              .message = "BillQuery",
              .record = "BillRet"},
     .key = "TxnID",
     .firstText = "Expense Log (QB)",
     .filterRoutine = "ApplyQBBillsFilters",
     .copyRoutine = "GetQBBillsRecordsInCollectionObject",
     .ownBox = true},
    {.read =
         {.name = "TimeEntries", .table = enTimeEntries, .message = "TimeTrackingQuery", .record = "TimeTrackingRet"},
     .key = "TxnID",
     .firstText = "Time Entries(QB)",
     .readingText = "Reading Time Records from QuickBooks ...",
     .showsTwo = true,
     .filterRoutine = "ApplyQBTimeEntryFilters",
     .copyRoutine = "GetQBTEInCollectionObject"},
    {.read = {.name = "Invoices", .table = enInvoices, .message = "InvoiceQuery", .record = "InvoiceRet"},
     .key = "TxnID",
     .firstText = "Invoices(QB)",
     .readingText = "Reading Invoices from QuickBooks ...",
     .filterRoutine = "ApplyQBInvoiceFilters",
     .copyRoutine = "GetQBInvoiceRecordsInCollectionObject"},
    {.read = {.name = "Payments", .table = enPayments, .message = "ReceivePaymentQuery", .record = "ReceivePaymentRet"},
     .key = "TxnID",
     .firstText = "Payments(QB)",
     .filterRoutine = "ApplyQBPaymentFilters",
     .copyRoutine = "GetQBPaymentRecordsInCollectionObject"},
    {.read = {.name = "VendorBills", .table = enVendorBill, .message = "BillQuery", .record = "BillRet"},
     .key = "TxnID",
     .firstText = "Vendor Bill(QB)",
     .filterRoutine = "ApplyQBBillsFilters",
     .copyRoutine = "GetQBBillsRecordsInCollectionObject",
     .ownBox = true},
    {.read = {.name = "Estimates", .table = enEstimates, .message = "EstimateQuery", .record = "EstimateRet"},
     .key = "TxnID",
     .firstText = "Estimates(QB)",
     .filterRoutine = "ApplyQBEstimateFilters",
     .copyRoutine = "GetQBEstimateRecordsInCollectionObject",
     .ownBox = true},
    // Of no name of its own.
    {.read = {.name = "CreditMemos", .table = enCreditMemo, .message = "CreditMemoQuery", .record = "CreditMemoRet"},
     .key = "TxnID",
     .firstText = "All Tables",
     .readingText = "Reading Credit Memos from QuickBooks ...",
     .filterRoutine = "ApplyQBInvoiceFilters",
     .copyRoutine = "GetQBCMRecordsInCollectionObject"},
};

class TableCopies : public testing::TestWithParam<CopyCase> {
 protected:
  // Records under these identifiers; of customers jobs, which no copy here leaves out.
  [[nodiscard]] static std::string Records(const Texts& ids) {
    const auto& read = GetParam().read;
    std::string records;
    for (const auto& id : ids) {
      records += fmt::format("<{0}><{1}>{2}</{1}>{3}</{0}>", read.record, GetParam().key, id,
                             read.table == enProjects ? "<Sublevel>1</Sublevel>" : "");
    }
    return records;
  }
  bool ReadAnswered(const Texts& ids, const ReadFilters& filters = {}) {
    house.AnswerWith({{.message = GetParam().read.message, .records = Records(ids)}});
    return house.Read(filters);
  }
  bool ReadRefused(int status, const ReadFilters& filters = {}) {
    house.AnswerWith({{.message = GetParam().read.message, .status = status, .severity = "Error", .text = "No."}});
    return house.Read(filters);
  }
  [[nodiscard]] std::string Keys() const { return house.FieldOfAll(GetParam().key); }
  [[nodiscard]] static std::string FirstText() {
    return "Reading ..." + std::string(GetParam().firstText) + "(may take some time)";
  }
  // The one box so far is an error of that routine, in the table's words.
  void ExpectErrorBox(std::string_view routine, int number, std::string_view description) {
    ASSERT_EQ(house.desk.Boxes().size(), 1U);
    const auto& box = house.desk.Boxes()[0].box;
    if (GetParam().ownBox) {
      EXPECT_EQ(box.text, fmt::format("Error in '{}()' :- {}\r\nError No = {}", routine, description, number));
      EXPECT_EQ(box.title, "Error");
      EXPECT_EQ(box.icon, BoxIcon::None);
    } else {
      EXPECT_EQ(box.text,
                fmt::format("Error #: {0}({0:X}) -- \r\n\r\n{1}", number, description) + ErrorBoxEnd(routine));
      EXPECT_EQ(box.title, "WARNING");
    }
  }

  ReaderHouse house{GetParam().read};
};

TEST_P(TableCopies, Keep_every_record_in_the_order_of_the_answer) {
  EXPECT_TRUE(ReadAnswered({"3", "1", "2"}));
  EXPECT_EQ(Keys(), "3 1 2 ");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(TableCopies, Replace_the_list_of_an_earlier_read) {
  EXPECT_TRUE(ReadAnswered({"1", "2"}));
  EXPECT_TRUE(ReadAnswered({"2"}));
  EXPECT_EQ(Keys(), "2 ");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(TableCopies, Tell_a_key_that_comes_twice_and_keep_what_came_before) {
  EXPECT_TRUE(ReadAnswered({"1", "2", "1", "4"}));
  EXPECT_EQ(Keys(), "1 2 ");
  ExpectErrorBox(GetParam().copyRoutine, 457, ErrorText(error::kKeyInUse));
  EXPECT_FALSE(house.desk.Form());
}

TEST_P(TableCopies, Leave_the_form_alone_after_an_error_without_progress_bar) {
  Vars().g_NoProgressBar = true;
  EXPECT_TRUE(ReadAnswered({"1", "1", "3"}));
  EXPECT_EQ(Keys(), "1 ");
  ExpectErrorBox(GetParam().copyRoutine, 457, ErrorText(error::kKeyInUse));
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST_P(TableCopies, Send_what_was_set_when_a_date_is_none) {
  EXPECT_TRUE(
      ReadAnswered({"1"}, {.strFromDate = "soon", .strToDate = "3/5/2008", .strNameFrom = "A", .strNameTo = "B"}));
  EXPECT_EQ(Keys(), "1 ");
  ExpectErrorBox(GetParam().filterRoutine, 13, ErrorText(error::kConversion));
  // What stands ahead of the dates was set: the active status of a list, the line items of a transaction.
  const bool list = GetParam().key == "ListID";
  const bool lines = !list && GetParam().read.table != enTimeEntries;
  EXPECT_EQ(house.traffic.documents.back(), house.Document(list    ? "<ActiveStatus>All</ActiveStatus>"
                                                           : lines ? "<IncludeLineItems>true</IncludeLineItems>"
                                                                   : ""));
}

TEST_P(TableCopies, Tell_ahead_of_the_answer_that_it_may_take_a_while) {
  EXPECT_TRUE(ReadAnswered({"1"}));
  EXPECT_EQ(house.FormTexts(), Texts{FirstText()});
  EXPECT_EQ(house.PositionsUnder(FirstText()), Texts{"8/10"});
}

TEST_P(TableCopies, Show_their_reading_text_for_three_records) {
  EXPECT_TRUE(ReadAnswered({"1", "2", "3"}));
  const std::string text(GetParam().readingText);
  if (text.empty()) {
    EXPECT_EQ(house.FormTexts(), Texts{FirstText()});
  } else {
    EXPECT_EQ(house.FormTexts(), (Texts{FirstText(), text}));
    EXPECT_EQ(house.PositionsUnder(text), (Texts{"0/2", "1/2", "2/2"}));
  }
}

TEST_P(TableCopies, Show_it_for_two_only_where_the_table_does) {
  EXPECT_TRUE(ReadAnswered({"1", "2"}));
  const std::string text(GetParam().readingText);
  if (GetParam().showsTwo) {
    EXPECT_EQ(house.FormTexts(), (Texts{FirstText(), text}));
    EXPECT_EQ(house.PositionsUnder(text), (Texts{"0/1", "1/1"}));
  } else {
    EXPECT_EQ(house.FormTexts(), Texts{FirstText()});
  }
}

TEST_P(TableCopies, Show_nothing_without_progress_bar) {
  Vars().g_NoProgressBar = true;
  EXPECT_TRUE(ReadAnswered({"1", "2", "3"}));
  EXPECT_EQ(Keys(), "1 2 3 ");
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST_P(TableCopies, Found_nothing_is_False_in_silence) {
  EXPECT_FALSE(ReadRefused(1));
  EXPECT_TRUE(Vars().g_NoQBRecords);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_FALSE(ReadRefused(500));
  EXPECT_FALSE(Vars().g_NoQBRecords);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(TableCopies, Any_other_status_is_told_and_is_False) {
  EXPECT_FALSE(ReadRefused(3250));
  EXPECT_FALSE(Vars().g_NoQBRecords);
  EXPECT_EQ(house.BoxTexts(), Texts{RefusalText("No.", 3250, "Error")});
}

std::string NameOfCopy(const testing::TestParamInfo<CopyCase>& tested) { return std::string(tested.param.read.name); }

INSTANTIATE_TEST_SUITE_P(Reader, TableCopies, testing::ValuesIn(kTables), NameOfCopy);

// --- Projects --------------------------------------------------------------------------------------------------------

constexpr ReadCase kProjects = {
    .name = "Projects", .table = enProjects, .message = "CustomerQuery", .record = "CustomerRet"};

std::string Customer(std::string_view id, int level) {
  return fmt::format("<CustomerRet><ListID>{}</ListID><Sublevel>{}</Sublevel></CustomerRet>", id, level);
}

TEST(ProjectReader, Customers_are_left_out) {
  ReaderHouse house(kProjects);
  house.AnswerWith({{.message = "CustomerQuery", .records = Customer("1", 0) + Customer("2", 1) + Customer("3", 2)}});
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.FieldOfAll("ListID"), "2 3 ");
}

TEST(ProjectReader, An_answer_of_customers_alone_is_read_all_the_same) {
  ReaderHouse house(kProjects);
  house.AnswerWith({{.message = "CustomerQuery", .records = Customer("1", 0)}});
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.records.Count(), 0U);
  EXPECT_FALSE(Vars().g_NoQBRecords);
}

TEST(ProjectReader, A_dependent_read_takes_customers_too_and_shows_no_reading_text) {
  ReaderHouse house(kProjects);
  house.AnswerWith({{.message = "CustomerQuery", .records = Customer("1", 0) + Customer("2", 1) + Customer("3", 2)}});
  EXPECT_TRUE(house.Read({.strID = "1", .IsDependent = true}));
  EXPECT_EQ(house.FieldOfAll("ListID"), "1 2 3 ");
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(ProjectReader, Nothing_but_projects_looks_at_the_dependent_flag) {
  ReaderHouse house(enClients);
  house.AnswerWith({{.message = "CustomerQuery", .records = Customer("1", 0) + Customer("2", 1)}});
  EXPECT_TRUE(house.Read({.IsDependent = true}));
  EXPECT_EQ(house.FieldOfAll("ListID"), "1 ");
}

TEST(ProjectReader, A_customer_of_the_company_file_is_found_by_its_identifier_for_a_pull) {
  ReaderHouse house(enProjects);
  const auto customer = house.AddCustomer("<Name>Acme</Name>");
  const auto job = house.AddJob("Roof", customer);
  EXPECT_TRUE(house.Read({.strID = customer, .IsDependent = true}));
  EXPECT_EQ(house.Names(), "Acme ");
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.Names(), "Roof ");
}

// --- The message loop ------------------------------------------------------------------------------------------------

// Writes down pumps and what the form shows: "." for a pump, "[text]" for a show.
class LoopDesk : public ForwardingDesk {
 public:
  LoopDesk(Desk& inner, std::string& trace) : ForwardingDesk(inner), trace_(trace) {}
  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override {
    trace_ += "[" + state.action + "]";
    ForwardingDesk::ShowMsgForm(state, std::move(onCancel));
  }
  void PumpMessages() override {
    trace_ += ".";
    ForwardingDesk::PumpMessages();
  }

 private:
  std::string& trace_;
};

class LoopHouse : public ReaderHouse {
 public:
  LoopHouse() : ReaderHouse(enClients), loop_(desk, trace) {
    auto platform = Spied();
    platform.desk = &loop_;
    Enter(platform);
    Connect();
    AnswerWith({{.message = "CustomerQuery", .records = Customer("1", 0) + Customer("2", 0) + Customer("3", 0)}});
  }
  std::string trace;

 private:
  LoopDesk loop_;
};

TEST(ReaderLoop, Messages_are_pumped_ahead_of_each_text_and_behind_it) {
  LoopHouse house;
  EXPECT_TRUE(house.Read());
  EXPECT_TRUE(house.trace.starts_with(".[Reading ...Customers(may take some time)]."));
  const auto reading = house.trace.find("[Reading Clients from QuickBooks...]");
  ASSERT_NE(reading, std::string::npos);
  EXPECT_EQ(house.trace[reading - 1], '.');
  // At the text, behind it, and at the bar and behind it for each of three records.
  EXPECT_GE(house.trace.size() - house.trace.rfind(']') - 1, 2U + (3U * 2U));
}

TEST(ReaderLoop, Without_form_the_copy_pumps_once) {
  LoopHouse house;
  Vars().g_NoProgressBar = true;
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.trace, ".");
}

}  // namespace
}  // namespace twqb
