#include "CompanyTest.h"
#include "adapters/companyfile/RefusedDocument.h"

namespace twqb::company {

namespace {

class CompanyDocument : public CompanyTest {};

TEST_F(CompanyDocument, An_answer_carries_the_status_of_each_request_and_its_identifier) {
  SendAll("<CustomerAddRq requestID=\"7\"><CustomerAdd><Name>Acme</Name></CustomerAdd></CustomerAddRq>");
  EXPECT_TRUE(
      text_.starts_with("<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><CustomerAddRs requestID=\"7\" statusCode=\"0\" "
                        "statusSeverity=\"Info\" statusMessage=\"Status OK\"><CustomerRet><ListID>"))
      << text_;
  EXPECT_TRUE(text_.ends_with("</CustomerRet></CustomerAddRs></QBXMLMsgsRs></QBXML>")) << text_;
}

TEST_F(CompanyDocument, A_request_without_an_identifier_is_answered_without_one) {
  SendAll("<CustomerQueryRq/>");
  EXPECT_NE(text_.find("<CustomerQueryRs statusCode=\"1\" statusSeverity=\"Info\""), std::string::npos) << text_;
}

TEST_F(CompanyDocument, An_identifier_comes_back_as_it_was_given) {
  EXPECT_EQ(Send("<CustomerQueryRq requestID=\"a &amp; &quot;b&quot; &lt;\"/>").id, "a & \"b\" <");
}

TEST_F(CompanyDocument, A_set_without_requests_is_answered_with_an_empty_set) {
  EXPECT_TRUE(SendAll("").empty());
  EXPECT_NE(text_.find("<QBXMLMsgsRs></QBXMLMsgsRs>"), std::string::npos);
}

TEST_F(CompanyDocument, Each_request_sees_what_those_before_it_did) {
  const auto answers = SendAll(AddRequest("<Name>Acme</Name>") +
                               AddRequest("<Name>Roof</Name><ParentRef><FullName>ACME</FullName></ParentRef>") +
                               QueryRequest("<FullName>acme:roof</FullName>"));
  ASSERT_EQ(answers.size(), 3U);
  EXPECT_EQ(answers[1].code, 0);
  EXPECT_EQ(answers[2].Value("FullName"), "Acme:Roof");
}

TEST_F(CompanyDocument, Requests_go_on_after_an_error_when_the_set_says_so) {
  const auto answers =
      SendAll(AddRequest("<Name>A:B</Name>") + AddRequest("<Name>Acme</Name>"), "3.0", "continueOnError");
  EXPECT_EQ(answers[0].code, 3090);
  EXPECT_EQ(answers[1].code, 0);
}

TEST_F(CompanyDocument, An_error_stops_the_set_that_says_so_and_keeps_what_came_before) {
  const auto answers = SendAll(AddRequest("<Name>Acme</Name>") + AddRequest("<Name>A:B</Name>") +
                                   AddRequest("<Name>Other</Name>") + "<HostQueryRq/>",
                               "3.0", "stopOnError");
  EXPECT_EQ(answers[0].code, 0);
  EXPECT_EQ(answers[1].code, 3090);
  EXPECT_EQ(answers[2].code, 3231);
  EXPECT_EQ(answers[2].severity, "Error");
  EXPECT_EQ(answers[3].code, 3231);
  EXPECT_EQ(Query("").All("Name"), std::vector<std::string>{"Acme"});
}

TEST_F(CompanyDocument, Thousands_of_queries_for_everything_are_answered_within_bounds) {
  constexpr int kQueries = 3000;
  const std::string name = "<Name>Acme ";
  std::string adds;
  for (int i = 0; i < 25; ++i) {
    adds += AddRequest(name + std::to_string(i) + "</Name><Notes>" + std::string(4000, 'n') + "</Notes>");
  }
  SendAll(adds);
  std::string queries;
  for (int i = 0; i < kQueries; ++i) queries += "<CustomerQueryRq/>";
  // Too long to be taken apart here.
  const auto text = file_->Process(Document(queries + AddRequest("<Name>Last</Name>"), "3.0", "continueOnError"));
  EXPECT_GT(text.size(), std::size_t{64} << 20U);
  EXPECT_LT(text.size(), std::size_t{66} << 20U);
  const auto codeOf = [&](std::size_t at) { return text.substr(text.find("statusCode=", at), 17); };
  EXPECT_EQ(codeOf(text.find("<CustomerQueryRs")), "statusCode=\"0\" st");
  EXPECT_EQ(codeOf(text.rfind("<CustomerQueryRs")), "statusCode=\"3231\"");
  EXPECT_EQ(codeOf(text.rfind("<CustomerAddRs")), "statusCode=\"0\" st") << "what writes is carried out all the same";
}

TEST_F(CompanyDocument, A_warning_does_not_stop_a_set) {
  const auto answers =
      SendAll(QueryRequest("<FullName>Nobody</FullName>") + AddRequest("<Name>Acme</Name>"), "3.0", "stopOnError");
  EXPECT_EQ(answers[0].code, 500);
  EXPECT_EQ(answers[0].severity, "Warn");
  EXPECT_EQ(answers[1].code, 0);
}

TEST_F(CompanyDocument, Nothing_of_a_refused_document_is_carried_out) {
  EXPECT_EQ(RefusalOfRequest(AddRequest("<Name>Acme</Name>") + AddRequest("<Nmae>Other</Nmae>")), kRefused);
  EXPECT_EQ(Query("").code, 1);
}

TEST_F(CompanyDocument, A_refusal_has_the_published_text_alone_and_the_reason_beside_it) {
  try {
    static_cast<void>(file_->Process(Document("<CustomerFindRq/>")));
    FAIL() << "nothing was raised";
  } catch (const RefusedDocument& raised) {
    EXPECT_EQ(raised.number(), kRefused);
    EXPECT_EQ(raised.description(), "QuickBooks found an error when parsing the provided XML text stream.");
    EXPECT_EQ(raised.detail(), "The request CustomerFindRq is not known.");
  }
}

TEST_F(CompanyDocument, Comments_and_white_space_between_elements_and_a_byte_order_mark_are_taken) {
  const std::string document =
      "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?>\r\n<!-- made by hand -->\n<?qbxml  version = '2.1' "
      "?>\n<QBXML>\n"
      "  <QBXMLMsgsRq onError='stopOnError'>\n    <!-- one -->\n    <CustomerQueryRq requestID='1'>\n    "
      "</CustomerQueryRq>\n"
      "  </QBXMLMsgsRq>\n</QBXML>\n";
  text_ = file_->Process(document);
  EXPECT_EQ(ReadAnswers("QBXMLMsgsRs").front().code, 1);
}

TEST_F(CompanyDocument, The_text_of_an_element_is_read_across_comments_and_literal_sections) {
  EXPECT_EQ(Add("<Name>A<!-- no -->c<![CDATA[m<&]]>e &#x41;&#233;</Name>").Value("Name"), "Acm<&e A\xC3\xA9");
}

TEST_F(CompanyDocument, Markup_characters_and_line_ends_survive_the_way_there_and_back) {
  const auto answer = Add("<Name>R&amp;D &lt;\"x'&gt;</Name><Notes>one&#13;&#10;two\tthree</Notes>");
  EXPECT_EQ(answer.Value("Name"), "R&D <\"x'>");
  EXPECT_EQ(ByName("R&amp;D &lt;\"x'&gt;").Value("Notes"), "one\r\ntwo\tthree");
}

TEST_F(CompanyDocument, An_entity_declaration_is_refused_and_so_never_expands) {
  EXPECT_EQ(RefusalOf("<?xml version=\"1.0\"?><!DOCTYPE QBXML [<!ENTITY who SYSTEM \"file:///etc/hostname\">]>"
                      "<?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">" +
                      AddRequest("<Name>&who;</Name>") + "</QBXMLMsgsRq></QBXML>"),
            kRefused);
  EXPECT_EQ(Query("").code, 1);
}

TEST_F(CompanyDocument, A_declared_encoding_is_taken_when_the_text_reads_the_same_in_it) {
  for (const auto* encoding : {"utf-8", "UTF-8", "US-ASCII", "ISO-8859-1", "windows-1252"}) {
    EXPECT_EQ(RefusalOf(std::string("<?xml version=\"1.0\" encoding=\"") + encoding +
                        "\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\"><HostQueryRq/>"
                        "</QBXMLMsgsRq></QBXML>"),
              0U)
        << encoding;
  }
}

// What a refusal costs: bounded by the length of the text, whatever stands in it.

std::string Repeated(std::string_view piece, std::size_t bytes) {
  std::string text(piece);
  while (text.size() < bytes)
    text += text.substr(0, (bytes - text.size() + piece.size() - 1) / piece.size() * piece.size());
  return text;
}

TEST_F(CompanyDocument, A_large_document_of_nested_opens_is_refused_at_the_first_too_many) {
  EXPECT_EQ(RefusalOf("<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?>" + Repeated("<QBXML>", 200 << 20)), kRefused);
}

TEST_F(CompanyDocument, A_large_document_of_one_tag_s_attributes_is_refused_at_the_first_too_many) {
  std::string text = "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML";
  for (int i = 0; i < 1'000'000; ++i) text += " a" + std::to_string(i) + "=\"\"";
  EXPECT_EQ(RefusalOf(text + "/>"), kRefused);
}

TEST_F(CompanyDocument, More_elements_than_anybody_means_are_refused_before_they_are_parsed) {
  EXPECT_EQ(RefusalOf(Document(Repeated("<HostQueryRq/>", 14 * 4'000'100))), kRefused);
}

TEST_F(CompanyDocument, More_text_than_anybody_means_is_refused) {
  EXPECT_EQ(RefusalOf(Document(AddRequest("<Name>" + Repeated("x", std::size_t{257} << 20U) + "</Name>"))), kRefused);
}

TEST_F(CompanyDocument, A_refusal_quotes_no_more_than_the_beginning_of_a_value) {
  try {
    static_cast<void>(file_->Process(
        Document(AddRequest("<Name>Acme</Name><JobStatus>" + Repeated("yes", 100'000) + "</JobStatus>"))));
    FAIL() << "nothing was raised";
  } catch (const RefusedDocument& raised) {
    EXPECT_LT(raised.detail().size(), 300U);
    EXPECT_NE(raised.detail().find("\"yesyes"), std::string::npos);
  }
}

TEST_F(CompanyDocument, A_document_of_either_kind_is_answered_where_either_is_taken) {
  EXPECT_NE(file_->ProcessAny(Document("<HostQueryRq/>")).find("<QBXMLMsgsRs><HostQueryRs"), std::string::npos);
  EXPECT_NE(file_
                ->ProcessAny(SubscriptionDocument("<SubscriptionQueryRq><SubscriberID>0</SubscriberID>"
                                                  "</SubscriptionQueryRq>"))
                .find("<QBXMLSubscriptionMsgsRs><SubscriptionQueryRs"),
            std::string::npos);
  EXPECT_EQ(NumberRaised([&] { static_cast<void>(file_->ProcessAny("<QBXML/>")); }), kRefused);
}

std::string Nested(int levels) {
  std::string text;
  for (int i = 0; i < levels; ++i) text += "<BillAddress>";
  for (int i = 0; i < levels; ++i) text += "</BillAddress>";
  return text;
}

// What is nested stands here as a number: each start of the program makes, copies and prints all of these.
struct Bad {
  const char* name;
  std::string document = {};
  int levels = 0;  // of nesting, in place of a document

  [[nodiscard]] std::string Text() const {
    return levels == 0 ? document : Document(AddRequest("<Name>Acme</Name>" + Nested(levels)));
  }
};
void PrintTo(const Bad& bad, std::ostream* out) { *out << bad.name; }

class RefusedDocument : public CompanyTest, public testing::WithParamInterface<Bad> {};

TEST_P(RefusedDocument, Is_refused_as_a_whole) {
  EXPECT_EQ(RefusalOf(GetParam().Text()), kRefused);
  EXPECT_EQ(Query("<ActiveStatus>All</ActiveStatus>").code, 1);
}

const std::string kVersionLine = "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?>";
const std::string kSet = "<QBXMLMsgsRq onError=\"stopOnError\"><HostQueryRq/></QBXMLMsgsRq>";
const std::string kAcme = AddRequest("<Name>Acme</Name>");

std::string ManyAttributes(int count) {
  std::string text = "<HostQueryRq";
  for (int i = 0; i < count; ++i) text += " a" + std::to_string(i) + "=\"\"";
  return text + "/>";
}

INSTANTIATE_TEST_SUITE_P(
    Xml, RefusedDocument,
    testing::Values(
        Bad{"Empty", ""}, Bad{"NoXml", "hello"},
        Bad{"Unclosed", kVersionLine + "<QBXML><QBXMLMsgsRq onError=\"stopOnError\">"},
        Bad{"Crossed", kVersionLine + "<QBXML><QBXMLMsgsRq onError=\"stopOnError\"></QBXML></QBXMLMsgsRq>"},
        Bad{"Two_roots", kVersionLine + "<QBXML>" + kSet + "</QBXML><QBXML>" + kSet + "</QBXML>"},
        Bad{"Text_behind_the_root", kVersionLine + "<QBXML>" + kSet + "</QBXML>x"},
        Bad{"Not_utf8", Document(AddRequest("<Name>Caf\xE9</Name>"))},
        Bad{"Overlong_utf8", Document(AddRequest("<Name>A\xC0\xAF</Name>"))},
        Bad{"Control_character", Document(AddRequest("<Name>A\x01</Name>"))},
        Bad{"Referenced_control_character", Document(AddRequest("<Name>A&#1;</Name>"))},
        Bad{"Referenced_zero", Document(AddRequest("<Name>A&#0;</Name>"))},
        Bad{"Bare_ampersand", Document(AddRequest("<Name>A & B</Name>"))},
        Bad{"Unknown_entity", Document(AddRequest("<Name>A &nbsp; B</Name>"))},
        Bad{"Doctype", "<?xml version=\"1.0\"?><!DOCTYPE QBXML><?qbxml version=\"3.0\"?><QBXML>" + kSet + "</QBXML>"},
        Bad{"Unquoted_attribute", kVersionLine + "<QBXML><QBXMLMsgsRq onError=stopOnError></QBXMLMsgsRq></QBXML>"},
        Bad{"Attribute_twice", Document("<HostQueryRq requestID=\"1\" requestID=\"2\"/>")},
        Bad{"Xml_version", "<?xml version=\"1.1\"?><?qbxml version=\"3.0\"?><QBXML>" + kSet + "</QBXML>"},
        Bad{"Declared_as_utf16",
            "<?xml version=\"1.0\" encoding=\"UTF-16\"?><?qbxml version=\"3.0\"?><QBXML>" + kSet + "</QBXML>"},
        Bad{"Declared_as_latin_with_other_than_ascii",
            "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq "
            "onError=\"stopOnError\">" +
                AddRequest("<Name>Caf\xC3\xA9</Name>") + "</QBXMLMsgsRq></QBXML>"},
        Bad{"Utf16", std::string("\xFF\xFE<\0Q\0", 6)}, Bad{"Many_attributes", Document(ManyAttributes(17))},
        Bad{"Late_declaration", " <?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML>" + kSet + "</QBXML>"},
        Bad{.name = "Deep_nesting", .levels = 100}, Bad{.name = "Very_deep_nesting", .levels = 100'000}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Envelope, RefusedDocument,
    testing::Values(Bad{"No_version_line", "<?xml version=\"1.0\"?><QBXML>" + kSet + "</QBXML>"},
                    Bad{"Two_version_lines", kVersionLine + "<?qbxml version=\"3.0\"?><QBXML>" + kSet + "</QBXML>"},
                    Bad{"Version_line_behind_the_root",
                        "<?xml version=\"1.0\"?><QBXML>" + kSet + "</QBXML><?qbxml version=\"3.0\"?>"},
                    Bad{"Version_line_of_another_kind",
                        "<?xml version=\"1.0\"?><?qbxml Version=\"3.0\"?><QBXML>" + kSet + "</QBXML>"},
                    Bad{"No_number", Document(kAcme, "")}, Bad{"Version_with_zero", Document(kAcme, "03.0")},
                    Bad{"Version_in_three_parts", Document(kAcme, "3.0.0")},
                    Bad{"Other_root", kVersionLine + "<QBXMLX>" + kSet + "</QBXMLX>"},
                    Bad{"No_set", kVersionLine + "<QBXML></QBXML>"},
                    Bad{"Two_sets", kVersionLine + "<QBXML>" + kSet + kSet + "</QBXML>"},
                    Bad{"Other_set", kVersionLine + "<QBXML><QBXMLSubscriptionMsgsRq/></QBXML>"},
                    Bad{"No_onError", kVersionLine + "<QBXML><QBXMLMsgsRq>" + kAcme + "</QBXMLMsgsRq></QBXML>"},
                    Bad{"Unknown_onError", Document(kAcme, "3.0", "goOn")},
                    Bad{"Text_in_the_set", Document("x" + kAcme)}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Content, RefusedDocument,
    testing::Values(
        Bad{"Unknown_request", Document("<CustomerFindRq/>")},
        Bad{"Request_in_lower_case", Document("<customerqueryrq/>")},
        Bad{"Response_as_request", Document("<CustomerQueryRs/>")},
        Bad{"Name_without_Rq", Document("<CustomerQuery/>")},
        Bad{"Subscription_request_in_a_company_set",
            Document("<SubscriptionQueryRq><SubscriberID>0</SubscriberID></SubscriptionQueryRq>")},
        Bad{"Unknown_attribute_of_a_request", Document("<CustomerQueryRq requestid=\"1\"/>")},
        Bad{"Attribute_of_a_field", Document(AddRequest("<Name kind=\"x\">Acme</Name>"))},
        Bad{"Unknown_element", Document(AddRequest("<Name>Acme</Name><Shoe>9</Shoe>"))},
        Bad{"Element_in_wrong_case", Document(AddRequest("<name>Acme</name>"))},
        Bad{"Element_in_wrong_order", Document(AddRequest("<CompanyName>Acme</CompanyName><Name>Acme</Name>"))},
        Bad{"Element_twice", Document(AddRequest("<Name>Acme</Name><Name>Acme</Name>"))},
        Bad{"Element_inside_a_field", Document(AddRequest("<Name><b>Acme</b></Name>"))},
        Bad{"Element_of_another_country",
            Document(AddRequest("<Name>Acme</Name><BillAddress><Province>ON</Province></BillAddress>"))},
        Bad{"Element_of_a_later_version", Document(AddRequest("<Name>Acme</Name><Notes>n</Notes>"), "2.1")},
        Bad{"Element_of_the_answer", Document(AddRequest("<ListID>80000001-1</ListID><Name>Acme</Name>"))},
        Bad{"Group_name_as_element", Document("<CustomerQueryRq><ListFilter/></CustomerQueryRq>")},
        Bad{"Text_in_an_aggregate", Document(AddRequest("<Name>Acme</Name><BillAddress>Main Street</BillAddress>"))},
        Bad{"Text_between_elements", Document(AddRequest("<Name>Acme</Name>x<Phone>1</Phone>"))},
        Bad{"Two_records_in_a_request",
            Document("<CustomerAddRq><CustomerAdd><Name>A</Name></CustomerAdd><CustomerAdd><Name>B</Name></"
                     "CustomerAdd></CustomerAddRq>")},
        Bad{"Enumeration", Document(AddRequest("<Name>Acme</Name><JobStatus>awarded</JobStatus>"))},
        Bad{"Whole_number", Document(QueryRequest("<MaxReturned>ten</MaxReturned>"))},
        Bad{"Fraction_for_a_whole_number", Document(QueryRequest("<MaxReturned>1.5</MaxReturned>"))},
        Bad{"Two_name_filters",
            Document(QueryRequest(
                "<NameFilter><MatchCriterion>Contains</MatchCriterion><Name>a</Name></NameFilter><NameRangeFilter/>"))},
        Bad{"Identifier_and_filter",
            Document(QueryRequest("<ListID>80000001-1</ListID><ActiveStatus>All</ActiveStatus>"))}),
    [](const auto& test) { return std::string(test.param.name); });

struct Told {
  const char* name;
  std::string request;
  int code;
  std::string message;
};
void PrintTo(const Told& told, std::ostream* out) { *out << told.request; }

class ToldByStatus : public CompanyTest, public testing::WithParamInterface<Told> {};

TEST_P(ToldByStatus, Is_an_error_of_the_one_request_and_does_nothing) {
  const auto answers = SendAll(GetParam().request + AddRequest("<Name>Second</Name>"));
  EXPECT_EQ(answers[0].code, GetParam().code);
  EXPECT_EQ(answers[0].message, GetParam().message);
  EXPECT_EQ(answers[0].severity, "Error");
  EXPECT_FALSE(answers[0].node.first_child());
  EXPECT_EQ(answers[1].code, 0);
  EXPECT_EQ(Query("<ActiveStatus>All</ActiveStatus>").All("Name"), std::vector<std::string>{"Second"});
}

INSTANTIATE_TEST_SUITE_P(
    Fields, ToldByStatus,
    testing::Values(
        Told{"No_name", AddRequest("<Phone>1</Phone>"), 3150, "There is a missing element: \"Name\"."},
        Told{"Empty_name", AddRequest("<Name></Name>"), 3150, "There is a missing element: \"Name\"."},
        Told{"Blank_name", AddRequest("<Name>   </Name>"), 3150, "There is a missing element: \"Name\"."},
        Told{"No_record", "<CustomerAddRq/>", 3150, "There is a missing element: \"CustomerAdd\"."},
        Told{"No_edit_sequence", ModRequest("<ListID>80000001-1</ListID>"), 3150,
             "There is a missing element: \"EditSequence\"."},
        Told{"Long_name", AddRequest("<Name>" + std::string(42, 'n') + "</Name>"), 3070,
             "The string \"" + std::string(42, 'n') + "\" in the field \"Name\" is too long."},
        Told{"Long_text_in_an_address",
             AddRequest("<Name>Acme</Name><BillAddress><PostalCode>12345678901234</PostalCode></BillAddress>"), 3070,
             "The string \"12345678901234\" in the field \"PostalCode\" is too long."},
        Told{"Amount_with_one_decimal", AddRequest("<Name>Acme</Name><CreditLimit>97.5</CreditLimit>"), 3040,
             "There was an error when converting the amount \"97.5\" in the field \"CreditLimit\"."},
        Told{"Empty_amount", AddRequest("<Name>Acme</Name><CreditLimit></CreditLimit>"), 3040,
             "There was an error when converting the amount \"\" in the field \"CreditLimit\"."},
        Told{"Identifier_that_is_none", QueryRequest("<ListID>Acme</ListID>"), 3000,
             "The given object ID \"Acme\" in the field \"list id\" is invalid."},
        Told{"Identifier_in_lower_case", QueryRequest("<ListID>8000000a-1204731000</ListID>"), 3000,
             "The given object ID \"8000000a-1204731000\" in the field \"list id\" is invalid."},
        Told{"Identifier_that_is_none_in_a_reference",
             AddRequest("<Name>Acme</Name><ParentRef><ListID>x</ListID></ParentRef>"), 3000,
             "The given object ID \"x\" in the field \"list id\" is invalid."},
        Told{"Filter_without_its_name",
             QueryRequest("<NameFilter><MatchCriterion>Contains</MatchCriterion></NameFilter>"), 3150,
             "There is a missing element: \"Name\"."}),
    [](const auto& test) { return std::string(test.param.name); });

class RefusedReference : public CompanyTest, public testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(RefusedReference, To_a_list_that_the_file_does_not_hold_is_invalid) {
  const auto [element, list] = GetParam();
  const auto field = [element = std::string(element)](const std::string& inside) {
    return "<Name>Acme</Name><" + element + ">" + inside + "</" + element + ">";
  };
  const auto expected = [list = std::string(list)](const std::string& value) {
    return "There is an invalid reference to QuickBooks " + list + " \"" + value +
           "\" in the Customer.  QuickBooks error message: Invalid argument.  The specified record does not exist in "
           "the "
           "list.";
  };
  const auto byName = Add(field("<FullName>X</FullName>"));
  EXPECT_EQ(byName.code, 3140);
  EXPECT_EQ(byName.message, expected("X"));
  EXPECT_EQ(Add(field("<ListID>80000009-1</ListID><FullName>X</FullName>")).message, expected("80000009-1"));
  EXPECT_EQ(Query("").code, 1);
  EXPECT_EQ(Add(field("")).code, 0) << "an empty reference names nothing";
}

INSTANTIATE_TEST_SUITE_P(Lists, RefusedReference,
                         testing::Values(std::pair{"CustomerTypeRef", "CustomerType"}, std::pair{"TermsRef", "Terms"},
                                         std::pair{"SalesRepRef", "SalesRep"},
                                         std::pair{"SalesTaxCodeRef", "SalesTaxCode"},
                                         std::pair{"ItemSalesTaxRef", "ItemSalesTax"},
                                         std::pair{"PreferredPaymentMethodRef", "PreferredPaymentMethod"},
                                         std::pair{"JobTypeRef", "JobType"}),
                         [](const auto& test) { return std::string(test.param.second); });

}  // namespace

}  // namespace twqb::company
