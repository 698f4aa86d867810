// BillingDb and the company file as they stand on disk, read with handles of their own: neither the library nor an
// adapter's connection has a part in it.
//
// Identifiers of QuickBooks are replaced by what they lead to, so that two runs that made the same records under other
// identifiers compare equal.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Readings.h"

namespace twqb::sweep {

// How many rows a get makes of one record.
enum class RowsOfARecord : std::uint8_t { One, Several };

// A table of BillingDb whose rows have twins.
struct LinkedTable {
  std::string_view name;
  std::string_view keyColumn;
  // Written by a statement of its own, behind the one that writes the link.
  std::string_view stampColumn;
  // A field of the twin that carries the counter of a name in use, beside its name; empty: none does.
  std::string_view countedField = {};
  // A key that the link makes for a new row: no two runs make the same; empty: keys are given.
  std::string_view madeKeyColumn = {};
  // A SELECT of the rows, where not all of their columns are the same in two runs, or the link is another table's;
  // empty: all columns of the table.
  std::string_view select = {};
  RowsOfARecord perRecord = RowsOfARecord::One;
};

inline constexpr std::string_view kLinkColumn = "QBLinkID";
// What a link that leads to a record reads as: this and the record's name in the snapshot.
inline constexpr std::string_view kLeadsTo = "-> ";
// Stands behind that name where a link leads to a line of the record, ahead of the line's place.
inline constexpr std::string_view kLine = ", line ";

// What a key reads as that the link has made.
inline constexpr std::string_view kMadeKey = "(made)";

struct Snapshot {
  std::map<std::string, Fields> rows;  // "Client/ACME1"; with a counter behind it where an older one has the same key
  // "Customer/Acme Tools (ACME1)": the full name; "TimeTracking/Plans", "Invoice/1044": the notes or the number of a
  // transaction, which has no name, or else what its first line says; with a counter behind them where an older one has
  // the same.
  std::map<std::string, Fields> records;
  std::vector<std::string> damage;  // what the files themselves are wrong in; empty: both are sound
};

// Of `billing.db` and `company.twq` in `folder`, which nobody is writing to.
[[nodiscard]] Snapshot TakeSnapshot(const std::string& folder, const std::vector<LinkedTable>& tables);

// Whether what is wrong is a journal beside a file.
[[nodiscard]] bool TellsOfJournal(std::string_view damage);

// The record that a link which leads somewhere leads to, itself or a line of its; "" for another link.
[[nodiscard]] std::string RecordOf(std::string_view link);

// The rows whose links lead to the record.
[[nodiscard]] std::set<std::string> RowsOf(const Snapshot& snapshot, std::string_view record);

// Without the columns that hold when something was written.
[[nodiscard]] Fields WithoutTimes(Fields fields, const std::vector<LinkedTable>& tables);

}  // namespace twqb::sweep
