// Which fields of a client go to QuickBooks, and in which shape.

#include <gtest/gtest.h>

#include <map>

#include "services/Database.h"
#include "tests/lists/ClientsHouse.h"

namespace twqb {
namespace {

using Columns = std::map<std::string, std::string>;  // as SQL expressions; what is not there is NULL

constexpr std::string_view kColumns[] = {"ClientID",        "ClientCompany",  "ClientFName",  "ClientLName",
                                         "ClientMI",        "ClientMainSalt", "ClientStreet", "ClientStreet2",
                                         "ClientCity",      "ClientState",    "ClientZip",    "ClientPhone",
                                         "ClientMainPhone", "ClientFax",      "ClientEmail"};

class FieldsHouse : public ClientsHouse {
 public:
  explicit FieldsHouse(std::string_view country = "US") : ClientsHouse({}, {}, country) {
    connection_ = database.CreateConnection();
    OpenConnection(*connection_, nullptr, "");
  }
  std::unique_ptr<ado::Recordset> Row(const Columns& columns) {
    std::string sql;
    for (const auto column : kColumns) {
      const auto given = columns.find(std::string(column));
      sql += sql.empty() ? "SELECT " : ", ";
      sql += (given == columns.end() ? "NULL" : given->second) + " AS " + std::string(column);
    }
    return connection_->OpenRecordset(sql, ado::CursorType::Static, ado::LockType::ReadOnly);
  }
  std::string Name(const Columns& columns) { return GetQBClientName(*Row(columns)); }
  // The fields as they go on the wire.
  std::string Fields(const Columns& columns, RequestKind kind = RequestKind::Mod, const SendRecord& record = {}) {
    const auto country = Vars().g_QBCountry;
    auto set = Session().CreateMsgSetRequest(country == "CA" || country == "UK" ? country : "US", 3, 0);
    const auto request = set.Append(kind == RequestKind::Add ? "CustomerAddRq" : "CustomerModRq");
    AssignClientFldValues(request, *Row(columns), kind, record);
    const auto xml = set.ToXMLString();
    const auto open = std::string(kind == RequestKind::Add ? "<CustomerAdd>" : "<CustomerMod>");
    const auto from = xml.find(open) + open.size();
    return xml.substr(from, xml.find("</Customer", from) - from);
  }
  std::string Field(const Columns& columns, std::string_view element) { return TextOf(Fields(columns), element); }

