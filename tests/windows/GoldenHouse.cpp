// What stands behind the library's seams in a golden run through COM, in the place of hosts/com/House.cpp: the adapters
// of Windows, which call doubles of ADO, of QuickBooks' session library and of the call-back class by name; a desk with
// written-down answers, a machine whose clock stands still, scripted faults and the record, as on every system.
//
// The environment says where things are: TWQB_GOLDEN_FOLDER the files of the run, TWQB_GOLDEN_NOTES answers, faults and
// the record, TWQB_GOLDEN_TABLES "two" for those of the tests' own, TWQB_GOLDEN_LOST_LINKS "find" to look for such.

#include <cstdio>
#include <fstream>
#include <optional>
#include <sstream>

#include "adapters/faults/Faults.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/system/FrozenMachine.h"
#include "adapters/transcript/Transcript.h"
#include "adapters/transcript/TranscriptWriter.h"
#include "adapters/windows/ado/AdoProvider.h"
#include "adapters/windows/qbfc/HostCallback.h"
#include "adapters/windows/qbfc/QbfcTransport.h"
#include "com/House.h"
#include "platform/Forwarding.h"
#include "tests/support/PlainVendors.h"
#include "tests/windows/EnvironmentClock.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::com {

namespace {

// Tells the runner of each question, and goes on when that says so. Shared with the host program by the C library
// alone.
class AskingDesk : public ForwardingDesk {
 private:
  void Wait() {
    std::printf("question\t%d\n", ++questions_);
    std::fflush(stdout);
    for (int c = std::getchar(); c != '\n' && c != EOF; c = std::getchar()) {
    }
  }
  // No error leaves an operation, so the runner is told here.
  template <typename Ask>
  static auto Told(Ask ask) {
    try {
      return ask();
    } catch (const DeskGaveUp& unanswered) {
      std::printf("gave-up\t%s\n", unanswered.question().c_str());
      std::fflush(stdout);
      throw;
    }
  }

 public:
  using ForwardingDesk::ForwardingDesk;

  BoxAnswer ShowMessageBox(const MessageBox& box) override {
    if (box.buttons != BoxButtons::Ok) Wait();
    return Told([&] { return ForwardingDesk::ShowMessageBox(box); });
  }
  std::string OpenFileDialog(const FileDialog& dialog) override {
    Wait();
    return Told([&] { return ForwardingDesk::OpenFileDialog(dialog); });
  }
  std::optional<std::string> PickVendor(const std::string& message, const std::vector<std::string>& choices) override {
    return Told([&] { return ForwardingDesk::PickVendor(message, choices); });
  }

 private:
  int questions_ = 0;
};

// QuickBooks' clock goes with the machine's.
class TellingClock : public FrozenMachine {
 public:
  TellingClock(const SystemMachineOptions& options, const FrozenOptions& clock)
      : FrozenMachine(options, clock), clock_(clock) {}

  void Sleep(std::int64_t milliseconds) override {
    FrozenMachine::Sleep(milliseconds);
    clock_.now = Now();
    SetEnvironmentClock(clock_);
  }

 private:
  FrozenOptions clock_;
};

FrozenOptions Clock() {
  auto clock = EnvironmentClock().value_or(FrozenOptions{});
  clock.seed = 1;
  return clock;
}

std::string Note(const std::string& name) {
  std::ifstream file(FromEnvironment("TWQB_GOLDEN_NOTES") + "/" + name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class House {
 public:
  House() {
    auto seams = transcript_.Decorated();
    seams.desk = &desk_;
    const bool findsLostLinks = FromEnvironment("TWQB_GOLDEN_LOST_LINKS") == "find";
    twqb::Compose(seams, FromEnvironment("TWQB_GOLDEN_TABLES") == "two" ? TwoTables() : std::span<const Table* const>(),
                  nullptr, findsLostLinks ? LostLinks::FindAgain : LostLinks::Leave);
  }
  ~House() { twqb::Compose({}); }
  House(const House&) = delete;
  House& operator=(const House&) = delete;

  [[nodiscard]] windows::QbfcTransportFactory* Library() { return &quickbooks_; }

 private:
  std::string folder_ = FromEnvironment("TWQB_GOLDEN_FOLDER");
  TellingClock machine_{{.libraryFolder = folder_, .registryFile = folder_ + "/registry.ini"}, Clock()};
  windows::AdoProvider database_;
  windows::QbfcTransportFactory quickbooks_;
  ScriptedDesk script_{ParseAnswers(Note("answers"))};
  windows::HostCallbackFactory callback_;
  FaultPlatform faults_{{.database = &database_,
                         .quickbooks = &quickbooks_,
                         .desk = &script_,
                         .machine = &machine_,
                         .callback = &callback_},
                        ParseFaults(Note("faults"))};
  std::ofstream record_{FromEnvironment("TWQB_GOLDEN_NOTES") + "/record", std::ios::binary | std::ios::app};
  TranscriptWriter writer_{record_};
  TranscriptPlatform transcript_{faults_.Decorated(), writer_};
  AskingDesk desk_{*transcript_.Decorated().desk};
};

windows::QbfcTransportFactory* library = nullptr;  // the house's

}  // namespace

void Compose() {
  static House house;
  library = house.Library();
}

windows::QbfcTransportFactory* SessionLibrary() { return library; }

}  // namespace twqb::com
