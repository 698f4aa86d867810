// What of a customer reaches BillingDb, and under which key.

#include <gtest/gtest.h>

#include "tests/lists/ClientsHouse.h"

namespace twqb {
namespace {

TEST(CustomerFields, A_full_customer_becomes_a_full_client) {
  ClientsHouse house;
  const auto id = house.AddCustomer(
      "<Name>Acme</Name><CompanyName>Acme Tools</CompanyName><Salutation>Dr.</Salutation><FirstName>Ann</FirstName>"
      "<MiddleName>B</MiddleName><LastName>Lee</LastName><BillAddress><Addr1>Acme Tools</Addr1><Addr2>1 Main</Addr2>"
      "<Addr3>Floor 2</Addr3><Addr4>Rear</Addr4><City>Boston</City><State>MA</State><PostalCode>02110</PostalCode>"
      "</BillAddress><Phone>(617)-555-0123</Phone><AltPhone>617.555 [0124]</AltPhone><Fax>617_555,0125 x</Fax>"
      "<Email>a@b.example</Email><Contact>Someone Else</Contact>");
  house.Get();
  EXPECT_EQ(Outcome(), TableOk::True);
  const std::pair<std::string, std::string> expected[] = {{"ClientCompany", "Acme Tools"},
                                                          {"ClientMainSalt", "Dr."},
                                                          {"ClientFName", "Ann"},
                                                          {"ClientLName", "Lee"},
                                                          {"ClientMI", "B"},
                                                          {"ClientStreet", "1 Main"},
                                                          {"ClientStreet2", "Floor 2"},
                                                          {"ClientCity", "Boston"},
                                                          {"ClientState", "MA"},
                                                          {"ClientZip", "02110"},
                                                          {"ClientPhone", "6175550123"},
                                                          {"ClientMainPhone", "6175550124"},
                                                          {"ClientFax", "6175550125x"},
                                                          {"ClientEmail", "a@b.example"},
                                                          {"ClientSince", "3/5/2008"},
                                                          {"Status", "Active"},
                                                          {"QBLinkID", id},
                                                          {"LastUpdated", "3/5/2008 3:00:00 PM"},
                                                          {"LastUpdate", "NULL"}};
  for (const auto& [column, value] : expected) EXPECT_EQ(house.ColumnOf("Acme", column), value) << column;
}

TEST(CustomerFields, What_QuickBooks_leaves_out_blanks_the_column_of_an_existing_row_too) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client(
      "ClientID, QBLinkID, ClientFName, ClientLName, ClientMI, ClientStreet, ClientStreet2, ClientCity, "
      "ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientMainSalt, "
      "ClientCompany, ClientSince, Status",
      "'OLD', '" + id + "', 'a','b','c','d','e','f','g','h','i','j','k','l','m','n','1999-01-01','InActive'");
  house.Get();
  for (const std::string_view column :
       {"ClientFName", "ClientLName", "ClientMI", "ClientStreet", "ClientStreet2", "ClientCity", "ClientState",
        "ClientZip", "ClientPhone", "ClientMainPhone", "ClientFax", "ClientEmail", "ClientMainSalt", "ClientCompany"}) {
    EXPECT_EQ(house.ColumnOf("OLD", column), "") << column;
  }
  EXPECT_EQ(house.ColumnOf("OLD", "Status"), "Active");
  EXPECT_EQ(house.ColumnOf("OLD", "ClientSince"), "3/5/2008");
  EXPECT_EQ(house.Keys(), "OLD");
}

TEST(CustomerFields, A_customer_that_lost_its_phone_blanks_it_on_the_next_get) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name><Phone>555</Phone>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Acme", "ClientPhone"), "555");
  house.Company("<CustomerModRq><CustomerMod><ListID>" + id + "</ListID><EditSequence>" +
                house.CustomerField(id, "EditSequence") +
                "</EditSequence><Phone></Phone></CustomerMod></CustomerModRq>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Acme", "ClientPhone"), "");
}

TEST(CustomerFields, The_dot_that_stands_for_a_missing_address_is_never_read_back) {
  ClientsHouse house;
  house.Client("ClientID", "'ACME'");
  house.Send();
  house.Get();
  EXPECT_EQ(house.CustomerField(house.ListIdOf("ACME"), "Addr1"), ".");
  EXPECT_EQ(house.ColumnOf("ACME", "ClientStreet"), "");
  EXPECT_EQ(house.ColumnOf("ACME", "ClientCompany"), "");
}

struct ContactCase {
  std::string fields;
  std::string first;
  std::string last;
};

