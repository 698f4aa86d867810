#include "transactions/PaymentsOut.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <vector>

#include "engine/LostAdditions.h"
#include "engine/Mapping.h"
#include "engine/RecordReader.h"
#include "engine/RowWalk.h"
#include "messages/StatusCodes.h"
#include "platform/Decimal.h"
#include "quickbooks/Requests.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Settings.h"
#include "services/Sql.h"
#include "services/msgForm.h"
#include "transactions/NewRow.h"
#include "transactions/PaymentMethods.h"
#include "transactions/PaymentParts.h"
#include "transactions/RetainerItems.h"
#include "transactions/SpecialItems.h"
#include "transactions/TxnRow.h"
#include "transactions/modInvoices.h"
#include "transactions/modPayments.h"

namespace twqb {

namespace {

// --- What is told ----------------------------------------------------------------------------------------------------

std::vector<std::string> NotTransferred(const RefusedRequest& refused) {
  return {"Error transferring Payment to QB. Pay ID = " + refused.record.key};
}

MessageBox MissingData(const RefusedRequest& /*refused*/) {
  return {.text =
              "There was a problem in transfering Payment(s). Please make sure\r\n"
              "the associated data does exist in QuickBooks. Specifically, make\r\n"
              "sure all the associated Invoices, Clients and Projects are tranfered to QuickBooks.\r\n",
          .title = "Error",
          .icon = BoxIcon::Information};
}

constexpr std::array kRules = {
    StatusRule{
        .status = status::kInvalidReference, .then = Refusal::LeaveTable, .log = NotTransferred, .box = MissingData},
    StatusRule{.log = NotTransferred, .box = AskToGoOn},
};

constexpr SendTexts kSendTexts = {.routine = "MovePaymentsToQB", .shown = "Sending Payments To QuickBooks..."};

// Why payments were held back, and how the end of the run tells of them.
struct HeldBack {
  int count = 0;
  void Tell(std::string_view reason, bool failsTheTable, Run& run) const {
    if (count == 0) return;
    const auto text = fmt::format("There were {} Tallywick Payment(s) {}", count, reason);
    TellLacking({.text = text, .failsTheTable = failsTheTable}, run);
  }
};

// What QuickBooks still expects for an invoice.
struct OpenInvoice {
  std::string id;
  std::string account;  // "" where the invoice has none
  Currency balance;
};

// What became of an allocation.
enum class Allocated : std::uint8_t {
  Next,    // on to the next one
  GiveUp,  // the rest of the payment stays
  LeaveTable
};

// The form is up from the methods on.
void TakeFormDown(const Run& run) {
  if (run.ShowsProgress()) CloseObjects(run, FormToo::Unload, nullptr, nullptr, nullptr);
}

// --- The run ---------------------------------------------------------------------------------------------------------

class PaymentSend final : public RowWork {
 public:
  PaymentSend(QBSessionManager& session, Run& run) : session_(session), run_(run) {}

  bool Secure() override {
    if (AddRetainerItems(session_)) return true;
    TakeFormDown(run_);
    return false;
  }

  RowEnd TakeRow(RowWalk& walk) override {
    const auto& payment = walk.Row();
    record_ = {};
    walk.BeginRow(kCallbackTransaction);
    record_.key = ColumnText(payment, "PayID");
    IgnoreErrors([&] {
      walk.CountRow(
          [&] { return fmt::format("{}, {}", ColumnText(payment, "PayDate"), ColumnText(payment, "ClientID")); });
    });
    record_.linkId = ColumnText(payment, "QBLinkID");
    if (!NumberIn(payment, "PayRetainer").IsZero()) {
      BookRetainer(walk);
      return RowEnd::Done;
    }
    return Allocate(walk);
  }

