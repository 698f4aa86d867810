// A host of C++ that binds to the interface itself: every property and operation by its slot, two objects in one
// process, wrong pointers, the end of the library. Prints a line for each thing that is not as it should be, and how
// many looks it took.
//   vtable_host FOLDER [own-lists]
// With own-lists QuickBooks' session library, ADO and the call-back class are doubles, and each list is the session
// library's own.

#include <oaidl.h>
#include <windows.h>

#include <cstdio>
#include <string>

// clang-format off
#include <initguid.h>
#include "TWQBClient90_h.h"
// clang-format on

namespace {

int looks = 0;
int failures = 0;

void Expect(bool holds, const char* what) {
  ++looks;
  if (holds) return;
  ++failures;
  std::printf("not so: %s\n", what);
}

// The doubles of the other side stand behind the library.
bool hasDoubles = false;

std::wstring DatabaseIn(const std::wstring& folder) {
  return (hasDoubles ? L"Provider=SQLOLEDB;Data Source=" : L"Provider=SQLITE;Data Source=") + folder + L"\\billing.db";
}

class Text {
 public:
  explicit Text(const std::wstring& text) : value_(SysAllocString(text.c_str())) {}
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  ~Text() { SysFreeString(value_); }
  [[nodiscard]] BSTR Get() const { return value_; }

 private:
  BSTR value_;
};

template <typename Put, typename Read>
void ExpectText(_CTWQBBridge* link, Put put, Read read, const char* what) {
  const Text given(L"as it was set, \u00FC");
  BSTR got = nullptr;
  Expect((link->*put)(given.Get()) == S_OK && (link->*read)(&got) == S_OK && got != nullptr &&
             std::wstring(got) == given.Get(),
         what);
  SysFreeString(got);
  Expect((link->*put)(nullptr) == S_OK && (link->*read)(&got) == S_OK && SysStringLen(got) == 0, what);
  SysFreeString(got);
  Expect((link->*read)(nullptr) == E_POINTER, what);
}

template <typename Put, typename Read>
void ExpectFlag(_CTWQBBridge* link, Put put, Read read, const char* what) {
  VARIANT_BOOL got = 1;
  Expect((link->*read)(&got) == S_OK && got == VARIANT_FALSE, what);
  Expect((link->*put)(VARIANT_TRUE) == S_OK && (link->*read)(&got) == S_OK && got == VARIANT_TRUE, what);
  Expect((link->*put)(VARIANT_FALSE) == S_OK && (link->*read)(&got) == S_OK && got == VARIANT_FALSE, what);
  Expect((link->*read)(nullptr) == E_POINTER, what);
}

void CheckProperties(_CTWQBBridge* link) {
  using B = _CTWQBBridge;
  ExpectText(link, &B::put_ConnectString, &B::get_ConnectString, "ConnectString");
  ExpectText(link, &B::put_TWSettingsPath, &B::get_TWSettingsPath, "TWSettingsPath");
  ExpectText(link, &B::put_NewQBLinkID, &B::get_NewQBLinkID, "NewQBLinkID");
  ExpectText(link, &B::put_PassedID, &B::get_PassedID, "PassedID");
  ExpectText(link, &B::put_HelpFilePath, &B::get_HelpFilePath, "HelpFilePath");
  ExpectFlag(link, &B::put_LeaveMsgBoxOpen, &B::get_LeaveMsgBoxOpen, "LeaveMsgBoxOpen");
  ExpectFlag(link, &B::put_IsSilentMode, &B::get_IsSilentMode, "IsSilentMode");
  ExpectFlag(link, &B::put_NoProgressBar, &B::get_NoProgressBar, "NoProgressBar");
  ExpectFlag(link, &B::put_IsQBSingleMode, &B::get_IsQBSingleMode, "IsQBSingleMode");
  ExpectFlag(link, &B::put_UseTWSTable, &B::get_UseTWSTable, "UseTWSTable");
  ExpectFlag(link, &B::put_IsSync, &B::get_IsSync, "IsSync");
  ExpectFlag(link, &B::put_UsePreferencesTW, &B::get_UsePreferencesTW, "UsePreferencesTW");
  short number = -1;
  Expect(link->put_HelpID(1234) == S_OK && link->get_HelpID(&number) == S_OK && number == 1234, "HelpID");
  Expect(link->get_QBHostVer(&number) == S_OK && number == 0, "QBHostVer ahead of a session");
  BSTR country = nullptr;
  Expect(link->get_QBCountry(&country) == S_OK && SysStringLen(country) == 0, "QBCountry ahead of a session");
  SysFreeString(country);
  VARIANT_BOOL none = 1;
  Expect(link->get_NoRecsInQBTable(&none) == S_OK && none == VARIANT_FALSE, "NoRecsInQBTable");
}

// What a member gives that takes no arguments, or these, of which the last one stands first.
HRESULT Ask(IDispatch* object, const wchar_t* name, VARIANT* result, VARIANTARG* arguments = nullptr, UINT count = 0) {
  auto* spelled = const_cast<wchar_t*>(name);
  DISPID id = 0;
  if (const auto failure = object->GetIDsOfNames(IID_NULL, &spelled, 1, LOCALE_USER_DEFAULT, &id); FAILED(failure)) {
    return failure;
  }
  DISPPARAMS given = {arguments, nullptr, count, 0};
  return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &given, result,
                        nullptr, nullptr);
}

