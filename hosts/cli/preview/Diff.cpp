#include "cli/preview/Diff.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <system_error>
#include <utility>

#include "bridge/Tables.h"
#include "cli/links/LinkedRows.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/NearestName.h"
#include "cli/options/TableArgument.h"
#include "cli/preview/Attribution.h"
#include "cli/preview/PreviewSeams.h"
#include "cli/settings/SettingsStore.h"
#include "cli/workplace/Surroundings.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

std::string RowName(std::string_view table, std::string_view key) {
  return FoldCase(fmt::format("{}\n{}", table, key));
}
std::string RowName(std::int32_t table, std::string_view key) {
  const auto* found = FindTable(table);
  return RowName(found == nullptr ? std::string_view() : found->rows.table, key);
}

bool Moves(Direction direction, enTables table) {
  if (table == enAll) return true;
  const auto* found = FindTable(table);
  return found != nullptr && (direction == Direction::Send ? found->send != nullptr : found->get != nullptr);
}

// Those that the two transfers move.
std::vector<std::int32_t> TablesOf(enTables table) {
  if (table != enAll) return {table};
  std::vector<std::int32_t> tables;
  for (const auto* each : Tables()) tables.push_back(each->number);
  return tables;
}

// NULL, and what a transfer puts in the place of it.
bool SaysNothing(const std::optional<std::string>& value) {
  return !value || value->find_first_not_of("0.") == std::string::npos;
}

// Without the fields that say something of the row and nothing of the pair, and those that say nothing at all.
std::vector<FieldChange> SaidOfPair(std::vector<FieldChange> fields) {
  std::erase_if(fields, [](const FieldChange& field) {
    return SameName(field.field, "QBLinkID") || IsDateOfRow(field.field) ||
           (SaysNothing(field.before) && SaysNothing(field.after));
  });
  return fields;
}

// What bookings come to, which nobody sets.
bool IsSum(const FieldChange& field) { return field.field == "Balance" || field.field == "TotalBalance"; }

bool IsChangedRow(const RecordChange& change) {
  return change.side == ChangedSide::Billing && change.kind == ChangeKind::Changed;
}

Takes TakesOf(Fate fate) {
  switch (fate) {
    case Fate::Added:
      return Takes::AddsOnceMore;
    case Fate::Changed:
      return Takes::Yes;
    case Fate::LeftAsItWas:
      return Takes::No;
    case Fate::Refused:
    case Fate::Failed:
      return Takes::Refused;
    case Fate::PassedOver:
      return Takes::Unknown;
  }
  return Takes::Unknown;
}

// --- The transfers on copies -----------------------------------------------------------------------------------------

class DiffRuns {
 public:
  DiffRuns(const Options& options, enTables table) : options_(options), table_(table), sources_(options) {
    options_.answers.clear();  // every question is taken as it is without
  }

  // Whatever the dates, or as the newer side has it; all records, whatever saved filters say.
  [[nodiscard]] TransferRequest Request(Direction direction, bool newerWins = false) const {
    return {.direction = direction, .table = table_, .id = "", .sync = newerWins};
  }

  Preview Run(const std::vector<TransferRequest>& requests) {
    std::vector<TransferRequest> built;
    for (const auto& request : requests) {
      if (Moves(request.direction, table_)) built.push_back(request);
    }
    if (built.empty()) return {.request = {}, .done = true};
    auto preview = RunPreview(
        options_, built, [this](const Workplace& copies) { Arrange(copies); }, sources_);
    if (!preview.done) {
      troubles_.insert(fmt::format("A {} of {} would not come to its end{}.",
                                   preview.request.direction == Direction::Send ? "send" : "get", TypedName(table_),
                                   preview.errors.empty() ? "" : ": " + preview.errors.front().text));
    }
    return preview;
  }

