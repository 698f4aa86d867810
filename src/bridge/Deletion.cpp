#include "bridge/Deletion.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>

#include "quickbooks/Requests.h"
#include "quickbooks/Session.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

// --- Description: BillingDb ------------------------------------------------------------------------------------------

constexpr std::string_view kReverseInvoice =
    "The associated Invoice in Tallywick can not be automatically\r\n"
    "deleted. Please reverse it from the Invoice Review screen in\r\n"
    "Tallywick\r\n";

// How a table's record goes in BillingDb. A table that is not described has no name: its statement is invalid, which is
// ignored like any other failure.
struct BillingDeletion {
  std::int32_t table;
  std::string_view rows = {};      // the table of BillingDb
  std::string_view alsoRows = {};  // a second one
  std::string_view instead = {};   // what the user is told in place of a deletion
};

constexpr std::array kBillingDeletions = {
    BillingDeletion{.table = enEmployees, .rows = "Employee"},
    BillingDeletion{.table = enVendors, .rows = "Employee"},
    BillingDeletion{.table = enClients, .rows = "Client"},
    BillingDeletion{.table = enProjects, .rows = "Project"},
    BillingDeletion{.table = enActivities, .rows = "Activity"},
    BillingDeletion{.table = enExpenseCodes, .rows = "Expense"},
    BillingDeletion{.table = enExpenseLog, .rows = "ExpenseLog"},
    BillingDeletion{.table = enTimeEntries, .rows = "TimeEntry"},
    BillingDeletion{.table = enInvoices, .instead = kReverseInvoice},
    BillingDeletion{.table = enPayments, .rows = "TransactionTable", .alsoRows = "Payment"},
};

// --- Description: QuickBooks -----------------------------------------------------------------------------------------

constexpr std::int32_t kNotFound = 3120;

// One of the two deletion requests, by the names of its fields.
struct DeletionRequest {
  std::string_view name;
  std::string_view type;
  std::string_view id;
};
constexpr DeletionRequest kListDel = {.name = "ListDelRq", .type = "ListDelType", .id = "ListID"};
constexpr DeletionRequest kTxnDel = {.name = "TxnDelRq", .type = "TxnDelType", .id = "TxnID"};

// The request by which a table's record goes in QuickBooks, and a status beside 0 that counts as success.
struct QuickBooksDeletion {
  std::int32_t table;
  DeletionRequest request;
  int type;  // of ListDelType or TxnDelType
  std::int32_t accepted = 0;
};

constexpr std::array kQuickBooksDeletions = {
    QuickBooksDeletion{.table = enEmployees, .request = kListDel, .type = 6},
    QuickBooksDeletion{.table = enVendors, .request = kListDel, .type = 30},
    QuickBooksDeletion{.table = enClients, .request = kListDel, .type = 2},
    QuickBooksDeletion{.table = enProjects, .request = kListDel, .type = 2},
    QuickBooksDeletion{.table = enActivities, .request = kListDel, .type = 17},
    QuickBooksDeletion{.table = enExpenseCodes, .request = kListDel, .type = 13},
    QuickBooksDeletion{.table = enExpenseLog, .request = kTxnDel, .type = 1},
    QuickBooksDeletion{.table = enTimeEntries, .request = kTxnDel, .type = 21},
    // Of invoices alone, one that is gone already is as good as deleted.
    QuickBooksDeletion{.table = enInvoices, .request = kTxnDel, .type = 13, .accepted = kNotFound},
    QuickBooksDeletion{.table = enPayments, .request = kTxnDel, .type = 17},
};

// --- Steps -----------------------------------------------------------------------------------------------------------

template <typename Row, std::size_t kCount>
const Row* FindRow(const std::array<Row, kCount>& rows, std::int32_t table) {
  const auto* const found = std::ranges::find(rows, table, &Row::table);
  return found == rows.end() ? nullptr : found;
}

bool Confirms(std::string_view question) {
  return TheDesk().ShowMessageBox({.text = std::string(question),
                                   .title = "Confirm",
                                   .icon = BoxIcon::Question,
                                   .buttons = BoxButtons::YesNo,
                                   .modality = BoxModality::System}) == BoxAnswer::Yes;
}

// The identifier goes into the statement as it is: one with a quote makes it invalid, which is ignored.
void DeleteRows(std::string_view table, std::string_view id) {
  IgnoreErrors(
      [&] { GlobalConnection().Execute(fmt::format("DELETE FROM {} WHERE QBLinkID = '{}';", table, id), nullptr); });
}

}  // namespace

bool DeleteTWRecord(std::int32_t table, std::string_view strListOrTxnID, bool isQBSingleMode) {
  return RunAs("DeleteTWRecord", false, [&] {
    // 1.
    if (!Confirms("Do you want to delete the corresponding record of Tallywick?")) return false;
    // 2. Nothing is sent, yet there has to be a session.
    if (!CheckQBSession(true, isQBSingleMode)) return false;
    // 3.
    const auto* found = FindRow(kBillingDeletions, table);
    const auto deletion = found != nullptr ? *found : BillingDeletion{.table = table};
    if (!deletion.instead.empty()) {
      TheDesk().ShowMessageBox(
          {.text = std::string(deletion.instead), .title = "Message", .icon = BoxIcon::Information});
      return true;
    }
    // 4., 5.
    WithGlobalConnection([&] {
      DeleteRows(deletion.rows, strListOrTxnID);
      if (!deletion.alsoRows.empty()) DeleteRows(deletion.alsoRows, strListOrTxnID);
    });
    return true;
  });
}

bool DeleteQBRecord(std::int32_t table, std::string_view strQBLinkID, bool isQBSingleMode) {
  return RunAs("DeleteQBRecord", false, [&] {
    // 1.
    if (!Confirms("Do you want to delete the corresponding record of QuickBooks?")) return false;
    // 2.
    if (!CheckQBSession(true, isQBSingleMode)) return false;
    // 3. QuickBooks is about to announce the deletion: the call-back object learns whose it is.
    auto& session = *Vars().g_QBSession;
    auto set = RequireMsgSetRequest(session);
    if (TalksToCallback()) {
      TheCallback().SetMode(kCallbackRecord);
      TheCallback().SetText(strQBLinkID);
    }
    // 4. A table that is not described sends the set as it is, empty.
    const auto* deletion = FindRow(kQuickBooksDeletions, table);
    if (deletion != nullptr) {
      const auto request = set.Append(deletion->request.name);
      request[deletion->request.type].SetValue(deletion->type);
      request[deletion->request.id].SetValue(strQBLinkID);
    }
    // 5.
    const auto answer = session.DoRequests(set);
    const auto& response = answer.GetAt(0);
    const auto status = response.StatusCode();
    // 6., 7. The mode goes back even while a transfer that failed still holds the call-back.
    if (status != 0 && (deletion == nullptr || status != deletion->accepted)) {
      ShowQBError(response);
      if (HasCallback()) TheCallback().SetMode(kCallbackIdle);
      return false;
    }
    // 8.
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
