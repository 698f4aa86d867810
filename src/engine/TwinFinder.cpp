#include "engine/TwinFinder.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

#include "engine/AddedRecords.h"
#include "engine/Mapping.h"
#include "engine/QuietLook.h"
#include "engine/RowLook.h"
#include "messages/ValueFormat.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/Requests.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Sql.h"

namespace twqb {

namespace {

constexpr std::array<std::string_view, 3> kPersons = {"CustomerRef", "EntityRef", "VendorRef"};
constexpr int kDaysAround = 5;

// "Phone" of "Phone", "CustomerRef" of "CustomerRef.ListID".
std::string FieldName(std::string_view path) {
  for (const std::string_view end : {".ListID", ".FullName"}) {
    if (path.ends_with(end)) return std::string(path.substr(0, path.size() - end.size()));
  }
  return std::string(path);
}

// What a transaction is called: its number and day, and who it is of.
std::string Joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const auto& part : parts) {
    if (!part.empty()) text += (text.empty() ? "" : ", ") + part;
  }
  return text;
}

std::string NameOfRecord(const Record& record, bool isTransaction) {
  const auto at = [&](std::string_view path) { return TextAt(record, path).value_or(""); };
  if (!isTransaction) {
    const auto fullName = at("FullName");
    return fullName.empty() ? at("Name") : fullName;
  }
  std::vector<std::string> parts = {at("RefNumber"), at("TxnDate")};
  for (const auto person : kPersons) parts.push_back(at(std::string(person) + ".FullName"));
  return Joined(parts);
}

// The looks at the rows of a table, one after the other. The first round over transactions only tells of which days
// there are rows: QuickBooks is asked for no others.
class TableLook final : public RowLook {
 public:
  TableLook(const Table& table, std::span<const Table* const> tables, QBSessionManager& session, AtTop atTop)
      : table_(table),
        tables_(tables),
        session_(session),
        atTop_(atTop),
        form_(RequireMsgSetRequest(session).GetForm()) {}

  enum class Round : std::uint8_t { Days, Records };
  void Begin(Round round) { round_ = round; }

  struct Candidate {
    Record record;
    Likeness likeness;
  };
  // What came of the look at a row.
  struct Seen {
    bool stays = false;
    bool isUnreadable = false;
    RowFace face;
    std::vector<Candidate> candidates = {};
  };
  Seen Look(std::string_view key, std::string_view request, ado::Connection& connection) {
    seen_ = {};
    likenesses_.clear();
    const LostAddition row = {
        .key = key, .request = request, .replaces = {}, .connection = connection, .session = session_, .look = this};
    // A row that can't be read is the check's to tell of.
    if (CatchError([&] { static_cast<void>(table_.lostLink.takeUp(row)); })) seen_.isUnreadable = true;
    if (unread_) throw PlatformError(*unread_);
    return std::exchange(seen_, {});
  }

  void NoteRow(const ado::Recordset& row) override {
    const auto& called = table_.lostLink.called;
    bool isCompany = false;
    for (const auto column : called.columns) {
      seen_.face.called.push_back(ColumnText(row, column));
      if (column != called.columns.front()) isCompany = isCompany || !Trim(seen_.face.called.back()).empty();
    }
    // A company's person is not the company.
    if (isCompany) return;
    std::string person;
    for (const auto column : called.person) {
      const auto part = Trim(ColumnText(row, column));
      if (!part.empty()) person += (person.empty() ? "" : " ") + part;
    }
    seen_.face.called.push_back(person);
  }
  void NoteStays(Stays stays, std::string /*why*/) override {
    if (stays != Stays::InPart) seen_.stays = true;
  }
  void NoteUnreadableDate() override {}
  void NoteAtTop() override {
    if (atTop_ == AtTop::Stays) seen_.stays = true;
  }

  std::vector<Record> RecordsLike(const RowAsSent& row) override {
    seen_.face.name = row.name;
    seen_.face.values = row.request.Values(form_);
    if (row.read.transaction && LacksPerson(row.request)) seen_.stays = true;
    if (round_ == Round::Days) {
      IgnoreErrors(
          [&] { NoteDays(row.read, TextToDate(seen_.face.At("TxnDate")), TextToDate(seen_.face.At("TxnDate"))); });
      return {};
    }
    if (seen_.stays) return {};
    const auto& pool = PoolOf(row.read, row.linkedIn);
    std::vector<Record> found;
    for (auto& match : pool.Like(seen_.face)) {
      const auto& record = pool.Records()[match.place];
      likenesses_[IdentifierOf(record)] = std::move(match.likeness);
      found.push_back(record);
    }
    return found;
  }

