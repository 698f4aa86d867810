// Bytes as UTF-8, whatever the locale: for the calls of this folder, and for the paths of the standard library, which
// asks the C runtime for one character after the other. With the runtime's own a path with any letter beyond ASCII
// would lead elsewhere.

#include <windows.h>

#include <cerrno>
#include <cwchar>

#include "Failure.h"

namespace twqb::posix {

std::wstring Wide(const char* path) {
  const int size = MultiByteToWideChar(CP_UTF8, 0, path, -1, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size > 0 ? size : 1), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, path, -1, wide.data(), size);
  wide.pop_back();
  return wide;
}

}  // namespace twqb::posix

namespace {

constexpr std::size_t kMalformed = static_cast<std::size_t>(-1);
constexpr std::size_t kIncomplete = static_cast<std::size_t>(-2);

// How long the character is that begins with the byte; 0 for a byte that begins none.
std::size_t LengthOf(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

}  // namespace

// A character of two units comes in two calls: the first takes all of its bytes but the last, and leaves the second
// unit in the state.
extern "C" std::size_t mbrtowc(wchar_t* unit, const char* bytes, std::size_t count, mbstate_t* state) {
  static mbstate_t own = {};
  if (state == nullptr) state = &own;
  if (bytes == nullptr) {
    *state = {};
    return 0;
  }
  if (count == 0) return kIncomplete;
  if (*state != 0) {
    if (unit != nullptr) *unit = static_cast<wchar_t>(*state);
    *state = {};
    return 1;
  }
  const auto length = LengthOf(static_cast<unsigned char>(*bytes));
  if (length > count) return kIncomplete;
  wchar_t units[2] = {};
  const int made =
      length == 0 ? 0 : MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes, static_cast<int>(length), units, 2);
  if (made == 0) {
    errno = EILSEQ;
    return kMalformed;
  }
  if (unit != nullptr) *unit = units[0];
  if (made == 2) {
    *state = static_cast<mbstate_t>(units[1]);
    return length - 1;
  }
  return units[0] == 0 ? 0 : length;
}
