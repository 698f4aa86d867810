// What the routines share about QuickBooks events: from which message version there are any, and the host's call-back
// object. Whether this product is subscribed is asked elsewhere.
#pragma once

#include "services/ModuleVariables.h"

namespace twqb {

// Modes of the call-back object: nothing in hand, one record, one transaction, a whole transfer. Bills are told of as
// records are, whether they are made of expenses or are a vendor's.
inline constexpr int kCallbackIdle = 0;
inline constexpr int kCallbackRecord = 1;
inline constexpr int kCallbackTransaction = 2;
inline constexpr int kCallbackTransfer = 3;

// Subscriptions exist from message version 3.
[[nodiscard]] inline bool HasEvents() { return Vars().g_QBMajorVer >= 3; }

// Whether the call-back object hears of what this product does.
[[nodiscard]] inline bool HasCallback() { return Vars().g_IsSubscribed && HasEvents(); }

// Whether a routine tells it of the record in hand; while a whole transfer holds it, nobody does.
[[nodiscard]] inline bool TalksToCallback() { return HasCallback() && !Vars().g_CallbackHeld; }

// The host's call-back object, made on first use; raises when the class is not there.
[[nodiscard]] inline Callback& TheCallback() {
  auto& callback = Vars().g_QBCallback;
  if (!callback) callback = Vars().platform.callback->CreateCallback();
  return *callback;
}

}  // namespace twqb
