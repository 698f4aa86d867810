// Each request is taken in documents of the version that it came with and of later ones, and refuses those of earlier
// ones as a whole. With which version a request came is kept here by hand, apart from the rows.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "CompanyTest.h"
#include "adapters/companyfile/Forms.h"
#include "messages/Schema.h"

namespace twqb::company {

namespace {

using messages::Country;
using messages::Form;
using messages::FormTag;
using messages::Message;
using messages::MessageSet;
using messages::Version;
using testing::Values;

struct Release {
  Version version;
  std::vector<std::string_view> requests;
};

const std::vector<Release>& Releases() {
  static const std::vector<Release> kReleases = {
      {{1, 0},
       {"HostQuery",
        "AccountAdd",
        "AccountQuery",
        "BillAdd",
        "BillQuery",
        "CheckAdd",
        "CheckQuery",
        "ClassAdd",
        "ClassQuery",
        "CreditCardChargeAdd",
        "CreditCardChargeQuery",
        "CreditMemoAdd",
        "CreditMemoQuery",
        "CustomerAdd",
        "CustomerQuery",
        "EmployeeAdd",
        "EmployeeQuery",
        "EstimateAdd",
        "EstimateQuery",
        "InvoiceAdd",
        "InvoiceQuery",
        "ItemGroupAdd",
        "ItemGroupQuery",
        "ItemInventoryAdd",
        "ItemInventoryQuery",
        "ItemNonInventoryAdd",
        "ItemNonInventoryQuery",
        "ItemOtherChargeAdd",
        "ItemOtherChargeQuery",
        "ItemPaymentAdd",
        "ItemPaymentQuery",
        "ItemSalesTaxAdd",
        "ItemSalesTaxQuery",
        "ItemServiceAdd",
        "ItemServiceQuery",
        "JobTypeAdd",
        "JobTypeQuery",
        "PaymentMethodAdd",
        "PaymentMethodQuery",
        "SalesTaxCodeAdd",
        "SalesTaxCodeQuery",
        "VendorAdd",
        "VendorQuery",
        "CustomerTypeAdd",
        "CustomerTypeQuery",
        "VendorTypeAdd",
        "VendorTypeQuery",
        "StandardTermsAdd",
        "StandardTermsQuery",
        "DateDrivenTermsAdd",
        "DateDrivenTermsQuery",
        "TermsQuery"}},
      {{1, 1},
       {"CustomerMod", "EmployeeMod", "VendorMod", "ListDel", "TxnDel", "ReceivePaymentAdd", "ReceivePaymentQuery",
        "TimeTrackingAdd", "TimeTrackingQuery"}},
      {{2, 0}, {"PayrollItemWageAdd", "PayrollItemWageQuery", "TaxCodeAdd", "TaxCodeQuery"}},
      {{3, 0},
       {"ItemInventoryMod", "ItemNonInventoryMod", "ItemOtherChargeMod", "ItemServiceMod", "TxnDisplayMod",
        "TemplateQuery", "DataEventSubscriptionAdd", "SubscriptionDel", "SubscriptionQuery", "UIEventSubscriptionAdd",
        "UIExtensionSubscriptionAdd"}},
  };
  return kReleases;
}

std::map<std::string_view, Version> FirstVersions() {
  std::map<std::string_view, Version> versions;
  for (const auto& [version, requests] : Releases()) {
    for (const auto request : requests) EXPECT_TRUE(versions.emplace(request, version).second) << request;
  }
  return versions;
}

TEST(FirstVersion, Is_told_here_of_every_request_and_of_no_other) {
  const auto versions = FirstVersions();
  for (const auto& message : messages::AllMessages()) {
    const auto told = versions.find(message.name);
    ASSERT_NE(told, versions.end()) << message.name;
    EXPECT_EQ(message.known.since, told->second) << message.name;
  }
  EXPECT_EQ(messages::AllMessages().size(), versions.size());
}

class RequestsOfVersions : public CompanyTest, public testing::WithParamInterface<Country> {
 protected:
  void SetUp() override { MakeFile({.country = GetParam(), .accepts = {GetParam()}}); }

  // The text of the refusal; empty when the document is taken.
  std::string RefusalText(const Message& message, const Form& form) {
    const auto request = "<" + message.RequestName() + "/>";
    const auto document = message.set == MessageSet::Company ? Document(request, FormTag(form))
                                                             : SubscriptionDocument(request, FormTag(form));
    try {
      static_cast<void>(file_->ProcessAny(document));
    } catch (const PlatformError& raised) {
      EXPECT_EQ(raised.number(), kRefused) << document;
      return raised.description();
    }
    return {};
  }
};

TEST_P(RequestsOfVersions, Are_taken_from_the_first_on_and_refuse_documents_of_earlier_ones) {
  const auto versions = FirstVersions();
  std::size_t refused = 0;
  for (const auto& message : messages::AllMessages()) {
    if ((message.known.countries & static_cast<messages::Countries>(GetParam())) == 0) continue;
    for (const auto version : VersionsOf(GetParam())) {
      const Form form = {.country = GetParam(), .version = version};
      const auto text = RefusalText(message, form);
      if (version < versions.at(message.name)) {
        EXPECT_NE(text.find("The request " + message.RequestName() + " is not known."), std::string::npos)
            << FormTag(form) << " " << message.name << ": " << text;
        ++refused;
      } else {
        EXPECT_EQ(text, "") << FormTag(form) << " " << message.name;
      }
    }
  }
  EXPECT_GT(refused, 50U);
}

INSTANTIATE_TEST_SUITE_P(Countries, RequestsOfVersions, Values(Country::US, Country::CA, Country::UK),
                         [](const auto& test) { return std::string(messages::CountryName(test.param)); });

class OtherRequestsOfVersions : public CompanyTest {};

TEST_F(OtherRequestsOfVersions, Are_known_from_the_first_on_too) {
  struct Case {
    std::string request;
    std::string before;  // the last version that did not know it
    std::string since;
  };
  for (const auto& [request, before, since] :
       {Case{"OtherNameMod", "1.0", "1.1"}, Case{"DepositAdd", "1.1", "2.0"}, Case{"ListDeletedQuery", "1.1", "2.0"},
        Case{"DataExtAdd", "1.1", "2.0"}, Case{"SalesOrderAdd", "2.0", "2.1"}, Case{"TxnDisplayAdd", "2.1", "3.0"},
        Case{"ItemFixedAssetQuery", "2.1", "3.0"}, Case{"DataEventRecoveryInfoQuery", "2.1", "3.0"},
        Case{"DataEventRecoveryInfoDel", "2.1", "3.0"}}) {
    const auto element = "<" + request + "Rq/>";
    EXPECT_EQ(RefusalOfRequest(element, before), kRefused) << request;
    EXPECT_EQ(Send(element, since).code, 1030) << request;
    EXPECT_EQ(Send(element, "3.0").code, 1030) << request;
  }
  EXPECT_EQ(Send("<OtherNameAddRq/>", "1.0").code, 1030) << "what came with the first version";
}

}  // namespace

}  // namespace twqb::company
