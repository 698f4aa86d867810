#include "cli/preview/PreviewReport.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "adapters/transcript/TranscriptWriter.h"
#include "cli/options/TableArgument.h"
#include "cli/runs/ReportFile.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kFirst = "preview";  // the field that each line of JSON begins with
constexpr const char* kAmounts = "amounts";
constexpr const char* kNotKnown = "notKnown";

struct DoingWords {
  Doing doing;
  std::string_view text;
  std::string_view word;
};
constexpr std::array kDoings = {DoingWords{Doing::Add, "would be added", "add"},
                                DoingWords{Doing::Change, "would be changed", "change"},
                                DoingWords{Doing::Link, "would get its link", "link"},
                                DoingWords{Doing::LeaveAsItIs, "would be left as it is", "leave"},
                                DoingWords{Doing::PassOver, "would be passed over", "passOver"},
                                DoingWords{Doing::Refuse, "would be refused", "refuse"},
                                DoingWords{Doing::Fail, "would fail", "fail"}};

const DoingWords& WordsOf(Doing doing) { return *std::ranges::find(kDoings, doing, &DoingWords::doing); }

std::string OnOneLine(std::string_view text) { return Trim(ReplaceAll(ReplaceAll(text, "\r\n", " "), "\n", " ")); }

std::string_view KindWord(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::Added:
      return "added";
    case ChangeKind::Changed:
      return "changed";
    case ChangeKind::Removed:
      return "removed";
  }
  return {};
}

std::string_view SideWord(ChangedSide side) { return side == ChangedSide::Billing ? "billing" : "quickBooks"; }
std::string_view SideText(ChangedSide side) { return side == ChangedSide::Billing ? "BillingDb" : "QuickBooks"; }

std::string FieldLine(const FieldChange& field, ChangeKind kind) {
  switch (kind) {
    case ChangeKind::Added:
      return fmt::format("{}: {}", field.field, FieldText(field.after));
    case ChangeKind::Removed:
      return fmt::format("{}: {}", field.field, FieldText(field.before));
    case ChangeKind::Changed:
      break;
  }
  return fmt::format("{}: {} -> {}", field.field, FieldText(field.before), FieldText(field.after));
}

// --- For people ------------------------------------------------------------------------------------------------------

std::string RecordText(const PreviewedRecord& record) {
  const auto& account = record.account;
  const auto name =
      RecordName(static_cast<enTables>(account.table.number), account.key.empty() ? account.identifier : account.key);
  auto text = fmt::format("{}{} {}{}{}{}\n", account.standing == Standing::Line ? "a line of " : "", name,
                          DoingText(record.doing), account.why.empty() ? "" : ": ", OnOneLine(account.why),
                          record.hangsOnUnknown ? fmt::format(" ({})", kHangsOnUnknown) : "");
  for (const auto& change : record.changes) text += ChangeText(change, "  ");
  return text;
}

std::string BoxText(const PreviewedBox& box) {
  auto text = fmt::format("  {}\n", OnOneLine(ReplaceAll(box.text, "\r\n\r\n", "\r\n")));
  if (box.answer.empty()) return text;
  return text + fmt::format("    the preview goes on with {}{}\n", box.answer,
                            box.by == AnsweredBy::File ? ", from the answers file" : "");
}

std::string ErrorText(const ErrorAccount& error) {
  const auto& name = error.key.empty() ? error.identifier : error.key;
  const auto about =
      error.table ? fmt::format("{}: ", RecordName(static_cast<enTables>(error.table->number), name)) : std::string();
  return fmt::format("  {}{}\n", about, OnOneLine(error.text));
}

std::string Headed(std::string_view heading, const std::string& lines) {
  return lines.empty() ? lines : fmt::format("\n{}\n{}", heading, lines);
}

std::string RecordsText(const Preview& preview) {
  std::string text;
  for (const auto& record : preview.records) text += RecordText(record);
  return text.empty() ? text : text + "\n";
}

// --- For programs ----------------------------------------------------------------------------------------------------

EventValue TextOrNull(const std::optional<std::string>& text) { return text ? EventValue(*text) : EventValue(nullptr); }

EventList ChangeList(const std::vector<RecordChange>& changes) {
  EventList list;
  for (const auto& change : changes) list.emplace_back(ChangeFields(change));
  return list;
}

EventFields RecordFields(const PreviewedRecord& record) {
  auto fields = AccountFields(kFirst, record.account);
  fields["would"] = DoingWord(record.doing);
  fields["changes"] = ChangeList(record.changes);
  if (record.hangsOnUnknown) fields[kAmounts] = kNotKnown;
  return fields;
}

// How many records of each table would fare how.
EventList SumFields(const Preview& preview) {
  std::map<std::int32_t, std::map<Doing, std::int64_t>> counts;
  std::vector<std::int32_t> tables;
  for (const auto& record : preview.records) {
    if (record.account.standing != Standing::Record) continue;
    const auto table = record.account.table.number;
    if (!counts.contains(table)) tables.push_back(table);
    ++counts[table][record.doing];
  }
  EventList sums;
  for (const auto table : tables) {
    EventFields sum = {{"table", TypedName(static_cast<enTables>(table))}};
    for (const auto& [doing, count] : counts[table]) sum[DoingWord(doing)] = count;
    sums.emplace_back(std::move(sum));
  }
  return sums;
}

}  // namespace