  std::vector<Record> RecordsOfDays(const QuickBooksRead& read, Date from, Date to) override {
    if (round_ == Round::Days) {
      NoteDays(read, from, to);
      return {};
    }
    auto found = PoolOf(read, table_.rows.table).Records();
    const auto first = messages::DateText(from);
    const auto last = messages::DateText(to);
    std::erase_if(found, [&](const Record& record) {
      const auto day = TextAt(record, "TxnDate").value_or("");
      return day < first || day > last;
    });
    return found;
  }

  void Take(std::vector<Record> records) override {
    for (auto& record : records) {
      const auto known = likenesses_.find(IdentifierOf(record));
      auto likeness = known != likenesses_.end()
                          ? known->second
                          : Likeness{.score = 100, .isExact = true, .isByName = true, .how = "the same lines"};
      seen_.candidates.push_back({.record = std::move(record), .likeness = std::move(likeness)});
    }
  }

 private:
  static std::string_view KeyOf(const QuickBooksRead& read) { return read.requests.front(); }

  void NoteDays(const QuickBooksRead& read, Date from, Date to) {
    const auto [at, isNew] = days_.try_emplace(std::string(KeyOf(read)), from, to);
    at->second = {std::min(at->second.first, from), std::max(at->second.second, to)};
  }

  const TwinPool& PoolOf(const QuickBooksRead& read, std::string_view linkedIn) {
    auto& pool = pools_[std::string(KeyOf(read))];
    if (pool) return *pool;
    // That it can't be read is no matter of the row in hand.
    unread_ = CatchError([&] {
      auto records = ReadAll(read);
      const auto links = LinksOf(read, linkedIn);
      std::erase_if(records, [&](const Record& record) { return links.contains(IdentifierOf(record)); });
      pool = std::make_unique<TwinPool>(read, table_.lostLink.called, std::move(records));
    });
    if (unread_) throw PlatformError(*unread_);
    return *pool;
  }

  std::vector<Record> ReadAll(const QuickBooksRead& read) {
    if (!read.transaction) return AllRecords(read, session_);
    const auto days = days_.find(std::string(KeyOf(read)));
    if (days == days_.end()) return {};
    const auto& [from, to] = days->second;
    return twqb::RecordsOfDays(read, from.PlusDays(-kDaysAround), to.PlusDays(kDaysAround), session_);
  }

  // The links of all tables whose rows have twins among such records.
  std::set<std::string> LinksOf(const QuickBooksRead& read, std::string_view linkedIn) const {
    std::set<std::string> tables = {std::string(linkedIn)};
    for (const auto* table : tables_) {
      const bool reads =
          std::ranges::any_of(table->reads, [&](const QuickBooksRead& other) { return KeyOf(other) == KeyOf(read); });
      if (reads && table->lostLink.takeUp != nullptr) tables.insert(std::string(table->rows.table));
    }
    std::set<std::string> links;
    for (const auto& table : tables) {
      const auto rows = GlobalConnection().OpenRecordset(Sql("SELECT QBLinkID FROM {} WHERE QBLinkID <> '';", table),
                                                         ado::CursorType::Static, ado::LockType::ReadOnly);
      for (; !rows->Eof(); rows->MoveNext()) links.insert(FirstField(*rows));
    }
    return links;
  }

  const Table& table_;
  std::span<const Table* const> tables_;
  QBSessionManager& session_;
  const AtTop atTop_;
  messages::Form form_;
  Round round_ = Round::Records;
  std::map<std::string, std::pair<Date, Date>> days_;
  std::map<std::string, std::unique_ptr<TwinPool>> pools_;
  std::optional<PlatformError> unread_;         // what QuickBooks' records, or their links, could not be read for
  std::map<std::string, Likeness> likenesses_;  // of the row in hand
  Seen seen_;
};

struct RowKey {
  std::string key;
  std::string_view request;
};

std::vector<RowKey> UnlinkedRows(const Table& table, const std::optional<std::string>& only) {
  std::vector<RowKey> keys;
  for (const auto& place : {table.lostLink.keys, table.lostLink.otherKeys}) {
    if (place.table.empty()) continue;
    auto statement = Sql("SELECT {} FROM {} WHERE (QBLinkID IS NULL OR QBLinkID = '') AND {}", place.column,
                         place.table, Sql::Own(place.condition));
    if (only) statement += Sql(" AND {} = '{}'", place.column, Doubled{FixQuote(*only)});
    const auto rows =
        GlobalConnection().OpenRecordset(Sql("{};", statement), ado::CursorType::Static, ado::LockType::ReadOnly);
    for (; !rows->Eof(); rows->MoveNext()) keys.push_back({.key = FirstField(*rows), .request = place.adds});
  }
  return keys;
}

