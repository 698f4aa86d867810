#include "cli/workplace/Surroundings.h"

#include <fmt/core.h>

#include "adapters/system/FrozenMachine.h"
#include "cli/options/ExitStatus.h"
#include "cli/screen/TextFile.h"

namespace twqb::cli {

Surroundings ReadSurroundings(const Options& options) {
  Surroundings surroundings{
      .clock = options.clock, .transcript = options.transcript, .masking = options.masking, .tables = options.tables};
  surroundings.observer = options.observer;
  surroundings.log = options.log;
  surroundings.sides = options.sides;
  if (options.noRecovery) surroundings.lostLinks = LostLinks::Leave;
  for (const auto& file : {options.answers, options.faults}) {
    if (!file.empty()) surroundings.read.push_back(file);
  }
  try {
    if (!options.answers.empty()) surroundings.answers = ParseAnswers(ReadTextFile(options.answers));
  } catch (const AnswersError& failure) {
    throw UsageError(fmt::format("The answers file {} can't be used: {}", options.answers, failure.what()));
  }
  try {
    if (!options.faults.empty()) surroundings.faults = ParseFaults(ReadTextFile(options.faults));
  } catch (const FaultsError& failure) {
    throw UsageError(fmt::format("The faults file {} can't be used: {}", options.faults, failure.what()));
  }
  return surroundings;
}

std::unique_ptr<Machine> MakeMachine(const Workplace& place, const std::optional<FrozenOptions>& clock) {
  const SystemMachineOptions options{.libraryFolder = place.folder, .registryFile = place.registry};
  if (clock) return std::make_unique<FrozenMachine>(options, *clock);
  return std::make_unique<SystemMachine>(options);
}

}  // namespace twqb::cli
