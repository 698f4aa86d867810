#include "services/ModuleVariables.h"

namespace twqb {

ModuleVariables& Vars() {
  static ModuleVariables variables;
  return variables;
}

}  // namespace twqb
