#include <fmt/core.h>
#include <unistd.h>  // mkdtemp, where <cstdlib> has none

#include <cerrno>
#include <cstdlib>  // mkdtemp
#include <filesystem>
#include <system_error>

#include "cli/commands/Commands.h"
#include "cli/demo/Demo.h"
#include "cli/workplace/Surroundings.h"

namespace twqb::cli {

namespace {

namespace fs = std::filesystem;

fs::path NewFolder() {
  std::error_code failure;
  const auto above = fs::temp_directory_path(failure);
  if (failure) throw UsageError(fmt::format("There is no folder for temporary files: {}.", failure.message()));
  auto pattern = (above / "twqb-demo-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw UsageError(fmt::format("No folder can be made in {}: {}. Name one with -C.", above.string(),
                                 std::generic_category().message(errno)));
  }
  return pattern;
}

ExitStatus Demonstrate(const Options& options) {
  // It changes what it works on, so that is never a database or a company file of the user.
  if (!options.billing.empty() || !options.company.empty() || !options.settings.empty() || !options.registry.empty() ||
      options.settingsTable) {
    throw UsageError("demo makes files of its own: of the options that name files it takes -C alone.");
  }
  const auto surroundings = ReadSurroundings(options);
  if (!options.folder.empty()) return RunDemo(fs::current_path(), options, surroundings);
  const auto folder = NewFolder();
  try {
    return RunDemo(folder, options, surroundings);
  } catch (...) {
    std::error_code ignored;
    fs::remove(folder, ignored);  // while nothing is in it
    throw;
  }
}

}  // namespace

CommandSyntax DemoCommand() {
  return {
      .name = "demo",
      .text = "Show the link at work on a sample firm; asks nothing, changes no file",
      .footer =
          "It makes the sample firm in a new folder for temporary files, or in the one of -C, and keeps it for a "
          "quarter:\n"
          "month by month both sides are written to, and everything is sent and got. At the end the two books stand "
          "side by\n"
          "side, with what differs and why. The folder stays. The time is the firm's; of --clock the zone counts. "
          "Status 1:\n"
          "the two sides are not as they should be.",
      .run = Demonstrate};
}

}  // namespace twqb::cli
