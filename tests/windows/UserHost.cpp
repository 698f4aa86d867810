// Registers the library as a user who may not write to the machine's part of the registry, and takes that back.
//   user_host DLL
// or, of a library that is registered for the machine, tries to take that back as one who may not:
//   user_host DLL denied
// Prints after each step where the class stands.

#include <objbase.h>
#include <windows.h>

#include <cstdio>
#include <string>
#include <utility>

namespace {

constexpr const wchar_t* kClass = L"Software\\Classes\\TWQBClient90.CTWQBBridge\\CLSID";

bool IsIn(HKEY root) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, kClass, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

void Tell(const char* step) {
  std::printf("%s: machine %s, user %s\n", step, IsIn(HKEY_LOCAL_MACHINE) ? "yes" : "no",
              IsIn(HKEY_CURRENT_USER) ? "yes" : "no");
}

// The machine's part, for as long as it lives, as one that takes nothing: a key that is gone. Of rights wine has no
// notion.
class WithoutRights {
 public:
  WithoutRights() {
    RegCreateKeyExW(HKEY_CURRENT_USER, kGone, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &gone_, nullptr);
    RegDeleteKeyW(HKEY_CURRENT_USER, kGone);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, gone_);
  }
  ~WithoutRights() {
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(gone_);
  }
  WithoutRights(const WithoutRights&) = delete;
  WithoutRights& operator=(const WithoutRights&) = delete;

 private:
  static constexpr const wchar_t* kGone = L"Software\\TWQBGone";
  HKEY gone_ = nullptr;
};

LSTATUS WINAPI RefuseForTheMachine(HKEY root, LPCWSTR path) {
  return root == HKEY_LOCAL_MACHINE ? ERROR_ACCESS_DENIED : RegDeleteTreeW(root, path);
}

// For as long as it lives the library finds that call of the system's refused for the machine.
class Refused {
 public:
  explicit Refused(HMODULE library) : place_(PlaceOf(library, "RegDeleteTreeW")) {
    if (place_ != nullptr) Put(reinterpret_cast<ULONG_PTR>(RefuseForTheMachine));
  }
  ~Refused() {
    if (place_ != nullptr) Put(before_);
  }
  Refused(const Refused&) = delete;
  Refused& operator=(const Refused&) = delete;

 private:
  // Where the library has the address of a call that it takes from another one.
  static ULONG_PTR* PlaceOf(HMODULE library, const std::string& call) {
    auto* const base = reinterpret_cast<unsigned char*>(library);
    const auto* const start = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + start->e_lfanew);
    const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
         from->Name != 0; ++from) {
      const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + from->OriginalFirstThunk);
      auto* place = reinterpret_cast<ULONG_PTR*>(base + from->FirstThunk);
      for (; name->u1.AddressOfData != 0; ++name, ++place) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
        const auto* const found = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
        if (call == reinterpret_cast<const char*>(found->Name)) return place;
      }
    }
    return nullptr;
  }
  void Put(ULONG_PTR address) {
    DWORD before = 0;
    VirtualProtect(place_, sizeof *place_, PAGE_READWRITE, &before);
    before_ = std::exchange(*place_, address);
    VirtualProtect(place_, sizeof *place_, before, &before);
  }

  ULONG_PTR* place_;
  ULONG_PTR before_ = 0;
};

int CallEntry(HMODULE library, const char* entry) {
  using Entry = HRESULT WINAPI();
  auto* const call = reinterpret_cast<Entry*>(reinterpret_cast<void*>(GetProcAddress(library, entry)));
  return call == nullptr ? -1 : static_cast<int>(call());
}

// The path that the user's part of the registry has for the class.
std::wstring RegisteredPath() {
  wchar_t id[64] = {};
  DWORD size = sizeof id;
  RegGetValueW(HKEY_CURRENT_USER, kClass, nullptr, RRF_RT_REG_SZ, nullptr, id, &size);
  wchar_t path[MAX_PATH] = {};
  size = sizeof path;
  const auto key = L"Software\\Classes\\CLSID\\" + std::wstring(id) + L"\\InprocServer32";
  RegGetValueW(HKEY_CURRENT_USER, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, path, &size);
  return path;
}

void TakeBackWithoutRights(HMODULE library) {
  Tell("before");
  {
    const Refused user(library);
    std::printf("without rights taking it back gives %08X\n",
                static_cast<unsigned>(CallEntry(library, "DllUnregisterServer")));
  }
  Tell("afterwards");
  std::printf("with rights it gives %d\n", CallEntry(library, "DllUnregisterServer"));
  Tell("taken back");
  std::printf("once more it gives %d\n", CallEntry(library, "DllUnregisterServer"));
}

}  // namespace

int wmain(int count, wchar_t** given) {
  if (count < 2 || FAILED(CoInitialize(nullptr))) return 2;
  const HMODULE library = LoadLibraryW(given[1]);
  if (library == nullptr) return 2;
  if (count > 2) {
    TakeBackWithoutRights(library);
    CoUninitialize();
    return 0;
  }
  Tell("before");
  {
    const WithoutRights user;
    std::printf("registering gives %d\n", CallEntry(library, "DllRegisterServer"));
  }
  Tell("registered");
  std::printf("its path is %s\n", RegisteredPath() == given[1] ? "the library's" : "another");
  {
    const WithoutRights user;
    std::printf("taking it back gives %d\n", CallEntry(library, "DllUnregisterServer"));
  }
  Tell("taken back");
  CoUninitialize();
  return 0;
}
