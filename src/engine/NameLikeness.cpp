#include "engine/NameLikeness.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/EditDistance.h"
#include "platform/Text.h"

namespace twqb {

namespace {

// What says of a company what kind it is, and nothing of who it is.
constexpr std::array<std::string_view, 29> kSuffixes = {
    "ab",           "ag",  "bv", "cie",     "co",   "company", "corp", "corporation", "gmbh", "inc",
    "incorporated", "kg",  "lc", "limited", "llc",  "llp",     "lp",   "ltd",         "ltda", "nv",
    "oy",           "oyj", "pc", "plc",     "pllc", "pte",     "pty",  "sarl",        "srl"};

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
    } else if (c == '&') {
      words.emplace_back("and");
      words.emplace_back();
    } else if (c != '.' && c != '\'') {
      words.emplace_back();
    }
  }
  std::erase_if(words, [](const std::string& word) { return word.empty(); });
  return words;
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
constexpr int kScoreOfSuffix = 95;
constexpr int kScoreOfShortWord = 93;
constexpr int kScoreOfOrder = 92;
constexpr int kScoreOfSlip = 88;
constexpr int kPointsOfSlip = 8;

NameLikeness Misspelled(const ComparedName& a, const ComparedName& b) {
  const auto longest = std::max(a.plainCore.size(), b.plainCore.size());
  const auto slips = SlipsOf(std::min(CharacterCount(a.plainCore), CharacterCount(b.plainCore)));
  const auto difference = longest - std::min(a.plainCore.size(), b.plainCore.size());
  constexpr std::size_t kBytesOfCharacter = 4;
  if (slips == 0 || difference > slips * kBytesOfCharacter) return {};
  if (FiguresOf(a.sorted) != FiguresOf(b.sorted)) return {};
  const auto distance = std::min(EditDistance(a.plainCore, b.plainCore), EditDistance(a.sorted, b.sorted));
  if (distance > slips) return {};
  return {NameDifference::Spelling, kScoreOfSlip - kPointsOfSlip * (static_cast<int>(distance) - 1)};
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
    case NameDifference::CompanySuffix:
      return "the same name but for the kind of company";
    case NameDifference::ShortWord:
      return "the same name but for words cut short";
    case NameDifference::WordOrder:
      return "the same words in another order";
    case NameDifference::Spelling:
      return "almost the same spelling";
    case NameDifference::Other:
      break;
  }
  return "another name";
}

ComparedName::ComparedName(std::string_view name) : text(Trim(name)), folded(FoldCase(text)), words(WordsOf(folded)) {
  for (const auto& word : words) {
    if (!IsSuffix(word)) core.push_back(word);
  }
  // A company that is called by nothing else.
  if (core.empty()) core = words;
  plain = Join(words, " ");
  asWritten = Join(core, " ");
  for (auto& word : core) word = Whole(word);
  plainCore = Join(core, " ");
  std::ranges::sort(core);
  sorted = Join(core, " ");
}

NameLikeness LikenessOf(const ComparedName& a, const ComparedName& b) {
  if (a.text.empty() || b.text.empty()) return {};
  if (a.text == b.text) return {NameDifference::None, 100};
  if (a.folded == b.folded) return {NameDifference::Case, kScoreOfCase};
  if (a.plain.empty() || b.plain.empty()) return {};
  if (a.plain == b.plain || Join(a.words, "") == Join(b.words, "")) {
    return {NameDifference::Punctuation, kScoreOfPunctuation};
  }
  if (a.asWritten == b.asWritten) return {NameDifference::CompanySuffix, kScoreOfSuffix};
  if (a.plainCore == b.plainCore) return {NameDifference::ShortWord, kScoreOfShortWord};
  if (a.sorted == b.sorted) return {NameDifference::WordOrder, kScoreOfOrder};
  return Misspelled(a, b);
}

std::vector<std::uint64_t> BlocksOf(const ComparedName& name) {
  std::vector<std::uint64_t> blocks;
  const auto add = [&](std::string_view kind, std::string_view text) {
    if (!text.empty()) blocks.push_back(HashOf(std::string(kind) + std::string(text)));
  };
  // Of punctuation alone nothing else is left.
  add("f", name.folded);
  auto together = name.plainCore;
  std::erase(together, ' ');
  add("c", together);
  add("c", Join(name.core, ""));
  // One slip anywhere: both have the text in common that is left when a letter of the one, or of each, is dropped.
  for (std::size_t i = 0; i < together.size(); ++i) {
    auto shorter = together;
    shorter.erase(i, 1);
    add("c", shorter);
  }
  // More of them in one word: the others are the same.
  for (std::size_t left = 0; left < name.core.size() && name.core.size() > 1; ++left) {
    std::string others;
    for (std::size_t i = 0; i < name.core.size(); ++i) {
      if (i != left) others += name.core[i] + " ";
    }
    add("w", others);
  }
  std::ranges::sort(blocks);
  blocks.erase(std::unique(blocks.begin(), blocks.end()), blocks.end());
  return blocks;
}

}  // namespace twqb
