// What a transfer holds while it runs: BillingDb and the company file, against other transfers.
//
// Two transfers on one of the two would add records twice, since each reads before it writes. Beside each file stands a
// file of the lock, with the name of the file itself and ".transfer" behind it, for as long as the transfer runs. What
// only reads, or changes one side by a command of its own, asks for no lock.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "adapters/system/HeldFile.h"
#include "cli/options/Options.h"

namespace twqb::cli {

inline constexpr const char* kTransferLockSuffix = ".transfer";

// Another transfer holds one of the files: the run ends with `Failed`, and nothing has been done. `what()` says which
// file, and who holds it since when.
class HeldByOther : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class TransferLock {
 public:
  // Holds both files of `place`, those that are there. Waits for others as long as the options say, telling so on
  // standard error. Raises HeldByOther, and UsageError when a file of the lock can't be used.
  TransferLock(const Workplace& place, const Options& options);
  // The same for files by their paths.
  TransferLock(const std::vector<std::string>& files, const Options& options);

  // A company file that turns out to be the one of the run; one that is held already is fine. Does not wait: the run
  // holds BillingDb. Raises as above.
  void HoldToo(const std::string& company);

 private:
  Holder self_;
  std::vector<std::string> files_;
  std::vector<HeldFile> held_;
};

// The file of BillingDb that a connection string names; empty when it names none, or a database of another maker.
[[nodiscard]] std::string BillingFileOf(const Workplace& place);

}  // namespace twqb::cli
