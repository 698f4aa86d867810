// A file that a run records into, opened so that nothing else is ever destroyed by it.
//
// A file that is there is replaced only when it is a record of the same kind, known by its beginning, or empty; never
// one of the run's own, however it is spelled or linked. What it makes is its owner's alone. Pipes and devices take
// records as they are, and so does what standard output and standard error go to.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/workplace/RunFiles.h"

namespace twqb::cli {

// A kind of record, in the words of messages.
struct RecordKind {
  std::string_view called;     // "transcript"
  std::string_view option;     // that names the file: "--transcript"
  std::string_view beginning;  // of every such file; not empty
};

class OutputFile {
 public:
  // Raises UsageError, with the file untouched, when it must not be replaced or can't be written. Waits for a reader of
  // a pipe; raises EndedBySignal when a signal comes meanwhile.
  OutputFile(const std::string& path, const RecordKind& kind, const std::vector<RunFile>& filesOfRun);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Raises the UsageError that the constructor would raise, as far as that can be told without making anything.
  static void Check(const std::string& path, const RecordKind& kind, const std::vector<RunFile>& filesOfRun);

  // Goes to the file at each flush; `bad` once that could not be done.
  [[nodiscard]] std::ostream& Stream() { return stream_; }

 private:
  class Buffer;

  std::unique_ptr<Buffer> buffer_;
  std::ostream stream_;
};

}  // namespace twqb::cli
