#include "cli/screen/TextFile.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>
#include <system_error>
#include <utility>

#include "adapters/system/FileReplacement.h"
#include "cli/options/ExitStatus.h"

namespace twqb::cli {

namespace {

[[noreturn]] void Refuse(const std::string& path, std::string_view doing, int reason) {
  throw UsageError(fmt::format("{} can't be {}: {}.", path, doing, std::generic_category().message(reason)));
}

// Up to the end, or one byte beyond what is allowed.
std::string ReadUpTo(std::istream& in, std::size_t count) {
  constexpr std::size_t kChunk = std::size_t{1} << 20U;
  std::string text;
  while (in && text.size() < count) {
    const auto before = text.size();
    text.resize(before + std::min(kChunk, count - before));
    in.read(text.data() + before, static_cast<std::streamsize>(text.size() - before));
    text.resize(before + static_cast<std::size_t>(in.gcount()));
  }
  return text;
}

std::string Bounded(std::string text, const std::string& called) {
  if (text.size() <= kMaxText) return text;
  throw UsageError(fmt::format("{} has more than {} MB; nothing of it was read.", called, kMaxText >> 20U));
}

}  // namespace

std::string ReadTextFile(const std::string& path) {
  if (path == kStandardInput) {
    auto text = ReadUpTo(std::cin, kMaxText + 1);
    if (std::cin.bad()) throw UsageError("Standard input can't be read.");
    return Bounded(std::move(text), "Standard input");
  }
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) Refuse(path, "read", EISDIR);
  errno = 0;
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  if (!file) Refuse(path, "read", errno);
  auto text = ReadUpTo(file, kMaxText + 1);
  if (file.bad()) Refuse(path, "read", errno);
  return Bounded(std::move(text), path);
}

void WriteTextFile(const std::string& path, std::string_view text) {
  if (!ReplaceFile(path, text)) Refuse(path, "written", errno);
}

}  // namespace twqb::cli