void CheckTransfers(_CTWQBBridge* link) {
  const Text unknown(L"NONE");
  VARIANT_BOOL done = 1;
  link->put_UsePreferencesTW(VARIANT_TRUE);
  Expect(link->SendDataToQB(enVendors, &done) == S_OK && done == VARIANT_TRUE, "SendDataToQB");
  Expect(link->GetDataFromQB(enVendors, &done) == S_OK && done == VARIANT_TRUE, "GetDataFromQB");
  Expect(link->GetDataFromQB(enCreditMemo, &done) == S_OK && done == VARIANT_FALSE, "a table that no host gets");
  link->put_UsePreferencesTW(VARIANT_FALSE);
  Expect(link->DeleteTWRecord(enClients, unknown.Get(), &done) == S_OK && done == VARIANT_TRUE, "DeleteTWRecord");
  Expect(link->DeleteQBRecord(enClients, unknown.Get(), &done) == S_OK && done == VARIANT_FALSE, "DeleteQBRecord");
  Expect(link->SubscribeToQBEvents(VARIANT_TRUE, &done) == S_OK && done == VARIANT_TRUE &&
             link->get_IsSubscribedToQBEvents(&done) == S_OK && done == VARIANT_TRUE,
         "SubscribeToQBEvents");
  Expect(link->SubscribeToQBEvents(VARIANT_FALSE, &done) == S_OK && done == VARIANT_TRUE &&
             link->get_IsSubscribedToQBEvents(&done) == S_OK && done == VARIANT_FALSE,
         "and taken back");
  for (const auto call : {&_CTWQBBridge::DeleteTWRecord, &_CTWQBBridge::DeleteQBRecord}) {
    Expect((link->*call)(enClients, unknown.Get(), nullptr) == E_POINTER, "a deletion's result that goes nowhere");
  }
}

