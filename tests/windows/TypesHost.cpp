// What hosts have bound to, written down: places in the table of slots, numbers of members, identifiers, and the values
// of the enumeration. None of them may ever change, so they are not taken from what the type library is made of, but
// compared with what the library itself tells.
//   types_host DLL
// Prints a line for each thing that is otherwise, and how many looks it took.

#include <oaidl.h>
#include <windows.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace {

int looks = 0;
int failures = 0;

void Expect(bool holds, const std::wstring& what) {
  ++looks;
  if (holds) return;
  ++failures;
  std::printf("not so: %ls\n", what.c_str());
}

constexpr const wchar_t* kLibrary = L"{CCE9CBCB-F330-4CB4-83A0-56BCAEFF8A9E}";
constexpr const wchar_t* kInterface = L"{AB5B35DB-FE82-41F7-BDA3-9AFF1A2A73B0}";
constexpr const wchar_t* kClass = L"{728FE982-3C17-49FA-B474-F5768A07B0AF}";
constexpr const wchar_t* kTables = L"{0EDCF519-A600-427A-A915-0AFD79F25156}";

struct Member {
  const wchar_t* name;
  INVOKEKIND kind;
  MEMBERID number;
  // In the order of the arguments, one letter each: t table, b boolean, s text, n 16-bit integer, a array of texts by
  // reference; o behind the last one: it may be left out, and is False then.
  const char* arguments;
  // b, s and n as above, l an object, - none.
  char result;
};

constexpr auto kCall = INVOKE_FUNC;
constexpr auto kRead = INVOKE_PROPERTYGET;
constexpr auto kWrite = INVOKE_PROPERTYPUT;

// One behind the other from the first slot behind IDispatch.
constexpr Member kMembers[] = {
    {L"CloseProgressScreen", kCall, 1, "", '-'},
    {L"GetClassItems", kCall, 2, "", 'l'},
    {L"IsSubscribedToQBEvents", kRead, 3, "", 'b'},
    {L"LeaveMsgBoxOpen", kRead, 4, "", 'b'},
    {L"LeaveMsgBoxOpen", kWrite, 4, "b", '-'},
    {L"NoRecsInQBTable", kRead, 5, "", 'b'},
    {L"QBHostVer", kRead, 6, "", 'n'},
    {L"QBCountry", kRead, 7, "", 's'},
    {L"HelpID", kRead, 8, "", 'n'},
    {L"HelpID", kWrite, 8, "n", '-'},
    {L"ConnectString", kRead, 9, "", 's'},
    {L"ConnectString", kWrite, 9, "s", '-'},
    {L"TWSettingsPath", kRead, 10, "", 's'},
    {L"TWSettingsPath", kWrite, 10, "s", '-'},
    {L"NewQBLinkID", kRead, 11, "", 's'},
    {L"NewQBLinkID", kWrite, 11, "s", '-'},
    {L"PassedID", kRead, 12, "", 's'},
    {L"PassedID", kWrite, 12, "s", '-'},
    {L"HelpFilePath", kRead, 13, "", 's'},
    {L"HelpFilePath", kWrite, 13, "s", '-'},
    {L"IsSilentMode", kRead, 14, "", 'b'},
    {L"IsSilentMode", kWrite, 14, "b", '-'},
    {L"NoProgressBar", kRead, 15, "", 'b'},
    {L"NoProgressBar", kWrite, 15, "b", '-'},
    {L"IsQBSingleMode", kRead, 16, "", 'b'},
    {L"IsQBSingleMode", kWrite, 16, "b", '-'},
    {L"UseTWSTable", kRead, 17, "", 'b'},
    {L"UseTWSTable", kWrite, 17, "b", '-'},
    {L"IsSync", kRead, 18, "", 'b'},
    {L"IsSync", kWrite, 18, "b", '-'},
    {L"UsePreferencesTW", kRead, 19, "", 'b'},
    {L"UsePreferencesTW", kWrite, 19, "b", '-'},
    {L"SendDataToQB", kCall, 20, "t", 'b'},
    {L"GetDataFromQB", kCall, 21, "t", 'b'},
    {L"DisplaySettings", kCall, 22, "", '-'},
    {L"ConnectToQB", kCall, 23, "b", 'b'},
    {L"GetQBAccounts", kCall, 24, "a", 'b'},
    {L"IsJob", kCall, 25, "s", 'b'},
    {L"QBDB", kRead, 26, "", 's'},
    {L"DeleteTWRecord", kCall, 27, "ts", 'b'},
    {L"DeleteQBRecord", kCall, 28, "ts", 'b'},
    {L"SubscribeToQBEvents", kCall, 29, "b", 'b'},
    {L"GetAccounts", kCall, 30, "", 'l'},
    {L"SaveSettings", kCall, 31, "ssss", 'b'},
    {L"GetEmployees", kCall, 32, "bo", 'l'},
    {L"GetCustomers", kCall, 33, "bo", 'l'},
    {L"GetVendors", kCall, 34, "bo", 'l'},
    {L"GetInvoices", kCall, 35, "", 'l'},
    {L"GetPayments", kCall, 36, "", 'l'},
    {L"GetExpCodes", kCall, 37, "bo", 'l'},
    {L"GetActivities", kCall, 38, "bo", 'l'},
    {L"GetTimeEntries", kCall, 39, "", 'l'},
    {L"GetChecks", kCall, 40, "", 'l'},
    {L"GetBills", kCall, 41, "", 'l'},
    {L"GetPayrollItems", kCall, 42, "", 'l'},
};

