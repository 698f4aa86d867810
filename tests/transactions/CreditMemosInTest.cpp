// The get of credit memos, as far as it differs from that of invoices.

#include <gtest/gtest.h>

#include "tests/transactions/ArrivalsHouse.h"

namespace twqb {
namespace {

constexpr auto kTested = Got(enCreditMemo, "TransactionTable", "TransactionID", MoveCreditMemosToTW);

std::string Memo(const Changes& changes = {}, std::string_view lines = {}) {
  auto text = RecordOf("CreditMemo",
                       {{"TxnID", "1-1"},
                        {"TimeCreated", "2008-03-05T09:30:00-05:00"},
                        {"CustomerRef", kJobRef},
                        {"TxnDate", "2008-03-04"},
                        {"RefNumber", "1044"},
                        {"Subtotal", "100.00"},
                        {"TotalAmount", "105.00"}},
                       changes);
  return text.insert(text.rfind("</CreditMemoRet>"), lines);
}
std::string Line(std::string_view text, std::string_view amount) {
  return Element("CreditMemoLineRet", Element("Desc", text) + Element("Amount", amount));
}
std::string Group(std::string_view text, std::string_view total) {
  return Element("CreditMemoLineGroupRet", Element("Desc", text) + Element("TotalAmount", total));
}

class MemosHouse : public ArrivalsHouse {
 public:
  explicit MemosHouse(HouseOptions options = {}, std::string_view faults = {})
      : ArrivalsHouse(kTested, "CreditMemo", std::move(options), faults) {}
};

TEST(CreditMemosIn, A_credit_memo_becomes_a_row_of_negative_amounts_under_a_number_of_its_own) {
  MemosHouse house;
  house.Take({Memo({{"Memo", "Returned"}, {"IsToBePrinted", "true"}}, Line("Design", "100.00"))});
  const std::pair<std::string_view, std::string_view> columns[] = {{"TransactionInvNum", "CM1044"},
                                                                   {"TransactionDate", "3/5/2008 9:30:00 AM"},
                                                                   {"InvoiceDate", "3/4/2008"},
                                                                   {"ClientID", "ACME"},
                                                                   {"ProjectID", "ROOF:"},
                                                                   {"ServiceAmt", "-100"},
                                                                   {"ExpTaxAmt", "-5"},
                                                                   {"TransactionInvBillAmt", "-105"},
                                                                   {"TransactionManInv", "-1"},
                                                                   {"TransactionMemo", "Returned"},
                                                                   {"TransactionInvSendBillFlag", "P"},
                                                                   {"QBLinkID", "1-1"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Got(column), value) << column;
  EXPECT_EQ(house.Details(), "Design|-100\nCalculated Taxes|-5");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(CreditMemosIn, The_amounts_of_lines_are_turned_and_those_of_groups_are_not) {
  MemosHouse house;
  house.Take(
      {Memo({{"TotalAmount", "100.00"}}, Line("Design", "70.00") + Group("Kit", "40.00") + Line("Less", "-10.00"))});
  EXPECT_EQ(house.Details(), "Design|-70\nKit|40\nLess|10");
}

TEST(CreditMemosIn, Without_lines_one_detail_has_the_subtotal_as_it_came) {
  MemosHouse house;
  house.Take({Memo({{"TotalAmount", "100.00"}})});
  EXPECT_EQ(house.Details(), "Credit Memo from QuickBooks|100");
}

struct Taxed {
  std::string name;
  std::optional<std::string> subtotal;
  std::optional<std::string> total;
  std::string service;
  std::string tax;
  std::string billed;
};
class TaxOfCredit : public testing::TestWithParam<Taxed> {};

TEST_P(TaxOfCredit, Is_the_total_less_the_subtotal_turned) {
  MemosHouse house;
  house.Take({Memo({{"Subtotal", GetParam().subtotal}, {"TotalAmount", GetParam().total}}, Line("Design", "1.00"))});
  EXPECT_EQ(house.Got("ServiceAmt"), GetParam().service);
  EXPECT_EQ(house.Got("ExpTaxAmt"), GetParam().tax);
  EXPECT_EQ(house.Got("TransactionInvBillAmt"), GetParam().billed);
}

INSTANTIATE_TEST_SUITE_P(CreditMemosIn, TaxOfCredit,
                         testing::Values(Taxed{"Taxed", "100.00", "108.25", "-100", "-8.25", "-108.25"},
                                         Taxed{"Untaxed", "100.00", "100.00", "-100", "0", "-100"},
                                         Taxed{"Without_a_total", "100.00", {}, "-100", "0", "0"},
                                         Taxed{"Without_a_subtotal", {}, "105.00", "NULL", "0", "-105"},
                                         Taxed{"Without_both", {}, {}, "NULL", "0", "0"}),
                         [](const auto& test) { return test.param.name; });

TEST(CreditMemosIn, A_number_that_fills_its_column_leaves_no_room_for_the_letters_which_is_told) {
  MemosHouse house({.answers = "default yes"});
  house.Take(
      {Memo({{"RefNumber", std::string(23, '7')}}), Memo({{"TxnID", "2-1"}, {"RefNumber", std::string(30, '7')}})});
  EXPECT_EQ(house.RowsOf("QBLinkID,TransactionInvNum", "TransactionTable"), "1-1|CM" + std::string(23, '7'));
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(house.BoxTexts()[1], kKeepGoing);
}

TEST(CreditMemosIn, The_form_shows_no_numbers) {
  MemosHouse house;
  house.Take({Memo()});
  EXPECT_EQ(house.FormTexts(), Texts{"Getting Invoices from QuickBooks..."});
  EXPECT_EQ(house.ShownRecords(), Texts{"Label1"});
}

TEST(CreditMemosIn, One_without_a_number_and_a_pending_one_and_one_that_is_here_are_passed_over) {
  MemosHouse house;
  house.Take({Memo({{"TxnID", "2-1"}, {"RefNumber", " "}}), Memo({{"TxnID", "3-1"}, {"IsPending", "true"}}), Memo()});
  house.Take({Memo({{"Subtotal", "7.00"}})});
  EXPECT_EQ(house.RowsOf("QBLinkID,ServiceAmt", "TransactionTable"), "1-1|-100");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(CreditMemosIn, An_error_is_told_under_its_own_name) {
  MemosHouse house({.answers = "yes"}, Breaks("SELECT QBLinkID from TransactionTable"));
  house.Take({Memo()});
  EXPECT_EQ(house.BoxTexts(), (Texts{BrokenBox("MoveCreditMemosToTW"), kKeepGoing}));
  EXPECT_EQ(house.Log(), Texts{"Error transfering Credit Memo to Tallywick. Customer = Acme:Roof"});
  EXPECT_EQ(Outcome(), TableOk::GoOn);
}

TEST(CreditMemosIn, The_table_takes_invoices_from_its_first_read_and_credit_memos_from_its_second) {
  MemosHouse house;
  house.traffic.canned.push_back(
      "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><InvoiceQueryRs requestID=\"1\" statusCode=\"0\" "
      "statusSeverity=\"Info\" statusMessage=\"Status OK\"><InvoiceRet><TxnID>9-1</TxnID>" +
      Element("CustomerRef", kJobRef) + "<RefNumber>7</RefNumber></InvoiceRet></InvoiceQueryRs></QBXMLMsgsRs></QBXML>");
  house.traffic.canned.push_back(
      "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><CreditMemoQueryRs requestID=\"1\" statusCode=\"0\" "
      "statusSeverity=\"Info\" statusMessage=\"Status OK\">" +
      Memo() + "</CreditMemoQueryRs></QBXMLMsgsRs></QBXML>");
  EXPECT_TRUE(GetTableFromQB(enInvoices, {}, ActiveOnly::False, false, nullptr));
  EXPECT_EQ(house.RowsOf("TransactionInvNum", "TransactionTable"), "7\nCM1044");
}

}  // namespace
}  // namespace twqb
