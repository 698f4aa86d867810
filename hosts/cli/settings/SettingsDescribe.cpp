#include "cli/settings/SettingsDescribe.h"

#include <fmt/core.h>

#include <set>
#include <string_view>
#include <vector>

#include "bridge/SettingList.h"
#include "bridge/Tables.h"
#include "cli/screen/Output.h"
#include "cli/screen/Screen.h"
#include "cli/settings/SettingNames.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::size_t kKeyIndent = 2;
constexpr std::size_t kTextIndent = 6;

std::string_view PlaceName(SettingPlace place) {
  switch (place) {
    case SettingPlace::Store:
      return "settings";
    case SettingPlace::TableAlone:
      return "TWSTable";
    case SettingPlace::Registry:
      return "registry";
  }
  return {};
}

std::string SectionHeading(const SettingDescription& setting) {
  switch (setting.place) {
    case SettingPlace::Store:
      return fmt::format("[{}]", setting.section);
    case SettingPlace::TableAlone:
      return fmt::format("[{}] (in the table TWSTable alone)", setting.section);
    case SettingPlace::Registry:
      return fmt::format("[{}] (registry values of the user, {})", setting.section, kRegistryFile);
  }
  return {};
}

// The names that stand for TABLE in a section.
std::string TableNamesOf(std::string_view section) {
  std::vector<std::string> names;
  const auto direction = section == "QBGET_" ? Direction::Get : Direction::Send;
  for (const auto* table : Tables()) names.emplace_back(table->names.Of(direction));
  return Join(names, ", ");
}

void PrintSetting(const SettingDescription& setting, const std::string& key, const std::string& meaning) {
  const auto fallback = setting.fallback.empty() ? "" : fmt::format("; without it {}", setting.fallback);
  Print(Paragraph(key, kKeyIndent));
  Print(Paragraph(fmt::format("{} ({}{})", meaning, ValuesOf(setting.kind), fallback), kTextIndent));
}

// Whether those of tables stand there once, or for each table.
enum class TableKeys : bool { Once, Each };

void PrintForPeople(const std::vector<SettingDescription>& settings, TableKeys keys) {
  const bool isWhole = keys == TableKeys::Once;
  std::set<std::string> shown;  // section and pattern
  std::string section;
  for (const auto& setting : settings) {
    if (section != setting.section) {
      Print(fmt::format("{}{}\n", section.empty() ? "" : "\n", SectionHeading(setting)), Look::Heading);
      section = setting.section;
      if (isWhole && setting.pattern != setting.key) {
        Print(Paragraph(fmt::format("TABLE is one of {}.", TableNamesOf(section)), kKeyIndent));
      }
    }
    if (!isWhole) {
      PrintSetting(setting, setting.key, setting.meaning);
    } else if (shown.insert(fmt::format("{}\n{}", section, setting.pattern)).second) {
      PrintSetting(setting, setting.pattern, setting.general.empty() ? setting.meaning : setting.general);
    }
  }
  if (isWhole) Tell("\"twqb settings describe WORD\" shows those of a table, a section or a key.");
}

std::string JsonOf(const SettingDescription& setting) {
  static const std::vector<std::string> kNames = {"section", "key", "place", "values", "default", "meaning"};
  const std::vector<Value> values = {setting.section,
                                     setting.key,
                                     std::string(PlaceName(setting.place)),
                                     std::string(ValuesOf(setting.kind)),
                                     setting.fallback.empty() ? Value(Null()) : Value(setting.fallback),
                                     setting.meaning};
  return JsonValues(kNames, values);
}

}  // namespace

ExitStatus DescribeSettings(const std::string& word, RowForm form) {
  const auto settings = word.empty() ? SettingList() : SettingsAbout(word);
  if (form == RowForm::Json) {
    for (const auto& setting : settings) Print(JsonOf(setting));
  } else {
    PrintForPeople(settings, word.empty() ? TableKeys::Once : TableKeys::Each);
  }
  return ExitStatus::Done;
}

}  // namespace twqb::cli