std::string_view DoingText(Doing doing) { return WordsOf(doing).text; }
std::string_view DoingWord(Doing doing) { return WordsOf(doing).word; }

std::string FieldText(const std::optional<std::string>& value) {
  if (!value) return "(none)";
  if (value->empty()) return "(empty)";
  return ReplaceAll(ReplaceAll(*value, "\r", ""), "\n", "\\n");
}

std::string ChangeText(const RecordChange& change, std::string_view indent) {
  const auto name =
      change.side == ChangedSide::Billing
          ? change.key
          : fmt::format(
                "{}{}", change.name.empty() ? change.key : change.name,
                change.name.empty() || change.kind == ChangeKind::Added ? "" : fmt::format(" ({})", change.key));
  const auto kind = change.kind == ChangeKind::Added                     ? ", new"
                    : change.kind == ChangeKind::Removed                 ? ", would go"
                    : change.fields.empty() && !change.areAmountsUnknown ? ", as it is"
                                                                         : "";
  auto text = fmt::format("{}{}: {} {}{}\n", indent, SideText(change.side), change.place, name, kind);
  for (const auto& field : change.fields) {
    // Of what is new, nothing is said that says nothing.
    if (change.kind == ChangeKind::Added && field.after.value_or("").empty()) continue;
    text += fmt::format("{}  {}\n", indent, FieldLine(field, change.kind));
  }
  if (change.areAmountsUnknown)
    text += fmt::format("{}  amounts that are left out here are not known ahead of the transfer\n", indent);
  return text;
}

EventList FieldList(const std::vector<FieldChange>& fields) {
  EventList list;
  for (const auto& [field, before, after] : fields) {
    list.emplace_back(EventFields{{"field", field}, {"before", TextOrNull(before)}, {"after", TextOrNull(after)}});
  }
  return list;
}

EventFields ChangeFields(const RecordChange& change) {
  EventFields fields = {{"side", SideWord(change.side)},
                        {"what", KindWord(change.kind)},
                        {"place", change.place},
                        {"key", change.key},
                        {"name", change.name},
                        {"identifier", change.identifier},
                        {"fields", FieldList(change.fields)}};
  if (change.areAmountsUnknown) fields[kAmounts] = kNotKnown;
  return fields;
}

std::string PreviewText(const Preview& preview) {
  auto text = RecordsText(preview);
  std::string beside;
  for (const auto& change : preview.beside) beside += ChangeText(change, "  ");
  std::string boxes;
  for (const auto& box : preview.boxes) boxes += BoxText(box);
  std::string told;
  for (const auto& sentence : preview.told) told += fmt::format("  {}\n", sentence);
  std::string settings;
  for (const auto& [section, key, before, after] : preview.settings) {
    settings += fmt::format("  [{}] {}: {} -> {}\n", section, key, FieldText(before), FieldText(after));
  }
  std::string errors;
  for (const auto& error : preview.errors) errors += ErrorText(error);
  const auto behind = Headed("Beside these records:", beside) + Headed("Errors that would be told:", errors) +
                      Headed("Boxes that would come:", boxes) +
                      Headed("Links that got lost, of which it would be told:", told) +
                      Headed("Settings that would be written:", settings);
  if (behind.empty()) return text + preview.summary;
  if (!text.empty()) text.pop_back();
  return text + behind + "\n" + preview.summary;
}

std::string PreviewJson(const Preview& preview, std::string_view verdict) {
  std::string text;
  const auto add = [&text](const EventFields& fields) { text += JsonLine(fields) + "\n"; };
  for (const auto& record : preview.records) add(RecordFields(record));
  for (const auto& change : preview.beside) {
    EventFields fields = {{"preview", "beside"}};
    fields["change"] = ChangeFields(change);
    add(fields);
  }
  for (const auto& error : preview.errors) add(AccountFields(kFirst, error));
  for (const auto& box : preview.boxes) {
    add({{"preview", "box"},
         {"title", box.title},
         {"text", box.text},
         {"answer", box.answer},
         {"answeredBy", box.by == AnsweredBy::File ? "file" : "default"}});
  }
  for (const auto& [section, key, before, after] : preview.settings) {
    add({{"preview", "setting"}, {"section", section}, {"key", key}, {"before", TextOrNull(before)}, {"after", after}});
  }
  for (const auto& sentence : preview.told) add({{"preview", "told"}, {"text", sentence}});
  for (const auto& line : preview.log) add({{"preview", "log"}, {"line", line}});
  EventFields end = {{"preview", "end"},
                     {"transfer", preview.request.direction == Direction::Send ? "send" : "get"},
                     {"table", TypedName(preview.request.table)},
                     {"done", preview.done},
                     {"unanswered", TextOrNull(preview.unanswered)},
                     {"verdict", verdict},
                     {"sums", SumFields(preview)}};
  if (HangsOnUnknown(preview)) end[kAmounts] = kNotKnown;
  add(end);
  return text;
}

}  // namespace twqb::cli