  // Of the copies of the first run.
  [[nodiscard]] const std::vector<LinkedRow>& Linked() const { return linked_; }
  [[nodiscard]] const IdentifiersThere& There() const { return there_; }
  [[nodiscard]] std::vector<std::string> Troubles() const { return {troubles_.begin(), troubles_.end()}; }

 private:
  // A send is to select what has not changed since the last one, too.
  void Arrange(const Workplace& copies) {
    constexpr std::string_view kSection = "QBSEND_";
    auto options = options_;
    options.billing = copies.billing;
    options.company = copies.company;
    options.quickBooksItself = false;
    options.settings = copies.settings;
    if (!std::exchange(isRead_, true)) {
      linked_ = ReadLinkedRows(copies, TablesOf(table_));
      there_ = ReadIdentifiers(copies, *MakeMachine(copies, options_.clock));
    }
    const SettingsStore settings(options);
    for (const auto number : TablesOf(table_)) {
      const auto key = std::string(FindTable(number)->names.send) + "_LastSendAt";
      if (settings.Read(kSection, key)) static_cast<void>(settings.Write(kSection, key, "01/01/1900"));
    }
  }

  Options options_;
  enTables table_;
  PreviewSources sources_;
  bool isRead_ = false;
  std::vector<LinkedRow> linked_;
  IdentifiersThere there_;
  std::set<std::string> troubles_;
};

// --- Pairs -----------------------------------------------------------------------------------------------------------

class PairFinder {
 public:
  explicit PairFinder(const std::vector<LinkedRow>& linked) {
    for (const auto& row : linked) links_.insert(row.identifier);
  }

  // A send in which BillingDb wins, and a get in which QuickBooks does.
  void TakeSend(const Preview& send) {
    for (const auto& record : send.records) {
      const bool isMod = record.account.fate == Fate::Changed;
      auto* pair = PairOf(record);
      if (pair == nullptr) continue;
      if (isMod) sent_.insert(RowName(record.account.table.number, record.account.key));
      for (const auto& change : record.changes) {
        if (change.side != ChangedSide::QuickBooks || change.kind != ChangeKind::Changed) continue;
        pair->name = change.name;
        std::ranges::remove_copy_if(change.fields, std::back_inserter(pair->inQuickBooks), IsSum);
      }
    }
  }
  void TakeGet(const Preview& get) {
    for (const auto& record : get.records) {
      auto* pair = PairOf(record);
      if (pair == nullptr) continue;
      for (auto change : record.changes) {
        if (!IsChangedRow(change)) continue;
        change.fields = SaidOfPair(std::move(change.fields));
        if (!change.fields.empty()) pair->inBilling.push_back(std::move(change));
      }
    }
  }

  // The same where the newer side wins.
  void TakeSides(const Preview& preview, Takes DiffPair::*takes, std::string DiffPair::*why) {
    for (const auto& record : preview.records) {
      auto* pair = PairOf(record);
      // What is told again was pulled for another's sake: the first word counts.
      if (pair == nullptr || pair->*takes != Takes::Unknown) continue;
      pair->*takes = TakesOf(record.account.fate);
      pair->*why = record.account.why;
    }
  }

  // What a get makes of a record that was just sent is no difference of the two.
  void TakeAway(const Preview& roundTrip) {
    std::map<std::string, std::map<std::string, FieldChange>> there;
    ForEachChangedRow(roundTrip, [&](const RecordChange& change) {
      for (const auto& field : change.fields) there[RowName(change.place, change.key)][field.field] = field;
    });
    for (auto& [name, pair] : pairs_) {
      for (auto& row : pair.inBilling) {
        const auto place = RowName(row.place, row.key);
        if (!sent_.contains(place)) continue;
        const auto found = there.find(place);
        if (found == there.end()) continue;
        std::erase_if(row.fields, [&](const FieldChange& field) {
          const auto same = found->second.find(field.field);
          return same != found->second.end() && same->second.after == field.after;
        });
      }
      std::erase_if(pair.inBilling, [](const RecordChange& row) { return row.fields.empty(); });
    }
  }

