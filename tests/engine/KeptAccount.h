// An observer that keeps what it was told, one short line each, for tests.
#pragma once

#include <fmt/core.h>

#include <string>
#include <vector>

#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/RunObserver.h"

namespace twqb {

class KeptAccount final : public RunObserver {
 public:
  // Observes the runs of the house that stands, as of some table; a house made later forgets it.
  KeptAccount() { Vars().observer = this; }
  ~KeptAccount() { Vars().observer = nullptr; }
  KeptAccount(const KeptAccount&) = delete;
  KeptAccount& operator=(const KeptAccount&) = delete;

  void RecordTold(const RecordAccount& record) override { records.push_back(record); }
  void ErrorTold(const ErrorAccount& error) override {
    errors.push_back(fmt::format("{} {} {} [{}]", error.routine, SignedNumber(error.number), error.text, error.key));
  }
  void WalkEnded(const TableInHand& /*table*/, const Extent& extent) override {
    walks.push_back(fmt::format("{} of {}", extent.taken, extent.found));
  }

  // "ACME added: why", a line of a record behind "- ".
  [[nodiscard]] std::vector<std::string> Lines() const {
    constexpr const char* kFates[] = {"added", "changed", "left", "passed over", "refused", "failed"};
    std::vector<std::string> lines;
    for (const auto& record : records) {
      lines.push_back(fmt::format("{}{} {}{}{}", record.standing == Standing::Line ? "- " : "", record.key,
                                  kFates[static_cast<int>(record.fate)], record.why.empty() ? "" : ": ", record.why));
    }
    return lines;
  }

  std::vector<RecordAccount> records;
  std::vector<std::string> errors;
  std::vector<std::string> walks;

 private:
  TableScope scope_{TableInHand{}};
};

}  // namespace twqb
