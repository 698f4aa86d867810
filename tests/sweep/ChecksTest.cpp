// What the checks find: each test damages one thing of a sound state.
#include <gtest/gtest.h>

#include "Checks.h"

namespace twqb::sweep {
namespace {

class Comparisons : public testing::Test {
 protected:
  explicit Comparisons(Expectation expected) : expected_(std::move(expected)), now_(expected_.after) {}

  const Expectation expected_;
  Snapshot now_;

  [[nodiscard]] std::size_t Broken(Leaves leaves = Leaves::Nothing) const {
    return CheckBroken(now_, expected_, leaves).size();
  }
  [[nodiscard]] std::size_t InStep(Leaves leaves = Leaves::Nothing) const {
    return CheckInStep(now_, expected_, leaves).size();
  }
};

// A send of two clients: ACME has a twin and is changed there, BIRCH gets its twin.
class Checks : public Comparisons {
 protected:
  static Fields Row(std::string company, std::string link, std::string stamp) {
    return {{"ClientCompany", std::move(company)}, {"QBLinkID", std::move(link)}, {"LastUpdate", std::move(stamp)}};
  }

  Checks()
      : Comparisons(
            {.tables = {{.name = "Client", .keyColumn = "ClientID", .stampColumn = "LastUpdate"}},
             .before = {.rows = {{"Client/ACME", Row("Acme", "-> Customer/Acme", "\\N")},
                                 {"Client/BIRCH", Row("Birch", "\\N", "\\N")}},
                        .records = {{"Customer/Acme", {{"body", "old"}}}},
                        .damage = {}},
             .after = {.rows = {{"Client/ACME", Row("Acme", "-> Customer/Acme", "\\N")},
                                {"Client/BIRCH", Row("Birch", "-> Customer/Birch", "now")}},
                       .records = {{"Customer/Acme", {{"body", "new"}}}, {"Customer/Birch", {{"body", "birch"}}}},
                       .damage = {}}}) {}
  // The state in which BIRCH was added a second time.
  void AddBirchTwice() {
    now_.rows["Client/BIRCH"]["QBLinkID"] = "-> Customer/Birch1";
    now_.records["Customer/Birch1"] = now_.records["Customer/Birch"];
  }
};

TEST_F(Checks, Before_and_after_are_both_whole) {
  EXPECT_EQ(Broken(), 0U);
  now_ = expected_.before;
  EXPECT_EQ(Broken(), 0U);
}

TEST_F(Checks, Only_the_state_after_a_clean_run_is_in_step) {
  EXPECT_EQ(InStep(), 0U);
  now_ = expected_.before;
  EXPECT_GT(InStep(), 0U);
}

TEST_F(Checks, Times_do_not_count_once_both_sides_are_in_step) {
  now_.rows["Client/BIRCH"]["LastUpdate"] = "later";
  EXPECT_EQ(InStep(), 0U);
  EXPECT_EQ(Broken(), 1U);
}

TEST_F(Checks, A_link_without_its_stamp_is_a_whole_row) {
  now_.rows["Client/BIRCH"]["LastUpdate"] = "\\N";
  EXPECT_EQ(Broken(), 0U);
}

TEST_F(Checks, A_stamp_without_its_link_is_half_a_row) {
  now_.rows["Client/BIRCH"]["QBLinkID"] = "\\N";
  EXPECT_GT(Broken(), 0U);
}

TEST_F(Checks, Damage_of_a_file_is_told) {
  now_.damage = {"billing.db: row 1 missing from index"};
  EXPECT_EQ(Broken(), 1U);
  EXPECT_EQ(InStep(), 1U);
}

TEST_F(Checks, A_lost_row_is_told) {
  now_.rows.erase("Client/ACME");
  EXPECT_EQ(Broken(), 1U);
  EXPECT_EQ(InStep(), 1U);
}

TEST_F(Checks, A_row_from_nowhere_is_told) {
  now_.rows["Client/CEDAR"] = Row("Cedar", "-> Customer/Cedar", "\\N");
  EXPECT_EQ(Broken(), 1U);
  EXPECT_EQ(InStep(), 1U);
}

TEST_F(Checks, A_record_of_other_values_is_told) {
  now_.records["Customer/Acme"]["body"] = "half";
  EXPECT_EQ(Broken(), 1U);
  EXPECT_EQ(InStep(), 1U);
}

TEST_F(Checks, A_record_without_its_row_is_expected_where_its_link_was_lost_and_nowhere_else) {
  now_.rows = expected_.before.rows;
  EXPECT_EQ(Broken(Leaves::OneLostLink), 0U);
  EXPECT_EQ(Broken(), 1U);
  EXPECT_GT(InStep(Leaves::OneLostLink), 0U);
  now_ = expected_.after;
  EXPECT_EQ(Broken(Leaves::OneLostLink), 1U);
  EXPECT_EQ(InStep(Leaves::OneLostLink), 0U);
}

TEST_F(Checks, A_record_added_twice_is_expected_nowhere) {
  AddBirchTwice();
  EXPECT_GT(InStep(), 0U);
  EXPECT_GT(InStep(Leaves::OneLostLink), 0U);
}

TEST_F(Checks, A_replaced_twin_keeps_its_values_and_the_new_one_has_the_row_s) {
  now_.rows["Client/ACME"]["QBLinkID"] = "-> Customer/Acme1";
  now_.records["Customer/Acme1"] = {{"body", "new"}};
  now_.records["Customer/Acme"] = {{"body", "old"}};
  EXPECT_EQ(Broken(Leaves::OneTwinReplaced), 0U);
  EXPECT_EQ(InStep(Leaves::OneTwinReplaced), 0U);
  EXPECT_GT(InStep(Leaves::OneLostLink), 0U);
  EXPECT_GT(Broken(), 0U);
  now_.records["Customer/Acme1"] = {{"body", "other"}};
  EXPECT_EQ(InStep(Leaves::OneTwinReplaced), 1U);
}

TEST_F(Checks, A_record_that_was_passed_over_is_expected_where_that_was_told_and_nowhere_else) {
  EXPECT_EQ(InStep(Leaves::OnePassedOver), 1U);
  now_.records["Customer/Acme"]["body"] = "old";
  EXPECT_EQ(InStep(Leaves::OnePassedOver), 0U);
  EXPECT_EQ(InStep(), 1U);
}

TEST_F(Checks, A_row_that_never_gets_a_link_is_in_step_without_one_and_not_with_one) {
  const auto row = Row("Cedar", "\\N", "\\N");
  auto expected = expected_;
  expected.before.rows["Client/CEDAR"] = row;
  expected.after.rows["Client/CEDAR"] = row;
  now_.rows["Client/CEDAR"] = row;
  EXPECT_EQ(CheckInStep(now_, expected, Leaves::Nothing).size(), 0U);
  now_.rows["Client/CEDAR"][std::string(kLinkColumn)] = "-> Customer/Cedar";
  EXPECT_EQ(CheckInStep(now_, expected, Leaves::Nothing).size(), 1U);
}

TEST_F(Checks, An_incomplete_record_is_a_part_of_the_whole_one_and_stands_in_its_place) {
  auto expected = expected_;
  expected.after.records["Customer/Birch"] = {{"body", "<A>1</A><B>2</B>"}};
  now_.rows["Client/BIRCH"]["QBLinkID"] = "-> Customer/";
  now_.records.erase("Customer/Birch");
  now_.records["Customer/"] = {{"body", "<A>1</A>"}};
  const auto inStep = [&](Leaves leaves) { return CheckInStep(now_, expected, leaves).size(); };
  EXPECT_EQ(inStep(Leaves::OneIncomplete), 0U);
  EXPECT_GT(inStep(Leaves::Nothing), 0U);
  EXPECT_GT(inStep(Leaves::OneLostLink), 0U);
  now_.records["Customer/"] = {{"body", "<A>3</A>"}};
  EXPECT_EQ(inStep(Leaves::OneIncomplete), 1U);
  now_.records["Customer/"] = {{"body", "<A>1</A>"}};
  now_.records["Customer/Birch"] = expected.after.records["Customer/Birch"];
  EXPECT_EQ(inStep(Leaves::OneIncomplete), 1U);
}

TEST_F(Checks, A_row_without_its_key_is_expected_where_that_was_told_and_nowhere_else) {
  auto expected = expected_;
  expected.tables.front().madeKeyColumn = "Key";
  for (auto* snapshot : {&expected.before, &expected.after, &now_}) {
    for (auto& [name, fields] : snapshot->rows) fields["Key"] = kMadeKey;
  }
  EXPECT_EQ(CheckInStep(now_, expected, Leaves::Nothing).size(), 0U);
  EXPECT_EQ(CheckInStep(now_, expected, Leaves::OneWithoutKey).size(), 1U);
  now_.rows["Client/BIRCH"]["Key"] = "";
  EXPECT_EQ(CheckInStep(now_, expected, Leaves::OneWithoutKey).size(), 0U);
  EXPECT_EQ(CheckInStep(now_, expected, Leaves::Nothing).size(), 1U);
  EXPECT_EQ(CheckBroken(now_, expected, Leaves::OneWithoutKey).size(), 0U);
}

TEST_F(Checks, An_invoice_in_another_form_is_expected_where_its_form_could_not_be_looked_up_and_nowhere_else) {
  auto expected = expected_;
  auto& invoice = expected.after.records["Customer/Birch"];
  invoice = {{"body", "<ClassRef>East</ClassRef>"}, {"lines", "<ItemRef>Design</ItemRef>"}, {"amount", "5"}};
  now_ = expected.after;
  const auto found = [&](Leaves leaves) {
    const auto broken = CheckBroken(now_, expected, leaves).size();
    EXPECT_EQ(CheckInStep(now_, expected, leaves).size(), broken);
    return broken;
  };
  EXPECT_EQ(found(Leaves::Nothing), 0U);
  EXPECT_EQ(found(Leaves::OneInAnotherForm), 1U);
  now_.records["Customer/Birch"] = {{"body", ""}, {"lines", "<ItemRef>From Tallywick</ItemRef>"}, {"amount", "5"}};
  EXPECT_EQ(found(Leaves::OneInAnotherForm), 0U);
  EXPECT_EQ(found(Leaves::Nothing), 1U);
  now_.records["Customer/Birch"]["amount"] = "6";
  EXPECT_EQ(found(Leaves::OneInAnotherForm), 2U);
}

TEST_F(Checks, Two_rows_of_one_record_are_told) {
  now_.rows["Client/ACME"]["QBLinkID"] = "-> Customer/Birch";
  EXPECT_GT(InStep(), 0U);
}

// A get of two payments, each of which becomes a payment and an allocation.
class ChecksOfSeveralRows : public Comparisons {
 protected:
  static Fields Row(std::string amount, std::string number) {
    return {{"Amount", std::move(amount)}, {"QBLinkID", "-> ReceivePayment/" + number}, {"Key", std::string(kMadeKey)}};
  }

