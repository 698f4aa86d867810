// The rows against the published messages: each request and answer, in the US and the Canadian form, and what the rows
// know beyond them.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "Outline.h"
#include "messages/ValueFormat.h"

namespace twqb::messages {
namespace {

struct PublishedForm {
  std::string_view file;
  Form form;
};
constexpr PublishedForm kForms[] = {
    {"us-3.0", {Country::US, {3, 0}}},
    {"ca-3.0", {Country::CA, {3, 0}}},
};

std::string OutlineOf(const Message& message, bool answer, const Form& form) {
  return Outline(answer ? message.response : message.request, form);
}

// Both from the place on where they part, so that a failure can be read.
void ExpectSame(std::string_view rows, std::string_view published, const std::string& what) {
  if (rows == published) return;
  constexpr std::size_t kLead = 60;
  constexpr std::size_t kShown = 200;
  const auto parts = std::ranges::mismatch(rows, published);
  const auto same = static_cast<std::size_t>(parts.in1 - rows.begin());
  const auto from = same > kLead ? same - kLead : 0;
  ADD_FAILURE() << what << "\n  rows:      " << rows.substr(from, kShown)
                << "\n  published: " << published.substr(from, kShown);
}

class Published : public testing::TestWithParam<PublishedForm> {};

TEST_P(Published, Every_message_has_the_published_elements_in_their_order_with_type_length_and_obligation) {
  const auto& [file, form] = GetParam();
  const auto outlines = ReadOutlines(file);
  ASSERT_GT(outlines.size(), 90U);
  for (const auto& [name, outline] : outlines) {
    const auto* message = FindMessage(name);
    ASSERT_NE(message, nullptr) << name;
    EXPECT_TRUE(message->KnownIn(form)) << name << " in " << FormTag(form);
    ExpectSame(OutlineOf(*message, name.ends_with("Rs"), form), outline, name);
  }
}

bool IsAddOrMod(const Message& message) { return message.name.ends_with("Add") || message.name.ends_with("Mod"); }

TEST_P(Published, The_rows_beyond_the_published_ones_are_the_subscription_query_and_answers_to_Add_and_Mod) {
  const auto& [file, form] = GetParam();
  const auto outlines = ReadOutlines(file);
  for (const auto& message : AllMessages()) {
    if (!message.KnownIn(form) || message.name == "SubscriptionQuery") continue;
    // A query can lack its answer where an Add of the same record has none either.
    const bool hasAnswer = outlines.contains(message.ResponseName());
    EXPECT_TRUE(outlines.contains(message.RequestName())) << message.name;
    EXPECT_TRUE(hasAnswer || IsAddOrMod(message) || message.name == "ItemGroupQuery" ||
                message.name == "ItemPaymentQuery")
        << message.name;
  }
}

TEST_P(Published, An_Add_and_a_Mod_answer_with_the_one_record_that_the_query_answers_with) {
  const auto& form = GetParam().form;
  std::size_t compared = 0;
  for (const auto& message : AllMessages()) {
    if (!message.KnownIn(form) || message.set != MessageSet::Company || !IsAddOrMod(message)) continue;
    if (message.name == "TxnDisplayMod") continue;  // answers with its status alone
    const auto record = message.name.substr(0, message.name.size() - std::string_view("Add").size());
    const auto* query = FindMessage(std::string(record) + "Query");
    ASSERT_NE(query, nullptr) << message.name;
    auto many = OutlineOf(*query, true, form);
    ASSERT_TRUE(many.starts_with(fmt::format("{}Ret?*{{", record))) << many;
    many.erase(many.find('*'), 1);
    ExpectSame(OutlineOf(message, true, form), many, std::string(message.name));
    ++compared;
  }
  EXPECT_GE(compared, 25U);
}

INSTANTIATE_TEST_SUITE_P(Forms, Published, testing::ValuesIn(kForms),
                         [](const auto& form) { return std::string(CountryName(form.param.form.country)); });

TEST(MessageTable, Has_every_request_that_is_sent) {
  for (const auto* name : {
           "AccountAddRq",
           "AccountQueryRq",
           "BillAddRq",
           "BillQueryRq",
           "CheckQueryRq",
           "ClassQueryRq",
           "CreditCardChargeQueryRq",
           "CreditMemoQueryRq",
           "CustomerAddRq",
           "CustomerModRq",
           "CustomerQueryRq",
           "EmployeeAddRq",
           "EmployeeModRq",
           "EmployeeQueryRq",
           "EstimateQueryRq",
           "HostQueryRq",
           "InvoiceAddRq",
           "InvoiceQueryRq",
           "ItemInventoryModRq",
           "ItemInventoryQueryRq",
           "ItemNonInventoryModRq",
           "ItemNonInventoryQueryRq",
           "ItemOtherChargeAddRq",
           "ItemOtherChargeModRq",
           "ItemOtherChargeQueryRq",
           "ItemPaymentAddRq",
           "ItemSalesTaxAddRq",
           "ItemSalesTaxQueryRq",
           "ItemServiceAddRq",
           "ItemServiceModRq",
           "ItemServiceQueryRq",
           "ListDelRq",
           "PaymentMethodAddRq",
           "PayrollItemWageAddRq",
           "PayrollItemWageQueryRq",
           "ReceivePaymentAddRq",
           "ReceivePaymentQueryRq",
           "TimeTrackingAddRq",
           "TimeTrackingQueryRq",
           "TxnDelRq",
           "TxnDisplayModRq",
           "VendorAddRq",
           "VendorModRq",
           "VendorQueryRq",
       }) {
    const auto* message = FindMessage(name);
    ASSERT_NE(message, nullptr) << name;
    EXPECT_EQ(message->set, MessageSet::Company) << name;
  }
  for (const auto* name : {"DataEventSubscriptionAddRq", "UIEventSubscriptionAddRq", "UIExtensionSubscriptionAddRq",
                           "SubscriptionDelRq", "SubscriptionQueryRq"}) {
    const auto* message = FindMessage(name);
    ASSERT_NE(message, nullptr) << name;
    EXPECT_EQ(message->set, MessageSet::Subscription) << name;
  }
}

// What the rows know beyond the published messages of version 3.0.

constexpr Form Us(int major, int minor) { return {Country::US, {major, minor}}; }
constexpr Form kBritish = {Country::UK, {3, 0}};

// The outline of the element `name` anywhere in the message; empty when the form does not know it.
std::string OutlineOfElement(std::string_view message, std::string_view name, const Form& form) {
  const auto* found = FindMessage(message);
  const auto text = " " + OutlineOf(*found, message.ends_with("Rs"), form);
  for (const auto* before : {" ", "{", "[", "|"}) {
    for (const auto* after : {":", "?", "*", "{", "@"}) {
      const auto at = text.find(fmt::format("{}{}{}", before, name, after));
      if (at != std::string::npos) return text.substr(at + 1, text.find_first_of(" }|]", at + 1) - at - 1);
    }
  }
  return {};
}

TEST(BeyondThePublished, The_name_of_an_employee_may_be_given_until_version_2_1) {
  for (const auto* request : {"EmployeeAddRq", "EmployeeModRq"}) {
    EXPECT_EQ(OutlineOfElement(request, "Name", Us(1, 0)), "Name?:s41") << request;
    EXPECT_EQ(OutlineOfElement(request, "Name", Us(2, 1)), "Name?:s41") << request;
    EXPECT_EQ(OutlineOfElement(request, "Name", Us(3, 0)), "") << request;
  }
  EXPECT_EQ(OutlineOfElement("EmployeeQueryRs", "Name", Us(3, 0)), "Name:s41");
}

TEST(BeyondThePublished, The_object_model_knows_fields_that_no_company_file_does) {
  const auto knows = [](std::string_view message, std::string_view field) {
    const auto* request = FindMessage(message);
    return FindChild(request->request.front().Children(), field) != nullptr;
  };
  for (const auto country : {Country::US, Country::CA, Country::UK, Country::AU}) {
    for (const auto version : {Version{1, 0}, Version{3, 0}, Version{13, 0}}) {
      const Form form = {country, version};
      EXPECT_EQ(OutlineOfElement("VendorAddRq", "Mobile", form), "") << FormTag(form);
      EXPECT_EQ(OutlineOfElement("VendorModRq", "Mobile", form), "") << FormTag(form);
      EXPECT_EQ(OutlineOfElement("TimeTrackingAddRq", "Rate", form), "") << FormTag(form);
    }
  }
  EXPECT_TRUE(knows("VendorAddRq", "Mobile"));
  EXPECT_TRUE(knows("VendorModRq", "Mobile"));
  EXPECT_TRUE(knows("TimeTrackingAddRq", "Rate"));
}

TEST(BeyondThePublished, An_overtime_wage_is_known_from_version_5_on) {
  const auto wageTypes = [](const Form& form) { return Outline(FindMessage("PayrollItemWageAdd")->request, form); };
  EXPECT_EQ(wageTypes(Us(3, 0)).find("HourlyOvertime"), std::string::npos);
  EXPECT_EQ(wageTypes(Us(4, 1)).find("HourlyOvertime"), std::string::npos);
  EXPECT_NE(wageTypes(Us(5, 0)).find("|HourlyOvertime|"), std::string::npos);
}

TEST(BeyondThePublished, The_object_model_knows_wages_that_no_form_does) {
  const auto& wages = *FindChild(FindMessage("PayrollItemWageAdd")->request.front().Children(), "WageType");
  for (const auto* name : {"Hourly", "Salary"}) {
    EXPECT_TRUE(IsWellFormed(wages, name)) << name;
    for (const auto country : {Country::US, Country::CA, Country::UK, Country::AU}) {
      for (const auto version : {Version{1, 0}, Version{3, 0}, Version{13, 0}}) {
        const Form form = {country, version};
        EXPECT_FALSE(IsWellFormed(wages, name, form)) << name << " in " << FormTag(form);
      }
    }
  }
}

TEST(BeyondThePublished, The_British_form_has_names_of_its_own) {
  for (const auto* request : {"CustomerAddRq", "CustomerModRq", "VendorAddRq", "InvoiceAddRq", "EmployeeAddRq"}) {
    EXPECT_EQ(OutlineOfElement(request, "County", kBritish), "County?:s21") << request;
    EXPECT_EQ(OutlineOfElement(request, "State", kBritish), "") << request;
    EXPECT_EQ(OutlineOfElement(request, "Province", kBritish), "") << request;
  }
  EXPECT_EQ(OutlineOfElement("EmployeeAddRq", "NiNumber", kBritish), "NiNumber?:s15");
  EXPECT_EQ(OutlineOfElement("EmployeeAddRq", "SSN", kBritish), "");
  EXPECT_EQ(OutlineOfElement("EmployeeAddRq", "SIN", kBritish), "");
  EXPECT_EQ(OutlineOfElement("EmployeeAddRq", "BirthDate", kBritish), "BirthDate?:d@2.0");
}

TEST(BeyondThePublished, The_British_form_refers_to_tax_codes_as_the_Canadian_one_does) {
  for (const auto& [request, field] :
       {std::pair{"CustomerAddRq", "TaxCodeRef"}, std::pair{"InvoiceAddRq", "TaxCodeRef"},
        std::pair{"CreditMemoAddRq", "TaxCodeRef"}, std::pair{"EstimateAddRq", "TaxCodeRef"},
        std::pair{"BillAddRq", "TaxCodeRef"}, std::pair{"ItemServiceAddRq", "TaxCodeForSaleRef"},
        std::pair{"ItemServiceAddRq", "TaxCodeForPurchaseRef"}}) {
    EXPECT_NE(OutlineOfElement(request, field, kBritish), "") << request;
    EXPECT_EQ(OutlineOfElement(request, field, kBritish), OutlineOfElement(request, field, kForms[1].form)) << request;
    EXPECT_EQ(OutlineOfElement(request, "SalesTaxCodeRef", kBritish), "") << request;
  }
  EXPECT_TRUE(FindMessage("TaxCodeQuery")->KnownIn(kBritish));
  EXPECT_FALSE(FindMessage("SalesTaxCodeQuery")->KnownIn(kBritish));
  EXPECT_FALSE(FindMessage("TaxCodeQuery")->KnownIn(Us(3, 0)));
}

// The paths of the elements that may carry the attribute, below requests.
void CollectCarriers(std::span<const Element> rows, std::string_view attribute, const std::string& path,
                     std::vector<std::string>& paths) {
  for (const auto& row : rows) {
    const auto here = row.LeavesNoElement() ? path : path + "/" + std::string(row.name);
    if (row.attribute == attribute) paths.push_back(here);
    CollectCarriers(row.Children(), attribute, here, paths);
  }
}

TEST(BeyondThePublished, Macros_are_given_where_transactions_are_added_and_used_where_payments_are_applied) {
  const auto carriers = [](std::string_view attribute) {
    std::vector<std::string> paths;
    for (const auto& message : AllMessages()) {
      CollectCarriers(message.request, attribute, message.RequestName(), paths);
      std::vector<std::string> answered;
      CollectCarriers(message.response, attribute, message.ResponseName(), answered);
      EXPECT_EQ(answered, std::vector<std::string>{}) << message.name;
    }
    return paths;
  };
  EXPECT_EQ(carriers("defMacro"),
            (std::vector<std::string>{"BillAddRq/BillAdd", "BillAddRq/BillAdd/ExpenseLineAdd", "CheckAddRq/CheckAdd",
                                      "CheckAddRq/CheckAdd/ExpenseLineAdd", "CreditCardChargeAddRq/CreditCardChargeAdd",
                                      "CreditCardChargeAddRq/CreditCardChargeAdd/ExpenseLineAdd",
                                      "CreditMemoAddRq/CreditMemoAdd",
                                      "CreditMemoAddRq/CreditMemoAdd/CreditMemoLineAdd", "EstimateAddRq/EstimateAdd",
                                      "InvoiceAddRq/InvoiceAdd", "InvoiceAddRq/InvoiceAdd/InvoiceLineAdd",
                                      "ReceivePaymentAddRq/ReceivePaymentAdd", "TimeTrackingAddRq/TimeTrackingAdd"}));
  EXPECT_EQ(carriers("useMacro"),
            (std::vector<std::string>{"ReceivePaymentAddRq/ReceivePaymentAdd/AppliedToTxnAdd/TxnID",
                                      "ReceivePaymentAddRq/ReceivePaymentAdd/AppliedToTxnAdd/SetCredit/CreditTxnID"}));
}

TEST(BeyondThePublished, The_query_for_a_subscription_takes_the_subscriber_and_answers_with_its_status_alone) {
  EXPECT_EQ(Outline(FindMessage("SubscriptionQuery")->request, Us(3, 0)), "SubscriberID:guid");
  EXPECT_EQ(Outline(FindMessage("SubscriptionQuery")->response, Us(3, 0)), "");
}

}  // namespace
}  // namespace twqb::messages
