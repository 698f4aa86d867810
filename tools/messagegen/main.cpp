// messagegen FUNCTION FOLDER FILE...
//
// Writes what messagegen/Writer.h tells for the .messages files into the folder. A file that says so already is left
// alone, so that nothing is compiled again for a change that is none of its own.
// Ends with 1 and one line, "FILE:LINE: what is wrong", for a fault in a text.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "messagegen/Generate.h"

namespace {

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path.string() + ": can't be read");
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteIfOther(const std::filesystem::path& path, const std::string& text) {
  if (std::filesystem::exists(path) && ReadFile(path) == text) return;
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (!file.flush()) throw std::runtime_error(path.string() + ": can't be written");
}

void Run(std::span<char* const> arguments) {
  if (arguments.size() < 3) throw std::runtime_error("usage: messagegen FUNCTION FOLDER FILE...");
  std::vector<twqb::messagegen::SourceFile> files;
  for (const auto* path : arguments.subspan(2)) files.push_back({.name = path, .text = ReadFile(path)});
  const auto texts = twqb::messagegen::Generate(files, arguments[0]);
  const std::filesystem::path folder = arguments[1];
  std::filesystem::create_directories(folder);
  for (const auto& [name, text] : texts) WriteIfOther(folder / name, text);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Run(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 1;
  }
}
