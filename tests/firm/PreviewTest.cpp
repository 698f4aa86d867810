// What a preview says is what the transfer right behind it does, and a preview itself does nothing: over made firms and
// the demonstration firm, in both directions, for all tables and for one.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/FrozenMachine.h"
#include "adapters/system/ProfileFile.h"
#include "cli/Composition.h"
#include "cli/Diff.h"
#include "cli/FolderMaker.h"
#include "cli/Preview.h"
#include "cli/ReportFile.h"
#include "cli/RunAccount.h"
#include "samples/firm/Firm.h"
#include "services/Errors.h"
#include "tests/firm/Elsewhere.h"
#include "tests/firm/FirmHouse.h"
#include "tests/firm/WholeState.h"

namespace twqb {
namespace {

using cli::ChangedSide;
using cli::Preview;
using cli::TransferRequest;

FrozenOptions ClockAt(const std::string& now) {
  return {
      .now = TextToDate(now), .zone = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard}, .seed = 7};
}

std::string TextOf(const RecordAccount& record) {
  return fmt::format("{} {} {} {} {}: {} {}", record.table.number, static_cast<int>(record.standing), record.key,
                     record.identifier, record.former, cli::FateWord(record.fate), record.why);
}

// What a run tells, beside what a transfer's own account makes of it.
class Told final : public RunObserver {
 public:
  explicit Told(Machine& machine) : account(machine) {}

  void RecordTold(const RecordAccount& record) override {
    records.push_back(TextOf(record));
    account.RecordTold(record);
  }
  void ErrorTold(const ErrorAccount& error) override { account.ErrorTold(error); }
  void WalkEnded(const TableInHand& table, const Extent& extent) override { account.WalkEnded(table, extent); }
  void LostLinkTold(const LostLinkAccount& link) override { account.LostLinkTold(link); }
  void TableSkipped(const TableInHand& table) override { account.TableSkipped(table); }
  void TableEnded(const TableInHand& table, std::string_view narrowed) override { account.TableEnded(table, narrowed); }

  cli::RunAccount account;
  std::vector<std::string> records;
};

// A firm's four files in a folder, which is the current one meanwhile, with a clock that goes on from transfer to
// transfer.
class FirmFolder {
 public:
  // What the transfers know of the two sides: the files, or a database of another maker and QuickBooks itself.
  enum class Stand : bool { Here, Elsewhere };
  explicit FirmFolder(const cli::FolderPlan& plan, Stand stand = Stand::Here)
      : files_{.folder = folder_.Path()}, stand_(stand) {
    FrozenMachine machine({.libraryFolder = files_.folder, .registryFile = files_.Path("registry.ini")}, clock_);
    cli::MakeFolder(files_.folder, plan, machine);
    std::filesystem::current_path(files_.folder);
  }
  ~FirmFolder() { std::filesystem::current_path(before_); }
  FirmFolder(const FirmFolder&) = delete;
  FirmFolder& operator=(const FirmFolder&) = delete;

  // An hour later than the last one: the preview, that it changed nothing, the transfer, and that it did what was said.
  void ExpectPreviewThenTransfer(const TransferRequest& request) {
    auto options = OptionsAnHourLater();
    SCOPED_TRACE(fmt::format("{} {}", request.direction == Direction::Send ? "send" : "get", int{request.table}));
    FrozenMachine machine({.libraryFolder = files_.folder, .registryFile = files_.Path("registry.ini")}, clock_);
    Elsewhere elsewhere(files_, machine);
    const auto sides = elsewhere.Sides();
    if (stand_ == Stand::Elsewhere) {
      options.billing = elsewhere.Connection();
      options.quickBooksItself = true;
      options.sides = &sides;
    }
    const auto bytes = Bytes();
    const auto preview = cli::RunPreview(options, request);
    EXPECT_TRUE(Bytes() == bytes);
    ExpectTransferLike(preview, options, machine, sides);
  }

  [[nodiscard]] cli::Options OptionsAnHourLater() {
    clock_.now = clock_.now.PlusHours(1);
    clock_.seed += 1;
    return {.noProgress = true, .clock = clock_};
  }

  // Runs a statement on BillingDb.
  void Sql(const std::string& statement) const {
    const auto connection = SqliteProvider().CreateConnection();
    connection->SetConnectionString(files_.Connection());
    connection->Open();
    connection->Execute(statement, nullptr);
    connection->Close();
  }

  int moved = 0;  // records that any of the transfers moved

 private:
  // Without the lock that sessions leave beside the company file.
  [[nodiscard]] std::map<std::string, std::string> Bytes() const {
    auto bytes = BytesOf(files_.folder);
    std::erase_if(bytes, [](const auto& file) { return file.first.ends_with("company.twq.lock"); });
    return bytes;
  }

