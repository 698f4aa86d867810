// A message box as text on a terminal: a rule with icon and title, the lines, a rule; and the prompt below it.
//
// Pure functions; asking and reading the answer is the terminal desk's.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/desk.h"

namespace twqb {

// A wider terminal does not make a box wider: longer lines read badly.
inline constexpr std::size_t kWidestBox = 80;

// Whether the box has a help button that leads somewhere: a host that set neither file nor topic has no help to offer.
[[nodiscard]] bool OffersHelp(const MessageBox& box);
// The whole box, each line ended by "\n" and at most `width` columns (at least 20) wide. Shows the help file and topic
// when the box offers help.
[[nodiscard]] std::string FormatBox(const MessageBox& box, std::size_t width);
// "[Y]es / [N]o: ", with the help button when the box offers help.
[[nodiscard]] std::string FormatPrompt(const MessageBox& box);
// The answer that a typed line gives to a box, by first letter or whole word, in any case; for a box with only OK any
// line is one. Nothing when it is no answer.
[[nodiscard]] std::optional<BoxAnswer> ReadBoxAnswer(BoxButtons buttons, std::string_view line);
// Whether a typed line asks for help.
[[nodiscard]] bool IsHelpRequest(std::string_view line);
// What is taken when there is nobody to ask: No, Cancel, or OK where there is nothing else.
[[nodiscard]] BoxAnswer UnattendedAnswer(BoxButtons buttons);
// "Yes", "Cancel": as a button is labelled.
[[nodiscard]] std::string_view ButtonLabel(BoxAnswer answer);

}  // namespace twqb
