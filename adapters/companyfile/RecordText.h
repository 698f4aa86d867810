// A list record as XML: the body that is stored, and the record that is answered. Both walk the rows of the message
// table; which of the fields are columns of the storage is the one thing that is known here.
#pragma once

#include <pugixml.hpp>
#include <span>
#include <string>

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/ListRecord.h"
#include "messages/Schema.h"

namespace twqb::company {

// The stored body of a record: of each field that `given` (the element of an Add or Mod) has, its value, and of each
// other what `previous` (an earlier body, or empty) has. A field or aggregate given without content is gone.
// `rows` are those of the answered record.
[[nodiscard]] std::string BuildBody(pugi::xml_node given, const std::string& previous,
                                    std::span<const messages::Element> rows);

// Writes records of one answer.
class RecordWriter {
 public:
  // `record` is the row of the record (CustomerRet); what `form` does not know stays out.
  RecordWriter(const ListKind& kind, const messages::Element& record, const messages::Form& form,
               const ClockReading& clock)
      : kind_(kind), record_(record), form_(form), clock_(clock) {}

  void Append(std::string& out, const ListRecord& record);

 private:
  const ListKind& kind_;
  const messages::Element& record_;
  messages::Form form_;
  ClockReading clock_;
  pugi::xml_document body_;  // kept for its memory
};

}  // namespace twqb::company
