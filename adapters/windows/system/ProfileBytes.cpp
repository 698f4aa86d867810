// Profile files in the machine's own code page, as hosts write and read them, in the place of the adapter's own file.

#include "adapters/system/ProfileBytes.h"

#include <windows.h>

#include <cstddef>

namespace twqb {

namespace {

std::wstring WideOf(std::string_view text, UINT page) {
  const int given = static_cast<int>(text.size());
  const int size = MultiByteToWideChar(page, 0, text.data(), given, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(page, 0, text.data(), given, wide.data(), size);
  return wide;
}

std::string BytesOf(const std::wstring& wide, UINT page) {
  const int given = static_cast<int>(wide.size());
  const int size = WideCharToMultiByte(page, 0, wide.data(), given, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(page, 0, wide.data(), given, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

}  // namespace

std::string TextOfProfile(std::string_view bytes) { return BytesOf(WideOf(bytes, CP_ACP), CP_UTF8); }

std::string BytesForProfile(std::string_view text) { return BytesOf(WideOf(text, CP_UTF8), CP_ACP); }

}  // namespace twqb
