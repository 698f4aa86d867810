#include "engine/NameLikeness.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "engine/PlainLetters.h"
#include "platform/EditDistance.h"
#include "platform/Text.h"

namespace twqb {

namespace {

// What says of a company what kind it is, and nothing of who it is.
constexpr std::array<std::string_view, 29> kSuffixes = {
    "ab",           "ag",  "bv", "cie",     "co",   "company", "corp", "corporation", "gmbh", "inc",
    "incorporated", "kg",  "lc", "limited", "llc",  "llp",     "lp",   "ltd",         "ltda", "nv",
    "oy",           "oyj", "pc", "plc",     "pllc", "pte",     "pty",  "sarl",        "srl"};

// What stands ahead of a person's name, or behind its comma.
constexpr std::array<std::string_view, 6> kTitles = {"dr", "miss", "mr", "mrs", "ms", "prof"};
constexpr std::string_view kArticle = "the";
// What joins words, and is left out or not.
constexpr std::string_view kAnd = "and";
constexpr std::array<std::string_view, 3> kJoints = {kAnd, "for", "of"};

// What tells two of one kind apart, as figures do.
constexpr std::array<std::string_view, 8> kOrdinals = {"jr", "sr", "ii", "iii", "iv", "vi", "vii", "viii"};

// Words that people cut short, each in one way. Such as mean several words, like "st", are not here.
struct ShortWord {
  std::string_view brief;
  std::string_view whole;
};
constexpr std::array<ShortWord, 20> kShortWords = {
    {{"assn", "association"},   {"assoc", "associates"},    {"bldg", "building"},   {"bldgs", "buildings"},
     {"bros", "brothers"},      {"constr", "construction"}, {"ctr", "center"},      {"dept", "department"},
     {"dist", "district"},      {"engrg", "engineering"},   {"govt", "government"}, {"hosp", "hospital"},
     {"intl", "international"}, {"mfg", "manufacturing"},   {"mgmt", "management"}, {"natl", "national"},
     {"props", "properties"},   {"svc", "service"},         {"svcs", "services"},   {"univ", "university"}}};

std::string Whole(const std::string& word) {
  const auto* const found = std::ranges::find(kShortWords, word, &ShortWord::brief);
  return found == kShortWords.end() ? word : std::string(found->whole);
}

bool IsSuffix(std::string_view word) { return std::ranges::find(kSuffixes, word) != kSuffixes.end(); }
bool IsOrdinal(std::string_view word) { return std::ranges::find(kOrdinals, word) != kOrdinals.end(); }

// Without what is a title or an article where it stands, and without what joins words.
std::vector<std::string> WithoutSmallWords(const std::vector<std::string>& words) {
  std::vector<std::string> left;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool isLast = i + 1 == words.size();
    const bool isArticle = words[i] == kArticle && (i == 0 || isLast);
    const bool isTitle = !isLast && std::ranges::find(kTitles, words[i]) != kTitles.end();
    const bool isJoint = std::ranges::find(kJoints, words[i]) != kJoints.end();
    if (!isArticle && !isTitle && !isJoint) left.push_back(words[i]);
  }
  return left;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(unsigned char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || IsDigit(static_cast<char>(c)) || c >= 0x80;
}

// "L.L.C." and "O'Hara" are one word each; any other mark ends one. "&" is a word of its own.
std::vector<std::string> WordsOf(std::string_view folded) {
  std::vector<std::string> words(1);
  for (std::size_t i = 0; i < folded.size(); ++i) {
    const char c = folded[i];
    if (IsLetter(static_cast<unsigned char>(c))) {
      words.back() += c;
    } else if (c == '&' || c == '+') {
      words.emplace_back(kAnd);
      words.emplace_back();
    } else if (c != '.' && c != '\'') {
      words.emplace_back();
    }
  }
  std::erase_if(words, [](const std::string& word) { return word.empty(); });
  return words;
}

// "Jackson & Co." is "Jackson".
std::vector<std::string> WithoutSuffixes(std::vector<std::string> words) {
  if (words.empty()) return words;
  const bool endsInSuffix = IsSuffix(words.back());
  std::erase_if(words, [](const std::string& word) { return IsSuffix(word); });
  if (endsInSuffix && !words.empty() && words.back() == kAnd) words.pop_back();
  return words;
}

// Whether a comma stands behind the first word: "Brown, John A."
bool IsTurnedRound(std::string_view folded) {
  const auto comma = folded.find(',');
  return comma != std::string_view::npos && WordsOf(folded.substr(0, comma)).size() == 1;
}

std::string FiguresOf(std::string_view text) {
  std::string figures;
  bool within = false;
  for (const char c : text) {
    if (!IsDigit(c)) {
      within = false;
      continue;
    }
    if (!within) figures += ' ';
    within = true;
    figures += c;
  }
  return figures;
}

// How many slips a name of that length may have.
std::size_t SlipsOf(std::size_t length) {
  constexpr std::size_t kShort = 5;
  constexpr std::size_t kLong = 12;
  if (length < kShort) return 0;
  return length < kLong ? 1 : 2;
}

constexpr int kScoreOfCase = 99;
constexpr int kScoreOfPunctuation = 97;
constexpr int kScoreOfMarks = 96;
constexpr int kScoreOfSuffix = 95;
constexpr int kScoreOfTitle = 94;
constexpr int kScoreOfShortWord = 93;
constexpr int kScoreOfOrder = 92;
constexpr int kScoreOfSlip = 88;
constexpr int kPointsOfSlip = 8;
constexpr int kScoreOfInitial = 78;

// Words that no slip of the pen makes of others: those of so few letters, and ordinals.
std::vector<std::string> TellingWords(const NameWords& name) {
  constexpr std::size_t kFewLetters = 2;
  std::vector<std::string> telling;
  std::ranges::copy_if(name.core, std::back_inserter(telling),
                       [](const std::string& word) { return IsOrdinal(word) || CharacterCount(word) <= kFewLetters; });
  return telling;
}

// In a word that is not long one slip is all there can be: "East" is not "West" misspelled, nor "northern" "southern".
bool HasSlipsInEachWord(const std::vector<std::string>& a, const std::vector<std::string>& b) {
  constexpr std::size_t kLong = 9;
  if (a.size() != b.size()) return true;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const bool isShort = std::min(CharacterCount(a[i]), CharacterCount(b[i])) < kLong;
    if (isShort && EditDistance(a[i], b[i]) > 1) return false;
  }
  return true;
}

std::size_t SlipsBetween(std::string_view a, std::string_view b, const std::vector<std::string>& words,
                         const std::vector<std::string>& others) {
  constexpr std::size_t kTooMany = 100;
  return HasSlipsInEachWord(words, others) ? EditDistance(a, b) : kTooMany;
}

NameLikeness Misspelled(const NameWords& a, const NameWords& b) {
  const auto longest = std::max(a.plainCore.size(), b.plainCore.size());
  const auto slips = SlipsOf(std::min(CharacterCount(a.plainCore), CharacterCount(b.plainCore)));
  const auto difference = longest - std::min(a.plainCore.size(), b.plainCore.size());
  constexpr std::size_t kBytesOfCharacter = 4;
  if (slips == 0 || difference > slips * kBytesOfCharacter) return {};
  if (FiguresOf(a.sorted) != FiguresOf(b.sorted) || TellingWords(a) != TellingWords(b)) return {};
  const auto distance = std::min(SlipsBetween(a.plainCore, b.plainCore, a.inOrder, b.inOrder),
                                 SlipsBetween(a.sorted, b.sorted, a.core, b.core));
  if (distance > slips) return {};
  return {NameDifference::Spelling, kScoreOfSlip - kPointsOfSlip * (static_cast<int>(distance) - 1)};
}

bool IsInitial(std::string_view word) { return word.size() == 1 && !IsDigit(word.front()); }

// "J. Brown" and "John Brown", "John A. Brown" and "John Brown": what is left of both without the words that they have
// in common is an initial and the name of it, or an initial alone that stands behind the first name of two.
NameLikeness DiffersInInitial(const NameWords& a, const NameWords& b) {
  constexpr std::size_t kFewLetters = 2;
  std::vector<std::string> common;
  std::vector<std::string> ofA;
  std::vector<std::string> ofB;
  std::ranges::set_intersection(a.core, b.core, std::back_inserter(common));
  std::ranges::set_difference(a.core, common, std::back_inserter(ofA));
  std::ranges::set_difference(b.core, common, std::back_inserter(ofB));
  const auto isName = [](const std::string& word) { return CharacterCount(word) > kFewLetters; };
  const auto names = std::ranges::count_if(common, isName);
  const NameLikeness likeness = {NameDifference::Initial, kScoreOfInitial};
  if (ofA.size() == 1 && ofB.size() == 1 && names == 1) {
    const auto& brief = ofA.front().size() < ofB.front().size() ? ofA.front() : ofB.front();
    const auto& whole = ofA.front().size() < ofB.front().size() ? ofB.front() : ofA.front();
    return IsInitial(brief) && isName(whole) && whole.starts_with(brief) ? likeness : NameLikeness();
  }
  if (ofA.size() + ofB.size() != 1 || names != 2 || common.size() != 2) return {};
  const auto& longer = ofA.empty() ? b : a;
  const auto& initial = ofA.empty() ? ofB.front() : ofA.front();
  const auto& behindFirstName = longer.isTurnedRound ? longer.inOrder[2] : longer.inOrder[1];
  return IsInitial(initial) && behindFirstName == initial ? likeness : NameLikeness();
}

// Wherever a blank stands: "O Hara" is "OHara". Figures are not joined, "1 12" is not "11 2".
bool AreTheSame(std::string_view a, std::string_view b) {
  if (a == b) return true;
  const auto together = [](std::string_view text) {
    std::string letters(text);
    std::erase(letters, ' ');
    return letters;
  };
  return FiguresOf(a) == FiguresOf(b) && together(a) == together(b);
}

NameLikeness LikenessOf(const NameWords& a, const NameWords& b) {
  if (a.plain.empty() || b.plain.empty()) return {};
  if (a.plain == b.plain || Join(a.words, "") == Join(b.words, "")) {
    return {NameDifference::Punctuation, kScoreOfPunctuation};
  }
  if (AreTheSame(a.titled, b.titled)) return {NameDifference::CompanySuffix, kScoreOfSuffix};
  if (AreTheSame(a.asWritten, b.asWritten)) return {NameDifference::Title, kScoreOfTitle};
  if (AreTheSame(a.plainCore, b.plainCore)) return {NameDifference::ShortWord, kScoreOfShortWord};
  if (a.sorted == b.sorted) return {NameDifference::WordOrder, kScoreOfOrder};
  const auto misspelled = Misspelled(a, b);
  return misspelled.score > 0 ? misspelled : DiffersInInitial(a, b);
}

}  // namespace

