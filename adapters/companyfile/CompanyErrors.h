// The numbers that a session with the embedded company file fails with, each with its one text.
//
// They are for calls that fail as a whole. What a single request is answered is a status, see Status.h. The number of a
// document that does not parse stands with the other numbers of the house (`error::kParse`).
#pragma once

#include <string_view>

#include "platform/PlatformError.h"

namespace twqb::company {

inline constexpr ErrorNumber kUnexpected = 0x80040402;        // the storage under the file failed
inline constexpr ErrorNumber kCannotOpenFile = 0x80040403;    // missing, no company file, or of a newer format
inline constexpr ErrorNumber kCannotOpenNamed = 0x80040406;   // the same, of a file that the program asked for by name
inline constexpr ErrorNumber kOtherFileOpen = 0x8004040A;     // QuickBooks has another file open
inline constexpr ErrorNumber kCallOutOfOrder = 0x8004040D;    // no connection, no session, or one too many
inline constexpr ErrorNumber kOpenInOtherMode = 0x80040410;   // the lock of the file is held in another mode
inline constexpr ErrorNumber kNoRollback = 0x80040413;        // a set that is to be taken back after an error
inline constexpr ErrorNumber kDialogOpen = 0x80040414;        // a window of QuickBooks waits for an answer
inline constexpr ErrorNumber kFileNameRequired = 0x80040416;  // nothing is open and no name was given
inline constexpr ErrorNumber kNoPermission = 0x80040418;      // the program may not use the file
inline constexpr ErrorNumber kNoAutoLogon = 0x8004041D;       // the program may not have the file opened
inline constexpr ErrorNumber kUnknownVersion = 0x80040423;    // of messages, or in a form that the file has not

// The text of a number, those of the other numbers of the house too.
[[nodiscard]] std::string_view TextOf(ErrorNumber number);
// Raises `number` with its text; `detail` follows behind a blank when there is one.
[[noreturn]] void Raise(ErrorNumber number, std::string_view detail = {});
// The detail that `raised` was raised with; it stands in `raised`.
[[nodiscard]] std::string_view DetailOf(const PlatformError& raised);

}  // namespace twqb::company
