// The program twqb with a second table, for recorded runs over more than one.

#include "bridge/TableRoutines.h"
#include "cli/Program.h"
#include "tests/support/PlainVendors.h"

int main(int argc, char** argv) {
  twqb::UseTableRoutines(twqb::TwoTableRoutines());
  return twqb::cli::RunProgram(argc, argv);
}
