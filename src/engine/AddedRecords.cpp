#include "engine/AddedRecords.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "engine/Mapping.h"
#include "engine/ReadQueries.h"
#include "engine/RowLook.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/Requests.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/Sql.h"

namespace twqb {

namespace {

// The end of a line comes back as one character; how many blanks are between two words, and around them, is what each
// makes of it.
std::string NameForComparison(std::string_view name) {
  auto words = Split(ReplaceAll(name, kCrLf, "\n"), ' ');
  std::erase(words, "");
  return FoldCase(Join(words, " "));
}

// What tells one transaction from another, of those that the request has.
constexpr std::array<std::string_view, 11> kTelling = {"TxnDate",
                                                       "RefNumber",
                                                       "CustomerRef.ListID",
                                                       "EntityRef.ListID",
                                                       "VendorRef.ListID",
                                                       "TotalAmount",
                                                       "Duration",
                                                       "ItemServiceRef.ListID",
                                                       "Notes",
                                                       "Memo",
                                                       "PaymentMethodRef.FullName"};

// The same of a request; nothing where it has none, or leaves it empty.
struct AskedText {
  std::string text;
  messages::Type type = messages::Type::Str;
};
std::optional<AskedText> AskedAt(const RequestField& request, std::string_view path) {
  std::optional<AskedText> asked;
  IgnoreErrors([&] {
    const auto field = FieldAtPath(request, path);
    // As it goes on the wire.
    if (field.IsSet()) asked = {.text = XmlText(field.GetValue()), .type = field.GetType()};
  });
  return asked;
}

bool IsNumber(messages::Type type) {
  using messages::Type;
  constexpr std::array kNumbers = {Type::Int, Type::Amt, Type::Price, Type::Quan, Type::Percent, Type::Float};
  return std::ranges::find(kNumbers, type) != kNumbers.end();
}

bool IsLike(const Record& record, const RequestField& request, std::string_view name, bool isTransaction) {
  if (!isTransaction) {
    if (NameForComparison(TextAt(record, "Name").value_or("")) != NameForComparison(name)) return false;
    const auto parent = AskedAt(request, "ParentRef.ListID");
    return !parent || TextAt(record, "ParentRef.ListID").value_or("") == parent->text;
  }
  return std::ranges::all_of(kTelling, [&](std::string_view path) {
    const auto asked = AskedAt(request, path);
    const auto found = TextAt(record, path);
    return !asked || !found || MeanTheSame(asked->type, asked->text, *found);
  });
}

// What a query of those filters finds. Days of transactions narrow every query of theirs.
std::vector<Record> RecordsOf(QuickBooksRead read, const ReadFilters& filters, QBSessionManager& session) {
  if (read.transaction) read.transaction->takesTransactionDates = true;
  auto set = RequireMsgSetRequest(session);
  ApplyQBFilters(read, filters, set);
  const auto answer = session.DoRequests(set);
  std::vector<Record> found;
  for (std::size_t i = 0; i < answer.Count(); ++i) {
    const auto& response = answer.GetAt(i);
    // A refusal is not the same as nothing there.
    if (!IsCarriedOut(response)) throw PlatformError(error::kObjectNothing, response.StatusMessage());
    for (auto& record : response.Details()) found.push_back(std::move(record));
  }
  return found;
}

// Whether a record was there before this session: then it is a stranger's.
bool IsOlder(const Record& record, QBSessionManager& session) {
  constexpr std::int64_t kClocksDiffer = 5;  // minutes
  return record["TimeCreated"].GetDate() < session.Recovery().BegunAt().PlusMinutes(-kClocksDiffer);
}

bool IsLinked(std::string_view table, const std::string& identifier, ado::Connection& connection) {
  const auto found =
      connection.Execute(Sql("SELECT COUNT(*) FROM {} WHERE QBLinkID = '{}';", table, identifier), nullptr);
  return FirstField(*found) != "0";
}

}  // namespace

std::optional<std::string> TextAt(const Record& record, std::string_view path) {
  std::optional<std::string> text;
  IgnoreErrors([&] {
    auto field = record;
    for (const auto& step : Split(path, '.')) {
      if (field.IsNothing()) break;
      field = field[step];
    }
    text = field.GetValueOrEmpty();
  });
  return text;
}

bool MeanTheSame(messages::Type type, std::string_view a, std::string_view b) {
  if (NameForComparison(a) == NameForComparison(b)) return true;
  if (type == messages::Type::TimeInterval) {
    const auto span = messages::ParseTimeInterval(a);
    return span && span == messages::ParseTimeInterval(b);
  }
  if (!IsNumber(type)) return false;
  bool same = false;
  IgnoreErrors([&] { same = TextToNumber(a) == TextToNumber(b); });
  return same;
}

bool IsCarriedOut(const Response& response) {
  constexpr std::int32_t kFirstRefusal = 1000;
  return response.StatusCode() >= 0 && response.StatusCode() < kFirstRefusal;
}

std::string IdentifierOf(const Record& record) {
  for (const auto* const field : {"ListID", "TxnID"}) {
    std::string found;
    // Each kind of record has one of the two, and raises for the other.
    if (IgnoreErrors([&] { found = record[field].GetValueOrEmpty(); }) && !found.empty()) return found;
  }
  return {};
}

std::vector<Record> UnlinkedRecordsLike(const LostAddition& lost, std::string_view linkedIn, const QuickBooksRead& read,
                                        const RequestField& request, std::string_view name) {
  if (lost.look != nullptr) {
    return lost.look->RecordsLike({.linkedIn = linkedIn, .read = read, .request = request, .name = name});
  }
  constexpr std::string_view kAdd = "Add";
  const auto element = fmt::format("{}Ret", lost.request.substr(0, lost.request.size() - kAdd.size()));
  const bool isTransaction = read.transaction.has_value();
  ReadFilters filters;
  if (isTransaction) {
    filters.strTxnFrom = AskedAt(request, "TxnDate").value_or(AskedText()).text;
    filters.strTxnTo = filters.strTxnFrom;
  } else {
    filters.strNameFrom = Trim(name);
    filters.strNameTo = filters.strNameFrom;
  }
  const auto those = [&](const ReadFilters& of) {
    auto found = RecordsOf(read, of, lost.session);
    std::erase_if(found, [&](const Record& record) {
      return record.GetAsString() != element || !IsLike(record, request, name, isTransaction) ||
             (!lost.isCertain && IsOlder(record, lost.session)) ||
             IsLinked(linkedIn, IdentifierOf(record), lost.connection);
    });
    return found;
  };
  auto found = those(filters);
  // A name with blanks in odd places is not what a range of names takes it for.
  const bool isOdd = NameForComparison(name) != FoldCase(name);
  if (found.empty() && !isTransaction && isOdd) return those({});
  return found;
}

std::vector<Record> AllRecords(const QuickBooksRead& read, QBSessionManager& session) {
  return RecordsOf(read, {}, session);
}

std::vector<Record> RecordsOfDays(const QuickBooksRead& read, Date from, Date to, QBSessionManager& session) {
  return RecordsOf(read, {.strTxnFrom = messages::DateText(from), .strTxnTo = messages::DateText(to)}, session);
}

bool SaysTheSame(const Record& record, const RequestField& request, std::span<const std::string_view> paths) {
  return std::ranges::all_of(paths, [&](std::string_view path) {
    // Blanks are nothing to QuickBooks.
    const auto field = AskedAt(request, path).value_or(AskedText());
    const auto asked = Trim(field.text);
    const auto found = Trim(TextAt(record, path).value_or(""));
    return asked.empty() == found.empty() && (asked.empty() || MeanTheSame(field.type, asked, found));
  });
}

Record RecordOf(const QuickBooksRead& read, std::string_view identifier, QBSessionManager& session) {
  auto found = RecordsOf(read, {.strID = std::string(identifier)}, session);
  return found.empty() ? Record() : std::move(found.front());
}

AddedRecord FindAdded(const LostAddition& lost, std::string_view link, const QuickBooksRead& read,
                      const std::function<std::vector<Record>()>& recordsLike) {
  using End = TakenUp::End;
  const auto leadsSomewhere = [&] {
    return !link.empty() && link != lost.replaces && !RecordOf(read, link, lost.session).IsNothing();
  };
  if (lost.look != nullptr) {
    lost.look->Take(recordsLike());
    return {.taken = {.end = End::NotAdded}};
  }
  auto record = lost.record;
  if (record.IsNothing()) {
    auto found = recordsLike();
    // Nothing is without a row: what was added is what the link leads to, unless that is dead, or was there before.
    if (found.empty() && leadsSomewhere()) return {.taken = {.end = End::KnewIt, .identifier = std::string(link)}};
    if (found.empty() && !lost.isCertain) return {.taken = {.end = End::NotAdded}};
    if (found.empty()) return {.taken = {.why = "QuickBooks says that it was added, but has no such record"}};
    if (found.size() > 1) {
      return {
          .taken = {.why = fmt::format("QuickBooks has {} records like it that nothing is linked to", found.size())}};
    }
    record = std::move(found.front());
  }
  const auto identifier = IdentifierOf(record);
  if (link == identifier) return {.taken = {.end = End::KnewIt, .identifier = identifier}};
  // A link from before leads nowhere any more, or to what the addition replaces. Any other was written since.
  if (leadsSomewhere()) return {.taken = {.end = End::Other, .identifier = std::string(link)}};
  return {.taken = {.end = End::Linked, .identifier = identifier}, .record = std::move(record)};
}

}  // namespace twqb
