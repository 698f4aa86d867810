// The library composed with the adapters of this system: what stands behind each of its seams in a run.
//
// From the inside: the real seams, the scripted faults, the transcript. So the transcript shows the faults. What the
// embedded company file itself does goes through neither.
#pragma once

#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/faults/Faults.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/FrozenMachine.h"
#include "adapters/terminal/TerminalDesk.h"
#include "adapters/transcript/Transcript.h"
#include "cli/Options.h"
#include "platform/Forwarding.h"
#include "platform/Platform.h"

namespace twqb::cli {

// What takes the place of the person, the clock and luck.
struct Surroundings {
  std::optional<Answers> answers;      // nothing: the person at the terminal is asked
  std::optional<FrozenOptions> clock;  // nothing: this system's
  std::optional<FaultScript> faults;
  std::string transcript;  // a path; empty: none is written
  Masking masking = Masking::Masked;
  std::span<const Table* const> tables = {};
};

// Reads the files that the options name. Raises UsageError naming file and line.
[[nodiscard]] Surroundings ReadSurroundings(const Options& options);

// The machine on which the files of `place` are worked on.
[[nodiscard]] std::unique_ptr<SystemMachine> MakeMachine(const Workplace& place,
                                                         const std::optional<FrozenOptions>& clock);

class Composition {
 public:
  // Composes the library; no other composition and no bridge object may exist. Begins the transcript: raises UsageError
  // when it can't be written.
  Composition(const Workplace& place, const Surroundings& surroundings);
  // Takes the library apart again. No bridge object may exist.
  ~Composition();
  Composition(const Composition&) = delete;
  Composition& operator=(const Composition&) = delete;

  [[nodiscard]] const Workplace& Place() const { return place_; }
  // What the library stands on.
  [[nodiscard]] const Platform& Seams() const { return seams_; }
  // The machine without faults and transcript.
  [[nodiscard]] SystemMachine& RealMachine() { return *machine_; }
  // The same, when its clock is frozen; else nullptr.
  [[nodiscard]] FrozenMachine* FrozenClock() { return dynamic_cast<FrozenMachine*>(machine_.get()); }

  // Message boxes that the library has shown so far.
  [[nodiscard]] int BoxesShown() const { return told_->Boxes(); }

  // Runs an operation of the library between its two events in the transcript; its result is told there as `valueOf`
  // puts it.
  template <typename Operation, typename ValueOf = std::identity>
  auto Run(std::string_view name, const nlohmann::ordered_json& arguments, Operation operation, ValueOf valueOf = {}) {
    if (transcript_) transcript_->Call(name, arguments);
    try {
      auto result = operation();
      if (transcript_) transcript_->Return(name, valueOf(result));
      return result;
    } catch (const DeskGaveUp& gaveUp) {
      if (transcript_) transcript_->Return(name, gaveUp);
      throw;
    }
  }

  // False once a line of the transcript could not be written.
  [[nodiscard]] bool TranscriptIsWhole() const { return !writer_ || writer_->Good(); }

 private:
  // The desk, with a count of what the person was told.
  class CountingDesk : public ForwardingDesk {
   public:
    using ForwardingDesk::ForwardingDesk;
    BoxAnswer ShowMessageBox(const MessageBox& box) override {
      ++boxes_;
      return ForwardingDesk::ShowMessageBox(box);
    }
    [[nodiscard]] int Boxes() const { return boxes_; }

   private:
    int boxes_ = 0;
  };

  Workplace place_;
  std::unique_ptr<SystemMachine> machine_;
  SqliteProvider database_;
  company::CompanyTransportFactory quickbooks_;
  TerminalDesk terminal_;
  std::optional<ScriptedDesk> script_;
  RecordingCallbackFactory callback_;
  std::optional<FaultPlatform> faults_;
  std::optional<TranscriptWriter> writer_;
  std::optional<TranscriptPlatform> transcript_;
  std::optional<CountingDesk> told_;
  Platform seams_;
};

}  // namespace twqb::cli
