// What lines of checks, charges, bills and estimates have in common on their way here: a line becomes a row of one of
// two tables, by what its item is, and a row that is linked to it already is written over as the conflict rule says.
//
// For the gets of the expense log, of vendor bills and of estimates; what a row holds is theirs.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "engine/ConflictRule.h"
#include "platform/Currency.h"
#include "platform/Decimal.h"
#include "platform/ado.h"
#include "quickbooks/ResponseModel.h"
#include "transactions/NewRow.h"

namespace twqb {

// The expense code of what is nothing that BillingDb knows.
inline constexpr std::string_view kFromQuickBooks = "FROMQB:";

// --- Codes -----------------------------------------------------------------------------------------------------------

enum class CodeKind : std::uint8_t { Activity, Expense };

struct LineCode {
  CodeKind kind = CodeKind::Expense;
  std::string code;  // "" where there is none
};

// What the line's item is here: an activity, or else an expense. Errors are ignored.
[[nodiscard]] LineCode CodeOfItem(ado::Connection& connection, const Record& line);
// The description that the code itself has; "" without one. Raises any error.
[[nodiscard]] std::string DescriptionOf(ado::Connection& connection, const LineCode& code);

// --- Values ----------------------------------------------------------------------------------------------------------

// Fields of a line, with what stands for them where they are missing or can't be read.
[[nodiscard]] std::string TextOr(const Record& line, std::string_view field, std::string_view otherwise);
[[nodiscard]] Currency AmountOr(const Record& line, std::string_view field, Currency otherwise);
[[nodiscard]] Decimal NumberOr(const Record& line, std::string_view field, Decimal otherwise);

// Year, month, minute and second of now, and a random number: what stands for a number that QuickBooks does not have.
[[nodiscard]] std::string MadeUpNumber();
// The document's own number, or one that is made up where it has none, or a blank one.
[[nodiscard]] std::string NumberOfDocument(const Record& document);

// --- Rows ------------------------------------------------------------------------------------------------------------

// Whether a row that is linked to the record may be written over; it is the current row then. `record` is what has the
// time that counts, for its lines, too.
[[nodiscard]] bool MayBeChanged(ado::Recordset& rows, std::string_view keyColumn, std::string_view link, TwinRule rule,
                                const Record& record);

// Where lines of one kind become rows.
struct LineTable {
  std::string_view table;
  std::string_view opened;  // what of it is opened for writing
  std::string_view keyColumn;
};

// The row of a line, on a recordset of its own: a row that is linked to the line, or one to be. Whatever is not written
// when this goes is dropped.
class LineRow {
 public:
  // Looks the line up, and opens the table.
  LineRow(ado::Connection& connection, const LineTable& table, std::string link);

  [[nodiscard]] bool IsNew() const { return isNew_; }
  [[nodiscard]] ado::Recordset& Row() const { return rows_.Rows(); }
  // Puts the recordset on the row that is there. False: it stays as it is.
  [[nodiscard]] bool MayBeChanged(TwinRule rule, const Record& record) const;
  // Adds the row, under a key of our own making.
  void Add() const;

 private:
  const LineTable& table_;
  std::string link_;
  bool isNew_;
  OpenTable rows_;
};

// What is told of a document that was taken back, and of a row that was billed.
inline constexpr std::string_view kWithoutLines = "none of its lines could come";
inline constexpr std::string_view kBilledAlready = "it was billed here";

// Whether a row of that status was billed, and is nobody's to change.
[[nodiscard]] bool IsBilled(std::string_view status);

// The lines of a document: the entries of a repeating choice that are `branch`, and not groups, or, without one, of a
// list.
void ForEachLine(const Record& lines, std::string_view branch, const std::function<void(const Record& line)>& take);

}  // namespace twqb
