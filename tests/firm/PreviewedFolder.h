// A firm's folder in which each transfer is previewed first: the preview says what the transfer does, and changes
// nothing.
//
// All that differs behind the transfer is held against all that was said. What is previewed is the test's affair.
#pragma once

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/FrozenMachine.h"
#include "adapters/system/ProfileFile.h"
#include "cli/preview/Preview.h"
#include "cli/runs/Composition.h"
#include "cli/runs/ReportFile.h"
#include "cli/runs/RunAccount.h"
#include "cli/workplace/FolderMaker.h"
#include "services/Errors.h"
#include "tests/firm/Elsewhere.h"
#include "tests/firm/WholeState.h"
#include "tests/support/Process.h"

namespace twqb {

inline FrozenOptions ClockAt(const std::string& now) {
  return {
      .now = TextToDate(now), .zone = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard}, .seed = 7};
}

inline std::string TextOf(const RecordAccount& record) {
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
  void ExpectPreviewThenTransfer(const cli::TransferRequest& request) {
    auto options = OptionsAnHourLater();
    SCOPED_TRACE(fmt::format("{} {}", request.direction == Direction::Send ? "send" : "get", int{request.table}));
    FrozenMachine machine({.libraryFolder = files_.folder, .registryFile = files_.Path("registry.ini")}, clock_);
    Elsewhere elsewhere(files_, machine);
    elsewhere.told = toldRecords;
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
    last = preview;
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

  // What QuickBooks answers to requests: its records.
  [[nodiscard]] std::string Ask(const std::string& requests) const {
    FrozenMachine machine({.libraryFolder = files_.folder, .registryFile = files_.Path("registry.ini")}, clock_);
    return company::CompanyFile(files_.Path("company.twq"), machine)
        .Process("<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">" +
                 requests + "</QBXMLMsgsRq></QBXML>");
  }
  // Gives QuickBooks a record of a kind that company files don't keep; `fields` as it tells them.
  void Tell(const std::string& kind, const std::string& id, const std::string& name, const std::string& fields = {},
            const std::string& body = {}) {
    toldRecords[kind] += fmt::format(
        "<{0}Ret><ListID>{1}</ListID><TimeCreated>2007-07-01T10:00:00-05:00</TimeCreated><TimeModified>"
        "2007-07-01T10:00:00-05:00</TimeModified><EditSequence>1183302000</EditSequence><Name>{2}</Name>"
        "<IsActive>true</IsActive>{3}</{0}Ret>",
        kind, id, name, fields);
    company::CompanyStore store(files_.Path("company.twq"));
    auto transaction = store.Begin(company::SqliteTransaction::Purpose::Write);
    store.Lay(kind, company::FindNamedKind(kind)->nameSpace,
              {.listId = id + company::kIdOfKind + kind,
               .name = name,
               .fullName = name,
               .fullKey = company::FullNameKey(name),
               .body = body});
    transaction.Commit();
  }
  Elsewhere::ToldRecords toldRecords;

  cli::Preview last;              // that was compared
  int moved = 0;                  // records that any of the transfers moved
  std::set<std::string> unknown;  // records of QuickBooks, of which amounts were said not to be known: "Customer 8-1"
  std::set<std::string> known;    // whose sums a preview told

 private:
  static constexpr const char* kSumNames =
      "(Balance|TotalBalance|BalanceRemaining|AppliedAmount|CreditRemaining|UnusedPayment|UnusedCredits|IsPaid)";

  // Without the lock that sessions leave beside the company file.
  [[nodiscard]] std::map<std::string, std::string> Bytes() const {
    auto bytes = BytesOf(files_.folder);
    std::erase_if(bytes, [](const auto& file) { return file.first.ends_with("company.twq.lock"); });
    return bytes;
  }

  void ExpectTransferLike(const cli::Preview& preview, cli::Options options, Machine& machine,
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
    told.account.Expect(cli::TablesOf(preview.request));
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
    ExpectSame(Said(preview, cli::ChangedSide::Billing), RowDifferences(before, after));
    ExpectSame(Said(preview, cli::ChangedSide::QuickBooks), Known(preview, RecordDifferences(before, after)));
    ExpectBoxes(preview, desk);
    EXPECT_EQ(WithChanges(settings, preview), Settings());
    EXPECT_EQ(Join(preview.log, "\r\n") + (preview.log.empty() ? "" : "\r\n"), Log().substr(log.size()));
  }

  void ExpectRecords(const cli::Preview& preview, const std::vector<std::string>& told) {
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

  static Differences Said(const cli::Preview& preview, cli::ChangedSide side) {
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

  // Without what a preview leaves out that does not know some amounts.
  Differences Known(const cli::Preview& preview, Differences done) {
    std::set<std::string> all;
    const auto take = [&](const std::vector<cli::RecordChange>& changes) {
      for (const auto& change : changes) {
        const auto record = fmt::format("{} {}", change.place, change.key);
        if (change.areAmountsUnknown) all.insert(record + " ");
        if (change.areAmountsUnknown) unknown.insert(record);
        const auto isSum = [](const auto& field) { return std::regex_match(field.field, std::regex(kSumNames)); };
        if (std::ranges::any_of(change.fields, isSum)) known.insert(record);
      }
    };
    for (const auto& record : preview.records) take(record.changes);
    take(preview.beside);
    static const std::regex kSums(std::string(kSumNames) + ": ");
    static const std::regex kAmounts("(Amount|Subtotal|Rate|SalesTaxPercentage|SalesTaxTotal): ");
    std::erase_if(done, [&](const std::string& difference) {
      const bool isOne = std::ranges::any_of(all, [&](const auto& record) { return difference.starts_with(record); });
      const bool isSale = difference.starts_with("Invoice");
      return isOne && (std::regex_search(difference, kSums) || (isSale && std::regex_search(difference, kAmounts)));
    });
    return done;
  }

  static void ExpectBoxes(const cli::Preview& preview, const ScriptedDesk& desk) {
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
  static Values WithChanges(Values values, const cli::Preview& preview) {
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

}  // namespace twqb
