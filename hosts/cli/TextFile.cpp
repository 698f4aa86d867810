#include "cli/TextFile.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string_view>
#include <system_error>

#include "adapters/system/FileReplacement.h"
#include "cli/ExitStatus.h"

namespace twqb::cli {

namespace {

[[noreturn]] void Refuse(const std::string& path, std::string_view doing, int reason) {
  throw UsageError(fmt::format("{} can't be {}: {}.", path, doing, std::generic_category().message(reason)));
}

}  // namespace

std::string ReadTextFile(const std::string& path) {
  if (path == kStandardInput) {
    std::string text{std::istreambuf_iterator<char>(std::cin), {}};
    if (std::cin.bad()) throw UsageError("Standard input can't be read.");
    return text;
  }
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) Refuse(path, "read", EISDIR);
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) Refuse(path, "read", errno);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (file.bad()) Refuse(path, "read", errno);
  return text;
}

void WriteTextFile(const std::string& path, std::string_view text) {
  if (!ReplaceFile(path, text)) Refuse(path, "written", errno);
}

}  // namespace twqb::cli
