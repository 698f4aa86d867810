// How much alike two names are: the same, or the same but for case, punctuation, what kind of company it is, words cut
// short, the order of words, or a slip of the pen.
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
  CompanySuffix,
  ShortWord,
  WordOrder,
  Spelling,
  Other
};

// For people: "spelled otherwise".
[[nodiscard]] std::string_view NameOf(NameDifference difference);

// A name as it is compared.
struct ComparedName {
  explicit ComparedName(std::string_view name);

  std::string text;                // without blanks around it
  std::string folded;              // without regard to case
  std::vector<std::string> words;  // of that, without punctuation
  std::vector<std::string> core;   // the same without company suffixes, each whole, in the order of the alphabet
  std::string asWritten;           // the same in its own order, cut short as it may be
  std::string plain;               // the words with a blank between
  std::string plainCore;           // the same of the core in its own order
  std::string sorted;              // and in that of the alphabet
};

struct NameLikeness {
  NameDifference difference = NameDifference::Other;
  int score = 0;  // of 100
};

// Names that differ in a figure are never alike: the second phase is not the first one misspelled.
[[nodiscard]] NameLikeness LikenessOf(const ComparedName& a, const ComparedName& b);

// Two names that are alike have one of these in common, but for those with several slips in one word, or with one in
// each of two. There are about as many as the name has letters.
[[nodiscard]] std::vector<std::uint64_t> BlocksOf(const ComparedName& name);

}  // namespace twqb
