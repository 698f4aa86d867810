#include "com/Module.h"

#include <array>
#include <atomic>
#include <filesystem>

#include "com/Interface.h"

namespace twqb::com {

namespace {

HINSTANCE loaded = nullptr;
std::atomic<long> held{0};

}  // namespace

void Module::LoadedAs(HINSTANCE instance) { loaded = instance; }

std::wstring Module::Path() {
  std::array<wchar_t, 32'768> path = {};
  const auto size = GetModuleFileNameW(loaded, path.data(), static_cast<DWORD>(path.size()));
  return {path.data(), size};
}

std::string Module::Folder() { return windows::Utf8(std::filesystem::path(Path()).parent_path().wstring()); }

void Module::Hold() { ++held; }
void Module::LetGo() { --held; }
long Module::Held() { return held; }

HRESULT Module::LoadInterface(windows::Reference<ITypeInfo>& type) {
  windows::Reference<ITypeLib> library;
  const auto failure = LoadTypeLibEx(Path().c_str(), REGKIND_NONE, library.Out());
  return FAILED(failure) ? failure : library->GetTypeInfoOfGuid(IID__CTWQBBridge, type.Out());
}

}  // namespace twqb::com
