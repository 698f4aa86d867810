#include "com/AccountTexts.h"

#include <array>
#include <memory>

#include "adapters/windows/late/Owned.h"

namespace twqb::com {

namespace {

struct Destroyer {
  void operator()(SAFEARRAY* array) const { SafeArrayDestroy(array); }
};
using OwnArray = std::unique_ptr<SAFEARRAY, Destroyer>;

// Of texts, or of variants with texts; nothing when there is no memory for one of them.
OwnArray ArrayOf(const AccountArray& accounts, VARTYPE type) {
  std::array<SAFEARRAYBOUND, 2> bounds = {};
  bounds[0].cElements = static_cast<ULONG>(kAccountRows);
  bounds[1].cElements = static_cast<ULONG>(accounts.size());
  OwnArray array(SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data()));
  if (!array) return nullptr;
  for (std::size_t column = 0; column < accounts.size(); ++column) {
    for (std::size_t row = 0; row < kAccountRows; ++row) {
      std::array<LONG, 2> place = {static_cast<LONG>(row), static_cast<LONG>(column)};
      // The array makes a copy of its own.
      windows::Variant text(accounts[column][row]);
      void* const element = type == VT_BSTR ? static_cast<void*>(text.Get()->bstrVal) : text.Get();
      if (FAILED(SafeArrayPutElement(array.get(), place.data(), element))) return nullptr;
    }
  }
  return array;
}

// The system would free what is the caller's stack or part of another structure, or what is to keep its size.
bool MayGo(const SAFEARRAY* array) {
  constexpr int kStays = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;
  return array == nullptr || (array->fFeatures & kStays) == 0;
}

}  // namespace

bool Replace(SAFEARRAY** array, const AccountArray& accounts) {
  if (!MayGo(*array)) return false;
  auto made = ArrayOf(accounts, VT_BSTR);
  // One that is locked stays.
  if (!made || (*array != nullptr && FAILED(SafeArrayDestroy(*array)))) return false;
  *array = made.release();
  return true;
}

bool Replace(VARIANT& variable, const AccountArray& accounts) {
  const bool ownsArray = (variable.vt & VT_ARRAY) != 0 && (variable.vt & VT_BYREF) == 0;
  if (ownsArray && !MayGo(variable.parray)) return false;
  auto made = ArrayOf(accounts, VT_VARIANT);
  if (!made || FAILED(VariantClear(&variable))) return false;
  variable.vt = VT_ARRAY | VT_VARIANT;
  variable.parray = made.release();
  return true;
}

}  // namespace twqb::com
