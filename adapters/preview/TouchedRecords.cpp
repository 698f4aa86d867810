#include "adapters/preview/TouchedRecords.h"

#include <array>
#include <pugixml.hpp>
#include <utility>

namespace twqb::preview {

namespace {

struct Ending {
  std::string_view behindKind;  // of a response's name
  Touch touch;
  std::string_view typeField;  // where the kind stands instead of in the name; empty: nowhere
};
constexpr std::array kEndings = {Ending{"AddRs", Touch::Added, ""}, Ending{"ModRs", Touch::Changed, ""},
                                 Ending{"ListDelRs", Touch::Removed, "ListDelType"},
                                 Ending{"TxnDelRs", Touch::Removed, "TxnDelType"},
                                 Ending{"TxnVoidRs", Touch::Changed, "TxnVoidType"}};

// A query's answer is long, and has none of them.
bool MayChangeSomething(std::string_view answer) {
  for (const auto& ending : kEndings) {
    if (answer.find(ending.behindKind) != std::string_view::npos) return true;
  }
  return false;
}

TouchedRecord RecordIn(pugi::xml_node place, std::string kind, Touch touch) {
  const std::string list = place.child_value("ListID");
  return {.kind = std::move(kind),
          .identifier = list.empty() ? place.child_value("TxnID") : list,
          .isTransaction = list.empty(),
          .first = touch};
}

TouchedRecord RecordOf(pugi::xml_node response) {
  const std::string_view name = response.name();
  for (const auto& [behindKind, touch, typeField] : kEndings) {
    if (!name.ends_with(behindKind)) continue;
    if (!typeField.empty()) return RecordIn(response, response.child_value(std::string(typeField).c_str()), touch);
    return RecordIn(response.first_child(), std::string(name.substr(0, name.size() - behindKind.size())), touch);
  }
  return {};
}

}  // namespace

void TouchedRecords::Note(std::string_view answer) {
  if (!MayChangeSomething(answer)) return;
  pugi::xml_document document;
  document.load_buffer(answer.data(), answer.size());
  for (const auto response : document.child("QBXML").child("QBXMLMsgsRs").children()) Add(RecordOf(response));
}

void TouchedRecords::Add(TouchedRecord record) {
  if (record.identifier.empty()) return;
  if (byIdentifier_.emplace(record.identifier, records_.size()).second) records_.push_back(std::move(record));
}

}  // namespace twqb::preview
