#include "cli/preview/ForeseenRefusals.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <exception>
#include <map>
#include <set>
#include <utility>

#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/terminal/TextLayout.h"
#include "bridge/Tables.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/TableArgument.h"
#include "cli/preview/Preview.h"
#include "cli/preview/PreviewReport.h"
#include "cli/preview/PreviewSeams.h"
#include "cli/screen/Output.h"
#include "messages/StatusCodes.h"
#include "platform/Text.h"
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
  bool hangsOnUnknown = false;
};

Trouble TroubleOf(const PreviewedRecord& record) {
  const auto& account = record.account;
  if (!account.refusal) return {.text = account.why, .hangsOnUnknown = record.hangsOnUnknown};
  return {.status = account.refusal->status, .text = account.refusal->message, .hangsOnUnknown = record.hangsOnUnknown};
}

bool IsHeldBack(const PreviewedRecord& record) { return record.doing == Doing::Refuse || record.doing == Doing::Fail; }

Finding FindingOf(const std::string& key, const Trouble& trouble) {
  const auto text = OneLine(trouble.text) + (trouble.hangsOnUnknown ? fmt::format(" (this {})", kHangsOnUnknown) : "");
  return {.key = key,
          .check = Check::Refused,
          .rule = trouble.status != 0 ? fmt::format("QuickBooks would refuse it: {}", text)
                                      : fmt::format("A send would come to an error at it: {}", text),
          .advice = "Mend what the message names, and check again."};
}

// Neither questions nor records of the run are a check's affair, nor links that got lost.
Options QuietOptions(const Options& options) {
  auto quiet = options;
  quiet.answers.clear();
  quiet.faults.clear();
  quiet.transcript.clear();
  quiet.noRecovery = true;
  return quiet;
}

// What is not in the copies: a row, or, where the key is empty, all of the table that have no link.
struct LeftOut {
  const Table* table;
  std::string key;

  friend bool operator==(const LeftOut&, const LeftOut&) = default;
};

constexpr std::string_view kUnlinked = "(QBLinkID IS NULL OR QBLinkID = '')";

void Mark(ado::Connection& connection, const LeftOut& leftOut) {
  const auto& [table, key] = leftOut;
  for (const auto& place : {table->lostLink.keys, table->lostLink.otherKeys}) {
    if (place.table.empty()) continue;
    const auto which = key.empty() ? Sql("{} AND {}", Sql::Own(kUnlinked), Sql::Own(place.condition))
                                   : Sql("{} = '{}'", place.column, Doubled{FixQuote(key)});
    connection.Execute(Sql("INSERT OR IGNORE INTO LeftOut SELECT '{0}', rowid FROM {0} WHERE {1}", place.table, which),
                       nullptr);
  }
}

// What is of a marked row can't go without it. In the copies it would end the send of its own table, which the firm's
// would not come to.
void MarkWhatIsOfThem(ado::Connection& connection) {
  bool isNew = true;
  while (isNew) {
    isNew = false;
    for (const auto* table : Tables()) {
      for (const auto& parent : table->parents) {
        std::int64_t rows = 0;
        connection.Execute(
            Sql("INSERT OR IGNORE INTO LeftOut SELECT '{0}', rowid FROM {0} WHERE {1} AND {2} IN (SELECT "
                "{3} FROM {4} WHERE rowid IN (SELECT Place FROM LeftOut WHERE Rows = '{4}'))",
                table->rows.table, Sql::Own(kUnlinked), parent.column, parent.key, parent.table),
            &rows);
        isNew = isNew || rows > 0;
      }
    }
  }
}

void LeaveOut(const Workplace& copies, const std::vector<LeftOut>& all) {
  if (all.empty()) return;
  const auto connection = SqliteProvider().CreateConnection();
  connection->SetConnectionString(copies.billing);
  connection->Open();
  connection->Execute("CREATE TEMP TABLE LeftOut (Rows TEXT, Place INTEGER, PRIMARY KEY (Rows, Place))", nullptr);
  for (const auto& leftOut : all) Mark(*connection, leftOut);
  MarkWhatIsOfThem(*connection);
  for (const auto* table : Tables()) {
    for (const auto& place : {table->lostLink.keys, table->lostLink.otherKeys}) {
      if (place.table.empty()) continue;
      connection->Execute(
          Sql("DELETE FROM {0} WHERE rowid IN (SELECT Place FROM LeftOut WHERE Rows = '{0}')", place.table), nullptr);
    }
  }
  connection->Close();
}

// Sends on copies until one comes to its end. A row that comes to an error ends the send of its table, and that of all
// tables: what is behind it is foreseen without that row.
class Foreseeing {
 public:
  Foreseeing(const Options& options, std::vector<TableFindings>& told)
      : options_(QuietOptions(options)), told_(told), isOfAll_(told.size() > 1) {}

  void Run() {
    const auto table = isOfAll_ ? enAll : told_.front().table->number;
    PreviewSources sources(options_);
    for (;;) {
      const auto preview = RunPreview(
          options_, {{.direction = Direction::Send, .table = table}},
          [&](const Workplace& copies) { LeaveOut(copies, leftOut_); }, sources);
      Take(preview);
      if (preview.done || !GoesOnBehind(preview)) {
        TellSkipped(preview);
        return;
      }
    }
  }

