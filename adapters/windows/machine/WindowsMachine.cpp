#include "adapters/windows/machine/WindowsMachine.h"

#include "adapters/windows/late/Owned.h"

namespace twqb::windows {

namespace {

template <std::size_t kCount>
void PutBytes(GuidBytes& bytes, std::size_t at, unsigned long value) {
  for (std::size_t i = 0; i < kCount; ++i) {
    bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * (kCount - 1 - i)));
  }
}

}  // namespace

WindowsMachine::WindowsMachine(std::string libraryFolder)
    : SystemMachine({.libraryFolder = std::move(libraryFolder), .registryFile = {}}) {}

std::optional<GuidBytes> WindowsMachine::CreateGuid() {
  GUID made = {};
  if (FAILED(CoCreateGuid(&made))) return std::nullopt;
  GuidBytes bytes = {};
  PutBytes<4>(bytes, 0, made.Data1);
  PutBytes<2>(bytes, 4, made.Data2);
  PutBytes<2>(bytes, 6, made.Data3);
  for (std::size_t i = 0; i < sizeof made.Data4; ++i) bytes[8 + i] = made.Data4[i];
  return bytes;
}

std::optional<std::string> WindowsMachine::ReadRegistry(std::string_view key, std::string_view name) {
  if (key.ends_with('\\')) key.remove_suffix(1);
  const auto path = Wide(key);
  const auto value = Wide(name);
  constexpr DWORD kTexts = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;
  DWORD size = 0;
  if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), value.c_str(), kTexts, nullptr, nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::wstring text(size / sizeof(wchar_t), L'\0');
  if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), value.c_str(), kTexts, nullptr, text.data(), &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  // With the zero at its end.
  return Utf8(std::wstring_view(text.c_str()));
}

}  // namespace twqb::windows