TEST(CustomerFields, The_contact_gives_the_name_only_where_first_and_last_name_are_missing) {
  const ContactCase cases[] = {
      {"", "", ""},
      {"<Contact>Mary</Contact>", "Mary", ""},
      {"<Contact>Mary Smith</Contact>", "Mary", "Smith"},
      {"<Contact>Mary Ann Smith</Contact>", "MaryAnn", "Smith"},
      {"<Contact>Mary  Ann   Smith</Contact>", "MaryAnn", "Smith"},
      {"<FirstName>Ann</FirstName><Contact>Mary Smith</Contact>", "Ann", ""},
      {"<LastName>Lee</LastName><Contact>Mary Smith</Contact>", "", "Lee"},
      {"<MiddleName>Q</MiddleName><Contact>Mary Smith</Contact>", "Mary", "Smith"},
  };
  for (const auto& c : cases) {
    ClientsHouse house;
    house.AddCustomer("<Name>Acme</Name>" + c.fields);
    house.Get();
    EXPECT_EQ(house.ColumnOf("Acme", "ClientFName"), c.first) << c.fields;
    EXPECT_EQ(house.ColumnOf("Acme", "ClientLName"), c.last) << c.fields;
  }
}

TEST(CustomerFields, An_inactive_customer_is_an_InActive_client) {
  ClientsHouse house;
  house.AddCustomer("<Name>Acme</Name><IsActive>false</IsActive>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Acme", "Status"), "InActive");
}

TEST(CustomerFields, A_customer_that_does_not_say_whether_it_is_active_is_an_InActive_client) {
  ClientsHouse house;
  house.traffic.canned.emplace_back(
      "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><CustomerQueryRs requestID=\"1\" statusCode=\"0\" "
      "statusSeverity=\"Info\" statusMessage=\"Status OK\"><CustomerRet><ListID>1-1</ListID><Name>Acme</Name>"
      "<Sublevel>0</Sublevel></CustomerRet></CustomerQueryRs></QBXMLMsgsRs></QBXML>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Acme", "Status"), "InActive");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(CustomerFields, The_province_and_the_county_fill_the_state) {
  ClientsHouse canada({.company = {.country = messages::Country::CA}}, {}, "CA");
  canada.AddCustomer("<Name>Acme</Name><BillAddress><Province>ON</Province></BillAddress>", "CA3.0");
  canada.Get();
  EXPECT_EQ(canada.ColumnOf("Acme", "ClientState"), "ON");
  ClientsHouse britain({.company = {.country = messages::Country::UK}}, {}, "UK");
  britain.AddCustomer("<Name>Acme</Name><BillAddress><County>Kent</County></BillAddress>", "UK3.0");
  britain.Get();
  EXPECT_EQ(britain.ColumnOf("Acme", "ClientState"), "Kent");
}

// The same table with narrow columns.
void NarrowClient(ClientsHouse& house, std::string_view keySize, std::string_view textSize) {
  house.Sql("DROP TABLE Client");
  std::string ddl = "CREATE TABLE Client (ClientID VARCHAR(" + std::string(keySize) + ") NOT NULL PRIMARY KEY";
  for (const std::string_view column :
       {"ClientCompany", "ClientFName", "ClientLName", "ClientMI", "ClientMainSalt", "ClientStreet", "ClientStreet2",
        "ClientCity", "ClientState", "ClientZip", "ClientPhone", "ClientMainPhone", "ClientFax", "ClientEmail"}) {
    ddl += ", " + std::string(column) + " VARCHAR(" + std::string(textSize) + ")";
  }
  house.Sql(ddl +
            ", ClientSince DATETIME, Status VARCHAR(10), QBLinkID VARCHAR(40), LastUpdated DATETIME, "
            "LastUpdate DATETIME)");
}

TEST(CustomerFields, Every_text_is_cut_to_the_size_that_its_column_has) {
  ClientsHouse house;
  NarrowClient(house, "41", "3");
  house.AddCustomer(
      "<Name>Acme</Name><CompanyName>abcdef</CompanyName><Salutation>abcdef</Salutation><FirstName>abcdef</FirstName>"
      "<MiddleName>abcde</MiddleName><LastName>abcdef</LastName><BillAddress><Addr2>abcdef</Addr2><Addr3>abcdef</Addr3>"
      "<City>abcdef</City><State>abcdef</State><PostalCode>abcdef</PostalCode></BillAddress><Phone>(1) 2-3.4</Phone>"
      "<AltPhone>a b c d</AltPhone><Fax>[1234]</Fax><Email>abcdef</Email>");
  house.Get();
  EXPECT_TRUE(house.BoxTexts().empty());
  for (const std::string_view column :
       {"ClientCompany", "ClientFName", "ClientLName", "ClientMI", "ClientMainSalt", "ClientStreet", "ClientStreet2",
        "ClientCity", "ClientState", "ClientZip", "ClientMainPhone", "ClientEmail"}) {
    EXPECT_EQ(house.ColumnOf("Acme", column), "abc") << column;
  }
  EXPECT_EQ(house.ColumnOf("Acme", "ClientPhone"), "123");
  EXPECT_EQ(house.ColumnOf("Acme", "ClientFax"), "123");
}

