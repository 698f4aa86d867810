// Previews and differences where both sides are elsewhere: they say what those of files say, only ask, and leave
// nothing behind, whatever fails.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <pugixml.hpp>

#include "adapters/terminal/EndSignals.h"
#include "cli/options/ExitStatus.h"
#include "cli/preview/Diff.h"
#include "cli/preview/DiffReport.h"
#include "cli/preview/Preview.h"
#include "cli/preview/PreviewReport.h"
#include "tests/firm/ElsewhereOffice.h"
#include "tests/firm/FirmHouse.h"

namespace twqb {
namespace {

using cli::TransferRequest;

constexpr TransferRequest kSendAll = {.direction = Direction::Send};
constexpr TransferRequest kGetAll = {.direction = Direction::Get};

class ElsewherePreview : public testing::TestWithParam<unsigned> {};

TEST_P(ElsewherePreview, Says_what_a_preview_of_files_says) {
  for (unsigned number = GetParam() * 4; number < (GetParam() + 1) * 4; ++number) {
    Office office({.content = cli::Content::Firm, .firm = TinyFirm(number)});
    office.ExpectSamePreview(kSendAll);
    office.ExpectSamePreview(kGetAll);
    office.ExpectSamePreview({.direction = Direction::Send, .table = enClients, .id = "", .sync = true});
    EXPECT_TRUE(office.IsTidy());
  }
}

INSTANTIATE_TEST_SUITE_P(Firm, ElsewherePreview, testing::Range(0U, 3U));

TEST(ElsewhereDemonstrationFirm, Is_previewed_as_from_files) {
  Office office({.content = cli::Content::Sample});
  office.ExpectSamePreview(kSendAll);
  office.ExpectSamePreview(kGetAll);
  office.ExpectSamePreview({.direction = Direction::Get, .table = enPayments});
  office.ExpectSamePreview({.direction = Direction::Send, .table = enClients, .id = "ABBOTT"});
}

TEST(ElsewhereDemonstrationFirm, Is_previewed_as_from_files_with_one_side_elsewhere_and_in_the_other_dialect) {
  Office office({.content = cli::Content::Sample}, Office::Dialect::Jet);
  office.ExpectSamePreview(kSendAll);
  auto database = office.There();
  database.quickBooksItself = false;
  office.ExpectSamePreview(kGetAll, database);
  auto quickBooks = office.There();
  quickBooks.billing = office.Here().billing;
  office.ExpectSamePreview(kSendAll, quickBooks);
}

// Whether a box came that is not about the first run, which each of these is.
bool IsTold(const cli::Preview& preview) {
  const auto isOfFirstRun = [](const cli::PreviewedBox& box) { return box.title.starts_with("Back"); };
  return !std::ranges::all_of(preview.boxes, isOfFirstRun);
}

TEST(ElsewherePreviews, Of_a_QuickBooks_without_time_tracking_hear_what_the_transfer_hears) {
  Office office({.content = cli::Content::Sample});
  office.Set(&company::CompanyConditions::timeTracking, company::Feature::Disabled);
  for (const auto direction : {Direction::Send, Direction::Get}) {
    const TransferRequest request = {.direction = direction, .table = enTimeEntries};
    office.ExpectSamePreview(request);
    EXPECT_TRUE(IsTold(cli::RunPreview(office.There(), request)));
  }
}

TEST(ElsewherePreviews, Of_a_QuickBooks_that_begins_no_session_fail_as_the_transfer_would) {
  Office office({.content = cli::Content::Firm, .firm = TinyFirm(1)});
  office.Set(&company::CompanyConditions::application, company::Permission::Withheld);
  const auto preview = cli::RunPreview(office.There(), kSendAll);
  EXPECT_FALSE(preview.done);
  ASSERT_FALSE(preview.boxes.empty());
  EXPECT_NE(preview.boxes.front().text.find("permission"), std::string::npos);
  try {
    static_cast<void>(cli::FindDifference(office.There(), enClients, std::nullopt));
    FAIL();
  } catch (const cli::UsageError& told) {
    EXPECT_NE(std::string(told.what()).find("no session with QuickBooks"), std::string::npos) << told.what();
  }
  EXPECT_TRUE(office.IsTidy());
}

TEST(ElsewhereDemonstrationFirm, Differs_as_in_files_and_is_read_once_for_all_transfers_of_the_comparison) {
  Office office({.content = cli::Content::Sample});
  const auto told = [](const cli::Difference& difference) { return cli::DifferenceJson(difference); };
  Office::ExpectSameLines(told(cli::FindDifference(office.Here(), enClients, std::nullopt)),
                          told(cli::FindDifference(office.There(), enClients, std::nullopt)));
  const auto asked = std::ranges::count_if(office.elsewhere->documents, [](const std::string& document) {
    // Whoever asks: a session of the transfer's own would number its requests.
    return document.find("<CustomerQueryRq") != std::string::npos;
  });
  EXPECT_EQ(asked, 1);
}

TEST(ElsewherePreviews, Only_ask) {
  Office office({.content = cli::Content::Firm, .firm = TinyFirm(1)});
  const auto bytes = office.Files();
  EXPECT_TRUE(cli::RunPreview(office.There(), kSendAll).done);
  EXPECT_TRUE(cli::RunPreview(office.There(), kGetAll).done);
  EXPECT_EQ(office.Changed(bytes), "");
  EXPECT_GT(office.elsewhere->documents.size(), 40U);
  for (const auto& text : office.elsewhere->documents) {
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(text.c_str())) << text;
    for (const auto request : document.child("QBXML").child("QBXMLMsgsRq").children()) {
      const std::string_view name = request.name();
      EXPECT_TRUE(name.ends_with("QueryRq")) << text;
      // The library numbers its requests: of those only that of a session's begin gets here.
      EXPECT_TRUE(name == "HostQueryRq" || !request.attribute("requestID")) << text;
    }
  }
  EXPECT_GT(office.elsewhere->statements.size(), 40U);
  for (const auto& statement : office.elsewhere->statements) EXPECT_TRUE(statement.starts_with("SELECT")) << statement;
  for (const auto name : office.elsewhere->Calls().CallNames()) {
    for (const auto* writes : {"Recordset.AddNew", "Recordset.SetField", "Recordset.Update"}) EXPECT_NE(name, writes);
  }
}

// Calls that a preview makes elsewhere.
std::vector<std::string> CallsOf(Office& office, const TransferRequest& request) {
  const auto& names = office.elsewhere->Calls().CallNames();
  const auto before = names.size();
  EXPECT_TRUE(cli::RunPreview(office.There(), request).done);
  return {names.begin() + static_cast<std::ptrdiff_t>(before), names.end()};
}

// One of each name, and the first and the last ones: fields of rows are read by the thousand.
std::vector<std::size_t> Chosen(const std::vector<std::string>& calls) {
  std::map<std::string, int> seen;
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (++seen[calls[i]] <= 2 || calls[i].starts_with("Transport.") || i + 3 > calls.size()) chosen.push_back(i + 1);
  }
  return chosen;
}

