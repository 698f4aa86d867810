#include "cli/Program.h"

#include <fmt/core.h>

#include <csignal>
#include <exception>

#include "adapters/terminal/EndSignals.h"
#include "cli/backup/PuttingBack.h"
#include "cli/commands/CommandLine.h"
#include "cli/screen/Output.h"
#include "cli/workplace/TransferLock.h"
#include "platform/PlatformError.h"
#include "platform/desk.h"

namespace twqb::cli {

namespace {

ExitStatus Run(int argc, const char* const* argv, std::span<const Table* const> tables) {
  auto line = ParseCommandLine(argc, argv);
  auto status = ExitStatus::Done;
  if (line.command && line.text.empty()) {
    line.options.tables = tables;
    EnterFolder(line.options);
    if (line.restore == BrokenOffRestore::Completed) CompleteRestore(line.options);
    status = line.command(line.options);
  } else {
    Print(line.text);
  }
  FlushOutput();
  return status;
}

ExitStatus RunGuarded(int argc, const char* const* argv, std::span<const Table* const> tables) {
  try {
    return Run(argc, argv, tables);
  } catch (const DeskGaveUp& failure) {
    Tell(failure.question());
    return ExitStatus::NoAnswer;
  } catch (const HeldByOther& other) {
    Tell(other.what());
    return ExitStatus::Failed;
  } catch (const EndedBySignal&) {
    return ExitStatus::Failed;
  } catch (const PlatformError& failure) {
    Tell(fmt::format("{} {}", HexNumber(failure.number()), failure.description()));
  } catch (const std::exception& failure) {
    Tell(failure.what());
  }
  return ExitStatus::Unusable;
}

}  // namespace

int RunProgram(int argc, const char* const* argv, std::span<const Table* const> tables) {
  // A reader that goes away is an output that can't be written, and no reason to die in the middle of a transfer.
  std::signal(SIGPIPE, SIG_IGN);
  const auto status = RunGuarded(argc, argv, tables);
  const int signal = EndSignals::Came();
  return signal == 0 ? static_cast<int>(status) : EndSignals::ExitStatusOf(signal);
}

}  // namespace twqb::cli
