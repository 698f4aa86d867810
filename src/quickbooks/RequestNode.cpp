#include "quickbooks/RequestNode.h"

#include <algorithm>

namespace twqb::detail {

using messages::Element;

RequestNode* RequestNode::Child(const Element* of, std::size_t item) const {
  // Most are asked for and then set in their order: what comes behind the last is not there.
  if (last_ == nullptr || last_->row_ < of) return nullptr;
  auto* child = first_;
  while (child != nullptr && child->row_ < of) child = child->next_;
  for (; child != nullptr && child->row_ == of; child = child->next_) {
    if (item-- == 0) return child;
  }
  return nullptr;
}

std::size_t RequestNode::Count(const Element* of) const {
  std::size_t count = 0;
  for (const auto* child = first_; child != nullptr && child->row_ <= of; child = child->next_) {
    if (child->row_ == of) ++count;
  }
  return count;
}

RequestNode& RequestNode::AddChild(const Element& of) {
  auto* added = std::pmr::polymorphic_allocator<>(memory_).new_object<RequestNode>(*this, of);
  if (last_ == nullptr || last_->row_ <= &of) {
    (last_ == nullptr ? first_ : last_->next_) = added;
    last_ = added;
    return *added;
  }
  auto** place = &first_;
  while ((*place)->row_ <= &of) place = &(*place)->next_;
  added->next_ = *place;
  *place = added;
  return *added;
}

void RequestNode::KeepOnly(const Element* of) {
  if (first_ == last_) {
    if (first_ != nullptr && first_->row_ != of) first_ = last_ = nullptr;
    return;
  }
  auto* child = first_;
  first_ = last_ = nullptr;
  for (; child != nullptr; child = child->next_) {
    if (child->row_ != of) continue;
    (last_ == nullptr ? first_ : last_->next_) = child;
    last_ = child;
  }
  if (last_ != nullptr) last_->next_ = nullptr;
}

bool RequestNode::IsFilled() const {
  if (hasValue_) return true;
  for (const auto* child = first_; child != nullptr; child = child->next_) {
    if (child->IsFilled()) return true;
  }
  return false;
}

void RequestNode::SetValue(std::string_view value) {
  auto* bytes = static_cast<char*>(memory_->allocate(std::max<std::size_t>(value.size(), 1), 1));
  std::ranges::copy(value, bytes);
  value_ = {bytes, value.size()};
  hasValue_ = true;
}

void RequestNode::Clear() {
  value_ = {};
  hasValue_ = false;
  first_ = last_ = nullptr;
}

}  // namespace twqb::detail
