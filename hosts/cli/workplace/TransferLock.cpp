#include "cli/workplace/TransferLock.h"

#include <fmt/core.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>
#include <thread>

#include "adapters/sqlite/ConnectionText.h"
#include "adapters/system/FileIdentity.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/options/ExitStatus.h"
#include "cli/screen/Output.h"
#include "cli/workplace/Surroundings.h"
#include "services/Conversions.h"

namespace twqb::cli {

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds kBetweenLooks{100};

// The file of the lock that is in the way, and its holder.
struct InTheWay {
  std::string file;
  Holder holder;
};

// The lock goes by a name, as the journals of the databases do: by a second name another transfer would get in.
void RefuseSeveralNames(const std::string& file) {
  struct stat status = {};
  if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_nlink < 2) return;
  throw UsageError(
      fmt::format("{} has {} names (hard links), by each of which a transfer could be at work on it.\n"
                  "Use one name alone: remove the others, or put a copy in their place.",
                  file, status.st_nlink));
}

// In the order of their names, so that two transfers which need both meet at the same one.
std::vector<std::string> FilesToHold(const std::vector<std::string>& paths) {
  std::vector<std::string> files;
  for (const auto& path : paths) {
    if (path.empty() || !IdentityOf(path)) continue;
    RefuseSeveralNames(path);
    files.push_back(ResolvedPath(path));
  }
  std::ranges::sort(files);
  files.erase(std::unique(files.begin(), files.end()), files.end());
  return files;
}

[[noreturn]] void RefuseLock(const std::string& file, const HeldFile::Outcome outcome) {
  const auto lock = file + kTransferLockSuffix;
  if (outcome == HeldFile::Outcome::NotOurs) {
    throw UsageError(fmt::format(
        "A transfer would be told of in {}, and something else has that name.\nMove it away, then start again.", lock));
  }
  throw UsageError(
      fmt::format("{} can't be held for the transfer, by {}: {}.", file, lock, std::generic_category().message(errno)));
}

std::string Told(const Holder& holder) {
  if (holder.process.empty()) return "another transfer";
  return fmt::format("\"{}\" (process {} on {}, since {})", holder.command, holder.process, holder.host, holder.since);
}

// All of the files or none: a transfer that waits for one holds no other.
std::optional<InTheWay> TryAll(const std::vector<std::string>& files, const Holder& self, std::vector<HeldFile>& held) {
  for (const auto& file : files) {
    auto answer = HeldFile::Claim(file + kTransferLockSuffix, file, self);
    switch (answer.outcome) {
      case HeldFile::Outcome::Held:
        held.push_back(std::move(*answer.held));
        break;
      case HeldFile::Outcome::NoFileHere:
        break;  // a database takes no change either where its folder takes no file
      case HeldFile::Outcome::HeldByOther:
        held.clear();
        return InTheWay{.file = file, .holder = std::move(answer.holder)};
      case HeldFile::Outcome::NotOurs:
      case HeldFile::Outcome::Failed:
        RefuseLock(file, answer.outcome);
    }
  }
  return std::nullopt;
}

// What goes by the name of a transfer here is called so, and what does not is not.
struct Doing {
  std::string_view command;
  std::string_view called;
  std::string_view nothing;  // has come of it
};
constexpr Doing kTransfer = {.called = "A transfer", .nothing = "Nothing has been transferred."};
constexpr std::array<Doing, 3> kDoings = {
    {{.command = "twqb restore", .called = "A restore", .nothing = "Nothing has been put back."},
     {.command = "twqb undo", .called = "An undo", .nothing = "Nothing has been taken back."},
     {.command = "twqb backup", .called = "A backup", .nothing = "No backup has been made."}}};

const Doing& DoingOf(std::string_view command) {
  const auto* found = std::ranges::find(kDoings, command, &Doing::command);
  return found == kDoings.end() ? kTransfer : *found;
}

[[noreturn]] void Refuse(const InTheWay& other, const Holder& self, int waited) {
  throw HeldByOther(fmt::format("{} is at work on {}: {}.\n{}{} {}", DoingOf(other.holder.command).called, other.file,
                                Told(other.holder), waited > 0 ? fmt::format("It still is after {} s. ", waited) : "",
                                DoingOf(self.command).nothing,
                                waited > 0 ? "Start again when it is through."
                                           : "Start again when it is through, or let this one wait with --wait."));
}

// By the clock of the system, whatever the run's is.
std::string BeginningNow() {
  const auto machine = MakeMachine({}, std::nullopt);
  return fmt::format("{} {}", IsoDate(machine->Now()), ZoneName(*machine));
}

}  // namespace

std::string BillingFileOf(const Workplace& place) {
  // What others call a data source may be a server.
  if (!sqlite::NamesEmbeddedEngine(place.billing)) return {};
  return sqlite::ParseConnectionText(place.billing).dataSource;
}

TransferLock::TransferLock(const Workplace& place, const Options& options)
    : TransferLock(std::vector{BillingFileOf(place), place.company}, options) {}

TransferLock::TransferLock(const std::vector<std::string>& files, const Options& options)
    : self_(ThisHolder(options.command, BeginningNow())), files_(FilesToHold(files)) {
  const auto end = steady_clock::now() + std::chrono::seconds(options.waitSeconds);
  for (bool told = false;;) {
    const auto other = TryAll(files_, self_, held_);
    if (!other) return;
    if (EndSignals::Came() != 0) throw HeldByOther(std::string(DoingOf(self_.command).nothing));
    if (steady_clock::now() >= end) Refuse(*other, self_, options.waitSeconds);
    if (!told) {
      Tell(fmt::format("{} is at work on {}: {}.\nWaiting for it, up to {} s.", DoingOf(other->holder.command).called,
                       other->file, Told(other->holder), options.waitSeconds));
      told = true;
    }
    std::this_thread::sleep_for(kBetweenLooks);
  }
}

void TransferLock::HoldToo(const std::string& company) {
  const auto file = ResolvedPath(company);
  if (std::ranges::find(files_, file) != files_.end()) return;
  RefuseSeveralNames(file);
  std::vector<HeldFile> more;
  if (const auto other = TryAll({file}, self_, more)) Refuse(*other, self_, 0);
  std::ranges::move(more, std::back_inserter(held_));
  files_.push_back(file);
}

}  // namespace twqb::cli
