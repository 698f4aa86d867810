// What GetSavedFilters makes of the saved settings.

#include <gtest/gtest.h>

#include "bridge/modTWQBBridge.h"
#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

class FilterHouse : public BridgeHouse {
 public:
  void Set(std::string_view suffix, std::string_view value) {
    Setting("QBSEND_", "Clients" + std::string(suffix), value);
  }
  bool Read() { return GetSavedFilters("QBSEND_", enClients, filters); }

  SavedFilters filters;
};

TEST(SavedFilters, Without_settings_nothing_narrows_and_the_newer_record_wins) {
  FilterHouse house;
  Vars().g_FiltersActive = true;
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.filters.rule, TwinRule::NewerWins);
  EXPECT_FALSE(house.filters.IgnoreLastSync);
  EXPECT_FALSE(house.filters.ActiveOnly);
  EXPECT_EQ(house.filters.Date1a + house.filters.Filter1a + house.filters.From, "");
  EXPECT_FALSE(Vars().g_FiltersActive);
}

TEST(SavedFilters, The_four_flags_are_read_and_do_not_count_as_filters) {
  FilterHouse house;
  house.Set("_chkIgnoreLastSync", "1");
  house.Set("_chkActiveOnly", "-1");
  house.Set("_OptMostRecent", "False");
  house.Set("_OptNever", "true");
  EXPECT_TRUE(house.Read());
  EXPECT_TRUE(house.filters.IgnoreLastSync);
  EXPECT_TRUE(house.filters.ActiveOnly);
  EXPECT_EQ(house.filters.rule, TwinRule::LeaveAlone);
  EXPECT_FALSE(Vars().g_FiltersActive);
}

TEST(SavedFilters, The_newer_record_wins_where_the_key_is_missing_or_empty) {
  const std::pair<std::string, bool> cases[] = {
      {"", true}, {"True", true}, {"1", true}, {"0", false}, {"FALSE", false}};
  for (const auto& [value, expected] : cases) {
    FilterHouse house;
    house.Set("_OptMostRecent", value);
    EXPECT_TRUE(house.Read());
    EXPECT_EQ(house.filters.rule, expected ? TwinRule::NewerWins : TwinRule::Overwrite) << value;
  }
}

TEST(SavedFilters, Flags_are_read_anew_each_time) {
  FilterHouse house;
  house.filters = {.rule = TwinRule::LeaveAlone, .IgnoreLastSync = true, .ActiveOnly = true};
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.filters.rule, TwinRule::NewerWins);
  EXPECT_FALSE(house.filters.IgnoreLastSync || house.filters.ActiveOnly);
}

struct PairCase {
  std::string option;
  std::string keyA;
  std::string keyB;
  std::string SavedFilters::*a;
  std::string SavedFilters::*b;
  std::string savedA;
  std::string savedB;
  std::string readA;
  std::string readB;
};

const PairCase kPairs[] = {
    // Local time turned to UTC (five hours on), and back into text; at midnight the date alone.
    {"_OptDate1b", "_cmbDate1a", "_cmbDate1b", &SavedFilters::Date1a, &SavedFilters::Date1b, "2008-03-04",
     "3/5/2008 7:00:00 PM", "3/4/2008 5:00:00 AM", "3/6/2008"},
    {"_OptFilter1b", "_cmbFilter1a", "_cmbFilter1b", &SavedFilters::Filter1a, &SavedFilters::Filter1b, "A", "M", "A",
     "M"},
    {"_OptFilter2b", "_cmbFilter2a", "_cmbFilter2b", &SavedFilters::Filter2a, &SavedFilters::Filter2b, "G1", "G2", "G1",
     "G2"},
    {"_OptFilter3b", "_cmbFilter3a", "_cmbFilter3b", &SavedFilters::Filter3a, &SavedFilters::Filter3b, "x", "", "x",
     ""},
    // Through a date and back, without a turn.
    {"_optFromDate", "_ssdtFrom", "_ssdtTo", &SavedFilters::From, &SavedFilters::To, "2008-03-04", "03/05/2008 19:00",
     "3/4/2008", "3/5/2008 7:00:00 PM"},
};

TEST(SavedFilters, Each_pair_is_read_behind_its_option_and_narrows_the_run) {
  for (const auto& c : kPairs) {
    SCOPED_TRACE(c.option);
    FilterHouse house;
    house.Set(c.option, "True");
    house.Set(c.keyA, c.savedA);
    house.Set(c.keyB, c.savedB);
    EXPECT_TRUE(house.Read());
    EXPECT_EQ(house.filters.*c.a, c.readA);
    EXPECT_EQ(house.filters.*c.b, c.readB);
    EXPECT_TRUE(Vars().g_FiltersActive);
    for (const auto& other : kPairs) {
      if (other.option == c.option) continue;
      EXPECT_EQ(house.filters.*other.a + house.filters.*other.b, "") << other.option;
    }
  }
}

