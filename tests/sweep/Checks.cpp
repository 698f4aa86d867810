#include "Checks.h"

#include <fmt/core.h>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "BillsInPart.h"
#include "platform/Text.h"

namespace twqb::sweep {

namespace {

using Table = std::map<std::string, Fields>;

const std::string kLink{kLinkColumn};

const Fields* Find(const Table& table, const std::string& key) {
  const auto found = table.find(key);
  return found == table.end() ? nullptr : &found->second;
}

std::string Text(const Fields& fields) {
  std::string text;
  for (const auto& [column, value] : fields) text += fmt::format("\n    {} = {}", column, value);
  return text;
}

std::string Differences(const Fields& now, const Fields& wanted) {
  std::string text;
  for (const auto& [column, value] : now) {
    const auto other = wanted.find(column);
    if (other == wanted.end()) {
      text += fmt::format("\n    {} is there", column);
    } else if (other->second != value) {
      text += fmt::format("\n    {} = {}, not {}", column, value, other->second);
    }
  }
  return text;
}

// Records that the clean run did not make.
std::vector<std::string> ExtraRecords(const Snapshot& now, const Snapshot& after) {
  std::vector<std::string> extra;
  for (const auto& [name, fields] : now.records) {
    if (!after.records.contains(name)) extra.push_back(name);
  }
  return extra;
}

void ExpectCount(std::string_view what, const std::vector<std::string>& found, std::size_t wanted, Problems& problems) {
  if (found.size() == wanted) return;
  problems.push_back(fmt::format("{}: {} instead of {} ({})", what, found.size(), wanted, Join(found, ", ")));
}

void CheckNoneLost(std::string_view what, const Table& now, const Table& before, Problems& problems) {
  for (const auto& [key, fields] : before) {
    if (!now.contains(key)) problems.push_back(fmt::format("The {} {} is gone.", what, key));
  }
}

// "Client" of the row "Client/ACME".
std::string TableOf(const std::string& key) { return key.substr(0, key.find('/')); }

// What stands behind the record's name in a link that leads to a line of it.
std::string LineOf(std::string_view link) {
  const auto at = link.find(kLine);
  return at == std::string_view::npos ? std::string() : std::string(link.substr(at));
}

// The row as the clean run leaves it, but for the statements that a break can keep from running. A stamp that a clean
// run does not set can be any.
std::vector<Fields> Stages(const std::string& key, const Fields& now, const Expectation& expected,
                           const std::vector<std::string>& extraRecords) {
  std::vector<Fields> stages;
  const auto* before = Find(expected.before.rows, key);
  const auto* after = Find(expected.after.rows, key);
  if (before != nullptr) stages.push_back(*before);
  if (after != nullptr) stages.push_back(*after);
  if (before == nullptr || after == nullptr) return stages;
  for (const auto& table : expected.tables) {
    const std::string stamp(table.stampColumn);
    if (TableOf(key) != table.name || !after->contains(stamp)) continue;
    auto unstamped = *after;
    unstamped[stamp] = before->at(stamp);
    stages.push_back(std::move(unstamped));
  }
  // A twin that was replaced.
  for (const auto& record : extraRecords) {
    auto replaced = *after;
    replaced[kLink] = std::string(kLeadsTo) + record + LineOf(after->at(kLink));
    stages.push_back(replaced);
    for (const auto& table : expected.tables) {
      const std::string stamp(table.stampColumn);
      if (TableOf(key) != table.name || !now.contains(stamp)) continue;
      replaced[stamp] = now.at(stamp);
      stages.push_back(replaced);
    }
  }
  return stages;
}

// "Customer/Acme1" for "Customer/Acme" or "Customer/Acme2".
bool IsCountedNameOf(std::string_view counted, std::string_view name) {
  constexpr std::string_view kDigits = "0123456789";
  const auto base = [&](std::string_view text) { return text.substr(0, text.find_last_not_of(kDigits) + 1); };
  return counted != name && base(counted) == base(name) && counted != base(counted);
}

// A record without the counter at the end of the field that carries one.
Fields WithoutCounter(Fields fields, const std::vector<LinkedTable>& tables) {
  const auto body = fields.find("body");
  for (const auto& table : tables) {
    if (table.countedField.empty() || body == fields.end()) continue;
    const auto end = body->second.find(fmt::format("</{}>", table.countedField));
    if (end == std::string::npos) continue;
    const auto begin = body->second.find_last_not_of("0123456789", end - 1) + 1;
    body->second.erase(begin, end - begin);
  }
  return fields;
}

// Takes every element of that begin and end out of a text.
void Cut(std::string& text, std::string_view begin, std::string_view end) {
  for (auto from = text.find(begin); from != std::string::npos; from = text.find(begin, from)) {
    text.erase(from, text.find(end, from) + end.size() - from);
  }
}

// Without the description of a job: it is made of its name, and has the name's counter.
Fields WithoutDescription(Fields fields) {
  Cut(fields.at("body"), "<JobDesc>", "</JobDesc>");
  return fields;
}

// The elements of the record's body that are there as a whole, too, in the other's; the rest of both equal.
bool IsPartOf(Fields part, Fields whole) {
  constexpr std::string_view kEnd = "</";
  const auto partBody = std::exchange(part["body"], {});
  const auto wholeBody = std::exchange(whole["body"], {});
  if (part != whole || partBody.size() >= wholeBody.size()) return false;
  for (std::size_t at = 0; at < partBody.size();) {
    const auto name = partBody.substr(at + 1, partBody.find('>', at) - at - 1);
    const auto end = partBody.find(std::string(kEnd) + name + ">", at);
    if (end == std::string::npos) return false;
    const auto next = end + kEnd.size() + name.size() + 1;
    if (wholeBody.find(partBody.substr(at, next - at)) == std::string::npos) return false;
    at = next;
  }
  return true;
}

// The same but for its lines, which come to the same, and its class.
bool IsInAnotherForm(Fields now, Fields wanted) {
  if (now == wanted || !now.contains("lines")) return false;
  for (auto* fields : {&now, &wanted}) {
    fields->erase("lines");
    Cut(fields->at("body"), "<ClassRef>", "</ClassRef>");
  }
  return now == wanted;
}

void ExpectOtherForms(const std::vector<std::string>& found, Leaves leaves, Problems& problems) {
  ExpectCount("Records in another form", found, leaves == Leaves::OneInAnotherForm ? 1 : 0, problems);
}

// The record whose rows have links that lead elsewhere than after a clean run.
struct Relinked {
  std::string from;
  std::string to;
  bool operator==(const Relinked&) const = default;
};

class InStepCheck {
 public:
  // `keyless` is the link of the row that lacks its key; empty: none does.
  InStepCheck(Snapshot now, std::string keyless, const Expectation& expected, Leaves leaves)
      : now_(std::move(now)),
        keyless_(std::move(keyless)),
        expected_(expected),
        leaves_(leaves),
        problems_(now_.damage) {}

