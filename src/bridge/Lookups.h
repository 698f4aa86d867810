// What the host's own dialogs exchange with the library beside the transfers: the accounts that they choose.
//
// Stands beside the dispatch; CTWQBBridge forwards to it. It does not connect to QuickBooks, and it validates nothing:
// an account's name is taken as the host gives it.
#pragma once

#include <string_view>

namespace twqb {

// Remembers the four default accounts in section GENERAL, in the order of the arguments. From here on, also after a
// failure, all settings live in `TWSTable`, whichever store was in use before. An empty account is stored as NULL and
// so reads as the default. False, after ErrorHandler, at the first that can't be written; the later ones stay as they
// were.
bool SaveSettings(std::string_view ACIncAcct, std::string_view ACExpAcct, std::string_view InvServAcct,
                  std::string_view InvExpAcct);

}  // namespace twqb
