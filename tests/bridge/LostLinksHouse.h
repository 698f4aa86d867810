// Processes that send to one company file, one behind the other, over a wire that breaks where a test says.
//
// For the tests of links that got lost. What stands in a firm at first has links on both sides; the rows that are to go
// are made by each test.
#pragma once

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/companyfile/CompanyFile.h"
#include "platform/Forwarding.h"
#include "services/RunObserver.h"
#include "tests/bridge/BridgeHouse.h"
#include "tests/support/Decorating.h"

namespace twqb {

// At the n-th document with that text.
struct WireBreak {
  enum class When : std::uint8_t { NeverGoes, AnswerIsLost, BehindTheAnswer };

  std::string at;  // empty: nowhere
  When when = When::AnswerIsLost;
  int nth = 1;
  int alsoFailing = 0;  // documents behind it
};

inline constexpr int kForGood = 1'000'000;

using SendOn = std::function<std::string(std::string_view document)>;

struct Wire {
  WireBreak breaks;
  // The answer to the documents that a test has its own for.
  std::function<std::optional<std::string>(const std::string& document, const SendOn& sendOn)> answers;
  std::vector<std::string> documents;
  int failing = 0;
};

class BreakingTransport final : public ForwardingTransport {
 public:
  BreakingTransport(std::unique_ptr<Transport> inner, Wire& wire)
      : ForwardingTransport(std::move(inner)), wire_(wire) {}

  std::string ProcessDocument(std::string_view document) override {
    using When = WireBreak::When;
    const std::string text(document);
    wire_.documents.push_back(text);
    if (wire_.failing > 0) {
      --wire_.failing;
      throw Broken();
    }
    auto& breaks = wire_.breaks;
    const bool isStruck = !breaks.at.empty() && text.find(breaks.at) != std::string::npos && --breaks.nth == 0;
    if (isStruck) wire_.failing = breaks.alsoFailing;
    if (isStruck && breaks.when == When::NeverGoes) throw Broken();
    auto answer = AnswerTo(text);
    if (isStruck && breaks.when == When::AnswerIsLost) throw Broken();
    return answer;
  }

 private:
  static PlatformError Broken() { return {0x80040408, "The wire is broken."}; }

  std::string AnswerTo(const std::string& document) {
    const SendOn sendOn = [this](std::string_view sent) { return ForwardingTransport::ProcessDocument(sent); };
    if (wire_.answers) {
      if (auto answer = wire_.answers(document, sendOn)) return *answer;
    }
    return sendOn(document);
  }

  Wire& wire_;
};

class HeardLinks final : public RunObserver {
 public:
  void RecordTold(const RecordAccount& /*record*/) override {}
  void ErrorTold(const ErrorAccount& /*error*/) override {}
  void LostLinkTold(const LostLinkAccount& link) override { (link.isFound ? found : open).push_back(link.text); }

