// Field mappings as rows: what a table module says about its fields, and the two routines that carry rows out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado.h"
#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

// The last step of a path may name several fields, "BillAddress.State|Province|County": each country's form has one of
// them, and the others stay off the wire and out of answers. Here are the paths one by one.
[[nodiscard]] std::vector<std::string> PathChoices(std::string_view path);

// A column on its way to a QuickBooks field.
struct SendField {
  enum class When : std::uint8_t { Always, NotNull, NotEmpty, NotBlank };  // NULL is empty; blank is empty when trimmed
  enum class Cut : std::uint8_t { ToMaxLength, Uncut };

  std::string_view path;  // "BillAddress.City"; see PathChoices
  std::string_view column;
  When when = When::Always;
  std::string (*convert)(std::string_view) = nullptr;  // before the cut
  Cut cut = Cut::ToMaxLength;
  std::size_t length = 0;  // not 0: the cut is to this many characters, whatever QuickBooks would take
};

// Answers how many of the fields were set.
int SendFields(const RequestField& request, const ado::Recordset& row, std::span<const SendField> fields);

// Sets a text, cut to the field's greatest length as QuickBooks tells it; to a length of the table's own.
void SetCut(const RequestField& field, std::string_view text);
void SetCutTo(const RequestField& field, std::string_view text, std::size_t length);

// A text on its way to QuickBooks that was cut, for who looks at what would be lost.
struct CutText {
  std::string field;
  std::string text;
  std::string kept;
  std::size_t room = 0;  // in characters
};
// Notes it, where somebody does and something is lost. A table calls it that cuts otherwise.
void NoteCut(const RequestField& field, std::string_view text, std::string_view kept, std::size_t room);

// Refers to what has that identifier; without one, by name.
void AssignReference(const RequestField& reference, std::string_view listID, std::string_view name);
// The field at a path whose steps are separated by dots.
[[nodiscard]] RequestField FieldAtPath(const RequestField& request, std::string_view path);

// A QuickBooks field on its way to a column. A field that the record lacks is passed over; where several rows fill one
// column, the last field that is there counts.
struct GetField {
  std::string_view path;  // as above
  std::string_view column;
  std::string (*convert)(std::string_view) = nullptr;  // before the cut
};

void GetFields(ado::Recordset& row, const Record& record, std::span<const GetField> fields);

// Empties the columns ahead of a mapping, so that a field which QuickBooks leaves out blanks its column.
void BlankColumns(ado::Recordset& row, std::span<const std::string_view> columns);

// A text cut to the column's DefinedSize, and the same assigned to the column.
[[nodiscard]] std::string CutTo(const ado::Recordset& row, std::string_view column, std::string_view text);
void WriteCut(ado::Recordset& row, std::string_view column, std::string_view text);
// The field at a path; nothing where a step of it is missing.
[[nodiscard]] Record FieldAtPath(const Record& record, std::string_view path);

// The column with an empty text appended: NULL reads as "".
[[nodiscard]] std::string ColumnText(const ado::Recordset& row, std::string_view column);

}  // namespace twqb