  void Summarise(Run& run) override {
    manual_.Tell(
        "which you have\r\nmanually received in QuickBooks. They were not sent\r\nagain to QuickBooks. Please "
        "see the \"TWQBLog\" file for additional details",
        false, run);
    exceeding_.Tell(
        "for which the payment amount\r\nexceeded the QuickBooks' Invoice amount. This could be because "
        "you\r\nhave manually received some payments in QuickBooks. They were not sent\r\nto QuickBooks. "
        "Please see the \"TWQBLog\" file for additional details.",
        true, run);
    missing_.Tell(
        "that did tranfer because \r\nthe associated invoice(s) are not in QuickBooks.\r\nPlease see the "
        "\"TWQBLog\" file for additional details",
        true, run);
  }

  [[nodiscard]] std::string RowInHand() const override { return record_.key; }

 private:
  // --- Retainers ---

  void BookRetainer(RowWalk& walk) {
    const auto& payment = walk.Row();
    if (IsInQuickBooks(kInvoicesTable, record_, session_, run_)) return;
    const auto link = PayerOfRetainer(record_.key);
    if (link.empty()) return NoteFateAtLast(Fate::PassedOver, "its payer has no link");
    const auto date = PaymentDate(payment);
    const auto amount = NumberIn(payment, "PayAmt").ToCents();
    if (amount < Currency()) return NoteFate(Fate::PassedOver, "its amount is negative");
    const auto booked = AddRetainerPayment(session_, {.CustomerListID = link,
                                                      .TxnDate = date,
                                                      .RefNumber = ColumnText(payment, "PayRef"),
                                                      .Amount = amount,
                                                      .PayID = record_.key});
    if (!booked) return;
    const auto& txnId = *booked;
    TellRecordId(txnId);
    if (txnId.empty()) {
      AskAboutRetainer();
      return;
    }
    NoteFate(Fate::Added);
    NoteIdentifier(txnId);
    WriteRetainerLinks(walk.Connection(), record_.key, txnId);
    CloseAddition(session_);
  }

  void AskAboutRetainer() {
    const auto answer = TheDesk().ShowMessageBox({.text = "A Retainer Payment could not be sent to QuickBooks\r\n\r\n"
                                                          "Please contact your software vendor.\r\n\r\n"
                                                          "Do you want to continue?",
                                                  .title = "Error",
                                                  .icon = BoxIcon::Question,
                                                  .buttons = BoxButtons::YesNo});
    if (answer == BoxAnswer::No) run_.g_Cancelled = true;
  }

  // --- Allocations ---

  RowEnd Allocate(RowWalk& walk) {
    // A payment that was sent is never sent again; of one that was broken off the rest goes.
    isUnread_ = false;
    hasGone_ = false;
    isBrokenOff_ = WasTakenUp(kPaymentsTable, record_.key, session_);
    if (!isBrokenOff_ && IsInQuickBooks(kPaymentsTable, record_, session_, run_)) return RowEnd::Done;
    const auto allocations =
        walk.Connection().OpenRecordset(Sql("{} WHERE (PayID = '{}');", Sql(kAllocations), record_.key),
                                        ado::CursorType::Static, ado::LockType::ReadOnly);
    auto end = RowEnd::Done;
    for (; !allocations->Eof(); allocations->MoveNext()) {
      auto allocated = Allocated::GiveUp;
      AsPart(Standing::Line, "", [&] {
        NoteKeyOf(*allocations, "TransactionID");
        allocated = SendAllocation(walk, *allocations);
      });
      if (allocated == Allocated::LeaveTable) end = RowEnd::LeaveTable;
      if (allocated == Allocated::Next) continue;
      TellRowsBehind(*allocations, "TransactionID");
      break;
    }
    NoteFateAtLast(Fate::PassedOver, "it goes to no invoice");
    // The rest of another one is not this one's affair.
    if ((hasGone_ || isBrokenOff_) && !IsAdditionOpen(session_)) {
      CloseAddition(session_, isUnread_ ? RestOfRow::Follows : RestOfRow::None);
    }
    allocations->Close();
    return end;
  }

