#include "adapters/system/FileIdentity.h"

#include <filesystem>
#include <system_error>

namespace twqb {

FileIdentity IdentityOf(const struct stat& status) { return {.device = status.st_dev, .number = status.st_ino}; }

std::optional<FileIdentity> IdentityOf(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return IdentityOf(status);
}

bool AreOneFile(const std::string& one, const std::string& other) {
  const auto first = IdentityOf(one);
  const auto second = IdentityOf(other);
  if (first && second) return *first == *second;
  return !first && !second && ResolvedPath(one) == ResolvedPath(other);
}

std::string ResolvedPath(const std::string& path) {
  std::error_code failure;
  const auto full = std::filesystem::absolute(path, failure);
  if (failure) return path;
  const auto resolved = std::filesystem::weakly_canonical(full, failure);
  return failure ? path : resolved.string();
}

}  // namespace twqb
