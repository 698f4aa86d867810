// Settings in both stores, the registry values and the activity codes.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "platform/Forwarding.h"
#include "platform/PlatformError.h"
#include "services/Database.h"
#include "services/Settings.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

// A house whose library keeps its settings in the table.
class TableHouse : public NotingHouse {
 public:
  explicit TableHouse(std::string_view faults = {}) : NotingHouse({}, faults) { Vars().g_UseTWSTable = true; }
};

std::string Read(std::string_view section, std::string_view key, std::string_view fallback = {}) {
  return gf_ReadSettings(section, key, Vars().g_TWSettingsPath, fallback);
}
bool Write(std::string_view section, std::string_view key, std::string_view value) {
  return gf_WriteSettings(section, key, value, Vars().g_TWSettingsPath);
}

void WriteFile(const std::string& path, std::string_view text) { std::ofstream(path, std::ios::binary) << text; }

TEST(IniSettings, Give_the_default_where_file_section_or_key_is_missing) {
  TestHouse house;
  house.Enter();
  EXPECT_EQ(Read("GENERAL", "QBDBPath", "none"), "none");
  EXPECT_EQ(Read("GENERAL", "QBDBPath"), "");
  EXPECT_TRUE(Write("GENERAL", "FIRST_TIME", "False"));
  EXPECT_EQ(Read("GENERAL", "QBDBPath", "none"), "none");
  EXPECT_EQ(Read("OTHER", "FIRST_TIME", "none"), "none");
}

TEST(IniSettings, Come_back_as_they_were_written) {
  TestHouse house;
  house.Enter();
  for (const auto* value : {"C:\\QB\\Firm.qbw", "O'Neil", "a=b;c", "\xC3\x9Cml\xC3\xA4ut", "True", "0"}) {
    EXPECT_TRUE(Write("GENERAL", "QBDBPath", value));
    EXPECT_EQ(Read("GENERAL", "QBDBPath", "none"), value);
  }
}

TEST(IniSettings, Keep_a_value_of_blanks_alone) {
  TestHouse house;
  house.Enter();
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", "   "));
  EXPECT_EQ(Read("GENERAL", "QBDBPath", "none"), "   ");
}

TEST(IniSettings, Keep_an_empty_value_apart_from_a_missing_one) {
  TestHouse house;
  house.Enter();
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", ""));
  EXPECT_EQ(Read("GENERAL", "QBDBPath", "none"), "");
}

TEST(IniSettings, Have_at_most_254_characters) {
  TestHouse house;
  house.Enter();
  for (const std::size_t length : {253U, 254U, 255U, 300U}) {
    EXPECT_TRUE(Write("GENERAL", "QBDBPath", std::string(length, 'x')));
    EXPECT_EQ(Read("GENERAL", "QBDBPath").size(), std::min<std::size_t>(length, 254));
  }
  EXPECT_EQ(Read("GENERAL", "NoSuchKey", std::string(300, 'd')), std::string(254, 'd'));
}

TEST(IniSettings, Write_through_and_do_not_look_at_the_outcome) {
  TestHouse house;
  house.Enter();
  Vars().g_TWSettingsPath = house.Path("missing/twqb.ini");
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", "a"));
  EXPECT_EQ(Read("GENERAL", "QBDBPath", "none"), "none");
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST(IniSettings, Report_an_error_of_a_write_and_answer_False) {
  NotingHouse house({}, "settings 1 raise 75 \"Disk full\" write");
  EXPECT_FALSE(Write("GENERAL", "QBDBPath", "a"));
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("Disk full has occurred in the following procedure: gf_WriteSettings. "),
            std::string::npos);
}

TEST(IniSettings, Need_no_database) {
  NotingHouse house;
  Vars().g_ConnectString = "Provider=NONE";
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", "a"));
  EXPECT_EQ(Read("GENERAL", "QBDBPath"), "a");
  EXPECT_TRUE(house.NotesOf("open").empty());
}

TEST(IniSettings, Keep_two_spellings_of_one_table_row_apart) {
  TestHouse house;
  house.Enter();
  EXPECT_TRUE(Write("QBSEND_", "Time Entries_chkCompTime", "True"));
  EXPECT_EQ(Read("QBSEND", "_Time Entries_chkCompTime", "none"), "none");
  EXPECT_TRUE(Write("QBSEND", "_Time Entries_chkCompTime", "False"));
  EXPECT_EQ(Read("QBSEND_", "Time Entries_chkCompTime"), "True");
  EXPECT_EQ(Read("QBSEND", "_Time Entries_chkCompTime"), "False");
}

