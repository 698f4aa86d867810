#include "cli/ForeseenRefusals.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <exception>
#include <set>
#include <utility>

#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/terminal/TextLayout.h"
#include "cli/ExitStatus.h"
#include "cli/Output.h"
#include "cli/Preview.h"
#include "cli/PreviewSeams.h"
#include "cli/TableArgument.h"
#include "messages/StatusCodes.h"
#include "services/Conversions.h"
#include "services/Sql.h"

namespace twqb::cli {

namespace {

// A finding says the same as a refusal of that status.
struct SameReason {
  Check check;
  std::int32_t status;
};
constexpr std::array kSameReasons = {SameReason{Check::ColonInName, status::kInvalidName},
                                     SameReason{Check::TextTooLong, status::kTextTooLong},
                                     SameReason{Check::NameClash, status::kNameInUse},
                                     SameReason{Check::MissingAccount, status::kInvalidObjectId},
                                     SameReason{Check::MissingAccount, status::kInvalidReference},
                                     SameReason{Check::MissingPayrollItem, status::kInvalidObjectId},
                                     SameReason{Check::MissingPayrollItem, status::kInvalidReference},
                                     SameReason{Check::ParentUnlinked, status::kInvalidObjectId},
                                     SameReason{Check::ParentUnlinked, status::kInvalidReference}};
// And these as an error of the row.
constexpr std::array kErrors = {Check::QuoteInKey, Check::Unreadable, Check::UnreadableDate};

// What a send tells of a row.
struct Trouble {
  std::int32_t status = 0;  // of a refusal; 0: it is an error
  std::string text;
};

// "status 3100: The name is in use."
Trouble TroubleOf(std::string_view why) {
  constexpr std::string_view kStatus = "status ";
  Trouble trouble = {.text = std::string(why)};
  if (!why.starts_with(kStatus)) return trouble;
  const auto colon = why.find(": ");
  if (colon == std::string_view::npos) return trouble;
  std::from_chars(why.data() + kStatus.size(), why.data() + colon, trouble.status);
  trouble.text = why.substr(colon + 2);
  return trouble;
}

bool SaysTheSame(const Finding& finding, const Trouble& trouble) {
  if (trouble.status == 0) return std::ranges::find(kErrors, finding.check) != kErrors.end();
  return std::ranges::any_of(kSameReasons, [&](const SameReason& same) {
    return same.check == finding.check && same.status == trouble.status;
  });
}

Finding FindingOf(const std::string& key, const Trouble& trouble) {
  const auto text = OneLine(trouble.text);
  return {.key = key,
          .check = Check::Refused,
          .rule = trouble.status != 0 ? fmt::format("QuickBooks would refuse it: {}", text)
                                      : fmt::format("A send would come to an error at it: {}", text),
          .advice = "Mend what the message names, and check again."};
}

class Foreseeing {
 public:
  explicit Foreseeing(std::vector<TableFindings>& told) : told_(told) {}

  void Take(const Preview& preview) {
    for (const auto& record : preview.records) {
      if (record.doing != Doing::Refuse && record.doing != Doing::Fail) continue;
      Add(record.account.table.number, record.account.key, TroubleOf(record.account.why));
    }
    for (const auto& error : preview.errors) {
      if (error.table) Add(error.table->number, error.key, {.text = error.text});
    }
  }

 private:
  void Add(std::int32_t number, const std::string& key, const Trouble& trouble) {
    const auto found =
        std::ranges::find_if(told_, [&](const TableFindings& table) { return table.table->number == number; });
    if (found == told_.end() || !seen_.insert({number, key.empty() ? trouble.text : key}).second) return;
    if (key.empty()) {
      Tell(fmt::format("A send of {} would come to an error: {}", TypedName(found->table->number),
                       OneLine(trouble.text)));
      return;
    }
    const bool isKnown = std::ranges::any_of(
        found->findings, [&](const Finding& finding) { return finding.key == key && SaysTheSame(finding, trouble); });
    if (!isKnown) found->findings.push_back(FindingOf(key, trouble));
  }

