#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Settings : public testing::Test {
 protected:
  Settings() { folder_.Done({"init"}); }
  WorkFolder folder_;
};

TEST_F(Settings, A_value_that_was_set_is_read_back) {
  folder_.Done({"settings", "set", "QBSEND_", "Clients_OptNever", "True"});
  EXPECT_EQ(folder_.Done({"settings", "get", "QBSEND_", "Clients_OptNever"}), "True\n");
  EXPECT_THAT(folder_.Read("twqb.ini"), HasSubstr("Clients_OptNever=True"));
}

TEST_F(Settings, A_key_that_is_not_set_gives_1_and_no_result) {
  const auto ended = folder_.Twqb({"settings", "get", "QBSEND_", "Nothing"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, IsEmpty());
  EXPECT_THAT(ended.err, HasSubstr("[QBSEND_] Nothing is not set"));
}

TEST_F(Settings, The_table_is_a_store_of_its_own) {
  folder_.Done({"settings", "set", "GENERAL", "Colour", "green", "--settings-table"});
  EXPECT_EQ(folder_.Done({"--settings-table", "settings", "get", "GENERAL", "Colour"}), "green\n");
  EXPECT_EQ(folder_.Twqb({"settings", "get", "GENERAL", "Colour"}).status, 1);
  EXPECT_EQ(folder_.Scalar("SELECT ParamValue FROM TWSTable WHERE ParamName = 'GENERAL_Colour'"), "green");
}

TEST_F(Settings, A_key_that_would_read_as_a_condition_changes_no_setting_of_the_table) {
  folder_.Done({"settings", "set", "QBSEND", "A", "first", "--settings-table"});
  const auto ended = folder_.Twqb({"settings", "set", "QBSEND", "x' OR '1'='1", "all", "--settings-table"});
  EXPECT_EQ(ended.status, 1) << ended.out;
  EXPECT_THAT(ended.err, testing::HasSubstr("can't stand in a statement"));
  EXPECT_EQ(folder_.Done({"settings", "get", "QBSEND", "A", "--settings-table"}), "first\n");
}

TEST_F(Settings, The_list_has_every_value_of_the_file_in_its_order) {
  folder_.Done({"settings", "set", "QBSEND_", "Clients_OptNever", "True"});
  folder_.Done({"settings", "set", "GENERAL", "Colour", "green"});
  folder_.Done({"settings", "set", "QBSEND_", "Clients_ChkSkip", "False"});
  EXPECT_EQ(folder_.Done({"settings", "list"}),
            "[GENERAL] Colour=green\n[QBSEND_] Clients_OptNever=True\n[QBSEND_] Clients_ChkSkip=False\n");
}

TEST_F(Settings, The_list_has_every_value_of_the_table_by_name) {
  folder_.Done({"settings", "set", "QBSEND_", "Clients_OptNever", "True", "--settings-table"});
  folder_.Done({"settings", "set", "GENERAL", "Colour", "green", "--settings-table"});
  EXPECT_EQ(folder_.Done({"settings", "list", "--settings-table"}),
            "GENERAL_Colour=green\nQBSEND__Clients_OptNever=True\n");
}

TEST_F(Settings, An_empty_store_lists_nothing_and_says_so) {
  for (const auto& store : {std::vector<std::string>{}, std::vector<std::string>{"--settings-table"}}) {
    std::vector<std::string> command = {"settings", "list"};
    command.insert(command.end(), store.begin(), store.end());
    const auto ended = folder_.Twqb(command);
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.out, IsEmpty());
    EXPECT_THAT(ended.err, HasSubstr("Nothing is set."));
  }
}

TEST_F(Settings, Blanks_around_a_value_and_a_leading_dash_are_kept) {
  folder_.Done({"settings", "set", "A", "b", "--", " -5 "});
  EXPECT_EQ(folder_.Done({"settings", "get", "A", "b"}), " -5 \n");
}

TEST_F(Settings, What_the_store_can_not_hold_is_refused) {
  EXPECT_EQ(folder_.Twqb({"settings", "set", "A", "key=sign", "value"}).status, 2);
  EXPECT_EQ(folder_.Twqb({"settings", "set", "A", "long", std::string(255, 'x')}).status, 2);
  EXPECT_EQ(folder_.Twqb({"settings", "set", "A", "longest", std::string(254, 'x')}).status, 0);
}

TEST_F(Settings, A_settings_file_in_no_folder_is_refused) {
  const auto ended = folder_.Twqb({"settings", "set", "A", "b", "c", "--settings", "nowhere/twqb.ini"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("nowhere/twqb.ini"));
}

TEST_F(Settings, Reading_and_changing_them_writes_no_log) {
  folder_.Done({"settings", "set", "A", "b", "c"});
  folder_.Done({"settings", "get", "A", "b"});
  folder_.Done({"settings", "list"});
  EXPECT_THAT(folder_.Names(), testing::ElementsAre("billing.db", "company.twq", "registry.ini", "twqb.ini"));
}

}  // namespace
}  // namespace twqb::cli
