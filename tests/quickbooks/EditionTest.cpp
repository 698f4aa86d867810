// Which country's edition answers, in which version, and what it takes for granted.

#include <gtest/gtest.h>

#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Session.h"
#include "tests/quickbooks/CannedQuickBooks.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

using messages::Country;

// A house with a session to a QuickBooks that answers the forms in `accepted` ("US CA") with `fields`.
class ProbedHouse : public NotingHouse {
 public:
  explicit ProbedHouse(std::string_view accepted, std::string fields) : ProbedHouse(Answering(accepted, fields)) {}
  explicit ProbedHouse(std::function<std::string(std::string_view)> answer)
      : NotingHouse({}, {}, std::make_unique<CannedQuickBooks>(Canned{.answer = std::move(answer)})) {
    Vars().g_QBSession =
        std::make_shared<QBSessionManager>(Vars().platform.quickbooks->CreateTransport(), TheMachine());
    notes.clear();
  }

 private:
  static std::function<std::string(std::string_view)> Answering(std::string_view accepted, std::string fields) {
    return [accepted, fields = std::move(fields)](std::string_view document) {
      constexpr std::string_view kBefore = "<?qbxml version=\"";
      auto country = document.substr(document.find(kBefore) + kBefore.size(), 2);
      if (country.starts_with('3')) country = "US";
      if (accepted.find(country) == std::string_view::npos) throw PlatformError(error::kParse, "Refused");
      return HostAnswer(fields);
    };
  }
};

std::string Probe(std::string_view tag) {
  return fmt::format(
      "document <?xml version=\"1.0\"?><?qbxml version=\"{}\"?><QBXML><QBXMLMsgsRq onError=\"continueOnError\">"
      "<HostQueryRq requestID=\"1\"></HostQueryRq></QBXMLMsgsRq></QBXML>",
      tag);
}

TEST(EditionProbe, Asks_in_the_US_form_first_and_is_content_with_an_answer) {
  ProbedHouse house("US CA UK AU", "<MajorVersion>16</MajorVersion><Country>US</Country>");
  EXPECT_TRUE(GetQBEditionAndVersion());
  EXPECT_EQ(Vars().g_QBCountry, "US");
  EXPECT_EQ(Vars().g_HostCountry, "US");
  EXPECT_EQ(house.notes, Notes{Probe("3.0")});
}

TEST(EditionProbe, Takes_a_raised_error_as_a_refusal_and_goes_to_the_next_country) {
  const std::vector<std::string> tags = {"3.0", "CA3.0", "UK3.0", "AU3.0"};
  const std::vector<std::string> countries = {"US", "CA", "UK", "AU"};
  for (std::size_t i = 0; i < countries.size(); ++i) {
    ProbedHouse house(countries[i], "<MajorVersion>16</MajorVersion>");
    EXPECT_TRUE(GetQBEditionAndVersion());
    EXPECT_EQ(Vars().g_QBCountry, countries[i]);
    Notes asked;
    for (std::size_t k = 0; k <= i; ++k) asked.push_back(Probe(tags[k]));
    EXPECT_EQ(house.notes, asked);
  }
}

TEST(EditionProbe, Takes_an_answer_without_a_response_as_a_refusal) {
  ProbedHouse house([](std::string_view document) {
    if (document.find("\"CA3.0\"") != std::string_view::npos) return HostAnswer("<MajorVersion>16</MajorVersion>");
    return std::string("<QBXML><QBXMLMsgsRs></QBXMLMsgsRs></QBXML>");
  });
  EXPECT_TRUE(GetQBEditionAndVersion());
  EXPECT_EQ(Vars().g_QBCountry, "CA");
}

TEST(EditionProbe, Tells_that_an_edition_that_answers_no_form_is_not_supported) {
  ProbedHouse house("", "");
  Vars().g_QBHostVer = 9;
  EXPECT_FALSE(GetQBEditionAndVersion());
  EXPECT_EQ(house.NotesOf("document").size(), 4U);
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text, "GetQBEditionAndVersion : This edition of QuickBooks is not supported");
  EXPECT_EQ(box.title, "Error");
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
  EXPECT_EQ(Vars().g_QBCountry, "");
  EXPECT_EQ(Vars().g_QBHostVer, 9);
  EXPECT_TRUE(Vars().g_QBSession);
}

