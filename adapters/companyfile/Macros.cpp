#include "adapters/companyfile/Macros.h"

#include <algorithm>
#include <array>

#include "adapters/companyfile/Refused.h"

namespace twqb::company {

namespace {

constexpr messages::Version kFirstVersion = {2, 0};

// A line can be named too, though no request that company files here keep refers to a line.
constexpr std::array<std::string_view, 11> kDefiners = {
    "BillAdd",        "CheckAdd",   "CreditCardChargeAdd", "CreditMemoAdd",     "CreditMemoLineAdd", "EstimateAdd",
    "ExpenseLineAdd", "InvoiceAdd", "InvoiceLineAdd",      "ReceivePaymentAdd", "TimeTrackingAdd"};

}  // namespace

bool DefinesMacros(std::string_view element) { return std::ranges::find(kDefiners, element) != kDefiners.end(); }

bool UsesMacros(const messages::Message& message, std::string_view element) {
  return message.name == "ReceivePaymentAdd" && (element == "TxnID" || element == "CreditTxnID");
}

bool KnowsMacros(const messages::Form& form) { return form.version >= kFirstVersion; }

void Macros::Define(pugi::xml_node element, const std::string& id) {
  const auto attribute = element.attribute(kDefinesMacro);
  if (attribute && !ids_.emplace(attribute.value(), id).second) Refuse(status::MacroTaken(attribute.value()));
}

void Macros::Resolve(pugi::xml_node request) const {
  for (const auto element : request.children()) {
    if (const auto attribute = element.attribute(kUsesMacro)) {
      const auto known = ids_.find(std::string_view(attribute.value()));
      if (known == ids_.end()) Refuse(status::MacroUnknown(attribute.value()));
      element.text().set(known->second.c_str());
    }
    Resolve(element);
  }
}

}  // namespace twqb::company
