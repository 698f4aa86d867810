// The host in another program, and how its end is taken.

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/golden/ComHost.h"
#include "tests/support/Process.h"

namespace twqb {
namespace {

// A program that takes each order, and ends like that.
std::vector<std::string> ObedientUntil(const std::string& end) {
  return {"sh", "-c", "echo ready; while read -r order; do echo done; done; " + end};
}

TEST(ComHost, That_ends_well_passes) {
  const TemporaryFolder folder;
  ComHost host({.folder = folder.Path()}, ObedientUntil("echo the last words"));
  host.BeginObject();
  host.EndObject();
}

TEST(ComHost, That_fails_when_it_ends_fails_the_test) {
  const TemporaryFolder folder;
  const auto run = [&](const std::string& end) {
    ComHost host({.folder = folder.Path()}, ObedientUntil(end));
    host.BeginObject();
    host.EndObject();
  };
  EXPECT_NONFATAL_FAILURE(run("exit 5"), "ended with status 5, behind: release");
  EXPECT_NONFATAL_FAILURE(run("kill -9 $$"), "ended with signal 9");
}

TEST(ComHost, That_ends_ahead_of_its_first_line_begins_once_more) {
  const TemporaryFolder folder;
  // It leaves a mark, and goes on where there is one.
  auto command = ObedientUntil("exit 0");
  command.back() = "mkdir mark 2>/dev/null && exit 1; " + command.back();
  ComHost host({.folder = folder.Path()}, command);
  host.BeginObject();
  host.EndObject();
}

TEST(ComHost, That_ends_ahead_of_its_first_line_twice_fails) {
  const TemporaryFolder folder;
  const auto begin = [&] { const ComHost host({.folder = folder.Path()}, {"sh", "-c", "echo >>begun; exit 1"}); };
  EXPECT_THROW(begin(), std::runtime_error);
  EXPECT_EQ(ReadWholeFile(folder.Path() + "/begun"), "\n\n");
}

}  // namespace
}  // namespace twqb
