// The records of a read that no row is linked to, in an order in which those that are like a row are found without a
// look at the others.
//
// It says how much a record is like the request that a row's send would make. Which records a table's own rules leave
// of them, and which pairs come of it, is TwinFinder's affair.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/NameLikeness.h"
#include "engine/QuickBooksRead.h"
#include "engine/Table.h"
#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

// What a row would be in QuickBooks.
struct RowFace {
  std::string name;                 // that the send gives its twin; of a list
  std::vector<std::string> called;  // what else it is called
  std::vector<FieldText> values;    // of the request

  // The value at a path; nothing where the request has none.
  [[nodiscard]] const FieldText* Find(std::string_view path) const;
  // Its text, or "".
  [[nodiscard]] std::string_view At(std::string_view path) const;
};

struct Likeness {
  int score = 0;          // of 100
  bool isExact = false;   // nothing tells the two apart that tells any two apart
  bool isByName = false;  // by the name that the send would give the twin
  std::string how;        // "the same number and date"
};

class TwinPool {
 public:
  TwinPool(const QuickBooksRead& read, const Called& called, std::vector<Record> records);

  [[nodiscard]] bool IsEmpty() const { return entries_.empty(); }
  [[nodiscard]] const std::vector<Record>& Records() const { return records_; }

  struct Match {
    std::size_t place;  // of Records
    Likeness likeness;
  };
  [[nodiscard]] std::vector<Match> Like(const RowFace& row) const;

 private:
  struct Entry {
    std::vector<ComparedName> names;
    std::vector<ComparedName> fullNames;  // what it is called whatever it stands below
    std::string parent;
    std::string number;
    std::string date;
  };

  [[nodiscard]] std::vector<Match> LikeList(const RowFace& row) const;
  [[nodiscard]] Likeness OfList(const RowFace& row, const std::vector<ComparedName>& names, std::size_t place) const;
  // What of the names that both have is another one, in words; "" where none is.
  [[nodiscard]] std::string_view OtherName(const RowFace& row, const std::vector<ComparedName>& names,
                                           std::size_t place) const;
  [[nodiscard]] std::vector<Match> LikeTransaction(const RowFace& row) const;

  const QuickBooksRead& read_;
  const Called& called_;
  std::vector<Record> records_;
  std::vector<Entry> entries_;
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> blocks_;  // of lists
  std::map<std::string, std::vector<std::uint32_t>, std::less<>> byNumber_;
  std::map<std::string, std::vector<std::uint32_t>, std::less<>> byDate_;
};

}  // namespace twqb
