// The four entries by which the system reaches the library, and the class that makes objects.

#include <windows.h>

#include <new>

#include "com/BridgeObject.h"
#include "com/House.h"
#include "com/Interface.h"
#include "com/Module.h"
#include "com/Registration.h"
#include "services/OthersObjects.h"

namespace {

using twqb::com::BridgeObject;
using twqb::com::Module;

// There is one, for as long as the library is loaded.
class ClassFactory : public IClassFactory {
 public:
  virtual ~ClassFactory() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    if (!IsEqualIID(wanted, IID_IUnknown) && !IsEqualIID(wanted, IID_IClassFactory)) return E_NOINTERFACE;
    *result = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    Module::Hold();
    return 2;
  }
  ULONG STDMETHODCALLTYPE Release() override {
    Module::LetGo();
    return 1;
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    twqb::windows::Reference<ITypeInfo> type;
    if (const auto failure = Module::LoadInterface(type); FAILED(failure)) return failure;
    try {
      twqb::com::Compose();
      const twqb::windows::Reference<BridgeObject> object(new BridgeObject(std::move(type)));
      return object->QueryInterface(wanted, result);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    } catch (const std::exception&) {
      return E_FAIL;
    }
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL locked) override {
    if (locked != FALSE) {
      Module::Hold();
    } else {
      Module::LetGo();
    }
    return S_OK;
  }
};

ClassFactory factory;

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    Module::LoadedAs(instance);
    DisableThreadLibraryCalls(instance);
  } else if (reason == DLL_PROCESS_DETACH) {
    // Their libraries may be gone already, and from here nobody may be called.
    twqb::ForgetOthersObjects();
  }
  return TRUE;
}

HRESULT WINAPI DllGetClassObject(REFCLSID wanted, REFIID face, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return IsEqualCLSID(wanted, CLSID_CTWQBBridge) ? factory.QueryInterface(face, result) : CLASS_E_CLASSNOTAVAILABLE;
}

// Shared connection and call-back outlive the objects, as all state of the process does, up to here: what is said ahead
// of the end is the last moment at which they may be called. A form that stands is drawn by code of this library.
HRESULT WINAPI DllCanUnloadNow() {
  if (Module::IsHeld() || twqb::DoesFormStand()) return S_FALSE;
  twqb::LetGoOfOthersObjects();
  return Module::IsHeld() ? S_FALSE : S_OK;
}
HRESULT WINAPI DllRegisterServer() { return twqb::com::Register(); }
HRESULT WINAPI DllUnregisterServer() { return twqb::com::Unregister(); }

}  // extern "C"
