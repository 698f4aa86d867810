#include "cli/settings/SettingNames.h"

#include <fmt/core.h>

#include <algorithm>
#include <optional>

#include "bridge/Tables.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/NearestName.h"
#include "cli/options/TableArgument.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kHowToGoOn = "See \"twqb settings describe\"; --force sets it all the same.";

// The one of that name: a row of the table has section and key as one.
std::optional<SettingDescription> Find(const std::vector<SettingDescription>& list, std::string_view section,
                                       std::string_view key, bool inTable) {
  const auto row = fmt::format("{}_{}", section, key);
  const auto found = std::ranges::find_if(list, [&](const SettingDescription& setting) {
    if (inTable) return SameName(RowNameOf(setting), row);
    return SameName(setting.section, section) && SameName(setting.key, key);
  });
  if (found == list.end()) return std::nullopt;
  return *found;
}

// The key with a table under its name of the other direction: clients are sent as "Clients", and got as "Customers".
std::string UnderOtherName(const std::vector<SettingDescription>& list, std::string_view section,
                           std::string_view key) {
  const auto direction = SameName(section, "QBGET_") ? Direction::Get : Direction::Send;
  const auto other = direction == Direction::Get ? Direction::Send : Direction::Get;
  for (const auto* table : Tables()) {
    const auto name = fmt::format("{}_", table->names.Of(other));
    if (!SameName(key.substr(0, name.size()), name)) continue;
    auto renamed = fmt::format("{}_{}", table->names.Of(direction), key.substr(name.size()));
    if (Find(list, section, renamed, false)) return renamed;
  }
  return {};
}

std::string Nearest(const std::vector<SettingDescription>& list, std::string_view section, std::string_view key) {
  if (const auto renamed = UnderOtherName(list, section, key); !renamed.empty()) return FullNameOf(section, renamed);
  std::vector<std::string> ofSection;
  std::vector<std::string> all;
  for (const auto& setting : list) {
    if (SameName(setting.section, section)) ofSection.push_back(setting.key);
    all.push_back(FullNameOf(setting));
  }
  if (const auto near = NearestName(key, ofSection)) return FullNameOf(section, *near);
  return NearestName(FullNameOf(section, key), all).value_or(std::string());
}

// Whether the file of settings in use is the one with the registry values.
bool SetsRegistry(const Options& options) {
  if (options.settings.empty() || options.settingsTable) return false;
  const auto place = WorkplaceOf(options);
  return place.settings == place.registry;
}

void CheckPlace(const Options& options, const SettingDescription& setting) {
  const auto name = FullNameOf(setting);
  if (setting.place == SettingPlace::TableAlone && !options.settingsTable) {
    throw UsageError(
        fmt::format("{} is read from the table TWSTable alone: add --settings-table.\n{}", name, kHowToGoOn));
  }
  if (setting.place == SettingPlace::Registry && !SetsRegistry(options)) {
    throw UsageError(fmt::format("{} is a registry value: add --settings {}.\n{}", name, kRegistryFile, kHowToGoOn));
  }
}

// Whether the key is one of a table under the name that the table has in its section.
bool IsOf(const SettingDescription& setting, const Table& table) {
  const auto direction = setting.section == "QBGET_" ? Direction::Get : Direction::Send;
  const bool isTables = setting.section == "QBSEND_" || setting.section == "QBGET_";
  return isTables && setting.key.starts_with(fmt::format("{}_", table.names.Of(direction)));
}

}  // namespace

std::string FullNameOf(std::string_view section, std::string_view key) { return fmt::format("[{}] {}", section, key); }
std::string FullNameOf(const SettingDescription& setting) { return FullNameOf(setting.section, setting.key); }

void CheckSetting(const Options& options, std::string_view section, std::string_view key, std::string_view value) {
  const auto list = SettingList();
  const auto setting = Find(list, section, key, options.settingsTable);
  if (!setting) {
    throw UsageError(fmt::format("There is no setting {}.{}\n{}", FullNameOf(section, key),
                                 NearestSetting(section, key), kHowToGoOn));
  }
  CheckPlace(options, *setting);
  // In the table an empty value is none.
  if ((value.empty() && options.settingsTable) || IsValueOf(*setting, value)) return;
  throw UsageError(fmt::format("{} takes {}, and \"{}\" is none of that.\n{}", FullNameOf(*setting),
                               ValuesOf(setting->kind), value, kHowToGoOn));
}

std::vector<SettingDescription> SettingsAbout(std::string_view word) {
  const auto list = SettingList();
  std::vector<SettingDescription> about;
  const auto take = [&](const auto& isAbout) {
    if (about.empty()) std::ranges::copy_if(list, std::back_inserter(about), isAbout);
  };
  const auto folded = FoldCase(word);
  for (const auto* table : Tables()) {
    if (!SameName(word, table->name)) continue;
    take([&](const auto& setting) { return IsOf(setting, *table); });
  }
  take([&](const auto& setting) { return SameName(setting.section, word); });
  take([&](const auto& setting) { return SameName(FullNameOf(setting), word); });
  take([&](const auto& setting) { return FoldCase(setting.key).find(folded) != std::string::npos; });
  if (!about.empty()) return about;
  if (const auto end = word.find("] "); word.starts_with('[') && end != std::string_view::npos) {
    throw UsageError(fmt::format("There is no setting {}.{}\n\"twqb settings describe\" shows all.", word,
                                 NearestSetting(word.substr(1, end - 1), word.substr(end + 2))));
  }
  std::vector<std::string> names;
  for (const auto& setting : list) {
    names.push_back(setting.key);
    names.push_back(setting.section);
  }
  for (const auto* table : Tables()) names.push_back(TypedName(table->number));
  throw UsageError(fmt::format("No setting is about \"{}\".{}\n\"twqb settings describe\" shows all.", word,
                               DidYouMean(word, names)));
}

std::string NearestSetting(std::string_view section, std::string_view key) {
  const auto near = Nearest(SettingList(), section, key);
  return near.empty() || SameName(near, FullNameOf(section, key)) ? "" : fmt::format(" Did you mean \"{}\"?", near);
}

}  // namespace twqb::cli
