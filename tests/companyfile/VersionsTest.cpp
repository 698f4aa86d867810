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
#include "adapters/companyfile/RefusedDocument.h"
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

// What came with a version: kinds of records that can be added and asked for, and requests by their own names.
struct Release {
  Version version;
  std::vector<std::string> kinds;
  std::vector<std::string> requests;
};

const Release kReleases[] = {
    {{1, 0},
     {"Account",
      "Class",
      "Customer",
      "CustomerType",
      "DateDrivenTerms",
      "Employee",
      "JobType",
      "PaymentMethod",
      "SalesTaxCode",
      "StandardTerms",
      "Vendor",
      "VendorType",
      "ItemGroup",
      "ItemInventory",
      "ItemNonInventory",
      "ItemOtherCharge",
      "ItemPayment",
      "ItemSalesTax",
      "ItemService",
      "Bill",
      "Check",
      "CreditCardCharge",
      "CreditMemo",
      "Estimate",
      "Invoice"},
     {"HostQuery", "TermsQuery"}},
    {{1, 1}, {"ReceivePayment", "TimeTracking"}, {"CustomerMod", "EmployeeMod", "VendorMod", "ListDel", "TxnDel"}},
    {{2, 0}, {"PayrollItemWage", "TaxCode"}, {}},
    {{3, 0},
     {},
     {"ItemInventoryMod", "ItemNonInventoryMod", "ItemOtherChargeMod", "ItemServiceMod", "TxnDisplayMod",
      "TemplateQuery", "DataEventSubscriptionAdd", "SubscriptionDel", "SubscriptionQuery", "UIEventSubscriptionAdd",
      "UIExtensionSubscriptionAdd"}},
};

std::map<std::string, Version, std::less<>> FirstVersions() {
  std::map<std::string, Version, std::less<>> versions;
  for (const auto& [version, kinds, requests] : kReleases) {
    auto all = requests;
    for (const auto& kind : kinds) all.insert(all.end(), {kind + "Add", kind + "Query"});
    for (const auto& request : all) EXPECT_TRUE(versions.emplace(request, version).second) << request;
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
    } catch (const RefusedDocument& raised) {
      EXPECT_EQ(raised.number(), kRefused) << document;
      return raised.detail();
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
      if (version < versions.find(message.name)->second) {
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
