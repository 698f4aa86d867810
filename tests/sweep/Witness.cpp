// Which statements and documents are deeds.
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "Trace.h"
#include "platform/Forwarding.h"
#include "tests/support/Decorating.h"

namespace twqb::sweep {

namespace {

constexpr std::string_view kDone = "statusCode=\"0\"";

// Whether the answer has an element whose name ends so, carried out.
bool CarriedOut(std::string_view answer, std::string_view ending) {
  for (auto at = answer.find(ending); at != std::string_view::npos; at = answer.find(ending, at + 1)) {
    const auto tag = answer.substr(at, answer.find('>', at) - at);
    if (tag.find(kDone) != std::string_view::npos) return true;
  }
  return false;
}

std::optional<DeedKind> DeedOf(std::string_view document, std::string_view answer) {
  if (CarriedOut(answer, "AddRs ")) return DeedKind::AddCarriedOut;
  if (CarriedOut(answer, "ModRs ")) return DeedKind::ModCarriedOut;
  if (document.find(" newMessageSetID=") == std::string_view::npos &&
      document.find(" oldMessageSetID=") != std::string_view::npos) {
    return DeedKind::OutcomeDropped;
  }
  const bool forOne =
      document.find("<ListID>") != std::string_view::npos || document.find("<TxnID>") != std::string_view::npos;
  if (forOne && CarriedOut(answer, "QueryRs ")) return DeedKind::TwinRead;
  return std::nullopt;
}

using NoteDeed = std::function<void(DeedKind)>;

class WatchedTransport : public ForwardingTransport {
 public:
  WatchedTransport(std::unique_ptr<Transport> inner, NoteDeed note)
      : ForwardingTransport(std::move(inner)), note_(std::move(note)) {}
  std::string ProcessDocument(std::string_view document) override {
    auto answer = ForwardingTransport::ProcessDocument(document);
    if (const auto deed = DeedOf(document, answer)) note_(*deed);
    return answer;
  }

 private:
  NoteDeed note_;
};

bool WritesLink(std::string_view statement) { return statement.find(" SET QBLinkID = ") != statement.npos; }

std::optional<DeedKind> DeedOf(std::string_view statement) {
  constexpr std::array<std::string_view, 14> kChoices = {
      "FROM QBPayroll", "ParamName = 'ACTIVITY_", "SELECT QBClassID", "SELECT EmpBillRate", "SELECT EmpCostRate",
      "SELECT AC_BillRate", "SELECT AC_CostRate", "SELECT ProjectConType",
      // Whether a bill has got its link: one of which that is not known is looked after once more.
      "SELECT QBLinkID FROM VendorBill",
      // Who spent it, the reserved code, and what a line or an estimate belongs to.
      "SELECT EmployeeID FROM Employee WHERE QBLinkID", "SELECT COUNT(ExpID) FROM Expense", "INSERT INTO Expense(",
      "UPDATE EXPENSELOG SET VendorBillID", "UPDATE Project SET EstimateID"};
  // Of a received transaction.
  constexpr std::array<std::string_view, 7> kKeys = {"SELECT ActivityID FROM Activity WHERE QBLinkID",
                                                     "SELECT ExpID FROM Expense WHERE QBLinkID",
                                                     "SELECT ProjectID, ProjectName FROM Project WHERE QBLINKID",
                                                     "SELECT ActivityID FROM Activity WHERE QBLINKID",
                                                     "SELECT EmployeeID FROM Employee WHERE QBLINKID",
                                                     "SELECT ProjectID FROM Project WHERE QBLINKID",
                                                     "SELECT TransactionInvNum FROM TransactionTable WHERE QBLinkID"};
  // Of the person to bill, and of a bill's lines.
  constexpr std::array<std::string_view, 2> kBillKeys = {"SELECT COUNT(*) FROM Employee WHERE IsSub = -1",
                                                         "SELECT QBLINKID FROM Employee "};
  constexpr std::array<std::string_view, 3> kLineKeys = {
      "SELECT QBLINKID FROM Project ", "SELECT QBLINKID FROM Activity ", "SELECT QBLINKID FROM Expense "};
  constexpr std::array<std::string_view, 2> kPayments = {"SELECT ProjectID, ClientID, TransactionPayLateFeeRecd",
                                                         "SELECT ProjectID FROM TransactionTable WHERE (PayID"};
  constexpr std::array<std::string_view, 2> kPayers = {"SELECT QBLinkID, ClientID FROM Client ",
                                                       "SELECT QBLinkID, ProjectID FROM Project "};
  constexpr std::array<std::string_view, 2> kRows = {"INSERT INTO ManInvDetail", "UPDATE Payment SET PayRetainer"};
  const auto holds = [&](std::string_view part) { return statement.find(part) != std::string_view::npos; };
  if (WritesLink(statement)) return DeedKind::LinkWritten;
  if (std::ranges::any_of(kChoices, holds)) return DeedKind::Choice;
  if (std::ranges::any_of(kKeys, holds) || std::ranges::any_of(kBillKeys, holds)) return DeedKind::KeyLookedUp;
  if (std::ranges::any_of(kLineKeys, holds)) return DeedKind::LineKeyLookedUp;
  if (std::ranges::any_of(kPayments, holds)) return DeedKind::PaymentBegun;
  if (std::ranges::any_of(kPayers, holds)) return DeedKind::PayerLookedUp;
  if (std::ranges::any_of(kRows, holds)) return DeedKind::RowWritten;
  if (holds("SELECT EmployeeID, EmpCompany,")) return DeedKind::VendorsListed;
  if (holds("SELECT QBLinkID from TransactionTable WHERE")) return DeedKind::RecordLookedFor;
  if (holds("SELECT ClientID FROM Client WHERE QBLinkID")) return DeedKind::OwnerLookedUp;
  if (holds("SELECT ClientID FROM Project WHERE QBLINKID")) return DeedKind::OwnerNeeded;
  return std::nullopt;
}

// What a row is that is written into the table which that statement opens.
std::optional<DeedKind> RowOf(std::string_view statement) {
  if (statement == "SELECT * FROM TransactionTable;") return DeedKind::TellingRowWritten;
  if (statement == "SELECT * FROM Payment;") return DeedKind::RowWritten;
  if (statement == "SELECT * FROM TimeEntry WHERE QBLINKID IS NOT NULL;" ||
      statement == "SELECT * FROM ExpenseLog WHERE QBLINKID IS NOT NULL;") {
    return DeedKind::LineWritten;
  }
  return std::nullopt;
}

class WatchedRows : public ado::ForwardingRecordset {
 public:
  WatchedRows(std::unique_ptr<Recordset> inner, DeedKind row, NoteDeed note)
      : ForwardingRecordset(std::move(inner)), row_(row), note_(std::move(note)) {}
  void Update() override {
    ForwardingRecordset::Update();
    note_(row_);
  }

