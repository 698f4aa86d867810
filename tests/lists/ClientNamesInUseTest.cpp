// Names that fall together on their way to QuickBooks, and keys that do on their way back.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/lists/ClientsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

constexpr std::size_t kNameLength = 41;  // of a customer in QuickBooks

std::string InUse(std::string_view name, std::string_view key) {
  return RefusalText("The name \"" + std::string(name) + "\" of the list element is already in use.", 3100, "Error") +
         "\r\n\r\n[Client ID = \"" + std::string(key) + "\"]\r\n\r\nDo you want to continue?";
}

// --- To QuickBooks ---------------------------------------------------------------------------------------------------

struct Clash {
  std::size_t length;  // of the client's key
  int taken;           // names in use: the base name, and so many counters behind it less one
  std::size_t rounds;
  std::string suffix;  // of the name that is free
};

class Clashes : public testing::TestWithParam<Clash> {};

TEST_P(Clashes, End_with_the_first_counter_that_is_free) {
  const std::string name(GetParam().length, 'x');
  ClientsHouse house;
  for (int i = 0; i < GetParam().taken; ++i) {
    house.AddCustomer("<Name>" + name + (i == 0 ? "" : std::to_string(i)) + "</Name>");
  }
  house.Client("ClientID", "'" + name + "'");
  house.Send();
  EXPECT_EQ(house.traffic.documents.size(), GetParam().rounds);
  const auto id = house.ListIdOf(name + GetParam().suffix);
  EXPECT_NE(id, "");
  EXPECT_EQ(house.ColumnOf(name, "QBLinkID"), id);
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(ClientSend, Clashes,
                         testing::Values(Clash{4, 0, 1, ""}, Clash{4, 1, 2, "1"}, Clash{4, 2, 3, "2"},
                                         Clash{39, 1, 2, "1"}, Clash{39, 10, 11, "10"}, Clash{40, 0, 1, ""},
                                         Clash{40, 1, 2, "1"}, Clash{40, 2, 3, "2"}, Clash{41, 0, 1, ""}));

TEST(ClientSend, Two_clients_whose_names_are_the_same_once_cut_cannot_both_go) {
  ClientsHouse house({.answers = "yes"});
  const std::string head(kNameLength, 'x');
  house.Client("ClientID", "'" + head + "A'");
  house.Client("ClientID", "'" + head + "B'");
  house.Client("ClientID", "'NEW'");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{InUse(head, head + "B")});
  EXPECT_EQ(house.ColumnOf(head + "A", "QBLinkID"), house.ListIdOf(head));
  EXPECT_EQ(house.ColumnOf(head + "B", "QBLinkID"), "NULL");
  EXPECT_EQ(house.ColumnOf("NEW", "QBLinkID"), house.ListIdOf("NEW"));
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSend, A_company_so_long_that_the_key_behind_it_is_cut_away_is_in_use_for_its_second_client) {
  ClientsHouse house({.answers = "no"});
  const std::string company(45, 'C');
  house.Client("ClientID, ClientCompany", "'A', '" + company + "'");
  house.Client("ClientID, ClientCompany", "'B', '" + company + "'");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{InUse(company.substr(0, kNameLength), "B"), "Operation cancelled!"}));
  EXPECT_NE(house.ColumnOf("A", "QBLinkID"), "NULL");
  EXPECT_EQ(house.ColumnOf("B", "QBLinkID"), "NULL");
}

TEST(ClientSend, A_bracket_that_is_cut_off_makes_room_for_no_counter) {
  // 41 characters with the closing bracket's place taken by the cut: "company (key".
  ClientsHouse house({.answers = "yes"});
  const std::string company(37, 'C');
  house.AddCustomer("<Name>" + company + " (AB</Name>");
  house.Client("ClientID, ClientCompany", "'AB', '" + company + "'");
  house.Send();
  EXPECT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_EQ(house.traffic.documents.size(), 1U);
}

TEST(ClientSend, A_name_of_full_length_in_characters_of_several_bytes_is_told_after_the_first_round_too) {
  ClientsHouse house({.answers = "yes"});
  std::string name;
  for (std::size_t i = 0; i < kNameLength; ++i) name += "\xC3\x9C";
  house.AddCustomer("<Name>" + name + "</Name>");
  house.Client("ClientID", "'" + name + "'");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{InUse(name, name)});
  EXPECT_EQ(house.traffic.documents.size(), 1U);
}

