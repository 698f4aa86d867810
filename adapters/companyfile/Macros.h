// Names that a program gives to identities to come: an Add defines one (defMacro), a later request of the set or of the
// session uses it in place of an identifier (useMacro).
//
// Nothing here is stored: the names end with the session.
#pragma once

#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "messages/Schema.h"

namespace twqb::company {

inline constexpr const char* kDefinesMacro = "defMacro";
inline constexpr const char* kUsesMacro = "useMacro";

// Stands in an element that uses a macro until the request is carried out; it can't be an identifier that was given
// out.
inline constexpr const char* kUnknownIdentity = "0-0";

// Whether messages of that form know macros; which elements carry them, the message table tells.
[[nodiscard]] bool KnowsMacros(const messages::Form& form);

// The macros of a session.
class Macros {
 public:
  // Names `id` by the attribute of `element`, if it has one. Throws Refused for a name that is taken.
  void Define(pugi::xml_node element, const std::string& id);
  // Puts the identifiers into all elements below `request` that use a macro. Throws Refused for a name that is not
  // known.
  void Resolve(pugi::xml_node request) const;

 private:
  std::map<std::string, std::string, std::less<>> ids_;
};

}  // namespace twqb::company
