#include <gtest/gtest.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <set>

#include "TestFiles.h"
#include "adapters/system/SystemMachine.h"
#include "platform/PlatformError.h"

namespace twqb {
namespace {

using test::ReadFile;
using test::TemporaryFolder;
using test::WriteFile;

// Sets the zone that machines made meanwhile keep, and puts the old one back.
class Zone {
 public:
  explicit Zone(const char* name) {
    if (const char* old = std::getenv("TZ")) old_ = old;
    ::setenv("TZ", name, 1);
    ::tzset();
  }
  Zone(const Zone&) = delete;
  Zone& operator=(const Zone&) = delete;
  ~Zone() {
    if (old_) {
      ::setenv("TZ", old_->c_str(), 1);
    } else {
      ::unsetenv("TZ");
    }
    ::tzset();
  }

 private:
  std::optional<std::string> old_;
};

// The number of the error that `action` raises, with its text in `description`; 0 when it raises none.
template <typename Action>
ErrorNumber Raised(Action action, std::string* description = nullptr) {
  try {
    action();
  } catch (const PlatformError& failure) {
    if (description != nullptr) *description = failure.description();
    return failure.number();
  }
  return 0;
}

Date UtcNow() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return Date::FromUnixSeconds(std::chrono::duration_cast<std::chrono::seconds>(now).count());
}

TEST(SystemMachine, A_copy_of_a_database_takes_nothing_over_that_was_left_beside_the_one_before) {
  const TemporaryFolder folder;
  SystemMachine machine({});
  WriteFile(folder / "from.db", "");  // an empty database
  const std::string to = folder / "to.db";
  for (const auto* suffix : {"", "-wal", "-shm", "-journal"}) WriteFile(to + suffix, "left by one that was killed");
  machine.CopyFile(folder / "from.db", to);
  EXPECT_TRUE(std::filesystem::is_empty(to));
  for (const auto* suffix : {"-wal", "-shm", "-journal"}) EXPECT_FALSE(std::filesystem::exists(to + suffix)) << suffix;
}

TEST(SystemMachine, A_copy_does_not_replace_a_database_that_somebody_writes_to) {
  const TemporaryFolder folder;
  SystemMachine machine({});
  WriteFile(folder / "from.db", "");  // an empty database
  const std::string to = folder / "to.db";
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(to.c_str(), &other), SQLITE_OK);
  const auto run = [other](const char* sql) { return sqlite3_exec(other, sql, nullptr, nullptr, nullptr); };
  ASSERT_EQ(run("PRAGMA journal_mode = WAL; CREATE TABLE Kept (a INTEGER)"), SQLITE_OK);
  std::string told;
  EXPECT_EQ(Raised([&] { machine.CopyFile(folder / "from.db", to); }, &told), error::kFileAccess);
  EXPECT_NE(told.find(to), std::string::npos) << told;
  EXPECT_EQ(run("INSERT INTO Kept VALUES (1)"), SQLITE_OK);
  EXPECT_TRUE(std::filesystem::exists(to + "-wal"));
  sqlite3_close(other);
  machine.CopyFile(folder / "from.db", to);
  EXPECT_TRUE(std::filesystem::is_empty(to));
  EXPECT_FALSE(std::filesystem::exists(to + "-wal"));
}

TEST(SystemMachine, The_clock_shows_local_time_in_whole_seconds) {
  const Zone zone("XYZ-5:30");
  SystemMachine machine({});
  const auto before = UtcNow().PlusMinutes(330);
  const auto now = machine.Now();
  EXPECT_GE(now, before);
  EXPECT_LE(now, UtcNow().PlusMinutes(330));
  EXPECT_EQ(now.Milliseconds() % Date::kSecond, 0);
}

TEST(SystemMachine, A_zone_without_daylight_time_has_its_bias_alone) {
  const Zone zone("XYZ-5:30");
  SystemMachine machine({});
  const auto info = machine.GetTimeZoneInformation();
  EXPECT_EQ(info.bias, -330);
  EXPECT_EQ(info.daylightBias, 0);
  EXPECT_EQ(info.state, TimeZoneState::Standard);
}

class Season : public testing::TestWithParam<const char*> {};

TEST_P(Season, Bias_and_daylight_bias_lead_from_local_time_to_UTC) {
  const Zone zone(GetParam());
  SystemMachine machine({});
  const auto info = machine.GetTimeZoneInformation();
  const int minutes = info.bias + (info.state == TimeZoneState::Daylight ? info.daylightBias : 0);
  const auto difference = UtcNow().Milliseconds() - machine.Now().PlusMinutes(minutes).Milliseconds();
  EXPECT_LE(std::abs(difference), Date::kSecond);
  EXPECT_EQ(info.bias, 300);
  EXPECT_EQ(info.daylightBias, -60);
}

