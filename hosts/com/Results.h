// How results of the library go into those of COM. What is raised ends here: the result is the failure value then. And
// the object stays to the end of its operation, whoever lets go of it in the middle.
#pragma once

#include <windows.h>

#include <exception>

#include "adapters/windows/late/Owned.h"
#include "com/HostList.h"

namespace twqb::com {

// While it lives the object does. A run looks after messages, and in one of those a host may let go of its object.
[[nodiscard]] inline windows::Reference<IUnknown> Held(IUnknown& object) {
  object.AddRef();
  return windows::Reference<IUnknown>(&object);
}

// Runs the body; nothing that it raises goes on.
template <typename Body>
HRESULT Do(IUnknown& object, Body body) noexcept {
  const auto held = Held(object);
  try {
    body();
  } catch (const std::exception&) {
    // The user has been told, or nobody can be.
  }
  return S_OK;
}

template <typename Body>
HRESULT GiveFlag(IUnknown& object, VARIANT_BOOL* result, Body body) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = VARIANT_FALSE;
  return Do(object, [&] {
    if (body()) *result = VARIANT_TRUE;
  });
}

template <typename Body>
HRESULT GiveNumber(IUnknown& object, short* result, Body body) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = 0;
  return Do(object, [&] { *result = body(); });
}

template <typename Body>
HRESULT GiveText(IUnknown& object, BSTR* result, Body body) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return Do(object, [&] { *result = windows::Bstr(body()).Release(); });
}

// A list that is nothing is a null object.
template <typename Body>
HRESULT GiveList(IUnknown& object, IDispatch** result, Body body) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return Do(object, [&] { *result = AskForList(body); });
}

}  // namespace twqb::com
