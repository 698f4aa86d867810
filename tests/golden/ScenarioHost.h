// What holds the bridge objects of a scenario: a host of the library inside the test (LibraryHost), or another program
// that reaches the library by COM (ComHost).
//
// Objects of one process over the files of a folder, with a clock that stands still, written-down answers and faults,
// recorded at the seams. The files are made by others.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "engine/Table.h"
#include "platform/Date.h"
#include "platform/machine.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {

struct HostOptions {
  std::string folder;
  std::string company = folder + "/company.twq";  // that QuickBooks has open
  std::string connect = "Provider=SQLITE;Data Source=" + folder + "/billing.db";
  Date now;
  TimeZoneInformation zone;
  std::string answers;                        // as in an answers file
  std::string faults;                         // as in a faults file
  std::span<const Table* const> tables = {};  // of the tests' own
  LostLinks lostLinks = LostLinks::Leave;
  // Runs before the n-th question (from 1) is answered; boxes with only OK are none.
  std::function<void(int n)> beforeAnswer = {};
};

// The name of an operation or property, or of a routine of the library, and its arguments behind it.
using HostWords = std::vector<std::string>;

struct HostCall {
  HostWords words;
  std::string recordedAs = {};        // empty: by its own name
  std::vector<HostWords> first = {};  // called inside of it ahead of it, unrecorded; after a False it is nothing itself
};

class ScenarioHost {
 public:
  virtual ~ScenarioHost() = default;

  // Another object, set up as the command line does it; calls go to the last one.
  virtual void BeginObject() = 0;
  // Ends the last object.
  virtual void EndObject() = 0;
  [[nodiscard]] virtual bool HasObjects() const = 0;
  // Throws std::runtime_error for a name that is not known and for a wrong number of arguments, and DeskGaveUp at a
  // question without an answer.
  virtual void Call(const HostCall& call) = 0;
  // Sets a property, unrecorded.
  virtual void Set(const HostWords& words) = 0;

  // What was recorded since the last time, one event a line.
  [[nodiscard]] virtual std::string TakeRecord() = 0;
};

}  // namespace twqb
