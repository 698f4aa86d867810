#include "engine/RowLook.h"

#include <algorithm>
#include <array>

#include "services/Errors.h"

namespace twqb {

bool LacksPerson(const RequestField& request) {
  constexpr std::array<std::string_view, 3> kPersons = {"CustomerRef", "EntityRef", "VendorRef"};
  return std::ranges::any_of(kPersons, [&](std::string_view person) {
    bool lacks = false;
    // A request that has no such person lacks none.
    IgnoreErrors([&] { lacks = request[person]["ListID"].GetValue().empty(); });
    return lacks;
  });
}

}  // namespace twqb
