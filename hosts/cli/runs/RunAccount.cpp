#include "cli/runs/RunAccount.h"

#include <fmt/core.h>

#include <algorithm>
#include <numeric>

#include "bridge/Tables.h"
#include "cli/options/TableArgument.h"
#include "cli/screen/Output.h"
#include "platform/Text.h"
#include "services/Errors.h"

namespace twqb::cli {

namespace {

std::string NameOf(std::int32_t table) { return TypedName(static_cast<enTables>(table)); }

std::string OnOneLine(std::string_view text) { return Trim(ReplaceAll(ReplaceAll(text, "\r\n", " "), "\n", " ")); }

// " (clients ABBOTT)": the record that a line of the log is about.
std::string About(std::int32_t table, const std::string& key, const std::string& identifier) {
  return fmt::format(" ({})", RecordName(static_cast<enTables>(table), key.empty() ? identifier : key));
}

std::string WordsFor(Fate fate, std::int64_t count) {
  if (fate == Fate::LeftAsItWas && count != 1) return "left as they were";
  return std::string(FateWord(fate));
}

}  // namespace

bool RunAccount::Tally::HasRecords() const {
  const auto any = [](const Counts& counts) {
    return std::ranges::any_of(counts, [](auto count) { return count > 0; });
  };
  return any(records) || any(lines) || notReached > 0;
}

RunAccount::Tally& RunAccount::TallyOf(std::int32_t table) {
  const auto found = std::ranges::find(tallies_, table, &Tally::table);
  return found != tallies_.end() ? *found : tallies_.emplace_back(Tally{.table = table});
}

void RunAccount::RecordTold(const RecordAccount& record) {
  auto& tally = TallyOf(record.table.number);
  auto& counts = record.standing == Standing::Record ? tally.records : tally.lines;
  ++counts.at(static_cast<std::size_t>(record.fate));
  if (!record.former.empty() && record.fate == Fate::Added) {
    ++(record.parting == Parting::NameInUse ? tally.nameInUse : tally.linkUnread);
  }
  // Its lines were counted.
  if (record.fate == Fate::Refused && !record.isOfItsLines) {
    ++refused_;
    Append(fmt::format("QuickBooks refused a record, {}{}", OnOneLine(record.why),
                       About(record.table.number, record.key, record.identifier)));
  }
  if (report_ != nullptr) report_->Write(record);
}

void RunAccount::ErrorTold(const ErrorAccount& error) {
  ++errors_;
  if (error.table) TallyOf(error.table->number).broke = true;
  if (error.toldBy != ToldBy::Log) {
    // One that nobody raised has no number.
    const auto number = error.number == 0 ? "" : fmt::format(" {}", SignedNumber(error.number));
    Append(fmt::format("Error{} in {}: {}{}", number, error.routine, OnOneLine(error.text),
                       error.table ? About(error.table->number, error.key, error.identifier) : ""));
  }
  if (report_ != nullptr) report_->Write(error);
}

void RunAccount::Append(const std::string& line) {
  bool isWritten = false;
  IgnoreErrors([&] {
    machine_.AppendLine(LogFile(machine_), line);
    isWritten = true;
  });
  if (!isWritten) log_ = LogOfRun::Torn;
}

void RunAccount::WalkEnded(const TableInHand& table, const Extent& extent) {
  TallyOf(table.number).notReached += extent.found - extent.taken;
}

void RunAccount::CountLostLink(const LostLinkAccount& link) {
  if (!link.isFound) ++errors_;
}

// The log has it.
void RunAccount::LostLinkTold(const LostLinkAccount& link) {
  CountLostLink(link);
  Tell(link.text);
}

void RunAccount::LikelyTwinsTold(const LikelyTwinsAccount& twins) {
  const auto name = TypedName(static_cast<enTables>(twins.table.number));
  const auto rows = twins.rows == 1 ? fmt::format("1 row of {} without a link looks like a record", name)
                                    : fmt::format("{} rows of {} without a link look like records", twins.rows, name);
  Tell(fmt::format("{} that QuickBooks has already.{} See \"twqb link {}\".", rows,
                   twins.stops ? " Nothing is sent." : "", name));
}

void RunAccount::TableSkipped(const TableInHand& table) { TallyOf(table.number).skipped = true; }

void RunAccount::TableEnded(const TableInHand& table, std::string_view narrowed) {
  auto& tally = TallyOf(table.number);
  tally.ended = true;
  tally.narrowed = narrowed;
  if (report_ != nullptr) report_->Flush();
}

std::string RunAccount::Troubles() const {
  std::string text;
  if (errors_ > 0) text = errors_ == 1 ? "1 error was told" : fmt::format("{} errors were told", errors_);
  if (refused_ == 0) return text;
  const auto refused = refused_ == 1 ? "1 record was refused" : fmt::format("{} records were refused", refused_);
  return text.empty() ? refused : text + " and " + refused;
}

std::string RunAccount::CountsText(const Counts& counts) {
  std::string text;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts.at(i) == 0) continue;
    text +=
        fmt::format("{}{} {}", text.empty() ? "" : ", ", counts.at(i), WordsFor(static_cast<Fate>(i), counts.at(i)));
  }
  return text;
}

