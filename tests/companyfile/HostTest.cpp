#include "CompanyTest.h"

namespace twqb::company {

namespace {

using messages::Country;

class CompanyHost : public CompanyTest {
 protected:
  static std::vector<std::string> Versions(const Answer& answer) {
    std::vector<std::string> tags;
    for (const auto node : answer.node.child("HostRet").children("SupportedQBXMLVersion")) {
      tags.emplace_back(node.text().get());
    }
    return tags;
  }
};

TEST_F(CompanyHost, The_host_record_tells_version_country_and_forms) {
  MakeFile({.country = Country::CA, .hostVersion = 12, .accepts = {Country::CA, Country::US}});
  const auto host = Send("<HostQueryRq requestID=\"1\"/>");
  EXPECT_EQ(host.code, 0);
  EXPECT_EQ(host.Value("ProductName"), "QuickBooks Premier Edition 12");
  EXPECT_EQ(host.Value("MajorVersion"), "12");
  EXPECT_EQ(host.Value("MinorVersion"), "0");
  EXPECT_EQ(host.Value("Country"), "CA");
  EXPECT_EQ(host.Value("IsAutomaticLogin"), "false");
  EXPECT_EQ(host.Value("QBFileMode"), "MultiUser");
  EXPECT_EQ(Versions(host),
            (std::vector<std::string>{"CA1.0", "CA1.1", "CA2.0", "CA2.1", "CA3.0", "1.0", "1.1", "2.0", "2.1", "3.0"}));
}

TEST_F(CompanyHost, The_host_record_of_an_older_form_leaves_out_what_it_does_not_know) {
  const auto host = Send("<HostQueryRq/>", "2.1");
  EXPECT_EQ(host.Value("MajorVersion"), "16");
  EXPECT_FALSE(host.Has("Country"));
  EXPECT_FALSE(host.Has("QBFileMode"));
}

TEST_F(CompanyHost, A_file_in_single_user_mode_says_so) {
  CompanyFile alone(path_, machine_, FileMode::SingleUser);
  EXPECT_NE(alone.Process(Document("<HostQueryRq/>")).find("<QBFileMode>SingleUser</QBFileMode>"), std::string::npos);
}

TEST_F(CompanyHost, A_file_made_without_a_list_of_forms_takes_its_country_s_own_alone) {
  MakeFile({.country = Country::CA});
  EXPECT_EQ(Send("<HostQueryRq/>", "CA3.0").code, 0);
  EXPECT_EQ(RefusalOfRequest("<HostQueryRq/>", "3.0"), kUnknownVersion);
  EXPECT_EQ(RefusalOfRequest("<HostQueryRq/>", "UK3.0"), kUnknownVersion);
  EXPECT_EQ(RefusalOfRequest("<CustomerQueryRq/>", "3.0"), kUnknownVersion);
}

struct FormCase {
  const char* name;
  CompanyOptions options;
  const char* request;
  const char* tag;
  bool taken;
};
void PrintTo(const FormCase& form, std::ostream* out) { *out << form.tag << ' ' << form.request; }

class CompanyForm : public CompanyTest, public testing::WithParamInterface<FormCase> {};

TEST_P(CompanyForm, Is_taken_or_refused) {
  MakeFile(GetParam().options);
  EXPECT_EQ(RefusalOfRequest(GetParam().request, GetParam().tag), GetParam().taken ? 0U : kUnknownVersion);
}

const CompanyOptions kAustralian = {.country = Country::AU};
const CompanyOptions kAustralianAndUs = {.country = Country::AU, .accepts = {Country::AU, Country::US}};
const CompanyOptions kBritish = {.country = Country::UK};

INSTANTIATE_TEST_SUITE_P(
    Countries, CompanyForm,
    testing::Values(
        FormCase{"Australian_host_query_in_the_Australian_form", kAustralian, "<HostQueryRq/>", "AU3.0", true},
        FormCase{"Australian_host_query_in_the_US_form", kAustralian, "<HostQueryRq/>", "3.0", false},
        FormCase{"Australian_query_in_the_US_form", kAustralian, "<CustomerQueryRq/>", "3.0", true},
        FormCase{"Australian_query_in_an_older_US_form", kAustralian, "<CustomerQueryRq/>", "2.1", true},
        FormCase{"Australian_query_in_the_Australian_form", kAustralian, "<CustomerQueryRq/>", "AU3.0", false},
        FormCase{"Australian_host_query_beside_another_in_the_US_form", kAustralian, "<CustomerQueryRq/><HostQueryRq/>",
                 "3.0", false},
        FormCase{"Australian_form_before_its_time", kAustralian, "<HostQueryRq/>", "AU2.1", false},
        FormCase{"Australian_file_that_takes_the_US_form_too", kAustralianAndUs, "<HostQueryRq/>", "3.0", true},
        FormCase{"British_form", kBritish, "<CustomerQueryRq/>", "UK2.0", true},
        FormCase{"US_form_in_Britain", kBritish, "<CustomerQueryRq/>", "3.0", false}),
    [](const auto& test) { return std::string(test.param.name); });

class CompanyVersion : public CompanyTest, public testing::WithParamInterface<const char*> {};

TEST_P(CompanyVersion, Is_answered_by_a_file_of_any_host_version) {
  for (const int hostVersion : {10, 12, 16}) {
    MakeFile({.hostVersion = hostVersion});
    EXPECT_EQ(Add("<Name>Acme</Name>", GetParam()).code, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Published, CompanyVersion, testing::Values("1.0", "1.1", "2.0", "2.1", "3.0"));

}  // namespace

}  // namespace twqb::company
