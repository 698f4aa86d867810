// The operations of the interface, one line each: a result's form, and the operation of the library.

#include "com/AccountTexts.h"
#include "com/BridgeObject.h"
#include "com/Results.h"

namespace twqb::com {

using windows::TextOf;

namespace {

// The numbers are those of the library's own enumeration.
twqb::enTables TableOf(::enTables table) { return static_cast<twqb::enTables>(table); }

}  // namespace

HRESULT BridgeObject::CloseProgressScreen() {
  return Do(*this, [&] { bridge_.CloseProgressScreen(); });
}
HRESULT BridgeObject::GetClassItems(IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetClassItems(); });
}
HRESULT BridgeObject::get_IsSubscribedToQBEvents(VARIANT_BOOL* value) {
  return GiveFlag(*this, value, [&] { return bridge_.IsSubscribedToQBEvents(); });
}
HRESULT BridgeObject::get_LeaveMsgBoxOpen(VARIANT_BOOL* value) {
  return GiveFlag(*this, value, [&] { return bridge_.LeaveMsgBoxOpen(); });
}
HRESULT BridgeObject::put_LeaveMsgBoxOpen(VARIANT_BOOL value) {
  return Do(*this, [&] { bridge_.SetLeaveMsgBoxOpen(value != VARIANT_FALSE); });
}
HRESULT BridgeObject::get_NoRecsInQBTable(VARIANT_BOOL* value) {
  return GiveFlag(*this, value, [&] { return bridge_.NoRecsInQBTable(); });
}
HRESULT BridgeObject::get_QBHostVer(short* value) {
  return GiveNumber(*this, value, [&] { return bridge_.QBHostVer(); });
}
HRESULT BridgeObject::get_QBCountry(BSTR* value) {
  return GiveText(*this, value, [&] { return bridge_.QBCountry(); });
}
HRESULT BridgeObject::get_HelpID(short* value) {
  return GiveNumber(*this, value, [&] { return bridge_.HelpID(); });
}
HRESULT BridgeObject::put_HelpID(short value) {
  return Do(*this, [&] { bridge_.SetHelpID(value); });
}
HRESULT BridgeObject::get_ConnectString(BSTR* value) {
  return GiveText(*this, value, [&] { return bridge_.ConnectString(); });
}
HRESULT BridgeObject::put_ConnectString(BSTR value) {
  return Do(*this, [&] { bridge_.SetConnectString(TextOf(value)); });
}
HRESULT BridgeObject::get_TWSettingsPath(BSTR* value) {
  return GiveText(*this, value, [&] { return bridge_.TWSettingsPath(); });
}
HRESULT BridgeObject::put_TWSettingsPath(BSTR value) {
  return Do(*this, [&] { bridge_.SetTWSettingsPath(TextOf(value)); });
}
HRESULT BridgeObject::get_NewQBLinkID(BSTR* value) {
  return GiveText(*this, value, [&] { return bridge_.NewQBLinkID(); });
}
HRESULT BridgeObject::put_NewQBLinkID(BSTR value) {
  return Do(*this, [&] { bridge_.SetNewQBLinkID(TextOf(value)); });
}
HRESULT BridgeObject::get_PassedID(BSTR* value) {
  return GiveText(*this, value, [&] { return bridge_.PassedID(); });
}
HRESULT BridgeObject::put_PassedID(BSTR value) {
  return Do(*this, [&] { bridge_.SetPassedID(TextOf(value)); });
}
HRESULT BridgeObject::get_HelpFilePath(BSTR* value) {
  return GiveText(*this, value, [&] { return bridge_.HelpFilePath(); });
}
HRESULT BridgeObject::put_HelpFilePath(BSTR value) {
  return Do(*this, [&] { bridge_.SetHelpFilePath(TextOf(value)); });
}
HRESULT BridgeObject::get_IsSilentMode(VARIANT_BOOL* value) {
  return GiveFlag(*this, value, [&] { return bridge_.IsSilentMode(); });
}
HRESULT BridgeObject::put_IsSilentMode(VARIANT_BOOL value) {
  return Do(*this, [&] { bridge_.SetIsSilentMode(value != VARIANT_FALSE); });
}
HRESULT BridgeObject::get_NoProgressBar(VARIANT_BOOL* value) {
  return GiveFlag(*this, value, [&] { return bridge_.NoProgressBar(); });
}
HRESULT BridgeObject::put_NoProgressBar(VARIANT_BOOL value) {
  return Do(*this, [&] { bridge_.SetNoProgressBar(value != VARIANT_FALSE); });
}
HRESULT BridgeObject::get_IsQBSingleMode(VARIANT_BOOL* value) {
  return GiveFlag(*this, value, [&] { return bridge_.IsQBSingleMode(); });
}
HRESULT BridgeObject::put_IsQBSingleMode(VARIANT_BOOL value) {
  return Do(*this, [&] { bridge_.SetIsQBSingleMode(value != VARIANT_FALSE); });
}
HRESULT BridgeObject::get_UseTWSTable(VARIANT_BOOL* value) {
  return GiveFlag(*this, value, [&] { return bridge_.UseTWSTable(); });
}
HRESULT BridgeObject::put_UseTWSTable(VARIANT_BOOL value) {
  return Do(*this, [&] { bridge_.SetUseTWSTable(value != VARIANT_FALSE); });
}
HRESULT BridgeObject::get_IsSync(VARIANT_BOOL* value) {
  return GiveFlag(*this, value, [&] { return bridge_.IsSync(); });
}
HRESULT BridgeObject::put_IsSync(VARIANT_BOOL value) {
  return Do(*this, [&] { bridge_.SetIsSync(value != VARIANT_FALSE); });
}
HRESULT BridgeObject::get_UsePreferencesTW(VARIANT_BOOL* value) {
  return GiveFlag(*this, value, [&] { return bridge_.UsePreferencesTW(); });
}
HRESULT BridgeObject::put_UsePreferencesTW(VARIANT_BOOL value) {
  return Do(*this, [&] { bridge_.SetUsePreferencesTW(value != VARIANT_FALSE); });
}
HRESULT BridgeObject::SendDataToQB(::enTables enTableName, VARIANT_BOOL* result) {
  return GiveFlag(*this, result, [&] { return bridge_.SendDataToQB(TableOf(enTableName)); });
}
HRESULT BridgeObject::GetDataFromQB(::enTables enTableName, VARIANT_BOOL* result) {
  return GiveFlag(*this, result, [&] { return bridge_.GetDataFromQB(TableOf(enTableName)); });
}
HRESULT BridgeObject::DisplaySettings() {
  return Do(*this, [&] { bridge_.DisplaySettings(); });
}
HRESULT BridgeObject::ConnectToQB(VARIANT_BOOL blnConnect, VARIANT_BOOL* result) {
  return GiveFlag(*this, result, [&] { return bridge_.ConnectToQB(blnConnect != VARIANT_FALSE); });
}
HRESULT BridgeObject::IsJob(BSTR strListID, VARIANT_BOOL* result) {
  return GiveFlag(*this, result, [&] { return bridge_.IsJob(TextOf(strListID)); });
}
HRESULT BridgeObject::get_QBDB(BSTR* value) {
  return GiveText(*this, value, [&] { return bridge_.QBDB(); });
}
HRESULT BridgeObject::DeleteTWRecord(::enTables enTableName, BSTR strListOrTxnID, VARIANT_BOOL* result) {
  return GiveFlag(*this, result, [&] { return bridge_.DeleteTWRecord(TableOf(enTableName), TextOf(strListOrTxnID)); });
}
HRESULT BridgeObject::DeleteQBRecord(::enTables enTableName, BSTR strQBLinkID, VARIANT_BOOL* result) {
  return GiveFlag(*this, result, [&] { return bridge_.DeleteQBRecord(TableOf(enTableName), TextOf(strQBLinkID)); });
}
HRESULT BridgeObject::SubscribeToQBEvents(VARIANT_BOOL blnSubscribe, VARIANT_BOOL* result) {
  return GiveFlag(*this, result, [&] { return bridge_.SubscribeToQBEvents(blnSubscribe != VARIANT_FALSE); });
}
HRESULT BridgeObject::GetAccounts(IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetAccounts(); });
}
HRESULT BridgeObject::SaveSettings(BSTR ACIncAcct, BSTR ACExpAcct, BSTR InvServAcct, BSTR InvExpAcct,
                                   VARIANT_BOOL* result) {
  return GiveFlag(*this, result, [&] {
    return bridge_.SaveSettings(TextOf(ACIncAcct), TextOf(ACExpAcct), TextOf(InvServAcct), TextOf(InvExpAcct));
  });
}
HRESULT BridgeObject::GetEmployees(VARIANT_BOOL GetAll, IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetEmployees(GetAll != VARIANT_FALSE); });
}
HRESULT BridgeObject::GetCustomers(VARIANT_BOOL GetAll, IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetCustomers(GetAll != VARIANT_FALSE); });
}
HRESULT BridgeObject::GetVendors(VARIANT_BOOL GetAll, IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetVendors(GetAll != VARIANT_FALSE); });
}
HRESULT BridgeObject::GetInvoices(IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetInvoices(); });
}
HRESULT BridgeObject::GetPayments(IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetPayments(); });
}
HRESULT BridgeObject::GetExpCodes(VARIANT_BOOL GetAll, IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetExpCodes(GetAll != VARIANT_FALSE); });
}
HRESULT BridgeObject::GetActivities(VARIANT_BOOL GetAll, IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetActivities(GetAll != VARIANT_FALSE); });
}
HRESULT BridgeObject::GetTimeEntries(IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetTimeEntries(); });
}
HRESULT BridgeObject::GetChecks(IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetChecks(); });
}
HRESULT BridgeObject::GetBills(IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetBills(); });
}
HRESULT BridgeObject::GetPayrollItems(IDispatch** result) {
  return GiveList(*this, result, [&] { return bridge_.GetPayrollItems(); });
}

HRESULT BridgeObject::GetQBAccounts(SAFEARRAY** strAccounts, VARIANT_BOOL* result) {
  if (strAccounts == nullptr) return E_POINTER;
  return GiveAccounts([&](const AccountArray& accounts) { return Replace(strAccounts, accounts); }, result);
}

HRESULT BridgeObject::GiveAccounts(const std::function<bool(const AccountArray&)>& put, VARIANT_BOOL* result) {
  return GiveFlag(*this, result, [&] {
    AccountArray accounts;
    return bridge_.GetQBAccounts(accounts) && put(accounts);
  });
}

}  // namespace twqb::com
