// The one session of the process: everything else in the library only asks CheckQBSession whether it stands.
#pragma once

#include <string_view>

#include "platform/transport.h"

namespace twqb {

// By which QuickBooks knows this program.
inline constexpr std::string_view kApplicationId = "TWCLIENT";
inline constexpr std::string_view kApplicationName = "Tallywick<->QuickBooks by Orrin Fields Inc.";

// With `blnConnect` True finds or starts the session; False ends it. The result: a session that stood before is True
// for both; without one, True only if session and edition check succeed, and False for `blnConnect` False.
bool CheckQBSession(bool blnConnect, bool blnSingleMode);

// Does the work: starts (walking the user through a failure) or ends the session.
bool StartQBSession(bool blnConnect, bool blnSingleMode);

// Asks host and country, fixes the version of every later message set. False, after a box, when it can't be found; the
// session stays open then.
bool GetQBEditionAndVersion();

// Forgets the session without telling QuickBooks.
void DropSession();

}  // namespace twqb
