// The text of a CSV file as records of fields: commas between them, quotes around those that hold commas, quotes or
// line ends, two quotes for one; lines end with CR LF, LF or CR.
//
// A pure function. What the fields mean is for whoever reads them.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace twqb::cli {

// A file that is no CSV text at all; `what()` tells why and what to do.
class CsvError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CsvRecord {
  std::size_t line = 0;  // of the file, from 1, where it begins
  std::vector<std::string> fields;
  std::string trouble;  // what is wrong with its quotes; empty: nothing
};

// The records in their order, without empty lines and a byte order mark. Raises CsvError for a text that is no UTF-8,
// or holds characters of no text.
[[nodiscard]] std::vector<CsvRecord> ReadCsv(std::string_view text);

}  // namespace twqb::cli