TEST(ElsewherePreviews, Tell_which_side_can_t_be_read_when_a_call_fails_and_leave_nothing_behind) {
  constexpr TransferRequest kRequest = {.direction = Direction::Send, .table = enClients};
  Office office({.content = cli::Content::Firm, .firm = TinyFirm(1)});
  const auto bytes = office.Files();
  const auto calls = CallsOf(office, kRequest);
  int unread = 0;
  for (const auto k : Chosen(calls)) {
    SCOPED_TRACE(fmt::format("call {}: {}", k, calls[k - 1]));
    auto& seam = office.elsewhere->Calls();
    constexpr ErrorNumber kFailed = 0x80040402;
    seam.RaiseAt(seam.CallCount() + k, FaultTiming::Before, kFailed);
    try {
      const auto preview = cli::RunPreview(office.There(), kRequest);
      // Ahead of a session it fails as the transfer would, which tries once more to begin one; and what a closed
      // connection says, nobody needs.
      const bool isNoMatter = calls[k - 1].find("Close") != std::string::npos ||
                              calls[k - 1].find("Transport.BeginSession") != std::string::npos;
      EXPECT_TRUE(!preview.done || IsTold(preview) || isNoMatter);
    } catch (const cli::UsageError& told) {
      ++unread;
      const std::string_view text = told.what();
      EXPECT_NE(text.find("can't be read"), std::string_view::npos) << text;
      const bool ofBilling = calls[k - 1].find("Transport") == std::string::npos;
      EXPECT_TRUE(text.starts_with(ofBilling ? "BillingDb" : "QuickBooks")) << text;
    }
    EXPECT_TRUE(office.IsTidy());
    EXPECT_EQ(office.Changed(bytes), "");
  }
  EXPECT_GT(unread, 40);
}

TEST(ElsewherePreviews, End_at_a_signal_wherever_they_are) {
  constexpr TransferRequest kRequest = {.direction = Direction::Send, .table = enClients};
  Office office({.content = cli::Content::Firm, .firm = TinyFirm(1)});
  const auto bytes = office.Files();
  const auto calls = CallsOf(office, kRequest);
  const auto chosen = Chosen(calls);
  for (std::size_t i = 0; i < chosen.size(); i += 3) {
    const auto k = chosen[i];
    SCOPED_TRACE(fmt::format("call {}: {}", k, calls[k - 1]));
    auto& seam = office.elsewhere->Calls();
    seam.RunAt(seam.CallCount() + k, FaultTiming::Before, [] { std::raise(SIGTERM); });
    EXPECT_THROW(static_cast<void>(cli::RunPreview(office.There(), kRequest)), cli::EndedBySignal);
    EndSignals::Forget();
    EXPECT_TRUE(office.IsTidy());
    EXPECT_EQ(office.Changed(bytes), "");
  }
}

}  // namespace
}  // namespace twqb
