// Message sets and request objects: what QuickBooks' object model offers to fill a request with.
//
// The objects know every message and field of the schema table, over all versions and countries. A name that is in none
// raises 438. What the form of the message set does not know, a field or a value of an enumeration, stays off the wire
// when the set is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include "messages/Schema.h"
#include "messages/ValueFormat.h"
#include "platform/Currency.h"
#include "platform/Date.h"

namespace twqb {

enum class OnError : std::uint8_t { Stop = 0, Continue = 1 };

namespace detail {
class RequestNode;
}

// A value of a request.
struct FieldText {
  std::string path;
  std::string text;
  bool isMended = false;  // without what XML can't carry
  int maxLength = 0;      // in characters; 0: no limit
  messages::Type type = messages::Type::Str;
};

// A place in a request: a field, an aggregate, a list, a choice group or a filter group. A handle; copying it copies no
// data. It lasts as long as its message set, but no longer than its place: unsetting something above it, or setting
// another branch of a choice above it, ends it. Names match without regard to case.
class RequestField {
 public:
  // The member of that name; "XList" reaches the repeating X. Raises 438 when there is none.
  [[nodiscard]] RequestField operator[](std::string_view name) const;

  // Forms what the field's type needs: money two decimals; prices, quantities and percentages at most five; an
  // enumeration from its number or name; a date from a date or a text. A span of time is given as one, or as the text
  // that goes on the wire. Never checks a length. Setting a branch of a choice unsets the others.
  void SetValue(std::string_view text) const;
  void SetValue(const char* text) const { SetValue(std::string_view(text)); }
  void SetValue(bool value) const;
  void SetValue(int number) const { SetNumber(number); }
  void SetValue(double number) const { SetNumber(number); }
  void SetValue(Currency amount) const;
  void SetValue(Date date) const;
  // Raises 13 for a field that is no span of time.
  void SetValue(const messages::TimeInterval& span) const;
  // Takes the value, or everything below, away; of a repeating field, that of the one item.
  void Unset() const;

  // An aggregate goes on the wire from now on, though nothing in it may be set.
  void Keep() const;

  // A repeating field: adds one value, or one aggregate to fill.
  void Add(std::string_view text) const;
  void Add(int number) const;
  [[nodiscard]] RequestField Append() const;
  [[nodiscard]] std::size_t Count() const;
  [[nodiscard]] RequestField GetAt(std::size_t index) const;

  // The field's own name: "City"; "" of a request.
  [[nodiscard]] std::string_view Name() const { return row_ == nullptr ? std::string_view() : row_->name; }
  // The value as it goes on the wire; empty when not set.
  [[nodiscard]] std::string GetValue() const;
  [[nodiscard]] bool IsSet() const;
  // What is set below, as a message set of that form has it on the wire: each value with its path from here
  // ("BillAddress.City"). Lines and what else repeats are left out.
  [[nodiscard]] std::vector<FieldText> Values(const messages::Form& form) const;
  // Greatest length of a text, in characters.
  [[nodiscard]] int GetMaxLength() const;
  [[nodiscard]] messages::Type GetType() const { return ValueRow().type; }
  // Of a choice group: the index of the branch that is set, -1 for none.
  [[nodiscard]] int ORType() const;

 private:
  friend class MsgSetRequest;
  RequestField(detail::RequestNode* parent, const messages::Element* row, std::size_t item)
      : parent_(parent), row_(row), item_(item) {}
  void SetNumber(double number) const;
  // The row of a field; raises 438 for a request, an aggregate or a group, which have no value.
  [[nodiscard]] const messages::Element& ValueRow() const;
  [[nodiscard]] detail::RequestNode& Node() const;      // made when it is not there yet
  [[nodiscard]] detail::RequestNode* FindNode() const;  // nullptr when it is not there
  void Store(std::string_view wireText) const;

  detail::RequestNode* parent_;
  const messages::Element* row_;  // nullptr: the request itself
  std::size_t item_;              // which of a repeating field
};

// The identifiers of a set whose outcome QuickBooks is to keep: under `newId`, in the place of what it keeps under
// `oldId`. At most 23 letters and digits each; an empty one stays off the wire.
struct MessageSetIds {
  std::string newId;
  std::string oldId;
};

// A set of requests of one form. Used once.
class MsgSetRequest {
 public:
  MsgSetRequest(messages::Form form, messages::MessageSet kind);
  ~MsgSetRequest();
  MsgSetRequest(MsgSetRequest&&) noexcept;
  MsgSetRequest& operator=(MsgSetRequest&&) noexcept;

  void SetOnError(OnError onError) { onError_ = onError; }
  // Appends a request by its published name, with or without "Rq". Raises 438 when there is none of that name.
  RequestField Append(std::string_view requestName);

  // What the request appended last is about, in at most 50 characters: its requestID in a set with identifiers. Without
  // one, and in any other set, that is its number.
  void NameLast(std::string name) { requests_.back().name = std::move(name); }

  [[nodiscard]] const messages::Form& GetForm() const { return form_; }
  [[nodiscard]] std::size_t Count() const { return requests_.size(); }
  // What the request appended last is ("CustomerAdd"), and the name of the first one.
  [[nodiscard]] std::string_view LastRequest() const;
  [[nodiscard]] const std::string& FirstName() const { return requests_.front().name; }
  // The set as qbXML. Raises 0x80040307 when a request leaves a required choice empty. Of a text that XML can't carry
  // as it is, what it can carry goes; `mended` becomes true then.
  [[nodiscard]] std::string ToXMLString(bool* mended = nullptr, const MessageSetIds* ids = nullptr) const;

 private:
  struct Request {
    detail::RequestNode* node = nullptr;
    std::string name;  // empty: it has none
  };

  messages::Form form_;
  messages::MessageSet kind_;
  OnError onError_ = OnError::Stop;
  struct Memory;
  std::unique_ptr<Memory> memory_;  // of the nodes
  std::vector<Request> requests_;
};

}  // namespace twqb
