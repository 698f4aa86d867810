#include "cli/preview/Attribution.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "bridge/Tables.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

std::string RowName(std::string_view table, std::string_view key) {
  return FoldCase(std::string(table) + "\n" + std::string(key));
}

class Attribution {
 public:
  Attribution(std::vector<RecordChange> changes, Preview& preview)
      : changes_(std::move(changes)), preview_(preview), owners_(changes_.size()) {
    for (const auto* table : Tables()) ownTables_.emplace(FoldCase(table->rows.table));
    for (std::size_t i = 0; i < changes_.size(); ++i) {
      if (!changes_[i].identifier.empty()) byIdentifier_.emplace(changes_[i].identifier, i);
      if (changes_[i].side == ChangedSide::Billing) byKey_.emplace(RowName(changes_[i].place, changes_[i].key), i);
    }
  }

  void Run() {
    // A record goes ahead of its lines, and what moves ahead of what does not: a bill links the rows of its lines.
    for (const auto standing : {Standing::Record, Standing::Line}) {
      ForEach(standing, Moves::Yes, [this](std::size_t record) { TakeOwn(record); });
    }
    for (const auto standing : {Standing::Record, Standing::Line}) {
      ForEach(standing, Moves::Yes, [this](std::size_t record) { TakeOthers(record); });
    }
    TakeDetails();
    ForEach(Standing::Record, Moves::No, [this](std::size_t record) { TakeOwn(record); });
    for (std::size_t i = 0; i < changes_.size(); ++i) {
      (owners_[i] ? preview_.records[*owners_[i]].changes : preview_.beside).push_back(std::move(changes_[i]));
    }
  }

 private:
  using Index = std::multimap<std::string, std::size_t, std::less<>>;
  enum class Moves : std::uint8_t { Yes, No };

  template <typename Visit>
  void ForEach(Standing standing, Moves moves, Visit visit) {
    for (std::size_t i = 0; i < preview_.records.size(); ++i) {
      const auto& account = preview_.records[i].account;
      const bool isMoved = account.fate == Fate::Added || account.fate == Fate::Changed;
      if (account.standing == standing && isMoved == (moves == Moves::Yes)) visit(i);
    }
  }

  template <typename May>
  void Take(std::size_t record, const Index& index, const std::string& name, May may) {
    if (name.empty()) return;
    for (auto [at, end] = index.equal_range(name); at != end; ++at) {
      auto& owner = owners_[at->second];
      if (!owner && may(changes_[at->second])) owner = record;
    }
  }

  // What stands in the record's own table, or in one that no table has for its rows.
  void TakeOwn(std::size_t record) {
    const auto& account = preview_.records[record].account;
    const auto* table = FindTable(account.table.number);
    const std::string own(table == nullptr ? std::string_view() : table->rows.table);
    const auto mayBeIts = [&](const RecordChange& change) {
      return change.side == ChangedSide::QuickBooks || SameName(change.place, own) ||
             !ownTables_.contains(FoldCase(change.place));
    };
    if (!account.key.empty()) Take(record, byKey_, RowName(own, account.key), mayBeIts);
    Take(record, byIdentifier_, account.identifier, mayBeIts);
    Take(record, byIdentifier_, account.former, mayBeIts);
  }

  // A record that moves may have rows in the tables of others: a payment in that of invoices.
  void TakeOthers(std::size_t record) {
    Take(record, byIdentifier_, preview_.records[record].account.identifier,
         [](const RecordChange& /*change*/) { return true; });
  }

  // Rows without a link that name the row of a record: the details of an invoice.
  void TakeDetails() {
    std::map<std::string, std::size_t, std::less<>> ownerOf;
    for (std::size_t i = 0; i < changes_.size(); ++i) {
      if (owners_[i] && changes_[i].side == ChangedSide::Billing) ownerOf.emplace(changes_[i].key, *owners_[i]);
    }
    for (std::size_t i = 0; i < changes_.size(); ++i) {
      if (owners_[i] || changes_[i].side != ChangedSide::Billing) continue;
      for (const auto& field : changes_[i].fields) {
        if (!field.after || !IsGuid(*field.after)) continue;
        if (const auto found = ownerOf.find(*field.after); found != ownerOf.end()) owners_[i] = found->second;
      }
    }
  }

  // Other keys are words that may stand anywhere.
  static bool IsGuid(std::string_view text) {
    constexpr std::size_t kLength = 38;
    return text.size() == kLength && text.front() == '{' && text.back() == '}';
  }

  std::vector<RecordChange> changes_;
  Preview& preview_;
  std::vector<std::optional<std::size_t>> owners_;  // of each change, among the preview's records
  std::set<std::string, std::less<>> ownTables_;
  Index byIdentifier_;
  Index byKey_;
};

}  // namespace

bool IsDateOfRow(std::string_view column) { return SameName(column, "LastUpdated") || SameName(column, "LastUpdate"); }

namespace {

// Whether it is nothing but a row that gets its link.
bool OnlyLinks(const PreviewedRecord& record) {
  const auto isLink = [](const FieldChange& field) { return SameName(field.field, "QBLinkID"); };
  const auto links = [&](const RecordChange& change) {
    return change.side == ChangedSide::Billing && change.kind == ChangeKind::Changed &&
           std::ranges::any_of(change.fields, isLink) &&
           std::ranges::all_of(change.fields,
                               [&](const FieldChange& field) { return isLink(field) || IsDateOfRow(field.field); });
  };
  return record.account.standing == Standing::Record && !record.changes.empty() &&
         std::ranges::all_of(record.changes, links);
}

Doing DoingOf(const PreviewedRecord& record) {
  switch (record.account.fate) {
    case Fate::Added:
      return OnlyLinks(record) ? Doing::Link : Doing::Add;
    case Fate::Changed:
      return OnlyLinks(record) ? Doing::Link : Doing::Change;
    case Fate::LeftAsItWas:
      return OnlyLinks(record) ? Doing::Link : Doing::LeaveAsItIs;
    case Fate::PassedOver:
      return Doing::PassOver;
    case Fate::Refused:
      return Doing::Refuse;
    case Fate::Failed:
      return Doing::Fail;
  }
  return Doing::Fail;
}

// The side that the transfer goes to is told ahead of what is written back.
void PutInOrder(PreviewedRecord& record) {
  const bool sends = record.account.table.direction == Direction::Send;
  const auto first = sends ? ChangedSide::QuickBooks : ChangedSide::Billing;
  std::stable_partition(record.changes.begin(), record.changes.end(),
                        [&](const RecordChange& change) { return change.side == first; });
}

}  // namespace

void Attribute(std::vector<RecordChange> changes, Preview& preview) {
  Attribution(std::move(changes), preview).Run();
  for (auto& record : preview.records) {
    record.doing = DoingOf(record);
    PutInOrder(record);
  }
}

}  // namespace twqb::cli
