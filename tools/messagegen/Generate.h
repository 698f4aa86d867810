// The whole way, from texts of messages to texts of C++, in memory. The program around it reads and writes files.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>

#include "messagegen/Source.h"
#include "messagegen/Table.h"

namespace twqb::messagegen {

// Raises BadInput for the first fault.
[[nodiscard]] Table ReadTable(std::span<const SourceFile> files);
// What ReadTable gives, as WriteTable (messagegen/Writer.h) writes it.
[[nodiscard]] std::map<std::string, std::string> Generate(std::span<const SourceFile> files, std::string_view function);

}  // namespace twqb::messagegen
