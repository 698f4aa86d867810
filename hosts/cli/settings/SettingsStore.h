// The settings store in use, for commands that only look at it or change single values: the library without a bridge
// object, which would write to the log.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/options/Options.h"
#include "cli/runs/Composition.h"

namespace twqb::cli {

class SettingsStore {
 public:
  enum class Also { Nothing, Billing };  // what is looked at besides the store

  // Raises UsageError for a store, or a BillingDb, that can't be used.
  explicit SettingsStore(const Options& options, Also also = Also::Nothing);

  // Nothing where the key has no value.
  [[nodiscard]] std::optional<std::string> Read(std::string_view section, std::string_view key) const;
  // False when the desk has told why not.
  [[nodiscard]] bool Write(std::string_view section, std::string_view key, std::string_view value) const;

  // Why the file does not take the value, although it could hold it, in the system's words; nothing where it does. Of
  // the table the desk tells.
  [[nodiscard]] std::optional<std::string> WhyNotWritten(std::string_view section, std::string_view key,
                                                         std::string_view value) const;
  // Names the store that is a file.
  [[nodiscard]] const std::string& File() const { return place_.settings; }

  // One value that is set. The table keeps section and key as one name.
  struct Entry {
    std::string name;  // "[QBSEND_] Clients_OptNever", or "QBSEND__Clients_OptNever" in the table
    std::string value;
  };
  // Every value, in the order of the file, or of the names in the table. Raises PlatformError when the table can't be
  // read.
  [[nodiscard]] std::vector<Entry> Entries() const;

 private:
  Workplace place_;
  bool inTable_;
  Composition composition_;
};

}  // namespace twqb::cli
