// What follows from the calls of a clean run.
#include <gtest/gtest.h>

#include "Trace.h"

namespace twqb::sweep {
namespace {

constexpr auto kBefore = FaultTiming::Before;
constexpr auto kAfter = FaultTiming::After;

// An Add at call 3 whose identifier is written at call 5.
const Trace kAdd = {.names = {"a", "b", "Transport.ProcessDocument", "d", "Connection.Execute", "f"},
                    .deeds = {{.k = 3, .kind = DeedKind::AddCarriedOut}, {.k = 5, .kind = DeedKind::LinkWritten}}};

TEST(Trace, A_link_is_lost_when_the_process_dies_between_the_carrying_out_of_an_Add_and_the_written_link) {
  EXPECT_EQ(WhatIsLeft(kAdd, 3, kBefore, Break::Kill), Leaves::Nothing);
  EXPECT_EQ(WhatIsLeft(kAdd, 3, kAfter, Break::Kill), Leaves::OneLostLink);
  EXPECT_EQ(WhatIsLeft(kAdd, 4, kBefore, Break::Kill), Leaves::OneLostLink);
  EXPECT_EQ(WhatIsLeft(kAdd, 4, kAfter, Break::Kill), Leaves::OneLostLink);
  EXPECT_EQ(WhatIsLeft(kAdd, 5, kBefore, Break::Kill), Leaves::OneLostLink);
  EXPECT_EQ(WhatIsLeft(kAdd, 5, kAfter, Break::Kill), Leaves::Nothing);
}

TEST(Trace, A_link_is_lost_between_that_of_the_row_itself_and_that_of_a_part) {
  auto trace = kAdd;
  trace.names.emplace_back("Connection.Execute");
  trace.deeds.push_back({.k = 7, .kind = DeedKind::LinkWritten});
  for (const std::size_t k : {5U, 6U}) EXPECT_EQ(WhatIsLeft(trace, k, kAfter, Break::Kill), Leaves::OneLostLink) << k;
  EXPECT_EQ(WhatIsLeft(trace, 7, kAfter, Break::Kill), Leaves::Nothing);
}

TEST(Trace, An_error_behind_an_Add_loses_no_link) {
  for (std::size_t k = 3; k <= 5; ++k) EXPECT_EQ(WhatIsLeft(kAdd, k, kAfter, Break::Raise), Leaves::Nothing) << k;
}

TEST(Trace, An_outcome_that_can_t_be_dropped_is_told_ahead_of_the_first_Add_and_ignored_behind_it) {
  auto trace = kAdd;
  trace.deeds.insert(trace.deeds.begin(), {.k = 1, .kind = DeedKind::OutcomeDropped});
  trace.deeds.push_back({.k = 6, .kind = DeedKind::OutcomeDropped});
  EXPECT_TRUE(WhyIgnored(trace, 1, kBefore).empty());
  EXPECT_FALSE(WhyIgnored(trace, 6, kBefore).empty());
}

// Two lines of a bill, looked up at calls 1 to 6, an Add at call 7, and links behind it.
Trace TwoLines(std::vector<Deed> links) {
  Trace trace = {.names = std::vector<std::string>(10, "Connection.Execute"), .deeds = {}};
  for (std::size_t k = 1; k <= 6; ++k) trace.deeds.push_back({.k = k, .kind = DeedKind::LineKeyLookedUp});
  trace.deeds.push_back({.k = 7, .kind = DeedKind::AddCarriedOut});
  for (const auto& link : links) trace.deeds.push_back(link);
  return trace;
}

TEST(Trace, A_bill_without_a_row_of_its_own_goes_in_part_where_any_look_up_fails) {
  const auto trace = TwoLines({{.k = 8, .kind = DeedKind::LinkWritten}, {.k = 9, .kind = DeedKind::LinkWritten}});
  for (std::size_t k = 1; k <= 6; ++k) {
    EXPECT_EQ(WhatIsLeft(trace, k, kBefore, Break::Raise), Leaves::OneBillInPart) << k;
    EXPECT_EQ(WhatIsLeft(trace, k, kBefore, Break::Kill), Leaves::Nothing) << k;
    EXPECT_TRUE(PassesOverSilently(trace, k)) << k;
  }
  EXPECT_EQ(WhatIsLeft(trace, 8, kAfter, Break::Raise), Leaves::Nothing);
  for (const std::size_t k : {7U, 8U}) EXPECT_EQ(WhatIsLeft(trace, k, kAfter, Break::Kill), Leaves::OneLostLink) << k;
  EXPECT_EQ(WhatIsLeft(trace, 9, kAfter, Break::Kill), Leaves::Nothing);
}

TEST(Trace, A_bill_with_a_row_of_its_own_goes_in_part_from_its_second_line_on) {
  const auto trace = TwoLines({{.k = 8, .kind = DeedKind::LinkWritten},
                               {.k = 8, .kind = DeedKind::BillLinked},
                               {.k = 9, .kind = DeedKind::LinkWritten},
                               {.k = 10, .kind = DeedKind::LinkWritten}});
  for (std::size_t k = 1; k <= 6; ++k) {
    EXPECT_EQ(WhatIsLeft(trace, k, kBefore, Break::Raise), k <= 3 ? Leaves::Nothing : Leaves::OneBillInPart) << k;
  }
  EXPECT_EQ(WhatIsLeft(trace, 9, kAfter, Break::Kill), Leaves::OneLostLink);
  EXPECT_EQ(WhatIsLeft(trace, 10, kAfter, Break::Kill), Leaves::Nothing);
}

TEST(Trace, A_bill_of_one_line_goes_or_stays) {
  const auto trace = TwoLines({{.k = 8, .kind = DeedKind::LinkWritten}});
  for (std::size_t k = 1; k <= 6; ++k) EXPECT_EQ(WhatIsLeft(trace, k, kBefore, Break::Raise), Leaves::Nothing) << k;
}

TEST(Trace, Until_a_vendor_is_picked_an_error_leaves_the_row_to_the_next_run) {
  const Trace trace = {.names = {"Connection.OpenRecordset", "Recordset.Field", "Recordset.MoveNext", "Desk.PickVendor",
                                 "Connection.Execute"},
                       .deeds = {{.k = 1, .kind = DeedKind::VendorsListed}}};
  for (std::size_t k = 1; k <= 4; ++k) EXPECT_TRUE(PassesOverSilently(trace, k)) << k;
  EXPECT_FALSE(PassesOverSilently(trace, 5));
}

TEST(Trace, A_bill_s_own_link_that_can_t_be_written_is_ignored_and_what_is_around_it_is_told) {
  const Trace trace = {
      .names = {"Transport.ProcessDocument", "Connection.State", "Desk.PumpMessages", "Connection.Execute",
                "Recordset.FieldAt", "Connection.State", "Desk.PumpMessages", "Connection.Execute"},
      .deeds = {{.k = 1, .kind = DeedKind::AddCarriedOut},
                {.k = 4, .kind = DeedKind::LinkWritten},
                {.k = 4, .kind = DeedKind::BillLinked},
                {.k = 8, .kind = DeedKind::LinkWritten}}};
  for (const std::size_t k : {4U, 5U}) EXPECT_FALSE(WhyIgnored(trace, k, kBefore).empty()) << k;
  for (const std::size_t k : {2U, 3U, 6U, 7U}) EXPECT_TRUE(WhyIgnored(trace, k, kBefore).empty()) << k;
  for (std::size_t k = 2; k <= 8; ++k) {
    EXPECT_EQ(WhatIsLeft(trace, k, kBefore, Break::Raise), Leaves::Nothing) << k;
    EXPECT_EQ(WhatIsLeft(trace, k, kBefore, Break::Kill), Leaves::OneLostLink) << k;
  }
}

// The reading of a twin at call 1, and the Mod at call 6.
const Trace kMod = {.names = {"Transport.ProcessDocument", "Desk.PumpMessages", "Machine.GetTimeZoneInformation",
                              "Recordset.Field", "Machine.GetTimeZoneInformation", "Transport.ProcessDocument"},
                    .deeds = {{.k = 1, .kind = DeedKind::TwinRead}, {.k = 6, .kind = DeedKind::ModCarriedOut}}};

TEST(Trace, A_twin_that_can_t_be_read_is_replaced_and_one_that_can_t_be_compared_is_passed_over) {
  for (const auto timing : {kBefore, kAfter}) {
    EXPECT_EQ(WhatIsLeft(kMod, 1, timing, Break::Raise), Leaves::OneTwinReplaced);
    EXPECT_EQ(WhatIsLeft(kMod, 2, timing, Break::Raise), Leaves::OnePassedOver);
    EXPECT_EQ(WhatIsLeft(kMod, 3, timing, Break::Raise), Leaves::Nothing);
    EXPECT_EQ(WhatIsLeft(kMod, 4, timing, Break::Raise), Leaves::OnePassedOver);
    EXPECT_EQ(WhatIsLeft(kMod, 5, timing, Break::Raise), Leaves::OnePassedOver);
    EXPECT_EQ(WhatIsLeft(kMod, 6, timing, Break::Raise), Leaves::Nothing);
  }
}

TEST(Trace, A_table_that_passes_over_a_name_in_use_replaces_no_twin) {
  EXPECT_EQ(WhatIsLeft(kAdd, 5, kAfter, Break::Kill, NameInUse::PassesOver), Leaves::Nothing);
  EXPECT_EQ(WhatIsLeft(kMod, 1, kAfter, Break::Raise, NameInUse::PassesOver), Leaves::Nothing);
}

TEST(Trace, A_kill_replaces_and_passes_over_nothing) {
  for (std::size_t k = 1; k <= kMod.names.size(); ++k) {
    EXPECT_EQ(WhatIsLeft(kMod, k, kAfter, Break::Kill), Leaves::Nothing);
  }
}

TEST(Trace, A_log_line_is_ignored_and_another_clock_is_not) {
  const Trace trace = {.names = {"Machine.Now", "Machine.LibraryFolder", "Machine.AppendLine", "Machine.Now"},
                       .deeds = {}};
  EXPECT_FALSE(WhyIgnored(trace, 1, kBefore).empty());
  EXPECT_FALSE(WhyIgnored(trace, 3, kAfter).empty());
  EXPECT_TRUE(WhyIgnored(trace, 4, kBefore).empty());
}

TEST(Trace, A_choice_that_can_t_be_read_is_ignored_with_the_reads_behind_it) {
  const Trace trace = {.names = {"Connection.Execute", "Recordset.FieldAt", "Recordset.Field", "Recordset.FieldAt"},
                       .deeds = {{.k = 1, .kind = DeedKind::Choice}}};
  EXPECT_FALSE(WhyIgnored(trace, 1, kBefore).empty());
  EXPECT_FALSE(WhyIgnored(trace, 2, kAfter).empty());
  EXPECT_TRUE(WhyIgnored(trace, 3, kBefore).empty());
  EXPECT_TRUE(WhyIgnored(trace, 4, kBefore).empty());
  EXPECT_FALSE(PassesOverSilently(trace, 1));
}

TEST(Trace, A_key_that_can_t_be_looked_up_passes_its_record_over) {
  const Trace trace = {.names = {"Connection.OpenRecordset", "Recordset.Eof", "Recordset.FieldAt", "Recordset.AddNew"},
                       .deeds = {{.k = 1, .kind = DeedKind::KeyLookedUp}}};
  for (std::size_t k = 1; k <= 3; ++k) EXPECT_TRUE(PassesOverSilently(trace, k)) << k;
  EXPECT_FALSE(PassesOverSilently(trace, 4));
  EXPECT_FALSE(WhyIgnored(trace, 3, kAfter).empty());
}

TEST(Trace, A_payer_who_can_t_be_looked_up_passes_a_payment_over_and_no_other_record) {
  Trace trace = {.names = {"Connection.OpenRecordset", "Connection.Execute", "Recordset.FieldAt"},
                 .deeds = {{.k = 2, .kind = DeedKind::PayerLookedUp}}};
  EXPECT_FALSE(PassesOverSilently(trace, 2));
  EXPECT_TRUE(WhyIgnored(trace, 3, kBefore).empty());
  trace.deeds.insert(trace.deeds.begin(), {.k = 1, .kind = DeedKind::PaymentBegun});
  EXPECT_FALSE(PassesOverSilently(trace, 1));
  EXPECT_TRUE(PassesOverSilently(trace, 2));
  EXPECT_FALSE(WhyIgnored(trace, 3, kBefore).empty());
}

TEST(Trace, A_row_that_can_t_be_shown_is_told_but_where_its_table_ignores_that) {
  Trace trace = {.names = {"Desk.PumpMessages", "Recordset.Field", "Recordset.Field", "Recordset.Field",
                           "Desk.UpdateMsgForm", "Desk.PumpMessages", "Machine.Now", "Desk.UpdateMsgForm",
                           "Desk.PumpMessages", "Desk.UpdateMsgForm", "Desk.PumpMessages"},
                 .deeds = {}};
  for (const std::size_t k : {2U, 3U, 4U, 10U, 11U}) EXPECT_TRUE(WhyIgnored(trace, k, kBefore).empty()) << k;
  trace.display = RowDisplay::Ignored;
  EXPECT_TRUE(WhyIgnored(trace, 2, kBefore).empty());
  for (const std::size_t k : {3U, 4U, 10U, 11U}) EXPECT_FALSE(WhyIgnored(trace, k, kBefore).empty()) << k;
}

TEST(Trace, A_person_to_bill_who_can_t_be_told_passes_an_expense_over) {
  const Trace trace = {.names = {"Desk.UpdateMsgForm", "Desk.PumpMessages", "Recordset.Field", "Recordset.Field",
                                 "Recordset.Field", "Connection.State", "Desk.PumpMessages", "Connection.Execute"},
                       .deeds = {}};
  EXPECT_TRUE(PassesOverSilently(trace, 5));
  EXPECT_FALSE(WhyIgnored(trace, 5, kAfter).empty());
  EXPECT_FALSE(PassesOverSilently(trace, 4));
  EXPECT_TRUE(WhyIgnored(trace, 4, kBefore).empty());
}

TEST(Trace, An_entry_is_incomplete_where_its_last_fields_can_t_be_read) {
  const Trace trace = {.names = {"Connection.State", "Recordset.Field", "Recordset.Field", "Recordset.Field",
                                 "Recordset.Field", "Machine.GetPrivateProfileString", "Recordset.Field",
                                 "Connection.State", "Desk.PumpMessages", "Connection.Execute"},
                       .deeds = {}};
  EXPECT_EQ(WhatIsLeft(trace, 1, kBefore, Break::Raise), Leaves::Nothing);
  EXPECT_EQ(WhatIsLeft(trace, 2, kBefore, Break::Raise), Leaves::OneIncomplete);
  EXPECT_EQ(WhatIsLeft(trace, 5, kAfter, Break::Raise), Leaves::OneIncomplete);
  EXPECT_EQ(WhatIsLeft(trace, 6, kBefore, Break::Raise), Leaves::Nothing);
  EXPECT_EQ(WhatIsLeft(trace, 3, kBefore, Break::Kill), Leaves::Nothing);
}

TEST(Trace, An_invoice_takes_another_form_where_what_decides_it_can_t_be_looked_up) {
  const Trace trace = {
      .names = {"Connection.Execute", "Connection.OpenRecordset", "Connection.Execute", "Recordset.FieldAt",
                "Recordset.Field", "Transport.ProcessDocument", "Connection.Execute"},
      .deeds = {{.k = 1, .kind = DeedKind::FormFound},
                {.k = 2, .kind = DeedKind::InvoiceBegun},
                {.k = 3, .kind = DeedKind::FormFound},
                {.k = 6, .kind = DeedKind::AddCarriedOut},
                {.k = 7, .kind = DeedKind::FormFound}}};
  for (const std::size_t k : {3U, 4U}) {
    EXPECT_EQ(WhatIsLeft(trace, k, kAfter, Break::Raise), Leaves::OneInAnotherForm) << k;
    EXPECT_EQ(WhatIsLeft(trace, k, kAfter, Break::Kill), Leaves::Nothing) << k;
    EXPECT_FALSE(WhyIgnored(trace, k, kBefore).empty()) << k;
  }
  for (const std::size_t k : {1U, 2U, 5U, 7U}) {
    EXPECT_EQ(WhatIsLeft(trace, k, kBefore, Break::Raise), Leaves::Nothing) << k;
    EXPECT_TRUE(WhyIgnored(trace, k, kBefore).empty()) << k;
  }
}

TEST(Trace, The_wait_pointer_is_ignored_around_a_document_and_the_document_is_not) {
  const Trace trace = {.names = {"Desk.SetPointer", "Transport.ProcessDocument", "Desk.SetPointer", "Desk.SetPointer"},
                       .deeds = {}};
  EXPECT_FALSE(WhyIgnored(trace, 1, kBefore).empty());
  EXPECT_TRUE(WhyIgnored(trace, 2, kBefore).empty());
  EXPECT_FALSE(WhyIgnored(trace, 3, kAfter).empty());
  EXPECT_TRUE(WhyIgnored(trace, 4, kBefore).empty());
}

TEST(Trace, A_session_that_has_begun_and_raised_has_to_be_told) {
  const Trace trace = {.names = {"Transport.BeginSession"}, .deeds = {}};
  EXPECT_FALSE(WhyIgnored(trace, 1, kBefore).empty());
  EXPECT_TRUE(WhyIgnored(trace, 1, kAfter).empty());
}

// Two records of a get: one that becomes three rows, of which the second tells that it is here, and one of one row.
const Trace kRows = {.names = {"a", "b", "c", "d", "e", "f", "Machine.CreateGuid", "h"},
                     .deeds = {{.k = 1, .kind = DeedKind::RecordLookedFor},
                               {.k = 2, .kind = DeedKind::RowWritten},
                               {.k = 3, .kind = DeedKind::TellingRowWritten},
                               {.k = 5, .kind = DeedKind::RowWritten},
                               {.k = 6, .kind = DeedKind::RecordLookedFor},
                               {.k = 8, .kind = DeedKind::TellingRowWritten}}};

TEST(Trace, A_record_of_several_rows_comes_twice_until_one_tells_of_it_and_in_part_until_the_last) {
  for (const auto how : {Break::Raise, Break::Kill}) {
    EXPECT_EQ(WhatIsLeftOfAGet(kRows, 1, kAfter, how), Leaves::Nothing);
    EXPECT_EQ(WhatIsLeftOfAGet(kRows, 2, kBefore, how), Leaves::Nothing);
    EXPECT_EQ(WhatIsLeftOfAGet(kRows, 2, kAfter, how), Leaves::OneTwice);
    EXPECT_EQ(WhatIsLeftOfAGet(kRows, 3, kBefore, how), Leaves::OneTwice);
    EXPECT_EQ(WhatIsLeftOfAGet(kRows, 3, kAfter, how), Leaves::OneInPart);
    EXPECT_EQ(WhatIsLeftOfAGet(kRows, 4, kBefore, how), Leaves::OneInPart);
    EXPECT_EQ(WhatIsLeftOfAGet(kRows, 5, kAfter, how), Leaves::Nothing);
    EXPECT_EQ(WhatIsLeftOfAGet(kRows, 6, kBefore, how), Leaves::Nothing);
    EXPECT_EQ(WhatIsLeftOfAGet(kRows, 8, kBefore, how), Leaves::Nothing);
  }
  EXPECT_EQ(WhatIsLeftOfAGet(kRows, 7, kBefore, Break::Raise), Leaves::OneWithoutKey);
  EXPECT_EQ(WhatIsLeftOfAGet(kRows, 7, kBefore, Break::Kill), Leaves::Nothing);
}

// A record of a row that does not tell and of two that do, each with the look-up that it is written by.
const Trace kEntries = {.names = {"a", "b", "Connection.OpenRecordset", "d", "Connection.OpenRecordset", "f"},
                        .deeds = {{.k = 1, .kind = DeedKind::RecordLookedFor},
                                  {.k = 2, .kind = DeedKind::RowWritten},
                                  {.k = 3, .kind = DeedKind::KeyLookedUp},
                                  {.k = 4, .kind = DeedKind::TellingRowWritten},
                                  {.k = 5, .kind = DeedKind::KeyLookedUp},
                                  {.k = 6, .kind = DeedKind::TellingRowWritten}}};

TEST(Trace, A_record_comes_in_part_where_a_look_up_for_one_of_its_rows_fails_and_twice_where_it_is_the_only_one) {
  EXPECT_EQ(WhatIsLeftOfAGet(kEntries, 3, kBefore, Break::Raise), Leaves::OneInPart);
  EXPECT_EQ(WhatIsLeftOfAGet(kEntries, 5, kBefore, Break::Raise), Leaves::OneInPart);
  EXPECT_EQ(WhatIsLeftOfAGet(kEntries, 3, kBefore, Break::Kill), Leaves::OneTwice);
  auto single = kEntries;
  single.deeds.resize(4);
  EXPECT_EQ(WhatIsLeftOfAGet(single, 3, kBefore, Break::Raise), Leaves::OneTwice);
}

TEST(Trace, A_record_stays_out_where_the_owner_of_its_project_is_lost_and_is_needed) {
  Trace trace = {.names = {"Connection.Execute", "Recordset.Eof", "Recordset.FieldAt", "d", "e"},
                 .deeds = {{.k = 1, .kind = DeedKind::OwnerLookedUp}, {.k = 5, .kind = DeedKind::OwnerNeeded}}};
  for (std::size_t k = 1; k <= 3; ++k) {
    EXPECT_EQ(WhatIsLeftOfAGet(trace, k, kBefore, Break::Raise), Leaves::OneLeftOut) << k;
    EXPECT_EQ(WhatIsLeftOfAGet(trace, k, kBefore, Break::Kill), Leaves::Nothing) << k;
  }
  EXPECT_EQ(WhatIsLeftOfAGet(trace, 4, kBefore, Break::Raise), Leaves::Nothing);
  trace.deeds.pop_back();
  EXPECT_EQ(WhatIsLeftOfAGet(trace, 1, kBefore, Break::Raise), Leaves::Nothing);
}

}  // namespace
}  // namespace twqb::sweep
