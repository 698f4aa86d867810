// A host of C++ that binds to the interface itself: every property and operation by its slot, two objects in one
// process, wrong pointers. Prints a line for each thing that is not as it should be, and how many looks it took.
//   vtable_host FOLDER

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

void CheckOperations(_CTWQBBridge* link, const std::wstring& folder) {
  const Text connect(L"Provider=SQLITE;Data Source=" + folder + L"\\billing.db");
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

  using List = HRESULT (STDMETHODCALLTYPE _CTWQBBridge::*)(IDispatch**);
  for (const List list : {&_CTWQBBridge::GetAccounts, &_CTWQBBridge::GetInvoices, &_CTWQBBridge::GetPayments,
                          &_CTWQBBridge::GetTimeEntries, &_CTWQBBridge::GetBills, &_CTWQBBridge::GetClassItems,
                          &_CTWQBBridge::GetPayrollItems, &_CTWQBBridge::GetChecks}) {
    IDispatch* found = nullptr;
    Expect((link->*list)(&found) == S_OK, "a list");
    if (found != nullptr) Expect(found->Release() == 0, "a list is the host's alone");
    Expect((link->*list)(nullptr) == E_POINTER, "a list that goes nowhere");
  }
  using ListOfAll = HRESULT (STDMETHODCALLTYPE _CTWQBBridge::*)(VARIANT_BOOL, IDispatch**);
  for (const ListOfAll list : {&_CTWQBBridge::GetEmployees, &_CTWQBBridge::GetCustomers, &_CTWQBBridge::GetVendors,
                               &_CTWQBBridge::GetExpCodes, &_CTWQBBridge::GetActivities}) {
    IDispatch* found = nullptr;
    Expect((link->*list)(VARIANT_TRUE, &found) == S_OK && found != nullptr, "a list of all");
    if (found != nullptr) found->Release();
  }
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
  const Text connect(L"Provider=SQLITE;Data Source=" + folder + L"\\billing.db");
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

}  // namespace

int wmain(int count, wchar_t** given) {
  if (count < 2 || FAILED(CoInitialize(nullptr))) return 2;
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
  if (third != nullptr) CheckLettingGo(third, given[1]);
  CoFreeUnusedLibraries();
  CoUninitialize();
  std::printf("%d looks, %d failed\n", looks, failures);
  return failures == 0 ? 0 : 1;
}
