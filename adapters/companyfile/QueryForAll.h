// The question for all records of a kind, inactive ones too, with their lines and links.
//
// In what a form of the messages knows; whom it is asked, and what becomes of the answer, is the caller's.
#pragma once

#include <string>
#include <string_view>

#include "messages/Schema.h"

namespace twqb::company {

// Empty when the form has no such question.
[[nodiscard]] std::string QueryForAll(std::string_view kind, const messages::Form& form);

}  // namespace twqb::company
