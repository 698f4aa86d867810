#include "cli/demo/DemoPapers.h"

#include <fmt/core.h>

#include <array>

#include "cli/demo/DemoPage.h"
#include "cli/screen/Output.h"

namespace twqb::cli {

std::string PapersText(const std::vector<DemoPaper>& papers, std::string_view kind, std::string_view preposition) {
  std::vector<std::string> parts;
  for (const auto& paper : papers) {
    if (paper.kind != kind) continue;
    const auto who = paper.who.empty() ? std::string() : fmt::format(" {} {}", preposition, paper.who);
    parts.push_back(fmt::format("{}{} ({})", paper.number.empty() ? "one" : paper.number, who, Money(paper.amount)));
  }
  return Listed(parts);
}

void PrintInvoices(const std::vector<DemoPaper>& invoices) {
  constexpr std::array kAlignments = {Align::Left, Align::Left, Align::Left, Align::Right};
  std::vector<TableLine> lines;
  for (const auto& invoice : invoices) {
    lines.push_back({invoice.number, invoice.who, invoice.what, Money(invoice.amount)});
  }
  PrintTable(lines, kAlignments, 1);
}

void PrintPayments(const std::vector<DemoPaper>& payments) {
  constexpr std::array kAlignments = {Align::Left, Align::Right, Align::Left};
  std::vector<TableLine> lines;
  for (const auto& payment : payments) {
    const auto what = payment.what.empty() ? std::string() : fmt::format(", for {}", payment.what);
    lines.push_back({payment.who, Money(payment.amount), payment.kind + what});
  }
  PrintTable(lines, kAlignments);
}

void PrintBooked(const DemoArrivals& come) {
  struct Kind {
    std::string_view name;
    std::string_view words;
    std::string_view preposition = "to";
  };
  constexpr std::array kKinds = {Kind{"Estimate", "estimates", "for"},
                                 Kind{"Invoice", "invoices"},
                                 Kind{"CreditMemo", "credit memos"},
                                 Kind{"ReceivePayment", "payments", "of"},
                                 Kind{"Bill", "bills", "of"},
                                 Kind{"Check", "checks"},
                                 Kind{"CreditCardCharge", "charges of the credit card"}};
  PrintParagraph("In QuickBooks the bookkeeper enters");
  Print("\n");
  PrintItem(Counted(come.bookedHours, "entry of hours", "entries of hours"));
  for (const auto& kind : kKinds) {
    if (const auto papers = PapersText(come.booked, kind.name, kind.preposition); !papers.empty()) {
      PrintItem(fmt::format("{}: {}", kind.words, papers));
    }
  }
}

}  // namespace twqb::cli
