// The program as a whole, from its arguments to its exit status.
#pragma once

namespace twqb::cli {

// Reads the command line, carries the command out, and turns every way to end into an exit status.
int RunProgram(int argc, const char* const* argv);

}  // namespace twqb::cli
