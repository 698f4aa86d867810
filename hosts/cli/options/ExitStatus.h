// How the program ends, and the exceptions by which a command ends it: for a reason that the user can put right, and
// because a signal asked for it. A process that a signal ended has a status of its own, 128 and the signal's number.
//
// What a transfer tells its user goes through the desk and is no exception here.
#pragma once

#include <cstdint>
#include <stdexcept>

namespace twqb::cli {

enum class ExitStatus : std::uint8_t {
  Done = 0,      // the operation returned True
  Failed = 1,    // it returned False
  Unusable = 2,  // wrong usage, or a file that can't be used
  NoAnswer = 3,  // a question without an answer
};

// Ends the run with `Unusable`. `what()` says what is wrong and what to do about it.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A signal has come (EndSignals), and what was begun has been taken back.
class EndedBySignal : public std::runtime_error {
 public:
  EndedBySignal() : std::runtime_error("Ended by a signal.") {}
};

}  // namespace twqb::cli
