#include "adapters/scripted/Answers.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "platform/Text.h"

namespace twqb {

namespace {

using Word = Answer::Word;

constexpr std::string_view kAllowed =
    "expected yes, no, ok, retry, cancel, skip, file PATH, vendor TEXT, default ANSWER or cancel after N";
constexpr std::string_view kAllowedDefaults = "expected default yes, no, ok, retry, cancel, skip or vendor TEXT";

struct Spelling {
  std::string_view name;
  Word word;
};

constexpr std::array kPlainWords{Spelling{"ok", Word::Ok},         Spelling{"yes", Word::Yes},
                                 Spelling{"no", Word::No},         Spelling{"retry", Word::Retry},
                                 Spelling{"cancel", Word::Cancel}, Spelling{"skip", Word::Skip}};
constexpr std::array kWordsWithText{Spelling{"file", Word::File}, Spelling{"vendor", Word::Vendor}};

template <std::size_t N>
std::optional<Word> FindWord(const std::array<Spelling, N>& spellings, std::string_view name) {
  const auto found = std::ranges::find_if(spellings, [&](const Spelling& s) { return SameName(s.name, name); });
  if (found == spellings.end()) return std::nullopt;
  return found->word;
}

template <std::size_t N>
std::optional<std::string_view> FindName(const std::array<Spelling, N>& spellings, Word word) {
  const auto found = std::ranges::find_if(spellings, [&](const Spelling& s) { return s.word == word; });
  if (found == spellings.end()) return std::nullopt;
  return found->name;
}

// The first word and what stands behind it, without outer blanks.
std::pair<std::string, std::string> CutFirstWord(std::string_view line) {
  const auto end = line.find(' ');
  if (end == std::string_view::npos) return {std::string(line), {}};
  return {std::string(line.substr(0, end)), Trim(line.substr(end))};
}

std::optional<int> ReadCounter(std::string_view text) {
  int number = 0;
  const auto* end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (failure != std::errc() || stop != end || number < 1) return std::nullopt;
  return number;
}

// Whether one question offers both, so that only one of them can be its default.
bool AnswerTheSame(Word a, Word b) {
  const auto areChoices = [&](Word x, Word y) { return (a == x && b == y) || (a == y && b == x); };
  return a == b || areChoices(Word::Yes, Word::No) || areChoices(Word::Retry, Word::Cancel);
}

class Parser {
 public:
  void ReadLine(int number, const std::string& line) {
    number_ = number;
    line_ = line;
    const auto [first, rest] = CutFirstWord(line);
    if (SameName(first, "default")) return ReadDefault(rest);
    if (SameName(first, "cancel") && !rest.empty()) return ReadPress(rest);
    if (const auto word = FindWord(kWordsWithText, first); word && !rest.empty()) {
      answers_.inOrder.push_back({.word = *word, .text = rest});
      return;
    }
    const auto word = FindWord(kPlainWords, line);
    if (!word) Refuse(kAllowed);
    if (*word != Word::Ok) answers_.inOrder.push_back({.word = *word});
  }

  [[nodiscard]] Answers Take() { return std::move(answers_); }

 private:
  void ReadDefault(const std::string& text) {
    const auto [first, rest] = CutFirstWord(text);
    const bool isVendor = FindWord(kWordsWithText, first) == Word::Vendor && !rest.empty();
    const auto word = isVendor ? Word::Vendor : FindWord(kPlainWords, text);
    if (!word) Refuse(kAllowedDefaults);
    for (const auto& other : answers_.defaults) {
      if (AnswerTheSame(*word, other.word)) Refuse("another default answers the same questions");
    }
    answers_.defaults.push_back({.word = *word, .text = isVendor ? rest : std::string()});
  }

  void ReadPress(const std::string& rest) {
    const auto [after, counter] = CutFirstWord(rest);
    const auto number = ReadCounter(counter);
    if (!SameName(after, "after") || !number) Refuse("expected cancel, or cancel after N with N from 1");
    answers_.cancelAfter.push_back(*number);
  }

  [[noreturn]] void Refuse(std::string_view problem) const { throw AnswersError(number_, line_, problem); }

  Answers answers_;
  int number_ = 0;
  std::string line_;
};

}  // namespace

std::string ToText(const Answer& answer) {
  if (const auto name = FindName(kPlainWords, answer.word)) return std::string(*name);
  return fmt::format("{} {}", FindName(kWordsWithText, answer.word).value_or(""), answer.text);
}

AnswersError::AnswersError(int line, std::string text, std::string_view problem)
    : std::runtime_error(fmt::format("line {}: \"{}\": {}", line, text, problem)),
      line_(line),
      text_(std::move(text)) {}

Answers ParseAnswers(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());

  Parser parser;
  int number = 0;
  for (const auto& raw : Split(ReplaceAll(ReplaceAll(text, kCrLf, "\n"), "\t", " "), '\n')) {
    ++number;
    const auto line = Trim(raw);
    if (!line.empty() && !line.starts_with('#')) parser.ReadLine(number, line);
  }
  return parser.Take();
}

}  // namespace twqb
