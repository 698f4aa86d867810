// The one exception of the house: a call that failed, with the 32-bit number that the user will read in a box.
//
// Every seam and the library's own run-time errors raise it. What QuickBooks or the database *answers* is never an
// exception. The numbers that the library raises itself stand in one table (`error::`), with one text each.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace twqb {

using ErrorNumber = std::uint32_t;

// Numbers with a fixed text, see `ErrorText`. The database's first, then the language run time's. One enumeration, so
// that a number without a text does not compile.
namespace error {
enum Number : ErrorNumber {
  kBadSyntax = 0x80040E14,  // bad syntax, or no such column
  kNoSuchTable = 0x80040E37,
  kConstraint = 0x80040E2F,
  kCannotOpen = 0x80004005,  // the connection can't be opened
  kProviderNotFound = 0x800A0E7A,
  kNoSuchField = 0x800A0CC1,
  kAtEof = 0x800A0BCD,
  kObjectClosed = 0x800A0E78,
  kObjectOpen = 0x800A0E79,
  kEditPending = 0x800A0C93,  // not allowed while an edit is pending
  kBadArgument = 0x800A0BB9,
  kReadOnly = 0x800A0CB3,           // the recordset does not support updating
  kParse = 0x80040400,              // QuickBooks can't parse the document
  kRequestIncomplete = 0x80040307,  // a request object with a required choice left empty
  kOverflow = 6,
  kDivisionByZero = 11,
  kConversion = 13,
  kObjectNothing = 91,
  kInvalidNull = 94,
  kCannotCreateObject = 429,
  kNameUnknown = 438,
  kKeyInUse = 457,
  kFileNotFound = 53,
  kPathNotFound = 76,
  kFileAccess = 75,
};
}  // namespace error

// The published text of a number of the table above; empty for any other number.
[[nodiscard]] std::string_view ErrorText(ErrorNumber number);

class PlatformError : public std::exception {
 public:
  PlatformError(ErrorNumber number, std::string description) : number_(number), description_(std::move(description)) {}
  // With the table's text.
  explicit PlatformError(ErrorNumber number) : PlatformError(number, std::string(ErrorText(number))) {}

  [[nodiscard]] ErrorNumber number() const noexcept { return number_; }
  [[nodiscard]] const std::string& description() const noexcept { return description_; }
  [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

 private:
  ErrorNumber number_;
  std::string description_;
};

// "0x80040E14": eight upper-case digits, the form of transcripts and fault files.
[[nodiscard]] std::string HexNumber(ErrorNumber number);

}  // namespace twqb
