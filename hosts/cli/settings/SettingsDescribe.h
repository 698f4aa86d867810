// `twqb settings describe`: what settings there are, and what they do, for people and as JSON Lines.
//
// The list is the library's, and which of it a word is about SettingNames' affair. No store is looked at.
#pragma once

#include <string>

#include "cli/options/ExitStatus.h"
#include "cli/screen/RowText.h"

namespace twqb::cli {

// Prints the settings that a word is about. Without one all of them: for people those of tables once, with TABLE in the
// place of their names, as JSON each by itself.
[[nodiscard]] ExitStatus DescribeSettings(const std::string& word, RowForm form);

}  // namespace twqb::cli
