#include "tests/golden/DescribedSettings.h"

#include <nlohmann/json.hpp>
#include <set>

#include "bridge/SettingList.h"
#include "bridge/Tables.h"
#include "platform/Text.h"

namespace twqb {

namespace {

// As readers name them, in one case: a row of the table, a key of the file behind its section, a registry value.
std::set<std::string> DescribedNames() {
  std::set<std::string> names;
  for (const auto& setting : SettingList(BuiltInTables())) {
    names.insert(FoldCase("row " + RowNameOf(setting)));
    if (setting.place == SettingPlace::Store) names.insert(FoldCase("file [" + setting.section + "] " + setting.key));
    if (setting.place == SettingPlace::Registry)
      names.insert(FoldCase("registry " + setting.section + " " + setting.key));
  }
  return names;
}

// Nothing for an event that reads no setting.
std::optional<std::string> NameRead(const nlohmann::json& fields) {
  const auto text = [&](const char* name) { return fields.at(name).get<std::string>(); };
  const auto kind = text("kind");
  if (kind == "setting") return "file [" + text("section") + "] " + text("key");
  if (kind == "registry") {
    constexpr std::string_view kRoot = "SOFTWARE\\OFS\\";
    auto key = text("key").substr(kRoot.size());
    if (key.ends_with('\\')) key.pop_back();
    return "registry " + key + " " + text("name");
  }
  if (kind != "sql" || !fields.contains("text")) return std::nullopt;
  constexpr std::string_view kRead = "SELECT ParamValue FROM TWSTable WHERE ParamName = '";
  const auto statement = text("text");
  if (!statement.starts_with(kRead)) return std::nullopt;
  return "row " + statement.substr(kRead.size(), statement.rfind('\'') - kRead.size());
}

}  // namespace

std::optional<std::string> UndescribedSetting(const std::string& event) {
  static const auto kNames = DescribedNames();
  // Most events are none of these, and some are long.
  const bool mayRead = event.find("\"setting\"") != std::string::npos ||
                       event.find("\"registry\"") != std::string::npos || event.find("TWSTable") != std::string::npos;
  if (!mayRead) return std::nullopt;
  const auto name = NameRead(nlohmann::json::parse(event));
  if (!name || kNames.contains(FoldCase(*name))) return std::nullopt;
  return name;
}

}  // namespace twqb
