// Whether what a run reads of its settings stands in the library's list of settings.
//
// Every golden run is held against it, whatever its expectation keeps. What the list has and nothing reads is found
// elsewhere (tests/cli/SettingsTest.cpp).
#pragma once

#include <optional>
#include <string>

namespace twqb {

// The setting or registry value that an event of a record reads, where the list has none of that name; nothing for an
// event that reads none.
[[nodiscard]] std::optional<std::string> UndescribedSetting(const std::string& event);

}  // namespace twqb
