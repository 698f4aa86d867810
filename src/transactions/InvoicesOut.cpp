#include "transactions/InvoicesOut.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "engine/InvalidReference.h"
#include "engine/LostAdditions.h"
#include "engine/Mapping.h"
#include "engine/RowWalk.h"
#include "engine/SelectionQueries.h"
#include "messages/StatusCodes.h"
#include "platform/Decimal.h"
#include "quickbooks/Requests.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "transactions/InvoiceItems.h"
#include "transactions/InvoiceLines.h"
#include "transactions/RetainerItems.h"
#include "transactions/TxnRow.h"
#include "transactions/modInvoices.h"

namespace twqb {

namespace {

constexpr SendTexts kSendTexts = {
    .routine = "MoveInvoicesToQB",
    .shown = "Sending Invoices to QuickBooks...",
    .log = "Error tranfering Invoice to QB. Transaction ID = ",
    .lacking = {.text = "There was a problem in transfering Invoice(s). Please make sure\r\n"
                        "the associated data does exist in QuickBooks. Specifically, make\r\n"
                        "sure all the associated Clients and Projects are tranfered to QuickBooks.\r\n",
                .failsTheTable = true,
                .when = LackingBox::When::BehindClosing},
};

MessageBox InvalidAccount(const RefusedRequest& refused) {
  return InvalidReference(refused.response,
                          "If this table needs an account, please choose a valid account from the\r\n"
                          "Sync Settings in Tallywick.");
}

constexpr std::array kRules = {
    StatusRule{.status = status::kInvalidReference, .then = Refusal::LeaveTable, .box = InvalidAccount},
    StatusRule{.box = AskToGoOn},
};

constexpr std::string_view kAddRequest = "InvoiceAddRq";

RowPlace PlaceOf(std::string_view key) {
  return {.table = "TransactionTable", .condition = KeyCondition("TransactionID", key)};
}

void ReadInvoiceRow(const ado::Recordset& row, SendRecord& record) {
  record.key = ColumnText(row, "TransactionID");
  record.lastUpdatedIsNull = IsNull(row.Field("LastUpdated"));
}

// Adds the rows that have no live twin; one that has is left alone, whatever changed here.
class InvoiceSend final : public RowWork {
 public:
  InvoiceSend(QBSessionManager& session, Run& run) : session_(session), run_(run) {}

  // Each is tried, whatever became of the other.
  bool Secure() override {
    const bool hasRetainerItems = AddRetainerItems(session_);
    const bool hasLineItems = ValidateInvRelatedItems(session_);
    return hasRetainerItems && hasLineItems;
  }
  [[nodiscard]] bool ClosesWithoutRows() const override { return false; }

  RowEnd TakeRow(RowWalk& walk) override {
    const auto& row = walk.Row();
    record_ = {};
    walk.BeginRow(kCallbackTransaction);
    ReadInvoiceRow(row, record_);
    walk.CountRow([&] { return "Invoice Number: " + ColumnText(row, "TransactionInvNum"); });
    record_.linkId = ColumnText(row, "TransactionTableQBLinkID");
    if (IsInQuickBooks(kInvoicesTable, record_, session_, run_)) return RowEnd::Done;
    if (const auto total = row.Field("TransactionInvBillAmt"); !IsNull(total) && ToDecimal(total).IsNegative()) {
      NoteFate(Fate::PassedOver, "its amount is negative");
      return RowEnd::Done;
    }
    auto messageSet = RequireMsgSetRequest(session_);
    const auto request = AppendAddition(messageSet, kAddRequest, kInvoicesTable, record_.key);
    if (!AssignInvoiceFldValues(row, request, RequestKind::Add, CheckTaxItems())) return RowEnd::Lacking;
    return Exchange(walk, messageSet, request);
  }

  void Summarise(Run& run) override {
    if (withoutLines_.empty()) return;
    TellLacking({.text = "Following Invoice(s) not transferred to QuickBooks, because the Invoice Amount is zero: -"
                         "\r\n" +
                         withoutLines_,
                 .failsTheTable = true},
                run);
  }

  [[nodiscard]] std::string RowInHand() const override { return record_.key; }

 private:
  RowEnd Exchange(RowWalk& walk, const MsgSetRequest& messageSet, const RequestField& request) {
    std::optional<MsgSetResponse> answer;
    if (const auto raised =
            CatchError([&] { answer = SendAddition(kInvoicesTable, record_.key, session_, messageSet); })) {
      if (raised->number() == error::kRequestIncomplete) {
        NoteWithoutLines(ColumnText(walk.Row(), "TransactionInvNum"));
      } else {
        // There is no answer to read, so nothing is written back.
        ReportError(kSendTexts.errors, kSendTexts.routine, *raised);
      }
      return RowEnd::Done;
    }
    if (!answer) return RowEnd::Done;
    const auto& response = answer->GetAt(0);
    if (response.StatusCode() == status::kOk) {
      WriteLinkBack(walk.Connection(), PlaceOf(record_.key), record_, response.Detail()["TxnID"].GetValue());
      CloseAddition(session_);
      return RowEnd::Done;
    }
    const RefusedRequest refused{
        .request = request, .response = response, .kind = RequestKind::Add, .record = record_, .row = walk.Row()};
    return EndsTheRun(kRules, refused, run_) ? RowEnd::LeaveTable : RowEnd::Done;
  }

  void NoteWithoutLines(std::string_view number) {
    NoteFate(Fate::PassedOver, "its amount is zero");
    WriteLog(
        fmt::format("Could not transfer an invoice to QB, because its amount is zero. TransactionID = {}  "
                    "TransactionInvNum = {}",
                    record_.key, number));
    withoutLines_ += fmt::format("\r\nTransactionID = {},  TransactionInvNum = {}", record_.key, number);
  }

  QBSessionManager& session_;
  Run& run_;
  SendRecord record_;
  std::string withoutLines_;  // those that came out without any line
};

}  // namespace

void MoveInvoicesToQB(const SendCall& call) {
  InvoiceSend work(call.session, call.run);
  RowWalk(kSendTexts, call.run).Walk(call.sql, work);
}

TakenUp TakeUpInvoiceLink(const LostAddition& lost) {
  const auto row = lost.connection.OpenRecordset(SelectRows(kInvoicesTable, "TransactionID", lost.key),
                                                 ado::CursorType::Static, ado::LockType::ReadOnly);
  if (row->Eof()) return {.end = TakenUp::End::RowGone};
  SendRecord record;
  ReadInvoiceRow(*row, record);
  record.linkId = ColumnText(*row, "TransactionTableQBLinkID");
  return TakeUpTxnLink(lost, PlaceOf(record.key), record, kAddRequest, kInvoicesTable.reads.front(),
                       [&](const RequestField& request) { static_cast<void>(AssignInvoiceHeader(request, *row)); });
}

}  // namespace twqb
