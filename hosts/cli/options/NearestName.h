// "Did you mean ...?": the name that a mistyped word is closest to.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace twqb::cli {

// The name with the fewest letters to change, in any case; nothing when none is close (more than a third of the word).
[[nodiscard]] std::optional<std::string> NearestName(std::string_view word, std::span<const std::string> names);

// " Did you mean ...?" with that name; empty where none is close.
[[nodiscard]] std::string DidYouMean(std::string_view word, std::span<const std::string> names);

}  // namespace twqb::cli
