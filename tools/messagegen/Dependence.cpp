#include "messagegen/Dependence.h"

namespace twqb::messagegen {

Dependence Dependences::Of(const Entries& entries) {
  // A part of itself, which the resolver refuses, adds nothing here.
  const auto [known, added] = known_.emplace(&entries, Dependence{});
  if (!added) return known->second;
  Dependence all;
  for (const auto& entry : entries) {
    const auto one = OfEntry(entry);
    all.role |= one.role || !entry.roles.empty();
    all.names |= one.names;
  }
  return known_[&entries] = all;
}

Dependence Dependences::OfEntry(const Entry& entry) {
  if (entry.kind == EntryKind::Splice) {
    const auto* group = definitions_.Peek(entry.name);
    return group == nullptr ? Dependence{} : Of(group->entries);
  }
  if (entry.kind != EntryKind::Element) return Of(entry.body);
  if (entry.type == "name" || entry.type == "path") return {.names = true};
  // An aggregate takes over the role, but has names of its own or none.
  const auto* defined = definitions_.Peek(entry.type);
  return {.role = defined != nullptr && Of(defined->entries).role};
}

}  // namespace twqb::messagegen
