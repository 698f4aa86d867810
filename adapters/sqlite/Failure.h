// Descriptions of errors: the published text of the number, and behind it what it is about.
//
// Used by every file of this adapter that raises. It keeps no numbers of its own; they stand in
// platform/PlatformError.h.
#pragma once

#include <string>
#include <string_view>

#include "platform/PlatformError.h"

namespace twqb::sqlite {

// The error to throw: "TEXT. DETAIL" (or "TEXT: DETAIL" where the published text has no full stop).
[[nodiscard]] inline PlatformError Failure(ErrorNumber number, std::string_view detail) {
  std::string description(ErrorText(number));
  description.append(description.ends_with('.') ? " " : ": ").append(detail);
  return {number, std::move(description)};
}

}  // namespace twqb::sqlite