  void ExpectTransferLike(const Preview& preview, cli::Options options, Machine& machine,
                          const cli::OtherSides& sides) {
    const auto before = ReadWhole(files_, machine);
    const auto settings = Settings();
    const auto log = Log();
    const bool isHere = stand_ == Stand::Here;
    SqliteProvider fileDatabase;
    company::CompanyTransportFactory fileQuickBooks(files_.Path("company.twq"), machine);
    const auto database = sides.billing();
    const auto quickBooks = sides.quickBooks();
    ScriptedDesk desk(ParseAnswers("default yes\n"));
    RecordingCallbackFactory callback;
    const Platform seams{.database = isHere ? &fileDatabase : database.get(),
                         .quickbooks = isHere ? &fileQuickBooks : quickBooks.get(),
                         .desk = &desk,
                         .machine = &machine,
                         .callback = &callback};
    Told told(machine);
    options.clock = {};
    bool done = false;
    {
      cli::Composition composition(cli::WorkplaceOf(options), {.observer = &told, .instead = &seams});
      done = cli::RunTransfer(composition, options, preview.request);
    }
    EXPECT_EQ(preview.done, done);
    EXPECT_EQ(preview.summary, told.account.Summary(preview.request));
    EXPECT_EQ(preview.troubles, told.account.Troubles());
    ExpectRecords(preview, told.records);
    const auto after = ReadWhole(files_, machine);
    ExpectSame(Said(preview, ChangedSide::Billing), RowDifferences(before, after));
    ExpectSame(Said(preview, ChangedSide::QuickBooks), RecordDifferences(before, after));
    ExpectBoxes(preview, desk);
    EXPECT_EQ(WithChanges(settings, preview), Settings());
    EXPECT_EQ(Join(preview.log, "\r\n") + (preview.log.empty() ? "" : "\r\n"), Log().substr(log.size()));
  }

  void ExpectRecords(const Preview& preview, const std::vector<std::string>& told) {
    std::vector<std::string> said;
    for (const auto& record : preview.records) {
      said.push_back(TextOf(record.account));
      if (record.account.fate == Fate::Added || record.account.fate == Fate::Changed) ++moved;
    }
    EXPECT_EQ(said, told);
  }

  static void ExpectSame(const Differences& said, const Differences& done) {
    EXPECT_TRUE(said == done) << Unlike(said, done);
  }

  static Differences Said(const Preview& preview, ChangedSide side) {
    Differences said;
    const auto add = [&](const std::vector<cli::RecordChange>& changes) {
      for (const auto& change : changes) {
        if (change.side != side) continue;
        for (const auto& field : change.fields) {
          said.insert(fmt::format("{} {} {}: {} -> {}", change.place, change.key, field.field,
                                  field.before.value_or("-"), field.after.value_or("-")));
        }
      }
    };
    for (const auto& record : preview.records) add(record.changes);
    add(preview.beside);
    return said;
  }

  static void ExpectBoxes(const Preview& preview, const ScriptedDesk& desk) {
    std::vector<std::string> said;
    for (const auto& box : preview.boxes) said.push_back(box.text);
    std::vector<std::string> shown;
    for (const auto& box : desk.Boxes()) shown.push_back(box.box.text);
    EXPECT_EQ(said, shown);
  }

  using Values = std::map<std::string, std::string>;
  [[nodiscard]] Values Settings() const {
    Values values;
    for (const auto& [section, key, value] : ProfileFile(files_.Path("twqb.ini")).Entries()) {
      values[section + "/" + key] = value;
    }
    return values;
  }
  static Values WithChanges(Values values, const Preview& preview) {
    for (const auto& change : preview.settings) values[change.section + "/" + change.key] = change.after;
    return values;
  }

  [[nodiscard]] std::string Log() const {
    FrozenMachine machine({.libraryFolder = files_.folder, .registryFile = files_.Path("registry.ini")}, clock_);
    std::ostringstream text;
    text << std::ifstream(LogFile(machine), std::ios::binary).rdbuf();
    return text.str();
  }

  const std::filesystem::path before_ = std::filesystem::current_path();
  TemporaryFolder folder_;
  FirmFiles files_;
  Stand stand_;
  FrozenOptions clock_ = ClockAt("2008-03-05T10:00:00");
};

constexpr TransferRequest kSendAll = {.direction = Direction::Send};
constexpr TransferRequest kGetAll = {.direction = Direction::Get};

// Somebody works on the billing side.
void ChangeSomething(const FirmFolder& folder) {
  folder.Sql("UPDATE Client SET ClientEmail = 'new@' || ClientID || '.example', LastUpdated = '2008-03-05 20:00:00'");
  folder.Sql("UPDATE Employee SET EmpCity = 'Elsewhere', LastUpdated = '2008-03-05 20:00:00'");
  folder.Sql("UPDATE Activity SET QBLinkID = '80000FFF-1' WHERE ActivityID = (SELECT MIN(ActivityID) FROM Activity)");
}

class FirmPreview : public AnyFirm {};

TEST_P(FirmPreview, Says_what_the_transfer_behind_it_does_and_changes_nothing) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    FirmFolder folder({.content = cli::Content::Firm, .firm = plan});
    const bool sendsFirst = plan.seed % 2 == 0;
    folder.ExpectPreviewThenTransfer(sendsFirst ? kSendAll : kGetAll);
    folder.ExpectPreviewThenTransfer(sendsFirst ? kGetAll : kSendAll);
    ChangeSomething(folder);
    folder.ExpectPreviewThenTransfer({.direction = sendsFirst ? Direction::Send : Direction::Get, .sync = true});
    EXPECT_GT(folder.moved, 10);
  });
}