  ChecksOfSeveralRows()
      : Comparisons({.tables = {{.name = "Payment",
                                 .keyColumn = "Name",
                                 .stampColumn = "LastUpdated",
                                 .madeKeyColumn = "Key",
                                 .perRecord = RowsOfARecord::Several},
                                {.name = "Allocation",
                                 .keyColumn = "Name",
                                 .stampColumn = "LastUpdated",
                                 .madeKeyColumn = "Key",
                                 .perRecord = RowsOfARecord::Several}},
                     .before = {.rows = {},
                                .records = {{"ReceivePayment/7", {{"body", "seven"}}},
                                            {"ReceivePayment/8", {{"body", "eight"}}}},
                                .damage = {}},
                     .after = {.rows = {{"Payment/7", Row("70", "7")},
                                        {"Payment/8", Row("80", "8")},
                                        {"Allocation/7", Row("70", "7")},
                                        {"Allocation/8", Row("80", "8")}},
                               .records = {{"ReceivePayment/7", {{"body", "seven"}}},
                                           {"ReceivePayment/8", {{"body", "eight"}}}},
                               .damage = {}}}) {}
};

TEST_F(ChecksOfSeveralRows, Rows_of_one_record_are_in_step) { EXPECT_EQ(InStep(), 0U); }

TEST_F(ChecksOfSeveralRows, A_row_that_is_there_twice_is_expected_where_its_record_comes_again_and_nowhere_else) {
  EXPECT_EQ(InStep(Leaves::OneTwice), 1U);
  now_.rows["Payment/71"] = Row("70", "7");
  EXPECT_EQ(InStep(Leaves::OneTwice), 0U);
  EXPECT_EQ(InStep(), 1U);
  now_.rows["Payment/81"] = Row("80", "8");
  EXPECT_EQ(InStep(Leaves::OneTwice), 1U) << "two records";
  now_.rows["Payment/81"] = Row("81", "8");
  EXPECT_EQ(InStep(Leaves::OneTwice), 1U) << "another amount";
}

TEST_F(ChecksOfSeveralRows, A_record_that_came_in_part_lacks_some_of_its_rows_but_not_all) {
  EXPECT_EQ(InStep(Leaves::OneInPart), 1U);
  now_.rows.erase("Allocation/7");
  EXPECT_EQ(InStep(Leaves::OneInPart), 0U);
  EXPECT_EQ(InStep(), 1U);
  EXPECT_EQ(Broken(Leaves::OneInPart), 0U);
  now_.rows.erase("Payment/7");
  EXPECT_GT(InStep(Leaves::OneInPart), 0U);
}

TEST_F(ChecksOfSeveralRows, A_record_that_stays_out_lacks_all_of_its_rows) {
  EXPECT_EQ(InStep(Leaves::OneLeftOut), 1U);
  now_.rows.erase("Allocation/7");
  EXPECT_GT(InStep(Leaves::OneLeftOut), 0U);
  now_.rows.erase("Payment/7");
  EXPECT_EQ(InStep(Leaves::OneLeftOut), 0U);
  EXPECT_GT(InStep(), 0U);
}

TEST_F(ChecksOfSeveralRows, A_row_without_its_key_may_lack_those_that_would_need_it_and_no_others) {
  now_.rows["Payment/7"]["Key"] = "";
  now_.rows.erase("Allocation/7");
  EXPECT_EQ(InStep(Leaves::OneWithoutKey), 0U);
  now_.rows.erase("Allocation/8");
  EXPECT_EQ(InStep(Leaves::OneWithoutKey), 1U);
}

// A send of a bill: its own row gets a link, and so does that of its line.
class ChecksOfLines : public Comparisons {
 protected:
  static Fields Row(std::string link) { return {{"QBLinkID", std::move(link)}, {"LastUpdated", "\\N"}}; }

