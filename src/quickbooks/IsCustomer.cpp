#include "quickbooks/IsCustomer.h"

#include "services/Errors.h"

namespace twqb {

bool IsCustomer(const Record& customerRet) {
  return RunAs("IsCustomer", false, [&] { return customerRet["Sublevel"].GetInteger() == 0; });
}

}  // namespace twqb
