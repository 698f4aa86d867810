// How much alike two names are: the same, or the same but for case, punctuation, marks on letters, what kind of company
// it is, a title, a small word, words cut short, the order of words, a slip of the pen, or an initial.
//
// Pure text. Which names of a row and of a record are compared is a table's affair (Likeness in engine/Table.h).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace twqb {

// By what two names differ at most, from the least on.
enum class NameDifference : std::uint8_t {
  None,
  Case,
  Punctuation,
  Marks,
  CompanySuffix,
  Title,
  ShortWord,
  WordOrder,
  Spelling,
  Initial,
  Other
};

// For people: "spelled otherwise".
[[nodiscard]] std::string_view NameOf(NameDifference difference);

// The words of a name, of which some tell less than others.
struct NameWords {
  explicit NameWords(std::string_view folded);

  std::vector<std::string> words;    // without punctuation
  bool isTurnedRound = false;        // a comma stands behind the first of them
  std::vector<std::string> core;     // without suffixes, titles and small words, each whole, in the alphabet's order
  std::vector<std::string> inOrder;  // the same in its own order
  std::string plain;                 // the words with a blank between
  std::string titled;                // without company suffixes
  std::string asWritten;             // without titles and small words, too
  std::string plainCore;             // of the whole words in their own order
  std::string sorted;                // and in that of the alphabet
};

// A name as it is compared.
struct ComparedName {
  explicit ComparedName(std::string_view name);

  std::string text;    // without blanks around it
  std::string folded;  // without regard to case
  NameWords own;
  std::vector<NameWords> unmarked;  // where letters have marks: without these, and with others in their place
};

struct NameLikeness {
  NameDifference difference = NameDifference::Other;
  int score = 0;  // of 100
};

// Names that differ in a figure are never misspelled, nor in what else tells two of a kind apart: the second phase is
// not the first one, "Lot A" not "Lot B", and the junior not the senior.
[[nodiscard]] NameLikeness LikenessOf(const ComparedName& a, const ComparedName& b);

// Two names that are alike have one of these in common, but for those with several slips in one word, or with one in
// each of two. There are about as many as the name has letters.
[[nodiscard]] std::vector<std::uint64_t> BlocksOf(const ComparedName& name);

}  // namespace twqb
