// In what linked pairs differ, as transfers see them: found by transfers on copies, in which first the one side and
// then the other wins whatever their dates.
//
// What a send would write is what differs for a send, its cuts and conversions applied; so for a get. Nothing of the
// user's is changed. What is printed of it is DiffReport's.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/options/Options.h"
#include "cli/preview/Preview.h"
#include "twqb/enTables.h"

namespace twqb::cli {

// What a transfer that lets the newer side win does with a pair.
enum class Takes : std::uint8_t {
  No,            // it leaves the pair alone
  Yes,           // it writes its side over the other
  AddsOnceMore,  // a send, for the twin can't get its name
  Refused,       // QuickBooks would not have it, or an error was told
  Unknown,       // it does not come to it
};

struct DiffPair {
  std::int32_t table = 0;
  Standing standing = Standing::Record;
  std::string key;         // in BillingDb; empty where nobody told it
  std::string identifier;  // QuickBooks'
  std::string name;        // QuickBooks' full name or number; empty where nothing differs for a send
  Takes send = Takes::Unknown;
  std::string whySend;
  Takes get = Takes::Unknown;
  std::string whyGet;
  // Before: what QuickBooks has. After: what a send makes of the row.
  std::vector<FieldChange> inQuickBooks;
  // Rows of BillingDb. Before: what they have. After: what a get makes of the record. NULL, empty and zero are one
  // here, and in round trips. Of a pair that a send writes, without what a get would write behind that send, too: that
  // is of the round trip.
  std::vector<RecordChange> inBilling;

  [[nodiscard]] bool Differs() const { return !inQuickBooks.empty() || !inBilling.empty(); }
};

// A row whose link leads to nothing that QuickBooks has.
struct DeadLink {
  std::int32_t table = 0;
  std::string key;
  std::string identifier;
};

// A table with a link of which nothing is known: QuickBooks does not tell records to which its rows may be linked.
struct ClosedTable {
  std::int32_t table = 0;
  std::string kind;  // "TimeTracking"
  std::int32_t code = 0;
  std::string answer;  // in QuickBooks' words
};

// A row that a send, and a get behind it, would make another one.
struct RoundTrip {
  std::int32_t table = 0;
  RecordChange row;
};

struct DiffSums {
  std::int32_t table = 0;
  std::int64_t linked = 0;  // rows
  std::int64_t differ = 0;
  std::int64_t lines = 0;                      // of documents, that differ
  std::optional<std::int64_t> dead = 0;        // nothing: it is not known
  std::optional<std::int64_t> roundTrips = 0;  // likewise: the transfers did not come to their end
};

struct Difference {
  std::vector<DiffPair> pairs;  // those that differ
  std::vector<DeadLink> deadLinks;
  std::vector<ClosedTable> closed;  // without any of deadLinks
  std::vector<RoundTrip> roundTrips;
  std::vector<DiffSums> sums;         // of each table that has any
  std::vector<std::string> troubles;  // of transfers that could not be run to their end, in sentences
};

// Of one table or all, or of the one row of that key, or link. Raises UsageError, as a transfer does, and when nothing
// of that key is linked.
[[nodiscard]] Difference FindDifference(const Options& options, enTables table, const std::optional<std::string>& id);

}  // namespace twqb::cli