  ChecksOfLines()
      : Comparisons({.tables = {{.name = "VendorBill", .keyColumn = "VendorBillID", .stampColumn = "LastUpdated"},
                                {.name = "TimeEntry", .keyColumn = "TEID", .stampColumn = "LastUpdated"}},
                     .before = {.rows = {{"VendorBill/B", Row("\\N")}, {"TimeEntry/T", Row("\\N")}},
                                .records = {},
                                .damage = {}},
                     .after = {.rows = {{"VendorBill/B", Row("-> Bill/B")}, {"TimeEntry/T", Row("-> Bill/B, line 1")}},
                               .records = {{"Bill/B", {{"body", "bill"}}}},
                               .damage = {}}}) {}
};

TEST_F(ChecksOfLines, A_record_and_a_line_of_it_may_be_linked_to_rows_of_two_tables) {
  EXPECT_EQ(Broken(), 0U);
  EXPECT_EQ(InStep(), 0U);
}

TEST_F(ChecksOfLines, A_line_without_its_link_is_half_a_record) {
  now_.rows["TimeEntry/T"]["QBLinkID"] = "\\N";
  EXPECT_EQ(Broken(), 1U);
  EXPECT_GT(InStep(), 0U);
  EXPECT_EQ(Broken(Leaves::OneLostLink), 0U);
  EXPECT_GT(InStep(Leaves::OneLostLink), 0U);
}

TEST_F(ChecksOfLines, Rows_of_one_record_that_all_lack_their_links_are_one) {
  now_.rows = expected_.before.rows;
  EXPECT_EQ(Broken(Leaves::OneLostLink), 0U);
}

TEST_F(ChecksOfLines, A_twin_that_was_replaced_has_all_its_rows) {
  now_.records["Bill/B1"] = now_.records["Bill/B"];
  now_.rows["VendorBill/B"]["QBLinkID"] = "-> Bill/B1";
  EXPECT_GT(InStep(Leaves::OneTwinReplaced), 0U);
  now_.rows["TimeEntry/T"]["QBLinkID"] = "-> Bill/B1, line 2";
  EXPECT_GT(InStep(Leaves::OneTwinReplaced), 0U);
  now_.rows["TimeEntry/T"]["QBLinkID"] = "-> Bill/B1, line 1";
  EXPECT_EQ(InStep(Leaves::OneTwinReplaced), 0U);
  EXPECT_GT(InStep(), 0U);
}

}  // namespace
}  // namespace twqb::sweep