TEST(SavedFilters, A_pair_whose_option_is_off_stays_as_it_was) {
  for (const auto& c : kPairs) {
    SCOPED_TRACE(c.option);
    FilterHouse house;
    house.Set(c.option, "False");
    house.Set(c.keyA, c.savedA);
    house.Set(c.keyB, c.savedB);
    house.filters.*c.a = "before a";
    house.filters.*c.b = "before b";
    EXPECT_TRUE(house.Read());
    EXPECT_EQ(house.filters.*c.a, "before a");
    EXPECT_EQ(house.filters.*c.b, "before b");
    EXPECT_FALSE(Vars().g_FiltersActive);
  }
}

TEST(SavedFilters, A_table_to_be_skipped_says_so_and_nothing_else_is_read) {
  FilterHouse house;
  house.Set("_ChkSkip", "True");
  house.Set("_OptNever", "no truth value");
  house.Set("_OptFilter1b", "True");
  house.Set("_cmbFilter1a", "A");
  house.filters = {.Date1b = "b", .Filter1a = "kept", .rule = TwinRule::LeaveAlone};
  EXPECT_TRUE(house.Read());
  EXPECT_TRUE(house.filters.skipsTable);
  EXPECT_EQ(house.filters.Date1b, "b");
  EXPECT_EQ(house.filters.Filter1a, "kept");
  EXPECT_EQ(house.filters.rule, TwinRule::LeaveAlone);
  EXPECT_TRUE(Vars().g_FiltersActive);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(SavedFilters, The_send_name_goes_with_the_send_prefix_in_any_case_and_the_get_name_with_any_other) {
  FilterHouse house;
  house.Setting("QBSEND_", "Clients_OptNever", "True");
  house.Setting("QBGET_", "Customers_OptNever", "True");
  house.Setting("OTHER_", "Customers_OptNever", "True");
  for (const std::string_view prefix : {"QBSEND_", "qbsend_", "QBGET_", "OTHER_"}) {
    house.filters.rule = TwinRule::Overwrite;
    EXPECT_TRUE(GetSavedFilters(prefix, enClients, house.filters));
    EXPECT_EQ(house.filters.rule, TwinRule::LeaveAlone) << prefix;
  }
}

TEST(SavedFilters, Values_carry_over_from_table_to_table) {
  FilterHouse house;
  house.Set("_OptFilter1b", "True");
  house.Set("_cmbFilter1a", "A");
  house.Set("_cmbFilter1b", "M");
  EXPECT_TRUE(house.Read());
  EXPECT_TRUE(GetSavedFilters("QBSEND_", enProjects, house.filters));
  EXPECT_EQ(house.filters.Filter1a + house.filters.Filter1b, "AM");
  EXPECT_FALSE(Vars().g_FiltersActive);  // of the table in hand alone
}

TEST(SavedFilters, What_does_not_convert_is_told_and_is_False) {
  struct Bad {
    std::string suffix;
    std::string value;
    std::string option;
  };
  const Bad cases[] = {{"_ChkSkip", "perhaps", ""},          {"_chkIgnoreLastSync", "perhaps", ""},
                       {"_chkActiveOnly", "perhaps", ""},    {"_OptMostRecent", "perhaps", ""},
                       {"_OptNever", "perhaps", ""},         {"_OptDate1b", "perhaps", ""},
                       {"_cmbDate1a", "soon", "_OptDate1b"}, {"_ssdtTo", "soon", "_optFromDate"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.suffix);
    FilterHouse house;
    if (!c.option.empty()) {
      for (const auto& pair : kPairs) {
        if (pair.option != c.option) continue;
        house.Set(pair.keyA, "3/4/2008");
        house.Set(pair.keyB, "3/4/2008");
      }
      house.Set(c.option, "True");
    }
    house.Set(c.suffix, c.value);
    EXPECT_FALSE(house.Read());
    ASSERT_EQ(house.BoxTexts().size(), 1U);
    EXPECT_TRUE(house.BoxTexts()[0].starts_with("Error #: 13(D) -- "));
    EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("GetSavedFilters")));
  }
}

TEST(SavedFilters, The_settings_table_is_read_when_it_is_in_use) {
  FilterHouse house;
  Vars().g_UseTWSTable = true;
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('QBSEND__Clients_OptNever', 'True')");
  EXPECT_TRUE(house.Read());
  EXPECT_EQ(house.filters.rule, TwinRule::LeaveAlone);
  EXPECT_EQ(house.traffic.statements.at(0),
            "SELECT ParamValue FROM TWSTable WHERE ParamName = 'QBSEND__Clients_ChkSkip'");
}

}  // namespace
}  // namespace twqb
