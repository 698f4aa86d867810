// The rows of a message as one line of text, in the notation that the heads of the files under published/ explain, so
// that they can be held against what is published. A test helper; it reads the table and knows no message.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>

#include "messages/Schema.h"

namespace twqb::messages {

// What a set of that form knows of `rows`.
[[nodiscard]] std::string Outline(std::span<const Element> rows, const Form& form);

// The outlines of a file under published/ ("us-3.0"), each in one line, by the name of the request or answer. Raises
// std::runtime_error when there is no such file.
[[nodiscard]] std::map<std::string, std::string> ReadOutlines(std::string_view file);

}  // namespace twqb::messages
