// The table in C++: constants that need no code to run before main. What reads them is messages/Schema.h.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>

#include "messagegen/Source.h"
#include "messagegen/Table.h"

namespace twqb::messagegen {

// The texts of C++ files by their names: for "src/messages/Customers.messages" a "Customers.rows.cpp" with the rows
// that stand in it, and "{function}.cpp", which defines
//   std::span<const twqb::messages::Message> twqb::messages::{function}();
// with the messages in the order of their names.
[[nodiscard]] std::map<std::string, std::string> WriteTable(const Table& table, std::span<const SourceFile> files,
                                                            std::string_view function);

}  // namespace twqb::messagegen
