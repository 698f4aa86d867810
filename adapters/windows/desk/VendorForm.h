// `frmPickVendor`: which vendor stands for an employee. Modal: it waits for OK or Skip.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace twqb::windows {

// Nothing when it was skipped, closed, or when the host wants its thread to end.
[[nodiscard]] std::optional<std::string> AskForVendor(const std::string& message,
                                                      const std::vector<std::string>& choices);

}  // namespace twqb::windows