// In the order of their numbers, from 0.
constexpr const wchar_t* kEntries[] = {L"enEmployees",   L"enVendors",      L"enClients",   L"enProjects",
                                       L"enActivities",  L"enExpenseCodes", L"enAccounts",  L"enExpenseLog",
                                       L"enTimeEntries", L"enInvoices",     L"enPayments",  L"enVendorBill",
                                       L"enEstimates",   L"enAll",          L"enCreditMemo"};

constexpr short kSlotsOfIDispatch = 7;

std::wstring TextOf(const GUID& id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, 40);
  return text;
}

std::wstring NameOf(ITypeInfo* type, MEMBERID member) {
  BSTR name = nullptr;
  UINT count = 0;
  type->GetNames(member, &name, 1, &count);
  std::wstring text = count == 1 ? name : L"";
  SysFreeString(name);
  return text;
}

// One of the letters above; ? for a type that no member has.
char LetterOf(ITypeInfo* type, const TYPEDESC& given) {
  switch (given.vt) {
    case VT_BOOL:
      return 'b';
    case VT_BSTR:
      return 's';
    case VT_I2:
      return 'n';
    case VT_DISPATCH:
      return 'l';
    case VT_SAFEARRAY:
      return given.lpadesc->tdescElem.vt == VT_BSTR ? 'a' : '?';
    case VT_USERDEFINED:
      break;
    default:
      return '?';
  }
  ITypeInfo* referred = nullptr;
  if (FAILED(type->GetRefTypeInfo(given.hreftype, &referred))) return '?';
  TYPEATTR* about = nullptr;
  const bool isTables = SUCCEEDED(referred->GetTypeAttr(&about)) && TextOf(about->guid) == kTables;
  if (about != nullptr) referred->ReleaseTypeAttr(about);
  referred->Release();
  return isTables ? 't' : '?';
}

void CompareMember(ITypeInfo* type, UINT place) {
  const auto& member = kMembers[place];
  const std::wstring what = member.name;
  FUNCDESC* found = nullptr;
  Expect(SUCCEEDED(type->GetFuncDesc(place, &found)), what + L" stands at its place");
  if (found == nullptr) return;
  const auto name = NameOf(type, found->memid);
  Expect(name == what, what + L" has its name; it is " + name);
  Expect(found->invkind == member.kind, what + L" is called, read or set");
  Expect(found->memid == member.number, what + L" has its number; it is " + std::to_wstring(found->memid));
  const auto offset = (kSlotsOfIDispatch + static_cast<short>(place)) * static_cast<int>(sizeof(void*));
  Expect(found->oVft == offset, what + L" has its slot; it is " + std::to_wstring(found->oVft));
  Expect(found->funckind == FUNC_PUREVIRTUAL && found->callconv == CC_STDCALL, what + L" is called as COM calls");
  Expect(found->elemdescFunc.tdesc.vt == VT_HRESULT, what + L" returns a HRESULT");
  std::string arguments;
  char result = '-';
  bool mayBeLeftOut = false;
  for (short i = 0; i < found->cParams; ++i) {
    const auto& argument = found->lprgelemdescParam[i];
    const auto flags = argument.paramdesc.wParamFlags;
    const bool isByReference = argument.tdesc.vt == VT_PTR;
    const char letter = LetterOf(type, isByReference ? *argument.tdesc.lptdesc : argument.tdesc);
    if ((flags & PARAMFLAG_FRETVAL) != 0) {
      Expect(isByReference && (flags & PARAMFLAG_FOUT) != 0, what + L" gives its result by reference");
      result = letter;
      continue;
    }
    arguments += letter;
    Expect(isByReference == (letter == 'a'), what + L" takes arguments by value, and arrays by reference");
    if ((flags & PARAMFLAG_FOPT) == 0) continue;
    mayBeLeftOut = true;
    const auto* const without = argument.paramdesc.pparamdescex;
    Expect((flags & PARAMFLAG_FHASDEFAULT) != 0 && without != nullptr &&
               (without->varDefaultValue.vt == VT_BOOL || without->varDefaultValue.vt == VT_I2 ||
                without->varDefaultValue.vt == VT_I4) &&
               without->varDefaultValue.lVal == 0,
           what + L" takes what is left out for False");
  }
  if (mayBeLeftOut) arguments += 'o';
  Expect(arguments == member.arguments, what + L" takes its arguments");
  Expect(result == member.result, what + L" has its result");
  type->ReleaseFuncDesc(found);
}

