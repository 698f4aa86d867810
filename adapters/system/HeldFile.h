// HeldFile: a claim on something that several processes work on, one at a time, with who holds it since when.
//
// The claim is the system's lock on a file of its own, so a process that dies lets go of it. The file tells who holds
// it; it is removed with the claim, and one that a killed process has left is no claim and goes with the next. It does
// not wait: `Claim` answers at once.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "adapters/system/FileDescriptor.h"

namespace twqb {

// Who holds a claim; fields are empty where the file does not tell.
struct Holder {
  std::string process;  // its number
  std::string command;
  std::string host;
  std::string since;  // local time there
};

// This process, as others are told of it.
[[nodiscard]] Holder ThisHolder(std::string command, std::string since);

class HeldFile {
 public:
  enum class Outcome { Held, HeldByOther, NoFileHere, NotOurs, Failed };
  struct Answer;

  // Tries to claim by the file `path`, whose rights are those of `of` as far as they reach. The folder may not take
  // files (`NoFileHere`); a file of that name may be something else (`NotOurs`); other failures leave `errno`.
  [[nodiscard]] static Answer Claim(const std::string& path, const std::string& of, const Holder& self);

  HeldFile(HeldFile&& other) noexcept : path_(std::exchange(other.path_, {})), file_(std::move(other.file_)) {}
  HeldFile& operator=(HeldFile&& other) = delete;
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;
  // Lets go.
  ~HeldFile();

 private:
  HeldFile(std::string path, FileDescriptor file) : path_(std::move(path)), file_(std::move(file)) {}

  std::string path_;  // empty once it is moved from
  FileDescriptor file_;
};

struct HeldFile::Answer {
  Outcome outcome = Outcome::Failed;
  std::optional<HeldFile> held = std::nullopt;
  Holder holder = {};  // the other one
};

}  // namespace twqb
