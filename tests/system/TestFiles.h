// A folder of a test's own, and plain access to the files in it, which uses nothing of what is tested.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "tests/support/Process.h"

namespace twqb::test {

using twqb::TemporaryFolder;

inline std::size_t FileCount(const TemporaryFolder& folder) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.Path()), {}));
}

inline void WriteFile(const std::string& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  file.close();
  ASSERT_TRUE(file) << path;
}

inline std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void MakeReadOnly(const std::string& path) {
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
}

}  // namespace twqb::test
