// Whole transfers of clients between each kind of database and each edition of QuickBooks: the form of every document
// on the wire, and the place that an address has in the column, in the request and in the customer.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <tuple>

#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

using messages::Country;
using Texts = std::vector<std::string>;

struct Edition {
  std::string name;
  company::CompanyOptions company;
  Texts probes;         // tags of the host queries until one is answered
  std::string country;  // found by them
  std::string tag;      // of every document behind them
  std::string place;    // the address field
};

std::ostream& operator<<(std::ostream& out, const Edition& edition) { return out << edition.name; }

const Edition kEditions[] = {
    {"US", {.country = Country::US}, {"3.0"}, "US", "3.0", "State"},
    {"CA", {.country = Country::CA}, {"3.0", "CA3.0"}, "CA", "CA3.0", "Province"},
    {"UK", {.country = Country::UK}, {"3.0", "CA3.0", "UK3.0"}, "UK", "UK3.0", "County"},
    {"AU", {.country = Country::AU}, {"3.0", "CA3.0", "UK3.0", "AU3.0"}, "AU", "3.0", "State"},
    // A host of one country behind another's form: the form that is answered decides.
    {"UkBehindUs", {.country = Country::UK, .accepts = {Country::US}}, {"3.0"}, "US", "3.0", "State"},
    {"CaBehindUs", {.country = Country::CA, .accepts = {Country::US}}, {"3.0"}, "US", "3.0", "State"},
    {"AuBehindUs", {.country = Country::AU, .accepts = {Country::US}}, {"3.0"}, "US", "3.0", "State"},
    {"UsBehindCa", {.country = Country::US, .accepts = {Country::CA}}, {"3.0", "CA3.0"}, "CA", "CA3.0", "Province"},
    {"UkBehindCa", {.country = Country::UK, .accepts = {Country::CA}}, {"3.0", "CA3.0"}, "CA", "CA3.0", "Province"},
    {"UsBehindUk",
     {.country = Country::US, .accepts = {Country::UK}},
     {"3.0", "CA3.0", "UK3.0"},
     "UK",
     "UK3.0",
     "County"},
    // Of several forms the first in the order of the probe is taken.
    {"CaInBothForms", {.country = Country::CA, .accepts = {Country::CA, Country::US}}, {"3.0"}, "US", "3.0", "State"},
};
// Older hosts answer the host query in version 3.0 and are then spoken to in their own.
const Edition kOlderEditions[] = {
    {"US12", {.country = Country::US, .hostVersion = 12}, {"3.0"}, "US", "2.1", "State"},
    {"CA12", {.country = Country::CA, .hostVersion = 12}, {"3.0", "CA3.0"}, "CA", "CA2.0", "Province"},
    {"UK12", {.country = Country::UK, .hostVersion = 12}, {"3.0", "CA3.0", "UK3.0"}, "UK", "UK2.1", "County"},
    {"US10", {.country = Country::US, .hostVersion = 10}, {"3.0"}, "US", "1.1", "State"},
};

const Texts kPlaces = {"State", "Province", "County"};

using EditionAndProvider = std::tuple<std::string, Edition>;

class CountryHouse : public BridgeHouse {
 public:
  explicit CountryHouse(const EditionAndProvider& param)
      : BridgeHouse({.provider = std::get<0>(param), .company = std::get<1>(param).company}),
        edition(std::get<1>(param)),
        delimiter_(std::get<0>(param) == "SQLITE" ? '\'' : '#') {}

  // A customer with that address; its ListID.
  std::string CustomerIn(std::string_view name, std::string_view place) {
    return AddCustomer(
        fmt::format("<Name>{0}</Name><BillAddress><{1}>{2}</{1}></BillAddress>", name, edition.place, place),
        edition.tag);
  }
  std::string PlaceOf(std::string_view listId) { return CustomerField(listId, edition.place, edition.tag); }

