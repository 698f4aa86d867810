#include "cli/Options.h"

#include <fmt/format.h>

#include <system_error>

#include "cli/ExitStatus.h"
#include "platform/Date.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace fs = std::filesystem;

namespace {

constexpr int kMinutesOfDay = 24 * 60;
constexpr const char* kFiles = "Files";
constexpr const char* kRun = "How a transfer runs";
constexpr const char* kTests = "Reproducible runs";

FrozenOptions& ClockOf(Options& options) {
  if (!options.clock) options.clock = FrozenOptions{.zone = {.state = TimeZoneState::Standard}};
  return *options.clock;
}

void ReadClock(Options& options, const std::string& text) {
  const auto now = ParseDate(text);
  // A time alone falls on the first day of all.
  if (!now || now->Milliseconds() < Date::kDay) {
    throw CLI::ValidationError("--clock", fmt::format("\"{}\" is no time such as 2008-03-05T10:00:00", text));
  }
  ClockOf(options).now = *now;
}

void AddFileOptions(CLI::App& app, Options& options) {
  app.add_option("-C", options.folder, "Work as if started in DIR; the log goes there too")
      ->type_name("DIR")
      ->group(kFiles);
  app.add_option("--billing", options.billing, "Connection string of BillingDb")->type_name("CONNECT")->group(kFiles);
  app.add_option("--company", options.company, "Company file that QuickBooks has open")
      ->type_name("FILE")
      ->group(kFiles);
  app.add_option("--settings", options.settings, "Settings (INI) file")->type_name("FILE")->group(kFiles);
  app.add_flag("--settings-table", options.settingsTable, "Keep the settings in the table TWSTable instead")
      ->group(kFiles);
  app.add_option("--registry", options.registry, "INI file with the registry values of the user")
      ->type_name("FILE")
      ->group(kFiles);
}

void AddRunOptions(CLI::App& app, Options& options) {
  app.add_flag("--single-user", options.singleUser, "Open the company file in single-user mode")->group(kRun);
  app.add_flag("--no-progress", options.noProgress, "Show no progress")->group(kRun);
  app.add_flag("--leave-open", options.leaveOpen, "Leave the progress form open between tables")->group(kRun);
  app.add_option("--answers", options.answers, "Answer questions from FILE, one answer a line")
      ->type_name("FILE")
      ->group(kRun);
}

void AddTestOptions(CLI::App& app, Options& options) {
  app.add_option("--faults", options.faults, "Let calls fail as FILE tells, one fault a line")
      ->type_name("FILE")
      ->group(kTests);
  app.add_option("--transcript", options.transcript, "Record the run in FILE, as JSON Lines")
      ->type_name("FILE")
      ->group(kTests);
  app.add_flag_callback(
         "--unmasked", [&options] { options.masking = Masking::Unmasked; },
         "Leave passwords and identity numbers in the transcript")
      ->group(kTests);
  auto* clock = app.add_option_function<std::string>(
                       "--clock", [&options](const std::string& text) { ReadClock(options, text); },
                       "Stop the clock at TIME; it moves by sleeps alone")
                    ->type_name("TIME")
                    ->group(kTests);
  const auto addMinutes = [&](const char* name, int TimeZoneInformation::*field, const char* text) {
    app.add_option_function<int>(
           name, [&options, field](const int& minutes) { ClockOf(options).zone.*field = minutes; }, text)
        ->type_name("MIN")
        ->check(CLI::Range(-kMinutesOfDay, kMinutesOfDay).description(""))
        ->needs(clock)
        ->group(kTests);
  };
  addMinutes("--bias", &TimeZoneInformation::bias, "Time zone: UTC is local time plus MIN");
  addMinutes("--daylight-bias", &TimeZoneInformation::daylightBias, "What daylight time adds to that (-60)");
  app.add_flag_callback(
         "--daylight", [&options] { ClockOf(options).zone.state = TimeZoneState::Daylight; }, "Daylight time is on")
      ->needs(clock)
      ->group(kTests);
  app.add_option_function<std::uint64_t>(
         "--seed", [&options](const std::uint64_t& seed) { ClockOf(options).seed = seed; },
         "Where GUIDs and random numbers start")
      ->type_name("N")
      ->needs(clock)
      ->group(kTests);
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

void AddOptions(CLI::App& app, Options& options) {
  AddFileOptions(app, options);
  AddRunOptions(app, options);
  AddTestOptions(app, options);
}

void EnterFolder(const Options& options) {
  if (options.folder.empty()) return;
  std::error_code failure;
  fs::current_path(options.folder, failure);
  if (!failure) return;
  throw UsageError(fmt::format("The folder {} can't be entered: {}.", options.folder, failure.message()));
}

Workplace WorkplaceIn(const fs::path& folder) {
  return {.folder = folder.string(),
          .billing = ConnectionTo(folder / kBillingFile),
          .company = (folder / kCompanyFile).string(),
          .settings = (folder / kSettingsFile).string(),
          .registry = (folder / kRegistryFile).string()};
}

Workplace WorkplaceOf(const Options& options) {
  auto place = WorkplaceIn(fs::current_path());
  if (!options.billing.empty()) place.billing = options.billing;
  Replace(place.company, options.company);
  Replace(place.settings, options.settings);
  Replace(place.registry, options.registry);
  return place;
}

}  // namespace twqb::cli
