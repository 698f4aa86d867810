#include "BillsInPart.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <set>

namespace twqb::sweep {

namespace {

constexpr std::string_view kBill = "Bill/";
constexpr std::string_view kBillRow = "VendorBill/";
constexpr std::string_view kEndOfLine = "</ItemLineRet>";

std::vector<std::string> LinesOf(const Snapshot& snapshot, const std::string& bill) {
  std::vector<std::string> lines;
  const auto& text = snapshot.records.at(bill).at("lines");
  for (std::size_t from = 0; from < text.size();) {
    const auto end = text.find(kEndOfLine, from) + kEndOfLine.size();
    lines.push_back(text.substr(from, end - from));
    from = end;
  }
  return lines;
}

// The line that a row's link leads to, or one so many places behind it; "" for a link to none.
std::string LineBehind(const Snapshot& snapshot, const std::string& link, std::size_t places = 0) {
  const auto at = link.find(kLine);
  const auto bill = RecordOf(link);
  if (bill.empty() || at == std::string::npos) return {};
  std::size_t number = 0;
  std::from_chars(link.data() + at + kLine.size(), link.data() + link.size(), number);
  const auto lines = LinesOf(snapshot, bill);
  return number >= 1 && number + places <= lines.size() ? lines[number + places - 1] : std::string();
}

// Whether each element of the line, which may have none, is one of the other's.
bool IsPartOfLine(const std::string& part, const std::string& whole) {
  constexpr std::string_view kOpen = "<ItemLineRet>";
  for (auto at = kOpen.size(); at + kEndOfLine.size() < part.size();) {
    const auto name = part.substr(at + 1, part.find('>', at) - at - 1);
    const auto end = part.find("</" + name + ">", at) + name.size() + 3;
    if (whole.find(part.substr(at, end - at)) == std::string::npos) return false;
    at = end;
  }
  return true;
}

class Check {
 public:
  Check(const Snapshot& now, const Expectation& expected, BillsAt when)
      : now_(now),
        expected_(expected),
        when_(when),
        hasBillRows_(
            std::ranges::any_of(expected.before.rows, [](const auto& row) { return row.first.starts_with(kBillRow); })),
        problems_(now.damage) {}

  Problems Run() {
    CheckRows();
    CheckRecords();
    CheckLinesOfNobody();
    if (when_ == BillsAt::InStep) CheckInStep();
    return problems_;
  }

 private:
  // A send writes links and stamps, and nothing else.
  void CheckRows() {
    std::set<std::string> rows;
    for (const auto& [key, fields] : now_.rows) rows.insert(key);
    for (const auto& [key, before] : expected_.before.rows) {
      if (rows.erase(key) == 0) {
        problems_.push_back(fmt::format("The row {} is gone.", key));
        continue;
      }
      auto was = WithoutTimes(before, expected_.tables);
      auto is = WithoutTimes(now_.rows.at(key), expected_.tables);
      const auto link = is.extract(std::string(kLinkColumn)).mapped();
      const auto oldLink = was.extract(std::string(kLinkColumn)).mapped();
      if (is != was) problems_.push_back(fmt::format("The row {} is not what it was.", key));
      if (link != oldLink) CheckLink(key, link);
    }
    for (const auto& key : rows) problems_.push_back(fmt::format("The row {} is there.", key));
  }

  void CheckLink(const std::string& key, const std::string& link) {
    if (key.starts_with(kBillRow)) {
      if (!RecordOf(link).starts_with(kBill)) problems_.push_back(fmt::format("{} is linked to {}.", key, link));
      return;
    }
    if (!linked_.insert(link).second) problems_.push_back(fmt::format("{} shares the link {}.", key, link));
    const auto line = LineBehind(now_, link);
    const auto wanted = LineBehind(expected_.after, expected_.after.rows.at(key).at(std::string(kLinkColumn)));
    // Expenses are linked by their places, which a line that broke off shifts by one.
    const bool isShifted = !hasBillRows_ && line != wanted && LineBehind(now_, link, 1) == wanted;
    if (line.empty() || (line != wanted && !isShifted)) {
      problems_.push_back(fmt::format("{} is linked to \"{}\", not to \"{}\".", key, line, wanted));
    }
  }

  // Bills come, and nothing goes.
  void CheckRecords() {
    for (const auto& [name, before] : expected_.before.records) {
      const auto record = now_.records.find(name);
      if (record == now_.records.end()) problems_.push_back(fmt::format("The record {} is gone.", name));
    }
    for (const auto& [name, fields] : now_.records) {
      if (expected_.before.records.contains(name) || name.starts_with(kBill)) continue;
      if (!expected_.after.records.contains(name)) problems_.push_back(fmt::format("The record {} is there.", name));
    }
  }

  // At most the one line that broke off, or, ahead of their links, those of all rows; each of what a whole line says.
  void CheckLinesOfNobody() {
    std::vector<std::string> wanted;
    for (const auto& [name, fields] : expected_.after.records) {
      if (!name.starts_with(kBill)) continue;
      for (auto& line : LinesOf(expected_.after, name)) wanted.push_back(std::move(line));
    }
    int ofNobody = 0;
    for (const auto& [name, fields] : now_.records) {
      if (!name.starts_with(kBill) || expected_.before.records.contains(name)) continue;
      int number = 0;
      for (const auto& line : LinesOf(now_, name)) {
        if (linked_.contains(fmt::format("{}{}{}{}", kLeadsTo, name, kLine, ++number))) continue;
        ++ofNobody;
        const auto isPart = [&](const std::string& whole) { return IsPartOfLine(line, whole); };
        if (std::ranges::none_of(wanted, isPart)) {
          problems_.push_back(fmt::format("A line of {} says what no row says: {}", name, line));
        }
      }
    }
    const int most = when_ == BillsAt::InStep ? 1 : static_cast<int>(wanted.size()) - 1;
    if (ofNobody > most) problems_.push_back(fmt::format("{} lines are of nobody.", ofNobody));
  }

  void CheckInStep() {
    int unlinked = 0;
    for (const auto& [key, after] : expected_.after.rows) {
      const auto row = now_.rows.find(key);
      if (row == now_.rows.end() || RecordOf(after.at(std::string(kLinkColumn))).empty()) continue;
      if (!RecordOf(row->second.at(std::string(kLinkColumn))).empty()) continue;
      ++unlinked;
      if (key.starts_with(kBillRow)) problems_.push_back(fmt::format("The bill {} is not linked.", key));
    }
    if (hasBillRows_ && unlinked == 0) problems_.emplace_back("Every row is linked, and the bill is whole.");
    if (!hasBillRows_ && unlinked != 0) problems_.push_back(fmt::format("{} rows are not billed.", unlinked));
    const auto bills = [](const Snapshot& snapshot) {
      return std::ranges::count_if(snapshot.records,
                                   [](const auto& record) { return record.first.starts_with(kBill); });
    };
    const auto more = bills(now_) - bills(expected_.after);
    if (more != (hasBillRows_ ? 0 : 1)) {
      problems_.push_back(fmt::format("There are {} bills more than after a clean run.", more));
    }
  }

  const Snapshot& now_;
  const Expectation& expected_;
  const BillsAt when_;
  const bool hasBillRows_;
  Problems problems_;
  std::set<std::string> linked_;  // to lines
};

}  // namespace

Problems CheckBillInPart(const Snapshot& now, const Expectation& expected, BillsAt when) {
  return Check(now, expected, when).Run();
}

}  // namespace twqb::sweep
