#include "cli/demo/Demo.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/system/FrozenMachine.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/books/BalanceBooks.h"
#include "cli/books/BalanceTable.h"
#include "cli/demo/DemoBooks.h"
#include "cli/demo/DemoConflicts.h"
#include "cli/demo/DemoContents.h"
#include "cli/demo/DemoMoves.h"
#include "cli/demo/DemoPage.h"
#include "cli/demo/DemoPapers.h"
#include "cli/demo/DemoQuarter.h"
#include "cli/demo/DemoStays.h"
#include "cli/runs/Composition.h"
#include "cli/runs/Transfers.h"
#include "cli/screen/Output.h"
#include "cli/workplace/FolderMaker.h"
#include "cli/workplace/SampleTexts.h"
#include "cli/workplace/TransferLock.h"
#include "platform/Date.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kFirstMorning = "2007-12-01 09:00:00";

// Rows of the sample firm that never get a link: accounts whose names QuickBooks has, the code that stands for items
// without one, hours that are not posted or below nothing, invoices that are drafts or below nothing, and a debit.
struct WithoutLink {
  std::string_view table;
  std::string_view condition;
  std::int64_t rows;
};
constexpr std::array kWithoutLink = {
    WithoutLink{"Employee", "1 = 1", 0},   WithoutLink{"Client", "1 = 1", 0},
    WithoutLink{"Project", "1 = 1", 0},    WithoutLink{"Activity", "1 = 1", 0},
    WithoutLink{"Expense", "1 = 1", 1},    WithoutLink{"AccountList", "1 = 1", 6},
    WithoutLink{"TimeEntry", "1 = 1", 11}, WithoutLink{"TransactionTable", "PayID IS NULL", 3},
    WithoutLink{"Payment", "1 = 1", 1},    WithoutLink{"VendorBill", "1 = 1", 0},
};

// What the two sides differ by at the end, by the sample firm's own numbers.
struct ExpectedDifference {
  Cause cause;
  std::string_view invoice;
};
constexpr std::array kExpected = {
    ExpectedDifference{Cause::MoreThanIsOpen, "1055"}, ExpectedDifference{Cause::BelowNothing, "1057"},
    ExpectedDifference{Cause::Debit, "1041"},          ExpectedDifference{Cause::InvoiceIsDraft, "1043"},
    ExpectedDifference{Cause::InvoiceIsPaid, "1048"},
};

std::string CountOrNone(std::int64_t count) { return count == 0 ? "-" : Number(count); }

class Demo {
 public:
  Demo(Composition& composition, const Options& options, DemoMoves& moves)
      : composition_(composition),
        options_(options),
        moves_(moves),
        books_(composition.Place(), composition.RealMachine()),
        quarter_(composition.Place(), composition.RealMachine()),
        conflicts_(books_, *composition.FrozenClock()) {
    options_.noProgress = true;  // the page is what there is to see
  }

  ExitStatus Run() {
    return December() && January() && February() && Close() && HoldPaymentsBack() && CompareAtTheEnd() && !failed_
               ? ExitStatus::Done
               : ExitStatus::Failed;
  }

 private:
  // --- The quarter ---------------------------------------------------------------------------------------------------

  bool December() {
    PrintHeading("December 2007");
    (void)ArriveUntil("2007-12-01", kFirstMorning);
    const auto customers = books_.ListedOf("Customer");
    PrintParagraph(fmt::format(
        "On December 1 the two are linked for the first time. BillingDb lists {} employees, {} vendors, {} clients "
        "with {} projects, {} activities, {} expense codes and {} accounts. QuickBooks, which is in use already, has "
        "{} employees, {} vendors, {} customers with {} jobs, {} services and {} accounts of its own.",
        books_.Rows("Employee", "IsSub = 0"), books_.Rows("Employee", "IsSub <> 0"), books_.Rows("Client", "1 = 1"),
        books_.Rows("Project", "1 = 1"), books_.Rows("Activity", "1 = 1"), books_.Rows("Expense", "1 = 1"),
        books_.Rows("AccountList", "1 = 1"), books_.ListedOf("Employee").all, books_.ListedOf("Vendor").all,
        customers.all - customers.below, customers.below, books_.ListedOf("ItemService").all,
        books_.ListedOf("Account").all));
    const auto come = ArriveUntil("2008-01-01", "2007-12-31 18:00:00");
    PrintParagraph(
        fmt::format("In the course of the month the desk enters {} hours of work, in {} entries, and the "
                    "bookkeeper {} in QuickBooks.",
                    come.hours, come.hourEntries, Counted(come.bookedHours, "entry", "entries")));
    PrintParagraph(
        "On December 31 all tables are sent, at half past six, and got, half an hour later. The first transfer offers "
        "a "
        "backup of both files; the answer is yes.");
    FlushOutput();
    const auto boxes = composition_.BoxesShown();
    const bool done = SendAndGet();
    constexpr int kBoxesOfBackup = 2;
    expectedBoxes_ = boxes + kBoxesOfBackup;
    PrintParagraph(
        "What has just been sent comes back with QuickBooks' date on it, and is written over with what it says "
        "already: that is what most of the changed ones are, here and below.");
    return done;
  }

