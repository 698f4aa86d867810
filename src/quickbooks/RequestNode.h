// What a message set is made of: a tree of the elements that were reached or set. Behind the handles of RequestModel.h,
// which alone make it; RequestWriter.h makes the text of it.
//
// Nodes and their values stand in the memory of their set and go with it. What is taken away is not reached any more,
// and no sooner given back: a set is filled, sent and gone.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <type_traits>

#include "messages/Schema.h"

namespace twqb::detail {

// One element, or one step of a path. The children stand in the order of their rows, those of one row in the order in
// which they were added.
class RequestNode {
 public:
  RequestNode(std::pmr::memory_resource& memory, const messages::Message& message)
      : memory_(&memory), message_(&message) {}
  RequestNode(RequestNode& parent, const messages::Element& row)
      : memory_(parent.memory_), parent_(&parent), row_(&row) {}

  [[nodiscard]] RequestNode* Parent() const { return parent_; }
  [[nodiscard]] const messages::Element* Row() const { return row_; }          // nullptr: a request
  [[nodiscard]] const messages::Message* Message() const { return message_; }  // of a request
  [[nodiscard]] messages::Rows Rows() const { return message_ != nullptr ? message_->request : row_->Children(); }

  [[nodiscard]] const RequestNode* FirstChild() const { return first_; }
  [[nodiscard]] const RequestNode* Next() const { return next_; }  // sibling
  // nullptr when it is not there.
  [[nodiscard]] RequestNode* Child(const messages::Element* of, std::size_t item) const;
  [[nodiscard]] std::size_t Count(const messages::Element* of) const;
  RequestNode& AddChild(const messages::Element& of);
  // All but those of that row go.
  void KeepOnly(const messages::Element* of);

  // Whether anything of it would go on the wire.
  [[nodiscard]] bool IsFilled() const;
  [[nodiscard]] std::string_view Value() const { return value_; }
  void SetValue(std::string_view value);
  // It goes on the wire, whatever is in it.
  void Keep() { hasValue_ = true; }
  // With everything below it.
  void Clear();

 private:
  std::pmr::memory_resource* memory_;
  RequestNode* parent_ = nullptr;
  const messages::Element* row_ = nullptr;
  const messages::Message* message_ = nullptr;
  RequestNode* first_ = nullptr;
  RequestNode* last_ = nullptr;
  RequestNode* next_ = nullptr;
  std::string_view value_;
  bool hasValue_ = false;
};

static_assert(std::is_trivially_destructible_v<RequestNode>,
              "the memory of a set goes without a look at what is in it");

}  // namespace twqb::detail
