// Records as XML: the body that is stored, and what is answered of it. All of it walks the rows of the message table;
// which of a list record's fields are columns of the storage is the one thing that is known here.
//
// In a body a reference is a ListID alone (but see LayElement), values are written as QuickBooks writes them, and
// elements without content are absent.
#pragma once

#include <functional>
#include <pugixml.hpp>
#include <span>
#include <string>

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/ListRecord.h"
#include "adapters/companyfile/References.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "messages/Schema.h"

namespace twqb::company {

// Reads a stored body; the elements are the children of `document`.
void ParseBody(pugi::xml_document& document, const std::string& body);

// Appends `given`, an element of a request, as it is stored. Throws Refused for a reference that names nothing;
// `referrer` is what the message calls the record.
void StoreElement(std::string& body, pugi::xml_node given, const messages::Element& row, CompanyStore& store,
                  std::string_view referrer);

// Whether a field of a list's answered record is formed from the columns of the storage, and so is in no body.
[[nodiscard]] bool IsListColumn(std::string_view field);

// Appends `told`, an element of an answer of another QuickBooks, as it is stored: values as they were told. `storedId`
// says under which identifier the file keeps what a reference names; one that ends in kIdOfKind is of a record that it
// does not keep, and the full name is stored beside it.
using StoredId = std::function<std::string(std::string_view field, std::string_view listId)>;
void LayElement(std::string& body, pugi::xml_node told, const messages::Element& row, const StoredId& storedId);

// Appends `stored`, an element of a body, as it is answered: with the full names that the records have now, without
// what `form` does not know. Of a record that the file does not keep the name is the one that was told of it.
void AnswerElement(std::string& out, pugi::xml_node stored, const messages::Element& row, const messages::Form& form,
                   NameCache& names);
// <name><ListID/><FullName/></name>
void AppendReference(std::string& out, std::string_view name, std::string_view listId, std::string_view fullName);

// The stored body of a list record: of each field that `given` (the element of an Add or Mod) has, its value, and of
// each other what `previous` (an earlier body, or empty) has. An aggregate given under its own name replaces the
// earlier one; one that is given under the name of a change ("SalesOrPurchaseMod") is merged into it field by field. A
// field or aggregate given without content is gone. `rows` are those of the answered record. Throws Refused as
// StoreElement does.
[[nodiscard]] std::string BuildBody(pugi::xml_node given, const std::string& previous,
                                    std::span<const messages::Element> rows, CompanyStore& store,
                                    std::string_view referrer);

// A field of a list's records and where it comes from: see RecordText.cpp.
struct RecordField;
// Those of a record's row, for a kind, in the order of the wire.
[[nodiscard]] std::span<const RecordField> FieldsOf(const ListKind& kind, const messages::Element& record,
                                                    const messages::Form& form);

// Writes list records of one answer.
class RecordWriter {
 public:
  // `record` is the row of the record (CustomerRet); what `form` does not know stays out.
  RecordWriter(CompanyStore& store, const ListKind& kind, const messages::Element& record, const messages::Form& form,
               const ClockReading& clock)
      : record_(record), fields_(FieldsOf(kind, record, form)), form_(form), clock_(clock), names_(store) {}

  // A field of that name (an exact one of the top level) is left out of every record.
  void LeaveOut(std::string_view field) { leftOut_.emplace_back(field); }
  void Append(std::string& out, const ListRecord& record);

 private:
  void AppendField(std::string& out, const ListRecord& record, const RecordField& field);

  const messages::Element& record_;
  std::span<const RecordField> fields_;
  messages::Form form_;
  ClockReading clock_;
  NameCache names_;
  std::vector<std::string> leftOut_;
  pugi::xml_document body_;  // kept, with its elements, for its memory
  NamedElements elements_;
};

}  // namespace twqb::company
