#include "cli/Demo.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/terminal/TextLayout.h"
#include "cli/DemoBooks.h"
#include "cli/FolderMaker.h"
#include "cli/Output.h"
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

void PrintTable(const std::vector<std::vector<std::string>>& lines) {
  std::vector<std::size_t> widths(lines.front().size());
  for (const auto& line : lines) {
    for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], ColumnCount(line[i]));
  }
  for (const auto& line : lines) {
    std::string text = "  ";
    for (std::size_t i = 0; i < line.size(); ++i) {
      text += ' ' + line[i];
      if (i + 1 < line.size()) text.append(widths[i] - ColumnCount(line[i]) + 1, ' ');
    }
    Print(text + '\n');
  }
}

class Demo {
 public:
  Demo(Composition& composition, const Options& options)
      : composition_(composition), options_(options), books_(composition.Place(), composition.RealMachine()) {}

  ExitStatus Run() {
    TellState();
    Step("Send the clients to QuickBooks, for the first time");
    if (!Transfer(Direction::Send)) return ExitStatus::Failed;
    TellState();
    Step("Change e-mail addresses on both sides");
    ChangeBothSides();
    Step("Send the clients again: what is newer in BillingDb goes out");
    if (!Transfer(Direction::Send)) return ExitStatus::Failed;
    Step("Get the customers: what is newer in QuickBooks comes in, and so do its own customers");
    if (!Transfer(Direction::Get)) return ExitStatus::Failed;
    for (auto& compared : compared_) {
      compared.billingAfter = books_.EmailInBilling(compared.change.client);
      compared.quickBooksAfter = books_.EmailInQuickBooks(compared.change.client);
    }
    Step("The result");
    ShowResult();
    TellState();
    Step("Send all tables: the people and the projects go as well");
    if (!Transfer(Direction::Send, enAll)) return ExitStatus::Failed;
    const auto sent = TellTables();
    Step("Get all tables: QuickBooks' own people and jobs come in");
    if (!Transfer(Direction::Get, enAll)) return ExitStatus::Failed;
    TellTables();
    Print(
        "   The employee without a link stands for managers of whom QuickBooks knows a name and BillingDb nothing.\n");
    return sent == ExitStatus::Done ? Check() : sent;
  }

 private:
  void Step(std::string_view text) {
    constexpr std::int64_t kBetweenSteps = 30 * Date::kMinute;
    composition_.FrozenClock()->Advance(kBetweenSteps);
    Print(fmt::format("\n{}. {} ({})\n", ++step_, text, IsoDate(composition_.RealMachine().Now())));
  }

  void TellState() {
    const auto clients = books_.Rows("Client", "1 = 1");
    const auto quickBooks = books_.Customers();
    Print(fmt::format("   BillingDb: {} of {} clients are linked. QuickBooks: {} customers, {} jobs.\n", clients.linked,
                      clients.rows, quickBooks.customers, quickBooks.jobs));
  }

  // Fails where a row has no link.
  ExitStatus TellTables() {
    struct Part {
      std::string_view name;
      std::string_view table;
      std::string_view condition;
    };
    constexpr std::array kParts = {Part{"employees", "Employee", "IsSub = 0"},
                                   Part{"vendors", "Employee", "IsSub = -1"}, Part{"clients", "Client", "1 = 1"},
                                   Part{"projects", "Project", "1 = 1"}};
    auto status = ExitStatus::Done;
    std::string text;
    for (const auto& part : kParts) {
      const auto count = books_.Rows(part.table, part.condition);
      text += fmt::format("{}{} of {} {}", text.empty() ? "" : ", ", count.linked, count.rows, part.name);
      if (count.linked != count.rows) status = ExitStatus::Failed;
    }
    Print(fmt::format("   BillingDb: {} are linked.\n", text));
    return status;
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
    Print("   Two clients in BillingDb alone, two in QuickBooks alone, four on both sides, one after the other.\n");
  }

  void Bill(const Change& change) { books_.ChangeInBilling(change.client, Address("billing", change.client)); }
  void Book(const Change& change) { books_.ChangeInQuickBooks(change.client, Address("books", change.client)); }
  static std::string Address(std::string_view who, std::string_view client) {
    return fmt::format("{}@{}.example", who, FoldCase(client));
  }

  void ShowResult() const {
    std::vector<std::vector<std::string>> lines = {
        {"Client", "BillingDb had", "QuickBooks had", "Both have now", "Won"}};
    for (const auto& compared : compared_) {
      const bool same = compared.billingAfter == compared.quickBooksAfter;
      lines.push_back({std::string(compared.change.client), Shown(compared.billingBefore),
                       Shown(compared.quickBooksBefore), same ? Shown(compared.billingAfter) : "(they differ)",
                       std::string(WinnerText(compared.change.changed))});
    }
    PrintTable(lines);
  }

  ExitStatus Check() {
    auto status = ExitStatus::Done;
    const auto complain = [&](const std::string& text) {
      Tell(text);
      status = ExitStatus::Failed;
    };
    if (const auto clients = books_.Rows("Client", "1 = 1"); clients.linked != clients.rows) {
      complain(fmt::format("{} clients have no link.", clients.rows - clients.linked));
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
  const auto place = WorkplaceIn(folder);
  const auto machine = MakeMachine(place, surroundings.clock);
  Print(fmt::format("1. Make a folder with the sample firm on both sides: {}\n", place.folder));
  MakeFolder(folder, {.company = {}, .content = Content::Sample}, *machine);

  Composition composition(place, surroundings);
  const auto status = Demo(composition, options).Run();
  const auto here = place.folder.find(' ') == std::string::npos ? place.folder : fmt::format("\"{}\"", place.folder);
  Print(
      fmt::format("\nThe folder stays: {0}\nTry\n"
                  "  twqb -C {0} billing run -e \"SELECT ClientID, ClientEmail, QBLinkID FROM Client\"\n"
                  "  twqb -C {0} company show\n"
                  "  twqb -C {0} status\n",
                  here));
  return status;
}

}  // namespace twqb::cli
