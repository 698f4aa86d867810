// Texts of messages as they come in, and the one way in which a fault in them is told: with the file and the line.
//
// This folder is the generator that makes the C++ rows of src/messages out of its *.messages files, at build time. It
// knows the language (docs/messages.md) and no message; the product links none of it.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace twqb::messagegen {

struct SourceFile {
  std::string name;  // as faults are to name it; what stands between the last / and the first dot names its output
  std::string text;
};

struct Place {
  std::size_t file = 0;  // of the files handed in
  int line = 0;
};

// A fault in a text, "Customers.messages:12: ...".
class BadInput : public std::runtime_error {
 public:
  BadInput(std::string_view file, int line, std::string_view what)
      : std::runtime_error(std::string(file) + ":" + std::to_string(line) + ": " + std::string(what)) {}
};

}  // namespace twqb::messagegen