  std::vector<std::string> found;
  std::vector<std::string> open;
};

struct ProcessStart {
  std::string faults = {};
  bool findsLostLinks = true;
  std::string_view now = "2008-03-05T11:00:00";
};

// One process: the library composed anew, with an object to it. One stands at a time.
class Process : public BridgeHouse {
 public:
  explicit Process(const std::string& folder, const ProcessStart& start = {})
      : BridgeHouse({.answers = "default yes\ndefault cancel\ndefault skip\n",
                     .now = TextToDate(start.now),
                     .findsLostLinks = start.findsLostLinks,
                     .folder = folder},
                    start.faults),
        spied_(Spied()),
        breaking_(*spied_.quickbooks, wire) {
    auto seams = spied_;
    seams.quickbooks = &breaking_;
    Enter(seams);
    Vars().observer = &told;
    bridge.emplace(*this);
  }
  ~Process() {
    bridge.reset();
    Vars() = ModuleVariables{};
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  bool Send(enTables table) { return bridge->SendDataToQB(table); }
  // The rows of those keys, quoted.
  bool SendNamed(enTables table, std::string_view keys) {
    bridge->SetUsePreferencesTW(false);
    bridge->SetPassedID(std::string(keys));
    const bool result = bridge->SendDataToQB(table);
    bridge->SetUsePreferencesTW(true);
    return result;
  }
  // The documents with that text.
  [[nodiscard]] std::vector<std::string> DocumentsWith(std::string_view text) const {
    std::vector<std::string> found;
    std::ranges::copy_if(wire.documents, std::back_inserter(found),
                         [&](const auto& document) { return document.find(text) != std::string::npos; });
    return found;
  }
  [[nodiscard]] bool UsesIdentifiers() const { return !DocumentsWith("MessageSetID").empty(); }

  Wire wire;
  HeardLinks told;
  std::optional<Bridge> bridge;

 private:
  Platform spied_;
  DecoratingTransportFactory<BreakingTransport, Wire> breaking_;
};

// A folder with the files of a firm.
class LostLinksFirm {
 public:
  explicit LostLinksFirm(std::string_view recovery = "strict") {
    TestHouse house({.now = TextToDate("2008-03-05T09:00:00"), .folder = Folder()});
    SetCondition("recovery", recovery, house.machine);
    for (const auto& [kind, fields] : {
             std::pair{"Account", "<Name>Other Income</Name><AccountType>OtherIncome</AccountType>"},
             std::pair{"Account", "<Name>Costs</Name><AccountType>Expense</AccountType>"},
             std::pair{"Account", "<Name>Payroll Expenses</Name><AccountType>Expense</AccountType>"},
             std::pair{"Customer", "<Name>Acme</Name>"},
             std::pair{"Customer", "<Name>Yard</Name><ParentRef><FullName>Acme</FullName></ParentRef>"},
             std::pair{"Vendor", "<Name>SMITH</Name>"},
             std::pair{
                 "Employee",
                 "<FirstName>Ann</FirstName><LastName>Lee</LastName><EmployeePayrollInfo><UseTimeDataToCreatePaychecks>"
                 "UseTimeData</UseTimeDataToCreatePaychecks></EmployeePayrollInfo>"},
             std::pair{"ItemService",
                       "<Name>Drafting</Name><SalesOrPurchase><AccountRef><FullName>Other Income</FullName>"
                       "</AccountRef></SalesOrPurchase>"},
             std::pair{"ItemOtherCharge",
                       "<Name>Travel</Name><SalesOrPurchase><AccountRef><FullName>Costs</FullName></AccountRef>"
                       "</SalesOrPurchase>"},
         }) {
      static_cast<void>(Added(house, kind, fields));
    }
    const auto link = [&](std::string_view kind, std::string_view name) {
      return SpiedHouse::TextOf(
          house.Company(fmt::format("<{0}QueryRq><FullName>{1}</FullName></{0}QueryRq>", kind, name)), "ListID");
    };
    const auto row = [&](std::string_view table, std::string_view columns, std::string_view values,
                         std::string_view id) {
      house.Sql(fmt::format("INSERT INTO {} ({}, QBLinkID) VALUES ({}, '{}')", table, columns, values, id));
    };
    row("Client", "ClientID", "'ACME'", link("Customer", "Acme"));
    row("Project", "ProjectID, ProjectName, ClientID", "'YARD:', 'Yard', 'ACME'", link("Customer", "Acme:Yard"));
    row("Employee", "EmployeeID, IsSub", "'SMITH', -1", link("Vendor", "SMITH"));
    row("Employee", "EmployeeID, IsSub", "'ALEE', 0", link("Employee", "Ann Lee"));
    row("Activity", "ActivityID", "'DRAFT:'", link("ItemService", "Drafting"));
    row("Expense", "ExpID", "'TRAVEL:'", link("ItemOtherCharge", "Travel"));
  }

  [[nodiscard]] const std::string& Folder() const { return folder_.Path(); }

  void SetCondition(std::string_view name, std::string_view value, Machine& machine) {
    company::CompanyFile file(folder_ / "company.twq", machine);
    auto conditions = file.GetConditions();
    ASSERT_TRUE(company::FindCondition(name)->set(conditions, value));
    file.SetConditions(conditions);
  }

  // Adds a record to the company file; the answer.
  static std::string Added(TestHouse& house, std::string_view kind, std::string_view fields) {
    auto answer = house.Company(fmt::format("<{0}AddRq><{0}Add>{1}</{0}Add></{0}AddRq>", kind, fields));
    EXPECT_NE(answer.find("statusCode=\"0\""), std::string::npos) << answer;
    return answer;
  }
  // A customer, a vendor and so on of that name; its ListID.
  static std::string AddNamed(TestHouse& house, std::string_view kind, std::string_view name) {
    return SpiedHouse::TextOf(Added(house, kind, fmt::format("<Name>{}</Name>", name)), "ListID");
  }
  // The values of those elements of all records of a kind.
  static std::set<std::string> AllOf(TestHouse& house, std::string_view kind, std::string_view element) {
    const bool hasLines = element == "TxnLineID";
    const auto answer = house.Company(
        fmt::format("<{0}QueryRq>{1}</{0}QueryRq>", kind, hasLines ? "<IncludeLineItems>1</IncludeLineItems>" : ""));
    const auto open = fmt::format("<{}Ret>", kind);
    std::set<std::string> values;
    for (auto at = answer.find(open); at != std::string::npos; at = answer.find(open, at + 1)) {
      values.insert(SpiedHouse::TextOf(std::string_view(answer).substr(at), element));
    }
    return values;
  }

