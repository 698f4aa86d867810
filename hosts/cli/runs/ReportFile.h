// The report of a transfer: what became of each record, and each error, as JSON Lines in a file.
//
// Each line begins with what it tells of: a record, a line of one, or an error. It replaces an older report and nothing
// else.
#pragma once

#include <string>
#include <string_view>

#include "adapters/transcript/EventValue.h"
#include "cli/options/Options.h"
#include "cli/workplace/OutputFile.h"
#include "platform/machine.h"
#include "services/RunObserver.h"

namespace twqb::cli {

class ReportFile {
 public:
  // Raises UsageError, with the file untouched, when it is anything but an older report, or can't be written.
  ReportFile(const std::string& path, const Options& options, Machine& machine);

  void Write(const RecordAccount& record);
  void Write(const ErrorAccount& error);
  void Flush() { file_.Stream().flush(); }
  // False once a line could not be written.
  [[nodiscard]] bool IsWhole() { return file_.Stream().good(); }

 private:
  // A line of the file. Some come together before they are written, so that a report costs a run little.
  void WriteLine(const EventFields& fields);

  OutputFile file_;
  int waiting_ = 0;  // lines
};

// What a report says of a record and of an error, behind a first field of that name with "record", "line" or "error".
[[nodiscard]] EventFields AccountFields(std::string_view first, const RecordAccount& record);
[[nodiscard]] EventFields AccountFields(std::string_view first, const ErrorAccount& error);

// "added": as reports call what became of a record.
[[nodiscard]] std::string_view FateWord(Fate fate);

}  // namespace twqb::cli