// An array that is the host's own memory stays as it is: the system would free what is no heap of its.
void CheckAccountsThatStay(_CTWQBBridge* link) {
  VARIANT_BOOL done = 1;
  wchar_t* const getAccounts = const_cast<wchar_t*>(L"GetQBAccounts");
  for (const int kind : {FADF_AUTO, FADF_STATIC, FADF_EMBEDDED, FADF_FIXEDSIZE}) {
    BSTR text = nullptr;
    SAFEARRAY own = {};
    own.cDims = 1;
    own.fFeatures = static_cast<USHORT>(kind);
    own.cbElements = sizeof text;
    own.pvData = &text;
    own.rgsabound[0].cElements = 1;
    SAFEARRAY* accounts = &own;
    done = 1;
    Expect(
        link->GetQBAccounts(&accounts, &done) == S_OK && done == VARIANT_FALSE && accounts == &own && text == nullptr,
        "an array that does not lie on the heap stays");
    VARIANT variable = {};
    variable.vt = VT_ARRAY | VT_BSTR;
    variable.parray = &own;
    VARIANTARG byReference = {};
    byReference.vt = VT_BYREF | VT_VARIANT;
    byReference.pvarVal = &variable;
    VARIANT answer = {};
    Expect(Ask(link, getAccounts, &answer, &byReference, 1) == S_OK && answer.vt == VT_BOOL &&
               answer.boolVal == VARIANT_FALSE && variable.parray == &own,
           "nor does it go out of a variable");
  }
  SAFEARRAY* locked = SafeArrayCreateVector(VT_BSTR, 0, 1);
  SAFEARRAY* const before = locked;
  SafeArrayLock(locked);
  Expect(link->GetQBAccounts(&locked, &done) == S_OK && done == VARIANT_FALSE && locked == before,
         "a locked one stays");
  VARIANT variable = {};
  variable.vt = VT_ARRAY | VT_BSTR;
  variable.parray = locked;
  VARIANTARG byReference = {};
  byReference.vt = VT_BYREF | VT_VARIANT;
  byReference.pvarVal = &variable;
  VARIANT answer = {};
  Expect(Ask(link, getAccounts, &answer, &byReference, 1) == S_OK && answer.vt == VT_BOOL &&
             answer.boolVal == VARIANT_FALSE && variable.parray == before,
         "a variable with a locked one stays");
  SafeArrayUnlock(locked);
  Expect(Ask(link, getAccounts, &answer, &byReference, 1) == S_OK && answer.boolVal == VARIANT_TRUE &&
             variable.vt == (VT_ARRAY | VT_VARIANT) && SafeArrayGetDim(variable.parray) == 2,
         "a variable takes the accounts");
  VariantClear(&variable);
}

void CheckAccounts(_CTWQBBridge* link) {
  VARIANT_BOOL done = 1;
  SAFEARRAY* accounts = nullptr;
  Expect(link->GetQBAccounts(&accounts, &done) == S_OK && done == VARIANT_TRUE, "GetQBAccounts");
  LONG last = 0;
  Expect(accounts != nullptr && SafeArrayGetDim(accounts) == 2 && SafeArrayGetUBound(accounts, 1, &last) == S_OK &&
             last == 3,
         "four rows");
  SAFEARRAY* const before = accounts;
  Expect(link->GetQBAccounts(&accounts, &done) == S_OK && done == VARIANT_TRUE && accounts != nullptr, "once more");
  static_cast<void>(before);
  LONG place[] = {1, 0};
  BSTR name = nullptr;
  Expect(SafeArrayGetElement(accounts, place, &name) == S_OK && SysStringLen(name) > 0, "the name of an account");
  SysFreeString(name);
  SafeArrayDestroy(accounts);
  CheckAccountsThatStay(link);
}

// That each is there, is the host's alone, and is the session library's own where that is the other side.
void CheckList(IDispatch* list, const char* what) {
  Expect(list != nullptr, what);
  if (list == nullptr) return;
  VARIANT is = {};
  const auto answer = Ask(list, L"IsDouble", &is);
  Expect(hasDoubles ? answer == S_OK && is.vt == VT_BOOL && is.boolVal == VARIANT_TRUE : answer == DISP_E_UNKNOWNNAME,
         "a list is of whom it should be");
  Expect(list->Release() == 0, "a list is the host's alone");
}

