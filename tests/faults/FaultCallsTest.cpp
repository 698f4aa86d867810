// Scripted errors at every point, before and after, and the sweep.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "SeamFakes.h"
#include "adapters/faults/Faults.h"

namespace twqb {
namespace {

using ado::CursorType;
using ado::LockType;

constexpr ErrorNumber kNumber = 0x80040416;

// What a call raised; nothing when it returned.
std::optional<PlatformError> RaisedBy(const std::function<void()>& call) {
  try {
    call();
  } catch (const PlatformError& failure) {
    return failure;
  }
  return std::nullopt;
}

std::unique_ptr<Transport> Session(const Platform& platform) { return platform.quickbooks->CreateTransport(); }
std::unique_ptr<ado::Connection> Database(const Platform& platform) { return platform.database->CreateConnection(); }
std::unique_ptr<ado::Recordset> Table(const Platform& platform) {
  return Database(platform)->OpenRecordset("SELECT * FROM Client;", CursorType::Static, LockType::Optimistic);
}

// One call at a point, and the note that the seam inside makes of it.
struct Point {
  std::string name;  // of the test
  std::string word;  // of the fault file
  std::string what;  // of the fault file
  std::string note;  // of the fake
  std::function<void(const Platform&)> call;
};
std::ostream& operator<<(std::ostream& out, const Point& point) { return out << point.name; }

const Point kPoints[] = {
    {"create_transport", "CreateTransport", "", "CreateTransport", [](auto& p) { Session(p); }},
    {"version", "GetVersion", "", "GetVersion", [](auto& p) { (void)Session(p)->GetVersion(); }},
    {"open_connection", "OpenConnection", "", "OpenConnection", [](auto& p) { Session(p)->OpenConnection("", ""); }},
    {"begin_session", "BeginSession", "", "BeginSession x",
     [](auto& p) { Session(p)->BeginSession("x", OpenMode::DoNotCare); }},
    {"file_name", "GetCurrentCompanyFileName", "", "GetCurrentCompanyFileName",
     [](auto& p) { (void)Session(p)->GetCurrentCompanyFileName(); }},
    {"document", "DoRequests", "", "ProcessDocument", [](auto& p) { (void)Session(p)->ProcessDocument("<QBXML/>"); }},
    {"subscription", "DoSubscriptionRequests", "", "ProcessSubscription",
     [](auto& p) { (void)Session(p)->ProcessSubscription("<QBXML/>"); }},
    {"end_session", "EndSession", "", "EndSession", [](auto& p) { Session(p)->EndSession(); }},
    {"close_connection", "CloseConnection", "", "CloseConnection", [](auto& p) { Session(p)->CloseConnection(); }},
    {"execute", "sql", "update  client", "Execute UPDATE Client\r\n SET x = 1",
     [](auto& p) { Database(p)->Execute("UPDATE Client\r\n SET x = 1", nullptr); }},
    {"select", "sql", "SELECT ClientID", "OpenRecordset SELECT ClientID FROM Client",
     [](auto& p) {
       Database(p)->OpenRecordset("SELECT ClientID FROM Client", CursorType::Static, LockType::ReadOnly);
     }},
    {"any_statement", "sql", "", "Execute DELETE FROM Client",
     [](auto& p) { Database(p)->Execute("DELETE FROM Client", nullptr); }},
    {"connect", "connect", "", "Open", [](auto& p) { Database(p)->Open(); }},
    {"row", "row", "client", "Update", [](auto& p) { Table(p)->Update(); }},
    {"any_row", "row", "", "Update", [](auto& p) { Table(p)->Update(); }},
    {"setting_read", "settings", "read qbdbpath", "read QBDBPath",
     [](auto& p) { (void)p.machine->GetPrivateProfileString("s", "QBDBPath", "", 255, "f"); }},
    {"setting_written", "settings", "write", "write QBDBPath",
     [](auto& p) { p.machine->WritePrivateProfileString("s", "QBDBPath", "v", "f"); }},
    {"setting_of_a_key", "settings", "QBDBPath", "write QBDBPath",
     [](auto& p) { p.machine->WritePrivateProfileString("s", "QBDBPath", "v", "f"); }},
    {"log", "log", "Client", "AppendLine Client Acme", [](auto& p) { p.machine->AppendLine("f", "Client Acme"); }},
    {"file_dialog", "file", "", "OpenFileDialog", [](auto& p) { p.desk->OpenFileDialog({}); }},
    {"copy", "copy", "", "CopyFile", [](auto& p) { p.machine->CopyFile("a", "b"); }},
    {"guid", "guid", "", "CreateGuid", [](auto& p) { (void)p.machine->CreateGuid(); }},
    {"box", "box", "QuickBooks has", "ShowMessageBox QuickBooks has reported",
     [](auto& p) { p.desk->ShowMessageBox({.text = "QuickBooks has reported", .title = ""}); }},
    {"form_shown", "form", "show", "ShowMsgForm", [](auto& p) { p.desk->ShowMsgForm({}, {}); }},
    {"form_updated", "form", "update", "UpdateMsgForm", [](auto& p) { p.desk->UpdateMsgForm({}); }},
    {"form_unloaded", "form", "unload", "UnloadMsgForm", [](auto& p) { p.desk->UnloadMsgForm(); }},
    {"vendor_picked", "form", "vendor", "PickVendor", [](auto& p) { p.desk->PickVendor("", {}); }},
    {"callback_created", "callback", "create", "CreateCallback", [](auto& p) { p.callback->CreateCallback(); }},
    {"mode_set", "callback", "mode", "SetMode", [](auto& p) { p.callback->CreateCallback()->SetMode(1); }},
    {"mode_read", "callback", "mode", "Mode", [](auto& p) { (void)p.callback->CreateCallback()->Mode(); }},
    {"text_set", "callback", "text", "SetText", [](auto& p) { p.callback->CreateCallback()->SetText(""); }},
};

class EveryPoint : public testing::TestWithParam<Point> {
 protected:
  [[nodiscard]] FaultScript Script(std::string_view verb) const {
    const auto& point = GetParam();
    return ParseFaults(point.word + " 2 " + std::string(verb) + " 0x80040416 \"told\" " + point.what);
  }
  [[nodiscard]] std::size_t Notes() const {
    return static_cast<std::size_t>(std::ranges::count(fakes_.notes.calls, GetParam().note));
  }
  fakes::FakePlatform fakes_;
};

TEST_P(EveryPoint, Fails_before_the_call_takes_effect_at_its_count_alone) {
  const FaultPlatform faults(fakes_.Seams(), Script("raise"));
  const auto platform = faults.Decorated();
  EXPECT_FALSE(RaisedBy([&] { GetParam().call(platform); }));
  EXPECT_EQ(Notes(), 1U);
  const auto raised = RaisedBy([&] { GetParam().call(platform); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->number(), kNumber);
  EXPECT_EQ(raised->description(), "told");
  EXPECT_EQ(Notes(), 1U);
  EXPECT_FALSE(RaisedBy([&] { GetParam().call(platform); }));
  EXPECT_EQ(Notes(), 2U);
}

TEST_P(EveryPoint, Fails_after_the_call_took_effect_at_its_count_alone) {
  const FaultPlatform faults(fakes_.Seams(), Script("raise-after"));
  const auto platform = faults.Decorated();
  EXPECT_FALSE(RaisedBy([&] { GetParam().call(platform); }));
  EXPECT_EQ(Notes(), 1U);
  const auto raised = RaisedBy([&] { GetParam().call(platform); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->description(), "told");
  EXPECT_EQ(Notes(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Points, EveryPoint, testing::ValuesIn(kPoints),
                         [](const auto& test) { return test.param.name; });

class FaultCalls : public testing::Test {
 protected:
  fakes::FakePlatform fakes_;
};

TEST_F(FaultCalls, A_statement_that_begins_otherwise_does_not_count) {
  const FaultPlatform faults(fakes_.Seams(), ParseFaults("sql 1 raise 0x80040E14 UPDATE Client SET"));
  const auto connection = Database(faults.Decorated());
  EXPECT_FALSE(RaisedBy([&] { connection->Execute("UPDATE Clients SET x = 1", nullptr); }));
  EXPECT_FALSE(RaisedBy([&] { connection->Execute("DELETE FROM x -- UPDATE Client SET", nullptr); }));
  EXPECT_TRUE(RaisedBy([&] { connection->Execute("  UPDATE\tClient SET x = 1", nullptr); }));
}

TEST_F(FaultCalls, A_row_of_another_table_does_not_count) {
  const FaultPlatform faults(fakes_.Seams(), ParseFaults("row 1 raise 0x80040E2F Employee"));
  EXPECT_FALSE(RaisedBy([&] { Table(faults.Decorated())->Update(); }));
}

TEST_F(FaultCalls, A_read_does_not_count_for_a_write) {
  const FaultPlatform faults(fakes_.Seams(), ParseFaults("settings 1 raise 75 write QBDBPath"));
  const auto platform = faults.Decorated();
  EXPECT_FALSE(RaisedBy([&] { (void)platform.machine->GetPrivateProfileString("s", "QBDBPath", "", 9, "f"); }));
  EXPECT_FALSE(RaisedBy([&] { platform.machine->WritePrivateProfileString("s", "Other", "", "f"); }));
  EXPECT_TRUE(RaisedBy([&] { platform.machine->WritePrivateProfileString("s", "QBDBPath", "", "f"); }));
}

TEST_F(FaultCalls, Each_line_counts_on_its_own_also_calls_that_fail_by_another_line) {
  const FaultPlatform faults(fakes_.Seams(), ParseFaults("copy 1 raise 75\ncopy 2 raise 76\ncopy 3 raise-after 53"));
  const auto& machine = faults.Decorated().machine;
  const auto copy = [&] { machine->CopyFile("a", "b"); };
  EXPECT_EQ(RaisedBy(copy)->number(), 75U);
  EXPECT_EQ(RaisedBy(copy)->number(), 76U);
  EXPECT_EQ(RaisedBy(copy)->number(), 53U);
  EXPECT_FALSE(RaisedBy(copy));
}

TEST_F(FaultCalls, Counts_run_over_all_objects_of_a_seam) {
  const FaultPlatform faults(fakes_.Seams(), ParseFaults("connect 2 raise 0x80004005"));
  EXPECT_FALSE(RaisedBy([&] { Database(faults.Decorated())->Open(); }));
  EXPECT_TRUE(RaisedBy([&] { Database(faults.Decorated())->Open(); }));
}

TEST_F(FaultCalls, Of_two_faults_of_one_call_the_one_before_it_strikes) {
  const FaultPlatform faults(fakes_.Seams(), ParseFaults("copy 1 raise-after 53\ncopy 1 raise 75\ncopy 1 raise 76"));
  EXPECT_EQ(RaisedBy([&] { faults.Decorated().machine->CopyFile("a", "b"); })->number(), 75U);
  EXPECT_TRUE(fakes_.notes.calls.empty());
}

TEST_F(FaultCalls, An_error_of_the_call_itself_comes_before_a_fault_after_it) {
  const FaultPlatform faults(fakes_.Seams(), ParseFaults("copy 1 raise-after 53"));
  fakes_.notes.raiseNext = PlatformError(error::kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { faults.Decorated().machine->CopyFile("a", "b"); })->number(), error::kPathNotFound);
}

TEST_F(FaultCalls, Results_pass_through_when_nothing_is_due) {
  const FaultPlatform faults(fakes_.Seams(), {});
  const auto platform = faults.Decorated();
  std::int64_t affected = 0;
  Database(platform)->Execute("DELETE FROM Client", &affected);
  EXPECT_EQ(affected, 3);
  EXPECT_EQ(std::get<std::string>(Table(platform)->Field("ClientID")), "value of ClientID");
  EXPECT_EQ(Session(platform)->GetVersion().releaseNumber, 7);
  EXPECT_EQ(platform.machine->Random(), 0.5);
  fakes_.desk.givesUp = true;
  EXPECT_THROW(platform.desk->ShowMessageBox({.text = "?", .title = ""}), DeskGaveUp);
}

TEST_F(FaultCalls, A_seam_that_is_not_there_stays_away) {
  const FaultPlatform faults({.machine = &fakes_.machine}, {});
  EXPECT_EQ(faults.Decorated().desk, nullptr);
  EXPECT_EQ(faults.Decorated().quickbooks, nullptr);
  EXPECT_NE(faults.Decorated().machine, nullptr);
}

// Six calls through the seams.
void Operation(const Platform& platform) {
  (void)platform.machine->Now();
  const auto connection = Database(platform);
  connection->Open();
  const auto rows = connection->OpenRecordset("SELECT 1", CursorType::Static, LockType::ReadOnly);
  (void)rows->Field("ClientID");
  platform.desk->PumpMessages();
}

TEST(FaultSweep, Counts_and_names_every_call) {
  fakes::FakePlatform fakes;
  const FaultPlatform faults(fakes.Seams(), {});
  Operation(faults.Decorated());
  EXPECT_EQ(faults.CallCount(), 6U);
  const std::vector<std::string_view> expected = {"Machine.Now",     "Provider.CreateConnection",
                                                  "Connection.Open", "Connection.OpenRecordset",
                                                  "Recordset.Field", "Desk.PumpMessages"};
  EXPECT_EQ(faults.CallNames(), expected);
}

TEST(FaultSweep, Raises_at_each_call_in_turn) {
  for (std::size_t k = 1; k <= 6; ++k) {
    for (const auto timing : {FaultTiming::Before, FaultTiming::After}) {
      fakes::FakePlatform fakes;
      FaultPlatform faults(fakes.Seams(), {});
      faults.RaiseAt(k, timing, error::kCannotOpen);
      const auto raised = RaisedBy([&] { Operation(faults.Decorated()); });
      ASSERT_TRUE(raised) << k;
      EXPECT_EQ(raised->number(), error::kCannotOpen);
      EXPECT_EQ(raised->description(), ErrorText(error::kCannotOpen));
      EXPECT_EQ(faults.CallCount(), k);
      const bool pumped = !fakes.notes.calls.empty() && fakes.notes.calls.back() == "PumpMessages";
      EXPECT_EQ(pumped, k == 6 && timing == FaultTiming::After);
    }
  }
}

TEST(FaultSweep, Raises_once) {
  fakes::FakePlatform fakes;
  FaultPlatform faults(fakes.Seams(), {});
  faults.RaiseAt(1, FaultTiming::Before, error::kCannotOpen);
  EXPECT_TRUE(RaisedBy([&] { Operation(faults.Decorated()); }));
  EXPECT_FALSE(RaisedBy([&] { Operation(faults.Decorated()); }));
}

TEST(FaultSweep, Runs_an_action_before_or_after_the_call_takes_effect_and_lets_it_pass) {
  for (const auto timing : {FaultTiming::Before, FaultTiming::After}) {
    fakes::FakePlatform fakes;
    FaultPlatform faults(fakes.Seams(), {});
    std::vector<std::string> notesThen;
    faults.RunAt(3, timing, [&] { notesThen = fakes.notes.calls; });
    EXPECT_FALSE(RaisedBy([&] { Operation(faults.Decorated()); }));
    ASSERT_FALSE(notesThen.empty());
    EXPECT_EQ(notesThen.back() == "Open", timing == FaultTiming::After);
    EXPECT_EQ(faults.CallCount(), 6U);
  }
}

TEST(FaultSweep, An_action_after_a_call_that_raised_does_not_run) {
  fakes::FakePlatform fakes;
  FaultPlatform faults(fakes.Seams(), {});
  bool ran = false;
  faults.RunAt(1, FaultTiming::After, [&] { ran = true; });
  fakes.notes.raiseNext = PlatformError(error::kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { faults.Decorated().machine->CopyFile("a", "b"); })->number(), error::kPathNotFound);
  EXPECT_FALSE(ran);
}

TEST(FaultSweep, A_fault_of_the_script_comes_before_an_action_at_the_same_call) {
  fakes::FakePlatform fakes;
  FaultPlatform faults(fakes.Seams(), ParseFaults("copy 1 raise 75"));
  bool ran = false;
  faults.RunAt(1, FaultTiming::Before, [&] { ran = true; });
  EXPECT_EQ(RaisedBy([&] { faults.Decorated().machine->CopyFile("a", "b"); })->number(), 75U);
  EXPECT_FALSE(ran);
}

TEST(FaultSweep, A_later_order_replaces_an_earlier_one) {
  fakes::FakePlatform fakes;
  FaultPlatform faults(fakes.Seams(), {});
  bool ran = false;
  faults.RaiseAt(1, FaultTiming::Before, error::kCannotOpen);
  faults.RunAt(2, FaultTiming::Before, [&] { ran = true; });
  EXPECT_FALSE(RaisedBy([&] { Operation(faults.Decorated()); }));
  EXPECT_TRUE(ran);
}

}  // namespace
}  // namespace twqb
