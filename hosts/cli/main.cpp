// The program twqb.

#include "cli/Program.h"

int main(int argc, char** argv) { return twqb::cli::RunProgram(argc, argv); }
