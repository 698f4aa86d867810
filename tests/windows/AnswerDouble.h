// The double of what the session library answers: the text, and the same as objects of its own.
//
// Its lists have the member IsDouble, by which a host tells them from those of TWQBClient90; the records in them are
// that library's objects. With TWQB_DOUBLE_LISTS=none it has the text alone.
#pragma once

#include <string>

#include "platform/machine.h"
#include "tests/windows/Doubles.h"

namespace twqb::doubles {

// `machine` must outlive all that is read from it.
[[nodiscard]] IDispatch* MakeAnswer(std::string text, Machine& machine);

}  // namespace twqb::doubles
