// What the files of this folder share: `errno` from the system's own error, and paths as the system wants them.
#pragma once

#include <cstdint>
#include <string>

namespace twqb::posix {

// Sets `errno` from GetLastError, and gives -1.
int Fail();
int Fail(int reason);

// UTF-16 of a path in UTF-8.
[[nodiscard]] std::wstring Wide(const char* path);

// The system's handle of an open descriptor; INVALID_HANDLE_VALUE, with `errno` set, where it is none.
[[nodiscard]] void* HandleOf(int descriptor);

// How many console events have been handed to a handler so far.
[[nodiscard]] unsigned SignalsSoFar();
// Comes to pass with the next of them.
[[nodiscard]] void* SignalEvent();

}  // namespace twqb::posix