  Problems Run() {
    extra_ = ExtraRecords(now_, expected_.after);
    const bool addsOne = leaves_ == Leaves::OneTwinReplaced || leaves_ == Leaves::OneIncomplete;
    ExpectCount("Records that a clean run does not make", extra_, addsOne ? 1 : 0, problems_);
    CheckRows();
    CheckLostRows();
    if (addsOne && !relinked_) problems_.emplace_back("No row is linked to the record that was added again.");
    if (relinked_ && RowsOf(now_, relinked_->to) != RowsOf(expected_.after, relinked_->from)) {
      problems_.push_back(fmt::format("Not all rows of {} are linked to {}.", relinked_->from, relinked_->to));
    }
    CheckRecords();
    return problems_;
  }

 private:
  using KeysByLink = std::map<std::pair<std::string, std::string>, std::string>;  // by table and link

  void CheckRows() {
    KeysByLink keysByLink;
    std::set<std::string> twice;  // links
    for (const auto& [key, fields] : now_.rows) {
      const auto& link = fields.at(kLink);
      const auto* wanted = Find(expected_.after.rows, key);
      if (wanted != nullptr && !wanted->at(kLink).starts_with(kLeadsTo)) {
        CheckRow(key, WithoutTimes(fields, expected_.tables), WithoutTimes(*wanted, expected_.tables));
        continue;
      }
      if (!link.starts_with(kLeadsTo)) problems_.push_back(fmt::format("The link of {} is {}.", key, link));
      if (!MayShareLinks(key)) CheckNotShared(key, link, keysByLink);
      if (wanted == nullptr) {
        if (IsThereOnceMore(key, fields)) {
          twice.insert(link);
        } else {
          problems_.push_back(fmt::format("The row {} is there.", key));
        }
        continue;
      }
      CheckRow(key, WithoutTimes(fields, expected_.tables), WithoutTimes(*wanted, expected_.tables));
    }
    ExpectCount("Records that came twice", {twice.begin(), twice.end()}, leaves_ == Leaves::OneTwice ? 1 : 0,
                problems_);
  }

  void CheckNotShared(const std::string& key, const std::string& link, KeysByLink& keysByLink) {
    const auto [other, isNew] = keysByLink.emplace(std::pair(TableOf(key), link), key);
    if (!isNew) problems_.push_back(fmt::format("{} and {} are both linked to {}.", other->second, key, link));
  }

  [[nodiscard]] bool MayShareLinks(const std::string& key) const {
    return std::ranges::any_of(expected_.tables, [&](const LinkedTable& table) {
      return table.perRecord == RowsOfARecord::Several && TableOf(key) == table.name;
    });
  }