// How long somebody worked is given by four references.
void CheckDuration(IDispatch* entry) {
  VARIANT duration = {};
  Expect(Ask(entry, L"Duration", &duration) == S_OK && duration.vt == VT_DISPATCH && duration.pdispVal != nullptr,
         "a time entry has its duration");
  if (duration.vt != VT_DISPATCH || duration.pdispVal == nullptr) return;
  short parts[3] = {-1, -1, -1};
  VARIANT_BOOL isNegative = 1;
  VARIANTARG results[4] = {};
  results[0].vt = VT_BYREF | VT_BOOL;
  results[0].pboolVal = &isNegative;
  for (int i = 0; i < 3; ++i) {
    results[i + 1].vt = VT_BYREF | VT_I2;
    results[i + 1].piVal = &parts[2 - i];
  }
  VARIANT nothing = {};
  Expect(Ask(duration.pdispVal, L"GetValue", &nothing, results, 4) == S_OK && nothing.vt == VT_EMPTY,
         "a duration is given by references");
  VARIANT text = {};
  Expect(Ask(duration.pdispVal, L"GetAsString", &text) == S_OK && text.vt == VT_BSTR, "and as text");
  const auto expected =
      L"PT" + std::to_wstring(parts[0]) + L"H" + std::to_wstring(parts[1]) + L"M" + std::to_wstring(parts[2]) + L"S";
  Expect(text.vt == VT_BSTR && expected == text.bstrVal && parts[0] + parts[1] > 0 && isNegative == VARIANT_FALSE,
         "both say the same");
  VariantClear(&text);
  Expect(Ask(duration.pdispVal, L"GetValue", &nothing) == DISP_E_EXCEPTION, "not without references");
  results[3].vt = VT_I2;
  Expect(Ask(duration.pdispVal, L"GetValue", &nothing, results, 4) == DISP_E_EXCEPTION, "nor by value");
  VariantClear(&duration);
}

void CheckTimeEntries(_CTWQBBridge* link) {
  IDispatch* entries = nullptr;
  VARIANT count = {};
  Expect(link->GetTimeEntries(&entries) == S_OK && entries != nullptr && Ask(entries, L"Count", &count) == S_OK &&
             count.lVal > 0,
         "time entries");
  if (entries == nullptr) return;
  for (long i = 0; i < count.lVal; ++i) {
    VARIANTARG index = {};
    index.vt = VT_I4;
    index.lVal = i;
    VARIANT entry = {};
    Expect(Ask(entries, L"GetAt", &entry, &index, 1) == S_OK && entry.vt == VT_DISPATCH, "an entry of the list");
    if (entry.vt == VT_DISPATCH) CheckDuration(entry.pdispVal);
    VariantClear(&entry);
  }
  entries->Release();
}

void CheckLists(_CTWQBBridge* link) {
  using List = HRESULT (STDMETHODCALLTYPE _CTWQBBridge::*)(IDispatch**);
  for (const List list : {&_CTWQBBridge::GetAccounts, &_CTWQBBridge::GetInvoices, &_CTWQBBridge::GetPayments,
                          &_CTWQBBridge::GetTimeEntries, &_CTWQBBridge::GetBills, &_CTWQBBridge::GetClassItems,
                          &_CTWQBBridge::GetPayrollItems, &_CTWQBBridge::GetChecks}) {
    IDispatch* found = nullptr;
    Expect((link->*list)(&found) == S_OK, "a list");
    CheckList(found, "a list is there");
    Expect((link->*list)(nullptr) == E_POINTER, "a list that goes nowhere");
  }
  using ListOfAll = HRESULT (STDMETHODCALLTYPE _CTWQBBridge::*)(VARIANT_BOOL, IDispatch**);
  for (const ListOfAll list : {&_CTWQBBridge::GetEmployees, &_CTWQBBridge::GetCustomers, &_CTWQBBridge::GetVendors,
                               &_CTWQBBridge::GetExpCodes, &_CTWQBBridge::GetActivities}) {
    IDispatch* found = nullptr;
    Expect((link->*list)(VARIANT_TRUE, &found) == S_OK, "a list of all");
    CheckList(found, "a list of all is there");
    Expect((link->*list)(VARIANT_TRUE, nullptr) == E_POINTER, "a list of all that goes nowhere");
  }
  CheckTimeEntries(link);
}

