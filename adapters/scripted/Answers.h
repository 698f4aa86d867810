// An answers file: what a person would say at each question of a run, written down beforehand.
//
// One answer a line, in order: `yes`, `no`, `retry`, `cancel`, `skip`, `file PATH`, `vendor TEXT`. `ok` may be written
// for a box with only OK, which needs none and takes none. `default ANSWER` answers what is not answered by then, the
// first that a question offers: a vendor who is not among those to choose from leaves a form to `default skip`.
// `cancel after N` presses Cancel. Blank lines and lines that begin with "#" are passed over; words are read in any
// case. Reads text alone: which answer goes to which question is the scripted desk's.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace twqb {

struct Answer {
  enum class Word : std::uint8_t { Ok, Yes, No, Retry, Cancel, Skip, File, Vendor };
  Word word = Word::Ok;
  std::string text = {};  // the path or the vendor

  friend bool operator==(const Answer&, const Answer&) = default;
};

struct Answers {
  std::vector<Answer> inOrder;   // without `ok`
  std::vector<Answer> defaults;  // no two that answer the same
  std::vector<int> cancelAfter;  // record counters, each 1 or more, in the order of the file
};

// The line as it would be written: "vendor V1".
[[nodiscard]] std::string ToText(const Answer& answer);

// A line that is none of an answers file.
class AnswersError : public std::runtime_error {
 public:
  // `problem` says what is wrong or allowed.
  AnswersError(int line, std::string text, std::string_view problem);

  [[nodiscard]] int line() const noexcept { return line_; }  // from 1
  [[nodiscard]] const std::string& text() const noexcept { return text_; }

 private:
  int line_;
  std::string text_;
};

// Reads a whole file, lines ended by LF or CR LF. Raises AnswersError.
[[nodiscard]] Answers ParseAnswers(std::string_view text);

}  // namespace twqb