TEST(TableSettings, Are_read_from_the_row_of_section_underscore_key) {
  TableHouse house;
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_QBDBPath', 'C:\\a.qbw')");
  EXPECT_EQ(Read("GENERAL", "QBDBPath", "none"), "C:\\a.qbw");
  EXPECT_EQ(house.NotesOf("recordset"),
            Notes{"recordset 3 1 SELECT ParamValue FROM TWSTable WHERE ParamName = 'GENERAL_QBDBPath'"});
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_EQ(house.NotesOf("open").size(), 1U);
  EXPECT_EQ(house.NotesOf("close").size(), 1U);
}

TEST(TableSettings, Take_an_open_connection_as_it_is) {
  TableHouse house;
  gp_cnGlobal80(true);
  house.notes.clear();
  EXPECT_EQ(Read("GENERAL", "QBDBPath", "none"), "none");
  EXPECT_EQ(house.notes, Notes{"recordset 3 1 SELECT ParamValue FROM TWSTable WHERE ParamName = 'GENERAL_QBDBPath'"});
  EXPECT_EQ(Vars().g_CnRefCount, 1);
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", "a"));
  EXPECT_EQ(Vars().g_CnRefCount, 1);
  EXPECT_TRUE(house.NotesOf("close").empty());
  gp_cnGlobal80(false);
}

struct StoredCase {
  std::string_view literal;
  std::string_view result;
};

class StoredValues : public testing::TestWithParam<StoredCase> {};

