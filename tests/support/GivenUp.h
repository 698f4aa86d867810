// The question at which a desk without an answer gave up, for tests that expect one.
//
// A test that expects none needs nothing of this: the exception that ends it names the question.
#pragma once

#include <string>

#include "platform/desk.h"

namespace twqb {

// Runs `ask`; empty when no desk gave up.
template <typename Ask>
[[nodiscard]] std::string GivenUpAt(Ask ask) {
  try {
    ask();
  } catch (const DeskGaveUp& gaveUp) {
    return gaveUp.question();
  }
  return {};
}

}  // namespace twqb