  std::vector<TableFindings>& told_;
  std::set<std::pair<std::int32_t, std::string>> seen_;
};

// Neither questions nor records of the run are a check's affair, nor links that got lost.
Options QuietOptions(const Options& options) {
  auto quiet = options;
  quiet.answers.clear();
  quiet.faults.clear();
  quiet.transcript.clear();
  quiet.noProgress = true;
  quiet.noRecovery = true;
  return quiet;
}

// The table at which a send of all has ended; nothing: ahead of all of them.
const Table* TableAtTheEnd(const Preview& preview, const std::vector<TableFindings>& told) {
  const Table* last = nullptr;
  for (const auto& table : told) {
    const auto number = table.table->number;
    const bool isTold =
        std::ranges::any_of(preview.records,
                            [&](const auto& record) { return record.account.table.number == number; }) ||
        std::ranges::any_of(preview.errors,
                            [&](const ErrorAccount& error) { return error.table && error.table->number == number; });
    if (isTold) last = table.table;
  }
  return last;
}

struct BadRow {
  const Table* table;
  std::string key;
};

std::vector<BadRow> RowsWithErrors(const Preview& preview, const Table& table) {
  std::vector<BadRow> rows;
  for (const auto& error : preview.errors) {
    const bool isOfIt = error.table && error.table->number == table.number && !error.key.empty();
    if (isOfIt) rows.push_back({.table = &table, .key = error.key});
  }
  return rows;
}

void TakeRowsOut(const Workplace& copies, const std::vector<BadRow>& rows) {
  if (rows.empty()) return;
  const auto connection = SqliteProvider().CreateConnection();
  connection->SetConnectionString(copies.billing);
  connection->Open();
  for (const auto& [table, key] : rows) {
    for (const auto& place : {table->lostLink.keys, table->lostLink.otherKeys}) {
      if (place.table.empty()) continue;
      connection->Execute(Sql("DELETE FROM {} WHERE {} = '{}'", place.table, place.column, Doubled{FixQuote(key)}),
                          nullptr);
    }
  }
  connection->Close();
}

}  // namespace

void AddWhatASendTells(const Options& options, std::vector<TableFindings>& told) {
  const auto quiet = QuietOptions(options);
  const auto table = told.size() == 1 ? told.front().table->number : enAll;
  Foreseeing foreseeing(told);
  std::vector<BadRow> without;
  PreviewSources sources(quiet);
  try {
    // A send ends with the table in which a row comes to an error. What is behind it is foreseen without such rows.
    for (;;) {
      const auto preview = RunPreview(
          quiet, {{.direction = Direction::Send, .table = table}},
          [&](const Workplace& copies) { TakeRowsOut(copies, without); }, sources);
      foreseeing.Take(preview);
      if (preview.done) return;
      const auto* last = TableAtTheEnd(preview, told);
      auto bad = last == nullptr ? std::vector<BadRow>() : RowsWithErrors(preview, *last);
      // What its key does not take out is not met a third time.
      std::erase_if(bad, [&](const BadRow& row) {
        return std::ranges::any_of(without,
                                   [&](const BadRow& out) { return out.table == row.table && out.key == row.key; });
      });
      if (bad.empty() && table == enAll) {
        Tell(fmt::format("A send of all tables would end at {}: what is behind that was not foreseen.",
                         last == nullptr ? "its beginning" : TypedName(last->number)));
      }
      if (bad.empty() || table != enAll) return;
      without.insert(without.end(), bad.begin(), bad.end());
    }
  } catch (const EndedBySignal&) {
    throw;
  } catch (const std::exception& failure) {
    const std::string_view why = failure.what();
    Tell(fmt::format("What QuickBooks itself would refuse is not known, for there is no preview: {}",
                     why.substr(0, why.find('\n'))));
  }
}

}  // namespace twqb::cli