  // Whether the row is one that a clean run makes, with the first counter behind its key.
  [[nodiscard]] bool IsThereOnceMore(const std::string& key, const Fields& fields) const {
    if (leaves_ != Leaves::OneTwice || !key.ends_with('1')) return false;
    const auto* once = Find(expected_.after.rows, key.substr(0, key.size() - 1));
    return once != nullptr && WithoutTimes(fields, expected_.tables) == WithoutTimes(*once, expected_.tables);
  }

  // Rows may be lost of the one record that came in part, or stays out as a whole, and of the one without a key.
  void CheckLostRows() {
    std::set<std::string> inPart;  // links
    std::set<std::string> out;     //
    for (const auto& [key, fields] : expected_.after.rows) {
      if (now_.rows.contains(key)) continue;
      const auto& link = fields.at(kLink);
      if (!keyless_.empty() && link == keyless_) continue;
      if (leaves_ == Leaves::OneInPart && IsAnyLinkedTo(link)) {
        inPart.insert(link);
      } else if (leaves_ == Leaves::OneLeftOut && !IsAnyLinkedTo(link)) {
        out.insert(link);
      } else {
        problems_.push_back(fmt::format("The row {} is gone.", key));
      }
    }
    ExpectCount("Records that came in part", {inPart.begin(), inPart.end()}, leaves_ == Leaves::OneInPart ? 1 : 0,
                problems_);
    ExpectCount("Records that stay out", {out.begin(), out.end()}, leaves_ == Leaves::OneLeftOut ? 1 : 0, problems_);
  }

  [[nodiscard]] bool IsAnyLinkedTo(const std::string& link) const {
    return std::ranges::any_of(now_.rows, [&](const auto& row) { return row.second.at(kLink) == link; });
  }

  void CheckRow(const std::string& key, Fields fields, Fields wanted) {
    if (fields == wanted) return;
    const auto fromLink = std::exchange(wanted[kLink], {});
    const auto toLink = std::exchange(fields[kLink], {});
    const Relinked relinked{.from = RecordOf(fromLink), .to = RecordOf(toLink)};
    const bool toExtra = extra_.size() == 1 && relinked.to == extra_.front();
    const bool sameLine = LineOf(fromLink) == LineOf(toLink);
    const bool otherName = leaves_ == Leaves::OneIncomplete || IsCountedNameOf(relinked.to, relinked.from);
    if (fields != wanted || !toExtra || !sameLine || !otherName || relinked_.value_or(relinked) != relinked) {
      fields[kLink] = toLink;
      wanted[kLink] = fromLink;
      problems_.push_back(fmt::format("The row {} is out of step:{}", key, Differences(fields, wanted)));
      return;
    }
    relinked_ = relinked;
  }

  void CheckRecords() {
    std::vector<std::string> passedOver;
    std::vector<std::string> otherForms;
    for (const auto& [name, after] : expected_.after.records) {
      const auto* record = Find(now_.records, name);
      if (leaves_ == Leaves::OneIncomplete && relinked_ && name == relinked_->from) {
        CheckIncomplete(name, record, after);
        continue;
      }
      if (record == nullptr) {
        problems_.push_back(fmt::format("The record {} is missing.", name));
        continue;
      }
      const auto wanted = WithoutTimes(after, expected_.tables);
      const auto fields = WithoutTimes(*record, expected_.tables);
      if (relinked_ && name == relinked_->from) {
        CheckRelinked(name, fields, wanted);
      } else if (IsInAnotherForm(fields, wanted)) {
        otherForms.push_back(name);
      } else if (fields != wanted) {
        const auto* before = Find(expected_.before.records, name);
        const bool asBefore = before != nullptr && fields == WithoutTimes(*before, expected_.tables);
        if (asBefore) passedOver.push_back(name);
        if (!asBefore) problems_.push_back(fmt::format("The record {}:{}", name, Differences(fields, wanted)));
      }
    }
    ExpectCount("Records that did not get their row's values", passedOver, leaves_ == Leaves::OnePassedOver ? 1 : 0,
                problems_);
    ExpectOtherForms(otherForms, leaves_, problems_);
  }

  // It stands in the place of the whole one, and has nothing that is not of that.
  void CheckIncomplete(const std::string& name, const Fields* record, const Fields& after) {
    if (record != nullptr) problems_.push_back(fmt::format("The record {} is there beside an incomplete one.", name));
    const auto part = WithoutTimes(now_.records.at(relinked_->to), expected_.tables);
    const auto whole = WithoutTimes(after, expected_.tables);
    if (!IsPartOf(part, whole)) {
      problems_.push_back(fmt::format("The record {} is no part of {}:{}", relinked_->to, name, Text(part)));
    }
  }

