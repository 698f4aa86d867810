#include "cli/Operations.h"

#include "cli/Output.h"

namespace twqb::cli {

bool Perform(Composition& composition, const Options& options, const BridgeOperation& operation) {
  CTWQBBridge bridge;
  SetUp(bridge, composition, options);
  return composition.Run(operation.name, operation.arguments, [&] { return operation.run(bridge); });
}

ExitStatus RunOperation(const Options& options, const BridgeOperation& operation, const Verdict& verdict) {
  bool done = false;
  const bool recorded = RunComposed(options, operation.sides,
                                    [&](Composition& composition) { done = Perform(composition, options, operation); });
  Print((done ? verdict.done : verdict.failed) + "\n");
  FlushOutput();
  if (!recorded) RefuseTranscript(options);
  return done ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace twqb::cli
