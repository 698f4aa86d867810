// An object that scripts call by names, without a type library: what lists and records have in common.
//
// A class behind it says which names it knows and what each gives. What it raises becomes a failure with number and
// text, as scripts show them.
#pragma once

#include <oaidl.h>
#include <windows.h>

#include <atomic>
#include <string>
#include <vector>

#include "adapters/windows/late/Owned.h"

namespace twqb::com {

class NamedObject : public IDispatch {
 public:
  NamedObject();
  virtual ~NamedObject();
  NamedObject(const NamedObject&) = delete;
  NamedObject& operator=(const NamedObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD kind, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* failure, UINT* wrongArgument) override;

 protected:
  // Whether the object has such a member, in any case.
  [[nodiscard]] virtual bool Knows(const std::string& name) const = 0;
  // The member's value, with the arguments in their order.
  [[nodiscard]] virtual windows::Variant Member(const std::string& name,
                                                const std::vector<windows::Variant>& arguments) const = 0;

 private:
  std::atomic<ULONG> references_ = 1;
  std::vector<std::string> names_;  // asked for so far; a member's number is its place here
};

}  // namespace twqb::com
