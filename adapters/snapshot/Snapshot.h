// What the two readings of this folder have in common: who watches them, and how they fail.
//
// A snapshot is a file of the embedded kind that holds what a side held which is no file: a database of another maker,
// QuickBooks itself. It is read through the seam, and nothing is written there.
#pragma once

#include <functional>
#include <stdexcept>
#include <string_view>

namespace twqb::snapshot {

// Called ahead of each call to the other side, with what is read next: "the table Client", "Customer". What it raises
// ends the reading.
using Watch = std::function<void(std::string_view next)>;

// A side can't be read, in a sentence. No file that was begun for it is of use.
class SnapshotError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace twqb::snapshot
