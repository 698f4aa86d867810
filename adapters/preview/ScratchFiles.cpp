#include "adapters/preview/ScratchFiles.h"

#include <fmt/core.h>
#include <unistd.h>  // mkdtemp, where <cstdlib> has none

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>  // mkdtemp, getenv
#include <filesystem>
#include <system_error>

#include "adapters/system/FileIdentity.h"
#include "platform/Text.h"

namespace twqb::preview {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void RefuseFolder(const fs::path& above) {
  throw PlatformError(error::kPathNotFound, fmt::format("No folder for copies can be made in \"{}\".", above.string()));
}

// Of one that is missing the error does not tell the name.
fs::path FolderAbove() {
  std::error_code failure;
  auto above = fs::temp_directory_path(failure);
  if (!failure) return above;
  for (const auto* name : {"TMPDIR", "TMP", "TEMP", "TEMPDIR"}) {
    if (const auto* set = std::getenv(name)) RefuseFolder(set);
  }
  RefuseFolder("/tmp");
}

std::string NewFolder() {
  const auto above = FolderAbove();
  auto pattern = (above / "twqb-preview-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) RefuseFolder(above);
  return pattern;
}

// The engine's own words, of whichever side: a full disk has no number of its own.
constexpr std::array<std::string_view, 2> kNoRoom = {"database or disk is full", "disk I/O error"};

}  // namespace

ScratchFolder::ScratchFolder() : path_(NewFolder()) {}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

const ScratchFile& ScratchFiles::Of(const std::string& path) {
  const auto found = std::ranges::find_if(files_, [&](const auto& file) {
    return path == file.original || path == file.worked || AreOneFile(path, file.original);
  });
  return found != files_.end() ? *found : Add(path, path);
}

const ScratchFile& ScratchFiles::Put(const std::string& name, const std::string& source) {
  const auto found = std::ranges::find(files_, name, &ScratchFile::original);
  return found != files_.end() ? *found : Add(name, source);
}

const ScratchFile& ScratchFiles::Add(const std::string& name, const std::string& source) {
  const auto plain = fs::path(source).filename();
  const auto place = fs::path(folder_.Path()) / std::to_string(files_.size() + 1);
  ScratchFile file{
      .original = name, .worked = (place / "worked" / plain).string(), .before = (place / "before" / plain).string()};
  std::error_code failure;
  fs::create_directories(place / "worked", failure);
  fs::create_directories(place / "before", failure);
  if (fs::exists(source, failure)) {
    // Both of one state: the second is a copy of the first.
    machine_.CopyFile(source, file.before);
    machine_.CopyFile(file.before, file.worked);
  }
  return files_.emplace_back(std::move(file));
}

std::string ScratchFiles::Place() const { return fs::path(folder_.Path()).parent_path().string(); }

void ScratchFiles::NoteFailure(std::string_view description) {
  const auto isIn = [&](std::string_view words) { return description.find(words) != std::string_view::npos; };
  lacksRoom_ = lacksRoom_ || std::ranges::any_of(kNoRoom, isIn);
}

void ScratchFiles::NoteFailure() {
  constexpr std::uintmax_t kLeast = 64UL * 1024;  // what a settings file and its replacement take
  std::error_code failure;
  const auto space = fs::space(folder_.Path(), failure);
  lacksRoom_ = lacksRoom_ || (!failure && space.available < kLeast);
}

std::string ScratchFiles::InOwnNames(std::string text) const {
  for (const auto& file : files_) {
    text = ReplaceAll(ReplaceAll(text, file.worked, file.original), file.before, file.original);
  }
  return text;
}

}  // namespace twqb::preview
