#include "bridge/Deletion.h"

#include <fmt/core.h>

#include <string>

#include "bridge/Tables.h"
#include "messages/StatusCodes.h"
#include "quickbooks/Requests.h"
#include "quickbooks/Session.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"

namespace twqb {

namespace {

// One of the two deletion requests, by the names of its fields.
struct DeletionRequest {
  std::string_view name;
  std::string_view type;
  std::string_view id;
};
constexpr DeletionRequest kListDel = {.name = "ListDelRq", .type = "ListDelType", .id = "ListID"};
constexpr DeletionRequest kTxnDel = {.name = "TxnDelRq", .type = "TxnDelType", .id = "TxnID"};

bool Confirms(std::string_view question) {
  return TheDesk().ShowMessageBox({.text = std::string(question),
                                   .title = "Confirm",
                                   .icon = BoxIcon::Question,
                                   .buttons = BoxButtons::YesNo,
                                   .modality = BoxModality::System}) == BoxAnswer::Yes;
}

// The identifier goes into the statement as it is. An error is ignored, but for an observer.
void DeleteRows(std::string_view table, std::string_view id) {
  const auto raised =
      CatchError([&] { GlobalConnection().Execute(Sql("DELETE FROM {} WHERE QBLinkID = '{}';", table, id), nullptr); });
  if (raised) TellErrorToObserver("DeleteTWRecord", raised->number(), raised->description(), ToldBy::Nobody);
}

// Of a table without a deletion nothing: the set goes out as it is, empty.
void AppendDeletion(MsgSetRequest& set, const QuickBooksDeletion& deletion, std::string_view id) {
  if (deletion.kind == QuickBooksKind::None) return;
  const auto& names = deletion.kind == QuickBooksKind::List ? kListDel : kTxnDel;
  const auto request = set.Append(names.name);
  request[names.type].SetValue(deletion.type);
  request[names.id].SetValue(id);
}

}  // namespace

bool DeleteTWRecord(std::int32_t table, std::string_view strListOrTxnID, bool isQBSingleMode) {
  return RunAs("DeleteTWRecord", false, [&] {
    if (!Confirms("Do you want to delete the corresponding record of Tallywick?")) return false;
    // Nothing is sent, yet there has to be a session.
    if (!CheckQBSession(true, isQBSingleMode)) return false;
    const auto* described = FindTable(table);
    const auto deletion = described == nullptr ? BillingDeletion() : described->billingDeletion;
    if (!deletion.instead.empty()) {
      TheDesk().ShowMessageBox(
          {.text = std::string(deletion.instead), .title = "Message", .icon = BoxIcon::Information});
      return true;
    }
    WithGlobalConnection([&] {
      DeleteRows(deletion.rows, strListOrTxnID);
      if (!deletion.alsoRows.empty()) DeleteRows(deletion.alsoRows, strListOrTxnID);
    });
    return true;
  });
}

bool DeleteQBRecord(std::int32_t table, std::string_view strQBLinkID, bool isQBSingleMode) {
  return RunAs("DeleteQBRecord", false, [&] {
    if (!Confirms("Do you want to delete the corresponding record of QuickBooks?")) return false;
    if (!CheckQBSession(true, isQBSingleMode)) return false;
    // QuickBooks is about to announce the deletion: the call-back object learns whose it is.
    const auto session = TheSession();
    auto set = RequireMsgSetRequest(*session);
    if (TalksToCallback()) {
      TheCallback().SetMode(kCallbackRecord);
      TheCallback().SetText(strQBLinkID);
    }
    const auto* described = FindTable(table);
    const auto deletion = described == nullptr ? QuickBooksDeletion() : described->quickBooksDeletion;
    AppendDeletion(set, deletion, strQBLinkID);
    const auto answer = session->DoRequests(set);
    const auto& response = answer.GetAt(0);
    const auto code = response.StatusCode();
    // The mode goes back even while a transfer that failed still holds the call-back.
    if (code != status::kOk && (deletion.kind == QuickBooksKind::None || code != deletion.accepted)) {
      ShowQBError(response);
      if (HasCallback()) TheCallback().SetMode(kCallbackIdle);
      return false;
    }
    IgnoreErrors([] {
      if (HasCallback()) TheCallback().SetMode(kCallbackIdle);
    });
    IgnoreErrors([] {
      if (HasCallback()) TheCallback().SetText("");
    });
    return true;
  });
}

}  // namespace twqb
