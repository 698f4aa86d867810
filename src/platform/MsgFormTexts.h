// The texts of the progress form: what its controls show of a state, for a desk that has them and for the record of a
// run.
//
// Every place that tells the form in words takes them from here, so that a person, a test and a transcript read the
// same. What is shown when, and how often, is each desk's own.
#pragma once

#include <string>

#include "platform/desk.h"

namespace twqb {

// Each field named after its control.
struct MsgFormTexts {
  std::string lblItem;
  std::string Text1;
  int pbconv = 0;
  std::string txtProg;
};

[[nodiscard]] MsgFormTexts TextsOf(const MsgFormState& state);

// "12/64"
[[nodiscard]] std::string CountText(const ProgressPosition& position);
// The same with its estimate, where it has one: "12/64 --> 00:00:03". Of the time left whole days fall away, and the
// sign.
[[nodiscard]] std::string PositionText(const ProgressPosition& position);

}  // namespace twqb
