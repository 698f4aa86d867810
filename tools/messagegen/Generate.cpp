#include "messagegen/Generate.h"

#include <vector>

#include "messagegen/Parser.h"
#include "messagegen/Resolver.h"
#include "messagegen/Writer.h"

namespace twqb::messagegen {

Table ReadTable(std::span<const SourceFile> files) {
  std::vector<Text> texts;
  for (std::size_t file = 0; file < files.size(); ++file) texts.push_back(Parse(files[file], file));
  return Resolve(files, texts);
}

std::map<std::string, std::string> Generate(std::span<const SourceFile> files, std::string_view function) {
  return WriteTable(ReadTable(files), files, function);
}

}  // namespace twqb::messagegen
