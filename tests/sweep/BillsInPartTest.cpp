// What the check of bills in part finds: each test damages one thing of what a break leaves.
#include <gtest/gtest.h>

#include "BillsInPart.h"

namespace twqb::sweep {
namespace {

std::string Line(const std::string& text) { return "<ItemLineRet><Desc>" + text + "</Desc></ItemLineRet>"; }
Fields Row(const std::string& link) { return {{"ELCost", "10"}, {"QBLinkID", link}, {"LastUpdated", "\\N"}}; }
Fields Bill(const std::string& lines) { return {{"lines", lines}}; }

// A send of two expenses of a vendor, of which a clean run makes one bill.
class BillsInPart : public testing::Test {
 protected:
  const Expectation expected_ = {
      .tables = {{.name = "ExpenseLog", .keyColumn = "ELID", .stampColumn = "LastUpdated"}},
      .before = {.rows = {{"ExpenseLog/taxi", Row("\\N")}, {"ExpenseLog/train", Row("\\N")}},
                 .records = {{"Vendor/Smith", {{"body", ""}}}},
                 .damage = {}},
      .after = {
          .rows = {{"ExpenseLog/taxi", Row("-> Bill/taxi, line 1")}, {"ExpenseLog/train", Row("-> Bill/taxi, line 2")}},
          .records = {{"Vendor/Smith", {{"body", ""}}}, {"Bill/taxi", Bill(Line("taxi") + Line("train"))}},
          .damage = {}}};
  // The train went alone, and the taxi with the run behind it.
  Snapshot now_ = {
      .rows = {{"ExpenseLog/taxi", Row("-> Bill/taxi, line 1")}, {"ExpenseLog/train", Row("-> Bill/train, line 1")}},
      .records = {{"Vendor/Smith", {{"body", ""}}},
                  {"Bill/taxi", Bill(Line("taxi"))},
                  {"Bill/train", Bill(Line("train"))}},
      .damage = {}};

  [[nodiscard]] std::size_t Broken() const { return CheckBillInPart(now_, expected_, BillsAt::Broken).size(); }
  [[nodiscard]] std::size_t InStep() const { return CheckBillInPart(now_, expected_, BillsAt::InStep).size(); }
};

TEST_F(BillsInPart, In_two_bills_all_rows_are_billed) { EXPECT_EQ(InStep(), 0U); }

TEST_F(BillsInPart, Right_after_the_break_one_row_waits) {
  now_.rows["ExpenseLog/taxi"] = Row("\\N");
  now_.records.erase("Bill/taxi");
  EXPECT_EQ(Broken(), 0U);
  EXPECT_GT(InStep(), 0U);
}

TEST_F(BillsInPart, A_whole_bill_is_none_in_part) {
  now_ = expected_.after;
  EXPECT_EQ(Broken(), 0U);
  EXPECT_GT(InStep(), 0U);
}

TEST_F(BillsInPart, A_line_that_broke_off_shifts_the_row_behind_it) {
  now_.records["Bill/train"] = Bill("<ItemLineRet></ItemLineRet>" + Line("train"));
  EXPECT_EQ(InStep(), 0U);
  now_.records["Bill/train"] = Bill("<ItemLineRet></ItemLineRet>" + Line("bus"));
  EXPECT_GT(InStep(), 0U);
}

TEST_F(BillsInPart, A_link_to_another_s_line_is_found) {
  now_.rows["ExpenseLog/train"] = Row("-> Bill/taxi, line 1");
  EXPECT_GT(Broken(), 0U);
  EXPECT_GT(InStep(), 0U);
}

TEST_F(BillsInPart, A_line_that_no_row_has_is_found) {
  now_.records["Bill/train"] = Bill(Line("train") + Line("bus"));
  EXPECT_GT(Broken(), 0U);
}

TEST_F(BillsInPart, A_row_that_changed_went_or_came_is_found) {
  for (const auto& damage : {+[](Snapshot& now) { now.rows["ExpenseLog/taxi"]["ELCost"] = "11"; },
                             +[](Snapshot& now) { now.rows.erase("ExpenseLog/taxi"); },
                             +[](Snapshot& now) { now.rows["ExpenseLog/bus"] = Row("\\N"); },
                             +[](Snapshot& now) { now.records.erase("Vendor/Smith"); },
                             +[](Snapshot& now) {
                               now.records["Vendor/Taylor"] = {{"body", ""}};
                             },
                             +[](Snapshot& now) { now.damage.emplace_back("company.twq: malformed"); }}) {
    const auto sound = now_;
    damage(now_);
    EXPECT_GT(Broken(), 0U);
    EXPECT_GT(InStep(), 0U);
    now_ = sound;
  }
}

}  // namespace
}  // namespace twqb::sweep
