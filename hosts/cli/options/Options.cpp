#include "cli/options/Options.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>

#include "cli/options/ExitStatus.h"
#include "cli/options/SystemSides.h"
#include "platform/Date.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace fs = std::filesystem;

namespace {

constexpr int kMinutesOfDay = 24 * 60;
constexpr int kLongestWait = 24 * 60 * 60;
constexpr std::string_view kFiles = "Files";
constexpr std::string_view kRun = "How a transfer runs";
constexpr std::string_view kTests = "Reproducible runs";
constexpr std::string_view kClock = "--clock";

FrozenOptions& ClockOf(Options& options) {
  if (!options.clock) options.clock = FrozenOptions{.zone = {.state = TimeZoneState::Standard}};
  return *options.clock;
}

void ReadClock(Options& options, const std::string& text) {
  const auto now = ParseDate(text);
  // A time alone falls on the first day of all.
  if (!now || now->Milliseconds() < Date::kDay) {
    throw ValueError(fmt::format("\"{}\" is no time such as 2008-03-05T10:00:00", text));
  }
  ClockOf(options).now = *now;
}

std::vector<Argument> FileOptions(Options& options) {
  return {{.name = "-C",
           .text = "Work as if started in DIR; the log goes there too",
           .target = &options.folder,
           .value = "DIR",
           .group = kFiles},
          {.name = "--billing",
           .text = "Connection string of BillingDb",
           .target = &options.billing,
           .value = "CONNECT",
           .group = kFiles},
          {.name = "--company",
           .text = "Company file that QuickBooks has open",
           .target = &options.company,
           .value = "FILE",
           .group = kFiles},
          {.name = "--quickbooks",
           .text = "Work on QuickBooks itself, on Windows, in the company file's place",
           .target = &options.quickBooksItself,
           .group = kFiles,
           .excludes = "--company"},
          {.name = "--settings",
           .text = "Settings (INI) file",
           .target = &options.settings,
           .value = "FILE",
           .group = kFiles},
          {.name = "--settings-table",
           .text = "Keep the settings in the table TWSTable instead",
           .target = &options.settingsTable,
           .group = kFiles},
          {.name = "--registry",
           .text = "INI file with the registry values of the user",
           .target = &options.registry,
           .value = "FILE",
           .group = kFiles}};
}

std::vector<Argument> RunOptions(Options& options) {
  return {{.name = "--single-user",
           .text = "Open the company file in single-user mode",
           .target = &options.singleUser,
           .group = kRun},
          {.name = "--no-progress", .text = "Show no progress", .target = &options.noProgress, .group = kRun},
          {.name = "--leave-open",
           .text = "Leave the progress form open between tables",
           .target = &options.leaveOpen,
           .group = kRun},
          {.name = "--no-recovery",
           .text = "Don't look for links that got lost, and send as if none could",
           .target = &options.noRecovery,
           .group = kRun},
          {.name = "--no-backup",
           .text = "Make no backup ahead of what is about to be written",
           .target = &options.noBackup,
           .group = kRun},
          {.name = "--wait",
           .text = "Wait up to SECONDS for another transfer on the same files to end",
           .target = &options.waitSeconds,
           .value = "SECONDS",
           .group = kRun,
           .range = Range{.least = 0, .greatest = kLongestWait}},
          {.name = "--wide",
           .text = "Show tables whole, however wide the screen is",
           .target = &options.wide,
           .group = kRun},
          {.name = "--answers",
           .text = "Answer questions from FILE, one answer a line",
           .target = &options.answers,
           .value = "FILE",
           .group = kRun}};
}

Argument MinutesOption(Options& options, std::string_view name, int TimeZoneInformation::*field,
                       std::string_view text) {
  return {.name = name,
          .text = text,
          .target = TakesNumber([&options, field](int minutes) { ClockOf(options).zone.*field = minutes; }),
          .value = "MIN",
          .group = kTests,
          .range = Range{.least = -kMinutesOfDay, .greatest = kMinutesOfDay},
          .needs = kClock};
}

std::vector<Argument> TestOptions(Options& options) {
  return {{.name = "--faults",
           .text = "Let calls fail as FILE tells, one fault a line",
           .target = &options.faults,
           .value = "FILE",
           .group = kTests},
          {.name = "--transcript",
           .text = "Record the run in FILE, as JSON Lines",
           .target = TakesFileName(options.transcript),
           .value = "FILE",
           .group = kTests},
          {.name = "--unmasked",
           .text = "Leave passwords and identity numbers in the transcript",
           .target = TakesNothing([&options] { options.masking = Masking::Unmasked; }),
           .group = kTests},
          {.name = kClock,
           .text = "Stop the clock at TIME; it moves by sleeps alone",
           .target = TakesText([&options](const std::string& text) { ReadClock(options, text); }),
           .value = "TIME",
           .group = kTests},
          MinutesOption(options, "--bias", &TimeZoneInformation::bias, "Time zone: UTC is local time plus MIN"),
          MinutesOption(options, "--daylight-bias", &TimeZoneInformation::daylightBias,
                        "What daylight time adds to that (-60)"),
          {.name = "--daylight",
           .text = "Daylight time is on",
           .target = TakesNothing([&options] { ClockOf(options).zone.state = TimeZoneState::Daylight; }),
           .group = kTests,
           .needs = kClock},
          {.name = "--seed",
           .text = "Where GUIDs and random numbers start",
           .target = TakesSeed([&options](std::uint64_t seed) { ClockOf(options).seed = seed; }),
           .value = "N",
           .group = kTests,
           .needs = kClock}};
}

std::string ConnectionTo(const fs::path& file) {
  auto source = file.string();
  if (source.find_first_of(";\"") != std::string::npos || Trim(source) != source) {
    source = fmt::format("\"{}\"", ReplaceAll(source, "\"", "\"\""));
  }
  return "Provider=SQLITE;Data Source=" + source;
}

void Replace(std::string& path, const std::string& given) {
  if (!given.empty()) path = fs::absolute(given).lexically_normal().string();
}

}  // namespace

