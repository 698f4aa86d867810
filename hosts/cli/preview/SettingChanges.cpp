#include <algorithm>

#include "adapters/system/ProfileFile.h"
#include "cli/preview/PreviewChanges.h"

namespace twqb::cli {

std::vector<SettingChange> SettingChanges(const preview::ScratchFile& settings) {
  ProfileFile before(settings.before);
  std::vector<SettingChange> changes;
  for (const auto& [section, key, value] : ProfileFile(settings.worked).Entries()) {
    auto then = before.Read(section, key);
    if (then != value) changes.push_back({.section = section, .key = key, .before = std::move(then), .after = value});
  }
  return changes;
}

}  // namespace twqb::cli
