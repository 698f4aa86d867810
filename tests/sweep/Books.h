// How a scenario brings both sides to where its transfers begin: records of the company file, and transfers beforehand.
//
// Raises std::runtime_error for what is refused: a mistake in the scenario.
#pragma once

#include <string>
#include <string_view>

#include "Sweep.h"

namespace twqb::sweep {

// `kind` is the record's name on the wire ("Customer"), `fields` are its elements in the order of the wire.
void AddRecord(TestHouse& house, std::string_view kind, std::string_view fields);
void ChangeRecord(TestHouse& house, std::string_view kind, std::string_view fullName, std::string_view fields);
// An item of that kind ("ItemService"), on the account of that name.
void AddItem(TestHouse& house, std::string_view kind, std::string_view name, std::string_view account);
// Adds a transaction; its TxnID.
std::string AddTransaction(TestHouse& house, std::string_view kind, std::string_view fields);

// The ListID of the record of that name.
[[nodiscard]] std::string IdOf(TestHouse& house, std::string_view kind, std::string_view fullName);

// Runs the scenario's own transfers.
void TransferNow(TestHouse& house, const Scenario& scenario);

}  // namespace twqb::sweep
