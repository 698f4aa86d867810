// An object that scripts call by names, without a type library: what lists and records have in common.
//
// A class behind it says which names it knows and what each gives. What it raises becomes a failure with number and
// text, as scripts show them.
#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>
#include <vector>

#include "adapters/windows/late/Owned.h"
#include "com/Counted.h"

namespace twqb::com {

class NamedObject : public Counted<IDispatch> {
 public:
  NamedObject();

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
  // Sets the member; raises 438 unless a class says otherwise.
  virtual void SetMember(const std::string& name, const windows::Variant& value);

  // For `Member`: gives a result by the argument at `place` of the call in hand. False where that is no reference, or
  // one to a type that the value does not convert to.
  [[nodiscard]] bool GiveByReference(std::size_t place, windows::Variant value) const;

 private:
  HRESULT Answer(std::size_t place, WORD kind, VARIANT* result, EXCEPINFO* failure);

  const DISPPARAMS* given_ = nullptr;  // of the call in hand
  std::vector<std::string> names_;     // asked for so far; a member's number is its place here
};

}  // namespace twqb::com