  template <typename Take>
  static void ForEachChangedRow(const Preview& preview, Take take) {
    const auto each = [&](const std::vector<RecordChange>& changes) {
      for (const auto& change : changes) {
        if (IsChangedRow(change)) take(change);
      }
    };
    for (const auto& record : preview.records) each(record.changes);
    each(preview.beside);
  }

  // Table by table, in the order in which the transfers told them.
  [[nodiscard]] std::vector<DiffPair> Differing() const {
    std::vector<DiffPair> differing;
    for (const auto* table : Tables()) {
      for (const auto& name : order_) {
        if (const auto& pair = pairs_.at(name); pair.table == table->number && pair.Differs()) {
          differing.push_back(pair);
        }
      }
    }
    return differing;
  }

 private:
  using Name = std::pair<std::int32_t, std::string>;  // table and identifier

  // nullptr of a record that no row was linked to ahead of the run.
  DiffPair* PairOf(const PreviewedRecord& record) {
    const auto& account = record.account;
    const auto& link = account.former.empty() ? account.identifier : account.former;
    const bool isNew = account.fate == Fate::Added && account.former.empty();
    if (isNew || link.empty() || !links_.contains(link)) return nullptr;
    const Name name(account.table.number, link);
    auto [found, isFirst] = pairs_.try_emplace(
        name, DiffPair{.table = account.table.number, .standing = account.standing, .identifier = link});
    if (isFirst) order_.push_back(name);
    if (found->second.key.empty()) found->second.key = account.key;
    return &found->second;
  }

  std::set<std::string, std::less<>> links_;
  std::map<Name, DiffPair> pairs_;
  std::vector<Name> order_;
  std::set<std::string> sent_;  // rows that a send writes over their twins
};

// --- Rows ------------------------------------------------------------------------------------------------------------

// Rows that a send of `preview` moved, with the table that moved them.
std::map<std::string, std::int32_t> SentRows(const Preview& preview) {
  std::map<std::string, std::int32_t> rows;
  for (const auto& record : preview.records) {
    const auto& account = record.account;
    const bool isSent = account.fate == Fate::Added || account.fate == Fate::Changed;
    if (account.table.direction == Direction::Send && isSent && !account.key.empty()) {
      rows.emplace(RowName(account.table.number, account.key), account.table.number);
    }
  }
  return rows;
}

std::vector<RoundTrip> RoundTripsOf(const Preview& preview) {
  const auto sent = SentRows(preview);
  std::vector<RoundTrip> found;
  PairFinder::ForEachChangedRow(preview, [&](RecordChange change) {
    const auto row = sent.find(RowName(change.place, change.key));
    if (row == sent.end()) return;
    change.fields = SaidOfPair(std::move(change.fields));
    if (!change.fields.empty()) found.push_back({.table = row->second, .row = std::move(change)});
  });
  std::ranges::stable_sort(found, {}, &RoundTrip::table);
  return found;
}

// --- The one row -----------------------------------------------------------------------------------------------------

// All of them, without an id.
bool IsMeant(const LinkedRow& row, const std::optional<std::string>& id) {
  return !id || SameName(row.key, *id) || row.identifier == *id;
}

void RequireLinked(const std::vector<LinkedRow>& linked, enTables table, const std::string& id) {
  std::vector<std::string> keys;
  for (const auto& row : linked) {
    if (IsMeant(row, id)) return;
    keys.push_back(row.key);
  }
  const auto nearest = NearestName(id, keys);
  throw UsageError(fmt::format("There is no row of {} with the key or the link {}, or it has no link.{}",
                               TypedName(table), id, nearest ? fmt::format(" Did you mean \"{}\"?", *nearest) : ""));
}

