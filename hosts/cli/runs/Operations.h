// One operation of the library, as a host runs it: a bridge object with its properties set from the options, the call
// between its two events in the transcript, and the end of it told.
//
// For operations that answer True or False. What an operation tells its user goes through the desk.
#pragma once

#include <functional>
#include <string>

#include "adapters/transcript/EventValue.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/Options.h"
#include "cli/runs/BridgeRun.h"
#include "cli/runs/Composition.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::cli {

struct BridgeOperation {
  std::string name;  // as it stands in the transcript, and its arguments
  EventList arguments;
  std::function<bool(CTWQBBridge&)> run;
  Sides sides = Sides::Written;
  // What opens files of the command's own, or asks ahead of the operation: called when the files have been checked and
  // both sides are held.
  std::function<void(Composition&)> prepare = {};
};

// Runs it on a new object. Raises DeskGaveUp.
[[nodiscard]] bool Perform(Composition& composition, const Options& options, const BridgeOperation& operation);

// What goes to standard output for True and for False: a line without its end.
struct Verdict {
  std::string done;
  std::string failed;
};
// How an operation ends whose end hangs on more: what goes to standard output, without its end, and the status.
struct Ending {
  std::string text;
  ExitStatus status = ExitStatus::Done;
};

// Checks the files of the current folder, composes the library with them, performs the operation and prints the
// verdict. Raises UsageError for a file that can't be used and for a transcript that is not whole, HeldByOther, and
// DeskGaveUp.
[[nodiscard]] ExitStatus RunOperation(const Options& options, const BridgeOperation& operation, const Verdict& verdict);
// The same; `endingOf` is asked when the operation is over.
[[nodiscard]] ExitStatus RunOperation(const Options& options, const BridgeOperation& operation,
                                      const std::function<Ending(bool done)>& endingOf);

}  // namespace twqb::cli
