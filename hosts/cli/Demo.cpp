#include "cli/Demo.h"

#include <fmt/core.h>

#include <array>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/system/FrozenMachine.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/Composition.h"
#include "cli/DemoBooks.h"
#include "cli/DemoTables.h"
#include "cli/FolderMaker.h"
#include "cli/Output.h"
#include "cli/SampleTexts.h"
#include "cli/TextTable.h"
#include "cli/TransferLock.h"
#include "cli/Transfers.h"
#include "platform/Date.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr Date::Civil kFirstMorning = {.year = 2008, .month = 3, .day = 5, .hour = 10};

// In the order of time, where both sides change a record.
enum class Changed : std::uint8_t { BillingAlone, QuickBooksAlone, QuickBooksThenBilling, BillingThenQuickBooks };

struct Change {
  std::string_view client;
  Changed changed;
};

constexpr std::array kChanges = {
    Change{"ABBOTT", Changed::BillingAlone},           Change{"BAYVIEW", Changed::BillingAlone},
    Change{"CEDAR", Changed::QuickBooksAlone},         Change{"DELMAR", Changed::QuickBooksAlone},
    Change{"EASTON", Changed::QuickBooksThenBilling},  Change{"FARROW", Changed::QuickBooksThenBilling},
    Change{"GRANITE", Changed::BillingThenQuickBooks}, Change{"HALLORAN", Changed::BillingThenQuickBooks},
};

bool BillingWins(Changed changed) {
  return changed == Changed::BillingAlone || changed == Changed::QuickBooksThenBilling;
}

std::string_view WinnerText(Changed changed) {
  switch (changed) {
    case Changed::BillingAlone:
      return "BillingDb (changed alone)";
    case Changed::QuickBooksAlone:
      return "QuickBooks (changed alone)";
    case Changed::QuickBooksThenBilling:
      return "BillingDb (changed later)";
    case Changed::BillingThenQuickBooks:
      return "QuickBooks (changed later)";
  }
  return {};
}

// What the two sides hold of a client, before the transfers and after.
struct Compared {
  Change change;
  std::string billingBefore;
  std::string quickBooksBefore;
  std::string billingAfter;
  std::string quickBooksAfter;

  [[nodiscard]] const std::string& Expected() const {
    return BillingWins(change.changed) ? billingBefore : quickBooksBefore;
  }
};

// An address without its domain, so that a line of the result fits on a screen.
std::string Shown(const std::string& address) { return address.substr(0, address.find('@') + 1); }

class Demo {
 public:
  Demo(Composition& composition, const Options& options)
      : composition_(composition), options_(options), books_(composition.Place(), composition.RealMachine()) {}

  ExitStatus Run() {
    TellState();
    Step("Send the clients to QuickBooks, for the first time");
    Print("   The first transfer offers a backup of both files; that is answered: Yes.\n");
    if (!Transfer(Direction::Send)) return ExitStatus::Failed;
    boxesOfBackup_ = composition_.BoxesShown();
    TellState();
    Step("Change e-mail addresses on both sides");
    ChangeBothSides();
    Step("Send the clients again");
    Print("   What is newer in BillingDb goes out.\n");
    if (!Transfer(Direction::Send)) return ExitStatus::Failed;
    Step("Get the customers");
    Print("   What is newer in QuickBooks comes in, and so do its own customers.\n");
    if (!Transfer(Direction::Get)) return ExitStatus::Failed;
    for (auto& compared : compared_) {
      compared.billingAfter = books_.EmailInBilling(compared.change.client);
      compared.quickBooksAfter = books_.EmailInQuickBooks(compared.change.client);
    }
    Step("The result");
    ShowResult();
    TellState();
    if (!TransferAllTables()) return ExitStatus::Failed;
    const auto status = Check();
    return HoldPaymentsBack() ? status : ExitStatus::Failed;
  }

 private:
  void Step(std::string_view text) {
    constexpr std::int64_t kBetweenSteps = 30 * Date::kMinute;
    composition_.FrozenClock()->Advance(kBetweenSteps);
    Print(fmt::format("\n{}. {} ({})\n", ++step_, text, IsoDate(composition_.RealMachine().Now())));
  }

  void TellState() {
    const auto clients = books_.Rows("Client", "1 = 1");
    Print(fmt::format("   BillingDb: {} of {} clients are linked. QuickBooks: {} customers, {} jobs.\n", clients.linked,
                      clients.rows, books_.RecordsOf(DemoBooks::ListedIn::Customers).size(),
                      books_.RecordsOf(DemoBooks::ListedIn::Jobs).size()));
  }

  bool TransferAllTables() {
    const auto before = StatesOf(books_);
    Step("Send all tables in one run");
    if (!Transfer(Direction::Send, enAll)) return false;
    const auto sent = StatesOf(books_);
    Step("Get all tables in one run");
    if (!Transfer(Direction::Get, enAll)) return false;
    const auto got = StatesOf(books_);
    Step("What moved");
    PrintFirstRound(before, sent, got);
    Step("Send all tables again, and once more");
    if (!Transfer(Direction::Send, enAll)) return false;
    second_ = StatesOf(books_);
    if (!Transfer(Direction::Send, enAll)) return false;
    third_ = StatesOf(books_);
    PrintMoreSends(got, second_, third_);
    return true;
  }

  bool Transfer(Direction direction, enTables table = enClients) {
    FlushOutput();  // the progress goes another way to the screen
    const bool done =
        RunTransfer(composition_, options_, {.direction = direction, .table = table, .id = {}, .sync = false});
    Print(done ? "   Done.\n" : "   Failed.\n");
    return done;
  }

