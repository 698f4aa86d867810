// Brings tables of the tests' own to the library for as long as the object lives.
#pragma once

#include <span>

#include "bridge/TableRoutines.h"

namespace twqb {

class OwnTables {
 public:
  // The routines must outlive the object; there is one such object at a time.
  explicit OwnTables(std::span<const TableRoutines> routines) { UseTableRoutines(routines); }
  ~OwnTables() { UseTableRoutines({}); }
  OwnTables(const OwnTables&) = delete;
  OwnTables& operator=(const OwnTables&) = delete;
};

}  // namespace twqb
