#include "cli/runs/Composition.h"

#include <optional>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/faults/Faults.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/storage/ReaderPlace.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/FrozenMachine.h"
#include "adapters/terminal/TerminalDesk.h"
#include "adapters/transcript/Transcript.h"
#include "adapters/transcript/TranscriptWriter.h"
#include "cli/options/SystemSides.h"
#include "cli/runs/AnsweredDesk.h"
#include "cli/runs/EndingDesk.h"
#include "cli/runs/NamingDesk.h"
#include "cli/runs/TellingMachine.h"
#include "cli/workplace/OutputFile.h"
#include "platform/Forwarding.h"
#include "platform/PlatformError.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::cli {

namespace {

constexpr RecordKind kTranscript = {
    .called = "transcript", .option = "--transcript", .beginning = TranscriptWriter::kBeginning};

// Beside an answers file the person at the terminal only watches: no box waits for the Enter key.
TerminalOptions TerminalFor(const Surroundings& surroundings) {
  auto options = TerminalOptions::Detect();
  options.interrupts = Interrupts::AreTheHosts;
  if (surroundings.answers) options.interactive = false;
  // What is printed goes by the clock, and that stands still.
  if (surroundings.clock) options.plainEvery = {};
  return options;
}

// The desk, with a count of what the person was told. It may be long until a question is answered: ahead of each, the
// files' logs are let go of.
class CountingDesk : public ForwardingDesk {
 public:
  using ForwardingDesk::ForwardingDesk;
  BoxAnswer ShowMessageBox(const MessageBox& box) override {
    ++boxes_;
    storage::GiveBackKeptPlaces();
    return ForwardingDesk::ShowMessageBox(box);
  }
  std::string OpenFileDialog(const FileDialog& dialog) override {
    storage::GiveBackKeptPlaces();
    return ForwardingDesk::OpenFileDialog(dialog);
  }
  std::optional<std::string> PickVendor(const std::string& message, const std::vector<std::string>& vendors) override {
    storage::GiveBackKeptPlaces();
    return ForwardingDesk::PickVendor(message, vendors);
  }
  [[nodiscard]] int Boxes() const { return boxes_; }

 private:
  int boxes_ = 0;
};

std::unique_ptr<TransportFactory> MakeQuickBooks(const Workplace& place, Machine& machine, const OtherSides* sides) {
  if (place.quickBooks == QuickBooksSide::Itself) return QuickBooksItselfOf(sides);
  return std::make_unique<company::CompanyTransportFactory>(place.company, machine);
}

// The company file tells nobody of its changes, nor do sides that a program brings; QuickBooks itself does, unless it
// is held still.
std::unique_ptr<CallbackFactory> MakeCallback(const Workplace& place, const OtherSides* sides) {
  if (place.quickBooks == QuickBooksSide::Itself && sides == nullptr) return MakeHostCallback();
  return std::make_unique<RecordingCallbackFactory>();
}

}  // namespace

void CheckTranscript(const Workplace& place, const Surroundings& surroundings) {
  if (surroundings.transcript.empty()) return;
  const auto machine = MakeMachine(place, surroundings.clock);
  OutputFile::Check(surroundings.transcript, kTranscript, FilesOfRun(place, *machine, surroundings.read));
}

struct Composition::Parts {
  Parts(const Workplace& workplace, const Surroundings& surroundings)
      : place(workplace),
        machine(MakeMachine(workplace, surroundings.clock)),
        database(MakeBillingProvider()),
        terminal(TerminalFor(surroundings)) {
    seams = surroundings.instead != nullptr ? *surroundings.instead : OwnSeams(surroundings);
    undecorated = quickbooks != nullptr ? quickbooks.get() : seams.quickbooks;
    seams.desk = &naming.emplace(*seams.desk);
    if (surroundings.faults) seams = faults.emplace(seams, *surroundings.faults).Decorated();
    if (!surroundings.transcript.empty()) {
      record.emplace(surroundings.transcript, kTranscript, FilesOfRun(workplace, *machine, surroundings.read));
      writer.emplace(record->Stream(), surroundings.masking);
      seams = transcript.emplace(seams, *writer).Decorated();
    }
    seams.desk = &told.emplace(*seams.desk);
    if (surroundings.observer != nullptr) observer.emplace(*surroundings.observer, *naming);
    seams.machine = &copies.emplace(*seams.machine, surroundings.log);
  }

  // The files of the workplace and the person, or who answers for them.
  Platform OwnSeams(const Surroundings& surroundings) {
    quickbooks = MakeQuickBooks(place, *machine, surroundings.sides);
    callback = MakeCallback(place, surroundings.sides);
    if (surroundings.answers) {
      answered.emplace(script.emplace(*surroundings.answers, &terminal), terminal, *machine);
    }
    ending.emplace(answered ? static_cast<Desk&>(*answered) : terminal,
                   TerminalFor(surroundings).interactive ? Confirms::Yes : Confirms::No);
    return {.database = database.get(),
            .quickbooks = surroundings.companyOpened
                              ? static_cast<TransportFactory*>(&opened.emplace(*quickbooks, surroundings.companyOpened))
                              : quickbooks.get(),
            .desk = &*ending,
            .machine = machine.get(),
            .callback = callback.get()};
  }

  Workplace place;
  std::unique_ptr<Machine> machine;
  std::unique_ptr<ado::Provider> database;
  std::unique_ptr<TransportFactory> quickbooks;
  std::optional<TellingTransportFactory> opened;
  TransportFactory* undecorated = nullptr;
  TerminalDesk terminal;
  std::optional<ScriptedDesk> script;
  std::optional<AnsweredDesk> answered;
  std::optional<EndingDesk> ending;
  std::optional<NamingDesk> naming;
  std::optional<NamingObserver> observer;
  std::unique_ptr<CallbackFactory> callback;
  std::optional<FaultPlatform> faults;
  std::optional<OutputFile> record;
  std::optional<TranscriptWriter> writer;
  std::optional<TranscriptPlatform> transcript;
  std::optional<CountingDesk> told;
  std::optional<TellingMachine> copies;
  Platform seams;
};

Composition::Composition(const Workplace& place, const Surroundings& surroundings)
    : parts_(std::make_unique<Parts>(place, surroundings)) {
  Compose(parts_->seams, surroundings.tables, parts_->observer ? &*parts_->observer : nullptr, surroundings.lostLinks);
}

// The library keeps its connection and its session until it is composed anew, and they stand on the seams.
Composition::~Composition() { Compose({}); }

const Workplace& Composition::Place() const { return parts_->place; }
const Platform& Composition::Seams() const { return parts_->seams; }
Machine& Composition::RealMachine() { return *parts_->machine; }
TransportFactory& Composition::RealQuickBooks() { return *parts_->undecorated; }
FrozenMachine* Composition::FrozenClock() { return dynamic_cast<FrozenMachine*>(parts_->machine.get()); }
int Composition::BoxesShown() const { return parts_->told->Boxes(); }
bool Composition::TranscriptIsWhole() const { return !parts_->writer || parts_->writer->Good(); }

void Composition::TellCall(std::string_view name, const EventList& arguments) {
  if (parts_->transcript) parts_->transcript->Call(name, arguments);
}
void Composition::TellReturn(std::string_view name, const EventValue& value) {
  if (parts_->transcript) parts_->transcript->Return(name, value);
}
void Composition::TellReturn(std::string_view name, const DeskGaveUp& gaveUp) {
  if (parts_->transcript) parts_->transcript->Return(name, gaveUp);
}

}  // namespace twqb::cli
