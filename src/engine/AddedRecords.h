// What QuickBooks has of an addition whose outcome says no more than that it was carried out: the record that was
// added, found by what the row's request says.
//
// Reads QuickBooks and the links of BillingDb, and writes nothing. What is done about the record is LostAdditions' and
// the tables' affair.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Table.h"
#include "messages/Schema.h"
#include "platform/Date.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// Whether a request was carried out: statuses below a thousand are those of work that was done, with a warning or
// without.
[[nodiscard]] bool IsCarriedOut(const Response& response);
// The ListID of a list's record, the TxnID of a transaction.
[[nodiscard]] std::string IdentifierOf(const Record& record);

// The records that agree with the request that the send makes of the row, and that no row of the table `linkedIn` is
// linked to; of an addition that is not certain, none that is older than this session.
//
// Of a list: those of the name, below the same parent. Of transactions: those of the same day, person and number, as
// far as the request has them.
[[nodiscard]] std::vector<Record> UnlinkedRecordsLike(const LostAddition& lost, std::string_view linkedIn,
                                                      const QuickBooksRead& read, const RequestField& request,
                                                      std::string_view name = {});

// The field of a record as text, "" where it stands there without one; nothing where this kind of record has none.
[[nodiscard]] std::optional<std::string> TextAt(const Record& record, std::string_view path);
// Whether two texts of a field of that type mean the same: of numbers and spans of time how they are written does not
// count. A reference number or a zip code is a text, where "0012" is not "12".
[[nodiscard]] bool MeanTheSame(messages::Type type, std::string_view a, std::string_view b);

// All that a read finds, active or not, of every kind that it asks for.
[[nodiscard]] std::vector<Record> AllRecords(const QuickBooksRead& read, QBSessionManager& session);
// The transactions of those days.
[[nodiscard]] std::vector<Record> RecordsOfDays(const QuickBooksRead& read, Date from, Date to,
                                                QBSessionManager& session);

// Whether a record has what a request says at those paths, and nothing where it says nothing.
[[nodiscard]] bool SaysTheSame(const Record& record, const RequestField& request,
                               std::span<const std::string_view> paths);

// What QuickBooks has under that identifier; nothing where it has nothing.
[[nodiscard]] Record RecordOf(const QuickBooksRead& read, std::string_view identifier, QBSessionManager& session);

// The record that was added for a row: the outcome's, or else the one like the row's request. `taken` is how the row
// ends once that is written; `record` is nothing where there is nothing to link it to.
struct AddedRecord {
  TakenUp taken;
  Record record;
};
[[nodiscard]] AddedRecord FindAdded(const LostAddition& lost, std::string_view link, const QuickBooksRead& read,
                                    const std::function<std::vector<Record>()>& recordsLike);

}  // namespace twqb