  void ChangeBothSides() {
    constexpr std::int64_t kLater = 20 * Date::kMinute;
    for (const auto& change : kChanges) {
      if (change.changed == Changed::BillingAlone || change.changed == Changed::BillingThenQuickBooks) Bill(change);
      if (change.changed == Changed::QuickBooksAlone || change.changed == Changed::QuickBooksThenBilling) Book(change);
    }
    composition_.FrozenClock()->Advance(kLater);
    for (const auto& change : kChanges) {
      if (change.changed == Changed::QuickBooksThenBilling) Bill(change);
      if (change.changed == Changed::BillingThenQuickBooks) Book(change);
      compared_.push_back({.change = change,
                           .billingBefore = books_.EmailInBilling(change.client),
                           .quickBooksBefore = books_.EmailInQuickBooks(change.client),
                           .billingAfter = {},
                           .quickBooksAfter = {}});
    }
    Print("   Two clients in BillingDb alone, two in QuickBooks alone, four on both sides.\n");
  }

  void Bill(const Change& change) { books_.ChangeInBilling(change.client, Address("billing", change.client)); }
  void Book(const Change& change) { books_.ChangeInQuickBooks(change.client, Address("books", change.client)); }
  static std::string Address(std::string_view who, std::string_view client) {
    return fmt::format("{}@{}.example", who, FoldCase(client));
  }

  void ShowResult() const {
    std::vector<std::vector<std::string>> lines = {{"Client", "BillingDb had", "QuickBooks had", "Both now", "Won"}};
    for (const auto& compared : compared_) {
      const bool same = compared.billingAfter == compared.quickBooksAfter;
      lines.push_back({std::string(compared.change.client), Shown(compared.billingBefore),
                       Shown(compared.quickBooksBefore), same ? Shown(compared.billingAfter) : "(they differ)",
                       std::string(WinnerText(compared.change.changed))});
    }
    std::istringstream table(TextTable(lines));
    for (std::string line; std::getline(table, line);) Print("   " + line + '\n');
  }

  // True: each of them stays, and each reason is told.
  bool HoldPaymentsBack() {
    constexpr std::string_view kHeld = "QBLinkID IS NULL AND PayMethod <> '6'";  // debits never go
    constexpr int kReasons = 3;
    Step("Enter payments that QuickBooks has no room for, and send the payments");
    Print("   One is of more than its invoice comes to, one of a draft, and one of an invoice\n   that is paid.\n");
    const auto boxes = composition_.BoxesShown();
    books_.EnterInBilling(SampleHeldPayments());
    const bool done = Transfer(Direction::Send, enPayments);
    const auto held = books_.Rows("Payment", kHeld).rows;
    Print(
        fmt::format("   {} payments are held back, each of which the log tells of. A send that holds\n"
                    "   payments back fails, and a run over all tables ends there.\n",
                    held));
    if (!done && held == kReasons && composition_.BoxesShown() - boxes == kReasons) return true;
    Tell("The payments were not held back.");
    return false;
  }

  ExitStatus Check() {
    auto status = ExitStatus::Done;
    const auto complain = [&](const std::string& text) {
      Tell(text);
      status = ExitStatus::Failed;
    };
    for (const auto& text : Unexpected(second_, third_)) complain(text);
    if (const auto boxes = composition_.BoxesShown() - boxesOfBackup_; boxes != 0) {
      complain(fmt::format("The transfers have shown {} message boxes.", boxes));
    }
    for (const auto& compared : compared_) {
      const auto compare = [&](std::string_view side, const std::string& found) {
        if (found == compared.Expected()) return;
        complain(fmt::format("{} of {} should be \"{}\" and is \"{}\".", compared.change.client, side,
                             compared.Expected(), found));
      };
      compare("BillingDb", compared.billingAfter);
      compare("QuickBooks", compared.quickBooksAfter);
    }
    return status;
  }

  Composition& composition_;
  const Options& options_;
  DemoBooks books_;
  std::vector<Compared> compared_;
  TableStates second_;  // behind the second send of all tables
  TableStates third_;
  int boxesOfBackup_ = 0;
  int step_ = 1;  // the folder has been made
};

}  // namespace

ExitStatus RunDemo(const std::filesystem::path& folder, const Options& options, Surroundings surroundings) {
  // It never asks: the backup of the first transfer is made, and what fails is not tried again.
  if (!surroundings.answers) surroundings.answers = ParseAnswers("default yes\ndefault cancel\n");
  if (!surroundings.clock) {
    surroundings.clock =
        FrozenOptions{.now = Date::FromCivil(kFirstMorning), .zone = {.state = TimeZoneState::Standard}};
  }
  const auto place = WorkplaceIn(folder.string());
  const auto machine = MakeMachine(place, surroundings.clock);
  CheckTranscript(place, surroundings);
  Print(fmt::format("1. Make a folder with the sample firm on both sides: {}\n", place.folder));
  MakeFolder(folder, {.company = {}, .content = Content::Sample}, *machine);

  const EndSignals signals;
  const TransferLock held(place, options);
  Composition composition(place, surroundings);
  const auto status = Demo(composition, options).Run();
  const auto here = place.folder.find(' ') == std::string::npos ? place.folder : fmt::format("\"{}\"", place.folder);
  Print(
      fmt::format("\nThe folder stays: {0}\nTry\n"
                  "  twqb -C {0} billing run -e \"SELECT ClientID, ClientEmail, QBLinkID FROM Client\"\n"
                  "  twqb -C {0} company show\n"
                  "  twqb -C {0} status\n"
                  "  twqb -C {0} balances\n",
                  here));
  return status;
}

}  // namespace twqb::cli
