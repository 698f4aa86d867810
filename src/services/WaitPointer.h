// The wait pointer while something takes a while.
//
// For routines that answer something. Boxes are shown with it, and the usual pointer is back behind them.
#pragma once

#include <utility>

#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

// Shows it around `body`, which answers something; the usual one is back on every way out. A desk that has no pointer
// to show is no reason to stop.
template <typename Body>
auto WithWaitPointer(Body&& body) {
  const auto show = [](Pointer pointer) { IgnoreErrors([&] { TheDesk().SetPointer(pointer); }); };
  show(Pointer::Wait);
  try {
    auto result = std::forward<Body>(body)();
    show(Pointer::Default);
    return result;
  } catch (...) {
    show(Pointer::Default);
    throw;
  }
}

}  // namespace twqb
