#include "bench/Runs.h"

#include <filesystem>
#include <functional>
#include <stdexcept>

#include "bench/Bases.h"
#include "bench/Timing.h"
#include "tests/support/Process.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {

namespace {

// A run on the seams, composed with `platform`; `begin` is called ahead of the transfer.
double CarryOut(Seams& seams, const Platform& platform, const TimedRun& run, const std::function<void()>& begin) {
  Compose(platform);
  double seconds = 0;
  bool good = false;
  {
    CTWQBBridge bridge;
    bridge.SetConnectString(seams.connectString);
    bridge.SetTWSettingsPath(seams.settings);
    bridge.SetUsePreferencesTW(run.named.empty());
    bridge.SetPassedID(run.named);
    if (!bridge.ConnectToQB(true)) throw std::runtime_error("no session");
    begin();
    seconds = Seconds([&] {
      good = run.direction == Direction::Send ? bridge.SendDataToQB(run.table) : bridge.GetDataFromQB(run.table);
    });
  }
  Compose({});
  for (const auto& shown : seams.desk.Boxes()) {
    if (shown.box.title != "Review Bill in QuickBooks") throw std::runtime_error("a box was shown: " + shown.box.text);
  }
  if (!good) throw std::runtime_error("the transfer failed");
  return seconds;
}

MeasuredRun TimeFloor(const std::string& base, const TimedRun& run) {
  const TemporaryFolder recorded;
  const TemporaryFolder folder;
  CopyBase(base, recorded.Path());
  CopyBase(base, folder.Path());
  Seams recordedSeams(recorded.Path());
  FloorRecorder recorder(recordedSeams.All());
  CarryOut(recordedSeams, recorder.Decorated(), run, [&] { recorder.Begin(); });

  CountedFiles files(Journal::WrittenAhead);
  double seconds = 0;
  {
    Seams seams(folder.Path());
    FloorState state;
    state.machine = &seams.machine;
    state.settings = seams.settings;
    state.transport = seams.quickbooks.CreateTransport();
    state.transport->OpenConnection("FLOOR", "Floor");
    state.transport->BeginSession("", OpenMode::DoNotCare);
    for (std::size_t i = 0; i < recorder.Connections(); ++i) {
      state.connections.push_back(seams.database.CreateConnection());
      state.connections.back()->SetConnectionString(seams.connectString);
    }
    files.Begin();
    seconds = Seconds([&] { ReplayFloor(recorder.Calls(), state); });
  }
  return {.seconds = seconds, .files = files.Counts()};
}

}  // namespace

void CopyBase(const std::string& from, const std::string& to) {
  for (const auto* name : {"/billing.db", "/company.twq", "/twqb.ini"}) {
    std::filesystem::copy_file(from + name, to + name);
  }
  // The company file of a copy is another one than that which was synced with last.
  Seams seams(to);
  seams.machine.WritePrivateProfileString("GENERAL", "QBDBPath", "", seams.settings);
}

MeasuredRun TimeLibrary(const std::string& folder, const TimedRun& run, Journal journal) {
  CountedFiles files(journal);
  double seconds = 0;
  {
    Seams seams(folder);
    seconds = CarryOut(seams, seams.All(), run, [&] { files.Begin(); });
  }
  return {.seconds = seconds, .files = files.Counts()};
}

Measurement Measure(const std::string& base, const TimedRun& run) {
  Measurement measured;
  std::vector<double> library;
  std::vector<double> floor;
  for (int i = 0; i < kRepetitions; ++i) {
    const TemporaryFolder folder;
    CopyBase(base, folder.Path());
    const auto whole = TimeLibrary(folder.Path(), run);
    const auto least = TimeFloor(base, run);
    library.push_back(whole.seconds);
    floor.push_back(least.seconds);
    measured.libraryFiles = whole.files;
    measured.floorFiles = least.files;
  }
  measured.library = Median(library);
  measured.floor = Median(floor);
  return measured;
}

MeasuredRun MeasureRollback(const std::string& base, const TimedRun& run) {
  MeasuredRun measured;
  std::vector<double> seconds;
  for (int i = 0; i < kRepetitions; ++i) {
    const TemporaryFolder folder;
    CopyBase(base, folder.Path());
    measured = TimeLibrary(folder.Path(), run, Journal::Rollback);
    seconds.push_back(measured.seconds);
  }
  measured.seconds = Median(seconds);
  return measured;
}

std::vector<TableShare> SharesOf(const std::string& base, const TimedRun& run) {
  const TemporaryFolder folder;
  CopyBase(base, folder.Path());
  Seams seams(folder.Path());
  FloorRecorder recorder(seams.All());
  CarryOut(seams, recorder.Decorated(), run, [&] { recorder.Begin(); });
  return recorder.Tables();
}

}  // namespace twqb