std::string_view NameOf(NameDifference difference) {
  switch (difference) {
    case NameDifference::None:
      return "the same name";
    case NameDifference::Case:
      return "the same name but for capital letters";
    case NameDifference::Punctuation:
      return "the same name but for punctuation";
    case NameDifference::Marks:
      return "the same name but for marks on letters";
    case NameDifference::CompanySuffix:
      return "the same name but for the kind of company";
    case NameDifference::Title:
      return "the same name but for a title or a small word";
    case NameDifference::ShortWord:
      return "the same name but for words cut short";
    case NameDifference::WordOrder:
      return "the same words in another order";
    case NameDifference::Spelling:
      return "almost the same spelling";
    case NameDifference::Initial:
      return "the same name but for an initial";
    case NameDifference::Other:
      break;
  }
  return "another name";
}

NameWords::NameWords(std::string_view folded) : words(WordsOf(folded)), isTurnedRound(IsTurnedRound(folded)) {
  auto names = WithoutSuffixes(words);
  // A company that is called by nothing else.
  if (names.empty()) names = words;
  plain = Join(words, " ");
  titled = Join(names, " ");
  inOrder = WithoutSmallWords(names);
  if (inOrder.empty()) inOrder = names;
  asWritten = Join(inOrder, " ");
  for (auto& word : inOrder) word = Whole(word);
  plainCore = Join(inOrder, " ");
  core = inOrder;
  std::ranges::sort(core);
  sorted = Join(core, " ");
}

