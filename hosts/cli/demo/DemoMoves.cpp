#include "cli/demo/DemoMoves.h"

#include <utility>

namespace twqb::cli {

std::int64_t DemoMoves::Table::Stayed() const {
  std::int64_t count = 0;
  for (const auto& [why, keys] : stayed) count += static_cast<std::int64_t>(keys.size());
  return count;
}

void DemoMoves::RecordTold(const RecordAccount& record) {
  if (record.standing == Standing::Line) return;
  auto& table = tables_[record.table.number];
  switch (record.fate) {
    case Fate::Added:
      ++table.added;
      return;
    case Fate::Changed:
      ++table.changed;
      return;
    case Fate::LeftAsItWas:
      return;
    case Fate::PassedOver:
    case Fate::Refused:
    case Fate::Failed:
      table.stayed[record.why].push_back(record.key.empty() ? record.identifier : record.key);
  }
}

void DemoMoves::ErrorTold(const ErrorAccount& error) { errors_.push_back(error.text); }

DemoMoves::Tables DemoMoves::Take() { return std::exchange(tables_, {}); }
std::vector<std::string> DemoMoves::TakeErrors() { return std::exchange(errors_, {}); }

}  // namespace twqb::cli
