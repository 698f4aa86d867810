// The library composed with the adapters of this system: what stands behind each of its seams in a run.
//
// From the inside: the real seams, the scripted faults, the transcript. So the transcript shows the faults. What the
// embedded company file itself does goes through neither.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "adapters/transcript/EventValue.h"
#include "cli/options/Options.h"
#include "cli/workplace/Surroundings.h"
#include "platform/Platform.h"

namespace twqb {
class FrozenMachine;
}

namespace twqb::cli {

// Raises the UsageError of a transcript that can't be recorded, before anything is made.
void CheckTranscript(const Workplace& place, const Surroundings& surroundings);

class Composition {
 public:
  // Composes the library; no other composition and no bridge object may exist. Begins the transcript: raises UsageError
  // when it can't be written, or would overwrite something else.
  Composition(const Workplace& place, const Surroundings& surroundings);
  // Takes the library apart again. No bridge object may exist.
  ~Composition();
  Composition(const Composition&) = delete;
  Composition& operator=(const Composition&) = delete;

  [[nodiscard]] const Workplace& Place() const;
  // What the library stands on.
  [[nodiscard]] const Platform& Seams() const;
  // The machine without faults and transcript.
  [[nodiscard]] Machine& RealMachine();
  // QuickBooks, likewise.
  [[nodiscard]] TransportFactory& RealQuickBooks();
  // The machine, when its clock is frozen; else nullptr.
  [[nodiscard]] FrozenMachine* FrozenClock();

  // Message boxes that the library has shown so far.
  [[nodiscard]] int BoxesShown() const;

  // Runs an operation of the library between its two events in the transcript; its result is told there as `valueOf`
  // puts it.
  template <typename Operation, typename ValueOf = std::identity>
  auto Run(std::string_view name, const EventList& arguments, Operation operation, ValueOf valueOf = {}) {
    TellCall(name, arguments);
    try {
      auto result = operation();
      TellReturn(name, valueOf(result));
      return result;
    } catch (const DeskGaveUp& gaveUp) {
      TellReturn(name, gaveUp);
      throw;
    }
  }

  // False once a line of the transcript could not be written.
  [[nodiscard]] bool TranscriptIsWhole() const;

 private:
  struct Parts;

  // Nothing without a transcript.
  void TellCall(std::string_view name, const EventList& arguments);
  void TellReturn(std::string_view name, const EventValue& value);
  void TellReturn(std::string_view name, const DeskGaveUp& gaveUp);

  std::unique_ptr<Parts> parts_;
};

}  // namespace twqb::cli