  bool January() {
    PrintHeading("January 2008");
    const auto come = ArriveUntil("2008-02-01", "2008-01-31 10:00:00");
    PrintParagraph(
        fmt::format("The desk enters {} hours of work and {} expenses ({}), looks over its lists, where it changes {} "
                    "rows, and bills "
                    "for the first time:",
                    come.hours, come.expenses, Money(come.spent), come.revised));
    PrintInvoices(come.invoices);
    PrintParagraph(fmt::format("Two pay ahead, as retainers: {}.", PapersText(come.payments, "retainer", "of")));
    PrintBooked(come);
    conflicts_.Make();
    PrintParagraph(
        "And the e-mail addresses of eight clients are changed, of two at the desk, of two in QuickBooks, and of four "
        "on "
        "both sides on one day. On the evening of January 31 everything is sent and got again:");
    At("2008-01-31 18:00:00");
    const bool done = SendAndGet();
    conflicts_.Look();
    PrintParagraph("Of the addresses the later change has won:");
    conflicts_.PrintResult();
    return done;
  }

  bool February() {
    PrintHeading("February 2008");
    const auto come = ArriveUntil("2008-03-01", "2008-02-29 18:00:00");
    books_.EnterInBilling(SampleRetainerAtTheDesk());
    PrintParagraph(fmt::format(
        "{} hours, {} expenses ({}), {} rows of lists that somebody changed, and the bills of five vendors: {}. "
        "The invoices of the month, of which one is a draft, one takes back what was too much, and two come to "
        "nothing:",
        come.hours, come.expenses, Money(come.spent), come.revised, PapersText(come.bills, "", "of")));
    PrintInvoices(come.invoices);
    PrintParagraph("Clients pay:");
    PrintPayments(come.payments);
    PrintBooked(come);
    PrintParagraph(
        "O'Dowd's Bakery pays 250.00 ahead, in bread for the field crew. That is entered at the desk and not in "
        "QuickBooks: a retainer that comes in goes back, and comes in once more with each get.");
    return SendExpensesOfVendors() && SendAndGet();
  }

  // Expenses go when somebody names them.
  bool SendExpensesOfVendors() {
    const auto keys = books_.Keys(
        "SELECT ELID FROM ExpenseLog WHERE EmployeeID IN ('DOCUPRINT', 'GEO-TECH') AND QBLinkID IS NULL ORDER BY "
        "EmployeeID, ELDate");
    std::string named;
    for (const auto& key : keys) named += fmt::format("{}'{}'", named.empty() ? "" : ",", key);
    const auto before = books_.BookedOf("Bill");
    PrintParagraph(
        "Expenses go to QuickBooks when somebody names them. On February 29 those of two vendors are, DocuPrint's and "
        "Geo-Tech's, and become a bill of each. Then everything is sent and got:");
    const bool done = Transfer({.direction = Direction::Send, .table = enExpenseLog, .id = named});
    (void)moves_.Take();
    constexpr int kBills = 2;
    ++expectedBoxes_;  // they are offered for a look
    if (const auto bills = books_.BookedOf("Bill") - before; bills != kBills) {
      Complain(fmt::format("The expenses have become {} bills, not {}.", bills, kBills));
    }
    return done;
  }

  bool Close() {
    PrintHeading("March 2008: the quarter is closed");
    const auto come = ArriveUntil("2008-03-06", "2008-03-05 18:00:00");
    PrintParagraph("Until March 5 the rest of the money comes in:");
    PrintPayments(come.payments);
    PrintParagraph("In the evening everything is sent and got:");
    if (!SendAndGet()) return false;
    auto contents = ContentsOf(composition_.Place(), composition_.RealMachine());
    PrintParagraph("On the next two evenings everything is sent and got again, though nobody has changed anything.");
    Print("\n");
    bool isStill = true;
    for (const std::string_view day : {"6", "7"}) {
      At(fmt::format("2008-03-0{} 18:00:00", day));
      if (!MoveOnce()) return false;
      const auto sent = SumOf(sent_);
      const auto got = SumOf(got_);
      PrintItem(
          fmt::format("March {}: {} new and {} changed records go to QuickBooks; {} new and {} changed ones come.", day,
                      sent.added, sent.changed, got.added, got.changed));
      if (sent.added + got.added != 0) Complain(fmt::format("On March {} something new has moved.", day));
      auto behind = ContentsOf(composition_.Place(), composition_.RealMachine());
      for (const auto& name : Differing(contents, behind)) {
        Complain(fmt::format("A transfer of what nobody changed has changed {}.", name));
        isStill = false;
      }
      contents = std::move(behind);
    }
    if (isStill) {
      PrintParagraph(fmt::format(
          "A row that a get has written is the later side from then on, so that it goes out with the next send, and "
          "comes back. But for these dates none of the {} rows and records on both sides says anything else than on "
          "March 5; none has been added, and none has gone.",
          Number(static_cast<std::int64_t>(contents.size()))));
    }
    CheckLinks();
    return true;
  }