void KeepOnly(const std::string& id, const std::vector<LinkedRow>& linked, Difference& difference) {
  std::set<std::string, std::less<>> links;
  std::set<std::string> keys;
  for (const auto& row : linked) {
    if (!IsMeant(row, id)) continue;
    links.insert(row.identifier);
    keys.insert(FoldCase(row.key));
  }
  std::erase_if(difference.pairs, [&](const DiffPair& pair) { return !links.contains(pair.identifier); });
  std::erase_if(difference.roundTrips, [&](const RoundTrip& trip) { return !keys.contains(FoldCase(trip.row.key)); });
}

void FindDeadLinks(const std::vector<LinkedRow>& linked, const std::optional<std::string>& id,
                   const IdentifiersThere& there, Difference& difference) {
  for (const auto& row : linked) {
    if (!IsMeant(row, id) || there.known.contains(row.identifier)) continue;
    const auto* kind = ClosedTo(row.table, there.closed);
    if (kind == nullptr) {
      difference.deadLinks.push_back({.table = row.table, .key = row.key, .identifier = row.identifier});
    } else if (std::ranges::find(difference.closed, row.table, &ClosedTable::table) == difference.closed.end()) {
      difference.closed.push_back({.table = row.table, .kind = kind->kind, .code = kind->code, .answer = kind->answer});
    }
  }
}

// Rows that come back as others, as far as they were found.
enum class TripsAre : std::uint8_t { Whole, Cut };

void AddSums(const std::vector<LinkedRow>& linked, const std::optional<std::string>& id, TripsAre trips,
             Difference& difference) {
  std::map<std::int32_t, DiffSums> sums;
  for (const auto& row : linked) {
    if (IsMeant(row, id)) ++sums[row.table].linked;
  }
  for (const auto& pair : difference.pairs) {
    auto& sum = sums[pair.table];
    ++(pair.standing == Standing::Line ? sum.lines : sum.differ);
  }
  for (const auto& link : difference.deadLinks) ++*sums[link.table].dead;
  for (const auto& closed : difference.closed) sums[closed.table].dead.reset();
  for (const auto& trip : difference.roundTrips) ++*sums[trip.table].roundTrips;
  if (trips == TripsAre::Cut) {
    for (auto& [table, sum] : sums) sum.roundTrips.reset();
  }
  for (const auto* table : Tables()) {
    const auto found = sums.find(table->number);
    if (found == sums.end()) continue;
    found->second.table = table->number;
    difference.sums.push_back(found->second);
  }
}

}  // namespace

Difference FindDifference(const Options& options, enTables table, const std::optional<std::string>& id) {
  if (!options.transcript.empty()) {
    throw UsageError("diff runs several transfers on copies, and records none of them: leave out --transcript.");
  }
  const auto place = WorkplaceOf(options);
  std::error_code failure;
  const bool isFile = place.quickBooks == QuickBooksSide::Embedded;
  if (isFile && !std::filesystem::exists(place.company, failure)) RefuseMissingCompany(place.company);
  DiffRuns runs(options, table);
  const auto send = runs.Run({runs.Request(Direction::Send)});
  const auto get = runs.Run({runs.Request(Direction::Get)});
  if (id) RequireLinked(runs.Linked(), table, *id);
  const auto both = runs.Run({runs.Request(Direction::Send), runs.Request(Direction::Get)});
  PairFinder pairs(runs.Linked());
  pairs.TakeSend(send);
  pairs.TakeGet(get);
  pairs.TakeAway(both);
  pairs.TakeSides(runs.Run({runs.Request(Direction::Send, true)}), &DiffPair::send, &DiffPair::whySend);
  pairs.TakeSides(runs.Run({runs.Request(Direction::Get, true)}), &DiffPair::get, &DiffPair::whyGet);
  Difference difference{.pairs = pairs.Differing(), .roundTrips = RoundTripsOf(both), .troubles = runs.Troubles()};
  FindDeadLinks(runs.Linked(), id, runs.There(), difference);
  if (id) KeepOnly(*id, runs.Linked(), difference);
  AddSums(runs.Linked(), id, both.done ? TripsAre::Whole : TripsAre::Cut, difference);
  return difference;
}

}  // namespace twqb::cli
