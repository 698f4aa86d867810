// A look at what QuickBooks may have of a row that is not linked: the table goes the way of a lost addition (LostLink
// in engine/Table.h), makes the request that the send would make of the row, and asks here for records like it.
//
// So what a row would be in QuickBooks is worked out in one place. With a look nothing is asked of QuickBooks by the
// way, nothing is written, and the row ends as one that was not added.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/QuickBooksRead.h"
#include "platform/Date.h"
#include "platform/ado.h"
#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

// What a row is looked for by.
struct RowAsSent {
  std::string_view linkedIn;   // the table whose rows are linked to such records
  const QuickBooksRead& read;  // that finds them
  const RequestField& request;
  std::string_view name;  // of a list
};

// Why a row does not go.
enum class Stays : std::uint8_t {
  Never,    // its table does not send such rows
  Lacking,  // what it belongs to has no link yet
  InPart,   // it goes without some of its lines
};

class RowLook {
 public:
  virtual ~RowLook() = default;

  // Whether it asks what QuickBooks has of the row, or no more than what the row would be there.
  [[nodiscard]] virtual bool WantsRecords() const { return true; }

  // A list's row, ahead of all else.
  virtual void NoteRow(const ado::Recordset& row) = 0;
  // It can't go, in words for people.
  virtual void NoteStays(Stays stays, std::string why) = 0;
  // When it changed last can't be read.
  virtual void NoteUnreadableDate() = 0;
  // It would go above its place, for what it belongs under has no link yet.
  virtual void NoteAtTop() = 0;
  // The records that could be the row's.
  virtual std::vector<Record> RecordsLike(const RowAsSent& row) = 0;
  // Those of these days, for a table that finds its rows by their lines.
  virtual std::vector<Record> RecordsOfDays(const QuickBooksRead& read, Date from, Date to) = 0;
  // Which of them the table's own rules leave.
  virtual void Take(std::vector<Record> records) = 0;
};

// Whether the request of a transaction has nobody whom QuickBooks knows where it has a place for one.
[[nodiscard]] bool LacksPerson(const RequestField& request);

}  // namespace twqb