  // True: each of them stays, and each reason is told.
  bool HoldPaymentsBack() {
    At("2008-03-10 18:00:00");
    PrintParagraph(
        "On March 10 three payments are entered at the desk that QuickBooks has no room for: Abbott pays more than "
        "invoice 1055 comes to, Bayview an invoice that is a draft, and Winslow one that it has paid. The payments are "
        "sent; QuickBooks takes none of the three, each reason is told, and the log has each payment:");
    books_.EnterInBilling(SampleHeldPayments());
    constexpr int kReasons = 3;
    FlushOutput();
    const bool done = RunTransfer(composition_, options_, {.direction = Direction::Send, .table = enPayments});
    expectedBoxes_ += kReasons;
    const auto tables = moves_.Take();
    const auto payments = tables.find(enPayments);
    const auto held = books_.Rows("Payment", "QBLinkID IS NULL AND PayMethod <> '6'");  // debits never go
    if (done || held != kReasons || payments == tables.end() || payments->second.added != 0) {
      Complain("The payments were not held back.");
    }
    return CheckBoxes();
  }

  bool CompareAtTheEnd() {
    PrintHeading("The two books, side by side");
    PrintParagraph("What clients owe for each project, in BillingDb and in QuickBooks:");
    const auto balances =
        CompareBooks(composition_.Place(), *composition_.Seams().database, composition_.RealMachine());
    PrintTable(BalanceLines(balances), kBalanceAlignments, 1);
    std::vector<ExpectedDifference> missing(kExpected.begin(), kExpected.end());
    PrintParagraph("Everything else agrees. What differs, and why:");
    Print("\n");
    for (const auto& balance : balances) {
      for (const auto& record : balance.records) {
        if (record.cause == Cause::NotApplied) continue;
        PrintItem(DifferenceText(balance, record));
        const auto expected = std::ranges::find_if(missing, [&](const ExpectedDifference& difference) {
          return difference.cause == record.cause && difference.invoice == record.invoice;
        });
        if (expected != missing.end()) {
          missing.erase(expected);
        } else {
          Complain(fmt::format("Nobody expects that {} of {} differs: {}.", record.invoice, balance.payer.project,
                               CauseText(record.cause)));
        }
      }
    }
    for (const auto& difference : missing) {
      Complain(fmt::format("Invoice {} should differ: {}.", difference.invoice, CauseText(difference.cause)));
    }
    for (const auto& text : conflicts_.Unexpected()) Complain(text);
    return true;
  }

  static std::string DifferenceText(const Balance& balance, const BalanceRecord& record) {
    const auto amount = record.Difference() == Currency() ? "no difference" : Money(record.Difference());
    return fmt::format("invoice {}, {} of {}, {}: {}", record.invoice, balance.payer.project, balance.payer.client,
                       amount, CauseText(record.cause));
  }

  // --- Transfers -----------------------------------------------------------------------------------------------------

  void At(std::string_view time) { composition_.FrozenClock()->SetNow(TextToDate(time)); }

  DemoArrivals ArriveUntil(std::string_view day, std::string_view time) {
    At(time);
    return quarter_.Until(day);
  }

  bool Transfer(const TransferRequest& request) {
    FlushOutput();  // boxes go another way to the screen
    if (RunTransfer(composition_, options_, request)) return true;
    Complain(fmt::format("The {} failed.", request.direction == Direction::Send ? "send" : "get"));
    return false;
  }

  // All tables each way, half an hour apart.
  bool MoveOnce() {
    constexpr std::int64_t kBetween = 30 * Date::kMinute;
    for (const auto direction : {Direction::Send, Direction::Get}) {
      composition_.FrozenClock()->Advance(kBetween);
      const bool done = Transfer({.direction = direction, .table = enAll});
      (direction == Direction::Send ? sent_ : got_) = moves_.Take();
      for (const auto& error : moves_.TakeErrors()) Complain(error);
      if (!done) return false;
    }
    return true;
  }

