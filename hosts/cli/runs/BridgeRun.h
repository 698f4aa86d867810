// A command that is an operation of the public object: the files looked at beforehand, the library composed, an object
// set up as the options say, and the record of the run complete at its end.
#pragma once

#include <cstdint>
#include <functional>

#include "cli/options/Options.h"
#include "cli/runs/Composition.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::cli {

// What a run asks of other runs on the same files.
enum class Sides : std::uint8_t {
  Read,     // nothing
  Looked,   // nothing; and the session leaves no trace in the settings, for the command changes nothing
  Written,  // that none of them is a transfer: the run holds both sides, and a signal ends it behind the record in hand
};

// The properties that come from options.
void SetUp(CTWQBBridge& bridge, const Composition& composition, const Options& options);

// Composes the library for the files that the options name, runs `work`, and takes the library apart. Of a run that may
// have nothing to write `wrote` says at its end, however it ends, whether it did: where it did not, there is nothing to
// take back, and its set goes. False when the transcript of the run could not be written to its end. Raises UsageError
// for a file that can't be used, and HeldByOther for one that a transfer holds, before anything runs.
[[nodiscard]] bool RunComposed(const Options& options, Sides sides, const std::function<void(Composition&)>& work,
                               const std::function<bool()>& wrote = {});

// Raises the UsageError of such a transcript.
[[noreturn]] void RefuseTranscript(const Options& options);

}  // namespace twqb::cli
