#include "com/Registration.h"

#include <array>
#include <string>
#include <vector>

#include "adapters/windows/late/Owned.h"
#include "com/Interface.h"
#include "com/Module.h"

namespace twqb::com {

namespace {

constexpr const wchar_t* kName = L"TWQBClient90.CTWQBBridge";
constexpr const wchar_t* kDescription = L"Tallywick link to QuickBooks";
constexpr const wchar_t* kVersion = L"9.0";
constexpr WORD kMajor = 9;

std::wstring TextOf(const GUID& id) {
  std::array<wchar_t, 40> text = {};
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

struct Entry {
  std::wstring key;  // below the classes
  const wchar_t* name;
  std::wstring value;
};

std::wstring ClassKey() { return L"CLSID\\" + TextOf(CLSID_CTWQBBridge); }

std::vector<Entry> Entries() {
  const auto own = ClassKey();
  const auto id = TextOf(CLSID_CTWQBBridge);
  return {{kName, nullptr, kDescription},
          {std::wstring(kName) + L"\\CLSID", nullptr, id},
          {own, nullptr, kName},
          {own + L"\\InprocServer32", nullptr, Module::Path()},
          {own + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
          {own + L"\\ProgID", nullptr, kName},
          {own + L"\\Programmable", nullptr, L""},
          {own + L"\\TypeLib", nullptr, TextOf(LIBID_TWQBClient90)},
          {own + L"\\VERSION", nullptr, kVersion}};
}

// Of the whole machine, or of this user.
struct Classes {
  HKEY root;
  const wchar_t* path = L"Software\\Classes";
};

std::wstring Below(const Classes& classes, const std::wstring& key) { return classes.path + (L"\\" + key); }

LSTATUS Write(const Classes& classes, const Entry& entry) {
  const auto size = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(classes.root, Below(classes, entry.key).c_str(), entry.name, REG_SZ, entry.value.c_str(),
                         size);
}

// Programs of 32 and of 64 bits share the names of classes, but not what stands behind them. Of a Windows of 32 bits
// the other part is the same one.
constexpr REGSAM kOtherWidth = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

bool IsThere(HKEY root, const std::wstring& path, REGSAM part = 0) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_QUERY_VALUE | part, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

// What went wrong first while all that can be taken away is.
class FirstFailure {
 public:
  void Note(HRESULT result) {
    if (SUCCEEDED(result_) && FAILED(result)) result_ = result;
  }
  [[nodiscard]] HRESULT Result() const { return result_; }

 private:
  HRESULT result_ = S_OK;
};

// What is not there is as good as taken away.
HRESULT RemoveTree(const Classes& classes, const std::wstring& key) {
  const auto path = Below(classes, key);
  auto failure = RegDeleteTreeW(classes.root, path.c_str());
  if (failure == ERROR_SUCCESS) failure = RegDeleteKeyW(classes.root, path.c_str());  // some leave the key itself
  const bool isGone = failure == ERROR_FILE_NOT_FOUND || failure == ERROR_KEY_DELETED;
  return isGone ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(failure));
}

// The name stays for as long as one of the widths has the class.
HRESULT Remove(const Classes& classes) {
  FirstFailure failure;
  failure.Note(RemoveTree(classes, ClassKey()));
  const auto path = Below(classes, ClassKey());
  if (!IsThere(classes.root, path) && !IsThere(classes.root, path, kOtherWidth)) {
    failure.Note(RemoveTree(classes, kName));
  }
  return failure.Result();
}

const Classes kMachine = {.root = HKEY_LOCAL_MACHINE};
const Classes kUser = {.root = HKEY_CURRENT_USER};

constexpr SYSKIND kSystem = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;

// Of the system's that not every compiler's headers know.
template <typename Call>
Call* EntryOfAutomation(const char* name) {
  const HMODULE automation = GetModuleHandleW(L"oleaut32.dll");
  return automation == nullptr ? nullptr
                               : reinterpret_cast<Call*>(reinterpret_cast<void*>(GetProcAddress(automation, name)));
}

using RegisterForUser = HRESULT WINAPI(ITypeLib*, OLECHAR*, OLECHAR*);
using UnregisterForUser = HRESULT WINAPI(REFGUID, WORD, WORD, LCID, SYSKIND);

HRESULT RegisterTypes(const Classes& classes) {
  windows::Reference<ITypeLib> library;
  if (const auto failure = LoadTypeLibEx(Module::Path().c_str(), REGKIND_NONE, library.Out()); FAILED(failure)) {
    return failure;
  }
  auto path = Module::Path();
  if (classes.root == HKEY_LOCAL_MACHINE) return RegisterTypeLib(library.Get(), path.data(), nullptr);
  auto* const forUser = EntryOfAutomation<RegisterForUser>("RegisterTypeLibForUser");
  return forUser == nullptr ? E_NOTIMPL : forUser(library.Get(), path.data(), nullptr);
}

// For the machine or for this user.
bool AreTypesThere() {
  const auto* const system = kSystem == SYS_WIN64 ? L"\\0\\win64" : L"\\0\\win32";
  return IsThere(HKEY_CLASSES_ROOT, L"TypeLib\\" + TextOf(LIBID_TWQBClient90) + L"\\" + kVersion + system);
}

// The system's calls have one number for what was never there and for what may not be taken away, so it is looked up.
HRESULT UnregisterTypes() {
  FirstFailure failure;
  if (AreTypesThere()) failure.Note(UnRegisterTypeLib(LIBID_TWQBClient90, kMajor, 0, 0, kSystem));
  auto* const forUser = EntryOfAutomation<UnregisterForUser>("UnRegisterTypeLibForUser");
  if (AreTypesThere() && forUser != nullptr) failure.Note(forUser(LIBID_TWQBClient90, kMajor, 0, 0, kSystem));
  if (!AreTypesThere()) return S_OK;
  failure.Note(E_FAIL);
  return failure.Result();
}

HRESULT RegisterIn(const Classes& classes) {
  for (const auto& entry : Entries()) {
    if (const auto failure = Write(classes, entry); failure != ERROR_SUCCESS) {
      static_cast<void>(Remove(classes));
      return HRESULT_FROM_WIN32(static_cast<DWORD>(failure));
    }
  }
  const auto failure = RegisterTypes(classes);
  if (FAILED(failure)) static_cast<void>(Remove(classes));
  return failure;
}

}  // namespace

HRESULT Register() {
  const auto failure = RegisterIn(kMachine);
  return SUCCEEDED(failure) ? failure : RegisterIn(kUser);
}

HRESULT Unregister() {
  FirstFailure failure;
  for (const auto& classes : {kMachine, kUser}) failure.Note(Remove(classes));
  failure.Note(UnregisterTypes());
  return failure.Result();
}

}  // namespace twqb::com
