#include "CompanyTest.h"

namespace twqb::company {

namespace {

using Names = std::vector<std::string>;

class CustomerQuery : public CompanyTest {
 protected:
  Names NamesOf(std::string_view conditions) { return Query(conditions).All("FullName"); }
};

TEST_F(CustomerQuery, An_empty_file_has_nothing_to_find) {
  const auto answer = Query("");
  EXPECT_EQ(answer.code, 1);
  EXPECT_EQ(answer.severity, "Info");
  EXPECT_EQ(answer.message, "A query request did not find a matching object in QuickBooks");
  EXPECT_FALSE(answer.node.first_child());
}

TEST_F(CustomerQuery, Customers_come_in_the_order_of_full_names_parents_first_and_without_case) {
  for (const char* name : {"beta", "Alpha Two", "ALPHA", "Zulu", "alpha-x"}) AddNamed(name);
  AddJob("zz", "alpha");
  AddJob("AA", "Alpha");
  AddJob("Deep", "ALPHA:aa");
  EXPECT_EQ(NamesOf(""),
            (Names{"ALPHA", "ALPHA:AA", "ALPHA:AA:Deep", "ALPHA:zz", "Alpha Two", "alpha-x", "beta", "Zulu"}));
}

TEST_F(CustomerQuery, Inactive_customers_come_only_when_they_are_asked_for) {
  AddNamed("Acme");
  Add("<Name>Gone</Name><IsActive>false</IsActive>");
  EXPECT_EQ(NamesOf(""), Names{"Acme"});
  EXPECT_EQ(NamesOf("<ActiveStatus>ActiveOnly</ActiveStatus>"), Names{"Acme"});
  EXPECT_EQ(NamesOf("<ActiveStatus>InactiveOnly</ActiveStatus>"), Names{"Gone"});
  EXPECT_EQ(NamesOf("<ActiveStatus>All</ActiveStatus>"), (Names{"Acme", "Gone"}));
}

TEST_F(CustomerQuery, A_query_by_identifier_or_name_finds_inactive_customers_too) {
  const auto id = Add("<Name>Gone</Name><IsActive>false</IsActive>").Value("ListID");
  EXPECT_EQ(NamesOf("<ListID>" + id + "</ListID>"), Names{"Gone"});
  EXPECT_EQ(NamesOf("<FullName>GONE</FullName>"), Names{"Gone"});
}

TEST_F(CustomerQuery, Customers_named_one_by_one_come_each_once_in_the_order_of_full_names) {
  AddNamed("Zulu");
  AddNamed("Acme");
  AddJob("Roof", "Acme");
  EXPECT_EQ(NamesOf("<FullName>Zulu</FullName><FullName>acme:ROOF</FullName><FullName>zulu </FullName>"),
            (Names{"Acme:Roof", "Zulu"}));
}

TEST_F(CustomerQuery, What_is_not_there_is_told_beside_what_was_found) {
  const auto id = AddNamed("Acme").Value("ListID");
  const auto byName = Query("<FullName>Acme</FullName><FullName>No One</FullName><FullName>Nobody</FullName>");
  EXPECT_EQ(byName.code, 500);
  EXPECT_EQ(byName.severity, "Warn");
  EXPECT_EQ(
      byName.message,
      "The query request has not been fully completed.  There was a required element (\"No One\") that could not be "
      "found in QuickBooks.");
  EXPECT_EQ(byName.All("FullName"), Names{"Acme"});
  const auto byId = Query("<ListID>80000099-1</ListID><ListID>" + id + "</ListID>");
  EXPECT_EQ(byId.code, 500);
  EXPECT_NE(byId.message.find("(\"80000099-1\")"), std::string::npos);
  EXPECT_EQ(byId.All("FullName"), Names{"Acme"});
  EXPECT_EQ(Query("<FullName>Roof</FullName>").code, 500);
}

TEST_F(CustomerQuery, The_bounds_of_the_time_of_modification_are_inclusive) {
  AddNamed("First");
  machine_.Pass(60);
  AddNamed("Second");
  machine_.Pass(60);
  AddNamed("Third");
  EXPECT_EQ(NamesOf("<FromModifiedDate>2008-03-05T10:01:00-05:00</FromModifiedDate>"), (Names{"Second", "Third"}));
  EXPECT_EQ(NamesOf("<FromModifiedDate>2008-03-05T10:01:01-05:00</FromModifiedDate>"), Names{"Third"});
  EXPECT_EQ(NamesOf("<ToModifiedDate>2008-03-05T10:01:00-05:00</ToModifiedDate>"), (Names{"First", "Second"}));
  EXPECT_EQ(NamesOf("<FromModifiedDate>2008-03-05T10:01:00</FromModifiedDate><ToModifiedDate>2008-03-05T10:01:00"
                    "</ToModifiedDate>"),
            Names{"Second"});
}

TEST_F(CustomerQuery, The_offset_of_a_bound_is_dropped) {
  AddNamed("Acme");
  EXPECT_EQ(NamesOf("<FromModifiedDate>2008-03-05T10:00:00+09:00</FromModifiedDate>"), Names{"Acme"});
  EXPECT_EQ(Query("<FromModifiedDate>2008-03-05T10:00:01+09:00</FromModifiedDate>").code, 1);
}

TEST_F(CustomerQuery, A_bound_is_the_wall_clock_while_daylight_time_is_on) {
  machine_.zone.state = TimeZoneState::Daylight;
  AddNamed("Acme");
  EXPECT_EQ(NamesOf("<FromModifiedDate>2008-03-05T10:00:00</FromModifiedDate>"), Names{"Acme"});
  EXPECT_EQ(Query("<FromModifiedDate>2008-03-05T10:00:01</FromModifiedDate>").code, 1);
}

TEST_F(CustomerQuery, A_date_alone_means_the_whole_day) {
  AddNamed("Acme");
  EXPECT_EQ(NamesOf("<FromModifiedDate>2008-03-05</FromModifiedDate><ToModifiedDate>2008-03-05</ToModifiedDate>"),
            Names{"Acme"});
  EXPECT_EQ(Query("<ToModifiedDate>2008-03-04</ToModifiedDate>").code, 1);
  EXPECT_EQ(Query("<FromModifiedDate>2008-03-06</FromModifiedDate>").code, 1);
}

TEST_F(CustomerQuery, A_change_moves_a_customer_into_a_later_time) {
  const auto id = AddNamed("Acme").Value("ListID");
  machine_.Pass(60);
  Modify(id, "<Phone>1</Phone>");
  EXPECT_EQ(NamesOf("<FromModifiedDate>2008-03-05T10:01:00</FromModifiedDate>"), Names{"Acme"});
}

TEST_F(CustomerQuery, At_most_as_many_come_as_were_asked_for) {
  for (const char* name : {"C", "A", "B"}) AddNamed(name);
  EXPECT_EQ(NamesOf("<MaxReturned>2</MaxReturned>"), (Names{"A", "B"}));
  EXPECT_EQ(NamesOf("<MaxReturned>9</MaxReturned>"), (Names{"A", "B", "C"}));
}

TEST_F(CustomerQuery, Names_match_at_their_start_their_end_or_anywhere_without_case) {
  for (const char* name : {"\xC3\x89"
                           "toile",
                           "Big \xC3\x89"
                           "toile",
                           "Bigger", "100% Big"})
    AddNamed(name);
  AddJob("Bigtop", "Bigger");
  const auto match = [this](const std::string& criterion, const std::string& text) {
    return NamesOf("<NameFilter><MatchCriterion>" + criterion + "</MatchCriterion><Name>" + text +
                   "</Name></NameFilter>");
  };
  EXPECT_EQ(match("StartsWith", "BIG"), (Names{"Big \xC3\x89"
                                               "toile",
                                               "Bigger", "Bigger:Bigtop"}));
  EXPECT_EQ(match("StartsWith", "Big "), (Names{"Big \xC3\x89"
                                                "toile"}));
  EXPECT_EQ(match("EndsWith", "\xC3\xA9TOILE "), (Names{"Big \xC3\x89"
                                                        "toile",
                                                        "\xC3\x89"
                                                        "toile"}));
  EXPECT_EQ(match("EndsWith", "a much longer text than any of the names").size(), 0U);
  EXPECT_EQ(match("Contains", "0% b"), Names{"100% Big"});
  EXPECT_EQ(match("Contains", "_"), Names{});
}

TEST_F(CustomerQuery, A_range_of_names_is_inclusive_and_open_where_a_side_is_left_out) {
  for (const char* name : {"Alpha", "Beta", "beta two", "Gamma"}) AddNamed(name);
  const auto range = [this](const std::string& sides) {
    return NamesOf("<NameRangeFilter>" + sides + "</NameRangeFilter>");
  };
  EXPECT_EQ(range("<FromName>BETA</FromName><ToName>gamma</ToName>"), (Names{"Beta", "beta two", "Gamma"}));
  EXPECT_EQ(range("<FromName>beta</FromName><ToName>beta</ToName>"), Names{"Beta"});
  EXPECT_EQ(range("<FromName>beta</FromName>"), (Names{"Beta", "beta two", "Gamma"}));
  EXPECT_EQ(range("<ToName>beta</ToName>"), (Names{"Alpha", "Beta"}));
  EXPECT_EQ(range("").size(), 4U);
}

TEST_F(CustomerQuery, A_range_of_names_looks_at_the_name_of_a_job_and_not_at_its_parent_s) {
  AddNamed("Alpha");
  AddJob("Zeta", "Alpha");
  EXPECT_EQ(NamesOf("<NameRangeFilter><FromName>y</FromName></NameRangeFilter>"), Names{"Alpha:Zeta"});
}

class CustomerBalance : public CompanyTest, public testing::WithParamInterface<std::pair<const char*, Names>> {};

TEST_P(CustomerBalance, Is_compared_with_the_total) {
  Add("<Name>Low</Name><OpenBalance>-5.00</OpenBalance>");
  Add("<Name>Even</Name><OpenBalance>10.00</OpenBalance>");
  AddNamed("Parent");
  Add("<Name>Job</Name><ParentRef><FullName>Parent</FullName></ParentRef><OpenBalance>10.01</OpenBalance>");
  const auto [operation, expected] = GetParam();
  EXPECT_EQ(Query(std::string("<TotalBalanceFilter><Operator>") + operation +
                  "</Operator><Amount>10.00</Amount></TotalBalanceFilter>")
                .All("FullName"),
            expected);
}

INSTANTIATE_TEST_SUITE_P(Operators, CustomerBalance,
                         testing::Values(std::pair{"LessThan", Names{"Low"}},
                                         std::pair{"LessThanEqual", Names{"Even", "Low"}},
                                         std::pair{"Equal", Names{"Even"}},
                                         std::pair{"GreaterThan", Names{"Parent", "Parent:Job"}},
                                         std::pair{"GreaterThanEqual", Names{"Even", "Parent", "Parent:Job"}}),
                         [](const auto& test) { return std::string(test.param.first); });

TEST_F(CustomerQuery, All_conditions_of_a_filter_hold_together) {
  for (const char* name : {"Alpha", "Albert", "Beta"}) AddNamed(name);
  machine_.Pass(60);
  AddNamed("Alto");
  Add("<Name>Alum</Name><IsActive>false</IsActive>");
  EXPECT_EQ(
      NamesOf("<MaxReturned>2</MaxReturned><ActiveStatus>All</ActiveStatus><FromModifiedDate>2008-03-05T10:01:00"
              "</FromModifiedDate><ToModifiedDate>2008-03-06</ToModifiedDate><NameFilter><MatchCriterion>StartsWith"
              "</MatchCriterion><Name>al</Name></NameFilter><TotalBalanceFilter><Operator>Equal</Operator><Amount>0.00"
              "</Amount></TotalBalanceFilter>"),
      (Names{"Alto", "Alum"}));
}

TEST_F(CustomerQuery, An_owner_of_data_extensions_may_be_named_though_there_are_none) {
  AddNamed("Acme");
  EXPECT_EQ(NamesOf("<OwnerID>0</OwnerID>"), Names{"Acme"});
}

}  // namespace

}  // namespace twqb::company