// Whatever the day of the test, one of the two zones is in daylight time and the other is not: their seasons change
// over on the same two days, in opposite directions.
INSTANTIATE_TEST_SUITE_P(SystemMachine, Season,
                         testing::Values("EST5EDT,J60/0,J240/0", "EST5EDT,J240/1,J60/0", "EST5EDT,M3.2.0,M11.1.0"));

TEST(SystemMachine, One_of_two_opposite_zones_is_in_daylight_time) {
  const auto state = [](const char* name) {
    const Zone zone(name);
    return SystemMachine({}).GetTimeZoneInformation().state;
  };
  const auto north = state("EST5EDT,J60/0,J240/0");
  const auto south = state("EST5EDT,J240/1,J60/0");
  EXPECT_NE(north, south);
  EXPECT_TRUE(north == TimeZoneState::Daylight || south == TimeZoneState::Daylight);
}

TEST(SystemMachine, A_law_that_calls_summer_its_standard_has_daylight_time_in_summer_all_the_same) {
  const auto info = [](const char* name) {
    const Zone zone(name);
    return SystemMachine({}).GetTimeZoneInformation();
  };
  // The law's "daylight" time is an hour behind its standard time of UTC+1.
  for (const auto* name : {"IST-1GMT0,J60/0,J240/0", "IST-1GMT0,J240/1,J60/0"}) {
    EXPECT_EQ(info(name).bias, 0) << name;
    EXPECT_EQ(info(name).daylightBias, -60) << name;
  }
}

struct ZoneOfYear {
  const char* name;
  const char* zone;
  Date forward;  // the changes of 2008, in standard time
  Date back;
  int minutes;
};
void PrintTo(const ZoneOfYear& zone, std::ostream* out) { *out << zone.zone; }

constexpr int kHour = 60;
Date In2008(int month, int day, int hour) {
  return Date::FromCivil({.year = 2008, .month = month, .day = day, .hour = hour});
}

class DaylightTime : public testing::TestWithParam<ZoneOfYear> {};

TEST_P(DaylightTime, The_clock_is_ahead_from_one_change_to_the_other_whatever_the_season_is_now) {
  const auto& [name, text, forward, back, minutes] = GetParam();
  const Zone zone(text);
  SystemMachine machine({});
  const auto second = [](Date date, int count) { return date.PlusMilliseconds(count * Date::kSecond); };
  EXPECT_EQ(machine.DaylightMinutes(second(forward, -1)), 0);
  EXPECT_EQ(machine.DaylightMinutes(forward), minutes);
  EXPECT_EQ(machine.DaylightMinutes(second(back, -1)), minutes);
  EXPECT_EQ(machine.DaylightMinutes(back), 0);
  EXPECT_EQ(machine.DaylightMinutes(In2008(1, 15, 12)), forward < back ? 0 : minutes);
  EXPECT_EQ(machine.DaylightMinutes(In2008(7, 15, 12)), forward < back ? minutes : 0);
}

INSTANTIATE_TEST_SUITE_P(
    SystemMachine, DaylightTime,
    testing::Values(ZoneOfYear{"North", "EST5EDT,M3.2.0,M11.1.0", In2008(3, 9, 2), In2008(11, 2, 1), kHour},
                    ZoneOfYear{"South", "AEST-10AEDT,M10.1.0,M4.1.0/3", In2008(10, 5, 2), In2008(4, 6, 2), kHour},
                    ZoneOfYear{"Half_an_hour", "LHST-10:30LHDT-11,M10.1.0,M4.1.0", In2008(10, 5, 2),
                               In2008(4, 6, 1).PlusMinutes(30), kHour / 2},
                    ZoneOfYear{"Law_with_summer_as_its_standard", "IST-1GMT0,M10.5.0,M3.5.0/1", In2008(3, 30, 1),
                               In2008(10, 26, 1), kHour}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(SystemMachine, A_zone_without_daylight_time_is_never_ahead) {
  const Zone zone("XYZ-5:30");
  SystemMachine machine({});
  EXPECT_EQ(machine.DaylightMinutes(In2008(1, 15, 12)), 0);
  EXPECT_EQ(machine.DaylightMinutes(In2008(7, 15, 12)), 0);
}

TEST(SystemMachine, A_sleep_takes_its_time) {
  SystemMachine machine({});
  const auto begin = std::chrono::steady_clock::now();
  machine.Sleep(30);
  machine.Sleep(0);
  machine.Sleep(-1000);
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(30));
}

TEST(SystemMachine, Every_GUID_is_a_new_random_one) {
  SystemMachine machine({});
  std::set<GuidBytes> seen;
  for (int i = 0; i < 100; ++i) {
    const auto guid = machine.CreateGuid();
    ASSERT_TRUE(guid);
    EXPECT_EQ((*guid)[6] >> 4, 4);
    EXPECT_EQ((*guid)[8] >> 6, 2);
    EXPECT_TRUE(seen.insert(*guid).second);
  }
}

TEST(SystemMachine, Random_numbers_are_at_least_0_and_below_1) {
  SystemMachine machine({});
  std::set<double> seen;
  for (int i = 0; i < 1000; ++i) {
    const double number = machine.Random();
    EXPECT_GE(number, 0);
    EXPECT_LT(number, 1);
    seen.insert(number);
  }
  EXPECT_GT(seen.size(), 900U);
}

TEST(SystemMachine, A_profile_string_is_cut_at_one_character_less_than_the_buffer) {
  const TemporaryFolder folder;
  const auto path = folder / "a.ini";
  WriteFile(path, "[A]\nk=\"  äöü\"\n");
  SystemMachine machine({});
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "", 255, path), "  äöü");
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "", 6, path), "  äöü");
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "", 5, path), "  äö");
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "", 1, path), "");
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "", 0, path), "");
  EXPECT_TRUE(machine.WritePrivateProfileString("A", "long", std::string(300, 'x'), path));
  EXPECT_EQ(machine.GetPrivateProfileString("A", "long", "", 255, path), std::string(254, 'x'));
}

