#include <array>
#include <memory>
#include <string>
#include <vector>

#include "adapters/transcript/TranscriptWriter.h"
#include "cli/books/BalanceBooks.h"
#include "cli/books/BalanceTable.h"
#include "cli/books/Balances.h"
#include "cli/commands/Commands.h"
#include "cli/runs/BridgeRun.h"
#include "cli/runs/Checks.h"
#include "cli/runs/Composition.h"
#include "cli/screen/Output.h"
#include "cli/screen/RowText.h"
#include "cli/screen/Screen.h"

namespace twqb::cli {

namespace {

std::string MoneyOrNone(Currency amount) {
  return TextOrNone(amount == Currency() ? std::string() : MoneyText(amount));
}

// --- For people ------------------------------------------------------------------------------------------------------

void PrintRecords(const Options& options, const std::vector<Balance>& balances) {
  constexpr std::array kAlignments = {Align::Left,  Align::Left,  Align::Left, Align::Left,
                                      Align::Right, Align::Right, Align::Right};
  std::vector<TableLine> lines = {
      {"CLIENT", "PROJECT", "INVOICE", "PAYMENT", "BILLINGDB", "QUICKBOOKS", "DIFFERENCE", "CAUSE"}};
  for (const auto& balance : balances) {
    for (const auto& record : balance.records) {
      auto& line = lines.emplace_back(CellsOf(balance.payer));
      line.push_back(TextOrNone(record.invoice));
      line.push_back(TextOrNone(record.payment));
      line.push_back(MoneyOrNone(record.billing + record.billingUnused));
      line.push_back(MoneyOrNone(record.quickBooks + record.quickBooksUnused));
      line.push_back(MoneyText(record.Difference()));
      line.emplace_back(CauseText(record.cause));
    }
  }
  if (lines.size() == 1) return;
  Print("\n");
  PrintTable(options, lines, kAlignments);
}

// --- For programs ----------------------------------------------------------------------------------------------------

EventValue MoneyValue(Currency amount) { return EventValue(Value(amount)); }
EventValue TextValue(const std::string& text) { return text.empty() ? EventValue(nullptr) : EventValue(text); }

EventFields FieldsOf(const BalanceRecord& record) {
  return {{"cause", CauseName(record.cause)},
          {"invoice", TextValue(record.invoice)},
          {"payment", TextValue(record.payment)},
          {"billing", MoneyValue(record.billing)},
          {"quickBooks", MoneyValue(record.quickBooks)},
          {"difference", MoneyValue(record.Difference())},
          {"billingUnused", MoneyValue(record.billingUnused)},
          {"quickBooksUnused", MoneyValue(record.quickBooksUnused)}};
}

std::string JsonOf(const Balance& balance) {
  EventList records;
  for (const auto& record : balance.records) records.emplace_back(FieldsOf(record));
  return JsonLine({{"client", TextValue(balance.payer.client)},
                   {"project", TextValue(balance.payer.project)},
                   {"customer", TextValue(balance.payer.customer)},
                   {"billing", MoneyValue(balance.billing)},
                   {"quickBooks", MoneyValue(balance.quickBooks)},
                   {"difference", MoneyValue(balance.Difference())},
                   {"records", std::move(records)}}) +
         "\n";
}

// --- The command -----------------------------------------------------------------------------------------------------

Workplace Checked(const Options& options) {
  auto place = WorkplaceOf(options);
  CheckBilling(place);
  RequireCompany(place);
  const auto missing = MissingTables(place, {"Client", "Project", "TransactionTable", "Payment"});
  if (!missing.empty()) throw UsageError(MissingText(missing));
  return place;
}

ExitStatus Balances(const Options& options, RowForm form) {
  Composition composition(Checked(options), ReadSurroundings(options));
  const auto balances = CompareBooks(composition.Place(), *composition.Seams().database, composition.RealMachine());
  if (form == RowForm::Json) {
    for (const auto& balance : balances) Print(JsonOf(balance));
  } else {
    PrintTable(options, BalanceLines(balances), kBalanceAlignments);
    PrintRecords(options, balances);
  }
  FlushOutput();
  if (!composition.TranscriptIsWhole()) RefuseTranscript(options);
  return ExitStatus::Done;
}

}  // namespace

CommandSyntax BalancesCommand() {
  const auto json = std::make_shared<bool>(false);
  return {
      .name = "balances",
      .text = "Show what clients owe in BillingDb and in QuickBooks, and why that differs",
      .arguments = {{.name = "--json", .text = "Print each balance as a JSON object", .target = json.get()}},
      .footer =
          "One line for each project, and for each client with a balance of its own, where anything is open. In "
          "BillingDb\n"
          "that is what was billed less what payments apply to it, drafts and retainers left out; in QuickBooks what "
          "is\n"
          "open of invoices less what is left of credit memos, pending ones left out. A customer that no link leads to "
          "has\n"
          "no client, and its full name as project. Below that stand the records that the differences are made of; "
          "they add\n"
          "up to them. Nothing is written. The status is 0 whether there are differences or not.",
      .run = [json](const Options& options) { return Balances(options, *json ? RowForm::Json : RowForm::Readable); }};
}

}  // namespace twqb::cli
