// Every setting that the link reads, described for people: where it stands, what it does, which values it takes, and
// what holds without it.
//
// The list stands beside the dispatch, which reads the filters of all tables; what the modules below read is described
// here, too, so that it is one list. Nothing goes by it in a transfer: a setting means what its reader makes of it.
// Golden runs look up every key that they read.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Table.h"

namespace twqb {

// Where a setting is looked for.
enum class SettingPlace : std::uint8_t {
  Store,       // the settings file, or TWSTable in its place
  TableAlone,  // TWSTable, whichever of both is in use
  Registry,    // the registry values of the user
};

enum class SettingKind : std::uint8_t { Text, TrueFalse, OneOrZero, TrueWord, Number, Date };

struct SettingDescription {
  SettingPlace place = SettingPlace::Store;
  std::string section;
  std::string key;
  std::string pattern;  // the key with TABLE in the place of a table's name; the key itself where it has none
  SettingKind kind = SettingKind::Text;
  std::string fallback;  // what holds where it is not set
  std::string meaning;
  std::string general;  // what it means in any table; empty where that is the same
};

// One for each key, in the order of sections, and of tables in a section: those in use, or the given ones.
[[nodiscard]] std::vector<SettingDescription> SettingList();
[[nodiscard]] std::vector<SettingDescription> SettingList(std::span<const Table* const> tables);

// "True or False"
[[nodiscard]] std::string_view ValuesOf(SettingKind kind);
// Whether its reader makes something of the value. An empty one is read as none in the table and stands for itself in
// the file.
[[nodiscard]] bool IsValueOf(const SettingDescription& setting, std::string_view value);

// As a row of TWSTable names it: section and key as one.
[[nodiscard]] std::string RowNameOf(const SettingDescription& setting);

}  // namespace twqb
