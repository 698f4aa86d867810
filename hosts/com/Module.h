// The library as the system loads it: where it stands, and whether somebody still has an object of it.
#pragma once

#include <windows.h>

#include <string>

#include "adapters/windows/late/Owned.h"

namespace twqb::com {

class Module {
 public:
  // Told by the system when it loads the library.
  static void LoadedAs(HINSTANCE instance);
  [[nodiscard]] static std::wstring Path();
  // The folder that it stands in, where its log goes.
  [[nodiscard]] static std::string Folder();

  // An object, or a lock on the class, keeps the library loaded.
  static void Hold();
  static void LetGo();
  [[nodiscard]] static bool IsHeld() { return Held() > 0; }
  // So many times.
  [[nodiscard]] static long Held();

  // The interface as the type library in this very file tells it; the system's number where that can't be read.
  [[nodiscard]] static HRESULT LoadInterface(windows::Reference<ITypeInfo>& type);
};

}  // namespace twqb::com
