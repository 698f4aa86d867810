// What the routines share about QuickBooks events: from which message version there are any, and the host's call-back
// object. Whether this product is subscribed is asked elsewhere.
#pragma once

#include "services/ModuleVariables.h"

namespace twqb {

// Subscriptions exist from message version 3.
[[nodiscard]] inline bool HasEvents() { return Vars().g_QBMajorVer >= 3; }

// The host's call-back object, made on first use; raises when the class is not there.
[[nodiscard]] inline Callback& TheCallback() {
  auto& callback = Vars().g_QBCallback;
  if (!callback) callback = Vars().platform.callback->CreateCallback();
  return *callback;
}

}  // namespace twqb
