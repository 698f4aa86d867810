#include "bench/CommandLine.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

namespace twqb {

int RunBench(CLI::App& app, int argc, char** argv, const std::function<Goals()>& body) {
  constexpr int kFailed = 2;
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& wrong) {
    // An option that is mistyped comes with a value that is taken for something else: the option is what to tell.
    if (const auto unknown = app.remaining(); !unknown.empty()) {
      fmt::print(stderr, "There is no {}.\n", fmt::join(unknown, ", "));
    }
    return app.exit(wrong) == 0 ? 0 : kFailed;
  }
  try {
    return body() == Goals::Met ? 0 : 1;
  } catch (const std::exception& failure) {
    fmt::print(stderr, "{}\n", failure.what());
    return kFailed;
  }
}

}  // namespace twqb
