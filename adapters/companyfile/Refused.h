// The end of a request that can't be carried out: thrown where the cause is found, with the status that tells it, and
// caught where the request began. Nothing of the request may have been changed by then.
#pragma once

#include <utility>

#include "adapters/companyfile/Status.h"

namespace twqb::company {

struct Refused {
  Status status;
};

[[noreturn]] inline void Refuse(Status status) { throw Refused{std::move(status)}; }

}  // namespace twqb::company
