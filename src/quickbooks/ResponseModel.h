// Responses and records: views into the answer's document, which they keep alive. Nothing is copied until it is read.
//
// A field that QuickBooks left out is *nothing*: it can be asked whether it is, and reading it raises 91.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "messages/Schema.h"
#include "messages/ValueFormat.h"
#include "platform/Currency.h"
#include "platform/Date.h"
#include "platform/machine.h"

namespace twqb {

// The text of an answer, parsed in place.
struct AnswerDocument;

// A record, or a field of one, or the list of a repeating field.
class Record {
 public:
  Record() = default;  // nothing

  // The member of that name, nothing when the answer lacks it. Raises 438 for a name that no version or country has,
  // and 91 on nothing.
  [[nodiscard]] Record operator[](std::string_view name) const& { return Member(document_, name); }
  [[nodiscard]] Record operator[](std::string_view name) && { return Member(std::move(document_), name); }
  [[nodiscard]] Record Field(std::string_view name) const { return (*this)[name]; }
  [[nodiscard]] bool IsNothing() const { return row_ == nullptr; }

  // The value; each raises 91 on nothing, and 13 when the text does not convert. A date is a day;
  // a moment, which QuickBooks writes as the wall clock showed it, comes as standard time, summer and winter, and
  // raises 91 where the answer was read without a machine.
  [[nodiscard]] std::string GetValue() const;
  [[nodiscard]] bool GetBoolean() const;
  [[nodiscard]] std::int64_t GetInteger() const;  // of an enumeration: the value's number
  [[nodiscard]] double GetNumber() const;
  [[nodiscard]] Currency GetAmount() const;
  [[nodiscard]] Date GetDate() const;
  [[nodiscard]] messages::TimeInterval GetTimeInterval() const;
  // In which form the value is written; raises 91 on nothing.
  [[nodiscard]] messages::Type ValueType() const;
  // The wire name of an enumeration; of a record, its element's name.
  [[nodiscard]] std::string GetAsString() const;
  // The text, or "" on nothing.
  [[nodiscard]] std::string GetValueOrEmpty() const { return IsNothing() ? std::string() : GetValue(); }

  // Under which identifiers QuickBooks keeps the record and its lines; not those of records that it refers to.
  [[nodiscard]] std::vector<std::string> Identifiers() const;

  // Of a repeating field or choice: how often it stands there, and each of them. An entry of a repeating choice has the
  // branches as its members, and only the one that it is stands there.
  [[nodiscard]] std::size_t Count() const;
  [[nodiscard]] Record GetAt(std::size_t index) const;
  // Of a choice group: the index of the branch that stands there, -1 for none.
  [[nodiscard]] int ORType() const;

 private:
  friend class Response;
  Record(std::shared_ptr<const AnswerDocument> document, pugi::xml_node node, const messages::Element* row)
      : document_(std::move(document)), node_(node), row_(row) {}
  [[nodiscard]] Record Member(std::shared_ptr<const AnswerDocument> document, std::string_view name) const;
  // The first element below `node_` that stands for `row`: its own or, of a step without one, any below it.
  [[nodiscard]] pugi::xml_node FindElement(const messages::Element& row) const;
  // Whether this is one entry of a repeating choice.
  [[nodiscard]] bool IsEntry() const;

  std::shared_ptr<const AnswerDocument> document_;
  // Of a step without an element: the element that the step belongs to. Of an entry of a repeating choice: the
  // branch's.
  pugi::xml_node node_;
  const messages::Element* row_ = nullptr;  // of nothing
};

// Records under keys, in the order in which they were added.
class RecordList {
 public:
  // Raises 457 when the key is there already.
  void Add(Record record, const std::string& key);
  [[nodiscard]] std::size_t Count() const { return records_.size(); }
  [[nodiscard]] const Record& At(std::size_t index) const { return records_.at(index); }
  [[nodiscard]] auto begin() const { return records_.begin(); }
  [[nodiscard]] auto end() const { return records_.end(); }

 private:
  std::vector<Record> records_;
  std::string firstKey_;                    // most lists are of one record
  std::unordered_set<std::string> others_;  // keys of those behind it
};

// The list that came back from a query, as it came: views into the answer, which they keep alive, in its order. A
// handle; copies share the one list. Of a query that found nothing it is *nothing*, like an absent field.
class ReturnedList {
 public:
  ReturnedList() = default;  // nothing
  [[nodiscard]] bool IsNothing() const { return records_ == nullptr; }
  // Each raises 91 on nothing, and GetAt 0x800A0BB9 for an index behind the last record.
  [[nodiscard]] std::size_t Count() const;
  [[nodiscard]] const Record& GetAt(std::size_t index) const;

 private:
  friend class Response;
  explicit ReturnedList(std::vector<Record> records)
      : records_(std::make_shared<const std::vector<Record>>(std::move(records))) {}
  [[nodiscard]] const std::vector<Record>& Records() const;

  std::shared_ptr<const std::vector<Record>> records_;
};

// The answer to one request.
class Response {
 public:
  [[nodiscard]] std::int32_t StatusCode() const;
  [[nodiscard]] std::string StatusSeverity() const;
  [[nodiscard]] std::string StatusMessage() const;
  // What the request was, without "Rq" ("CustomerAdd"), and its requestID.
  [[nodiscard]] std::string RequestName() const;
  [[nodiscard]] std::string RequestID() const;

  // The records that came back, by reference to the document; empty when there are none.
  [[nodiscard]] std::size_t DetailCount() const;
  // Raises 91 when there is none of that index.
  [[nodiscard]] Record DetailAt(std::size_t index) const;
  [[nodiscard]] Record Detail() const { return DetailAt(0); }
  [[nodiscard]] std::vector<Record> Details() const;
  // The same as the one list that a query returns; nothing when there are none.
  [[nodiscard]] ReturnedList DetailList() const;

 private:
  friend class MsgSetResponse;
  Response(std::shared_ptr<const AnswerDocument> document, pugi::xml_node node)
      : document_(std::move(document)), node_(node) {}
  std::shared_ptr<const AnswerDocument> document_;
  pugi::xml_node node_;
};

// The answers to a set, in the order of its requests.
class MsgSetResponse {
 public:
  // Raises 0x80040400 when the text is no answer. `machine` tells which moments lie in daylight time; it is not owned
  // and must outlive the records. Without one, moments can't be read.
  explicit MsgSetResponse(std::string answer, Machine* machine = nullptr);
  [[nodiscard]] std::size_t Count() const { return responses_.size(); }
  // Raises 91 when there is none of that index.
  [[nodiscard]] const Response& GetAt(std::size_t index) const;
  // Of a set with identifiers, where QuickBooks says something about them.
  [[nodiscard]] std::optional<int> MessageSetStatusCode() const { return code_; }

 private:
  std::vector<Response> responses_;
  std::optional<int> code_;
};

}  // namespace twqb