// The interface as a table of slots: what is found by its identifier is the same for calls by name.
void CompareInterface(ITypeInfo* byName) {
  HREFTYPE reference = 0;
  ITypeInfo* type = nullptr;
  Expect(SUCCEEDED(byName->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
             SUCCEEDED(byName->GetRefTypeInfo(reference, &type)),
         L"the interface has slots");
  if (type == nullptr) return;
  TYPEATTR* about = nullptr;
  type->GetTypeAttr(&about);
  Expect(TextOf(about->guid) == kInterface, L"the interface has its identifier");
  Expect(about->typekind == TKIND_INTERFACE && (about->wTypeFlags & TYPEFLAG_FDUAL) != 0, L"and is a dual one");
  Expect(about->cFuncs == std::size(kMembers), L"it has all members and no more");
  const UINT count = about->cFuncs;
  type->ReleaseTypeAttr(about);
  for (UINT place = 0; place < count && place < std::size(kMembers); ++place) CompareMember(type, place);
  type->Release();
}

void CompareTables(ITypeInfo* tables) {
  TYPEATTR* about = nullptr;
  tables->GetTypeAttr(&about);
  Expect(about->typekind == TKIND_ENUM && about->cVars == std::size(kEntries), L"the tables are all there");
  const UINT count = about->cVars;
  tables->ReleaseTypeAttr(about);
  for (UINT place = 0; place < count && place < std::size(kEntries); ++place) {
    VARDESC* found = nullptr;
    tables->GetVarDesc(place, &found);
    const std::wstring what = kEntries[place];
    Expect(NameOf(tables, found->memid) == what, what + L" has its place");
    Expect(found->varkind == VAR_CONST && found->lpvarValue->lVal == static_cast<LONG>(place),
           what + L" has its number; it is " + std::to_wstring(found->lpvarValue->lVal));
    tables->ReleaseVarDesc(found);
  }
}

void CompareClass(ITypeInfo* made) {
  TYPEATTR* about = nullptr;
  made->GetTypeAttr(&about);
  Expect(about->typekind == TKIND_COCLASS && about->cImplTypes == 1, L"the class has one interface");
  made->ReleaseTypeAttr(about);
  INT flags = 0;
  HREFTYPE reference = 0;
  ITypeInfo* face = nullptr;
  Expect(SUCCEEDED(made->GetImplTypeFlags(0, &flags)) && (flags & IMPLTYPEFLAG_FDEFAULT) != 0 &&
             SUCCEEDED(made->GetRefTypeOfImplType(0, &reference)) && SUCCEEDED(made->GetRefTypeInfo(reference, &face)),
         L"its default one");
  if (face == nullptr) return;
  TYPEATTR* faces = nullptr;
  face->GetTypeAttr(&faces);
  Expect(TextOf(faces->guid) == kInterface, L"which is the one that is written down");
  face->ReleaseTypeAttr(faces);
  face->Release();
}

// The type of that identifier, and that its name is this.
template <typename Compare>
void CompareType(ITypeLib* library, const wchar_t* id, const std::wstring& name, Compare compare) {
  GUID wanted = {};
  ITypeInfo* type = nullptr;
  Expect(SUCCEEDED(CLSIDFromString(id, &wanted)) && SUCCEEDED(library->GetTypeInfoOfGuid(wanted, &type)),
         name + L" is found by its identifier");
  if (type == nullptr) return;
  BSTR own = nullptr;
  Expect(SUCCEEDED(type->GetDocumentation(MEMBERID_NIL, &own, nullptr, nullptr, nullptr)) && own == name,
         name + L" has its name");
  SysFreeString(own);
  compare(type);
  type->Release();
}

}  // namespace

int wmain(int count, wchar_t** given) {
  if (count < 2 || FAILED(CoInitialize(nullptr))) return 2;
  ITypeLib* library = nullptr;
  if (FAILED(LoadTypeLibEx(given[1], REGKIND_NONE, &library))) return 2;
  TLIBATTR* about = nullptr;
  library->GetLibAttr(&about);
  Expect(TextOf(about->guid) == kLibrary, L"the library has its identifier");
  Expect(about->wMajorVerNum == 9 && about->wMinorVerNum == 0, L"and its version");
  Expect(about->syskind == (sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32), L"and its width");
  library->ReleaseTLibAttr(about);
  BSTR name = nullptr;
  Expect(SUCCEEDED(library->GetDocumentation(-1, &name, nullptr, nullptr, nullptr)) &&
             name == std::wstring(L"TWQBClient90"),
         L"and its name");
  SysFreeString(name);
  CompareType(library, kInterface, L"_CTWQBBridge", CompareInterface);
  CompareType(library, kTables, L"enTables", CompareTables);
  CompareType(library, kClass, L"CTWQBBridge", CompareClass);
  library->Release();
  CoUninitialize();
  std::printf("%d looks, %d failed\n", looks, failures);
  return failures == 0 ? 0 : 1;
}