  Allocated SendAllocation(RowWalk& walk, const ado::Recordset& allocation) {
    const auto& payment = walk.Row();
    if (isBrokenOff_ && AllocationHasLink(ColumnText(allocation, "TransactionID"))) {
      NoteFate(Fate::LeftAsItWas, "QuickBooks has it, and it never goes twice");
      return Allocated::Next;
    }
    auto messageSet = RequireMsgSetRequest(session_);
    const auto request = messageSet.Append(kPaymentRequest);
    record_.lastUpdatedIsNull = IsNull(allocation.Field("LastUpdated"));
    if (GetQBLinkIDOf("CLIENT", ColumnText(allocation, "ClientID")).empty()) {
      NoteFate(Fate::PassedOver, "its client has no link");
      return Allocated::GiveUp;
    }
    const auto how = FillPayment(request, payment, allocation);
    const auto project = GetQBLinkIDOf("PROJECT", ColumnText(allocation, "ProjectID"));
    if (project.empty()) {
      NoteFate(Fate::PassedOver, "its project has no link");
      return Allocated::Next;
    }
    request["CustomerRef"]["ListID"].SetValue(project);
    const auto invoice = FindInvoice(allocation);
    if (!invoice || HoldsBack(payment, allocation, *invoice)) {
      NoteFateAtLast(Fate::PassedOver, "QuickBooks does not expect so much for its invoice");
      return Allocated::GiveUp;
    }
    if (!invoice->account.empty()) request["ARAccountRef"]["FullName"].SetValue(invoice->account);
    Apply(request, how, *invoice, NumberIn(allocation, "TransactionPayAmtApplied").ToCents());
    return Exchange(walk, messageSet, request, allocation);
  }

  // The invoice that the allocation goes to, as QuickBooks has it; nothing where it can't be told.
  std::optional<OpenInvoice> FindInvoice(const ado::Recordset& allocation) {
    const auto number = ColumnText(allocation, "TransactionInvNum");
    const auto project = ColumnText(allocation, "ProjectID");
    OpenInvoice invoice;
    invoice.id = LinkOfInvoice(number, project);
    if (invoice.id.empty()) {
      ++missing_.count;
      NoteFate(Fate::PassedOver, "its invoice is not in QuickBooks");
      WriteLog(
          fmt::format("Could not transfer Payment to QB, because the invoice does not exist in QB. Missing Inv Num "
                      "= {}, ClientID = {} , ProjectID = {}",
                      number, ColumnText(allocation, "ClientID"), project));
      return std::nullopt;
    }
    RecordList found;
    if (!ApplyQBFiltersAndReadRecords(kInvoicesTable, kInvoicesTable.reads.front(), found, session_,
                                      {.strID = invoice.id}, run_)) {
      isUnread_ = true;
      NoteFateAtLast(Fate::PassedOver, "its invoice can't be found in QuickBooks");
      return std::nullopt;
    }
    for (const auto& record : found) {
      if (const auto account = record["ARAccountRef"]; !account.IsNothing()) {
        invoice.account = account["FullName"].GetValueOrEmpty();
      }
      if (const auto balance = AmountOf(record["BalanceRemaining"])) invoice.balance = *balance;
    }
    return invoice;
  }

  // Whether QuickBooks expects nothing more for the invoice, or less than this: the user may have received it there.
  bool HoldsBack(const ado::Recordset& payment, const ado::Recordset& allocation, const OpenInvoice& invoice) {
    const auto tail = [&] {
      return fmt::format(" Pay ID = {}, ClientID = {} , ProjectID = {} ReferenceNumber = \"{}\"", record_.key,
                         ColumnText(allocation, "ClientID"), ColumnText(allocation, "ProjectID"),
                         ColumnText(payment, "PayRef"));
    };
    if (invoice.balance == Currency()) {
      ++manual_.count;
      WriteLog(
          "Could not transfer Payment to QB, because user seems to have received a payment manually in QuickBooks "
          "for it." +
          tail());
      return true;
    }
    if (NumberIn(allocation, "TransactionPayAmtApplied").ToCurrency() <= invoice.balance) return false;
    ++exceeding_.count;
    WriteLog("Could not transfer Payment to QB, because the TW Payment amount is greater than the QB invoice amount." +
             tail());
    return true;
  }

