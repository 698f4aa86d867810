// A test house that notes, in one list and in their order, the calls that the library makes through its seams, and that
// can make chosen calls fail.
//
// The notes stand in front of the faults: a call that fails is noted too. Reads of settings and of the clock are not
// noted. Each note is one line: "box Warning", "write GENERAL/QBDBPath=C:\a.qbw", "execute SELECT ...".
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/faults/Faults.h"
#include "services/ModuleVariables.h"
#include "tests/support/TestHouse.h"

namespace twqb {

using Notes = std::vector<std::string>;

class NotingHouse : public TestHouse {
 public:
  // `faults` is a text of scripted faults. The library is composed with the house at once; `quickbooks`, where it is
  // given, takes the place of the company file.
  explicit NotingHouse(HouseOptions options = {}, std::string_view faults = {},
                       std::unique_ptr<TransportFactory> otherQuickBooks = nullptr);
  // The library lets go of the seams before they go.
  ~NotingHouse();
  NotingHouse(const NotingHouse&) = delete;
  NotingHouse& operator=(const NotingHouse&) = delete;

  // The notes that begin so, in order.
  [[nodiscard]] Notes NotesOf(std::string_view beginning) const;
  // The notes without the pumps of the message queue.
  [[nodiscard]] Notes NotesWithoutPumps() const;
  [[nodiscard]] FaultPlatform& Faults();

  Notes notes;

 private:
  struct Noting;
  std::unique_ptr<Noting> noting_;
};

}  // namespace twqb
