// Methods of payment: their names and codes, and how QuickBooks is asked for them ahead of payments.

#include <gtest/gtest.h>

#include "tests/transactions/PaymentsHouse.h"
#include "transactions/PaymentMethods.h"

namespace twqb {
namespace {

TEST(PaymentMethods, Are_nine_in_one_set_ahead_of_everything_and_of_an_empty_selection_too) {
  PaymentsHouse house;
  house.Send();
  Texts names;
  for (const auto& method : house.Requests("PaymentMethodAddRq")) {
    names.push_back(SpiedHouse::TextOf(method, "Name"));
    EXPECT_EQ(SpiedHouse::TextOf(method, "IsActive"), "true");
  }
  EXPECT_EQ(names,
            (Texts{"Check", "Cash", "Credit", "WriteOff", "Other", "Debit", "Credit Card", "EFT", "Money Order"}));
  EXPECT_EQ(house.traffic.documents.size(), 1U);
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Payment Methods to QuickBooks..."});
  EXPECT_FALSE(house.desk.Form());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(PaymentMethods, Are_shown_being_added_unless_nothing_is_to_be_shown) {
  PaymentsHouse house;
  house.Send();
  bool shown = false;
  for (const auto& event : house.desk.FormEvents()) {
    shown = shown || event.state.record == "Adding Payment Methods to QuickBooks...";
  }
  EXPECT_TRUE(shown);
  PaymentsHouse silent;
  Vars().g_NoProgressBar = true;
  silent.Send();
  EXPECT_TRUE(silent.desk.FormEvents().empty());
}

TEST(PaymentMethods, That_can_not_be_added_end_the_send_and_nothing_else_happens) {
  PaymentsHouse house({}, Refuses("PaymentMethodAddRq", 1, 3000));
  house.Payment("P1");
  house.Send();
  ASSERT_EQ(house.BoxTexts(), Texts{RefusalText("No.", 3000, "Error")});
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_TRUE(house.Statements("SELECT PayID").empty());
  EXPECT_EQ(house.traffic.documents.size(), 1U);
  EXPECT_FALSE(house.desk.Form());
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(PaymentMethods, That_are_there_are_no_trouble) {
  PaymentsHouse house;
  house.Send();
  house.Send();
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(PaymentMethods, That_can_not_be_asked_for_are_told_under_the_name_of_the_routine) {
  PaymentsHouse house({}, "DoRequests 1 raise 0x80040404 \"Broken.\"\n");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("AddPaymentMethodNamesToQB"))) << house.BoxTexts()[0];
}

TEST(PaymentMethods, Have_names_by_their_codes_and_a_check_that_of_the_country) {
  const PaymentsHouse house;
  const std::vector<std::pair<std::string_view, std::string_view>> names = {
      {"1", "Check"},       {"2", "Cash"},  {"3", "Credit"}, {"A", "Credit"},      {"a", "Credit"},
      {"4", "WriteOff"},    {"5", "Other"}, {"6", "Debit"},  {"7", "Credit Card"}, {"8", "EFT"},
      {"9", "Money Order"}, {"0", "Check"}, {"", "Check"},   {"B", "Check"}};
  for (const auto& [code, name] : names) EXPECT_EQ(PaymentMethodName(code), name) << code;
  for (const auto* country : {"CA", "uk"}) {
    Vars().g_QBCountry = country;
    EXPECT_EQ(PaymentMethodName("1"), "Cheque");
    EXPECT_EQ(PaymentMethodName("x"), "Cheque");
    EXPECT_EQ(PaymentMethodName("2"), "Cash");
  }
}

TEST(PaymentMethods, Come_in_by_the_code_that_they_went_out_under_but_for_those_that_are_credits) {
  const PaymentsHouse house;
  for (const auto* country : {"US", "CA", "UK", "AU"}) {
    Vars().g_QBCountry = country;
    for (std::int16_t code = 1; code <= 9; ++code) {
      EXPECT_EQ(PaymentMethodCode(PaymentMethodName(std::to_string(code))), code) << country;
    }
    for (const auto* applied : {"A", "a"}) EXPECT_EQ(PaymentMethodCode(PaymentMethodName(applied)), kCreditMethod);
  }
}

}  // namespace
}  // namespace twqb
