// The machine of a run, telling on standard error each copy of a file that failed, and its host of a lost line of the
// log.
//
// The backup of the first run says that it is complete whatever became of it; whoever looks at the screen must know
// better. It stands outermost, so that scripted faults are told as real ones are. The log is the library's.
#pragma once

#include "cli/options/Options.h"
#include "cli/screen/Output.h"
#include "platform/Forwarding.h"
#include "platform/PlatformError.h"

namespace twqb::cli {

class TellingMachine : public ForwardingMachine {
 public:
  TellingMachine(Machine& inner, LogOfRun* log) : ForwardingMachine(inner), log_(log) {}

  void CopyFile(const std::string& from, const std::string& to) override {
    try {
      ForwardingMachine::CopyFile(from, to);
    } catch (const PlatformError& failure) {
      Tell(from.empty() ? "There is no backup of BillingDb: the registry file names no Database."
                        : "There is no backup of " + from + ": " + failure.description());
      throw;
    }
  }

  void AppendLine(const std::string& path, std::string_view line) override {
    try {
      ForwardingMachine::AppendLine(path, line);
    } catch (const PlatformError&) {
      if (log_ != nullptr) *log_ = LogOfRun::Torn;
      throw;
    }
  }

 private:
  LogOfRun* log_;
};

}  // namespace twqb::cli
