#include "cli/workplace/RunFiles.h"

#include <fmt/core.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "adapters/system/FileIdentity.h"
#include "cli/options/ExitStatus.h"
#include "cli/workplace/Surroundings.h"
#include "cli/workplace/TransferLock.h"
#include "services/Errors.h"

namespace twqb::cli {

namespace {

// What stands beside a database: its journals, the backup of the first run, the locks of sessions and transfers.
constexpr std::array kBesideDatabases = {"-journal", "-wal", "-shm", "_TWB.bak", ".lock", kTransferLockSuffix};

void AddDatabase(std::vector<RunFile>& files, const std::string& path, const std::string& called) {
  if (path.empty()) return;
  files.push_back({.path = path, .called = called});
  for (const auto* behind : kBesideDatabases) {
    files.push_back({.path = path + behind, .called = fmt::format("a file that belongs to {}", called)});
  }
}

[[noreturn]] void RefuseSettings(const std::string& path, std::string_view isWhat) {
  throw UsageError(
      fmt::format("The settings file {} is {}; writing settings would destroy it.\nName another one with --settings.",
                  path, isWhat));
}

// The log is appended to, whatever it leads to.
void RefuseLinkedLog(const Workplace& place, const Options& options) {
  const auto log = LogFile(*MakeMachine(place, options.clock));
  if (!IdentityOf(log)) return;
  for (const auto& file :
       {BillingFileOf(place), place.company, place.settings, place.registry, options.answers, options.faults}) {
    if (IdentityOf(file) != IdentityOf(log)) continue;
    throw UsageError(
        fmt::format("The log {} leads to {}, which writing it would destroy.\nMove the log away.", log, file));
  }
}

// A text has no zero bytes but as UTF-16, which settings are not written in.
bool IsText(const std::string& path) {
  constexpr std::size_t kLookedAt = 4096;
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  std::string beginning(kLookedAt, ' ');
  file.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
  beginning.resize(static_cast<std::size_t>(file.gcount()));
  return beginning.find('\0') == std::string::npos;
}

}  // namespace

std::vector<RunFile> FilesOfRun(const Workplace& place, Machine& machine, const std::vector<std::string>& read) {
  std::vector<RunFile> files;
  AddDatabase(files, BillingFileOf(place), "BillingDb");
  AddDatabase(files, place.company, "the company file");
  files.push_back({.path = place.settings, .called = "the settings file"});
  files.push_back({.path = place.registry, .called = "the registry file"});
  files.push_back({.path = LogFile(machine), .called = "the log"});
  for (const auto& path : read) files.push_back({.path = path, .called = "read by this run"});
  return files;
}

void CheckApart(const Workplace& place, const Options& options) {
  const auto billing = BillingFileOf(place);
  const auto isThere = [](const std::string& path) { return IdentityOf(path).has_value(); };
  if (isThere(billing) && isThere(place.company) && AreOneFile(billing, place.company)) {
    throw UsageError(fmt::format(
        "BillingDb and the company file are both {}.\nName two files, with --billing and --company.", place.company));
  }
  RefuseLinkedLog(place, options);
  if (options.settingsTable || !isThere(place.settings)) return;
  if (isThere(billing) && AreOneFile(billing, place.settings)) RefuseSettings(place.settings, "BillingDb");
  if (AreOneFile(place.company, place.settings)) RefuseSettings(place.settings, "the company file");
  for (const auto& path : {options.answers, options.faults}) {
    if (!path.empty() && AreOneFile(path, place.settings))
      RefuseSettings(place.settings, "read by this run for something else");
  }
  std::error_code ignored;
  if (std::filesystem::is_regular_file(place.settings, ignored) && !IsText(place.settings)) {
    RefuseSettings(place.settings, "no text");
  }
}

}  // namespace twqb::cli
