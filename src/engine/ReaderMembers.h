// What each table adds to the reader: a description of its query and of what is taken over of the answer, and the two
// routines that walk a description.
//
// Sits below RecordReader, which sends the query and reads the answer's status. Nothing here talks to QuickBooks.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "engine/RecordReader.h"
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

struct ReaderMember {
  std::int32_t table;                                // of enTables
  std::optional<std::int16_t> expenseLogKind = {};   // set: for this kind alone
  std::string_view filterRoutine;                    // the names under which errors are told
  std::string_view copyRoutine;                      //
  ErrorReport errors = ErrorReport::ErrorHandler;    //
  std::array<std::string_view, 3> requests;          // those behind the first ask for further kinds of the same
  std::string_view choice;                           // in the request: identifiers or a filter
  std::optional<TransactionQuery> transaction = {};  // not set: the query of a list
  std::string_view readingText = {};                 // empty: the copy does no form work
  std::size_t readingFrom = 3;                       // an answer of fewer records shows no progress
  Keeps keeps = Keeps::Everything;
};

// nullptr for a table, or a kind of the expense log, that has none.
[[nodiscard]] const ReaderMember* FindReaderMember(std::int32_t table, std::int16_t expenseLogKind);

// Appends the member's requests and fills them. An error is told, and they go out with what was set until then.
void ApplyQBFilters(const ReaderMember& member, const ReadFilters& filters, MsgSetRequest& messageSet);

enum class Into : std::uint8_t { NewList, ListInHand };

// Takes the answer's records over, each under its identifier. An error is told, unloads the progress form and leaves
// the records that were copied until then.
void GetQBRecordsInCollectionObject(const ReaderMember& member, const ReadFilters& filters, const Response& response,
                                    Into into, RecordList& records);

}  // namespace twqb