// Each firm is read whole four times: less of them do.
constexpr unsigned kParts = 4;
INSTANTIATE_TEST_SUITE_P(Firm, FirmPreview, testing::Range(0U, kParts));

// What of a preview of a send is in QuickBooks already, by identifier.
std::map<std::string, std::vector<cli::FieldChange>> ChangedRecords(const Preview& preview) {
  std::map<std::string, std::vector<cli::FieldChange>> changed;
  for (const auto& record : preview.records) {
    for (const auto& change : record.changes) {
      const bool isTwin = change.side == ChangedSide::QuickBooks && change.kind == cli::ChangeKind::Changed;
      if (isTwin && !change.fields.empty()) changed[change.key] = change.fields;
    }
  }
  return changed;
}

class FirmDifference : public AnyFirm {};

TEST_P(FirmDifference, Is_what_a_send_in_which_the_newer_side_wins_writes_where_it_takes_its_side) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    FirmFolder folder({.content = cli::Content::Firm, .firm = plan});
    folder.ExpectPreviewThenTransfer(kSendAll);
    ChangeSomething(folder);
    const auto options = folder.OptionsAnHourLater();
    const auto written = ChangedRecords(
        cli::RunPreview(options, {.direction = Direction::Send, .table = enClients, .id = "", .sync = true}));
    std::map<std::string, std::vector<cli::FieldChange>> said;
    for (const auto& pair : cli::FindDifference(options, enClients, std::nullopt).pairs) {
      if (pair.send == cli::Takes::Yes && !pair.inQuickBooks.empty()) said[pair.identifier] = pair.inQuickBooks;
    }
    EXPECT_FALSE(said.empty());
    EXPECT_TRUE(said == written);
  });
}

INSTANTIATE_TEST_SUITE_P(Firm, FirmDifference, testing::Range(0U, 1U));

TEST(DemonstrationFirmPreview, Says_what_a_run_over_all_does_in_both_directions) {
  FirmFolder folder({.content = cli::Content::Sample});
  folder.ExpectPreviewThenTransfer(kSendAll);
  folder.ExpectPreviewThenTransfer(kGetAll);
  ChangeSomething(folder);
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .sync = true});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Get, .sync = true});
  EXPECT_GT(folder.moved, 1000);
}

TEST(DemonstrationFirmPreview, Says_what_a_run_does_with_a_server_and_with_QuickBooks_itself) {
  FirmFolder folder({.content = cli::Content::Sample}, FirmFolder::Stand::Elsewhere);
  folder.ExpectPreviewThenTransfer(kSendAll);
  folder.ExpectPreviewThenTransfer(kGetAll);
  ChangeSomething(folder);
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .sync = true});
  EXPECT_GT(folder.moved, 1000);
}

TEST(DemonstrationFirmPreview, Says_what_each_table_does_by_itself_with_what_it_pulls) {
  FirmFolder folder({.content = cli::Content::Sample});
  for (const auto table : {enInvoices, enPayments, enTimeEntries, enVendorBill, enExpenseLog, enProjects, enClients,
                           enEmployees, enVendors, enActivities, enExpenseCodes, enAccounts}) {
    folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = table});
  }
  for (const auto table : {enEstimates, enInvoices, enPayments, enTimeEntries, enVendorBill, enExpenseLog, enProjects,
                           enClients, enEmployees, enVendors, enActivities, enExpenseCodes, enAccounts}) {
    folder.ExpectPreviewThenTransfer({.direction = Direction::Get, .table = table});
  }
  EXPECT_GT(folder.moved, 500);
}

TEST(DemonstrationFirmPreview, Says_what_a_single_record_does) {
  FirmFolder folder({.content = cli::Content::Sample});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = enClients, .id = "ABBOTT"});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = enProjects, .id = "HARBOR:SURVEY"});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = enInvoices, .id = "HARBOR:SURVEY,1041"});
  folder.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = enClients, .id = "NOBODY"});
  EXPECT_GE(folder.moved, 3);
}

}  // namespace
}  // namespace twqb
