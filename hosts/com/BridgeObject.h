// The object that hosts make: the interface of the type library in front of CTWQBBridge.
//
// It turns texts, flags and lists from one side's form into the other's, and does nothing else. No error leaves an
// operation: what the library could not tell the user becomes the failure value. A null pointer for a result, wrong
// types or too few arguments are answered with the standard numbers of COM.
#pragma once

#include <functional>

#include "adapters/windows/late/Owned.h"
#include "com/Counted.h"
#include "com/Interface.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::com {

class BridgeObject : public Counted<_CTWQBBridge> {
 public:
  // With one reference. The library must be composed.
  explicit BridgeObject(windows::Reference<ITypeInfo> type);

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD kind, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* failure, UINT* wrongArgument) override;

  // The operations, in the order of their slots.
  HRESULT STDMETHODCALLTYPE CloseProgressScreen() override;
  HRESULT STDMETHODCALLTYPE GetClassItems(IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE get_IsSubscribedToQBEvents(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE get_LeaveMsgBoxOpen(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE put_LeaveMsgBoxOpen(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE get_NoRecsInQBTable(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE get_QBHostVer(short* value) override;
  HRESULT STDMETHODCALLTYPE get_QBCountry(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE get_HelpID(short* value) override;
  HRESULT STDMETHODCALLTYPE put_HelpID(short value) override;
  HRESULT STDMETHODCALLTYPE get_ConnectString(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE put_ConnectString(BSTR value) override;
  HRESULT STDMETHODCALLTYPE get_TWSettingsPath(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE put_TWSettingsPath(BSTR value) override;
  HRESULT STDMETHODCALLTYPE get_NewQBLinkID(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE put_NewQBLinkID(BSTR value) override;
  HRESULT STDMETHODCALLTYPE get_PassedID(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE put_PassedID(BSTR value) override;
  HRESULT STDMETHODCALLTYPE get_HelpFilePath(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE put_HelpFilePath(BSTR value) override;
  HRESULT STDMETHODCALLTYPE get_IsSilentMode(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE put_IsSilentMode(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE get_NoProgressBar(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE put_NoProgressBar(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE get_IsQBSingleMode(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE put_IsQBSingleMode(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE get_UseTWSTable(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE put_UseTWSTable(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE get_IsSync(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE put_IsSync(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE get_UsePreferencesTW(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE put_UsePreferencesTW(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE SendDataToQB(::enTables enTableName, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE GetDataFromQB(::enTables enTableName, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE DisplaySettings() override;
  HRESULT STDMETHODCALLTYPE ConnectToQB(VARIANT_BOOL blnConnect, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE GetQBAccounts(SAFEARRAY** strAccounts, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE IsJob(BSTR strListID, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE get_QBDB(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE DeleteTWRecord(::enTables enTableName, BSTR strListOrTxnID, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE DeleteQBRecord(::enTables enTableName, BSTR strQBLinkID, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE SubscribeToQBEvents(VARIANT_BOOL blnSubscribe, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE GetAccounts(IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE SaveSettings(BSTR ACIncAcct, BSTR ACExpAcct, BSTR InvServAcct, BSTR InvExpAcct,
                                         VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE GetEmployees(VARIANT_BOOL GetAll, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetCustomers(VARIANT_BOOL GetAll, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetVendors(VARIANT_BOOL GetAll, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetInvoices(IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetPayments(IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetExpCodes(VARIANT_BOOL GetAll, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetActivities(VARIANT_BOOL GetAll, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetTimeEntries(IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetChecks(IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetBills(IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetPayrollItems(IDispatch** result) override;

 private:
  // The accounts into a variable of a script, or an array of texts.
  HRESULT InvokeGetQBAccounts(const DISPPARAMS& parameters, VARIANT* result);
  // What both roads share: asks for the accounts, and has them put where the host wants them.
  HRESULT GiveAccounts(const std::function<bool(const AccountArray&)>& put, VARIANT_BOOL* result);

  windows::Reference<ITypeInfo> type_;
  CTWQBBridge bridge_;
};

}  // namespace twqb::com
