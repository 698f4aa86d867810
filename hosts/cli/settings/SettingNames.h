// The settings that people name on a command line: which ones there are, and what is said of one that means nothing.
//
// Stands on the library's list of settings; the values that are set are SettingsStore's affair.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bridge/SettingList.h"
#include "cli/options/Options.h"

namespace twqb::cli {

// "[QBSEND_] Clients_ChkSkip"
[[nodiscard]] std::string FullNameOf(const SettingDescription& setting);
[[nodiscard]] std::string FullNameOf(std::string_view section, std::string_view key);

// Raises UsageError for a setting that nothing reads, or not from the store in use, and for a value that its reader
// makes nothing of.
void CheckSetting(const Options& options, std::string_view section, std::string_view key, std::string_view value);

// Those that a word is about: a section, a part of a key, or a table, both ways. Raises UsageError when there are none.
[[nodiscard]] std::vector<SettingDescription> SettingsAbout(std::string_view word);

// " Did you mean ...?" for a setting that there is not; empty for one that there is, and where no name is near.
[[nodiscard]] std::string NearestSetting(std::string_view section, std::string_view key);

}  // namespace twqb::cli
