#include "adapters/companyfile/SchemaWalk.h"

namespace twqb::company {

const messages::Element* FindRow(std::span<const messages::Element> rows, std::string_view name) {
  for (const auto& row : rows) {
    if (!row.LeavesNoElement()) {
      if (row.name == name) return &row;
    } else if (const auto* inner = FindRow(row.Children(), name)) {
      return inner;
    }
  }
  return nullptr;
}

void NamedElements::Read(pugi::xml_node parent) {
  constexpr std::size_t kMost = 24;  // of nearly all
  elements_.clear();
  elements_.reserve(kMost);
  for (auto element = parent.first_child(); element; element = element.next_sibling()) {
    elements_.emplace_back(element.name(), element);
  }
}

pugi::xml_node ChildElement(pugi::xml_node parent, std::string_view name) {
  return parent.find_child([name](pugi::xml_node child) { return name == child.name(); });
}

std::string_view ChildText(pugi::xml_node parent, std::string_view name) {
  return ChildElement(parent, name).text().get();
}

}  // namespace twqb::company