// Each side writes telephone numbers in its own way.
bool IsSamePhone(std::string_view path, std::string_view a, std::string_view b) {
  constexpr std::array<std::string_view, 5> kPhones = {"Phone", "AltPhone", "Fax", "Mobile", "Pager"};
  if (std::ranges::find(kPhones, path) == kPhones.end()) return false;
  return CleanPhoneFromQB(a) == CleanPhoneFromQB(b);
}

void CompareFields(const RowFace& face, LikelyPair& pair) {
  for (const auto& value : face.values) {
    const auto found = TextAt(pair.record, value.path);
    if (!found || value.text.empty()) continue;
    if (MeanTheSame(value.type, value.text, *found) || IsSamePhone(value.path, value.text, *found)) {
      pair.agreeing.push_back(FieldName(value.path));
    } else {
      pair.differing.push_back({.field = FieldName(value.path), .billing = value.text, .quickBooks = *found});
    }
  }
}

// The one exact candidate of each row that is no other's, by what `counts` says; those are settled.
template <typename Counts>
void Settle(std::vector<LikelyPair>& pairs, const Counts& counts) {
  std::map<std::string, int> rows;
  std::map<std::string, int> records;
  for (const auto& pair : pairs) {
    if (!counts(pair)) continue;
    ++rows[pair.key];
    ++records[pair.identifier];
  }
  std::set<std::string> settledRows;
  std::set<std::string> settledRecords;
  for (const auto& pair : pairs) {
    if (!counts(pair) || rows[pair.key] != 1 || records[pair.identifier] != 1) continue;
    settledRows.insert(pair.key);
    settledRecords.insert(pair.identifier);
  }
  std::erase_if(pairs, [&](const LikelyPair& pair) {
    const bool isSettled = settledRows.contains(pair.key) && settledRecords.contains(pair.identifier) && counts(pair);
    return !isSettled && (settledRows.contains(pair.key) || settledRecords.contains(pair.identifier));
  });
}

// Whichever pairs are exact beside another that is so, too, have to be asked for.
void SettleExactOnes(std::vector<LikelyPair>& pairs) {
  const auto isExact = [](const LikelyPair& pair) { return pair.likeness.isExact; };
  Settle(pairs, [&](const LikelyPair& pair) { return isExact(pair) && pair.likeness.isByName; });
  Settle(pairs, isExact);
  std::map<std::string, int> rows;
  std::map<std::string, int> records;
  for (const auto& pair : pairs) {
    if (!isExact(pair)) continue;
    ++rows[pair.key];
    ++records[pair.identifier];
  }
  for (auto& pair : pairs) {
    if (!isExact(pair) || (rows[pair.key] == 1 && records[pair.identifier] == 1)) continue;
    pair.likeness.isExact = false;
    pair.likeness.how += ", and so has another one";
  }
  std::ranges::stable_sort(pairs, [](const LikelyPair& a, const LikelyPair& b) {
    return std::pair(a.likeness.isExact, a.likeness.score) > std::pair(b.likeness.isExact, b.likeness.score);
  });
}

}  // namespace

LikelyPairs FindLikelyPairs(const Table& table, std::span<const Table* const> tables, QBSessionManager& session,
                            const PairSearch& search) {
  LikelyPairs found;
  if (table.lostLink.takeUp == nullptr) return found;
  WithGlobalConnection([&] {
    Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
    const auto rows = UnlinkedRows(table, search.key);
    found.unlinked = rows.size();
    if (rows.empty()) return;
    const QuietLook quiet;
    auto connection = Vars().platform.database->CreateConnection();
    OpenConnection(*connection, nullptr, "");
    TableLook look(table, tables, session, search.atTop);
    if (table.reads.front().transaction) {
      look.Begin(TableLook::Round::Days);
      for (const auto& row : rows) static_cast<void>(look.Look(row.key, row.request, *connection));
      look.Begin(TableLook::Round::Records);
    }
    for (const auto& row : rows) {
      auto seen = look.Look(row.key, row.request, *connection);
      if (seen.isUnreadable) {
        ++found.unreadable;
      } else if (seen.stays) {
        ++found.staying;
      }
      for (auto& candidate : seen.candidates) {
        const bool isTransaction = table.reads.front().transaction.has_value();
        LikelyPair pair = {.key = row.key,
                           .request = std::string(row.request),
                           .row = isTransaction ? Joined({std::string(seen.face.At("RefNumber")),
                                                          std::string(seen.face.At("TxnDate"))})
                                                : seen.face.name,
                           .record = candidate.record,
                           .identifier = IdentifierOf(candidate.record),
                           .recordName = NameOfRecord(candidate.record, isTransaction),
                           .likeness = std::move(candidate.likeness)};
        CompareFields(seen.face, pair);
        found.pairs.push_back(std::move(pair));
      }
    }
  });
  SettleExactOnes(found.pairs);
  return found;
}

}  // namespace twqb
