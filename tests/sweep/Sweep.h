// The sweep: a transfer that is broken at every one of its calls through the seams, one call at a time, by an error or
// by the death of the process, before the call takes effect or after it has.
//
// A scenario says what is on both sides and what is transferred; the rest is here and holds for every table. Each break
// has a process, a house and a copy of the prepared files of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Checks.h"
#include "Child.h"
#include "Trace.h"
#include "adapters/faults/FaultScript.h"
#include "engine/Table.h"
#include "services/Direction.h"
#include "tests/support/Killer.h"
#include "tests/support/TestHouse.h"
#include "twqb/CTWQBBridge.h"
#include "twqb/enTables.h"

namespace twqb::sweep {

enum class SettingsStore : std::uint8_t { IniFile, Table };

struct Transfer {
  Direction direction = Direction::Send;
  enTables table = enClients;
  // Selects the keys that a host names to the transfer, which then leaves the saved filters alone; left out: none.
  std::string_view named = {};
};

// When a scenario's own judge is asked.
enum class Moment : std::uint8_t { Broken, CleanRunBehind };

struct Scenario {
  std::string name;  // of the test
  std::vector<LinkedTable> tables;
  std::span<const Table* const> ownTables = {};  // tables of the tests' own
  SettingsStore settings = SettingsStore::IniFile;
  NameInUse nameInUse = NameInUse::TriesNext;  // of all its tables
  RowDisplay display = RowDisplay::Told;       // likewise
  // Brings both sides to where the transfers begin; it may transfer by itself. The house's clock stands an hour before
  // the sweep's.
  std::function<void(TestHouse&, const Scenario&)> prepare;
  std::vector<Transfer> transfers;
  // What is wrong, where a break leaves more than the common checks can tell; left out: these are made.
  std::function<Problems(const Snapshot& now, const Expectation& expected, Moment moment)> judge = {};
};
std::ostream& operator<<(std::ostream& out, const Scenario& scenario);

// Runs the scenario's transfers in the house that the library is composed with, by a bridge object that comes and goes.
// True when all returned True.
bool RunTransfers(TestHouse& house, const Scenario& scenario);

class Sweep {
 public:
  // Prepares the files and runs the transfers once, clean. Raises
  // std::runtime_error when they don't return True.
  explicit Sweep(const Scenario& scenario);

  [[nodiscard]] const Trace& CleanTrace() const { return trace_; }
  [[nodiscard]] const Expectation& Expected() const { return expected_; }

  // What is wrong after the k-th call raised, and after the clean run behind it in the same process.
  [[nodiscard]] Problems RaiseAt(std::size_t k, FaultTiming timing);
  // What is wrong after the process was killed at the k-th call, and after the clean run of another process.
  [[nodiscard]] Problems KillAt(std::size_t k, FaultTiming timing);

  // Of each call by which a clean run changes the files of the databases, until both are put in order behind it: the
  // number of calls through the seams by then.
  [[nodiscard]] std::vector<std::size_t> FileCalls();
  // The same as KillAt for the n-th of these, ahead of which there were `k` calls through the seams.
  [[nodiscard]] Problems KillInFiles(std::size_t n, std::size_t k);

  // How long the transfers take, for what follows; the prepared files are as they were.
  [[nodiscard]] Length Measure();
  // What is wrong after a kill at any moment and the clean run of another process. Nothing: the run was at its end
  // before. `lostLinks` is what both processes do about lost links.
  [[nodiscard]] std::optional<Problems> KillAnywhere(const KillPlan& plan, LostLinks lostLinks);
  // How many links the last clean run behind a kill has found again, by the log.
  [[nodiscard]] std::size_t FoundAgain() const;

 private:
  enum class KillMoment : std::uint8_t { AtACall, WithinACall };

  // What the library is composed with beside the seams.
  void SetTables(TestHouse& house) const;
  void Restore() const;
  void RestoreWithoutLog() const;
  void Rehearse();
  [[nodiscard]] std::string House() const { return root_ / "house"; }
  [[nodiscard]] std::string Prepared() const { return root_ / "prepared"; }
  [[nodiscard]] std::string Found() const { return root_ / "found"; }
  [[nodiscard]] HouseOptions Options() const;
  [[nodiscard]] Problems FoundBroken(const Snapshot& now, Leaves leaves) const;
  [[nodiscard]] Problems FoundInStep(const Snapshot& now, Leaves leaves) const;
  [[nodiscard]] Leaves LeftBy(std::size_t k, FaultTiming timing, Break how) const;
  [[nodiscard]] Problems RunRaising(std::size_t k, FaultTiming timing) const;
  [[nodiscard]] Problems CheckAfterRaise(TestHouse& house, bool result, std::size_t k, FaultTiming timing) const;
  [[nodiscard]] Problems RunKilled(std::size_t k, FaultTiming timing) const;
  // Tells `watch` the number of calls through the seams at each call that changes files.
  void RunWatched(const std::function<void(std::size_t k)>& watch) const;
  [[nodiscard]] Problems AfterKill(ChildEnd end, const std::vector<Leaves>& possible, KillMoment moment);
  [[nodiscard]] Problems CheckAfterKill(const std::vector<Leaves>& possible, KillMoment moment) const;
  [[nodiscard]] Problems RunCleanly(TestHouse& house) const;

  Scenario scenario_;
  TemporaryFolder root_;
  Trace trace_;
  Expectation expected_;
  std::vector<std::string> boxes_;  // of the clean run
};

}  // namespace twqb::sweep