TEST(SystemMachine, A_default_is_cut_alike_and_loses_its_trailing_blanks) {
  const TemporaryFolder folder;
  const auto path = folder / "none.ini";
  SystemMachine machine({});
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", " Other Income  ", 255, path), " Other Income");
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "   ", 255, path), "");
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "\"x\"", 255, path), "\"x\"");
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "abcdef", 4, path), "abc");
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "d", 255, ""), "d");
}

TEST(SystemMachine, An_empty_value_is_a_value_and_not_the_default) {
  const TemporaryFolder folder;
  const auto path = folder / "a.ini";
  SystemMachine machine({});
  EXPECT_TRUE(machine.WritePrivateProfileString("A", "k", "", path));
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "default", 255, path), "");
  EXPECT_TRUE(machine.WritePrivateProfileString("A", "k", "   ", path));
  EXPECT_EQ(machine.GetPrivateProfileString("A", "k", "default", 255, path), "   ");
}

TEST(SystemMachine, A_profile_string_that_can_not_be_written_gives_False) {
  const TemporaryFolder folder;
  SystemMachine machine({});
  EXPECT_FALSE(machine.WritePrivateProfileString("A", "k", "v", folder / "none/a.ini"));
  EXPECT_FALSE(machine.WritePrivateProfileString("A", "k", "v", ""));
}

TEST(SystemMachine, Registry_values_stand_in_sections_named_by_the_key_below_the_vendor) {
  const TemporaryFolder folder;
  const auto path = folder / "registry.ini";
  WriteFile(path, "[TW80]\nDatabase=C:\\data\\firm.db\n[TW80\\GENERAL]\nQB_MNUSUBSCRIBE=1\n");
  SystemMachine machine({.libraryFolder = {}, .registryFile = path});
  EXPECT_EQ(machine.ReadRegistry("SOFTWARE\\OFS\\TW80\\", "Database"), "C:\\data\\firm.db");
  EXPECT_EQ(machine.ReadRegistry("SOFTWARE\\OFS\\TW80", "database"), "C:\\data\\firm.db");
  EXPECT_EQ(machine.ReadRegistry("Software\\ofs\\TW80\\general", "QB_MNUSUBSCRIBE"), "1");
  EXPECT_EQ(machine.ReadRegistry("SOFTWARE\\OFS\\TW80\\GENERAL", "Database"), std::nullopt);
  EXPECT_EQ(machine.ReadRegistry("SOFTWARE\\OFS\\TW90", "Database"), std::nullopt);
  EXPECT_EQ(machine.ReadRegistry("TW80", "Database"), std::nullopt);
  EXPECT_EQ(machine.ReadRegistry("", ""), std::nullopt);
}

TEST(SystemMachine, Without_a_registry_file_every_registry_value_is_missing) {
  EXPECT_EQ(SystemMachine({}).ReadRegistry("SOFTWARE\\OFS\\TW80", "Database"), std::nullopt);
}

