// The commands of the program: each function describes one of them, or those that belong together; one source file for
// each.
#pragma once

#include <vector>

#include "cli/options/Syntax.h"

namespace twqb::cli {

[[nodiscard]] CommandSyntax InitCommand();
[[nodiscard]] std::vector<CommandSyntax> TransferCommands();
[[nodiscard]] std::vector<CommandSyntax> DeletionCommands();
[[nodiscard]] CommandSyntax EventsCommand();
[[nodiscard]] CommandSyntax StatusCommand();
[[nodiscard]] CommandSyntax BalancesCommand();
[[nodiscard]] CommandSyntax DiffCommand();
[[nodiscard]] CommandSyntax LinkCommand();
[[nodiscard]] CommandSyntax CheckCommand();
[[nodiscard]] std::vector<CommandSyntax> LookupCommands();
[[nodiscard]] CommandSyntax SettingsCommand();
[[nodiscard]] CommandSyntax CompanyCommand();
[[nodiscard]] CommandSyntax BillingCommand();
[[nodiscard]] CommandSyntax ImportCommand();
[[nodiscard]] CommandSyntax DeletionsCommand();
[[nodiscard]] CommandSyntax DemoCommand();
[[nodiscard]] std::vector<CommandSyntax> BackupCommands();

}  // namespace twqb::cli
