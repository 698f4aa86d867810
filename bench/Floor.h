// The floor of a transfer: the same SQL statements, recordset writes, qbXML documents and settings written, carried out
// without the library. A run is recorded once at the seams, each call with the time that it took there, and can be
// replayed on files in the state in which the run began.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace twqb {

// What a replay works on.
struct FloorState {
  std::unique_ptr<Transport> transport;
  std::vector<std::unique_ptr<ado::Connection>> connections;
  std::vector<std::unique_ptr<ado::Recordset>> recordsets;
  Machine* machine = nullptr;
  std::string settings;  // the file
};

// One recorded call. Connections and recordsets are told by the order in which they were made.
using FloorCall = std::function<void(FloorState& state)>;

// What one table took of a recorded run, in seconds. The rest of the whole is the library's own, with its boxes, the
// settings that it reads and the reading of fetched rows.
struct TableShare {
  std::string name;  // as the settings have it
  double whole = 0;  // without what recording took
  double database = 0;
  double quickBooks = 0;
  double settings = 0;  // written
  [[nodiscard]] double Library() const { return whole - database - quickBooks - settings; }
};

// The calls of a run that cost something: documents, statements, opens, finds, writes and settings written.
class FloorRecorder {
 public:
  explicit FloorRecorder(const Platform& inner);
  ~FloorRecorder();
  // What the library is to be composed with while it is recorded.
  [[nodiscard]] Platform Decorated() const;
  // The run begins here: forgets the calls so far.
  void Begin();
  [[nodiscard]] const std::vector<FloorCall>& Calls() const;
  // How many connections were made, those ahead of the run with them.
  [[nodiscard]] std::size_t Connections() const;
  // A table ends where the time of its transfer is remembered, so that a failed or a filtered one is not told apart
  // from the next.
  [[nodiscard]] const std::vector<TableShare>& Tables() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

// Carries the calls out. `state` begins with a machine and its settings, a transport in session, and as many
// connections, not yet open but with their connection strings, as the recorder counted.
void ReplayFloor(const std::vector<FloorCall>& calls, FloorState& state);

}  // namespace twqb
