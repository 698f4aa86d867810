// The program twqb with a second table, for recorded runs over more than one.

#include "cli/Program.h"
#include "tests/support/PlainVendors.h"

int main(int argc, char** argv) { return twqb::cli::RunProgram(argc, argv, twqb::TwoTables()); }
