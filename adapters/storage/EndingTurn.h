// Those who leave a file take turns: of several that close at the same moment each would see the others, and none put
// the file in order.
//
// A name of this machine's, made of the file's identity, that one process at a time can have: it leaves no file behind,
// and goes with a process that dies. Where it can't be had within a moment the turn is taken all the same.
#pragma once

#include <string>

namespace twqb::storage {

class EndingTurn {
 public:
  explicit EndingTurn(const std::string& file);
  ~EndingTurn();
  EndingTurn(const EndingTurn&) = delete;
  EndingTurn& operator=(const EndingTurn&) = delete;

 private:
  int name_ = -1;  // the descriptor that holds it
};

}  // namespace twqb::storage
