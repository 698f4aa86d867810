// The floor of a transfer: the same SQL statements, recordset writes and qbXML documents, carried out without the
// library. A run is recorded once at the seams and can be replayed on files in the state in which the run began.
#pragma once

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
};

// One recorded call. Connections and recordsets are told by the order in which they were made.
using FloorCall = std::function<void(FloorState& state)>;

// The calls of a run that cost something: documents, statements, opens, finds and writes.
class FloorRecorder {
 public:
  explicit FloorRecorder(const Platform& inner);
  ~FloorRecorder();
  // What the library is to be composed with while it is recorded.
  [[nodiscard]] Platform Decorated() const;
  [[nodiscard]] const std::vector<FloorCall>& Calls() const;
  // How many connections the run made.
  [[nodiscard]] std::size_t Connections() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

// Carries the calls out. `state` begins with a transport in session and as many connections, not yet open but with
// their connection strings, as the run made.
void ReplayFloor(const std::vector<FloorCall>& calls, FloorState& state);

}  // namespace twqb
