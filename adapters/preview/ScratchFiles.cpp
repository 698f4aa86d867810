#include "adapters/preview/ScratchFiles.h"

#include <fmt/core.h>
#include <unistd.h>  // mkdtemp, where <cstdlib> has none

#include <algorithm>
#include <cstdlib>  // mkdtemp
#include <filesystem>
#include <system_error>

#include "adapters/system/FileIdentity.h"
#include "platform/Text.h"

namespace twqb::preview {

namespace fs = std::filesystem;

namespace {

std::string NewFolder() {
  std::error_code failure;
  const auto above = fs::temp_directory_path(failure);
  auto pattern = (above / "twqb-preview-XXXXXX").string();
  if (failure || ::mkdtemp(pattern.data()) == nullptr) {
    throw PlatformError(error::kPathNotFound,
                        fmt::format("No folder for copies can be made in \"{}\".", above.string()));
  }
  return pattern;
}

}  // namespace

ScratchFiles::ScratchFiles(Machine& machine) : machine_(machine), folder_(NewFolder()) {}

ScratchFiles::~ScratchFiles() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

const ScratchFile& ScratchFiles::Of(const std::string& path) {
  const auto found = std::ranges::find_if(files_, [&](const auto& file) {
    return path == file.original || path == file.worked || AreOneFile(path, file.original);
  });
  if (found != files_.end()) return *found;
  const auto name = fs::path(path).filename();
  const auto place = fs::path(folder_) / std::to_string(files_.size() + 1);
  ScratchFile file{
      .original = path, .worked = (place / "worked" / name).string(), .before = (place / "before" / name).string()};
  std::error_code failure;
  fs::create_directories(place / "worked", failure);
  fs::create_directories(place / "before", failure);
  if (fs::exists(path, failure)) {
    // Both of one state: the second is a copy of the first.
    machine_.CopyFile(path, file.before);
    machine_.CopyFile(file.before, file.worked);
  }
  return files_.emplace_back(std::move(file));
}

std::string ScratchFiles::InOwnNames(std::string text) const {
  for (const auto& file : files_) {
    text = ReplaceAll(ReplaceAll(text, file.worked, file.original), file.before, file.original);
  }
  return text;
}

}  // namespace twqb::preview