  // The same, with what has moved and what stays.
  bool SendAndGet() {
    if (!MoveOnce()) return false;
    PrintMoves(sent_, got_);
    auto stays = stays_.News(Direction::Send, sent_);
    for (auto& line : stays_.News(Direction::Get, got_)) stays.push_back(std::move(line));
    if (stays.empty()) return true;
    PrintParagraph("What stays where it is:");
    Print("\n");
    for (const auto& line : stays) PrintItem(line);
    return true;
  }

  static DemoMoves::Table SumOf(const DemoMoves::Tables& tables) {
    DemoMoves::Table sum;
    for (const auto& [number, table] : tables) {
      sum.added += table.added;
      sum.changed += table.changed;
    }
    return sum;
  }

  static void PrintMoves(const DemoMoves::Tables& sent, const DemoMoves::Tables& got) {
    constexpr std::array kAlignments = {Align::Left, Align::Right, Align::Right, Align::Right, Align::Right};
    std::vector<TableLine> lines = {{"", "sent: new", "changed", "got: new", "changed"}};
    for (std::int32_t table = 0; table < kTableCount; ++table) {
      const auto of = [table](const DemoMoves::Tables& tables) {
        const auto found = tables.find(table);
        return found == tables.end() ? DemoMoves::Table{} : found->second;
      };
      const auto there = of(sent);
      const auto here = of(got);
      if (!there.HasMoved() && !here.HasMoved()) continue;
      lines.push_back({std::string(TableWords(table)), CountOrNone(there.added), CountOrNone(there.changed),
                       CountOrNone(here.added), CountOrNone(here.changed)});
    }
    PrintTable(lines, kAlignments);
  }

  // --- Checks --------------------------------------------------------------------------------------------------------

  void CheckLinks() {
    for (const auto& [table, condition, rows] : kWithoutLink) {
      const auto unlinked = books_.Rows(table, fmt::format("{} AND COALESCE(QBLinkID, '') = ''", condition));
      if (unlinked != rows) Complain(fmt::format("{} rows of {} have no link, not {}.", unlinked, table, rows));
      if (table == "Payment") continue;  // a payment and its discount are one in QuickBooks
      if (const auto shared = books_.SharedLinks(table, condition); shared != 0) {
        Complain(fmt::format("{} rows of {} have the link of another.", shared, table));
      }
    }
  }

  bool CheckBoxes() {
    const auto more = composition_.BoxesShown() - expectedBoxes_;
    if (more != 0) Complain(fmt::format("The transfers have shown {} message boxes.", more));
    return true;
  }

  void Complain(const std::string& text) {
    FlushOutput();
    Tell(text);
    failed_ = true;
  }

  Composition& composition_;
  Options options_;
  DemoMoves& moves_;
  DemoBooks books_;
  DemoQuarter quarter_;
  DemoConflicts conflicts_;
  DemoStays stays_;
  DemoMoves::Tables sent_;  // by the last round
  DemoMoves::Tables got_;
  int expectedBoxes_ = 0;
  bool failed_ = false;
};

}  // namespace

ExitStatus RunDemo(const std::filesystem::path& folder, const Options& options, Surroundings surroundings) {
  // It never asks: the backup of the first transfer is made, and what fails is not tried again.
  if (!surroundings.answers) surroundings.answers = ParseAnswers("default yes\ndefault cancel\n");
  if (!surroundings.clock) surroundings.clock = FrozenOptions{.zone = {.state = TimeZoneState::Standard}};
  surroundings.clock->now = TextToDate(kFirstMorning);
  DemoMoves moves;
  surroundings.observer = &moves;
  const auto place = WorkplaceIn(folder.string());
  const auto machine = MakeMachine(place, surroundings.clock);
  CheckTranscript(place, surroundings);
  PrintTitle("A quarter of Marlow Hale, surveys, water and structures: kept on two sides");
  PrintParagraph(
      "The firm enters its work and bills its clients in BillingDb, and keeps its books in QuickBooks. Both are "
      "written "
      "to, and every month the two are brought together. They are made anew in this folder, and nothing else is "
      "touched:");
  Print(fmt::format("\n   {}\n", place.folder));
  MakeFolder(folder, {.company = {}, .content = Content::SampleWithoutBookings}, *machine);

  const EndSignals signals;
  const TransferLock held(place, options);
  Composition composition(place, surroundings);
  const auto status = Demo(composition, options, moves).Run();
  const auto here = place.folder.find(' ') == std::string::npos ? place.folder : fmt::format("\"{}\"", place.folder);
  Print(
      fmt::format("\nThe folder stays: {0}\nTry\n"
                  "  twqb -C {0} status\n"
                  "  twqb -C {0} balances\n"
                  "  twqb -C {0} company show\n"
                  "  twqb -C {0} billing run -e \"SELECT ClientID, ClientEmail, QBLinkID FROM Client\"\n",
                  here));
  return status;
}

}  // namespace twqb::cli
