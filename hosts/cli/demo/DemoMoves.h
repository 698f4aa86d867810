// What became of the records of one transfer of the demonstration, table by table: the ear of its page.
//
// It counts and remembers reasons. The books themselves it does not look at, so that what is found there can be held
// against what was told here.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "services/RunObserver.h"

namespace twqb::cli {

class DemoMoves final : public RunObserver {
 public:
  struct Table {
    std::int64_t added = 0;
    std::int64_t changed = 0;
    std::map<std::string, std::vector<std::string>> stayed;  // by the reason: keys, or identifiers of QuickBooks

    [[nodiscard]] bool HasMoved() const { return added + changed > 0; }
    [[nodiscard]] std::int64_t Stayed() const;
  };
  using Tables = std::map<std::int32_t, Table>;

  void RecordTold(const RecordAccount& record) override;
  void ErrorTold(const ErrorAccount& error) override;

  // What was told since the last time.
  [[nodiscard]] Tables Take();
  // Errors since the last time, in QuickBooks' or the routine's words.
  [[nodiscard]] std::vector<std::string> TakeErrors();

 private:
  Tables tables_;
  std::vector<std::string> errors_;
};

}  // namespace twqb::cli
