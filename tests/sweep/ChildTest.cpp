// A piece of work in a process of its own.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

#include "Child.h"

namespace twqb::sweep {
namespace {

constexpr unsigned kSeconds = 30;

TEST(Child, Problems_come_back_in_order_and_whole) {
  const std::string large(200000, 'x');
  const auto end = RunInChild([&] { return Problems{"first\nline", large, ""}; }, kSeconds);
  EXPECT_EQ(end.signal, 0);
  EXPECT_EQ(end.problems, (Problems{"first\nline", large, ""}));
}

TEST(Child, Nothing_to_report_gives_no_problems) {
  EXPECT_TRUE(RunInChild([] { return Problems{}; }, kSeconds).problems.empty());
}

TEST(Child, What_the_child_changes_in_memory_stays_there) {
  int here = 1;
  const auto end = RunInChild([&] { return Problems{std::to_string(++here)}; }, kSeconds);
  EXPECT_EQ(end.problems, Problems{"2"});
  EXPECT_EQ(here, 1);
}

TEST(Child, An_exception_that_escapes_is_a_problem) {
  const auto end = RunInChild([]() -> Problems { throw std::runtime_error("gone wrong"); }, kSeconds);
  EXPECT_EQ(end.problems, Problems{"An exception escaped: gone wrong"});
}

TEST(Child, A_signal_is_told) {
  const auto end = RunInChild(
      []() -> Problems {
        std::raise(SIGKILL);
        return {};
      },
      kSeconds);
  EXPECT_EQ(end.signal, SIGKILL);
}

TEST(Child, A_run_without_an_end_is_ended) {
  const auto end = RunInChild(
      []() -> Problems {
        while (true) pause();
      },
      1);
  EXPECT_EQ(end.signal, SIGALRM);
}

TEST(Child, A_child_that_leaves_by_itself_is_a_problem) {
  const auto end = RunInChild([]() -> Problems { _exit(3); }, kSeconds);
  EXPECT_EQ(end.problems, Problems{"The process ended with status 3."});
}

}  // namespace
}  // namespace twqb::sweep
