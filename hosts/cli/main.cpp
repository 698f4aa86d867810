// The program twqb.

#include "cli/ProcessMemory.h"
#include "cli/Program.h"

int main(int argc, char** argv) {
  twqb::cli::PrepareMemory();
  return twqb::cli::RunProgram(argc, argv);
}
