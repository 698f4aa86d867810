// A process that is killed while it writes: what was answered is there, and no document is there in part.

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>

#include "CompanyTest.h"

namespace twqb::company {
namespace {

// A customer with a balance and two jobs, all or none of them.
std::string Family(int number) {
  const auto name = "Family " + std::to_string(number);
  const auto job = [&](const std::string& jobName) {
    return AddRequest("<Name>" + jobName + "</Name><ParentRef><FullName>" + name +
                      "</FullName></ParentRef><OpenBalance>2.50</OpenBalance>");
  };
  return AddRequest("<Name>" + name + "</Name>") + job("First") + job("Second");
}

class KilledProcess : public CompanyTest {
 protected:
  // Adds families in a process of its own until it has answered `answers` of them and a moment more, then kills it.
  // Gives the number of those that were answered.
  int KillAfter(int first, int answers, useconds_t moment) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
      TestMachine machine;
      CompanyFile file(path_, machine);
      for (int i = first;; ++i) {
        (void)file.Process(Document(Family(i)));
        if (write(ends[1], "+", 1) != 1) _exit(1);
      }
    }
    close(ends[1]);
    char mark = 0;
    int answered = 0;
    while (answered < answers && read(ends[0], &mark, 1) == 1) ++answered;
    usleep(moment);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (read(ends[0], &mark, 1) == 1) ++answered;
    close(ends[0]);
    return answered;
  }
};

TEST_F(KilledProcess, Leaves_every_document_that_it_answered_and_none_in_part) {
  file_.reset();
  int families = 0;
  constexpr useconds_t kStep = 137;  // microseconds: another moment of the document each time
  for (int round = 0; round < 20; ++round) {
    const int answered = KillAfter(families + 1, 3, kStep * static_cast<useconds_t>(round));
    file_.emplace(path_, machine_);
    const auto customers = Send(QueryRequest("<ActiveStatus>All</ActiveStatus>"));
    const auto levels = customers.All("Sublevel");
    const auto tops = static_cast<int>(std::count(levels.begin(), levels.end(), "0"));
    // At most the one document whose answer was on its way when the process died.
    EXPECT_GE(tops, families + answered);
    EXPECT_LE(tops, families + answered + 1);
    EXPECT_EQ(static_cast<int>(levels.size()), 3 * tops);
    for (const auto record : customers.node.children()) {
      if (std::string_view(record.child("Sublevel").text().get()) != "0") continue;
      EXPECT_STREQ(record.child("TotalBalance").text().get(), "5.00");
    }
    families = tops;
    file_.reset();
  }
  file_.emplace(path_, machine_);
  EXPECT_EQ(AddNamed("The next").code, 0);
}

}  // namespace
}  // namespace twqb::company
