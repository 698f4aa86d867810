// The commands of the program. Each function adds one command, or a group of them, to the command line; one source file
// for each.
#pragma once

#include <CLI/App.hpp>
#include <functional>

#include "cli/ExitStatus.h"
#include "cli/Options.h"

namespace twqb::cli {

// Carries out what was asked for, in the current folder. Raises UsageError, OutputError, DeskGaveUp, and PlatformError
// for a file that fails under it.
using Command = std::function<ExitStatus(const Options&)>;

// Each sets `chosen` when its command is the one on the command line. `chosen` must outlive the parsing.
void AddInitCommand(CLI::App& app, Command& chosen);
void AddTransferCommands(CLI::App& app, Command& chosen);
void AddLookupCommands(CLI::App& app, Command& chosen);
void AddDeletionCommands(CLI::App& app, Command& chosen);
void AddEventsCommands(CLI::App& app, Command& chosen);
void AddStatusCommand(CLI::App& app, Command& chosen);
void AddSettingsCommands(CLI::App& app, Command& chosen);
void AddCompanyCommands(CLI::App& app, Command& chosen);
void AddBillingCommands(CLI::App& app, Command& chosen);
void AddDemoCommand(CLI::App& app, Command& chosen);

}  // namespace twqb::cli