  // The new record has the row's values; the one that it stands for keeps what it had.
  void CheckRelinked(const std::string& name, const Fields& fields, const Fields& wanted) {
    const auto added = WithoutCounter(WithoutTimes(now_.records.at(relinked_->to), expected_.tables), expected_.tables);
    const auto* before = Find(expected_.before.records, name);
    const bool replaced = leaves_ == Leaves::OneTwinReplaced && before != nullptr;
    // Where QuickBooks was ahead a clean run sends nothing, so that it does not tell the row's values.
    const bool sent = !replaced || wanted != WithoutTimes(*before, expected_.tables);
    if (sent && WithoutDescription(added) != WithoutDescription(wanted)) {
      problems_.push_back(fmt::format("The record {}:{}", relinked_->to, Differences(added, wanted)));
    }
    const auto kept = replaced ? WithoutTimes(*before, expected_.tables) : wanted;
    if (fields != kept) problems_.push_back(fmt::format("The record {}:{}", name, Differences(fields, kept)));
  }

  const Snapshot now_;
  const std::string keyless_;
  const Expectation& expected_;
  const Leaves leaves_;
  Problems problems_;
  std::vector<std::string> extra_;
  std::optional<Relinked> relinked_;
};

// The rows as if all that were made had their key, and the link of the one that has none.
struct Keyed {
  Snapshot now;
  std::string keyless = {};
};

// Tells it where not just those rows lack a key that may.
Keyed WithKeys(Snapshot now, const std::vector<LinkedTable>& tables, Leaves leaves, Problems& problems) {
  std::vector<std::string> lacking;
  std::string keyless;
  for (const auto& table : tables) {
    if (table.madeKeyColumn.empty()) continue;
    for (auto& [key, fields] : now.rows) {
      if (TableOf(key) != table.name) continue;
      auto& made = fields.at(std::string(table.madeKeyColumn));
      if (!made.empty()) continue;
      lacking.push_back(key);
      keyless = fields.at(kLink);
      made = kMadeKey;
    }
  }
  ExpectCount("Rows without a key", lacking, leaves == Leaves::OneWithoutKey ? 1 : 0, problems);
  return {.now = std::move(now), .keyless = std::move(keyless)};
}

}  // namespace

Problems CheckBroken(const Snapshot& found, const Expectation& expected, Leaves leaves) {
  if (leaves == Leaves::OneBillInPart) return CheckBillInPart(found, expected, BillsAt::Broken);
  Problems problems = found.damage;
  const auto now = WithKeys(found, expected.tables, leaves, problems).now;
  CheckNoneLost("row", now.rows, expected.before.rows, problems);
  CheckNoneLost("record", now.records, expected.before.records, problems);
  const auto extra = ExtraRecords(now, expected.after);
  ExpectCount("Records that a clean run does not make", extra,
              leaves == Leaves::OneTwinReplaced || leaves == Leaves::OneIncomplete ? 1 : 0, problems);
  for (const auto& [key, fields] : now.rows) {
    const auto stages = Stages(key, fields, expected, extra);
    if (std::ranges::find(stages, fields) == stages.end()) {
      problems.push_back(fmt::format("The row {} is neither old nor new:{}", key, Text(fields)));
    }
  }
  std::vector<std::string> withoutRow;
  std::vector<std::string> otherForms;
  for (const auto& [name, fields] : now.records) {
    const auto* before = Find(expected.before.records, name);
    const auto* after = Find(expected.after.records, name);
    const auto rows = RowsOf(expected.after, name);
    if (before == nullptr && !std::ranges::includes(RowsOf(now, name), rows)) withoutRow.push_back(name);
    const bool isOld = before != nullptr && fields == *before;
    const bool isNew = after != nullptr && fields == *after;
    if (!isOld && after != nullptr && IsInAnotherForm(fields, *after)) {
      otherForms.push_back(name);
    } else if (!isOld && !isNew && (before != nullptr || after != nullptr)) {
      problems.push_back(fmt::format("The record {} is neither old nor new:{}", name, Text(fields)));
    }
  }
  ExpectCount("New records that a row of theirs does not know", withoutRow, leaves == Leaves::OneLostLink ? 1 : 0,
              problems);
  ExpectOtherForms(otherForms, leaves, problems);
  return problems;
}

Problems CheckInStep(const Snapshot& now, const Expectation& expected, Leaves leaves) {
  if (leaves == Leaves::OneBillInPart) return CheckBillInPart(now, expected, BillsAt::InStep);
  Problems problems;
  auto [keyed, keyless] = WithKeys(now, expected.tables, leaves, problems);
  auto inStep = InStepCheck(std::move(keyed), std::move(keyless), expected, leaves).Run();
  inStep.insert(inStep.end(), problems.begin(), problems.end());
  return inStep;
}

}  // namespace twqb::sweep
