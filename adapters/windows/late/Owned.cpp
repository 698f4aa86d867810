#include "adapters/windows/late/Owned.h"

#include <new>

#include "platform/PlatformError.h"

namespace twqb::windows {

namespace {

Variant Converted(const VARIANT& value, VARTYPE type) {
  Variant converted;
  // The call does not write to it.
  if (FAILED(VariantChangeTypeEx(converted.Get(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, VARIANT_ALPHABOOL,
                                 type))) {
    throw PlatformError(error::kConversion);
  }
  return converted;
}

bool SaysNothing(const VARIANT& value) { return value.vt == VT_EMPTY || value.vt == VT_NULL; }

}  // namespace

std::wstring Wide(std::string_view text) {
  const int given = static_cast<int>(text.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), given, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), given, wide.data(), size);
  return wide;
}

std::string Utf8(std::wstring_view text) {
  const int given = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), given, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), given, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

std::string TextOf(BSTR text) { return text == nullptr ? std::string() : Utf8({text, SysStringLen(text)}); }

Bstr::Bstr(std::string_view text) {
  const auto wide = Wide(text);
  value_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (value_ == nullptr) throw std::bad_alloc();
}

Variant::Variant(std::string_view text) {
  value_.bstrVal = Bstr(text).Release();
  value_.vt = VT_BSTR;
}

Variant::Variant(bool value) {
  value_.vt = VT_BOOL;
  value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(long value) {
  value_.vt = VT_I4;
  value_.lVal = value;
}

Variant Variant::Missing() {
  Variant missing;
  missing.value_.vt = VT_ERROR;
  missing.value_.scode = DISP_E_PARAMNOTFOUND;
  return missing;
}

Variant Variant::CopyOf(const VARIANT& other) {
  Variant copy;
  const bool isReference = other.vt == (VT_BYREF | VT_VARIANT);
  if (FAILED(VariantCopy(&copy.value_, isReference ? other.pvarVal : const_cast<VARIANT*>(&other))))
    throw std::bad_alloc();
  return copy;
}

Variant Variant::ValueOf(const VARIANT& other) {
  Variant copy;
  if (FAILED(VariantCopyInd(&copy.value_, const_cast<VARIANT*>(&other)))) throw std::bad_alloc();
  return copy;
}

Variant& Variant::operator=(Variant&& other) noexcept {
  std::swap(value_, other.value_);
  return *this;
}

VARIANT Variant::Release() {
  const VARIANT content = value_;
  VariantInit(&value_);
  return content;
}

std::string Variant::Text() const {
  if (SaysNothing(value_)) return {};
  return TextOf(Converted(value_, VT_BSTR).Value().bstrVal);
}

long Variant::Number() const { return SaysNothing(value_) ? 0 : Converted(value_, VT_I4).Value().lVal; }

}  // namespace twqb::windows
