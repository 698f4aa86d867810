// A read of QuickBooks as a table describes it: which queries it makes, how the filters of a run narrow them, and what
// is taken over of their answers.
//
// A part of a table's description; RecordReader carries it out.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "services/Errors.h"

namespace twqb {

// What the pair of names narrows a query of transactions to.
enum class NamePair : std::uint8_t { NotUsed, Entities, ReferenceNumbers };

// What a query of transactions has and one of a list has not.
struct TransactionQuery {
  bool includesLineItems = true;
  bool takesTransactionDates = false;  // beside the modified dates
  NamePair names = NamePair::NotUsed;
  std::string_view identifierChoice = {};  // where the identifier goes; empty: into the query's own choice
};

enum class Keeps : std::uint8_t { Everything, Customers, Jobs };

// What a read does with the dates of transactions and the wish for active records that a run brings.
enum class OfTheRun : std::uint8_t {
  Taken,
  ActiveLookedUp,  // active records as the table's own setting says, and no dates of transactions
};

struct QuickBooksRead {
  std::string_view filterRoutine;                    // the names under which errors are told
  std::string_view copyRoutine;                      //
  ErrorReport errors = ErrorReport::ErrorHandler;    //
  std::array<std::string_view, 3> requests;          // those behind the first ask for further kinds of the same
  std::string_view choice;                           // in the request: identifiers or a filter
  std::optional<TransactionQuery> transaction = {};  // not set: the query of a list
  std::string_view readingText = {};                 // empty: the copy does no form work
  std::size_t readingFrom = 3;                       // an answer of fewer records shows no progress
  Keeps keeps = Keeps::Everything;
  OfTheRun ofTheRun = OfTheRun::Taken;
  // The name in the progress text and in the key of the setting for active records; left out: the table's own.
  std::string_view shownAs = {};

  [[nodiscard]] constexpr bool AsksForSeveralKinds() const { return !requests[1].empty(); }
};

// The same for each of its kinds. A transfer reads no further kind where the first one has no records, and passes over
// one that is refused; who takes what was not read for gone must not.
[[nodiscard]] inline std::vector<QuickBooksRead> EachKindOf(const QuickBooksRead& read) {
  std::vector<QuickBooksRead> reads;
  for (const auto request : read.requests) {
    if (request.empty()) continue;
    reads.push_back(read);
    reads.back().requests = {request};
  }
  return reads;
}

}  // namespace twqb
