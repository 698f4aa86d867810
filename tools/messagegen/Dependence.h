// What a list of entries depends on beyond itself, so that one that depends on nothing becomes one list of rows however
// often it is used, and has a name that no other text can change. Part of the resolver.
#pragma once

#include <map>

#include "messagegen/Definitions.h"
#include "messagegen/Syntax.h"

namespace twqb::messagegen {

struct Dependence {
  bool role = false;   // there are marks for Add, Mod or Ret in it
  bool names = false;  // there is a `name` or a `path` in it
};

class Dependences {
 public:
  explicit Dependences(const Definitions& definitions) : definitions_(definitions) {}
  [[nodiscard]] Dependence Of(const Entries& entries);

 private:
  [[nodiscard]] Dependence OfEntry(const Entry& entry);

  const Definitions& definitions_;
  std::map<const Entries*, Dependence> known_;
};

}  // namespace twqb::messagegen
