// Accounts and QuickBooks' chart of accounts.
//
// A send adds what QuickBooks lacks, with its opening balance, and never modifies an account. A get adds or updates
// rows, and brings the missing parent of a sub-account with it.
#pragma once

#include "engine/ListTable.h"

namespace twqb {

extern const Table kAccountsTable;

// Sends the accounts of the call. Its rule changes nothing: an account with a twin is left alone.
void MoveAccountsToQB(const SendCall& call);

// Takes accounts over. A dependent call works on a connection of its own.
void MoveAccountsToTW(const GetCall& call);

}  // namespace twqb
