// Checks one request or record, as XML, against its rows in the schema table: names, order, obligation, values,
// lengths.
#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "messages/Schema.h"

namespace twqb::messages {

enum class ProblemKind : std::uint8_t {
  UnexpectedElement,  // not in this form, or not at this place, or once too often; also text between elements
  MalformedValue,     // not of its type (truth values, whole numbers, dates, enumerations, GUIDs, prices ...)
  MalformedAmount,    // money that is not digits with two decimals
  MalformedId,        // a ListID or TxnID that can't be one
  TooLong,            // a text above its greatest length
  MissingElement,     // a required element or choice that is not there
};

struct Problem {
  ProblemKind kind = ProblemKind::UnexpectedElement;
  std::string field;  // the element's name
  std::string value;  // its text, empty where there is none
  // Of a value that is malformed: what it should have been. QuickBooks has a status of its own for most types.
  Type type = Type::Str;
};

// All problems of the elements inside `parent`, in document order; empty when it is as published.
// Missing elements are told after what does stand there.
[[nodiscard]] std::vector<Problem> Validate(pugi::xml_node parent, std::span<const Element> rows, const Form& form);

}  // namespace twqb::messages
