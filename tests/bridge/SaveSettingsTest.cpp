// The default accounts that the host's settings dialog hands over.

#include <gtest/gtest.h>

#include <filesystem>

#include "bridge/Lookups.h"
#include "services/Settings.h"
#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

// The rows of the settings table, in the order in which they were written.
std::string Rows(BridgeHouse& house) {
  return house.Scalar(
      "SELECT group_concat(ParamName || '=' || coalesce(ParamValue, 'NULL'), ';') FROM "
      "(SELECT ParamName, ParamValue FROM TWSTable ORDER BY rowid)");
}

std::string Account(std::string_view key) {
  return gf_ReadSettings("GENERAL", key, Vars().g_TWSettingsPath, "Other Income");
}

TEST(SaveSettings, Writes_the_four_accounts_to_their_keys_in_order) {
  BridgeHouse house;
  EXPECT_TRUE(SaveSettings("Fees", "Job Costs", "Services", "Expenses"));
  EXPECT_EQ(Rows(house),
            "GENERAL_AC_INCOME_ACCOUNT=Fees;GENERAL_AC_EXPENSE_ACCOUNT=Job Costs;"
            "GENERAL_INVOICE_SERVICE_ACCOUNT=Services;GENERAL_INVOICE_EXP_ACCOUNT=Expenses");
  EXPECT_EQ(Account("AC_INCOME_ACCOUNT"), "Fees");
  EXPECT_EQ(Account("INVOICE_EXP_ACCOUNT"), "Expenses");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(SaveSettings, Looks_each_key_up_and_then_writes_it_with_the_statements_of_the_settings_table) {
  BridgeHouse house;
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_AC_EXPENSE_ACCOUNT', 'Old')");
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_INVOICE_EXP_ACCOUNT', 'Old')");
  EXPECT_TRUE(SaveSettings("Fees", "Costs", "", ""));
  const auto lookup = [](const std::string& key) {
    return "SELECT ParamValue FROM TWSTable WHERE ParamName = 'GENERAL_" + key + "';";
  };
  EXPECT_EQ(house.traffic.statements,
            (Texts{lookup("AC_INCOME_ACCOUNT"),
                   "INSERT INTO TWSTable (ParamValue ,ParamName) VALUES ('Fees','GENERAL_AC_INCOME_ACCOUNT');",
                   lookup("AC_EXPENSE_ACCOUNT"),
                   "UPDATE TWSTable SET ParamValue ='Costs' WHERE ParamName = 'GENERAL_AC_EXPENSE_ACCOUNT';",
                   lookup("INVOICE_SERVICE_ACCOUNT"),
                   "INSERT INTO TWSTable (ParamValue ,ParamName) VALUES (NULL, 'GENERAL_INVOICE_SERVICE_ACCOUNT');",
                   lookup("INVOICE_EXP_ACCOUNT"),
                   "UPDATE TWSTable SET ParamValue = NULL WHERE ParamName = 'GENERAL_INVOICE_EXP_ACCOUNT';"}));
}

TEST(SaveSettings, Overwrites_the_accounts_of_before_and_keeps_every_other_row) {
  BridgeHouse house;
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_QBDBPath', 'x.qbw')");
  EXPECT_TRUE(SaveSettings("a", "b", "c", "d"));
  EXPECT_TRUE(SaveSettings("1", "2", "3", "4"));
  EXPECT_EQ(Rows(house),
            "GENERAL_QBDBPath=x.qbw;GENERAL_AC_INCOME_ACCOUNT=1;GENERAL_AC_EXPENSE_ACCOUNT=2;"
            "GENERAL_INVOICE_SERVICE_ACCOUNT=3;GENERAL_INVOICE_EXP_ACCOUNT=4");
}

TEST(SaveSettings, Stores_an_empty_account_as_NULL_which_reads_as_the_default) {
  BridgeHouse house;
  EXPECT_TRUE(SaveSettings("Fees", "", "Services", ""));
  EXPECT_EQ(Rows(house),
            "GENERAL_AC_INCOME_ACCOUNT=Fees;GENERAL_AC_EXPENSE_ACCOUNT=NULL;"
            "GENERAL_INVOICE_SERVICE_ACCOUNT=Services;GENERAL_INVOICE_EXP_ACCOUNT=NULL");
  EXPECT_EQ(Account("AC_EXPENSE_ACCOUNT"), "Other Income");
}

TEST(SaveSettings, Keeps_a_quote_in_an_account) {
  BridgeHouse house;
  EXPECT_TRUE(SaveSettings("Owner's 'Fees'", "b", "c", "d"));
  EXPECT_EQ(Account("AC_INCOME_ACCOUNT"), "Owner's 'Fees'");
}

TEST(SaveSettings, Turns_all_settings_to_the_table_for_good_and_writes_nothing_to_the_file) {
  BridgeHouse house;
  house.Setting("GENERAL", "AC_INCOME_ACCOUNT", "Of the file");
  {
    Bridge bridge(house);
    EXPECT_FALSE(bridge.UseTWSTable());
    EXPECT_TRUE(bridge.SaveSettings("Fees", "b", "c", "d"));
    EXPECT_TRUE(bridge.UseTWSTable());
  }
  EXPECT_EQ(Rows(house),
            "GENERAL_AC_INCOME_ACCOUNT=Fees;GENERAL_AC_EXPENSE_ACCOUNT=b;GENERAL_INVOICE_SERVICE_ACCOUNT=c;"
            "GENERAL_INVOICE_EXP_ACCOUNT=d");
  EXPECT_EQ(house.SettingOf("GENERAL", "AC_INCOME_ACCOUNT"), "Of the file");
  EXPECT_EQ(house.SettingOf("GENERAL", "AC_EXPENSE_ACCOUNT"), "(none)");
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_FIRST_TIME', 'False')");
  Bridge next(house);
  EXPECT_TRUE(next.SendDataToQB(enClients));
  EXPECT_EQ(house.LastSend(), "(none)");
  EXPECT_EQ(house.Scalar("SELECT ParamValue FROM TWSTable WHERE ParamName = 'QBSEND__Clients_LastSendAt'"),
            "3/5/2008 10:00:00 AM");
}

TEST(SaveSettings, Needs_no_session_and_starts_none) {
  BridgeHouse house;
  std::filesystem::remove(house.Path("company.twq"));
  EXPECT_TRUE(SaveSettings("a", "b", "c", "d"));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_TRUE(house.traffic.documents.empty());
}

TEST(SaveSettings, Ends_with_the_first_account_that_cannot_be_written) {
  const std::string_view keys[] = {"AC_INCOME_ACCOUNT", "AC_EXPENSE_ACCOUNT", "INVOICE_SERVICE_ACCOUNT",
                                   "INVOICE_EXP_ACCOUNT"};
  for (std::size_t failing = 0; failing < std::size(keys); ++failing) {
    SCOPED_TRACE(keys[failing]);
    BridgeHouse house({}, "sql " + std::to_string(failing + 1) + " raise 0x80040E14 \"Full.\" INSERT INTO TWSTable");
    EXPECT_FALSE(SaveSettings("a", "b", "c", "d"));
    EXPECT_EQ(house.Scalar("SELECT count(*) FROM TWSTable"), std::to_string(failing));
    EXPECT_EQ(house.traffic.statements.size(), 2 * (failing + 1));
    EXPECT_EQ(house.BoxTexts(),
              Texts{"Error #: -2147217900(80040E14) -- \r\n\r\nFull." + ErrorBoxEnd("gf_WriteSettings")});
    EXPECT_TRUE(Vars().g_UseTWSTable);
    EXPECT_EQ(Vars().g_CnRefCount, 0);
  }
}

}  // namespace
}  // namespace twqb
