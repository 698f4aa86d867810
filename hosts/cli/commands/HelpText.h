// What "twqb --help" prints: one screen. The help of a single command is put together from its options.
#pragma once

#include <string_view>

namespace twqb::cli {

[[nodiscard]] std::string_view HelpText();

}  // namespace twqb::cli
