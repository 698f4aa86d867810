#include "messagegen/Definitions.h"

#include <fmt/core.h>

#include <algorithm>

namespace twqb::messagegen {

Definitions::Definitions(std::span<const SourceFile> files, std::span<const Text> texts) : files_(files) {
  for (const auto& text : texts) {
    for (const auto& definition : text.definitions) {
      const auto [entry, added] = byName_.emplace(definition.name, &definition);
      if (added) continue;
      const auto& first = entry->second->place;
      Fail(definition.place,
           fmt::format("{} is defined in {}:{} already", definition.name, files_[first.file].name, first.line));
    }
  }
}

const Definition& Definitions::Find(std::string_view name, std::initializer_list<DefinitionKind> kinds,
                                    std::string_view what, Place asking) {
  const auto found = byName_.find(name);
  if (found == byName_.end() || std::ranges::find(kinds, found->second->kind) == kinds.end()) {
    Fail(asking, fmt::format("{} is no {}", name, what));
  }
  used_.insert(found->second);
  return *found->second;
}

const Definition* Definitions::Peek(std::string_view name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

void Definitions::ExpectAllUsed() const {
  for (const auto& [name, definition] : byName_) {
    if (!used_.contains(definition)) Fail(definition->place, name + " is used nowhere");
  }
}

void Definitions::Fail(Place place, std::string_view what) const {
  throw BadInput(files_[place.file].name, place.line, what);
}

}  // namespace twqb::messagegen
