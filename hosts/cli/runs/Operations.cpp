#include "cli/runs/Operations.h"

#include "cli/screen/Output.h"

namespace twqb::cli {

bool Perform(Composition& composition, const Options& options, const BridgeOperation& operation) {
  CTWQBBridge bridge;
  SetUp(bridge, composition, options);
  return composition.Run(operation.name, operation.arguments, [&] { return operation.run(bridge); });
}

ExitStatus RunOperation(const Options& options, const BridgeOperation& operation, const Verdict& verdict) {
  return RunOperation(options, operation, [&](bool done) {
    return done ? Ending{verdict.done, ExitStatus::Done} : Ending{verdict.failed, ExitStatus::Failed};
  });
}

ExitStatus RunOperation(const Options& options, const BridgeOperation& operation,
                        const std::function<Ending(bool done)>& endingOf) {
  bool done = false;
  const bool recorded = RunComposed(options, operation.sides, [&](Composition& composition) {
    if (operation.prepare) operation.prepare(composition);
    done = Perform(composition, options, operation);
  });
  const auto ending = endingOf(done);
  Print(ending.text + "\n");
  FlushOutput();
  if (!recorded) RefuseTranscript(options);
  return ending.status;
}

}  // namespace twqb::cli
