// The queries of a read, and the copy of their answers: the two routines that walk a read's description.
//
// Sits below RecordReader, which sends the query and reads the answer's status. Nothing here talks to QuickBooks.
#pragma once

#include <cstdint>

#include "engine/QuickBooksRead.h"
#include "engine/RecordReader.h"

namespace twqb {

// Appends the read's requests and fills them. An error is told, and they go out with what was set until then.
void ApplyQBFilters(const QuickBooksRead& read, const ReadFilters& filters, MsgSetRequest& messageSet);

enum class Into : std::uint8_t { NewList, ListInHand };

// Takes the answer's records over, each under its identifier. An error is told, unloads the progress form and leaves
// the records that were copied until then.
void GetQBRecordsInCollectionObject(const QuickBooksRead& read, const ReadFilters& filters, const Response& response,
                                    Into into, RecordList& records, const Run& run);

}  // namespace twqb
