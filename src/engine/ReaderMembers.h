// What each table adds to the reader: a filter routine that fills the query, a copy routine that takes the answer over.
#pragma once

#include <cstdint>

#include "engine/RecordReader.h"

namespace twqb {

struct ReaderMember {
  std::int32_t table;
  void (*applyFilters)(const ReadFilters& filters, MsgSetRequest& messageSet);
  void (*copyRecords)(const Response& response, RecordList& records);
};

// nullptr for a table that has none.
[[nodiscard]] const ReaderMember* FindReaderMember(std::int32_t table);

void ApplyQBClientFilters(const ReadFilters& filters, MsgSetRequest& messageSet);
void GetQBClientRecordsInCollectionObject(const Response& response, RecordList& records);

}  // namespace twqb
