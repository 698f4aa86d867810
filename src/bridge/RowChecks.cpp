#include "bridge/RowChecks.h"

#include <fmt/core.h>

#include <algorithm>

#include "bridge/Tables.h"
#include "engine/AddedRecords.h"
#include "engine/Mapping.h"
#include "engine/QuietLook.h"
#include "engine/RowLook.h"
#include "engine/WriteBack.h"
#include "platform/Text.h"
#include "quickbooks/Requests.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Sql.h"

namespace twqb {

namespace {

constexpr std::string_view kParent = "ParentRef.ListID";
constexpr std::string_view kNameField = "Name";
constexpr std::size_t kShown = 60;

// A text as a sentence shows it.
std::string Quoted(std::string_view text) {
  const auto plain = ReplaceAll(ReplaceAll(WithoutControls(text), "\r", " "), "\n", " ");
  return CharacterCount(plain) > kShown ? fmt::format("\"{}…\"", Left(plain, kShown)) : fmt::format("\"{}\"", plain);
}

std::string Folded(std::string_view text) { return FoldCase(Trim(text)); }

bool EndsIn(std::string_view path, std::string_view reference) {
  return path.ends_with(std::string(reference) + ".ListID") || path.ends_with(std::string(reference) + ".FullName");
}

// "CustomerQueryRq": "customer".
std::string KindOf(std::string_view query) {
  std::string kind;
  for (const char c : query.substr(0, query.size() - std::string_view("QueryRq").size())) {
    if (c >= 'A' && c <= 'Z' && !kind.empty()) kind += ' ';
    kind += c;
  }
  return FoldCase(kind);
}

// What a text field takes on, and loses.
Finding CutFinding(const CutText& cut) {
  if (!cut.text.starts_with(cut.kept)) {
    return {.check = Check::TextCut,
            .rule = fmt::format("{} takes {} characters in QuickBooks: the key in front is left off {}, and {} would "
                                "arrive.",
                                cut.field, cut.room, Quoted(cut.text), Quoted(cut.kept)),
            .advice = "Shorten the key, or accept that it stays behind."};
  }
  return {.check = Check::TextCut,
          .rule = fmt::format("{} takes {} characters in QuickBooks: of {} the end {} would be lost.", cut.field,
                              cut.room, Quoted(cut.text), Quoted(std::string_view(cut.text).substr(cut.kept.size()))),
          .advice = "Shorten the text, or accept that its end stays behind."};
}

}  // namespace

std::string_view CheckName(Check check) {
  switch (check) {
    case Check::QuoteInKey:
      return "quoteInKey";
    case Check::ColonInName:
      return "colonInName";
    case Check::ControlCharacters:
      return "controlCharacters";
    case Check::TextCut:
      return "textCut";
    case Check::TextTooLong:
      return "textTooLong";
    case Check::UnreadableDate:
      return "unreadableDate";
    case Check::ParentUnlinked:
      return "parentUnlinked";
    case Check::ParentMissing:
      return "parentMissing";
    case Check::NameClash:
      return "nameClash";
    case Check::MissingAccount:
      return "missingAccount";
    case Check::MissingPayrollItem:
      return "missingPayrollItem";
    case Check::Unreadable:
      return "unreadable";
    case Check::Refused:
      break;
  }
  return "refused";
}

// What a row would be, as far as it got.
class RowChecker::Look final : public RowLook {
 public:
  explicit Look(const messages::Form& form) : form_(form) {}

  [[nodiscard]] bool WantsRecords() const override { return false; }
  void NoteRow(const ado::Recordset& /*row*/) override {}
  void NoteStays(Stays stays, std::string why) override {
    if (stays == Stays::Never) neverGoes = true;
    if (stays != Stays::Never && lacks.empty()) lacks = std::move(why);
  }
  void NoteUnreadableDate() override { lacksDate = true; }
  void NoteAtTop() override {}
  std::vector<Record> RecordsLike(const RowAsSent& row) override {
    name = row.name;
    values = row.request.Values(form_);
    if (row.read.transaction && lacks.empty() && LacksPerson(row.request)) {
      lacks = "the customer, employee or vendor that it is of has no link yet";
    }
    return {};
  }
  std::vector<Record> RecordsOfDays(const QuickBooksRead& /*read*/, Date /*from*/, Date /*to*/) override { return {}; }
  void Take(std::vector<Record> /*records*/) override {}

