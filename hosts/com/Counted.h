// What every object of COM here is: references are counted, and the last one takes the object away; it answers for one
// interface that scripts can call, and keeps the library loaded.
#pragma once

#include <oaidl.h>
#include <windows.h>

#include <atomic>

#include "com/Module.h"

namespace twqb::com {

template <typename Interface>
class Counted : public Interface {
 public:
  // With one reference. `own` is the interface's identifier.
  explicit Counted(REFIID own) : own_(own) { Module::Hold(); }
  virtual ~Counted() { Module::LetGo(); }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    if (!IsEqualIID(wanted, IID_IUnknown) && !IsEqualIID(wanted, IID_IDispatch) && !IsEqualIID(wanted, own_)) {
      return E_NOINTERFACE;
    }
    *result = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }

  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }

  ULONG STDMETHODCALLTYPE Release() override {
    const auto left = --references_;
    if (left == 0) delete this;
    return left;
  }

 private:
  std::atomic<ULONG> references_ = 1;
  IID own_;
};

}  // namespace twqb::com
