#include "cli/Composition.h"

#include <fmt/format.h>

#include "cli/ExitStatus.h"
#include "cli/TextFile.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::cli {

Surroundings ReadSurroundings(const Options& options) {
  Surroundings surroundings{
      .clock = options.clock, .transcript = options.transcript, .masking = options.masking, .tables = options.tables};
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

std::unique_ptr<SystemMachine> MakeMachine(const Workplace& place, const std::optional<FrozenOptions>& clock) {
  const SystemMachineOptions options{.libraryFolder = place.folder, .registryFile = place.registry};
  if (clock) return std::make_unique<FrozenMachine>(options, *clock);
  return std::make_unique<SystemMachine>(options);
}

namespace {

// Beside an answers file the person at the terminal only watches: no box waits for the Enter key.
TerminalOptions TerminalFor(const Surroundings& surroundings) {
  auto options = TerminalOptions::Detect();
  if (surroundings.answers) options.interactive = false;
  return options;
}

}  // namespace

Composition::Composition(const Workplace& place, const Surroundings& surroundings)
    : place_(place),
      machine_(MakeMachine(place, surroundings.clock)),
      quickbooks_(place.company, *machine_),
      terminal_(TerminalFor(surroundings)) {
  if (surroundings.answers) script_.emplace(*surroundings.answers, &terminal_);
  seams_ = {.database = &database_,
            .quickbooks = &quickbooks_,
            .desk = script_ ? static_cast<Desk*>(&*script_) : &terminal_,
            .machine = machine_.get(),
            .callback = &callback_};
  if (surroundings.faults) seams_ = faults_.emplace(seams_, *surroundings.faults).Decorated();
  if (!surroundings.transcript.empty()) {
    try {
      writer_.emplace(std::filesystem::path(surroundings.transcript), surroundings.masking);
    } catch (const PlatformError& failure) {
      throw UsageError(
          fmt::format("The transcript {} can't be written: {}", surroundings.transcript, failure.description()));
    }
    seams_ = transcript_.emplace(seams_, *writer_).Decorated();
  }
  seams_.desk = &told_.emplace(*seams_.desk);
  Compose(seams_, surroundings.tables);
}

// The library keeps its connection and its session until it is composed anew, and they stand on the seams.
Composition::~Composition() { Compose({}); }

}  // namespace twqb::cli