TakesText TakesFileName(std::string& path) {
  return [&path](const std::string& text) {
    if (text.empty()) throw ValueError("it needs the name of a file");
    path = text;
  };
}

std::vector<Argument> OptionArguments(Options& options) {
  auto arguments = FileOptions(options);
  std::ranges::move(RunOptions(options), std::back_inserter(arguments));
  std::ranges::move(TestOptions(options), std::back_inserter(arguments));
  return arguments;
}

void EnterFolder(const Options& options) {
  if (options.folder.empty()) return;
  std::error_code failure;
  fs::current_path(options.folder, failure);
  if (!failure) return;
  throw UsageError(fmt::format("The folder {} can't be entered: {}.", options.folder, failure.message()));
}

void RefuseMissingCompany(const std::string& path) {
  if (path.empty()) {
    throw UsageError(
        "This command works on a company file of twqb's own, and --quickbooks names QuickBooks itself.\nLeave "
        "--quickbooks out; --company names a company file.");
  }
  throw UsageError(fmt::format(
      "There is no company file {}.\nRun \"twqb init\" in this folder, or name a company file with --company.", path));
}

Workplace WorkplaceIn(const std::string& folder) {
  const fs::path path(folder);
  return {.folder = folder,
          .billing = ConnectionTo(path / kBillingFile),
          .company = (path / kCompanyFile).string(),
          .settings = (path / kSettingsFile).string(),
          .registry = (path / kRegistryFile).string()};
}

Workplace WorkplaceOf(const Options& options) {
  auto place = WorkplaceIn(fs::current_path().string());
  if (!options.billing.empty()) place.billing = options.billing;
  if (options.quickBooksItself) {
    if (options.sides == nullptr) RequireQuickBooksItself();
    place.quickBooks = QuickBooksSide::Itself;
    place.company.clear();
  }
  Replace(place.company, options.company);
  std::error_code failure;
  if (!options.company.empty() && !fs::exists(place.company, failure) && !failure) RefuseMissingCompany(place.company);
  Replace(place.settings, options.settings);
  Replace(place.registry, options.registry);
  return place;
}

}  // namespace twqb::cli