TEST(EditionProbe, Reads_no_host_when_a_country_is_left_from_an_earlier_session_and_none_answers) {
  ProbedHouse house("", "");
  Vars().g_QBCountry = "CA";
  Vars().g_QBHostVer = 16;
  EXPECT_FALSE(GetQBEditionAndVersion());
  EXPECT_EQ(Vars().g_QBCountry, "");
  EXPECT_EQ(Vars().g_QBHostVer, 0);
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_EQ(house.BoxTexts()[0],
            "Error #: 91(5B) -- \r\n\r\nObject variable not set has occurred in the following procedure: "
            "GetQBEditionAndVersion. Please contact Technical Support for assistance.");
}

TEST(EditionProbe, Tells_any_other_status_in_words_of_its_own_and_stops) {
  ProbedHouse house([](std::string_view) {
    return CannedAnswer("HostQueryRs", "statusCode=\"1000\" statusSeverity=\"Error\" statusMessage=\"Internal error\"",
                        "");
  });
  Vars().g_QBCountry = "UK";
  EXPECT_FALSE(GetQBEditionAndVersion());
  EXPECT_EQ(house.notes, (Notes{Probe("3.0"), "box Error"}));
  const auto& box = house.desk.Boxes().at(0).box;
  EXPECT_EQ(box.text,
            "GetQBEditionAndVersion : QuickBooks has reported the following error:\r\n"
            "\r\n"
            "Internal error\r\n"
            "Error Code: 1000\r\n"
            "Severity: Error\r\n"
            "Please contact your software vendor.");
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(Vars().g_QBCountry, "");
}

struct HostVersion {
  std::string_view country;
  std::string_view reported;
  int host;
  int major;
  int minor;
  bool undefined;
};

class HostVersions : public testing::TestWithParam<HostVersion> {};

TEST_P(HostVersions, Fix_the_version_of_every_later_message_set) {
  const auto& [country, reported, host, major, minor, undefined] = GetParam();
  ProbedHouse house(country, fmt::format("<MajorVersion>{}</MajorVersion>", reported));
  EXPECT_TRUE(GetQBEditionAndVersion());
  EXPECT_EQ(Vars().g_QBHostVer, host);
  EXPECT_EQ(Vars().g_QBMajorVer, major);
  EXPECT_EQ(Vars().g_QBMinorVer, minor);
  ASSERT_EQ(house.desk.Boxes().size(), undefined ? 1U : 0U);
  if (!undefined) return;
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text, "GetQBEditionAndVersion() - Undefined version. Using the default values, i.e. 1, 0");
  EXPECT_EQ(box.title, "");
  EXPECT_EQ(box.icon, BoxIcon::None);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
}

INSTANTIATE_TEST_SUITE_P(
    Edition, HostVersions,
    testing::Values(HostVersion{"US", "10", 10, 1, 1, false}, HostVersion{"CA", "10", 10, 1, 1, false},
                    HostVersion{"US", "12", 12, 2, 1, false}, HostVersion{"CA", "12", 12, 2, 0, false},
                    HostVersion{"UK", "12", 12, 2, 1, false}, HostVersion{"AU", "12", 12, 2, 1, false},
                    HostVersion{"US", "13", 13, 3, 0, false}, HostVersion{"CA", "13", 13, 3, 0, false},
                    HostVersion{"US", "16", 16, 3, 0, false}, HostVersion{"US", "99", 99, 3, 0, false},
                    HostVersion{"US", "32767", 32767, 3, 0, false}, HostVersion{"US", "11", 11, 1, 0, true},
                    HostVersion{"CA", "11", 11, 1, 0, true}, HostVersion{"US", "9", 9, 1, 0, true},
                    HostVersion{"US", "0", 0, 1, 0, true}, HostVersion{"US", "-1", -1, 1, 0, true},
                    HostVersion{"US", " 16 ", 16, 3, 0, false}));

class BadVersions : public testing::TestWithParam<std::string_view> {};

