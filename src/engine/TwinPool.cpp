#include "engine/TwinPool.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <utility>

#include "engine/AddedRecords.h"
#include "messages/ValueFormat.h"
#include "platform/Text.h"
#include "quickbooks/IsCustomer.h"
#include "services/Conversions.h"
#include "services/Errors.h"

namespace twqb {

namespace {

constexpr std::string_view kParent = "ParentRef.ListID";
constexpr std::string_view kName = "Name";
constexpr std::string_view kCompany = "CompanyName";
constexpr std::string_view kFirstName = "FirstName";
constexpr std::string_view kLastName = "LastName";
constexpr std::string_view kOtherName = "another name";

// A block of so many says nothing of anyone in it.
constexpr std::size_t kFullBlock = 200;

std::string TextOf(const Record& record, std::string_view path) { return TextAt(record, path).value_or(""); }

std::string PersonOf(std::string_view first, std::string_view last) { return Trim(fmt::format("{} {}", first, last)); }

std::vector<std::uint32_t> InOrder(std::vector<std::uint32_t> places) {
  std::ranges::sort(places);
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return places;
}

template <typename Index, typename Key>
void Append(std::vector<std::uint32_t>& places, const Index& index, const Key& key) {
  const auto found = index.find(key);
  if (found != index.end()) places.insert(places.end(), found->second.begin(), found->second.end());
}

// --- Transactions ----------------------------------------------------------------------------------------------------

constexpr std::array<std::string_view, 3> kPersons = {"CustomerRef.ListID", "EntityRef.ListID", "VendorRef.ListID"};
constexpr std::array<std::string_view, 3> kWork = {"ItemServiceRef.ListID", "Notes", "PaymentMethodRef.FullName"};
constexpr std::string_view kAmount = "TotalAmount";
constexpr std::string_view kDuration = "Duration";
constexpr int kDaysApart = 5;

enum class Agrees : std::uint8_t { Unknown, Yes, No };

Agrees AgreeAt(const RowFace& row, const Record& record, std::string_view path) {
  const auto* const asked = row.Find(path);
  const auto found = TextOf(record, path);
  if (asked == nullptr || asked->text.empty() || found.empty()) return Agrees::Unknown;
  return MeanTheSame(asked->type, asked->text, found) ? Agrees::Yes : Agrees::No;
}

template <std::size_t count>
Agrees AgreeInAll(const RowFace& row, const Record& record, const std::array<std::string_view, count>& paths) {
  auto all = Agrees::Unknown;
  for (const auto path : paths) {
    const auto one = AgreeAt(row, record, path);
    if (one == Agrees::No) return Agrees::No;
    if (one == Agrees::Yes) all = Agrees::Yes;
  }
  return all;
}

// A number as people read it: "0012" is 12 to them, but two papers to QuickBooks.
std::string WithoutZeros(std::string_view number) {
  const auto text = FoldCase(Trim(number));
  return text.substr(std::min(text.find_first_not_of('0'), text.size()));
}

Likeness OfTransaction(const RowFace& row, const Record& record) {
  const auto number = AgreeAt(row, record, "RefNumber");
  const auto person = AgreeInAll(row, record, kPersons);
  const auto amount = AgreeInAll(row, record, std::array{kAmount, kDuration});
  const bool isSameDay = AgreeAt(row, record, "TxnDate") == Agrees::Yes;
  const bool isSamePerson = person == Agrees::Yes;
  if (number == Agrees::Yes) {
    if (isSameDay && person != Agrees::No) return {.score = 100, .isExact = true, .how = "the same number and date"};
    if (isSamePerson) return {.score = 85, .how = "the same number of the same customer or vendor, another date"};
    if (isSameDay) return {.score = 70, .how = "the same number and date, another customer or vendor"};
    return {};
  }
  if (!isSamePerson) return {};
  if (isSameDay && number == Agrees::No &&
      WithoutZeros(row.At("RefNumber")) == WithoutZeros(TextOf(record, "RefNumber"))) {
    return {.score = 90, .how = "the same number but for zeros ahead of it, of the same customer or vendor and day"};
  }
  if (isSameDay && amount == Agrees::Yes) {
    if (number == Agrees::No) return {.score = 80, .how = "the same day, person and amount, another number"};
    if (AgreeInAll(row, record, kWork) != Agrees::No) {
      return {.score = 100, .isExact = true, .how = "the same day, person and amount"};
    }
    return {.score = 80, .how = "the same day, person and amount"};
  }
  if (isSameDay && amount == Agrees::Unknown && number == Agrees::Unknown) {
    return {.score = 75, .how = "the same day and person"};
  }
  const bool isSameMoney = AgreeAt(row, record, kAmount) == Agrees::Yes;
  if (isSameMoney && number == Agrees::Unknown) {
    return {.score = 65, .how = "the same person and amount, a few days apart"};
  }
  return {};
}

}  // namespace

const FieldText* RowFace::Find(std::string_view path) const {
  const auto found = std::ranges::find(values, path, &FieldText::path);
  return found == values.end() ? nullptr : &*found;
}

std::string_view RowFace::At(std::string_view path) const {
  const auto* const found = Find(path);
  return found == nullptr ? std::string_view() : std::string_view(found->text);
}

TwinPool::TwinPool(const QuickBooksRead& read, const Called& called, std::vector<Record> records)
    : read_(read), called_(called), records_(std::move(records)) {
  if (read.keeps == Keeps::Customers) {
    std::erase_if(records_, [](const Record& record) { return !IsCustomer(record); });
  }
  for (const auto& record : records_) {
    const auto place = static_cast<std::uint32_t>(entries_.size());
    auto& entry = entries_.emplace_back();
    if (read.transaction) {
      entry.number = FoldCase(Trim(TextOf(record, "RefNumber")));
      entry.date = TextOf(record, "TxnDate");
      byDate_[entry.date].push_back(place);
    } else {
      entry.parent = TextOf(record, kParent);
      for (const auto element : called.elements) {
        const auto name = TextOf(record, element);
        if (name.empty()) continue;
        (element == kName ? entry.names : entry.fullNames).emplace_back(name);
      }
      if (!called.number.empty()) entry.number = FoldCase(Trim(TextOf(record, called.number)));
      for (const auto& name : entry.names) {
        for (const auto block : BlocksOf(name)) blocks_[block].push_back(place);
      }
      for (const auto& name : entry.fullNames) {
        for (const auto block : BlocksOf(name)) blocks_[block].push_back(place);
      }
    }
    if (!entry.number.empty()) byNumber_[entry.number].push_back(place);
  }
}

std::vector<TwinPool::Match> TwinPool::Like(const RowFace& row) const {
  return read_.transaction ? LikeTransaction(row) : LikeList(row);
}

std::string_view TwinPool::OtherName(const RowFace& row, const std::vector<ComparedName>& names,
                                     std::size_t place) const {
  const auto& record = records_[place];
  const auto areAlike = [](const ComparedName& a, const ComparedName& b) { return LikenessOf(a, b).score > 0; };
  const ComparedName ourCompany(row.At(kCompany));
  const ComparedName theirCompany(TextOf(record, kCompany));
  if (!ourCompany.text.empty() && !theirCompany.text.empty()) {
    if (!areAlike(ourCompany, theirCompany)) return "another company";
  } else {
    // Of a company on both sides it is only who answers the telephone.
    const ComparedName us(PersonOf(row.At(kFirstName), row.At(kLastName)));
    const ComparedName them(PersonOf(TextOf(record, kFirstName), TextOf(record, kLastName)));
    if (!us.text.empty() && !them.text.empty() && !areAlike(us, them)) return "another person";
  }
  const bool isCalledSo = std::ranges::any_of(entries_[place].names, [&](const ComparedName& other) {
    return std::ranges::any_of(names, [&](const ComparedName& name) { return areAlike(name, other); });
  });
  return isCalledSo || entries_[place].names.empty() ? std::string_view() : kOtherName;
}

Likeness TwinPool::OfList(const RowFace& row, const std::vector<ComparedName>& names, std::size_t place) const {
  const auto& entry = entries_[place];
  const auto parent = row.At(kParent);
  // What is below another one is another one, whatever its name.
  const bool isBelowTheSame = parent == entry.parent;
  if (read_.keeps == Keeps::Jobs && !isBelowTheSame) return {};
  Likeness best;
  const auto compare = [&](const std::vector<ComparedName>& others) {
    for (std::size_t i = 0; i < names.size(); ++i) {
      for (const auto& other : others) {
        const auto likeness = LikenessOf(names[i], other);
        if (likeness.score <= best.score) continue;
        best = {.score = likeness.score,
                .isExact = likeness.difference == NameDifference::None,
                .isByName = i == 0,
                .how = std::string(NameOf(likeness.difference))};
      }
    }
  };
  if (isBelowTheSame) compare(entry.names);
  compare(entry.fullNames);
  // The name that the send gives has the key and the company in it. A key is soon somebody else's short name, and a
  // company has several accounts.
  const bool isWholeName = best.isByName && std::ranges::find(names.begin() + 1, names.end(), names.front().folded,
                                                              &ComparedName::folded) == names.end();
  if (best.isExact && !isWholeName) {
    constexpr int kOfOtherName = 80;
    const auto other = OtherName(row, names, place);
    if (!other.empty()) {
      const auto same = other == kOtherName ? "the same company" : best.how;
      best = {.score = kOfOtherName, .how = fmt::format("{}, {}", same, other)};
    }
  }
  if (called_.number.empty() || entry.number.empty()) return best;
  const auto number = FoldCase(Trim(row.At(called_.number)));
  if (number == entry.number) {
    // A number that two use for something else says little by itself.
    constexpr int kScoreOfNumberAlone = 85;
    if (best.score > 0) return {.score = 100, .isExact = true, .isByName = true, .how = "the same number"};
    return {.score = kScoreOfNumberAlone, .isByName = true, .how = "the same number, under another name"};
  }
  if (!number.empty() && best.isExact) {
    constexpr int kOfOtherNumber = 90;
    return {.score = kOfOtherNumber, .how = "the same name, another number"};
  }
  return best;
}

std::vector<TwinPool::Match> TwinPool::LikeList(const RowFace& row) const {
  std::vector<ComparedName> names = {ComparedName(row.name)};
  for (const auto& name : row.called) {
    if (!Trim(name).empty()) names.emplace_back(name);
  }
  std::vector<std::uint32_t> places;
  for (const auto& name : names) {
    for (const auto block : BlocksOf(name)) {
      const auto found = blocks_.find(block);
      if (found == blocks_.end()) continue;
      if (found->second.size() <= kFullBlock) {
        places.insert(places.end(), found->second.begin(), found->second.end());
        continue;
      }
      // Of one that is full, those that are called the very same, as jobs below many a customer.
      std::ranges::copy_if(found->second, std::back_inserter(places), [&](std::uint32_t place) {
        const auto& entry = entries_[place];
        return (read_.keeps != Keeps::Jobs || entry.parent == row.At(kParent)) &&
               (std::ranges::find(entry.names, name.folded, &ComparedName::folded) != entry.names.end() ||
                std::ranges::find(entry.fullNames, name.folded, &ComparedName::folded) != entry.fullNames.end());
      });
    }
  }
  if (!called_.number.empty()) Append(places, byNumber_, FoldCase(Trim(row.At(called_.number))));
  std::vector<Match> matches;
  for (const auto place : InOrder(std::move(places))) {
    auto likeness = OfList(row, names, place);
    if (likeness.score > 0) matches.push_back({place, std::move(likeness)});
  }
  return matches;
}

std::vector<TwinPool::Match> TwinPool::LikeTransaction(const RowFace& row) const {
  std::vector<std::uint32_t> places;
  if (const auto number = FoldCase(Trim(row.At("RefNumber"))); !number.empty()) Append(places, byNumber_, number);
  const auto date = row.At("TxnDate");
  Append(places, byDate_, date);
  if (!row.At(kAmount).empty() && !date.empty()) {
    IgnoreErrors([&] {
      const auto day = TextToDate(date);
      for (int days = -kDaysApart; days <= kDaysApart; ++days) {
        Append(places, byDate_, messages::DateText(day.PlusDays(days)));
      }
    });
  }
  std::vector<Match> matches;
  for (const auto place : InOrder(std::move(places))) {
    auto likeness = OfTransaction(row, records_[place]);
    if (likeness.score > 0) matches.push_back({place, std::move(likeness)});
  }
  return matches;
}

}  // namespace twqb
