#include "messages/Validation.h"

#include <algorithm>

#include "messages/ValueFormat.h"
#include "platform/Text.h"

namespace twqb::messages {

namespace {

pugi::xml_node FirstElement(pugi::xml_node node) {
  while (node && node.type() != pugi::node_element) node = node.next_sibling();
  return node;
}

// Text between elements, beyond the white space of an indented document.
bool HasText(pugi::xml_node node) {
  return std::string_view(node.value()).find_first_not_of(" \t\r\n") != std::string_view::npos;
}
bool IsText(pugi::xml_node node) {
  return (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) && HasText(node);
}

// Matches the elements of one parent against its rows, in order, without backtracking: no two branches of a choice
// begin with the same name.
class Matcher {
 public:
  Matcher(const Form& form, std::vector<Problem>& problems) : form_(form), problems_(problems) {}

  void MatchParent(pugi::xml_node parent, std::span<const Element> rows) {
    // A parser may keep the first text in the element itself.
    if (HasText(parent)) Report(ProblemKind::UnexpectedElement, parent.name(), parent.value());
    for (const auto child : parent.children()) {
      if (IsText(child)) Report(ProblemKind::UnexpectedElement, parent.name(), child.value());
    }
    const auto outer = cursor_;
    cursor_ = FirstElement(parent.first_child());
    std::vector<Problem> missing;
    MatchSequence(rows, missing);
    for (; cursor_; Advance()) Report(ProblemKind::UnexpectedElement, cursor_.name());
    problems_.insert(problems_.end(), missing.begin(), missing.end());
    cursor_ = outer;
  }

 private:
  void MatchSequence(std::span<const Element> rows, std::vector<Problem>& missing) {
    for (const auto& row : rows) {
      if (row.KnownIn(form_) && !MatchRow(row, missing) && !row.optional) {
        missing.push_back({ProblemKind::MissingElement, std::string(row.name), {}});
      }
    }
  }

  // Takes what stands for `row`; answers whether anything did (a step always counts as there).
  bool MatchRow(const Element& row, std::vector<Problem>& missing) {
    if (row.type == Type::Step) {
      MatchSequence(row.Children(), missing);
      return true;
    }
    bool any = false;
    while (cursor_ && CanBegin(row)) {
      any = true;
      if (row.type == Type::Choice) {
        MatchBranch(row, missing);
      } else {
        MatchElement(row);
        Advance();
      }
      if (!row.repeating) break;
    }
    return any;
  }

  void MatchBranch(const Element& choice, std::vector<Problem>& missing) {
    for (const auto& branch : choice.Children()) {
      if (branch.KnownIn(form_) && CanBegin(branch)) {
        MatchRow(branch, missing);
        return;
      }
    }
  }

  void MatchElement(const Element& row) {
    if (row.type == Type::Aggregate) {
      MatchParent(cursor_, row.Children());
      return;
    }
    if (const auto inner = FirstElement(cursor_.first_child())) {
      Report(ProblemKind::UnexpectedElement, inner.name());
      return;
    }
    const std::string_view text = cursor_.text().get();
    if (row.type == Type::Str || row.type == Type::Macro) {
      if (row.maxLength > 0 && CharacterCount(text) > static_cast<std::size_t>(row.maxLength)) {
        Report(ProblemKind::TooLong, row.name, text);
      }
    } else if (!IsWellFormed(row, text, form_)) {
      const auto kind = row.type == Type::Amt  ? ProblemKind::MalformedAmount
                        : row.type == Type::Id ? ProblemKind::MalformedId
                                               : ProblemKind::MalformedValue;
      Report(kind, row.name, text, row.type);
    }
  }

  // Whether the element at the cursor can be the first of `row`.
  bool CanBegin(const Element& row) const {
    if (!row.LeavesNoElement()) return row.name == cursor_.name();
    return std::ranges::any_of(row.Children(),
                               [this](const Element& child) { return child.KnownIn(form_) && CanBegin(child); });
  }

  void Advance() { cursor_ = FirstElement(cursor_.next_sibling()); }

  void Report(ProblemKind kind, std::string_view field, std::string_view value = {}, Type type = Type::Str) {
    problems_.push_back({kind, std::string(field), std::string(value), type});
  }

  const Form& form_;
  std::vector<Problem>& problems_;
  pugi::xml_node cursor_;
};

}  // namespace

std::vector<Problem> Validate(pugi::xml_node parent, std::span<const Element> rows, const Form& form) {
  std::vector<Problem> problems;
  Matcher(form, problems).MatchParent(parent, rows);
  return problems;
}

}  // namespace twqb::messages
