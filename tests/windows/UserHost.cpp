// Registers the library as a user who may not write to the machine's part of the registry, and takes that back.
//   user_host DLL
// Prints after each step where the class stands.

#include <objbase.h>
#include <windows.h>

#include <cstdio>
#include <string>

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

}  // namespace

int wmain(int count, wchar_t** given) {
  if (count < 2 || FAILED(CoInitialize(nullptr))) return 2;
  const HMODULE library = LoadLibraryW(given[1]);
  if (library == nullptr) return 2;
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