  // The tags of all documents, in order.
  [[nodiscard]] Texts Tags() const {
    constexpr std::string_view kBeforeTag = "<?qbxml version=\"";
    Texts tags;
    for (const auto& document : traffic.documents) {
      const auto from = document.find(kBeforeTag) + kBeforeTag.size();
      tags.push_back(document.substr(from, document.find('"', from) - from));
    }
    return tags;
  }
  // Those of a session's start with so many documents behind it.
  [[nodiscard]] Texts TagsOfSessionWith(std::size_t documents) const {
    auto tags = edition.probes;
    tags.insert(tags.end(), documents, edition.tag);
    return tags;
  }
  // The request names the place in the edition's field and in no other.
  static void ExpectPlace(const std::string& request, const Edition& edition, std::string_view place) {
    for (const auto& field : kPlaces) EXPECT_EQ(TextOf(request, field), field == edition.place ? place : "(none)");
  }
  // The selection's date stands between the marks of the provider's dialect.
  void ExpectDialect() const {
    EXPECT_NE(traffic.statements.at(0).find(fmt::format("LastUpdated > {0}01/01/1900 05:00:00{0})", delimiter_)),
              std::string::npos)
        << traffic.statements.at(0);
  }

  const Edition edition;

 private:
  char delimiter_;
};

class Countries : public testing::TestWithParam<EditionAndProvider> {};

TEST_P(Countries, Get_a_new_client_with_its_place) {
  CountryHouse house(GetParam());
  house.Client("ClientID, ClientCity, ClientState", "'ACME', 'Dover', 'Kent'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(bridge.QBCountry(), house.edition.country);
  EXPECT_EQ(Vars().g_HostCountry, messages::CountryName(house.edition.company.country));
  EXPECT_EQ(house.Tags(), house.TagsOfSessionWith(1));
  const auto adds = house.Requests("CustomerAddRq");
  ASSERT_EQ(adds.size(), 1U);
  house.ExpectPlace(adds[0], house.edition, "Kent");
  house.ExpectDialect();
  const auto id = house.ColumnOf("ACME", "QBLinkID");
  EXPECT_EQ(house.PlaceOf(id), "Kent");
  EXPECT_EQ(house.CustomerField(id, "City", house.edition.tag), "Dover");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(Countries, Get_a_changed_client_with_its_place) {
  CountryHouse house(GetParam());
  const auto id = house.CustomerIn("Acme", "Essex");
  house.Client("ClientID, ClientState, QBLinkID, LastUpdated", "'ACME', 'Kent', '" + id + "', '2008-03-05 15:00:01'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.Tags(), house.TagsOfSessionWith(2));
  EXPECT_EQ(house.Requests("CustomerQueryRq"), Texts{"<ListID>" + id + "</ListID>"});
  const auto mods = house.Requests("CustomerModRq");
  ASSERT_EQ(mods.size(), 1U);
  house.ExpectPlace(mods[0], house.edition, "Kent");
  house.ExpectDialect();
  EXPECT_EQ(house.PlaceOf(id), "Kent");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(Countries, Give_a_new_and_a_changed_customer_with_their_places) {
  CountryHouse house(GetParam());
  house.CustomerIn("Baker", "Kent");
  const auto id = house.CustomerIn("Acme", "Essex");
  house.Client("ClientID, ClientState, QBLinkID, LastUpdated",
               "'ACME1', 'Surrey', '" + id + "', '2008-03-05 14:59:59'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(bridge.QBCountry(), house.edition.country);
  EXPECT_EQ(house.Tags(), house.TagsOfSessionWith(1));
  EXPECT_EQ(house.Keys(), "ACME1,Baker");
  EXPECT_EQ(house.ColumnOf("Baker", "ClientState"), "Kent");
  EXPECT_EQ(house.ColumnOf("ACME1", "ClientState"), "Essex");
  for (const std::string_view key : {"Baker", "ACME1"}) {
    EXPECT_EQ(house.ColumnOf(key, "LastUpdated"), "3/5/2008 3:00:00 PM");
  }
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(Countries, Leave_a_customer_that_is_older_than_its_client) {
  CountryHouse house(GetParam());
  const auto id = house.CustomerIn("Acme", "Essex");
  house.Client("ClientID, ClientState, QBLinkID, LastUpdated",
               "'ACME1', 'Surrey', '" + id + "', '2008-03-05 15:00:01'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.ColumnOf("ACME1", "ClientState"), "Surrey");
}

std::string NameOf(const testing::TestParamInfo<EditionAndProvider>& info) {
  return std::get<0>(info.param) + "_" + std::get<1>(info.param).name;
}

const auto kProviders = testing::Values("SQLITE", "JETLITE");
INSTANTIATE_TEST_SUITE_P(Clients, Countries, testing::Combine(kProviders, testing::ValuesIn(kEditions)), NameOf);
INSTANTIATE_TEST_SUITE_P(ClientsOfOlderHosts, Countries,
                         testing::Combine(kProviders, testing::ValuesIn(kOlderEditions)), NameOf);

}  // namespace
}  // namespace twqb
