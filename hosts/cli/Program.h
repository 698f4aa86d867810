// The program as a whole, from its arguments to its exit status.
#pragma once

#include <span>

namespace twqb {
struct Table;
}

namespace twqb::cli {

// Reads the command line, carries the command out, and turns every way to end into an exit status.
// `tables` are the program's own in the place of the library's; none: these.
int RunProgram(int argc, const char* const* argv, std::span<const Table* const> tables = {});

}  // namespace twqb::cli
