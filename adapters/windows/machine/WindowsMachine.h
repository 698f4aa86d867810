// The machine seam on Windows: SystemMachine, with the registry and the identifiers of the system itself.
//
// Profile files are read and written as everywhere (ProfileText): by path, never by way of the registry; in the
// machine's own code page, as hosts do.
#pragma once

#include "adapters/system/SystemMachine.h"

namespace twqb::windows {

class WindowsMachine : public SystemMachine {
 public:
  explicit WindowsMachine(std::string libraryFolder);

  [[nodiscard]] std::optional<GuidBytes> CreateGuid() override;
  // A text value below HKEY_CURRENT_USER; variables in one that has them stay as they are.
  [[nodiscard]] std::optional<std::string> ReadRegistry(std::string_view key, std::string_view name) override;
};

}  // namespace twqb::windows
