// How results of the library go into those of COM. What is raised ends here: the result is the failure value then.
#pragma once

#include <windows.h>

#include <exception>

#include "adapters/windows/late/Owned.h"
#include "com/HostList.h"

namespace twqb::com {

// Runs the body; nothing that it raises goes on.
template <typename Body>
HRESULT Do(Body body) noexcept {
  try {
    body();
  } catch (const std::exception&) {
    // The user has been told, or nobody can be.
  }
  return S_OK;
}

template <typename Body>
HRESULT GiveFlag(VARIANT_BOOL* result, Body body) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = VARIANT_FALSE;
  return Do([&] {
    if (body()) *result = VARIANT_TRUE;
  });
}

template <typename Body>
HRESULT GiveNumber(short* result, Body body) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = 0;
  return Do([&] { *result = body(); });
}

template <typename Body>
HRESULT GiveText(BSTR* result, Body body) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return Do([&] { *result = windows::Bstr(body()).Release(); });
}

// A list that is nothing is a null object.
template <typename Body>
HRESULT GiveList(IDispatch** result, Body body) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return Do([&] { *result = AskForList(body); });
}

}  // namespace twqb::com
