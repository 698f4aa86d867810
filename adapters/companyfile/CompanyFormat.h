// The tables of a company file, and how a file of an earlier format gets those that it lacks.
//
// A format is the one before and a step: a new file takes every step, an earlier file the ones that it hasn't taken, so
// that both end up the same. A step may be records alone, which stand with the presets. What the tables hold is
// CompanyStore's and TxnStore's.
#pragma once

#include <cstdint>

#include "adapters/companyfile/Sqlite.h"

namespace twqb::company {

inline constexpr std::int64_t kFormatVersion = 5;
inline constexpr std::int64_t kNoFormat = 0;  // of a file without a table in it

// The format of the file; raises `kCannotOpenFile` for what is no company file, or one of a newer format.
[[nodiscard]] std::int64_t ReadFormat(SqliteDatabase& database);
// Brings the tables from `format` to kFormatVersion, inside the transaction that the caller opened.
void TakeSteps(SqliteDatabase& database, std::int64_t format);

}  // namespace twqb::company