 private:
  DeedKind row_;
  NoteDeed note_;
};

constexpr std::string_view kContract = "SELECT ProjectConType";

bool BeginsInvoice(std::string_view statement) {
  return statement.starts_with(kContract) || statement.find("FROM TimeEntry WHERE TransactionID") != statement.npos ||
         statement.find("FROM ExpenseLog WHERE TransactionID") != statement.npos;
}

bool DecidesForm(std::string_view statement) {
  constexpr std::array<std::string_view, 4> kLookUps = {kContract, "SELECT QBLinkID, ActivityID",
                                                        "SELECT QBLinkID, ExpID", "SELECT QBClassID"};
  return std::ranges::any_of(kLookUps, [&](std::string_view lookUp) { return statement.starts_with(lookUp); });
}

bool FindsSomething(const ado::Recordset& rows) {
  if (rows.Eof()) return false;
  const auto value = rows.FieldAt(0);
  return !IsNull(value) && !ToText(value).empty();
}

class WatchedConnection : public ado::ForwardingConnection {
 public:
  WatchedConnection(std::unique_ptr<Connection> inner, NoteDeed note)
      : ForwardingConnection(std::move(inner)), note_(std::move(note)) {}
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    std::int64_t changed = 0;
    auto rows = ForwardingConnection::Execute(statement, &changed);
    if (rowsAffected != nullptr) *rowsAffected = changed;
    // A bill's line is in one of two tables, and the statement on the other changes nothing.
    if (changed > 0 || !WritesLink(statement)) Note(statement, rows.get());
    return rows;
  }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    auto rows = ForwardingConnection::OpenRecordset(statement, cursor, lock);
    Note(statement, rows.get());
    if (const auto row = RowOf(statement)) return std::make_unique<WatchedRows>(std::move(rows), *row, note_);
    return rows;
  }

 private:
  void Note(std::string_view statement, const ado::Recordset* rows) const {
    if (const auto deed = DeedOf(statement)) note_(*deed);
    if (statement.starts_with("UPDATE VendorBill SET QBLinkID = ")) note_(DeedKind::BillLinked);
    if (BeginsInvoice(statement)) note_(DeedKind::InvoiceBegun);
    if (DecidesForm(statement) && FindsSomething(*rows)) note_(DeedKind::FormFound);
  }

  NoteDeed note_;
};

}  // namespace

struct Witness::Parts {
  Parts(const Platform& in, std::function<std::size_t()> number)
      : inner(in),
        callNumber(std::move(number)),
        note([this](DeedKind kind) { deeds.push_back({.k = callNumber(), .kind = kind}); }),
        quickbooks(*in.quickbooks, note),
        database(*in.database, note) {}

  Platform inner;
  std::function<std::size_t()> callNumber;
  std::vector<Deed> deeds;
  NoteDeed note;
  DecoratingTransportFactory<WatchedTransport, NoteDeed> quickbooks;
  DecoratingProvider<WatchedConnection, NoteDeed> database;
};

Witness::Witness(const Platform& inner, std::function<std::size_t()> callNumber)
    : parts_(std::make_unique<Parts>(inner, std::move(callNumber))) {}
Witness::~Witness() = default;

Platform Witness::Watched() const {
  auto platform = parts_->inner;
  platform.quickbooks = &parts_->quickbooks;
  platform.database = &parts_->database;
  return platform;
}

const std::vector<Deed>& Witness::Deeds() const { return parts_->deeds; }

}  // namespace twqb::sweep