void CheckOperations(_CTWQBBridge* link, const std::wstring& folder) {
  const Text connect(DatabaseIn(folder));
  const Text settings(folder + L"\\twqb.ini");
  const Text unknown(L"NONE");
  VARIANT_BOOL done = 1;
  link->put_ConnectString(connect.Get());
  link->put_TWSettingsPath(settings.Get());
  Expect(link->ConnectToQB(VARIANT_FALSE, &done) == S_OK && done == VARIANT_FALSE, "to end no session gives False");
  Expect(link->ConnectToQB(VARIANT_TRUE, &done) == S_OK && done == VARIANT_TRUE, "ConnectToQB");
  short version = 0;
  Expect(link->get_QBHostVer(&version) == S_OK && version == 16, "QBHostVer");
  BSTR file = nullptr;
  Expect(link->get_QBDB(&file) == S_OK && SysStringLen(file) > 0, "QBDB");
  SysFreeString(file);
  Expect(link->IsJob(unknown.Get(), &done) == S_OK && done == VARIANT_FALSE, "IsJob");
  // As a late-bound host passes a variable of text.
  wchar_t* isJob = const_cast<wchar_t*>(L"IsJob");
  DISPID id = 0;
  BSTR variable = unknown.Get();
  VARIANTARG byReference = {};
  byReference.vt = VT_BYREF | VT_BSTR;
  byReference.pbstrVal = &variable;
  DISPPARAMS one = {&byReference, nullptr, 1, 0};
  VARIANT answer = {};
  Expect(
      link->GetIDsOfNames(IID_NULL, &isJob, 1, LOCALE_USER_DEFAULT, &id) == S_OK &&
          link->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &one, &answer, nullptr, nullptr) == S_OK &&
          answer.vt == VT_BOOL && answer.boolVal == VARIANT_FALSE,
      "a text by reference");
  Expect(link->get_IsSubscribedToQBEvents(&done) == S_OK && done == VARIANT_FALSE, "IsSubscribedToQBEvents");
  Expect(link->DisplaySettings() == S_OK && link->CloseProgressScreen() == S_OK, "what does nothing");
  Expect(link->SendDataToQB(enClients, nullptr) == E_POINTER, "a result that goes nowhere");

  CheckTransfers(link);
  CheckAccounts(link);
  CheckLists(link);
  const Text account(L"Income");
  Expect(link->SaveSettings(account.Get(), account.Get(), account.Get(), account.Get(), &done) == S_OK &&
             done == VARIANT_TRUE,
         "SaveSettings");
  // From then on settings are read from the database.
  Expect(link->get_UseTWSTable(&done) == S_OK && done == VARIANT_TRUE, "SaveSettings chooses the table");
  link->put_UseTWSTable(VARIANT_FALSE);
}

// A host that lets go of its object while that works: a timer of its own does, which the run itself looks after.
_CTWQBBridge* working = nullptr;
bool wasLetGo = false;
ULONG leftAfterwards = 0;

void CALLBACK LetGo(HWND /*window*/, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
  KillTimer(nullptr, timer);
  wasLetGo = true;
  leftAfterwards = working->Release();
}

void CheckLettingGo(_CTWQBBridge* link, const std::wstring& folder) {
  const Text connect(DatabaseIn(folder));
  const Text settings(folder + L"\\twqb.ini");
  link->put_ConnectString(connect.Get());
  link->put_TWSettingsPath(settings.Get());
  link->put_UsePreferencesTW(VARIANT_TRUE);
  working = link;
  SetTimer(nullptr, 0, USER_TIMER_MINIMUM, LetGo);
  VARIANT_BOOL sent = VARIANT_FALSE;
  Expect(link->SendDataToQB(enClients, &sent) == S_OK && sent == VARIANT_TRUE, "a run whose host has let go ends well");
  Expect(wasLetGo && leftAfterwards == 1, "the host has let go in the middle, and the run alone held the object");
}

