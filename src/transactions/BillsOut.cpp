#include "transactions/BillsOut.h"

#include <fmt/format.h>

#include <array>
#include <optional>

#include "engine/AddedRecords.h"
#include "engine/Mapping.h"
#include "engine/RowWalk.h"
#include "messages/StatusCodes.h"
#include "platform/Decimal.h"
#include "platform/Text.h"
#include "quickbooks/Requests.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/TxnRow.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

constexpr int kBillable = 0;  // of BillableStatus
constexpr int kNotBillable = 1;

std::string LinkBy(std::string_view table, std::string_view keyColumn, std::string_view key) {
  return GetScalarFromSQL(Sql("SELECT QBLINKID FROM {} WHERE {} = '{}';", table, keyColumn, key));
}

MessageBox InvalidAccount(const RefusedRequest& refused) {
  return {.text = fmt::format(
              "QuickBooks has reported the following error: -\r\n{}\r\n(Error Code = {}\r\nSeverity: {})"
              "\r\n\r\nIf this table needs an account, please choose a valid account from the\r\nSync "
              "Settings Form.",
              refused.response.StatusMessage(), refused.response.StatusCode(), refused.response.StatusSeverity())};
}

constexpr std::array kRules = {
    StatusRule{.status = status::kInvalidReference, .then = Refusal::LeaveTable, .box = InvalidAccount},
    StatusRule{.box = AskToGoOn},
};

// For the answer that a row does not become a line.
bool Stays(std::string_view why) {
  NoteFate(Fate::PassedOver, why);
  return false;
}

}  // namespace

std::string LinkOfPerson(std::string_view employeeId) { return LinkBy("Employee", "EmployeeID", employeeId); }

BillInHand::BillInHand(QBSessionManager& session)
    : messageSet_(RequireMsgSetRequest(session)), request_(messageSet_.Append(kBillRequest)) {}

bool BillInHand::AppendLine(const ado::Recordset& row, const CostColumns& columns, const CostCodes& codes) {
  // A row of no project gets as far as its amount.
  const auto project = row.Field("ProjectID");
  if (!IsNull(project) && LinkBy("Project", "projectID", ToText(project)).empty())
    return Stays("its project has no link");
  const auto line = request_["ORItemLineAddList"].Append()["ItemLineAdd"];
  line.Keep();
  std::string itemLink;
  if (const auto code = row.Field(columns.code); !IsNull(code)) {
    itemLink = LinkBy(codes.table, codes.keyColumn, ToText(code));
    if (itemLink.empty()) return Stays("its code has no link");
    line["ItemRef"]["ListID"].SetValue(itemLink);
  }
  if (const auto text = row.Field(columns.description); !IsNull(text)) {
    line["Desc"].SetValue(ToText(text));
    if (!IsXmlText(ToText(text))) LogMended("SendBill", columns.description, ColumnText(row, columns.key));
  }
  if (!IsNull(row.Field(columns.quantity))) line["Quantity"].SetValue(NumberIn(row, columns.quantity).ToCents());
  // A markup is the client's affair.
  line["Amount"].SetValue((NumberIn(row, columns.quantity) * NumberIn(row, columns.cost)).ToCents());
  const auto projectLink = LinkBy("Project", "projectID", ToText(project));
  if (projectLink.empty()) return Stays("it has no project");
  line["CustomerRef"]["ListID"].SetValue(projectLink);
  if (!IsNull(row.Field(columns.billable))) {
    line["BillableStatus"].SetValue(IsTrueFlag(row, columns.billable) ? kBillable : kNotBillable);
  }
  if (const auto classId = ClassFor(projectLink, codes.table, itemLink); !classId.empty()) {
    line["ClassRef"]["ListID"].SetValue(classId);
  }
  keys_.push_back(Sql("'{}'", ColumnText(row, columns.key)));
  list_ = list_.IsEmpty() ? keys_.back() : Sql("{},{}", list_, keys_.back());
  return true;
}

std::vector<std::string> LinesOfBill(const Record& bill) {
  std::vector<std::string> lines;
  const auto entries = bill["ORItemLineRetList"];
  for (std::size_t i = 0; !entries.IsNothing() && i < entries.Count(); ++i) {
    const auto line = entries.GetAt(i)["ItemLineRet"];
    lines.push_back(line.IsNothing() ? std::string() : line["TxnLineID"].GetValueOrEmpty());
  }
  return lines;
}

RequestField BillInHand::LineAt(std::size_t place) const {
  return request_["ORItemLineAddList"].GetAt(place)["ItemLineAdd"];
}

bool HasText(const RequestField& line) { return line["Desc"].IsSet() && !Trim(line["Desc"].GetValue()).empty(); }

bool IsSameLine(const Record& line, const RequestField& request) {
  constexpr std::array<std::string_view, 4> kPaths = {"ItemRef.ListID", "Quantity", "Amount", "CustomerRef.ListID"};
  constexpr std::array<std::string_view, 1> kText = {"Desc"};
  // A line without a text gets that of its item.
  return SaysTheSame(line, request, kPaths) && (!HasText(request) || SaysTheSame(line, request, kText));
}

bool HasLinesOf(const Record& record, const BillInHand& bill) {
  const auto lines = record["ORItemLineRetList"];
  const auto count = lines.IsNothing() ? 0 : lines.Count();
  if (count != bill.LineCount()) return false;
  for (std::size_t place = 0; place < count; ++place) {
    if (!IsSameLine(lines.GetAt(place)["ItemLineRet"], bill.LineAt(place))) return false;
  }
  return true;
}

SentBill SendBill(const BillInHand& bill, const Table& table, std::string_view key, const SendRecord& record,
                  const ado::Recordset& row, QBSessionManager& session, Run& run) {
  std::optional<MsgSetResponse> answer;
  if (const auto raised = CatchError([&] { answer = SendAddition(table, key, session, bill.MessageSet()); })) {
    // An amount of zero is one reason of several. The line has always named that one; the observer hears what it was.
    WriteLog("Could not transfer Bill to QB, because its amount is zero. ELID = " + bill.Keys().Text());
    TellErrorToObserver("SendBill", raised->number(), raised->description(), ToldBy::Nobody);
    return {};
  }
  // It may be there already, which has been told.
  if (!answer) return {.end = SentBill::End::Refused};
  const auto& response = answer->GetAt(0);
  if (response.StatusCode() == status::kOk) {
    const auto added = response.Detail();
    SentBill sent = {.end = SentBill::End::Added, .txnId = added["TxnID"].GetValue(), .lines = LinesOfBill(added)};
    TellRecordId(sent.txnId);
    Vars().g_NewQBLinkID = sent.txnId;
    NoteFate(Fate::Added, "");
    NoteIdentifier(sent.txnId);
    return sent;
  }
  const RefusedRequest refused{
      .request = bill.Request(), .response = response, .kind = RequestKind::Add, .record = record, .row = row};
  return {.end = EndsTheRun(kRules, refused, run) ? SentBill::End::LeaveTable : SentBill::End::Refused};
}

std::string Unquoted(const Sql& key) {
  const auto text = key.Text();
  return std::string(text.substr(1, text.size() - 2));
}

std::string ProblemWithBills(std::string_view what) {
  return fmt::format(
      "There was a problem in transfering Bill(s). Please make sure\r\nthe associated data does exist in "
      "QuickBooks. Specifically, make\r\nsure all the associated {} are tranfered to QuickBooks.\r\n",
      what);
}

}  // namespace twqb
