#include "com/NamedObject.h"

#include <algorithm>
#include <utility>

#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::com {

NamedObject::NamedObject() : Counted(IID_IDispatch) {}

void NamedObject::SetMember(const std::string& name, const windows::Variant& /*value*/) {
  throw PlatformError(error::kNameUnknown, std::string(ErrorText(error::kNameUnknown)) + ": " + name);
}

HRESULT NamedObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT NamedObject::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*result*/) { return E_NOTIMPL; }

HRESULT NamedObject::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/, DISPID* ids) {
  if (names == nullptr || ids == nullptr) return E_POINTER;
  // Arguments have no names.
  std::fill(ids, ids + count, DISPID_UNKNOWN);
  if (count != 1) return DISP_E_UNKNOWNNAME;
  const auto name = windows::Utf8(names[0]);
  if (!Knows(name)) return DISP_E_UNKNOWNNAME;
  const auto known = std::ranges::find_if(names_, [&](const auto& asked) { return SameName(asked, name); });
  ids[0] = static_cast<DISPID>(known - names_.begin()) + 1;
  if (known == names_.end()) names_.push_back(name);
  return S_OK;
}

HRESULT NamedObject::Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD kind, DISPPARAMS* parameters,
                            VARIANT* result, EXCEPINFO* failure, UINT* /*wrongArgument*/) {
  const auto place = static_cast<std::size_t>(id) - 1;
  if (place >= names_.size()) return DISP_E_MEMBERNOTFOUND;
  if (parameters == nullptr) return E_POINTER;
  // Another call may come from inside of this one.
  const auto* const before = std::exchange(given_, parameters);
  const auto answer = Answer(place, kind, result, failure);
  given_ = before;
  return answer;
}

HRESULT NamedObject::Answer(std::size_t place, WORD kind, VARIANT* result, EXCEPINFO* failure) {
  try {
    const auto name = names_[place];  // more may be asked for meanwhile
    std::vector<windows::Variant> arguments;
    for (UINT i = given_->cArgs; i > 0; --i) {
      arguments.push_back(windows::Variant::CopyOf(given_->rgvarg[i - 1]));
    }
    if ((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
      if (arguments.size() != 1) return DISP_E_BADPARAMCOUNT;
      SetMember(name, arguments.front());
      return S_OK;
    }
    auto value = Member(name, arguments);
    if (result != nullptr) *result = value.Release();
    return S_OK;
  } catch (const PlatformError& raised) {
    if (failure == nullptr) return DISP_E_EXCEPTION;
    *failure = {};
    // Numbers of the language's own run time go to scripts in the form that these know.
    constexpr ErrorNumber kRunTime = 0x800A0000;
    constexpr ErrorNumber kLastOfRunTime = 0xFFFF;
    const auto number = raised.number() <= kLastOfRunTime ? kRunTime | raised.number() : raised.number();
    failure->scode = static_cast<SCODE>(number);
    failure->bstrDescription = windows::Bstr(raised.description()).Release();
    failure->bstrSource = windows::Bstr("TWQBClient90").Release();
    return DISP_E_EXCEPTION;
  } catch (const std::exception&) {
    return E_FAIL;
  }
}

bool NamedObject::GiveByReference(std::size_t place, windows::Variant value) const {
  if (given_ == nullptr || place >= given_->cArgs) return false;
  const VARIANT& argument = given_->rgvarg[given_->cArgs - 1 - place];
  if (argument.vt == (VT_BYREF | VT_VARIANT)) {
    if (FAILED(VariantClear(argument.pvarVal))) return false;
    *argument.pvarVal = value.Release();
    return true;
  }
  const auto type = static_cast<VARTYPE>(argument.vt & ~VT_BYREF);
  if (type == argument.vt) return false;
  if (FAILED(VariantChangeTypeEx(value.Get(), value.Get(), LOCALE_INVARIANT, 0, type))) return false;
  switch (type) {
    case VT_I2:
      *argument.piVal = value.Value().iVal;
      return true;
    case VT_I4:
      *argument.plVal = value.Value().lVal;
      return true;
    case VT_BOOL:
      *argument.pboolVal = value.Value().boolVal;
      return true;
    default:
      return false;
  }
}

}  // namespace twqb::com