// How many objects of the doubles somebody has.
int Living() {
  const HMODULE doubles = GetModuleHandleW(L"doubles.dll");
  if (doubles == nullptr) return -1;
  using Count = int WINAPI();
  return reinterpret_cast<Count*>(reinterpret_cast<void*>(GetProcAddress(doubles, "LivingDoubles")))();
}

// The library keeps what the process shares, its connection to the database and the call-back, to its own end.
void CheckUnloading() {
  if (hasDoubles) Expect(Living() == 2, "connection and call-back outlive the last object");
  Expect(GetModuleHandleW(L"TWQBClient90.dll") != nullptr, "the library is still there");
  CoFreeUnusedLibraries();
  Expect(GetModuleHandleW(L"TWQBClient90.dll") == nullptr, "the library goes when nobody has an object of it");
  if (hasDoubles) Expect(Living() == 0, "and has let go of the others' objects");
}

}  // namespace

int wmain(int count, wchar_t** given) {
  if (count < 2 || FAILED(CoInitialize(nullptr))) return 2;
  hasDoubles = count > 2 && std::wstring(given[2]) == L"own-lists";
  _CTWQBBridge* link = nullptr;
  _CTWQBBridge* second = nullptr;
  const auto make = [](_CTWQBBridge** made) {
    return CoCreateInstance(CLSID_CTWQBBridge, nullptr, CLSCTX_INPROC_SERVER, IID__CTWQBBridge,
                            reinterpret_cast<void**>(made));
  };
  Expect(make(&link) == S_OK && link != nullptr, "an object is made");
  if (link == nullptr) return 1;
  CheckProperties(link);
  CheckOperations(link, given[1]);

  Expect(make(&second) == S_OK && second != nullptr, "a second object in the process");
  VARIANT_BOOL done = 1;
  short version = -1;
  Expect(second->get_QBHostVer(&version) == S_OK && version == 0, "a new object puts the version back");
  Expect(second->ConnectToQB(VARIANT_TRUE, &done) == S_OK && done == VARIANT_TRUE, "it finds the session open");
  Expect(second->Release() == 0, "the second object goes");
  Expect(link->ConnectToQB(VARIANT_FALSE, &done) == S_OK && done == VARIANT_FALSE, "and has ended the session");
  IDispatch* list = nullptr;
  Expect(link->GetCustomers(VARIANT_FALSE, &list) == S_OK && list != nullptr, "a list that outlives its object");
  Expect(link->Release() == 0, "the object goes");
  if (list != nullptr) {
    wchar_t* name = const_cast<wchar_t*>(L"count");
    DISPID id = 0;
    DISPPARAMS no = {};
    VARIANT result = {};
    Expect(list->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id) == S_OK, "Count in any case");
    Expect(
        list->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &no, &result, nullptr, nullptr) == S_OK &&
            result.lVal > 0,
        "the list stands when its object has gone");
    list->Release();
  }
  _CTWQBBridge* third = nullptr;
  Expect(make(&third) == S_OK && third != nullptr, "an object behind the others");
  if (third != nullptr) {
    // The call-back is made for a run under a subscription.
    if (hasDoubles)
      Expect(third->SubscribeToQBEvents(VARIANT_TRUE, &done) == S_OK && done == VARIANT_TRUE, "subscribed");
    CheckLettingGo(third, given[1]);
    CheckUnloading();
  }
  CoUninitialize();
  std::printf("%d looks, %d failed\n", looks, failures);
  return failures == 0 ? 0 : 1;
}
