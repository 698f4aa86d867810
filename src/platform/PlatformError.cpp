#include "platform/PlatformError.h"

#include <fmt/core.h>

#include <array>

namespace twqb {

namespace {

struct NumberAndText {
  ErrorNumber number;
  std::string_view text;
};

constexpr std::array kTexts = {
    NumberAndText{error::kBadSyntax, "The statement has bad syntax or names an unknown column."},
    NumberAndText{error::kNoSuchTable, "The table or view that the statement names does not exist."},
    NumberAndText{error::kConstraint, "The change breaks a constraint of the table."},
    NumberAndText{error::kCannotOpen, "The database can't be opened."},
    NumberAndText{error::kProviderNotFound, "Provider cannot be found. It may not be properly installed."},
    NumberAndText{error::kNoSuchField,
                  "Item cannot be found in the collection corresponding to the requested name or ordinal."},
    NumberAndText{error::kAtEof,
                  "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
                  "current record."},
    NumberAndText{error::kObjectClosed, "Operation is not allowed when the object is closed."},
    NumberAndText{error::kObjectOpen, "Operation is not allowed when the object is open."},
    NumberAndText{error::kEditPending, "Operation is not allowed while a change of the record is pending."},
    NumberAndText{error::kBadArgument, "Arguments are of the wrong type or out of range."},
    NumberAndText{error::kReadOnly, "The recordset is read-only."},
    NumberAndText{error::kParse, "QuickBooks found an error when parsing the provided XML text stream."},
    NumberAndText{error::kRequestIncomplete, "A required choice of the request is not set."},
    NumberAndText{error::kOverflow, "Overflow"},
    NumberAndText{error::kDivisionByZero, "Division by zero"},
    NumberAndText{error::kConversion, "Type mismatch"},
    NumberAndText{error::kObjectNothing, "Object variable not set"},
    NumberAndText{error::kInvalidNull, "Invalid use of Null"},
    NumberAndText{error::kCannotCreateObject, "ActiveX component can't create object"},
    NumberAndText{error::kKeyInUse, "This key is already associated with an element of this collection"},
    NumberAndText{error::kNameUnknown, "Object doesn't support this property or method"},
    NumberAndText{error::kFileNotFound, "File not found"},
    NumberAndText{error::kPathNotFound, "Path not found"},
    NumberAndText{error::kFileAccess, "Path/File access error"},
};

}  // namespace

std::string_view ErrorText(ErrorNumber number) {
  for (const auto& entry : kTexts) {
    if (entry.number == number) return entry.text;
  }
  return {};
}

std::string HexNumber(ErrorNumber number) { return fmt::format("0x{:08X}", number); }

}  // namespace twqb