ComparedName::ComparedName(std::string_view name) : text(Trim(name)), folded(FoldCase(text)), own(folded) {
  if (!HasMarkedLetters(folded)) return;
  unmarked.emplace_back(WithoutMarks(folded));
  unmarked.emplace_back(WithMarksSpelled(folded));
}

NameLikeness LikenessOf(const ComparedName& a, const ComparedName& b) {
  if (a.text.empty() || b.text.empty()) return {};
  if (a.text == b.text) return {NameDifference::None, 100};
  if (a.folded == b.folded) return {NameDifference::Case, kScoreOfCase};
  auto best = LikenessOf(a.own, b.own);
  for (std::size_t i = 0; i < std::max(a.unmarked.size(), b.unmarked.size()); ++i) {
    auto likeness = LikenessOf(a.unmarked.empty() ? a.own : a.unmarked[i], b.unmarked.empty() ? b.own : b.unmarked[i]);
    if (likeness.score > kScoreOfMarks) likeness = {NameDifference::Marks, kScoreOfMarks};
    if (likeness.score > best.score) best = likeness;
  }
  return best;
}

std::vector<std::uint64_t> BlocksOf(const ComparedName& name) {
  std::vector<std::uint64_t> blocks;
  const auto add = [&](std::string_view kind, std::string_view text) {
    if (!text.empty()) blocks.push_back(HashOf(std::string(kind) + std::string(text)));
  };
  const auto addWords = [&](const NameWords& words) {
    auto together = words.plainCore;
    std::erase(together, ' ');
    add("c", together);
    add("c", Join(words.core, ""));
    // One slip anywhere: both have the text in common that is left when a letter of the one, or of each, is dropped.
    for (std::size_t i = 0; i < together.size(); ++i) {
      auto shorter = together;
      shorter.erase(i, 1);
      add("c", shorter);
    }
    // More of them in one word, or an initial: the others are the same.
    if (words.core.size() > 1) add("w", Join(words.core, " ") + " ");
    for (std::size_t left = 0; left < words.core.size() && words.core.size() > 1; ++left) {
      std::string others;
      for (std::size_t i = 0; i < words.core.size(); ++i) {
        if (i != left) others += words.core[i] + " ";
      }
      add("w", others);
    }
  };
  // Of punctuation alone nothing else is left.
  add("f", name.folded);
  addWords(name.own);
  for (const auto& words : name.unmarked) addWords(words);
  std::ranges::sort(blocks);
  blocks.erase(std::unique(blocks.begin(), blocks.end()), blocks.end());
  return blocks;
}

}  // namespace twqb
