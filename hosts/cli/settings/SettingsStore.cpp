#include "cli/settings/SettingsStore.h"

#include <fmt/core.h>

#include <cerrno>
#include <system_error>

#include "adapters/system/ProfileFile.h"
#include "cli/runs/Checks.h"
#include "cli/workplace/RunFiles.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"

namespace twqb::cli {

namespace {

Workplace Checked(const Options& options, SettingsStore::Also also) {
  auto place = WorkplaceOf(options);
  CheckApart(place, options);
  if (options.settingsTable || also == SettingsStore::Also::Billing) CheckBilling(place);
  options.settingsTable ? CheckSettingsTable(place) : CheckSettings(place);
  return place;
}

}  // namespace

SettingsStore::SettingsStore(const Options& options, Also also)
    : place_(Checked(options, also)), inTable_(options.settingsTable), composition_(place_, ReadSurroundings(options)) {
  Vars().g_ConnectString = place_.billing;
  Vars().g_TWSettingsPath = place_.settings;
  Vars().g_UseTWSTable = inTable_;
}

std::optional<std::string> SettingsStore::Read(std::string_view section, std::string_view key) const {
  const std::string missing = "\n";  // no value of either store
  auto value = gf_ReadSettings(section, key, place_.settings, missing);
  if (value == missing) return std::nullopt;
  return value;
}

bool SettingsStore::Write(std::string_view section, std::string_view key, std::string_view value) const {
  return gf_WriteSettings(section, key, value, place_.settings);
}

std::optional<std::string> SettingsStore::WhyNotWritten(std::string_view section, std::string_view key,
                                                        std::string_view value) const {
  if (inTable_ || !ProfileText(std::string()).With(section, key, value)) return std::nullopt;
  if (ProfileFile(place_.settings).Write(section, key, value)) return std::nullopt;
  return std::generic_category().message(errno);
}

std::vector<SettingsStore::Entry> SettingsStore::Entries() const {
  std::vector<Entry> entries;
  if (!inTable_) {
    for (const auto& entry : ProfileFile(place_.settings).Entries()) {
      entries.push_back({.name = fmt::format("[{}] {}", entry.section, entry.key), .value = entry.value});
    }
    return entries;
  }
  WithGlobalConnection([&] {
    const auto rows = GlobalConnection().OpenRecordset("SELECT ParamName, ParamValue FROM TWSTable ORDER BY ParamName",
                                                       ado::CursorType::Static, ado::LockType::ReadOnly);
    for (; !rows->Eof(); rows->MoveNext()) {
      entries.push_back({.name = ToText(rows->FieldAt(0)), .value = ToText(rows->FieldAt(1))});
    }
  });
  return entries;
}

}  // namespace twqb::cli
