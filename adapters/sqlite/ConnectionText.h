// Reads a connection string: "key=value" parts between semicolons.
//
// Keys match without case, blanks around keys and values do not count, and a value that holds a semicolon or blanks
// that count stands in double quotes (a quote inside is doubled). Which keys make sense is the connection's business.
#pragma once

#include <string>
#include <string_view>

namespace twqb::sqlite {

struct ConnectionText {
  std::string provider;    // as typed; empty when there is none
  std::string dataSource;  // empty when there is none
  std::string mode;        // "Read": nothing may be written; empty when there is none
};

// Of two parts with one key the last one counts. Parts with other keys and parts without "=" are passed over.
[[nodiscard]] ConnectionText ParseConnectionText(std::string_view text);

// Whether a connection string names the embedded engine as its provider: SQLITE, or JETLITE.
[[nodiscard]] bool NamesEmbeddedEngine(std::string_view text);

}  // namespace twqb::sqlite
