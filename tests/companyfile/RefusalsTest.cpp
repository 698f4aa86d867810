// What is refused of a set: the one request whose values can't be read, or that is about records that the file does not
// keep; or the document, for its version.

#include "ListTest.h"
#include "adapters/companyfile/RefusedDocument.h"

namespace twqb::company {

namespace {

constexpr ErrorNumber kNoRollback = 0x80040413;

struct Told {
  const char* name;
  std::string request;
  int code;
  std::string message;
};
void PrintTo(const Told& told, std::ostream* out) { *out << told.request; }

class WrongValue : public CompanyTest, public testing::WithParamInterface<Told> {};

TEST_P(WrongValue, Refuses_its_request_and_the_others_are_carried_out) {
  const auto& told = GetParam();
  const auto answers = SendAll(told.request + AddRequest("<Name>Second</Name>"));
  EXPECT_EQ(answers[0].code, told.code);
  EXPECT_EQ(answers[0].message, told.message);
  EXPECT_EQ(answers[0].severity, "Error");
  EXPECT_FALSE(answers[0].node.first_child());
  EXPECT_EQ(answers[1].code, 0);
  EXPECT_EQ(Query("<ActiveStatus>All</ActiveStatus>").All("Name"), std::vector<std::string>{"Second"});
}

std::string Customer(const std::string& field) { return AddRequest("<Name>Acme</Name>" + field); }
std::string Modified(const std::string& from, const std::string& to) {
  return QueryRequest("<FromModifiedDate>" + from + "</FromModifiedDate><ToModifiedDate>" + to + "</ToModifiedDate>");
}
std::string Names(const std::string& from, const std::string& to) {
  return QueryRequest("<NameRangeFilter><FromName>" + from + "</FromName><ToName>" + to +
                      "</ToName></NameRangeFilter>");
}
std::string Converting(const std::string& what, const std::string& value, const std::string& field) {
  return "There was an error when converting the " + what + " \"" + value + "\" in the field \"" + field + "\".";
}
std::string Item(const std::string& field) {
  return "<ItemServiceAddRq><ItemServiceAdd><Name>A</Name><SalesOrPurchase>" + field +
         "<AccountRef><FullName>Fees</FullName></AccountRef></SalesOrPurchase></ItemServiceAdd></ItemServiceAddRq>";
}

INSTANTIATE_TEST_SUITE_P(
    Types, WrongValue,
    testing::Values(
        Told{"Truth_value", Customer("<IsActive>True</IsActive>"), 3010,
             Converting("boolean value", "True", "IsActive")},
        Told{"Empty_truth_value", Customer("<IsActive></IsActive>"), 3010, Converting("boolean value", "", "IsActive")},
        Told{"Date", Customer("<JobStartDate>3/5/2008</JobStartDate>"), 3020,
             Converting("date value", "3/5/2008", "JobStartDate")},
        Told{"Day_that_is_not", Customer("<JobStartDate>2007-02-29</JobStartDate>"), 3020,
             Converting("date value", "2007-02-29", "JobStartDate")},
        Told{"Time", QueryRequest("<FromModifiedDate>2008-03-05 10:00</FromModifiedDate>"), 3020,
             Converting("date value", "2008-03-05 10:00", "FromModifiedDate")},
        Told{"Interval",
             "<TimeTrackingAddRq><TimeTrackingAdd><EntityRef><FullName>Ann</FullName></EntityRef>"
             "<Duration>1:30</Duration></TimeTrackingAdd></TimeTrackingAddRq>",
             3035, Converting("time interval", "1:30", "Duration")},
        Told{"Price", Item("<Price>twelve</Price>"), 3045, Converting("price", "twelve", "Price")},
        Told{"Percentage", Item("<PricePercent>half</PricePercent>"), 3050,
             Converting("percentage", "half", "PricePercent")},
        Told{"Quantity",
             "<ItemGroupAddRq><ItemGroupAdd><Name>Kit</Name><ItemGroupLine><Quantity>two</Quantity></ItemGroupLine>"
             "</ItemGroupAdd></ItemGroupAddRq>",
             3060, Converting("quantity", "two", "Quantity")}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Bounds, WrongValue,
    testing::Values(Told{"Times", Modified("2008-03-05T10:00:01", "2008-03-05T10:00:00"), 3030,
                         "Invalid date range: \"2008-03-05T10:00:01\" is later than \"2008-03-05T10:00:00\"."},
                    Told{"Days",
                         "<InvoiceQueryRq><TxnDateRangeFilter><FromTxnDate>2008-03-05</FromTxnDate>"
                         "<ToTxnDate>2008-03-04</ToTxnDate></TxnDateRangeFilter></InvoiceQueryRq>",
                         3030, "Invalid date range: \"2008-03-05\" is later than \"2008-03-04\"."},
                    Told{"Names", Names("b", "A"), 3031, "Invalid name range: \"b\" comes after \"A\"."},
                    Told{"Numbers",
                         "<InvoiceQueryRq><RefNumberRangeFilter><FromRefNumber>10</FromRefNumber>"
                         "<ToRefNumber>9</ToRefNumber></RefNumberRangeFilter></InvoiceQueryRq>",
                         3031, "Invalid name range: \"10\" comes after \"9\"."},
                    Told{
                        "Limit_of_none", QueryRequest("<MaxReturned>0</MaxReturned>"), 3210,
                        "The \"MaxReturned\" field has an invalid value \"0\".  QuickBooks error message: It must be 1 "
                        "or more."},
                    Told{"Limit_below_none", QueryRequest("<MaxReturned>-1</MaxReturned>"), 3210,
                         "The \"MaxReturned\" field has an invalid value \"-1\".  QuickBooks error message: It must be "
                         "1 or more."}),
    [](const auto& test) { return std::string(test.param.name); });

class Refusals : public ListTest {};

TEST_F(Refusals, Bounds_that_are_equal_or_open_are_right) {
  for (const auto& request :
       {Modified("2008-03-05T10:00:00", "2008-03-05T10:00:00"), Modified("2008-03-05T23:00:00", "2008-03-05"),
        Names("a", "A"), QueryRequest("<FromModifiedDate>2008-03-05</FromModifiedDate>"),
        QueryRequest("<NameRangeFilter><FromName>z</FromName></NameRangeFilter>")}) {
    EXPECT_EQ(Send(request).code, 1) << request;
  }
}

TEST_F(Refusals, An_identifier_of_a_request_has_50_characters_at_most) {
  const auto with = [](const std::string& id) { return "<HostQueryRq requestID=\"" + id + "\"/>"; };
  EXPECT_EQ(Send(with(std::string(50, 'x'))).code, 0);
  const std::string tooLong(51, 'x');
  const auto answer = Send(with(tooLong));
  EXPECT_EQ(answer.code, 1060);
  EXPECT_EQ(answer.message, "The request ID \"" + tooLong + "\" is too long.");
  EXPECT_EQ(answer.id, tooLong);
}

TEST_F(Refusals, A_wrong_value_stops_a_set_that_stops_on_errors) {
  const auto answers =
      SendAll(Customer("<IsActive>yes</IsActive>") + AddRequest("<Name>Second</Name>"), "3.0", "stopOnError");
  EXPECT_EQ(answers[0].code, 3010);
  EXPECT_EQ(answers[1].code, 3231);
}

TEST_F(Refusals, A_wrong_value_does_not_hide_an_element_that_refuses_the_document) {
  EXPECT_EQ(RefusalOfRequest(Customer("<IsActive>yes</IsActive><Shoe>9</Shoe>")), kRefused);
}

// --- Requests about other records ------------------------------------------------------------------------------------

TEST_F(Refusals, A_published_request_about_records_that_the_file_does_not_keep_is_not_supported) {
  for (const auto* name : {"DepositAdd", "PurchaseOrderQuery", "SalesReceiptAdd", "JournalEntryAdd", "DataExtDefDel",
                           "CompanyQuery", "PreferencesQuery", "TxnVoid", "GeneralSummaryReportQuery", "InvoiceMod"}) {
    const std::string request(name);
    const auto answers = SendAll("<" + request + "Rq requestID=\"8\"><Whatever><Stands>there</Stands></Whatever></" +
                                 request + "Rq>" + AddRequest("<Name>" + request + "</Name>"));
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].node.name(), request + "Rs");
    EXPECT_EQ(answers[0].code, 1030) << name;
    EXPECT_EQ(answers[0].severity, "Error");
    EXPECT_EQ(answers[0].message, "Unsupported message: \"" + request + "Rq\".");
    EXPECT_EQ(answers[0].id, "8");
    EXPECT_EQ(answers[1].code, 0) << name;
  }
}

TEST_F(Refusals, A_request_that_was_never_published_refuses_the_document) {
  for (const auto* name : {"DepositFindRq", "DepositRq", "DepositAddRs", "DepositAdd", "VehicleAddRq", "TxnVoidAddRq",
                           "depositaddrq", "AddRq", "TermsAddRq"}) {
    EXPECT_EQ(RefusalOfRequest("<" + std::string(name) + "/>"), kRefused) << name;
  }
}

TEST_F(Refusals, A_request_that_is_not_supported_counts_as_an_error_of_its_set) {
  const auto answers = SendAll("<DepositQueryRq/><HostQueryRq/>", "3.0", "stopOnError");
  EXPECT_EQ(answers[0].code, 1030);
  EXPECT_EQ(answers[1].code, 3231);
}

// --- Versions --------------------------------------------------------------------------------------------------------

TEST_F(Refusals, A_version_or_form_that_is_not_there_is_told_by_a_number_of_its_own) {
  for (const auto* tag : {"4.0", "4.1", "5.0", "6.0", "7.0", "10.0", "13.0", "16.0", "2.2", "CA3.0", "UK3.0", "AU3.0",
                          "NZ3.0", "US3.0", "CA16.0"}) {
    EXPECT_EQ(RefusalOfRequest("<HostQueryRq/>", tag), kUnknownVersion) << tag;
    EXPECT_EQ(RefusalOfRequest("", tag), kUnknownVersion) << tag;
    EXPECT_EQ(RefusalOfRequest("<Broken/>", tag), kUnknownVersion) << tag << ": the version is looked at first";
  }
  EXPECT_EQ(RefusalOfRequest("<HostQueryRq/>", "3.0"), 0U);
}

TEST_F(Refusals, A_version_that_is_none_is_no_document) {
  for (const auto* tag :
       {"", "3", "3.", ".0", "3.0.0", "03.0", "3.00", "-3.0", "3.x", "ca3.0", "C3.0", "CAN3.0", "100.0", " 3.0"}) {
    EXPECT_EQ(RefusalOfRequest("<HostQueryRq/>", tag), kRefused) << tag;
  }
}

TEST_F(Refusals, The_text_of_an_unknown_version_is_the_published_one_alone_with_the_reason_beside_it) {
  for (const auto& [request, tag, reason] :
       {std::tuple{"<HostQueryRq/>", "4.0", "Requested: \"4.0\"."},
        std::tuple{"<HostQueryRq/>", "CA3.0", "This company data file does not take \"CA3.0\"."}}) {
    try {
      static_cast<void>(file_->Process(Document(request, tag)));
      ADD_FAILURE() << "nothing was raised";
    } catch (const RefusedDocument& raised) {
      EXPECT_EQ(raised.number(), kUnknownVersion);
      EXPECT_EQ(raised.description(), "The version of QBXML that was requested is not supported or is unknown.");
      EXPECT_EQ(raised.detail(), reason);
    }
  }
}

TEST_F(Refusals, A_program_that_tries_forms_in_turn_comes_to_the_one_that_the_file_takes) {
  MakeFile({.country = messages::Country::CA, .accepts = {messages::Country::CA}});
  std::string taken;
  for (const auto* tag : {"5.0", "3.0", "UK3.0", "CA3.0"}) {
    const auto raised = RefusalOfRequest("<HostQueryRq/>", tag);
    if (raised == 0 && taken.empty()) taken = tag;
    EXPECT_TRUE(raised == 0 || raised == kUnknownVersion) << tag;
  }
  EXPECT_EQ(taken, "CA3.0");
}

TEST_F(Refusals, An_Australian_form_has_the_host_query_alone) {
  MakeFile({.country = messages::Country::AU, .accepts = {messages::Country::AU}});
  EXPECT_EQ(RefusalOfRequest("<HostQueryRq/>", "AU3.0"), 0U);
  EXPECT_EQ(RefusalOfRequest("<HostQueryRq/>", "3.0"), kUnknownVersion);
  EXPECT_EQ(RefusalOfRequest("<CustomerQueryRq/>", "3.0"), 0U);
  EXPECT_EQ(RefusalOfRequest("<CustomerQueryRq/>", "AU3.0"), kUnknownVersion);
  EXPECT_EQ(RefusalOfRequest("<CustomerQueryRq/>", "CA3.0"), kUnknownVersion);
}

TEST_F(Refusals, A_set_that_is_to_be_taken_back_after_an_error_is_refused_as_a_whole) {
  EXPECT_EQ(RefusalOf(Document(AddRequest("<Name>Acme</Name>"), "3.0", "rollbackOnError")), kNoRollback);
  EXPECT_EQ(Query("").code, 1);
}

// --- Document types --------------------------------------------------------------------------------------------------

std::string Typed(const std::string& type, const std::string& versionLine = {}) {
  return "<?xml version=\"1.0\"?>" + type + versionLine +
         "<QBXML><QBXMLMsgsRq onError=\"stopOnError\"><CustomerQueryRq/></QBXMLMsgsRq></QBXML>";
}
std::string PublicType(const std::string& tag) {
  return "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD " + tag + "//EN' 'http://developer.intuit.com'>";
}

TEST_F(Refusals, A_published_document_type_is_passed_over_and_names_the_version) {
  for (const auto* tag : {"1.0", "1.1", "2.0", "3.0"}) {
    EXPECT_EQ(RefusalOf(Typed(PublicType(tag))), 0U) << tag;
    EXPECT_EQ(RefusalOf(Typed(PublicType(tag), "<?qbxml version=\"2.0\"?>")), 0U) << tag;
  }
  EXPECT_EQ(RefusalOf(Typed("\n<!DOCTYPE QBXML\n  PUBLIC \"-//INTUIT//DTD QBXML QBD 1.0//EN\"\n"
                            "  \"http://developer.intuit.com\" >\n")),
            0U);
}

TEST_F(Refusals, The_version_that_a_document_type_names_is_the_version_of_the_document) {
  const auto document = [](const std::string& tag) {
    return "<?xml version=\"1.0\"?>" + PublicType(tag) + "<QBXML><QBXMLMsgsRq onError=\"stopOnError\">" +
           AddRequest("<Name>N" + tag + "</Name><Notes>n</Notes>") + "</QBXMLMsgsRq></QBXML>";
  };
  EXPECT_EQ(RefusalOf(document("1.0")), kRefused) << "notes came later";
  EXPECT_EQ(RefusalOf(document("3.0")), 0U);
  EXPECT_EQ(RefusalOf(document("4.0")), kUnknownVersion);
  EXPECT_EQ(RefusalOf(document("CA3.0")), kUnknownVersion);
}

TEST_F(Refusals, Any_other_document_type_is_refused) {
  const std::string line = "<?qbxml version=\"3.0\"?>";
  for (const std::string type :
       {"<!DOCTYPE QBXML>", "<!DOCTYPE QBXML []>", "<!DOCTYPE QBXML SYSTEM 'qbxml.dtd'>",
        "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 3.0//EN'>",
        "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 3.0//EN' 'http://developer.intuit.com' []>",
        "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 3.0//EN' 'http://developer.intuit.com' "
        "[<!ENTITY who 'me'>]>",
        "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 3.0' 'http://developer.intuit.com'>",
        "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD //EN' 'http://developer.intuit.com'>",
        "<!DOCTYPE QBXML PUBLIC '-//W3C//DTD XHTML 1.0//EN' 'http://www.w3.org'>",
        "<!DOCTYPE QBPOSXML PUBLIC '-//INTUIT//DTD QBXML QBD 3.0//EN' 'http://developer.intuit.com'>",
        "<!DOCTYPEQBXML PUBLIC '-//INTUIT//DTD QBXML QBD 3.0//EN' 'http://developer.intuit.com'>",
        "<!ELEMENT QBXML ANY>"}) {
    EXPECT_EQ(RefusalOf(Typed(type, line)), kRefused) << type;
  }
  for (const auto* tag : {"4.0", "9.9", "US3.0", "NZ3.0", "AU1.0"}) {
    EXPECT_EQ(RefusalOf(Typed(PublicType(tag), line)), kRefused) << tag << ", which was never published";
  }
  EXPECT_EQ(RefusalOf(Typed(PublicType("CA3.0"), line)), 0U) << "which was";
  EXPECT_EQ(RefusalOf(Typed(PublicType("3.0") + PublicType("3.0"))), kRefused) << "two of them";
  EXPECT_EQ(RefusalOf(Typed(line) + PublicType("3.0")), kRefused) << "behind the root";
}

}  // namespace

}  // namespace twqb::company
