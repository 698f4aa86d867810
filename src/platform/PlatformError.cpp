#include "platform/PlatformError.h"

#include <fmt/core.h>

namespace twqb {

std::string_view ErrorText(ErrorNumber number) {
  switch (static_cast<error::Number>(number)) {
    case error::kBadSyntax:
      return "The statement has bad syntax or names an unknown column.";
    case error::kNoSuchTable:
      return "The table or view that the statement names does not exist.";
    case error::kConstraint:
      return "The change breaks a constraint of the table.";
    case error::kCannotOpen:
      return "The database can't be opened.";
    case error::kProviderNotFound:
      return "Provider cannot be found. It may not be properly installed.";
    case error::kNoSuchField:
      return "Item cannot be found in the collection corresponding to the requested name or ordinal.";
    case error::kAtEof:
      return "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
             "current record.";
    case error::kObjectClosed:
      return "Operation is not allowed when the object is closed.";
    case error::kObjectOpen:
      return "Operation is not allowed when the object is open.";
    case error::kEditPending:
      return "Operation is not allowed while a change of the record is pending.";
    case error::kBadArgument:
      return "Arguments are of the wrong type or out of range.";
    case error::kReadOnly:
      return "The recordset is read-only.";
    case error::kParse:
      return "QuickBooks found an error when parsing the provided XML text stream.";
    case error::kRequestIncomplete:
      return "A required choice of the request is not set.";
    case error::kOverflow:
      return "Overflow";
    case error::kDivisionByZero:
      return "Division by zero";
    case error::kConversion:
      return "Type mismatch";
    case error::kObjectNothing:
      return "Object variable not set";
    case error::kInvalidNull:
      return "Invalid use of Null";
    case error::kCannotCreateObject:
      return "ActiveX component can't create object";
    case error::kKeyInUse:
      return "This key is already associated with an element of this collection";
    case error::kNameUnknown:
      return "Object doesn't support this property or method";
    case error::kFileNotFound:
      return "File not found";
    case error::kPathNotFound:
      return "Path not found";
    case error::kFileAccess:
      return "Path/File access error";
  }
  return {};
}

std::string HexNumber(ErrorNumber number) { return fmt::format("0x{:08X}", number); }

}  // namespace twqb