// --- Keys ------------------------------------------------------------------------------------------------------------

TEST(CustomerKey, Punctuation_and_apostrophes_become_blanks_and_blanks_are_not_folded) {
  ClientsHouse house;
  house.AddCustomer("<Name>O'Neil, Lee; #2</Name>");
  house.Get();
  EXPECT_EQ(house.Keys(), "O Neil  Lee   2");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(CustomerKey, Two_names_that_fall_together_get_a_counter) {
  ClientsHouse house;
  house.AddCustomer("<Name>Baker Lee</Name>");
  house.AddCustomer("<Name>Baker,Lee</Name>");
  house.AddCustomer("<Name>Baker#Lee</Name>");
  house.Get();
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM Client"), "3");
  for (const std::string_view key : {"Baker Lee", "Baker Lee1", "Baker Lee2"}) {
    EXPECT_NE(house.ColumnOf(key, "QBLinkID"), "(no row)") << key;
  }
}

TEST(CustomerKey, The_lookups_hold_the_trial_keys_one_after_the_other) {
  ClientsHouse house;
  house.Client("ClientID", "'Acme'");
  house.Client("ClientID", "'Acme1'");
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.traffic.statements.clear();
  house.Get();
  EXPECT_EQ(
      house.traffic.statements,
      (std::vector<std::string>{"SELECT * FROM Client;", "SELECT QBLinkID from Client WHERE QBLinkID = '" + id + "';",
                                "SELECT ClientID from Client WHERE ClientID = 'Acme';",
                                "SELECT ClientID from Client WHERE ClientID = 'Acme1';",
                                "SELECT ClientID from Client WHERE ClientID = 'Acme2';"}));
  EXPECT_EQ(house.ColumnOf("Acme2", "QBLinkID"), id);
}

TEST(CustomerKey, Is_cut_to_the_columns_size_ahead_of_the_lookup) {
  ClientsHouse house;
  NarrowClient(house, "8", "30");
  house.AddCustomer("<Name>Longname and more</Name>");
  house.Get();
  EXPECT_EQ(house.Keys(), "Longname");
}

TEST(CustomerKey, One_short_of_the_columns_size_has_room_for_nine_counters) {
  ClientsHouse house({.answers = "yes"});
  NarrowClient(house, "8", "30");
  house.Sql("INSERT INTO Client (ClientID) VALUES ('Longnam')");
  for (int i = 1; i <= 8; ++i) house.Sql("INSERT INTO Client (ClientID) VALUES ('Longnam" + std::to_string(i) + "')");
  house.AddCustomer("<Name>Longnam</Name>");
  house.Get();
  EXPECT_NE(house.ColumnOf("Longnam9", "QBLinkID"), "(no row)");
  EXPECT_EQ(Outcome(), TableOk::True);
  // The next one finds 10 cut back to 1, which was tried.
  house.Sql("UPDATE Client SET QBLinkID = NULL");
  house.Get();
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM Client"), "10");
  EXPECT_EQ(Outcome(), TableOk::GoOn);
}

TEST(CustomerKey, At_full_length_and_taken_it_ends_in_the_error_path_of_the_get) {
  ClientsHouse house({.answers = "yes"});
  NarrowClient(house, "8", "30");
  house.Sql("INSERT INTO Client (ClientID) VALUES ('Longname')");
  house.AddCustomer("<Name>Longname</Name>");
  house.AddCustomer("<Name>Other</Name>");
  house.Get();
  EXPECT_EQ(house.Keys(), "Longname,Other");
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_TRUE(house.BoxTexts()[0].starts_with("Error #: 457(1C9) -- "));
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveClientsToTW")));
  EXPECT_EQ(house.BoxTexts()[1], "Do you want to continue transfering rest of the records?");
  EXPECT_EQ(house.Log(), std::vector<std::string>{"Error transfering Client to Tallywick. Client = Longname"});
}

}  // namespace
}  // namespace twqb
