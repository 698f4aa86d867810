#include "com/AccountTexts.h"

#include <array>

#include "adapters/windows/late/Owned.h"

namespace twqb::com {

SAFEARRAY* ArrayOf(const AccountArray& accounts, VARTYPE type) {
  std::array<SAFEARRAYBOUND, 2> bounds = {};
  bounds[0].cElements = static_cast<ULONG>(kAccountRows);
  bounds[1].cElements = static_cast<ULONG>(accounts.size());
  SAFEARRAY* const array = SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data());
  if (array == nullptr) return nullptr;
  for (std::size_t column = 0; column < accounts.size(); ++column) {
    for (std::size_t row = 0; row < kAccountRows; ++row) {
      std::array<LONG, 2> place = {static_cast<LONG>(row), static_cast<LONG>(column)};
      // The array makes a copy of its own.
      windows::Variant text(accounts[column][row]);
      void* const element = type == VT_BSTR ? static_cast<void*>(text.Get()->bstrVal) : text.Get();
      SafeArrayPutElement(array, place.data(), element);
    }
  }
  return array;
}

bool Replace(SAFEARRAY** array, const AccountArray& accounts) {
  SAFEARRAY* const made = ArrayOf(accounts, VT_BSTR);
  if (made == nullptr) return false;
  // One that is locked, or of a fixed size, stays.
  if (*array != nullptr && FAILED(SafeArrayDestroy(*array))) {
    SafeArrayDestroy(made);
    return false;
  }
  *array = made;
  return true;
}

}  // namespace twqb::com
