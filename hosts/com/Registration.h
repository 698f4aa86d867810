// The library's entries in the registry: its class, under its name and its number, and its type library.
//
// For the whole machine, or for this user alone where the caller may not write there. Removing takes away all that
// either way has written, and nothing else.
#pragma once

#include <windows.h>

namespace twqb::com {

// The system's number of a failure; nothing is left of half a registration.
[[nodiscard]] HRESULT Register();
[[nodiscard]] HRESULT Unregister();

}  // namespace twqb::com