  bool neverGoes = false;
  bool isNotSelected = false;
  bool lacksDate = false;
  std::string lacks;
  std::string name;
  std::vector<FieldText> values;
  std::vector<CutText> cuts;

  void Forget() { *this = Look(form_); }
  [[nodiscard]] std::string At(std::string_view path) const {
    const auto found = std::ranges::find(values, path, &FieldText::path);
    return found == values.end() ? std::string() : found->text;
  }
  // The name that it would have, of a list.
  [[nodiscard]] std::string NameThere() const { return name.empty() ? At(kNameField) : name; }
  // What people call the row.
  [[nodiscard]] std::string Called() const {
    if (!name.empty()) return name;
    const auto number = At("RefNumber");
    const auto day = At("TxnDate");
    return number.empty() || day.empty() ? number + day : number + ", " + day;
  }

 private:
  messages::Form form_;
};

namespace {

// A query of a list, for all of it: QuickBooks leaves out what is inactive unless it is told.
void AppendQueryOfAll(MsgSetRequest& set, std::string_view query) {
  constexpr int kAllRecords = 2;  // of the query's ActiveStatus
  const auto request = set.Append(query);
  for (const auto* table : Tables()) {
    for (const auto& read : table->reads) {
      if (read.transaction || std::ranges::find(read.requests, query) == read.requests.end()) continue;
      request[read.choice]["ListFilter"]["ActiveStatus"].SetValue(kAllRecords);
      return;
    }
  }
}

// Calls `take` with place, key and link of each row that the table adds.
template <typename Take>
void ForEachRow(const Table& table, const Take& take) {
  WithGlobalConnection([&] {
    Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
    for (const auto& place : {table.lostLink.keys, table.lostLink.otherKeys}) {
      if (place.table.empty()) continue;
      const auto rows = GlobalConnection().OpenRecordset(
          Sql("SELECT {}, QBLinkID FROM {} WHERE {};", place.column, place.table, Sql::Own(place.condition)),
          ado::CursorType::Static, ado::LockType::ReadOnly);
      for (; !rows->Eof(); rows->MoveNext()) take(place, FirstField(*rows), ColumnText(*rows, "QBLinkID"));
    }
  });
}

}  // namespace

RowChecker::RowChecker(QBSessionManager& session, std::vector<const Table*> checked)
    : session_(session), checked_(std::move(checked)) {}
RowChecker::~RowChecker() = default;

const std::set<std::string>& RowChecker::Known(std::string_view query) {
  const auto [at, isNew] = known_.try_emplace(std::string(query));
  if (!isNew) return at->second;
  auto set = RequireMsgSetRequest(session_);
  AppendQueryOfAll(set, query);
  const auto answer = session_.DoRequests(set);
  if (!IsCarriedOut(answer.GetAt(0))) return at->second;
  for (const auto& record : answer.GetAt(0).Details()) {
    for (const std::string_view field : {"ListID", "FullName", "Name"}) {
      if (const auto text = TextAt(record, field); text && !text->empty()) at->second.insert(Folded(*text));
    }
  }
  return at->second;
}

RowChecker::Names& RowChecker::NamesOf(std::span<const std::string_view> queries) {
  const auto known = names_.find(queries.data());
  if (known != names_.end()) return known->second;
  auto& names = names_[queries.data()];
  for (const auto query : queries) {
    // Not every edition has every list.
    IgnoreErrors([&] {
      auto set = RequireMsgSetRequest(session_);
      AppendQueryOfAll(set, query);
      const auto answer = session_.DoRequests(set);
      for (const auto& record : answer.GetAt(0).Details()) {
        names.try_emplace({TextAt(record, kParent).value_or(""), Folded(TextAt(record, kNameField).value_or(""))},
                          KindOf(query), IdentifierOf(record));
      }
    });
  }
  // Those of tables that are checked are met as they are.
  for (const auto* table : Tables()) {
    const bool shares = table->lostLink.called.sharing.data() == queries.data();
    if (shares && std::ranges::find(checked_, table) == checked_.end()) AddNamesOfRows(*table, names);
  }
  return names;
}

void RowChecker::AddNamesOfRows(const Table& table, Names& names) {
  if (table.lostLink.takeUp == nullptr) return;
  Look look(RequireMsgSetRequest(session_).GetForm());
  ForEachRow(table, [&](const KeyPlace& place, std::string_view key, std::string_view link) {
    if (!link.empty()) return;
    look.Forget();
    static_cast<void>(LookAt(table, key, place, look));
    const auto name = look.NameThere();
    if (look.neverGoes || name.empty()) return;
    names.try_emplace({PlaceOf(table, place, key, look), Folded(name)}, fmt::format("{} {}", table.lostLink.row, key),
                      std::string());
  });
}

std::string RowChecker::PlaceOf(const Table& table, const KeyPlace& place, std::string_view key, const Look& look) {
  auto parent = look.At(kParent);
  if (!parent.empty() || look.lacks.empty()) return parent;
  for (const auto& column : table.parents) {
    parent += Folded(GetScalarFromSQL(
                  Sql("SELECT {} FROM {} WHERE {}", column.column, place.table, KeyCondition(place.column, key)))) +
              "\n";
  }
  return parent;
}

void RowChecker::CheckName(const Table& table, const KeyPlace& place, const Look& look, std::string_view key,
                           std::vector<Finding>& findings) {
  const auto& sharing = table.lostLink.called.sharing;
  const auto name = look.NameThere();
  if (sharing.empty() || name.empty()) return;
  if (name.find(':') != std::string::npos) {
    findings.push_back({.check = Check::ColonInName,
                        .rule = fmt::format("QuickBooks takes no colon in a name, and {} has one.", Quoted(name)),
                        .advice = "Take the colon out of the name."});
  }
  const auto [at, isFree] = NamesOf(sharing).try_emplace({PlaceOf(table, place, key, look), Folded(name)},
                                                         fmt::format("{} {}", table.lostLink.row, key), std::string());
  if (isFree) return;
  const auto& [who, identifier] = at->second;
  findings.push_back(
      {.check = Check::NameClash,
       .rule = identifier.empty() ? fmt::format("The {} would have the name {} in QuickBooks, too.", who, Quoted(name))
                                  : fmt::format("QuickBooks has a record of the name {} already: {} {}.", Quoted(name),
                                                who, identifier),
       .advice = identifier.empty()
                     ? "Give one of them another name; otherwise it gets a number behind it, or stays here."
                     : "Link the two with \"twqb link\" if they are the same, or give the row another name; otherwise "
                       "it gets a number behind it, or stays here."});
}

void RowChecker::CheckReference(const Table& table, const std::string& path, const std::string& text,
                                std::vector<Finding>& findings) {
  if (EndsIn(path, "AccountRef") && !Known("AccountQueryRq").contains(Folded(text))) {
    findings.push_back(
        {.check = Check::MissingAccount,
         .rule = fmt::format("QuickBooks has no account {}, which the row is to be booked on.", Quoted(text)),
         .advice = "Add the account in QuickBooks, or choose another one for the row or in the settings."});
  }
  if (!EndsIn(path, "PayrollItemWageRef") || Known("PayrollItemWageQueryRq").contains(Folded(text))) return;
  const auto secured = table.secures == nullptr ? std::vector<std::string>() : table.secures();
  if (std::ranges::find(secured, text) != secured.end()) return;
  findings.push_back(
      {.check = Check::MissingPayrollItem,
       .rule = fmt::format("QuickBooks has no payroll item {}, which the hours are to be paid by.", Quoted(text)),
       .advice = "Add the payroll item in QuickBooks, or choose another one for the employee."});
}

void RowChecker::CheckValues(const Table& table, const Look& look, bool isLinked, std::vector<Finding>& findings) {
  // The forms of the countries have some fields by other names, and each gets the text.
  std::set<std::string> seen;
  for (const auto& cut : look.cuts) {
    // A twin keeps its name.
    if (isLinked && cut.field == kNameField) continue;
    if (seen.insert(cut.text).second) findings.push_back(CutFinding(cut));
  }
  for (const auto& value : look.values) {
    if (value.isMended) {
      findings.push_back(
          {.check = Check::ControlCharacters,
           .rule = fmt::format("{} has characters that no message can carry: they would be left out of {}.", value.path,
                               Quoted(value.text)),
           .advice = "Type the text anew, without what was pasted into it."});
    }
    if (value.maxLength > 0 && CharacterCount(value.text) > static_cast<std::size_t>(value.maxLength)) {
      findings.push_back(
          {.check = Check::TextTooLong,
           .rule = fmt::format("{} takes {} characters in QuickBooks, and {} has {}: the record would be refused.",
                               value.path, value.maxLength, Quoted(value.text), CharacterCount(value.text)),
           .advice = "Shorten the text."});
    }
    CheckReference(table, value.path, value.text, findings);
  }
}

std::vector<Finding> RowChecker::MissingParents(const Table& table, const KeyPlace& place, std::string_view key) {
  std::vector<Finding> findings;
  for (const auto& parent : table.parents) {
    if (parent.orphan != Orphan::IsPassedOver) continue;
    const auto has = GetScalarFromSQL(
        Sql("SELECT {} FROM {} WHERE {}", parent.column, place.table, KeyCondition(place.column, key)));
    const auto found = GetScalarFromSQL(
        Sql("SELECT COUNT(*) FROM {0}, {1} WHERE {2} AND {0}.{3} = {1}.{4}", place.table, parent.table,
            KeyCondition(fmt::format("{}.{}", place.table, place.column), key), parent.column, parent.key));
    if (found != "0") continue;
    const auto what = FoldCase(parent.table);
    findings.push_back({.check = Check::ParentMissing,
                        .rule = has.empty() ? fmt::format("It has no {}, so that a send passes it over.", what)
                                            : fmt::format("Its {} {} is not in BillingDb, so that a send passes it "
                                                          "over.",
                                                          what, has),
                        .advice = fmt::format("Give the row a {} that there is.", what)});
  }
  return findings;
}

std::string RowChecker::LookAt(const Table& table, std::string_view key, const KeyPlace& place, Look& look) {
  QuietLook quiet;
  Vars().cuts = &look.cuts;
  auto connection = Vars().platform.database->CreateConnection();
  const auto raised = CatchError([&] {
    OpenConnection(*connection, nullptr, "");
    const auto taken = table.lostLink.takeUp({.key = key,
                                              .request = place.adds,
                                              .replaces = {},
                                              .connection = *connection,
                                              .session = session_,
                                              .look = &look});
    look.isNotSelected = taken.end == TakenUp::End::RowGone;
  });
  Vars().cuts = nullptr;
  const auto boxes = quiet.TakeBoxes();
  if (raised) return raised->description();
  return boxes.empty() ? std::string() : boxes.front();
}

void RowChecker::CheckRow(TableFindings& told, std::string_view key, std::string_view link, const KeyPlace& place,
                          Look& look) {
  const auto& table = *told.table;
  std::vector<Finding> findings;
  const auto condition = KeyCondition(place.column, key);
  if (CatchError([&] { static_cast<void>(static_cast<std::string_view>(condition)); })) {
    findings.push_back(
        {.check = Check::QuoteInKey,
         .rule = "Its key has a quotation mark in it: nothing can be written to the row, not its link either.",
         .advice = "Give the row a key without the mark."});
  } else {
    const auto trouble = LookAt(table, key, place, look);
    if (look.neverGoes) return;
    if (look.lacksDate) {
      findings.push_back({.check = Check::UnreadableDate,
                          .rule = "When the row changed last can't be read, so no side of it counts as newer.",
                          .advice = "Write a date into LastUpdated, or empty it."});
    } else if (!trouble.empty()) {
      findings.push_back({.check = Check::Unreadable,
                          .rule = fmt::format("Something of the row can't be read: {}", Quoted(trouble)),
                          .advice = "Look for a date or a number in the row that is none."});
    }
    if (look.isNotSelected) findings = MissingParents(table, place, key);
    if (!look.lacks.empty()) {
      findings.push_back({.check = Check::ParentUnlinked,
                          .rule = fmt::format("It can't go yet: {}.", look.lacks),
                          .advice = "Send or link that first; a send of all tables does it in that order."});
    }
    CheckValues(table, look, !link.empty(), findings);
    if (link.empty()) CheckName(table, place, look, key, findings);
  }
  std::set<std::string> rules;
  for (auto& finding : findings) {
    // A request has some values in several places.
    if (!rules.insert(finding.rule).second) continue;
    finding.key = key;
    finding.name = look.Called();
    told.findings.push_back(std::move(finding));
  }
}

void RowChecker::Check(TableFindings& told) {
  const auto& table = *told.table;
  if (table.lostLink.takeUp == nullptr) return;
  const bool isTransaction = table.reads.front().transaction.has_value();
  Look look(RequireMsgSetRequest(session_).GetForm());
  // Ahead of the rows: it looks at others.
  if (!table.lostLink.called.sharing.empty()) static_cast<void>(NamesOf(table.lostLink.called.sharing));
  ForEachRow(table, [&](const KeyPlace& place, std::string_view key, std::string_view link) {
    // A transaction goes once.
    if (isTransaction && !link.empty()) return;
    ++told.rows;
    look.Forget();
    CheckRow(told, key, link, place, look);
  });
}

}  // namespace twqb
