#include "adapters/companyfile/Macros.h"

#include "adapters/companyfile/Refused.h"

namespace twqb::company {

namespace {

constexpr messages::Version kFirstVersion = {2, 0};

}  // namespace

bool KnowsMacros(const messages::Form& form) { return form.version >= kFirstVersion; }

// Of an Add alone: a line can be named too, but no request that company files here keep refers to a line.
void Macros::Define(pugi::xml_node element, const std::string& id) {
  const auto attribute = element.attribute(kDefinesMacro);
  if (attribute && !ids_.emplace(attribute.value(), id).second) Refuse(status::MacroTaken(attribute.value()));
}

void Macros::Resolve(pugi::xml_node request) const {
  for (const auto element : request.children()) {
    if (const auto attribute = element.attribute(kUsesMacro)) {
      const auto known = ids_.find(std::string_view(attribute.value()));
      if (known == ids_.end()) Refuse(status::MacroUnknown(attribute.value()));
      element.text().set(known->second.c_str());
    }
    Resolve(element);
  }
}

}  // namespace twqb::company
