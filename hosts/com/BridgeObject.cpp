#include "com/BridgeObject.h"

#include <new>
#include <vector>

#include "com/AccountTexts.h"
#include "com/Results.h"

namespace twqb::com {

namespace {

constexpr const wchar_t* kGetQBAccounts = L"GetQBAccounts";

}  // namespace

BridgeObject::BridgeObject(windows::Reference<ITypeInfo> type) : Counted(IID__CTWQBBridge), type_(std::move(type)) {}

HRESULT BridgeObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT BridgeObject::GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  type_->AddRef();
  *result = type_.Get();
  return S_OK;
}

HRESULT BridgeObject::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/, DISPID* ids) {
  return type_->GetIDsOfNames(names, count, ids);
}

HRESULT BridgeObject::Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD kind, DISPPARAMS* parameters,
                             VARIANT* result, EXCEPINFO* failure, UINT* wrongArgument) {
  if (parameters == nullptr) return E_POINTER;
  const auto held = Held(*this);
  DISPID accounts = DISPID_UNKNOWN;
  auto* name = const_cast<LPOLESTR>(kGetQBAccounts);
  if (SUCCEEDED(type_->GetIDsOfNames(&name, 1, &accounts)) && id == accounts) {
    return InvokeGetQBAccounts(*parameters, result);
  }
  // Scripts and late-bound hosts hand their variables over by reference, which not every system's call looks up.
  std::vector<windows::Variant> owned;
  std::vector<VARIANT> given;
  try {
    for (UINT i = 0; i < parameters->cArgs; ++i) {
      owned.push_back(windows::Variant::ValueOf(parameters->rgvarg[i]));
      given.push_back(owned.back().Value());
    }
  } catch (const std::bad_alloc&) {
    return DISP_E_TYPEMISMATCH;
  }
  DISPPARAMS looked = *parameters;
  looked.rgvarg = given.data();
  return type_->Invoke(static_cast<_CTWQBBridge*>(this), id, kind, &looked, result, failure, wrongArgument);
}

HRESULT BridgeObject::InvokeGetQBAccounts(const DISPPARAMS& parameters, VARIANT* result) {
  if (parameters.cArgs != 1) return DISP_E_BADPARAMCOUNT;
  VARIANT& given = parameters.rgvarg[0];
  VARIANT_BOOL done = VARIANT_FALSE;
  HRESULT failure = DISP_E_TYPEMISMATCH;
  if (given.vt == (VT_BYREF | VT_ARRAY | VT_BSTR)) {
    failure = GetQBAccounts(given.pparray, &done);
  } else if (given.vt == (VT_BYREF | VT_VARIANT)) {
    failure = GiveAccounts([&](const AccountArray& accounts) { return Replace(*given.pvarVal, accounts); }, &done);
  }
  if (FAILED(failure)) return failure;
  if (result != nullptr) *result = windows::Variant(done != VARIANT_FALSE).Release();
  return S_OK;
}

}  // namespace twqb::com