TEST_P(StoredValues, Read_as_the_default_when_there_is_nothing_but_blanks) {
  TableHouse house;
  house.Sql(fmt::format("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('S_K', {})", GetParam().literal));
  EXPECT_EQ(Read("S", "K", "default"), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(TableSettings, StoredValues,
                         testing::Values(StoredCase{"NULL", "default"}, StoredCase{"''", "default"},
                                         StoredCase{"'   '", "default"}, StoredCase{"'x'", "x"},
                                         StoredCase{"'  x y '", "x y"}, StoredCase{"'0'", "0"},
                                         StoredCase{"'it''s'", "it's"}));

TEST(TableSettings, Have_no_greatest_length) {
  TableHouse house;
  const std::string value(3000, 'x');
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", value));
  EXPECT_EQ(Read("GENERAL", "QBDBPath"), value);
}

struct WriteCase {
  bool exists;
  std::string_view value;
  std::string_view statement;
  std::string_view stored;
};

class WriteStatements : public testing::TestWithParam<WriteCase> {};

TEST_P(WriteStatements, Depend_on_the_row_and_on_the_value) {
  TableHouse house;
  if (GetParam().exists) house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('S_K', 'old')");
  EXPECT_TRUE(Write("S", "K", GetParam().value));
  EXPECT_EQ(house.NotesOf("recordset"),
            Notes{"recordset 3 1 SELECT ParamValue FROM TWSTable WHERE ParamName = 'S_K';"});
  EXPECT_EQ(house.NotesOf("execute"), Notes{"execute " + std::string(GetParam().statement)});
  EXPECT_EQ(house.Scalar("SELECT ParamValue FROM TWSTable WHERE ParamName = 'S_K'"), GetParam().stored);
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM TWSTable"), "1");
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

INSTANTIATE_TEST_SUITE_P(
    TableSettings, WriteStatements,
    testing::Values(WriteCase{true, "new", "UPDATE TWSTable SET ParamValue ='new' WHERE ParamName = 'S_K';", "new"},
                    WriteCase{true, "", "UPDATE TWSTable SET ParamValue = NULL WHERE ParamName = 'S_K';", "NULL"},
                    WriteCase{false, "new", "INSERT INTO TWSTable (ParamValue ,ParamName) VALUES ('new','S_K');",
                              "new"},
                    WriteCase{false, "", "INSERT INTO TWSTable (ParamValue ,ParamName) VALUES (NULL, 'S_K');", "NULL"},
                    WriteCase{true, "O'Neil's", "UPDATE TWSTable SET ParamValue ='O''Neil''s' WHERE ParamName = 'S_K';",
                              "O'Neil's"},
                    WriteCase{false, "''", "INSERT INTO TWSTable (ParamValue ,ParamName) VALUES ('''''','S_K');", "''"},
                    WriteCase{false, "  ", "INSERT INTO TWSTable (ParamValue ,ParamName) VALUES ('  ','S_K');", "  "}));

TEST(TableSettings, Keep_the_row_of_a_value_that_was_emptied_and_read_the_default_from_then_on) {
  TableHouse house;
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", "a"));
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", ""));
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM TWSTable"), "1");
  EXPECT_EQ(Read("GENERAL", "QBDBPath", "default"), "default");
}

TEST(TableSettings, Meet_in_one_row_for_both_spellings_of_a_key_with_two_underscores) {
  TableHouse house;
  EXPECT_TRUE(Write("QBSEND_", "Time Entries_chkCompTime", "True"));
  EXPECT_EQ(house.Scalar("SELECT ParamName FROM TWSTable"), "QBSEND__Time Entries_chkCompTime");
  EXPECT_EQ(Read("QBSEND", "_Time Entries_chkCompTime"), "True");
  EXPECT_TRUE(Write("QBSEND", "_Time Entries_chkCompTime", "False"));
  EXPECT_EQ(Read("QBSEND_", "Time Entries_chkCompTime"), "False");
  EXPECT_TRUE(Write("QBSEND_", "Clients_ChkSkip", "True"));
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM TWSTable WHERE ParamName = 'QBSEND__Clients_ChkSkip'"), "1");
}

TEST(TableSettings, Report_a_key_that_breaks_the_statement_when_they_are_written) {
  TableHouse house;
  EXPECT_FALSE(Write("GENERAL", "it's", "a"));
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("(80040E14)"), std::string::npos);
  EXPECT_NE(house.BoxTexts()[0].find("procedure: gf_WriteSettings. "), std::string::npos);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_FALSE(Write("it's", "key", "a"));
}

TEST(TableSettings, Raise_for_a_key_that_breaks_the_statement_when_they_are_read) {
  TableHouse house;
  EXPECT_THROW((void)Read("GENERAL", "it's", "default"), PlatformError);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_TRUE(house.desk.Boxes().empty());
  gp_cnGlobal80(true);
  EXPECT_THROW((void)Read("GENERAL", "it's", "default"), PlatformError);
  EXPECT_EQ(Vars().g_CnRefCount, 1);
  gp_cnGlobal80(false);
}

TEST(TableSettings, Raise_what_the_database_raises_when_they_are_read_and_report_it_when_they_are_written) {
  TableHouse house;
  house.Sql("DROP TABLE TWSTable");
  try {
    (void)Read("GENERAL", "QBDBPath", "default");
    FAIL() << "nothing was raised";
  } catch (const PlatformError& raised) {
    EXPECT_EQ(raised.number(), error::kNoSuchTable);
  }
  EXPECT_FALSE(Write("GENERAL", "QBDBPath", "a"));
  EXPECT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(TableSettings, Report_a_statement_that_fails_and_release_the_connection) {
  TableHouse house("sql 1 raise 0x80040E2F \"Refused\" INSERT");
  EXPECT_FALSE(Write("GENERAL", "QBDBPath", "a"));
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("Refused has occurred in the following procedure: gf_WriteSettings. "),
            std::string::npos);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", "a"));
}

TEST(TableSettings, Fail_without_a_crash_when_no_connection_can_be_made) {
  TableHouse house;
  const auto raiseNext = [&] {
    house.Faults().RaiseAt(house.Faults().CallCount() + 1, FaultTiming::Before, error::kCannotCreateObject);
  };
  raiseNext();
  EXPECT_THROW((void)Read("GENERAL", "QBDBPath"), PlatformError);
  raiseNext();
  EXPECT_FALSE(Write("GENERAL", "QBDBPath", "a"));
}

TEST(Settings, Go_to_the_store_that_is_chosen_at_each_call) {
  NotingHouse house;
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", "in the file"));
  Vars().g_UseTWSTable = true;
  EXPECT_EQ(Read("GENERAL", "QBDBPath", "none"), "none");
  EXPECT_TRUE(Write("GENERAL", "QBDBPath", "in the table"));
  Vars().g_UseTWSTable = false;
  EXPECT_EQ(Read("GENERAL", "QBDBPath"), "in the file");
  Vars().g_UseTWSTable = true;
  EXPECT_EQ(Read("GENERAL", "QBDBPath"), "in the table");
}

TEST(RegistrySettings, Stand_under_the_application_key_and_its_sections) {
  TestHouse house;
  WriteFile(house.Path("registry.ini"),
            "[TW80]\r\nDatabase=C:\\TW\\db.mdb\r\n[TW80\\GENERAL]\r\nQB_MNUSUBSCRIBE=1\r\nEmpty=\r\n");
  house.Enter();
  EXPECT_EQ(RegGetSetting("TW80", "", "Database", "none"), "C:\\TW\\db.mdb");
  EXPECT_EQ(RegGetSetting("TW80", "GENERAL", "QB_MNUSUBSCRIBE", "0"), "1");
  EXPECT_EQ(RegGetSetting("TW80", " GENERAL ", " QB_MNUSUBSCRIBE  ", "0"), "1");
  EXPECT_EQ(RegGetSetting("TW80", "GENERAL", "Empty", "none"), "");
}

TEST(RegistrySettings, Have_at_most_254_characters_and_a_longer_one_can_not_be_read) {
  TestHouse house;
  for (const std::size_t length : {254U, 255U, 300U}) {
    WriteFile(house.Path("registry.ini"), "[TW80]\r\nDatabase=" + std::string(length, 'x') + "\r\n");
    house.Enter();
    EXPECT_EQ(RegGetSetting("TW80", "", "Database", "none"), length == 254 ? std::string(length, 'x') : "none");
  }
}

TEST(RegistrySettings, Give_the_default_where_key_or_value_is_missing) {
  TestHouse house;
  house.Enter();
  EXPECT_EQ(RegGetSetting("TW80", "GENERAL", "QB_MNUSUBSCRIBE", "0"), "0");
  EXPECT_EQ(RegGetSetting("TW80", "", "Database", ""), "");
  WriteFile(house.Path("registry.ini"), "[TW80\\GENERAL]\r\nOther=1\r\n");
  EXPECT_EQ(RegGetSetting("TW80", "GENERAL", "QB_MNUSUBSCRIBE", " d "), " d ");
}

// A machine whose registry holds one value for every name, and notes the keys that are asked for.
class OneValueMachine : public ForwardingMachine {
 public:
  OneValueMachine(Machine& inner, std::string value) : ForwardingMachine(inner), value_(std::move(value)) {}
  std::optional<std::string> ReadRegistry(std::string_view key, std::string_view name) override {
    asked = fmt::format("{}|{}", key, name);
    return value_;
  }
  std::string asked;

 private:
  std::string value_;
};

TEST(RegistrySettings, End_at_the_first_NUL_and_lose_outer_blanks) {
  using namespace std::string_literals;
  TestHouse house;
  for (const auto& [value, result] : {std::pair{"  a b  "s, "a b"s}, std::pair{"ab\0cd"s, "ab"s},
                                      std::pair{" ab \0cd"s, "ab"s}, std::pair{"\0cd"s, ""s}}) {
    OneValueMachine machine(house.machine, value);
    auto seams = house.Seams();
    seams.machine = &machine;
    house.Enter(seams);
    EXPECT_EQ(RegGetSetting("TW80", " GENERAL ", " Key ", "default"), result);
    EXPECT_EQ(machine.asked, "SOFTWARE\\OFS\\TW80\\GENERAL|Key");
  }
}

TEST(RegistrySettings, Give_the_default_for_a_value_that_does_not_fit_the_buffer) {
  TestHouse house;
  for (const auto& [length, fits] : {std::pair{254U, true}, std::pair{300U, false}}) {
    const std::string value(length, 'x');
    OneValueMachine machine(house.machine, value);
    auto seams = house.Seams();
    seams.machine = &machine;
    house.Enter(seams);
    EXPECT_EQ(RegGetSetting("TW80", "GENERAL", "Key", "default"), fits ? value : "default");
  }
}

TEST(ActivityCodes, Are_the_built_in_ones_without_rows_in_the_table) {
  NotingHouse house;
  Vars().g_ActivityComp = Vars().g_ActivityHol = Vars().g_ActivitySick = Vars().g_ActivityVac = "left over";
  LoadActivityCodes();
  EXPECT_EQ(Vars().g_ActivityComp, "GEN:COMP");
  EXPECT_EQ(Vars().g_ActivityHol, "GEN:HOL");
  EXPECT_EQ(Vars().g_ActivitySick, "GEN:SICK");
  EXPECT_EQ(Vars().g_ActivityVac, "GEN:VAC");
  EXPECT_EQ(house.NotesOf("execute"),
            (Notes{"execute SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_COMP'",
                   "execute SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_HOL'",
                   "execute SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_SICK'",
                   "execute SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_VAC'"}));
  EXPECT_EQ(house.NotesOf("open").size(), 1U);
  EXPECT_EQ(house.NotesOf("close").size(), 1U);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(ActivityCodes, Are_replaced_by_non_empty_rows_whichever_store_is_in_use) {
  TestHouse house;
  house.Sql(
      "INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('ACTIVITY_COMP', 'ADM:COMP'), ('ACTIVITY_HOL', ''), "
      "('ACTIVITY_SICK', NULL), ('ACTIVITY_VAC', 'ADM:VAC')");
  house.Enter();
  for (const bool useTable : {false, true}) {
    Vars().g_UseTWSTable = useTable;
    LoadActivityCodes();
    EXPECT_EQ(Vars().g_ActivityComp, "ADM:COMP");
    EXPECT_EQ(Vars().g_ActivityHol, "GEN:HOL");
    EXPECT_EQ(Vars().g_ActivitySick, "GEN:SICK");
    EXPECT_EQ(Vars().g_ActivityVac, "ADM:VAC");
  }
}

TEST(ActivityCodes, Stay_the_built_in_ones_without_a_message_when_the_table_is_missing) {
  TestHouse house;
  house.Sql("DROP TABLE TWSTable");
  house.Enter();
  LoadActivityCodes();
  EXPECT_EQ(Vars().g_ActivityVac, "GEN:VAC");
  EXPECT_TRUE(house.desk.Boxes().empty());
}

}  // namespace
}  // namespace twqb
