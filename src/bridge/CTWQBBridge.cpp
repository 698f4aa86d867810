#include "twqb/CTWQBBridge.h"

#include <string_view>
#include <vector>

#include "bridge/Deletion.h"
#include "bridge/Lookups.h"
#include "bridge/modTWQBBridge.h"
#include "events/modSubscribe.h"
#include "platform/Text.h"
#include "quickbooks/LookupLists.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Session.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"
#include "services/msgForm.h"

namespace twqb {

namespace {

constexpr std::size_t kRuleLength = 55;

LookupScope ScopeOf(bool GetAll) { return GetAll ? LookupScope::All : LookupScope::Plain; }

std::string Now() { return GeneralDate(TheMachine().Now()); }

// A host that forgot a seam would end with its first call through it.
void RequireAllSeams(const Platform& platform) {
  std::vector<std::string_view> missing;
  if (platform.database == nullptr) missing.emplace_back("database");
  if (platform.quickbooks == nullptr) missing.emplace_back("quickbooks");
  if (platform.desk == nullptr) missing.emplace_back("desk");
  if (platform.machine == nullptr) missing.emplace_back("machine");
  if (platform.callback == nullptr) missing.emplace_back("callback");
  if (missing.empty()) return;
  throw NotComposed("A CTWQBBridge needs all five seams of the platform, and nothing stands behind " +
                    Join(missing, ", ") + ". Call twqb::Compose with them ahead of the first object.");
}

}  // namespace

void Compose(const Platform& platform, std::span<const Table* const> tables, RunObserver* observer,
             LostLinks lostLinks) {
  Vars() = ModuleVariables{};
  Vars().platform = platform;
  Vars().tables = tables;
  Vars().pull = GetTableFromQB;
  Vars().observer = observer;
  Vars().findsLostLinks = lostLinks == LostLinks::FindAgain;
}

CTWQBBridge::CTWQBBridge() {
  RequireAllSeams(Vars().platform);
  Vars().g_QBHostVer = 0;
  const std::string rule(kRuleLength, '*');
  WriteLog(rule);
  IgnoreErrors([] { WriteLog("TWTWClient Initialized on " + Now()); });
  WriteLog(rule);
}

CTWQBBridge::~CTWQBBridge() {
  Vars().g_QBHostVer = 0;
  // A desk without an answer has ended the run already; there is nobody left to tell.
  try {
    IgnoreErrors([&] { ConnectToQB(false); });
  } catch (const DeskGaveUp&) {
    DropSession();
  }
  IgnoreErrors([] { WriteLog("TWTWClient Terminated on " + Now()); });
  WriteLog("");
}

void CTWQBBridge::CloseProgressScreen() {
  IgnoreErrors([] { UnloadMsgForm(); });
}

bool CTWQBBridge::IsSubscribedToQBEvents() {
  Vars().g_IsSubscribed = IsSubscribed();
  return Vars().g_IsSubscribed;
}

bool CTWQBBridge::LeaveMsgBoxOpen() const { return Vars().g_LeaveMsgBoxOpen; }
void CTWQBBridge::SetLeaveMsgBoxOpen(bool value) { Vars().g_LeaveMsgBoxOpen = value; }
std::int16_t CTWQBBridge::QBHostVer() const { return Vars().g_QBHostVer; }
std::string CTWQBBridge::QBCountry() const { return Vars().g_QBCountry; }
std::int16_t CTWQBBridge::HelpID() const { return Vars().g_HelpID; }
void CTWQBBridge::SetHelpID(std::int16_t value) { Vars().g_HelpID = value; }
std::string CTWQBBridge::ConnectString() const { return Vars().g_ConnectString; }
void CTWQBBridge::SetConnectString(std::string value) { Vars().g_ConnectString = std::move(value); }
std::string CTWQBBridge::TWSettingsPath() const { return Vars().g_TWSettingsPath; }
void CTWQBBridge::SetTWSettingsPath(std::string value) { Vars().g_TWSettingsPath = std::move(value); }
std::string CTWQBBridge::NewQBLinkID() const { return Vars().g_NewQBLinkID; }
void CTWQBBridge::SetNewQBLinkID(std::string value) { Vars().g_NewQBLinkID = std::move(value); }
std::string CTWQBBridge::PassedID() const { return Vars().g_PassedID; }
void CTWQBBridge::SetPassedID(std::string value) { Vars().g_PassedID = std::move(value); }
std::string CTWQBBridge::HelpFilePath() const { return Vars().g_HelpFilePath; }
void CTWQBBridge::SetHelpFilePath(std::string value) { Vars().g_HelpFilePath = std::move(value); }
bool CTWQBBridge::IsSilentMode() const { return Vars().g_IsSilentMode; }
void CTWQBBridge::SetIsSilentMode(bool value) { Vars().g_IsSilentMode = value; }
bool CTWQBBridge::NoProgressBar() const { return Vars().g_NoProgressBar; }
void CTWQBBridge::SetNoProgressBar(bool value) { Vars().g_NoProgressBar = value; }
bool CTWQBBridge::UseTWSTable() const { return Vars().g_UseTWSTable; }
void CTWQBBridge::SetUseTWSTable(bool value) { Vars().g_UseTWSTable = value; }

std::string CTWQBBridge::QBDB() const {
  std::string file;
  IgnoreErrors([&] { file = gf_ReadSettings("GENERAL", "QBDBPath", Vars().g_TWSettingsPath); });
  return file;
}

bool CTWQBBridge::SendDataToQB(enTables enTableName) {
  return SendData(enTableName,
                  {.usePreferencesTW = usePreferencesTW_, .isSync = isSync_, .isQBSingleMode = isQBSingleMode_});
}

bool CTWQBBridge::GetDataFromQB(enTables enTableName) {
  return GetData(enTableName,
                 {.usePreferencesTW = usePreferencesTW_, .isSync = isSync_, .isQBSingleMode = isQBSingleMode_});
}

void CTWQBBridge::DisplaySettings() {}

ReturnedList CTWQBBridge::List(LookupList list, LookupScope scope) {
  noRecsInQBTable_ = false;
  return RunAs(LookupName(list), ReturnedList(), [&] {
    if (!ConnectToQB(true)) return ReturnedList();
    const auto result = LookUp(list, scope);
    noRecsInQBTable_ = result.foundNone;
    return result.list;
  });
}

ReturnedList CTWQBBridge::GetAccounts() { return List(LookupList::Accounts); }
ReturnedList CTWQBBridge::GetEmployees(bool GetAll) { return List(LookupList::Employees, ScopeOf(GetAll)); }
ReturnedList CTWQBBridge::GetCustomers(bool GetAll) { return List(LookupList::Customers, ScopeOf(GetAll)); }
ReturnedList CTWQBBridge::GetVendors(bool GetAll) { return List(LookupList::Vendors, ScopeOf(GetAll)); }
ReturnedList CTWQBBridge::GetInvoices() { return List(LookupList::Invoices); }
ReturnedList CTWQBBridge::GetPayments() { return List(LookupList::Payments); }
ReturnedList CTWQBBridge::GetExpCodes(bool GetAll) { return List(LookupList::ExpCodes, ScopeOf(GetAll)); }
ReturnedList CTWQBBridge::GetActivities(bool GetAll) { return List(LookupList::Activities, ScopeOf(GetAll)); }
ReturnedList CTWQBBridge::GetTimeEntries() { return List(LookupList::TimeEntries); }
ReturnedList CTWQBBridge::GetChecks() { return List(LookupList::Checks); }
ReturnedList CTWQBBridge::GetBills() { return List(LookupList::Bills); }
ReturnedList CTWQBBridge::GetClassItems() { return List(LookupList::ClassItems); }
ReturnedList CTWQBBridge::GetPayrollItems() { return List(LookupList::PayrollItems); }

bool CTWQBBridge::GetQBAccounts(AccountArray& strAccounts) {
  return RunAs("GetQBAccounts", false,
               [&] { return ConnectToQB(true) && FillAccountArray(strAccounts, AccountTypes::Left); });
}

bool CTWQBBridge::IsJob(const std::string& strListID) {
  return RunAs("IsJob", false, [&] { return CheckQBSession(true, isQBSingleMode_) && IsJobInQuickBooks(strListID); });
}

bool CTWQBBridge::DeleteTWRecord(enTables enTableName, const std::string& strListOrTxnID) {
  return twqb::DeleteTWRecord(enTableName, strListOrTxnID, isQBSingleMode_);
}

bool CTWQBBridge::DeleteQBRecord(enTables enTableName, const std::string& strQBLinkID) {
  return twqb::DeleteQBRecord(enTableName, strQBLinkID, isQBSingleMode_);
}

bool CTWQBBridge::SubscribeToQBEvents(bool blnSubscribe) { return twqb::SubscribeToQBEvents(blnSubscribe); }

bool CTWQBBridge::SaveSettings(const std::string& ACIncAcct, const std::string& ACExpAcct,
                               const std::string& InvServAcct, const std::string& InvExpAcct) {
  return twqb::SaveSettings(ACIncAcct, ACExpAcct, InvServAcct, InvExpAcct);
}

bool CTWQBBridge::ConnectToQB(bool blnConnect) { return CheckQBSession(blnConnect, isQBSingleMode_); }

}  // namespace twqb
