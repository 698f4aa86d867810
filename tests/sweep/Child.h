// One piece of work in a process of its own, so that a crash, a hang or a kill ends the piece and not the test.
//
// The child inherits all that the parent has in memory. It must not use database handles that the parent has open.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace twqb::sweep {

using Problems = std::vector<std::string>;  // what a person has to look at, one text each; empty: all is well

struct ChildEnd {
  int signal = 0;     // that ended it; 0 when it ran to its end
  Problems problems;  // that it reported: none when a signal ended it before it could
};

// Runs `body` in a child and waits. An exception that escapes `body` is a problem. A child that has not ended after
// `seconds` is ended by SIGALRM.
[[nodiscard]] ChildEnd RunInChild(const std::function<Problems()>& body, unsigned seconds);

}  // namespace twqb::sweep