 private:
  std::unique_ptr<ado::Connection> connection_;
};

std::string Letters(std::size_t count) { return std::string(count, 'x'); }
std::string Quoted(const std::string& text) { return "'" + text + "'"; }

// --- The name --------------------------------------------------------------------------------------------------------

TEST(ClientName, Is_the_key_without_a_company_or_with_an_empty_one) {
  FieldsHouse house;
  EXPECT_EQ(house.Name({{"ClientID", "'ACME1'"}}), "ACME1");
  EXPECT_EQ(house.Name({{"ClientID", "'ACME1'"}, {"ClientCompany", "''"}}), "ACME1");
}

TEST(ClientName, Is_the_key_when_the_company_is_the_same_in_any_case) {
  FieldsHouse house;
  EXPECT_EQ(house.Name({{"ClientID", "'Acme'"}, {"ClientCompany", "'aCME'"}}), "Acme");
  EXPECT_EQ(house.Name({{"ClientID", "'Müller'"}, {"ClientCompany", "'MÜLLER'"}}), "Müller");
}

TEST(ClientName, Is_the_company_with_the_key_in_brackets_otherwise) {
  FieldsHouse house;
  EXPECT_EQ(house.Name({{"ClientID", "'ACME1'"}, {"ClientCompany", "'Acme Tools'"}}), "Acme Tools (ACME1)");
  EXPECT_EQ(house.Name({{"ClientID", "'ACME1'"}, {"ClientCompany", "' '"}}), "  (ACME1)");
}

TEST(ClientFields, The_name_is_set_on_an_Add_alone_and_cut) {
  FieldsHouse house;
  const SendRecord record{.countedName = Letters(42)};
  EXPECT_EQ(house.TextOf(house.Fields({}, RequestKind::Add, record), "Name"), Letters(41));
  EXPECT_EQ(house.TextOf(house.Fields({}, RequestKind::Mod, record), "Name"), "(none)");
}

// --- The fields ------------------------------------------------------------------------------------------------------

TEST(ClientFields, A_full_client_is_sent_with_every_field_at_its_place) {
  FieldsHouse house;
  EXPECT_EQ(house.Fields({{"ClientCompany", "'Acme & Co'"},
                          {"ClientFName", "'Ann'"},
                          {"ClientLName", "'Lee'"},
                          {"ClientMI", "'B'"},
                          {"ClientMainSalt", "'Dr.'"},
                          {"ClientStreet", "'1 Main'"},
                          {"ClientStreet2", "'Floor 2'"},
                          {"ClientCity", "'Boston'"},
                          {"ClientState", "'MA'"},
                          {"ClientZip", "'02110'"},
                          {"ClientPhone", "'617 555 0123'"},
                          {"ClientMainPhone", "'617.555.0124 x9'"},
                          {"ClientFax", "'(617)555-0125'"},
                          {"ClientEmail", "'a@b.example'"}},
                         RequestKind::Add, {.countedName = "Acme"}),
            "<Name>Acme</Name><CompanyName>Acme &amp; Co</CompanyName><Salutation>Dr.</Salutation>"
            "<FirstName>Ann</FirstName><MiddleName>B</MiddleName><LastName>Lee</LastName>"
            "<BillAddress><Addr1>Acme &amp; Co</Addr1><Addr2>1 Main</Addr2><Addr3>Floor 2</Addr3><City>Boston</City>"
            "<State>MA</State><PostalCode>02110</PostalCode></BillAddress>"
            "<Phone>(617)-555-0123</Phone><AltPhone>(617)-555-01249</AltPhone><Fax>(617)-555-0125</Fax>"
            "<Email>a@b.example</Email>");
}

TEST(ClientFields, An_empty_client_sends_empty_fields_and_a_dot) {
  FieldsHouse house;
  EXPECT_EQ(house.Fields({}),
            "<CompanyName></CompanyName><FirstName></FirstName><MiddleName></MiddleName><LastName></LastName>"
            "<BillAddress><Addr1>.</Addr1><City></City><State></State><PostalCode></PostalCode></BillAddress>"
            "<Phone></Phone><AltPhone></AltPhone><Fax></Fax><Email></Email>");
}

TEST(ClientFields, The_salutation_goes_untrimmed_and_uncut_unless_it_is_blank) {
  FieldsHouse house;
  EXPECT_EQ(house.Field({{"ClientMainSalt", "' Dr. '"}}, "Salutation"), " Dr. ");
  EXPECT_EQ(house.Field({{"ClientMainSalt", Quoted(Letters(40))}}, "Salutation"), Letters(40));
  EXPECT_EQ(house.Field({{"ClientMainSalt", "'   '"}}, "Salutation"), "(none)");
  EXPECT_EQ(house.Field({{"ClientMainSalt", "''"}}, "Salutation"), "(none)");
}

TEST(ClientFields, The_e_mail_goes_uncut) {
  FieldsHouse house;
  EXPECT_EQ(house.Field({{"ClientEmail", Quoted(Letters(150))}}, "Email"), Letters(150));
}

struct AddressCase {
  std::string company;  // as SQL
  std::string street;
  std::string street2;
  std::string lines;  // what stands ahead of the city
};

TEST(ClientFields, The_first_line_is_a_dot_only_when_none_of_the_three_was_set) {
  FieldsHouse house;
  const AddressCase cases[] = {
      {"NULL", "NULL", "NULL", "<Addr1>.</Addr1>"},
      {"''", "NULL", "NULL", "<Addr1>.</Addr1>"},
      {"'Acme'", "NULL", "NULL", "<Addr1>Acme</Addr1>"},
      {"NULL", "'1 Main'", "NULL", "<Addr2>1 Main</Addr2>"},
      {"NULL", "NULL", "'Floor 2'", "<Addr3>Floor 2</Addr3>"},
      {"''", "'1 Main'", "'Floor 2'", "<Addr2>1 Main</Addr2><Addr3>Floor 2</Addr3>"},
      {"NULL", "''", "NULL", "<Addr2></Addr2>"},  // an empty street is set; only NULL is not
      {"NULL", "NULL", "''", "<Addr3></Addr3>"},
      {"'Acme'", "''", "''", "<Addr1>Acme</Addr1><Addr2></Addr2><Addr3></Addr3>"},
  };
  for (const auto& c : cases) {
    const auto xml =
        house.Fields({{"ClientCompany", c.company}, {"ClientStreet", c.street}, {"ClientStreet2", c.street2}});
    const auto from = xml.find("<BillAddress>") + std::string_view("<BillAddress>").size();
    EXPECT_EQ(xml.substr(from, xml.find("<City>") - from), c.lines);
  }
}

struct CutCase {
  std::string column;
  std::string element;
  std::size_t length;
};

TEST(ClientFields, Every_other_text_is_cut_to_the_greatest_length_of_its_field) {
  FieldsHouse house;
  const CutCase cases[] = {{"ClientCompany", "CompanyName", 41}, {"ClientCompany", "Addr1", 41},
                           {"ClientStreet", "Addr2", 41},        {"ClientStreet2", "Addr3", 41},
                           {"ClientCity", "City", 31},           {"ClientState", "State", 21},
                           {"ClientZip", "PostalCode", 13}};
  for (const auto& c : cases) {
    EXPECT_EQ(house.Field({{c.column, Quoted(Letters(c.length))}}, c.element), Letters(c.length)) << c.element;
    EXPECT_EQ(house.Field({{c.column, Quoted(Letters(c.length + 1))}}, c.element), Letters(c.length)) << c.element;
  }
  const auto xml = house.Fields(
      {{"ClientFName", Quoted(Letters(26))}, {"ClientLName", Quoted(Letters(26))}, {"ClientMI", Quoted(Letters(6))}},
      RequestKind::Mod, {});
  EXPECT_EQ(house.TextOf(xml, "FirstName"), Letters(25));
  EXPECT_EQ(house.TextOf(xml, "LastName"), Letters(25));
  EXPECT_EQ(house.TextOf(xml, "MiddleName"), Letters(5));
}

TEST(ClientFields, A_cut_counts_characters_not_bytes) {
  FieldsHouse house;
  EXPECT_EQ(house.Field({{"ClientZip", "'ééééééééééééééé'"}}, "PostalCode"), "ééééééééééééé");
}

TEST(ClientFields, Phones_are_formatted_and_then_cut) {
  FieldsHouse house;
  for (const std::string_view pair : {"ClientPhone Phone", "ClientMainPhone AltPhone", "ClientFax Fax"}) {
    const auto names = Split(pair, ' ');
    EXPECT_EQ(house.Field({{names[0], "'6175550123'"}}, names[1]), "(617)-555-0123") << pair;
    EXPECT_EQ(house.Field({{names[0], "'call me'"}}, names[1]), "") << pair;
    EXPECT_EQ(house.Field({{names[0], "'4'"}}, names[1]), "(4)") << pair;
    // 21 characters: four for signs, seventeen digits.
    EXPECT_EQ(house.Field({{names[0], "'123456789012345678901'"}}, names[1]), "(123)-456-78901234567") << pair;
  }
}

TEST(ClientFields, The_state_goes_to_the_field_of_the_country_found) {
  for (const std::string_view pair : {"US State", "AU State", "CA Province", "UK County"}) {
    const auto parts = Split(pair, ' ');
    FieldsHouse house(parts[0]);
    const auto fields = house.Fields({{"ClientState", "'Kent'"}});
    for (const std::string_view field : {"State", "Province", "County"}) {
      EXPECT_EQ(SpiedHouse::TextOf(fields, field), field == parts[1] ? "Kent" : "(none)") << pair << " " << field;
    }
  }
}

// --- Through a transfer ----------------------------------------------------------------------------------------------

TEST(ClientFields, Start_date_and_status_are_not_sent) {
  ClientsHouse house;
  house.Client("ClientID, ClientSince, Status", "'ACME', '2001-02-03', 'InActive'");
  house.Send();
  EXPECT_EQ(house.CustomerField(house.ListIdOf("ACME"), "IsActive"), "true");
  EXPECT_EQ(house.Requests("CustomerAddRq").at(0).find("2001"), std::string::npos);
}

TEST(ClientFields, A_Mod_does_not_rename_the_customer) {
  ClientsHouse house;
  house.Client("ClientID, ClientCompany", "'ACME1', 'Acme Tools'");
  house.Send();
  house.Sql("UPDATE Client SET ClientCompany = 'Acme Machines'");
  house.Send();
  const auto id = house.ListIdOf("Acme Tools (ACME1)");
  EXPECT_EQ(house.CustomerField(id, "CompanyName"), "Acme Machines");
}

TEST(ClientFields, A_salutation_that_is_too_long_for_QuickBooks_comes_back_as_its_refusal) {
  ClientsHouse house({.answers = "yes"});
  house.Client("ClientID, ClientMainSalt", "'ACME', 'Dr.'");
  house.SendSelection(ReplaceAll(BuildSelectSQL(enClients, {.IgnoreLastSync = true}), "ClientMainSalt",
                                 "'Sir Doctor Professor' AS ClientMainSalt"));
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].starts_with(
      RefusalText("The string \"Sir Doctor Professor\" in the field \"Salutation\" is too long.", 3070, "Error")));
}

TEST(ClientFields, A_British_client_has_its_county) {
  ClientsHouse house({.company = {.country = messages::Country::UK}}, {}, "UK");
  house.Client("ClientID, ClientState", "'ACME', 'Kent'");
  house.Send();
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_EQ(house.TextOf(house.Requests("CustomerAddRq").at(0), "County"), "Kent");
  EXPECT_NE(house.ColumnOf("ACME", "QBLinkID"), "NULL");
}

}  // namespace
}  // namespace twqb
