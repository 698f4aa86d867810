// Accounts and QuickBooks' chart of accounts.
//
// A send adds what QuickBooks lacks, with its opening balance, and never modifies an account. A get adds or updates
// rows, and brings the missing parent of a sub-account with it.
#pragma once

#include <string>

#include "engine/Template.h"

namespace twqb {

// Sends the accounts that `strSQL` selects; the outcome is `g_TableOk`. Both flags are there for the caller's sake and
// change nothing: an account with a twin is left alone.
void MoveAccountsToQB(const std::string& strSQL, bool optNever, bool optMostRecent, QBSessionManager& session);

// Takes accounts over. A dependent call works on a connection of its own.
void MoveAccountsToTW(const RecordList& records, bool optNever, bool optMostRecent, Dependent isDependent);

}  // namespace twqb