TEST(ClientSend, An_earlier_Add_that_goes_through_in_a_later_round_is_not_looked_at) {
  // The name is free again when the second round sends it once more: QuickBooks gets both, and the last one is linked.
  ClientsHouse house({}, "CustomerAddRq 1 status 3100 Error \"In use for a moment.\"");
  house.Client("ClientID", "'ACME'");
  house.Send();
  EXPECT_NE(house.ListIdOf("ACME"), "");
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), house.ListIdOf("ACME1"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ClientSend, A_client_whose_twin_is_answered_as_found_nothing_is_added_again) {
  ClientsHouse house({}, "CustomerQueryRq 1 status 1 Info \"Nothing.\"");
  house.Client("ClientID, QBLinkID", "'ACME', '80000001-1'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), house.ListIdOf("ACME"));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSend, A_client_whose_twin_is_gone_and_whose_name_is_in_use_gets_a_counter) {
  ClientsHouse house;
  house.AddCustomer("<Name>ACME</Name>");
  house.Client("ClientID, QBLinkID", "'ACME', '80000001-1'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), house.ListIdOf("ACME1"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- From QuickBooks -------------------------------------------------------------------------------------------------

// The table with a key column as long as a customer's name.
void ShortenKey(ClientsHouse& house) {
  house.Sql("DROP TABLE Client");
  std::string ddl = "CREATE TABLE Client (ClientID VARCHAR(41) NOT NULL PRIMARY KEY";
  for (const std::string_view column :
       {"ClientCompany", "ClientFName", "ClientLName", "ClientMI", "ClientMainSalt", "ClientStreet", "ClientStreet2",
        "ClientCity", "ClientState", "ClientZip", "ClientPhone", "ClientMainPhone", "ClientFax", "ClientEmail"}) {
    ddl += ", " + std::string(column) + " VARCHAR(60)";
  }
  house.Sql(ddl +
            ", ClientSince DATETIME, Status VARCHAR(10), QBLinkID VARCHAR(40), LastUpdated DATETIME, "
            "LastUpdate DATETIME)");
}

struct KeyClash {
  std::size_t length;  // of the customer's name
  int taken;
  std::string suffix;
};

class KeyClashes : public testing::TestWithParam<KeyClash> {};

TEST_P(KeyClashes, End_with_the_first_counter_that_is_free) {
  const std::string name(GetParam().length, 'x');
  ClientsHouse house;
  ShortenKey(house);
  for (int i = 0; i < GetParam().taken; ++i) {
    house.Client("ClientID", "'" + name + (i == 0 ? "" : std::to_string(i)) + "'");
  }
  const auto id = house.AddCustomer("<Name>" + name + "</Name>");
  house.Get();
  EXPECT_EQ(house.ColumnOf(name + GetParam().suffix, "QBLinkID"), id);
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM Client"), std::to_string(GetParam().taken + 1));
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(ClientGet, KeyClashes,
                         testing::Values(KeyClash{4, 0, ""}, KeyClash{4, 1, "1"}, KeyClash{4, 2, "2"},
                                         KeyClash{39, 10, "10"}, KeyClash{40, 0, ""}, KeyClash{40, 1, "1"},
                                         KeyClash{40, 2, "2"}, KeyClash{40, 9, "9"}, KeyClash{41, 0, ""}));

TEST(CustomerKey, Of_41_characters_and_taken_in_a_column_of_41_is_told_and_the_rest_still_comes) {
  ClientsHouse house({.answers = "yes"});
  ShortenKey(house);
  const std::string name(kNameLength, 'x');
  house.Client("ClientID", "'" + name + "'");
  house.AddCustomer("<Name>" + name + "</Name>");
  house.AddCustomer("<Name>y</Name>");
  house.Get();
  EXPECT_EQ(house.Keys(), name + ",y");
  EXPECT_EQ(house.ColumnOf(name, "QBLinkID"), "NULL");
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_NE(house.BoxTexts()[0].find("Every ClientID that can be made of the name \"" + name + "\" is taken."),
            std::string::npos);
  EXPECT_EQ(house.Log(), Texts{"Error transfering Client to Tallywick. Client = " + name});
}

TEST(CustomerKey, Of_41_characters_fits_the_hosts_own_column_with_every_counter) {
  ClientsHouse house;
  const std::string name(kNameLength, 'x');
  house.Client("ClientID", "'" + name + "'");
  const auto id = house.AddCustomer("<Name>" + name + "</Name>");
  house.Get();
  EXPECT_EQ(house.ColumnOf(name + "1", "QBLinkID"), id);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(CustomerKey, Names_that_differ_only_in_a_comma_and_a_blank_fall_together_and_stay_with_their_rows) {
  ClientsHouse house;
  const auto comma = house.AddCustomer("<Name>Baker,Lee</Name>");
  const auto blank = house.AddCustomer("<Name>Baker Lee</Name>");
  house.Get();
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM Client WHERE ClientID IN ('Baker Lee', 'Baker Lee1')"), "2");
  const auto keyOf = [&house](const std::string& id) {
    return house.Scalar("SELECT ClientID FROM Client WHERE QBLinkID = '" + id + "'");
  };
  const auto commaKey = keyOf(comma);
  const auto blankKey = keyOf(blank);
  house.Get();
  EXPECT_EQ(keyOf(comma), commaKey);
  EXPECT_EQ(keyOf(blank), blankKey);
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM Client"), "2");
}

TEST(CustomerKey, Names_that_differ_in_case_alone_from_a_taken_key_get_a_counter) {
  ClientsHouse house;
  house.Client("ClientID", "'ACME'");
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Acme1", "QBLinkID"), id);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(CustomerKey, No_lookup_of_a_get_holds_a_quote_but_its_own_two) {
  ClientsHouse house;
  house.AddCustomer("<Name>O'Neil's 'Best'</Name>");
  house.Get();
  for (const auto& statement : house.traffic.statements) {
    const auto quotes = std::ranges::count(statement, '\'');
    EXPECT_TRUE(quotes == 0 || quotes == 2) << statement;
  }
  EXPECT_TRUE(house.BoxTexts().empty());
}

}  // namespace
}  // namespace twqb
