// Small steps along the rows of the message table that the company file takes in more than one place.
#pragma once

#include <pugixml.hpp>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "messages/Schema.h"

namespace twqb::company {

// The row of an element by its exact name, looked for through choices and steps; nullptr when there is none.
[[nodiscard]] const messages::Element* FindRow(std::span<const messages::Element> rows, std::string_view name);
// The first element of that name; a null node when there is none.
[[nodiscard]] pugi::xml_node ChildElement(pugi::xml_node parent, std::string_view name);
// The text of that element; empty when there is none.
[[nodiscard]] std::string_view ChildText(pugi::xml_node parent, std::string_view name);
// The elements of a parent with their names, for who asks for many names in turn.
class NamedElements {
 public:
  NamedElements() = default;
  explicit NamedElements(pugi::xml_node parent) { Read(parent); }
  void Read(pugi::xml_node parent);

  // Calls `visit(element)` for each of that name, in their order.
  template <typename Visit>
  void ForEach(std::string_view name, const Visit& visit) const {
    for (const auto& [own, element] : elements_) {
      if (own == name) visit(element);
    }
  }

 private:
  std::vector<std::pair<std::string_view, pugi::xml_node>> elements_;
};

// Calls `visit(row)` for each row that stands for an element, those inside choices and steps too, in order.
template <typename Visit>
void ForEachElementRow(std::span<const messages::Element> rows, const Visit& visit) {
  for (const auto& row : rows) {
    if (row.LeavesNoElement()) {
      ForEachElementRow(row.Children(), visit);
    } else {
      visit(row);
    }
  }
}

}  // namespace twqb::company
