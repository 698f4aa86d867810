#include "adapters/preview/CopiedMachine.h"

#include <filesystem>
#include <system_error>

#include "platform/PlatformError.h"

namespace twqb::preview {

void CopiedMachine::CopyFile(const std::string& from, const std::string& /*to*/) {
  std::error_code failure;
  if (!std::filesystem::exists(from, failure)) {
    throw PlatformError(error::kFileNotFound, std::string(ErrorText(error::kFileNotFound)) + " (" + from + ")");
  }
}

void CopiedMachine::AppendLine(const std::string& /*path*/, std::string_view line) { log_.emplace_back(line); }

}  // namespace twqb::preview
