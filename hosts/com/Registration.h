// The library's entries in the registry: its class, under its name and its number, and its type library.
//
// For the whole machine, or for this user alone where the caller may not write there. Removing takes away all that
// either way has written, and nothing else: the name stays while the library of the other width is registered, which
// shares it.
#pragma once

#include <windows.h>

namespace twqb::com {

// The system's number of a failure; nothing is left of half a registration.
[[nodiscard]] HRESULT Register();
// Takes away what it can, and says what failed first. Nothing to take away is no failure.
[[nodiscard]] HRESULT Unregister();

}  // namespace twqb::com
