#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "messages/Schema.h"
#include "platform/Text.h"

namespace twqb::messages {
namespace {

constexpr Form kUs3 = {Country::US, {3, 0}};
constexpr Form kCa3 = {Country::CA, {3, 0}};
constexpr Form kUk3 = {Country::UK, {3, 0}};
constexpr Form kAu3 = {Country::AU, {3, 0}};

// The names that stand on the wire directly below a request's or response's own element, in order.
std::vector<std::string> Names(std::span<const Element> rows, const Form& form) {
  std::vector<std::string> names;
  for (const auto& row : rows) {
    if (!row.KnownIn(form)) continue;
    if (row.LeavesNoElement()) {
      for (auto& name : Names(row.Children(), form)) names.push_back(std::move(name));
    } else {
      names.emplace_back(row.name);
    }
  }
  return names;
}

// The row at a path such as "CustomerAddRq/CustomerAdd/BillAddress/City".
const Element& Row(std::string_view path) {
  const auto slash = path.find('/');
  const auto name = path.substr(0, slash);
  const auto* message = FindMessage(name);
  if (message == nullptr) throw std::invalid_argument(std::string(path));
  auto rows = name.ends_with("Rs") ? message->response : message->request;
  path.remove_prefix(slash + 1);
  for (;;) {
    const auto end = std::min(path.find('/'), path.size());
    const auto* row = FindChild(rows, path.substr(0, end));
    if (row == nullptr) throw std::invalid_argument(std::string(path));
    if (end == path.size()) return *row;
    path.remove_prefix(end + 1);
    rows = row->Children();
  }
}

using Strings = std::vector<std::string>;

TEST(Schema, Messages_are_found_by_name_with_or_without_Rq_and_Rs_in_exact_case) {
  for (const auto* name : {"CustomerAdd", "CustomerAddRq", "CustomerAddRs"}) {
    ASSERT_NE(FindMessage(name), nullptr) << name;
    EXPECT_EQ(FindMessage(name)->name, "CustomerAdd");
  }
  for (const auto* name : {"customeraddrq", "CustomerAddRqRq", "Customer", "", "Rq", "CustomerAddRet"}) {
    EXPECT_EQ(FindMessage(name), nullptr) << name;
  }
  EXPECT_EQ(FindMessage("HostQuery")->RequestName(), "HostQueryRq");
  EXPECT_EQ(FindMessage("HostQuery")->ResponseName(), "HostQueryRs");
}

TEST(Schema, Every_message_stands_once_in_the_table_in_the_order_of_the_names) {
  const auto all = AllMessages();
  ASSERT_GE(all.size(), 5U);
  for (std::size_t i = 1; i < all.size(); ++i) EXPECT_LT(all[i - 1].name, all[i].name);
  for (const auto& message : all) EXPECT_EQ(FindMessage(message.name), &message);
}

// Checks what every reader of the table takes for granted, below every row.
void ExpectSound(std::span<const Element> rows, const std::string& path) {
  std::set<std::pair<std::string_view, Countries>> names;
  for (const auto& row : rows) {
    const auto here = path + "/" + std::string(row.name);
    EXPECT_TRUE(names.emplace(row.name, row.known.countries).second) << here << " stands twice";
    EXPECT_EQ(row.HasChildren(), !row.Children().empty()) << here;
    EXPECT_EQ(row.type == Type::Enum, !row.Values().empty()) << here;
    if (row.maxLength != 0) {
      EXPECT_EQ(row.type, Type::Str) << here;
    }
    if (row.known.until != Version{}) {
      EXPECT_LT(row.known.since, row.known.until) << here;
    }
    std::set<std::string_view> values;
    std::set<int> numbers;
    for (const auto& value : row.Values()) {
      EXPECT_TRUE(values.insert(value.name).second) << here << " " << value.name;
      EXPECT_TRUE(numbers.insert(value.number).second) << here << " " << value.number;
    }
    ExpectSound(row.Children(), here);
  }
}

TEST(Schema, Every_row_is_sound) {
  for (const auto& message : AllMessages()) {
    ExpectSound(message.request, message.RequestName());
    ExpectSound(message.response, message.ResponseName());
  }
}

TEST(Schema, The_host_record_has_its_published_order) {
  EXPECT_EQ(Names(Row("HostQueryRs/HostRet").Children(), kUs3),
            (Strings{"ProductName", "MajorVersion", "MinorVersion", "Country", "SupportedQBXMLVersion",
                     "IsAutomaticLogin", "QBFileMode"}));
  EXPECT_EQ(Names(Row("HostQueryRs/HostRet").Children(), {Country::US, {2, 0}}),
            (Strings{"ProductName", "MajorVersion", "MinorVersion", "SupportedQBXMLVersion"}));
  EXPECT_TRUE(FindMessage("HostQuery")->request.empty());
}

TEST(Schema, The_customer_add_request_has_its_published_order) {
  EXPECT_EQ(Names(Row("CustomerAddRq/CustomerAdd").Children(), kUs3), (Strings{"Name",
                                                                               "IsActive",
                                                                               "ParentRef",
                                                                               "CompanyName",
                                                                               "Salutation",
                                                                               "FirstName",
                                                                               "MiddleName",
                                                                               "LastName",
                                                                               "BillAddress",
                                                                               "ShipAddress",
                                                                               "Phone",
                                                                               "AltPhone",
                                                                               "Fax",
                                                                               "Email",
                                                                               "Contact",
                                                                               "AltContact",
                                                                               "CustomerTypeRef",
                                                                               "TermsRef",
                                                                               "SalesRepRef",
                                                                               "OpenBalance",
                                                                               "OpenBalanceDate",
                                                                               "SalesTaxCodeRef",
                                                                               "ItemSalesTaxRef",
                                                                               "ResaleNumber",
                                                                               "AccountNumber",
                                                                               "CreditLimit",
                                                                               "PreferredPaymentMethodRef",
                                                                               "CreditCardInfo",
                                                                               "JobStatus",
                                                                               "JobStartDate",
                                                                               "JobProjectedEndDate",
                                                                               "JobEndDate",
                                                                               "JobDesc",
                                                                               "JobTypeRef",
                                                                               "Notes"}));
}

TEST(Schema, The_customer_query_puts_identifiers_names_and_filters_into_one_choice) {
  EXPECT_EQ(Names(FindMessage("CustomerQuery")->request, kUs3),
            (Strings{"ListID", "FullName", "MaxReturned", "ActiveStatus", "FromModifiedDate", "ToModifiedDate",
                     "NameFilter", "NameRangeFilter", "TotalBalanceFilter", "OwnerID"}));
  EXPECT_EQ(Row("CustomerQueryRq/ORCustomerListQuery").type, Type::Choice);
  EXPECT_TRUE(Row("CustomerQueryRq/ORCustomerListQuery").optional);
  EXPECT_TRUE(Row("CustomerQueryRq/ORCustomerListQuery/ListID").repeating);
  EXPECT_EQ(Row("CustomerQueryRq/ORCustomerListQuery/ListFilter").type, Type::Step);
  EXPECT_EQ(Row("CustomerQueryRq/ORCustomerListQuery/ListFilter/ORNameFilter").type, Type::Choice);
}

TEST(Schema, The_customer_record_begins_with_identity_and_has_the_balances_before_the_tax_codes) {
  const auto names = Names(Row("CustomerQueryRs/CustomerRet").Children(), kUs3);
  EXPECT_EQ(Strings(names.begin(), names.begin() + 9),
            (Strings{"ListID", "TimeCreated", "TimeModified", "EditSequence", "Name", "FullName", "IsActive",
                     "ParentRef", "Sublevel"}));
  const auto at = [&names](std::string_view name) { return std::ranges::find(names, name) - names.begin(); };
  EXPECT_LT(at("Balance"), at("TotalBalance"));
  EXPECT_LT(at("TotalBalance"), at("SalesTaxCodeRef"));
  EXPECT_EQ(names.back(), "DataExtRet");
}

TEST(Schema, Only_a_query_answers_with_more_than_one_record) {
  EXPECT_TRUE(Row("CustomerQueryRs/CustomerRet").repeating);
  EXPECT_FALSE(Row("CustomerAddRs/CustomerRet").repeating);
  EXPECT_FALSE(Row("CustomerModRs/CustomerRet").repeating);
}

struct Length {
  std::string_view path;
  int length;
};

class Lengths : public testing::TestWithParam<Length> {};

TEST_P(Lengths, The_greatest_length_is_the_published_one) {
  EXPECT_EQ(Row(GetParam().path).maxLength, GetParam().length) << GetParam().path;
}

INSTANTIATE_TEST_SUITE_P(
    Schema, Lengths,
    testing::Values(
        Length{"CustomerAddRq/CustomerAdd/Name", 41}, Length{"CustomerAddRq/CustomerAdd/Salutation", 15},
        Length{"CustomerAddRq/CustomerAdd/FirstName", 25}, Length{"CustomerAddRq/CustomerAdd/MiddleName", 5},
        Length{"CustomerAddRq/CustomerAdd/LastName", 25}, Length{"CustomerAddRq/CustomerAdd/BillAddress/Addr1", 41},
        Length{"CustomerAddRq/CustomerAdd/BillAddress/Addr4", 41},
        Length{"CustomerAddRq/CustomerAdd/BillAddress/City", 31},
        Length{"CustomerAddRq/CustomerAdd/BillAddress/State", 21},
        Length{"CustomerAddRq/CustomerAdd/ShipAddress/Province", 21},
        Length{"CustomerAddRq/CustomerAdd/ShipAddress/County", 21},
        Length{"CustomerAddRq/CustomerAdd/ShipAddress/PostalCode", 13},
        Length{"CustomerAddRq/CustomerAdd/ShipAddress/Country", 31}, Length{"CustomerAddRq/CustomerAdd/Phone", 21},
        Length{"CustomerAddRq/CustomerAdd/Fax", 21}, Length{"CustomerAddRq/CustomerAdd/Email", 99},
        Length{"CustomerAddRq/CustomerAdd/JobDesc", 99}, Length{"CustomerAddRq/CustomerAdd/ParentRef/FullName", 0},
        Length{"CustomerAddRq/CustomerAdd/CustomerTypeRef/FullName", 159},
        Length{"CustomerAddRq/CustomerAdd/SalesTaxCodeRef/FullName", 3},
        Length{"CustomerAddRq/CustomerAdd/CurrencyRef/FullName", 100},
        Length{"CustomerModRq/CustomerMod/EditSequence", 16}, Length{"CustomerModRq/CustomerMod/Notes", 4095},
        Length{"CustomerQueryRs/CustomerRet/FullName", 209}));

TEST(Schema, Each_country_has_its_own_name_for_the_state) {
  const auto address = Row("CustomerAddRq/CustomerAdd/BillAddress").Children();
  const auto of = [](std::string_view part) {
    return Strings{"Addr1", "Addr2", "Addr3", "Addr4", "City", std::string(part), "PostalCode", "Country"};
  };
  EXPECT_EQ(Names(address, kUs3), of("State"));
  EXPECT_EQ(Names(address, kCa3), of("Province"));
  EXPECT_EQ(Names(address, kUk3), of("County"));
  EXPECT_EQ(Names(address, kAu3), of("State"));
}

struct Knowledge {
  std::string_view path;
  Form form;
  bool known;
};

class Knowing : public testing::TestWithParam<Knowledge> {};

TEST_P(Knowing, A_form_knows_an_element_by_country_and_version) {
  const auto& [path, form, known] = GetParam();
  EXPECT_EQ(Row(path).KnownIn(form), known) << path << " in " << FormTag(form);
}

INSTANTIATE_TEST_SUITE_P(Countries, Knowing,
                         testing::Values(Knowledge{"CustomerAddRq/CustomerAdd/SalesTaxCodeRef", kUs3, true},
                                         Knowledge{"CustomerAddRq/CustomerAdd/SalesTaxCodeRef", kAu3, true},
                                         Knowledge{"CustomerAddRq/CustomerAdd/SalesTaxCodeRef", kCa3, false},
                                         Knowledge{"CustomerAddRq/CustomerAdd/SalesTaxCodeRef", kUk3, false},
                                         Knowledge{"CustomerAddRq/CustomerAdd/ItemSalesTaxRef", kCa3, false},
                                         Knowledge{"CustomerAddRq/CustomerAdd/TaxCodeRef", kUs3, false},
                                         Knowledge{"CustomerAddRq/CustomerAdd/TaxCodeRef", kCa3, true},
                                         Knowledge{"CustomerAddRq/CustomerAdd/TaxCodeRef", kUk3, true},
                                         Knowledge{"CustomerAddRq/CustomerAdd/CurrencyRef", kCa3, true},
                                         Knowledge{"CustomerAddRq/CustomerAdd/CurrencyRef", kUk3, false},
                                         Knowledge{"CustomerAddRq/CustomerAdd/IsUsingCustomerTaxCode", kUs3, false}));

constexpr Form Us(int major, int minor) { return {Country::US, {major, minor}}; }

INSTANTIATE_TEST_SUITE_P(Versions, Knowing,
                         testing::Values(Knowledge{"CustomerAddRq/CustomerAdd/BillAddress/Addr4", Us(1, 1), false},
                                         Knowledge{"CustomerAddRq/CustomerAdd/BillAddress/Addr4", Us(2, 0), true},
                                         Knowledge{"CustomerAddRq/CustomerAdd/BillAddress/Addr3", Us(1, 0), true},
                                         Knowledge{"CustomerAddRq/CustomerAdd/Notes", Us(2, 1), false},
                                         Knowledge{"CustomerAddRq/CustomerAdd/Notes", Us(3, 0), true},
                                         Knowledge{"CustomerAddRq/CustomerAdd/IsActive", Us(1, 0), true},
                                         Knowledge{"CustomerModRq/CustomerMod/IsActive", Us(2, 1), false},
                                         Knowledge{"CustomerModRq/CustomerMod/IsActive", Us(3, 0), true},
                                         Knowledge{"CustomerQueryRs/CustomerRet/Notes", Us(1, 0), true},
                                         Knowledge{
                                             "CustomerAddRq/CustomerAdd/TaxCodeRef", {Country::CA, {1, 1}}, false}));

TEST(Schema, An_element_ends_with_the_version_that_does_not_know_it_any_more) {
  const Element row = {.name = "Name", .known = {.since = {1, 1}, .until = {3, 0}}};
  EXPECT_FALSE(row.KnownIn(Us(1, 0)));
  EXPECT_TRUE(row.KnownIn(Us(1, 1)));
  EXPECT_TRUE(row.KnownIn(Us(2, 1)));
  EXPECT_FALSE(row.KnownIn(Us(3, 0)));
  EXPECT_FALSE(row.KnownIn(Us(4, 0)));
}

TEST(Schema, Enumerations_have_the_numbers_of_the_object_model) {
  const auto number = [](const Element& row, std::string_view name) {
    for (const auto& value : row.Values()) {
      if (value.name == name) return value.number;
    }
    return -1;
  };
  const auto& status = Row("CustomerAddRq/CustomerAdd/JobStatus");
  const Strings inOrder = {"Awarded", "Closed", "InProgress", "None", "NotAwarded", "Pending"};
  for (std::size_t i = 0; i < inOrder.size(); ++i) EXPECT_EQ(number(status, inOrder[i]), static_cast<int>(i));
  const auto& active = Row("CustomerQueryRq/ORCustomerListQuery/ListFilter/ActiveStatus");
  EXPECT_EQ(number(active, "ActiveOnly"), 0);
  EXPECT_EQ(number(active, "InactiveOnly"), 1);
  EXPECT_EQ(number(active, "All"), 2);
}

TEST(Schema, Children_are_found_without_regard_to_case) {
  const auto rows = Row("CustomerAddRq/CustomerAdd").Children();
  ASSERT_NE(FindChild(rows, "COMPANYNAME"), nullptr);
  EXPECT_EQ(FindChild(rows, "COMPANYNAME")->name, "CompanyName");
  EXPECT_EQ(FindChild(rows, "companyname"), FindChild(rows, "CompanyName"));
  EXPECT_EQ(FindChild(rows, "Company"), nullptr);
  EXPECT_EQ(FindChild(rows, ""), nullptr);
}

// Of each list of rows below these: what a walk over it finds of a name is what the look-up finds.
void ExpectAllFound(const Rows& rows) {
  for (const auto& row : rows) {
    const auto first = std::ranges::find(rows, row.name, &Element::name);
    EXPECT_EQ(FindChild(rows, row.name), &*first) << row.name;
    EXPECT_EQ(FindChild(rows, UpperCase(row.name)), &*first) << row.name;
    const auto list = std::string(row.name) + "List";
    const auto repeating =
        std::ranges::find_if(rows, [&row](const Element& other) { return other.name == row.name && other.repeating; });
    if (std::ranges::find(rows, list, &Element::name) == rows.end()) {
      EXPECT_EQ(FindChild(rows, list), repeating == rows.end() ? nullptr : &*repeating) << list;
    }
    EXPECT_EQ(FindChild(rows, "No" + std::string(row.name)), nullptr) << row.name;
    const bool needsChoice = std::ranges::any_of(
        row.Children(), [](const Element& child) { return child.type == Type::Choice && !child.optional; });
    EXPECT_EQ(row.Children().HasRequiredChoice(), needsChoice) << row.name;
    ExpectAllFound(row.Children());
  }
}

TEST(Schema, Every_row_of_every_message_is_found_by_its_name) {
  for (const auto& message : AllMessages()) {
    SCOPED_TRACE(message.name);
    ExpectAllFound(message.request);
    ExpectAllFound(message.response);
  }
}

TEST(Schema, The_list_of_a_repeating_child_is_found_by_its_name_with_List) {
  const auto record = Row("CustomerQueryRs/CustomerRet").Children();
  ASSERT_NE(FindChild(record, "dataextRETlist"), nullptr);
  EXPECT_EQ(FindChild(record, "DataExtRetList"), FindChild(record, "DataExtRet"));
  EXPECT_EQ(FindChild(record, "PhoneList"), nullptr) << "Phone does not repeat";
  EXPECT_EQ(FindChild(record, "List"), nullptr);
  const auto query = Row("CustomerQueryRq/ORCustomerListQuery").Children();
  ASSERT_NE(FindChild(query, "ListIDList"), nullptr);
  EXPECT_EQ(FindChild(query, "ListIDList")->name, "ListID");
  EXPECT_EQ(FindChild(query, "ListFilter")->name, "ListFilter");
}

TEST(Schema, Subscriptions_are_a_message_set_of_their_own) {
  EXPECT_EQ(FindMessage("SubscriptionQuery")->set, MessageSet::Subscription);
  EXPECT_EQ(Names(FindMessage("SubscriptionQuery")->request, kUs3), (Strings{"SubscriberID"}));
  EXPECT_EQ(FindMessage("CustomerAdd")->set, MessageSet::Company);
}

TEST(Form, The_tag_is_country_and_version_and_the_US_form_has_no_country) {
  EXPECT_EQ(FormTag(kUs3), "3.0");
  EXPECT_EQ(FormTag(kCa3), "CA3.0");
  EXPECT_EQ(FormTag(kUk3), "UK3.0");
  EXPECT_EQ(FormTag(kAu3), "AU3.0");
  EXPECT_EQ(FormTag(Us(2, 1)), "2.1");
  EXPECT_EQ(FormTag({Country::CA, {13, 12}}), "CA13.12");
}

TEST(Form, A_tag_and_back_is_the_same_form) {
  for (const auto country : {Country::US, Country::CA, Country::UK, Country::AU}) {
    for (const auto version : {Version{1, 0}, Version{2, 1}, Version{3, 0}, Version{13, 12}}) {
      const Form form = {country, version};
      EXPECT_EQ(FormFromTag(FormTag(form)), form) << FormTag(form);
    }
  }
}

TEST(Form, What_is_no_tag_gives_nothing) {
  for (const auto* text :
       {"", "3", "3.", ".0", "CA", "CA3", "XX3.0", "3.0.1", "3.0x", " 3.0", "3.0 ", "C3.0", "CAD3.0", "latest"}) {
    EXPECT_EQ(FormFromTag(text), std::nullopt) << text;
  }
}

TEST(Form, A_version_has_no_sign) {
  for (const auto* text : {"-3.0", "3.-1", "CA-3.0"}) EXPECT_EQ(FormFromTag(text), std::nullopt) << text;
}

TEST(Form, Countries_have_two_letters_in_any_case) {
  EXPECT_EQ(CountryFromName("ca"), Country::CA);
  EXPECT_EQ(CountryFromName("US"), Country::US);
  EXPECT_EQ(CountryFromName("Uk"), Country::UK);
  EXPECT_EQ(CountryFromName("AU"), Country::AU);
  EXPECT_EQ(CountryFromName("DE"), std::nullopt);
  EXPECT_EQ(CountryFromName(""), std::nullopt);
  EXPECT_EQ(CountryName(Country::AU), "AU");
}

}  // namespace
}  // namespace twqb::messages