TEST_P(BadVersions, Are_reported_and_forget_the_country) {
  ProbedHouse house("US", std::string(GetParam()));
  Vars().g_HostCountry = "old";
  Vars().g_QBHostVer = 12;
  Vars().g_QBMajorVer = 2;
  EXPECT_FALSE(GetQBEditionAndVersion());
  EXPECT_EQ(Vars().g_QBCountry, "");
  EXPECT_EQ(Vars().g_QBHostVer, 0);
  EXPECT_EQ(Vars().g_QBMajorVer, 2);
  EXPECT_EQ(Vars().g_HostCountry, "old");
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("procedure: GetQBEditionAndVersion. "), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Edition, BadVersions,
                         testing::Values("<MajorVersion>sixteen</MajorVersion><Country>US</Country>",
                                         "<MajorVersion></MajorVersion>", "<MajorVersion>16R2</MajorVersion>",
                                         "<MajorVersion>32768</MajorVersion>", "<MajorVersion>99999</MajorVersion>",
                                         "<Country>US</Country>", ""));

TEST(Edition, Reports_a_good_status_without_a_host_record) {
  ProbedHouse house([](std::string_view) { return CannedAnswer("HostQueryRs", kStatusOk, ""); });
  EXPECT_FALSE(GetQBEditionAndVersion());
  EXPECT_EQ(Vars().g_QBCountry, "");
  EXPECT_EQ(house.desk.Boxes().size(), 1U);
}

TEST(Edition, Keeps_the_hosts_country_of_before_when_the_record_tells_none) {
  ProbedHouse house("CA", "<MajorVersion>12</MajorVersion>");
  Vars().g_HostCountry = "CA";
  EXPECT_TRUE(GetQBEditionAndVersion());
  EXPECT_EQ(Vars().g_HostCountry, "CA");
}

struct RealEdition {
  std::string_view name;
  company::CompanyOptions company;
  std::string_view country;
  std::string_view hostCountry;
  int major;
  int minor;
};

class RealEditions : public testing::TestWithParam<RealEdition> {};

TEST_P(RealEditions, Are_found_in_a_company_file) {
  NotingHouse house({.answers = "no", .company = GetParam().company});
  EXPECT_TRUE(CheckQBSession(true, false));
  EXPECT_EQ(Vars().g_QBCountry, GetParam().country);
  EXPECT_EQ(Vars().g_HostCountry, GetParam().hostCountry);
  EXPECT_EQ(Vars().g_QBHostVer, GetParam().company.hostVersion);
  EXPECT_EQ(Vars().g_QBMajorVer, GetParam().major);
  EXPECT_EQ(Vars().g_QBMinorVer, GetParam().minor);
}

INSTANTIATE_TEST_SUITE_P(
    Edition, RealEditions,
    testing::Values(
        RealEdition{"US", {.country = Country::US}, "US", "US", 3, 0},
        RealEdition{"CA", {.country = Country::CA}, "CA", "CA", 3, 0},
        RealEdition{"UK", {.country = Country::UK}, "UK", "UK", 3, 0},
        RealEdition{"AU", {.country = Country::AU}, "AU", "AU", 3, 0},
        RealEdition{"US12", {.country = Country::US, .hostVersion = 12}, "US", "US", 2, 1},
        RealEdition{"CA12", {.country = Country::CA, .hostVersion = 12}, "CA", "CA", 2, 0},
        RealEdition{"US10", {.country = Country::US, .hostVersion = 10}, "US", "US", 1, 1},
        RealEdition{
            "CanadaInUSForm", {.country = Country::CA, .accepts = {Country::US, Country::CA}}, "US", "CA", 3, 0}),
    [](const auto& edition) { return std::string(edition.param.name); });

TEST(Edition, Of_a_company_file_with_an_unknown_host_version_gets_a_box_and_version_1) {
  NotingHouse house({.answers = "no", .company = {.hostVersion = 11}});
  EXPECT_TRUE(CheckQBSession(true, false));
  EXPECT_EQ(Vars().g_QBMajorVer, 1);
  EXPECT_EQ(Vars().g_QBMinorVer, 0);
  EXPECT_EQ(house.desk.Boxes().size(), 2U);
}

}  // namespace
}  // namespace twqb
