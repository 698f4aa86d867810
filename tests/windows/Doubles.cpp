// The entries by which the system reaches the doubles. Wine.sh writes their identifiers into the registry, under the
// names of the real ones.

#include "tests/windows/Doubles.h"

#include <unknwn.h>
#include <windows.h>

#include <array>
#include <cstddef>

#include "com/Counted.h"

namespace {

using Maker = IDispatch* (*)();

struct Class {
  CLSID id;
  Maker make;
};

// {7A1B0001-...} and so on: no one else's.
constexpr CLSID IdOf(unsigned long number) {
  return {0x7A1B0000 + number, 0x5C44, 0x4E1B, {0x9D, 0x20, 0x0B, 0x3C, 0x51, 0x77, 0xE9, 0x06}};
}

constexpr std::array<Class, 4> kClasses = {
    Class{IdOf(1), twqb::doubles::MakeConnection}, Class{IdOf(2), twqb::doubles::MakeRecordset},
    Class{IdOf(3), twqb::doubles::MakeSession}, Class{IdOf(4), twqb::doubles::MakeCallback}};

class Factory : public IClassFactory {
 public:
  explicit Factory(Maker make) : make_(make) {}
  virtual ~Factory() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID /*wanted*/, void** result) override {
    *result = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* /*outer*/, REFIID wanted, void** result) override {
    const twqb::windows::Reference<IDispatch> made(make_());
    return made->QueryInterface(wanted, result);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL /*locked*/) override { return S_OK; }

 private:
  Maker make_;
};

}  // namespace

extern "C" {

HRESULT WINAPI DllGetClassObject(REFCLSID wanted, REFIID face, void** result) {
  static std::array<Factory, 4> factories = {Factory(kClasses[0].make), Factory(kClasses[1].make),
                                             Factory(kClasses[2].make), Factory(kClasses[3].make)};
  for (std::size_t i = 0; i < kClasses.size(); ++i) {
    if (IsEqualCLSID(wanted, kClasses[i].id)) return factories[i].QueryInterface(face, result);
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

// How many objects somebody still has.
int WINAPI LivingDoubles() { return static_cast<int>(twqb::com::Module::Held()); }

HRESULT WINAPI DllCanUnloadNow() { return S_FALSE; }

}  // extern "C"
