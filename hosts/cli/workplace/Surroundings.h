// What takes the place of the person, the clock and luck in a run, as the options name it; and the machine that comes
// of it.
//
// It reads the files of answers and faults. What acts on them stands behind the seams that Composition puts together.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/faults/FaultScript.h"
#include "adapters/scripted/Answers.h"
#include "adapters/system/FrozenOptions.h"
#include "adapters/transcript/Masking.h"
#include "cli/options/Options.h"
#include "cli/workplace/OpenedCompany.h"
#include "platform/Platform.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::cli {

struct Surroundings {
  std::optional<Answers> answers;      // nothing: the person at the terminal is asked
  std::optional<FrozenOptions> clock;  // nothing: this system's
  std::optional<FaultScript> faults;
  std::string transcript;              // a path; empty: none is written
  std::vector<std::string> read = {};  // the files that this comes from
  Masking masking = Masking::Masked;
  CompanyOpened companyOpened = {};           // none: nobody asks
  std::span<const Table* const> tables = {};  // none: those of the library
  LostLinks lostLinks = LostLinks::FindAgain;
  RunObserver* observer = nullptr;    // nothing: nobody hears what becomes of records
  LogOfRun* log = nullptr;            // nothing: nobody hears of its lost lines
  const OtherSides* sides = nullptr;  // in the place of this system's; nothing: these
  const Platform* instead = nullptr;  // what a run stands on in the place of the files and the person; nothing: on them
};

// Reads the files that the options name. Raises UsageError naming file and line.
[[nodiscard]] Surroundings ReadSurroundings(const Options& options);

// The machine on which the files of `place` are worked on.
[[nodiscard]] std::unique_ptr<Machine> MakeMachine(const Workplace& place, const std::optional<FrozenOptions>& clock);

}  // namespace twqb::cli
