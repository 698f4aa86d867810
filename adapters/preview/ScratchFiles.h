// Copies of files in a folder of their own, which goes at the end: what a run works on that must change nothing.
//
// Of each file there are two, the one that is worked on, and what it was like before. The decorators of this folder put
// them in the place of the files that the library names, and put the files' own names into what it is told.
#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "platform/PlatformError.h"
#include "platform/machine.h"

namespace twqb::preview {

struct ScratchFile {
  std::string original;  // as it was named first
  std::string worked;    // the copy that a run works on
  std::string before;    // the copy that stays as it was
};

// A folder for its owner alone, among the system's temporary files, which goes with the object.
class ScratchFolder {
 public:
  // Raises 76 when there is no place for it.
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

class ScratchFiles {
 public:
  // `machine` copies; it must outlive the object. Raises 76 when there is no place for the folder.
  explicit ScratchFiles(Machine& machine) : machine_(machine) {}

  // The copies of the file that the path leads to, made when it is named first, each one state of it whoever writes to
  // it meanwhile. Where there is no file there are no copies, only their names. Raises 75 for what can't be copied.
  const ScratchFile& Of(const std::string& path);
  // The same of what is no file: `name` stands for it, and `source` is a file with all that it holds.
  const ScratchFile& Put(const std::string& name, const std::string& source);
  // All that were named so far.
  [[nodiscard]] const std::deque<ScratchFile>& All() const { return files_; }

  // A text with the files' own names in the place of the copies'.
  [[nodiscard]] std::string InOwnNames(std::string text) const;

  // The folder that the system has for such copies.
  [[nodiscard]] std::string Place() const;
  // Whether a copy could not be written. What a run tells of it then is no word about what is in the files.
  [[nodiscard]] bool LacksRoom() const { return lacksRoom_; }
  // What came of a write to a copy: notes it where that failed for want of room.
  void NoteFailure(std::string_view description);
  // The same of a write that failed without a word.
  void NoteFailure();

  // Calls `body`; a PlatformError comes out of it with the files' own names.
  template <typename Body>
  decltype(auto) Translated(Body&& body) {
    try {
      return body();
    } catch (const PlatformError& raised) {
      NoteFailure(raised.description());
      throw PlatformError(raised.number(), InOwnNames(raised.description()));
    }
  }

 private:
  // Copies of what is in `source`, if there is one.
  const ScratchFile& Add(const std::string& name, const std::string& source);

  Machine& machine_;
  ScratchFolder folder_;
  bool lacksRoom_ = false;
  std::deque<ScratchFile> files_;  // references to them stay good
};

}  // namespace twqb::preview
