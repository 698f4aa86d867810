// What the texts define, found by name, and which of it was used. Part of the resolver.
#pragma once

#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "messagegen/Source.h"
#include "messagegen/Syntax.h"

namespace twqb::messagegen {

class Definitions {
 public:
  // Raises BadInput for two of one name.
  Definitions(std::span<const SourceFile> files, std::span<const Text> texts);

  // The definition of that name, which counts as used by this. Raises BadInput, at the place of who asks, when there is
  // none or it is not of the kinds asked for; `what` says in words what those are.
  const Definition& Find(std::string_view name, std::initializer_list<DefinitionKind> kinds, std::string_view what,
                         Place asking);
  // The definition of that name, whatever it is; nullptr when there is none. Counts as no use.
  [[nodiscard]] const Definition* Peek(std::string_view name) const;
  // Raises BadInput for a definition that was never asked for.
  void ExpectAllUsed() const;

  [[noreturn]] void Fail(Place place, std::string_view what) const;

 private:
  std::span<const SourceFile> files_;
  std::map<std::string, const Definition*, std::less<>> byName_;
  std::set<const Definition*> used_;
};

}  // namespace twqb::messagegen
