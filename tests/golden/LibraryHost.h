// A host of the library inside the test: bridge objects of one process over the files of a folder, recorded as the
// command line records its runs.
//
// For what the command line does not offer: several calls of one process, operations without a command, and a
// QuickBooks that changes while the library waits for an answer. Unlike the command line it has the call-back class.
// The files are made by others.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "engine/Table.h"
#include "platform/Date.h"
#include "platform/machine.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {

struct LibraryHostOptions {
  std::string folder;
  Date now;
  TimeZoneInformation zone;
  std::string answers;                        // as in an answers file
  std::string faults;                         // as in a faults file
  std::span<const Table* const> tables = {};  // of the tests' own
  LostLinks lostLinks = LostLinks::Leave;
  // Runs before the n-th question (from 1) is answered; boxes with only OK are none.
  std::function<void(int n)> beforeAnswer;
};

class LibraryHost {
 public:
  // Composes the library; no other host may exist.
  explicit LibraryHost(const LibraryHostOptions& options);
  // Ends the objects, the last one first.
  ~LibraryHost();
  LibraryHost(const LibraryHost&) = delete;
  LibraryHost& operator=(const LibraryHost&) = delete;

  // Another object, set up as the command line does it; calls go to the last one.
  void BeginObject();
  // Ends the last object.
  void EndObject();
  [[nodiscard]] bool HasObjects() const;
  // Runs an operation or sets a property of the object, or runs a routine of the library: its name, then its arguments.
  // Throws std::runtime_error for a name that is not known and for a wrong number of arguments.
  void Call(const std::vector<std::string>& words);

  // What was recorded since the last time, one event a line.
  [[nodiscard]] std::string TakeRecord();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace twqb
