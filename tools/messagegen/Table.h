// The table that the texts come to: every name looked up, every shared part put in, a list of rows for each role in
// which it is used. The writer says it in C++.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "messagegen/Source.h"
#include "messages/Schema.h"

namespace twqb::messagegen {

struct Row {
  Place place;
  std::string name;
  messages::Type type = messages::Type::Str;
  int maxLength = 0;
  bool optional = false;
  bool repeating = false;
  std::string attribute;
  messages::Availability known;
  std::optional<std::size_t> children;  // a number in rowLists
  std::optional<std::size_t> values;    // a number in valueLists
};

struct RowList {
  std::string name;      // unlike all others; letters, digits and _
  std::size_t file = 0;  // in which the rows stand
  std::vector<Row> rows;
};

struct RowValue {
  std::string name;
  int number = 0;
  messages::Availability known;
};

struct ValueList {
  std::string name;
  std::size_t file = 0;
  std::vector<RowValue> values;
};

struct TableMessage {
  std::string name;
  std::optional<std::size_t> request;  // a number in rowLists; nothing: no rows
  std::optional<std::size_t> answer;
  messages::Availability known;
  messages::MessageSet set = messages::MessageSet::Company;
};

struct Table {
  std::vector<RowList> rowLists;
  std::vector<ValueList> valueLists;
  std::vector<TableMessage> messages;  // in the order of their names
};

}  // namespace twqb::messagegen
