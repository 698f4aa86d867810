// The one session of the process: everything else in the library only asks CheckQBSession whether it stands.
#pragma once

#include <memory>
#include <string_view>

#include "platform/transport.h"

namespace twqb {

class QBSessionManager;

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

// The session that stands, to be held for as long as it is used: a host that gets the word while a transfer lets
// events run may end it. Raises kObjectNothing when there is none.
[[nodiscard]] std::shared_ptr<QBSessionManager> TheSession();

// Forgets the session without telling QuickBooks.
void DropSession();

}  // namespace twqb