 private:
  void Take(const Preview& preview) {
    for (const auto& record : preview.records) {
      if (IsHeldBack(record)) Add(record.account.table.number, record.account.key, TroubleOf(record));
    }
    for (const auto& error : preview.errors) {
      if (error.table) Add(error.table->number, error.key, {.text = error.text});
    }
  }

  // Of these a clean result says nothing.
  void TellSkipped(const Preview& preview) const {
    std::vector<std::string> names;
    for (const auto& table : told_) {
      const auto number = table.table->number;
      const bool isSkipped = std::ranges::find(preview.skipped, number, &TableInHand::number) != preview.skipped.end();
      if (isSkipped && table.rows > 0) names.push_back(TypedName(number));
    }
    if (names.empty()) return;
    Tell(
        fmt::format("QuickBooks was not asked about {}, which the settings skip, nor about what saved filters leave "
                    "out.",
                    Join(names, ", ")));
  }

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

  [[nodiscard]] bool SaysTheSame(const Finding& finding, const Trouble& trouble) const {
    // Among all tables what a row belongs to goes ahead of it.
    if (finding.check == Check::ParentUnlinked && isOfAll_) return false;
    if (trouble.status == 0) return std::ranges::find(kErrors, finding.check) != kErrors.end();
    return std::ranges::any_of(kSameReasons, [&](const SameReason& same) {
      return same.check == finding.check && same.status == trouble.status;
    });
  }

  // Leaves out what the send has ended with. False: there is nothing to leave out any more.
  bool GoesOnBehind(const Preview& preview) {
    const auto* last = TableAtTheEnd(preview);
    if (last == nullptr) {
      Tell(fmt::format("A send of {} would end ahead of its first row: nothing of it was foreseen.", Sent()));
      return false;
    }
    constexpr int kMostRounds = 3;
    const auto before = leftOut_.size();
    if (++rounds_[last->table] <= kMostRounds) LeaveOutRows(preview, *last);
    if (leftOut_.size() > before) return true;
    const LeftOut rest = {.table = last->table, .key = {}};
    const bool isNew = std::ranges::find(leftOut_, rest) == leftOut_.end();
    if (isNew) leftOut_.push_back(rest);
    if (!isOfAll_) {
      if (isNew) Tell(fmt::format("A send of {} would end ahead of its last row: not each was foreseen.", Sent()));
      return isNew;
    }
    Tell(fmt::format("A send of all tables would end with {}: not each of {} was foreseen.",
                     TypedName(last->table->number), isNew ? "its rows" : "the rows behind it"));
    return isNew;
  }

  [[nodiscard]] std::string Sent() const { return isOfAll_ ? "all tables" : TypedName(told_.front().table->number); }

  // The table at which it has ended; nothing: ahead of all of them.
  [[nodiscard]] const TableFindings* TableAtTheEnd(const Preview& preview) const {
    const TableFindings* last = nullptr;
    for (const auto& table : told_) {
      const auto isOfIt = [&](const TableInHand& other) { return other.number == table.table->number; };
      const bool isTold =
          std::ranges::any_of(preview.records, [&](const auto& record) { return isOfIt(record.account.table); }) ||
          std::ranges::any_of(preview.errors,
                              [&](const ErrorAccount& error) { return error.table && isOfIt(*error.table); });
      if (isTold) last = &table;
    }
    return last;
  }

  // Those that ended it, and of which it is known that they would next.
  void LeaveOutRows(const Preview& preview, const TableFindings& last) {
    const auto leave = [&](const std::string& key) {
      LeftOut row = {.table = last.table, .key = key};
      if (!key.empty() && std::ranges::find(leftOut_, row) == leftOut_.end()) leftOut_.push_back(std::move(row));
    };
    const auto take = [&](const std::string& key, const Trouble& trouble) {
      leave(key);
      for (const auto& finding : last.findings) {
        if (SaysTheSame(finding, trouble)) leave(finding.key);
      }
    };
    for (const auto& error : preview.errors) {
      if (error.table && error.table->number == last.table->number) take(error.key, {.text = error.text});
    }
    for (const auto& record : preview.records) {
      if (record.account.table.number == last.table->number && IsHeldBack(record)) {
        take(record.account.key, TroubleOf(record));
      }
    }
  }

  const Options options_;
  std::vector<TableFindings>& told_;
  const bool isOfAll_;
  std::vector<LeftOut> leftOut_;
  std::map<const Table*, int> rounds_;  // that ended with it
  std::set<std::pair<std::int32_t, std::string>> seen_;
};

}  // namespace

void AddWhatASendTells(const Options& options, std::vector<TableFindings>& told) {
  try {
    Foreseeing(options, told).Run();
  } catch (const EndedBySignal&) {
    throw;
  } catch (const std::exception& failure) {
    const std::string_view why = failure.what();
    Tell(fmt::format("What QuickBooks itself would refuse is not known, for there is no preview: {}",
                     why.substr(0, why.find('\n'))));
  }
}

}  // namespace twqb::cli