  static void Apply(const RequestField& request, Applied how, const OpenInvoice& invoice, Currency amount) {
    const auto applied = request["ORApplyPayment"]["AppliedToTxnAddList"].Append();
    applied["TxnID"].SetValue(invoice.id);
    switch (how) {
      case Applied::Money:
        applied["PaymentAmount"].SetValue(amount);
        return;
      case Applied::Discount:
        applied["DiscountAmount"].SetValue(amount);
        applied["DiscountAccountRef"]["FullName"].SetValue(
            gf_ReadSettings("GENERAL", "INVOICE_SERVICE_ACCOUNT", Vars().g_TWSettingsPath, "Other Income"));
        return;
      case Applied::AppliedRetainer:
        applied["DiscountAmount"].SetValue(amount);
        applied["DiscountAccountRef"]["FullName"].SetValue(kRetainerAccount);
        AssignNoMoney(request);
        return;
    }
  }

  Allocated Exchange(RowWalk& walk, MsgSetRequest& messageSet, const RequestField& request,
                     const ado::Recordset& allocation) {
    std::string name;
    if (FindsLostLinks(session_)) {
      name = ColumnText(allocation, "TransactionID");
      NameAddition(messageSet, kPaymentsTable, name);
    }
    const auto answer = SendAddition(kPaymentsTable, name, session_, messageSet);
    if (!answer) return Allocated::GiveUp;
    const auto& response = answer->GetAt(0);
    if (response.StatusCode() != status::kOk) {
      const RefusedRequest refused{
          .request = request, .response = response, .kind = RequestKind::Add, .record = record_, .row = walk.Row()};
      const auto then = ApplyRule(RuleFor(kRules, refused), refused, run_.g_Cancelled);
      return then == Refusal::LeaveTable ? Allocated::LeaveTable : Allocated::GiveUp;
    }
    const auto txnId = response.Detail()["TxnID"].GetValue();
    TellRecordId(txnId);
    NoteFate(Fate::Added);
    NoteIdentifier(txnId);
    WriteAllocationLinks(walk.Connection(), record_.key, allocation, txnId, record_.lastUpdatedIsNull);
    CloseAddition(session_, RestOfRow::Follows);
    hasGone_ = true;
    return Allocated::Next;
  }

  QBSessionManager& session_;
  Run& run_;
  SendRecord record_;
  bool hasGone_ = false;      // a part of the payment in hand, now
  bool isUnread_ = false;     // the invoice of a part of the payment in hand could not be
  bool isBrokenOff_ = false;  // the payment in hand: a part of it went in a run that ended there
  HeldBack manual_;           // QuickBooks expects nothing more
  HeldBack exceeding_;        // it expects less
  HeldBack missing_;          // it has no such invoice
};

}  // namespace

bool AddPaymentMethodNamesToQB(QBSessionManager& session) {
  return RunAs("AddPaymentMethodNamesToQB", false, [&] {
    const Run& run = Vars();
    if (run.ShowsProgress()) {
      ShowMsgForm("Sending Payment Methods to QuickBooks...");
      SetProgressText("Adding Payment Methods to QuickBooks...");
    }
    auto messageSet = RequireMsgSetRequest(session);
    for (const std::string_view code : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
      const auto request = messageSet.Append("PaymentMethodAddRq");
      SetCut(request["Name"], PaymentMethodName(code));
      request["IsActive"].SetValue(true);
    }
    const auto answer = session.DoRequests(messageSet);
    const auto& response = answer.GetAt(0);
    if (const auto code = response.StatusCode(); code == status::kOk || code == status::kNameInUse) return true;
    ShowQBError(response);
    return false;
  });
}

void MovePaymentsToQB(const SendCall& call) {
  if (!AddPaymentMethodNamesToQB(call.session)) {
    TakeFormDown(call.run);
    return;
  }
  PaymentSend work(call.session, call.run);
  RowWalk(kSendTexts, call.run).Walk(call.sql, work);
}

}  // namespace twqb
