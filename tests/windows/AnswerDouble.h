// The double of what the session library answers: the text, and the same as objects of its own.
//
// Its lists have the member IsDouble, by which a host tells them from those of TWQBClient90; the records in them are
// that library's objects, but for time entries (TimeEntryDouble.h). TWQB_DOUBLE_LISTS=none leaves the text alone; with
// =fails a list raises an error, with =fewer it says that it has one record less than it has, with =unknown an object
// comes as one without names, and with =gone its program has ended when the list is asked for.
#pragma once

#include <string>

#include "platform/machine.h"
#include "tests/windows/Doubles.h"

namespace twqb::doubles {

// `machine` must outlive all that is read from it.
[[nodiscard]] IDispatch* MakeAnswer(std::string text, Machine& machine);

}  // namespace twqb::doubles