std::string RunAccount::LineOf(const Tally& tally) {
  auto text = CountsText(tally.records);
  const auto also = [&text](const std::string& more) { text += (text.empty() ? "" : ", ") + more; };
  if (tally.notReached > 0) also(fmt::format("{} not reached", tally.notReached));
  if (const auto lines = CountsText(tally.lines); !lines.empty()) text += "; lines: " + lines;
  return text;
}

std::string RunAccount::WhyNothing(const Tally& tally, const TransferRequest& request) {
  const auto* table = FindTable(tally.table);
  if (request.direction == Direction::Send && !request.id && table != nullptr && table->sends == SentRows::NamedAlone) {
    return "nothing was selected; it goes by --id alone";
  }
  std::string text = "nothing was selected";
  if (request.id) text += fmt::format("; there is no record {}", *request.id);
  if (!tally.narrowed.empty()) text += fmt::format("{} left out is {}", request.id ? ", or" : ";", tally.narrowed);
  return text;
}

std::string RunAccount::Summary(const TransferRequest& request) const {
  struct Line {
    std::string name;
    std::string text;
  };
  std::vector<Line> lines;
  for (const auto& tally : tallies_) {
    const auto name = NameOf(tally.table) + ":";
    if (tally.HasRecords()) {
      lines.push_back({name, LineOf(tally)});
    } else if (tally.skipped) {
      lines.push_back({name, "the settings skip this table"});
    } else if (tally.broke) {
      lines.push_back({name, "nothing of it could be read or begun: see the log"});
    } else if (tally.table == request.table && tally.ended) {
      lines.push_back({name, WhyNothing(tally, request)});
    }
    if (tally.nameInUse > 0) {
      lines.push_back(
          {"", fmt::format("{} of the added once more, for the name is in use in QuickBooks: give it another "
                           "name, and see the log",
                           tally.nameInUse)});
    }
    if (tally.linkUnread > 0) {
      lines.push_back({"", fmt::format("{} of the added perhaps once more, for the link could not be looked up: see "
                                       "QuickBooks, and the log",
                                       tally.linkUnread)});
    }
  }
  for (const auto table : expected_) {
    const bool isMet = tallies_.empty() || std::ranges::find(tallies_, table, &Tally::table) != tallies_.end();
    if (!isMet) lines.push_back({NameOf(table) + ":", "not reached"});
  }
  const auto width =
      std::accumulate(lines.begin(), lines.end(), std::size_t{0},
                      [](std::size_t most, const Line& line) { return std::max(most, line.name.size()); });
  std::string text;
  for (const auto& line : lines) text += fmt::format("{:<{}} {}\n", line.name, width, line.text);
  return text;
}

}  // namespace twqb::cli
