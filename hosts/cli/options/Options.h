// The options that every command takes, as they were typed, and the files that they stand for.
//
// Nothing here opens a file; Composition and the commands do.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "adapters/system/FrozenOptions.h"
#include "adapters/transcript/Masking.h"
#include "cli/options/Syntax.h"

namespace twqb {
class RunObserver;
struct Table;
}  // namespace twqb

namespace twqb::cli {

struct OtherSides;

// The four files of a working folder.
inline constexpr const char* kBillingFile = "billing.db";
inline constexpr const char* kCompanyFile = "company.twq";
inline constexpr const char* kSettingsFile = "twqb.ini";
inline constexpr const char* kRegistryFile = "registry.ini";

// Whether every line of the log came into it.
enum class LogOfRun : std::uint8_t { Whole, Torn };

// Texts are empty where the option was not given.
struct Options {
  std::string command;     // as it is called, with the program: "twqb send"
  std::string label = {};  // what a command calls what it does, with its table: "send clients"
  std::string folder;
  std::string billing;  // a connection string
  std::string company;
  bool quickBooksItself = false;
  std::string settings;
  std::string registry;
  bool settingsTable = false;
  bool singleUser = false;
  bool noProgress = false;
  bool leaveOpen = false;
  bool noRecovery = false;
  bool wide = false;  // tables are not cut to the screen
  bool noBackup = false;
  std::string answers;
  std::string faults;
  std::optional<FrozenOptions> clock;
  std::string transcript;
  int waitSeconds = 0;  // for another transfer on the same files
  Masking masking = Masking::Masked;
  std::span<const Table* const> tables = {};  // of a program that brings its own; none: those of the library
  const OtherSides* sides = nullptr;          // of a program that brings its own; none: those of this system
  RunObserver* observer = nullptr;            // of a command; hears what becomes of records
  LogOfRun* log = nullptr;                    // of a command; told of a line that is lost
};

// As they are typed; each fills its field of `options`, which must outlive the parsing.
[[nodiscard]] std::vector<Argument> OptionArguments(Options& options);

// Enters the folder of -C, so that every relative path is meant from there. Raises UsageError when there is none.
void EnterFolder(const Options& options);

// Raises the UsageError of a company file that is not there; without a path, of QuickBooks itself in the place of one.
[[noreturn]] void RefuseMissingCompany(const std::string& path);

// Which QuickBooks a command works on: a company file of twqb's own in its place, or QuickBooks itself.
enum class QuickBooksSide : std::uint8_t { Embedded, Itself };

// What a command works on. Paths are full.
struct Workplace {
  std::string folder;
  std::string billing;  // a connection string
  QuickBooksSide quickBooks = QuickBooksSide::Embedded;
  std::string company;  // empty with QuickBooks itself, which opens what it is told in the run
  std::string settings;
  std::string registry;
};

// The files of a folder under their usual names.
[[nodiscard]] Workplace WorkplaceIn(const std::string& folder);
// The files of the current folder, with those in their place that the options name. Raises UsageError when --company
// names a file that is not there (without the option QuickBooks has none open then), and where --quickbooks can't be
// had.
[[nodiscard]] Workplace WorkplaceOf(const Options& options);

}  // namespace twqb::cli