TEST(SystemMachine, A_copy_overwrites_its_target_with_the_same_bytes) {
  const TemporaryFolder folder;
  const std::string bytes = std::string(200'000, 'a') + std::string("\0\r\n", 3);
  WriteFile(folder / "from", bytes);
  WriteFile(folder / "to", "old");
  SystemMachine machine({});
  machine.CopyFile(folder / "from", folder / "to");
  EXPECT_EQ(ReadFile(folder / "to"), bytes);
  machine.CopyFile(folder / "from", folder / "new");
  EXPECT_EQ(ReadFile(folder / "new"), bytes);
  EXPECT_EQ(test::FileCount(folder), 3U);
}

TEST(SystemMachine, A_copy_that_fails_names_the_path_and_leaves_the_target_as_it_was) {
  const TemporaryFolder folder;
  WriteFile(folder / "from", "new");
  WriteFile(folder / "to", "old");
  std::filesystem::create_directory(folder / "folder");
  test::MakeReadOnly(folder / "to");
  SystemMachine machine({});
  std::string text;
  EXPECT_EQ(Raised([&] { machine.CopyFile(folder / "none", folder / "to"); }, &text), error::kFileNotFound);
  EXPECT_EQ(text, "File not found: " + folder / "none");
  EXPECT_EQ(Raised([&] { machine.CopyFile(folder / "from", folder / "to"); }, &text), error::kFileAccess);
  EXPECT_EQ(text, "Path/File access error: " + folder / "to");
  EXPECT_EQ(Raised([&] { machine.CopyFile(folder / "from", folder / "none/to"); }, &text), error::kPathNotFound);
  EXPECT_EQ(text, "Path not found: " + folder / "none/to");
  EXPECT_EQ(Raised([&] { machine.CopyFile(folder / "from", folder / "folder"); }), error::kFileAccess);
  EXPECT_EQ(Raised([&] { machine.CopyFile(folder / "folder", folder / "to"); }), error::kFileAccess);
  EXPECT_EQ(ReadFile(folder / "to"), "old");
  EXPECT_EQ(test::FileCount(folder), 3U);
}

TEST(SystemMachine, A_line_is_appended_with_CR_LF) {
  const TemporaryFolder folder;
  const auto path = folder / "TWQBLog20083.txt";
  SystemMachine machine({.libraryFolder = folder.Path(), .registryFile = {}});
  EXPECT_EQ(machine.LibraryFolder(), folder.Path());
  machine.AppendLine(path, "one");
  machine.AppendLine(path, "");
  machine.AppendLine(path, "zwölf");
  EXPECT_EQ(ReadFile(path), "one\r\n\r\nzwölf\r\n");
}

TEST(SystemMachine, A_log_is_its_owners_alone_and_takes_no_control_characters) {
  const TemporaryFolder folder;
  const auto path = folder / "TWQBLog20083.txt";
  SystemMachine machine({});
  machine.AppendLine(path, "a\tb\x1b[2J\x7f \xC2\x9B \xC2\xA0 caf\xE9");
  EXPECT_EQ(ReadFile(path), "a\tb?[2J? ? \xC2\xA0 caf\xE9\r\n");
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(path).permissions(), perms::owner_read | perms::owner_write);
}

TEST(SystemMachine, A_log_that_others_could_read_becomes_its_owners_alone) {
  using std::filesystem::perms;
  const TemporaryFolder folder;
  const auto path = folder / "TWQBLog20083.txt";
  WriteFile(path, "old\r\n");
  std::filesystem::permissions(path, perms::owner_read | perms::owner_write | perms::group_read | perms::others_read);
  SystemMachine machine({});
  machine.AppendLine(path, "new");
  EXPECT_EQ(ReadFile(path), "old\r\nnew\r\n");
  EXPECT_EQ(std::filesystem::status(path).permissions(), perms::owner_read | perms::owner_write);
}

TEST(SystemMachine, A_copy_takes_the_place_of_a_link_and_leaves_what_it_leads_to) {
  const TemporaryFolder folder;
  WriteFile(folder / "from", "new");
  WriteFile(folder / "precious", "mine");
  std::filesystem::create_symlink("precious", folder / "to");
  SystemMachine machine({});
  machine.CopyFile(folder / "from", folder / "to");
  EXPECT_EQ(ReadFile(folder / "to"), "new");
  EXPECT_EQ(ReadFile(folder / "precious"), "mine");
}

TEST(SystemMachine, A_line_that_can_not_be_appended_raises) {
  const TemporaryFolder folder;
  SystemMachine machine({});
  EXPECT_EQ(Raised([&] { machine.AppendLine(folder / "none/log.txt", "x"); }), error::kPathNotFound);
  EXPECT_EQ(Raised([&] { machine.AppendLine(folder.Path(), "x"); }), error::kFileAccess);
}

}  // namespace
}  // namespace twqb