  static void AddClient(TestHouse& house, std::string_view key, std::string_view company) {
    house.Sql(fmt::format("INSERT INTO Client (ClientID, ClientCompany) VALUES ('{}', '{}')", key, company));
  }
  static void AddEntry(TestHouse& house, std::string_view key) {
    house.Sql(fmt::format(
        "INSERT INTO TimeEntry (TEID, TEDate, EmployeeID, ProjectID, ActivityID, TEHours, TEBill, TEPosted, "
        "TEDescription) VALUES ('{}', '2008-03-04 00:00:00', 'ALEE', 'YARD:', 'DRAFT:', 2, -1, -1, 'Plans')",
        key));
  }
  // What the send makes of such an entry, by hand; its TxnID.
  static std::string AddEntryThere(TestHouse& house) {
    return SpiedHouse::TextOf(
        Added(house, "TimeTracking",
              "<TxnDate>2008-03-04</TxnDate><EntityRef><FullName>Ann Lee</FullName></EntityRef><CustomerRef>"
              "<FullName>Acme:Yard</FullName></CustomerRef><ItemServiceRef><FullName>Drafting</FullName>"
              "</ItemServiceRef><Duration>PT2H0M0S</Duration><Notes>Plans</Notes><IsBillable>true</IsBillable>"),
        "TxnID");
  }
  static void AddInvoice(TestHouse& house, std::string_view key) {
    house.Sql(fmt::format(
        "INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, ServiceAmt, "
        "ExpAmt, TransactionInvDiscount, TransactionInvBillAmt) VALUES ('{0}', '{0}', 'ACME', 'YARD:', "
        "'2008-03-04 00:00:00', 180, 0, 0, 180)",
        key));
  }
  // One that both sides have.
  static void AddLinkedInvoice(TestHouse& house, std::string_view number) {
    const auto id = SpiedHouse::TextOf(
        Added(house, "Invoice",
              fmt::format("<CustomerRef><FullName>Acme:Yard</FullName></CustomerRef><RefNumber>{}</RefNumber>"
                          "<InvoiceLineAdd><ItemRef><FullName>Drafting</FullName></ItemRef><Amount>100.00</Amount>"
                          "</InvoiceLineAdd>",
                          number)),
        "TxnID");
    house.Sql(
        fmt::format("INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ProjectID, ClientID, QBLinkID) "
                    "VALUES ('{0}', '{0}', 'YARD:', 'ACME', '{1}')",
                    number, id));
  }
  static void AddPayment(TestHouse& house, std::string_view key, bool isRetainer) {
    house.Sql(fmt::format(
        "INSERT INTO Payment (PayID, PayRetainer, PayDate, PayAmt, PayMethod, PayRef, ClientID) VALUES ('{0}', {1}, "
        "'2008-03-04', 100, '1', '{0}', 'ACME')",
        key, isRetainer ? -1 : 0));
  }
  // What of a payment goes to an invoice; of a retainer, to none.
  static void AddPart(TestHouse& house, std::string_view payment, std::string_view invoice) {
    house.Sql(
        fmt::format("INSERT INTO TransactionTable (TransactionID, PayID, TransactionInvNum, ProjectID, ClientID, "
                    "TransactionPayAmtApplied) VALUES ('{0} to {1}', '{0}', '{1}', 'YARD:', 'ACME', 100)",
                    payment, invoice));
  }
  static void AddVendorBill(TestHouse& house, std::string_view key) {
    house.Sql(
        fmt::format("INSERT INTO VendorBill (VendorBillID, VendorID, BillNumber, BillDate, BillDueDate) VALUES "
                    "('{0}', 'SMITH', '{0}', '2008-03-04', '2008-03-20')",
                    key));
    AddExpense(house, fmt::format("of {}", key), fmt::format("'{}'", key));
  }
  static void AddExpense(TestHouse& house, std::string_view key, std::string_view bill = "NULL") {
    house.Sql(fmt::format(
        "INSERT INTO ExpenseLog (ELID, VendorBillID, ELDate, EmployeeID, isSub, ProjectID, ExpID, ELUnits, ELCost, "
        "ELBillable, ELDescription, ELPosted) VALUES ('{0}', {1}, '2008-03-03', 'SMITH', -1, 'YARD:', 'TRAVEL:', 2, "
        "10, 0, '{0}', -1)",
        key, bill));
  }

 private:
  TemporaryFolder folder_;
};

// A statement fails, the first of those that begin so.
inline std::string FailsToWrite(std::string_view statement) {
  return fmt::format("sql 1 raise 0x80040E14 \"Broken.\" {}\n", statement);
}

inline std::vector<std::string> LinesWith(const std::vector<std::string>& lines, std::string_view text) {
  std::vector<std::string> found;
  std::ranges::copy_if(lines, std::back_inserter(found),
                       [&](const auto& line) { return line.find(text) != std::string::npos; });
  return found;
}

}  // namespace twqb
