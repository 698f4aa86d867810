// What statements have answered of a database file, kept for the next file of the same content: the thousands of runs
// of a sweep leave few different ones, and to read one means to parse its whole schema first.
//
// Content is what counts: the pages of the file and those of its log, however often that was begun anew. Nothing is
// kept of a file with a journal, which whoever opens it has to take back first.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace twqb::sweep {

using Fields = std::map<std::string, std::string>;  // by column; NULL is "\N"

// Keeps them in that folder from here on, which the child processes of this one share.
void KeepReadings(std::string folder);

// A file as it stands when the object is made.
class Readings {
 public:
  explicit Readings(const std::string& path);

  // The rows that the statement has answered for such a file; nothing where it was not asked of one yet.
  [[nodiscard]] std::optional<std::vector<Fields>> Find(std::string_view sql) const;
  void Keep(std::string_view sql, const std::vector<Fields>& rows) const;

 private:
  [[nodiscard]] std::string FileOf(std::string_view sql) const;

  std::string content_;  // stands for it; empty: nothing is kept
};

}  // namespace twqb::sweep
