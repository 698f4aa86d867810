#include "adapters/companyfile/Presets.h"

#include <fmt/format.h>

#include <array>

namespace twqb::company {

namespace {

using messages::Countries;
using messages::Country;

constexpr auto kAustralia = static_cast<Countries>(Country::AU);
constexpr std::int64_t kFirstNumber = 0x10000;

// The format with whose files they came. A preset is put behind those that there are, for its place is its identifier.
constexpr std::int64_t kFirstLists = 2;
constexpr std::int64_t kListsThatOthersReferTo = 4;

struct Preset {
  std::string_view kind;
  Countries countries;
  std::string_view name;
  std::string_view body;
  std::int64_t since = kFirstLists;
};
constexpr Preset Everywhere(std::string_view kind, std::string_view name, std::string_view body = {}) {
  return {
      .kind = kind, .countries = messages::kEverywhere, .name = name, .body = body, .since = kListsThatOthersReferTo};
}
constexpr std::string_view kSalesTaxCode = "SalesTaxCode";
constexpr std::string_view kTaxCode = "TaxCode";
constexpr std::string_view kPaymentMethod = "PaymentMethod";
constexpr std::string_view kTerms = "StandardTerms";
constexpr std::string_view kCustomerType = "CustomerType";
constexpr std::string_view kVendorType = "VendorType";
constexpr std::string_view kTemplate = "Template";
constexpr std::string_view kInvoice = "<TemplateType>Invoice</TemplateType>";
constexpr auto kAmerica = static_cast<Countries>(Country::US);
constexpr auto kCheques = static_cast<Countries>(messages::kCanada | messages::kBritain);
constexpr std::string_view kExempt =
    "<Desc>Tax Exempt</Desc><IsTax1Exempt>true</IsTax1Exempt><IsTax2Exempt>true</IsTax2Exempt>";
constexpr std::array kPresets = {
    Preset{kSalesTaxCode, messages::kUnitedStates, "Tax", "<IsTaxable>true</IsTaxable><Desc>Taxable Sales</Desc>"},
    Preset{kSalesTaxCode, messages::kUnitedStates, "Non", "<IsTaxable>false</IsTaxable><Desc>Non-Taxable Sales</Desc>"},
    Preset{kSalesTaxCode, kAustralia, "E", "<IsTaxable>false</IsTaxable><Desc>Tax Exempt</Desc>"},
    Preset{kTaxCode, kCheques, "E", kExempt},
    Preset{kTaxCode, messages::kCanada, "G",
           "<Desc>GST only</Desc><Tax1Rate>5</Tax1Rate><IsTax2Exempt>true</IsTax2Exempt>"},
    Preset{kTaxCode, messages::kCanada, "H",
           "<Desc>HST</Desc><Tax1Rate>13</Tax1Rate><IsTax2Exempt>true</IsTax2Exempt>"},
    Preset{kTaxCode, messages::kCanada, "P",
           "<Desc>PST only</Desc><Tax2Rate>8</Tax2Rate><IsTax1Exempt>true</IsTax1Exempt>"},
    Preset{kTaxCode, messages::kCanada, "S", "<Desc>GST and PST</Desc><Tax1Rate>5</Tax1Rate><Tax2Rate>8</Tax2Rate>"},
    Preset{kTaxCode, messages::kBritain, "O", "<Desc>Outside the scope of VAT</Desc><IsTax1Exempt>true</IsTax1Exempt>"},
    Preset{kTaxCode, messages::kBritain, "S", "<Desc>Standard rate</Desc><Tax1Rate>17.5</Tax1Rate>"},
    Preset{kTaxCode, kCheques, "Z", "<Desc>Zero rated</Desc><Tax1Rate>0</Tax1Rate>"},
    Preset{kTaxCode, kCheques, "NON", kExempt},
    Preset{kPaymentMethod, messages::kEverywhere, "Cash", {}},
    Preset{kPaymentMethod, messages::kUnitedStates, "Check", {}},
    Preset{kPaymentMethod, kCheques, "Cheque", {}},
    Preset{kPaymentMethod, messages::kEverywhere, "American Express", {}},
    Preset{kPaymentMethod, kAmerica, "Discover", {}},
    Preset{kPaymentMethod, messages::kEverywhere, "MasterCard", {}},
    Preset{kPaymentMethod, messages::kEverywhere, "Visa", {}},
    Everywhere(kTerms, "1% 10 Net 30",
               "<StdDueDays>30</StdDueDays><StdDiscountDays>10</StdDiscountDays><DiscountPct>1</DiscountPct>"),
    Everywhere(kTerms, "2% 10 Net 30",
               "<StdDueDays>30</StdDueDays><StdDiscountDays>10</StdDiscountDays><DiscountPct>2</DiscountPct>"),
    Everywhere(kTerms, "Due on receipt", "<StdDueDays>0</StdDueDays>"),
    Everywhere(kTerms, "Net 15", "<StdDueDays>15</StdDueDays>"),
    Everywhere(kTerms, "Net 30", "<StdDueDays>30</StdDueDays>"),
    Everywhere(kTerms, "Net 60", "<StdDueDays>60</StdDueDays>"),
    Everywhere(kCustomerType, "From advertisement"),
    Everywhere(kCustomerType, "Referral"),
    Everywhere(kCustomerType, "Retail"),
    Everywhere(kCustomerType, "Wholesale"),
    Everywhere(kVendorType, "Consultant"),
    Everywhere(kVendorType, "Service Providers"),
    Everywhere(kVendorType, "Suppliers"),
    Everywhere(kVendorType, "Tax agency"),
    Everywhere(kTemplate, "Intuit Product Invoice", kInvoice),
    Everywhere(kTemplate, "Intuit Professional Invoice", kInvoice),
    Everywhere(kTemplate, "Intuit Service Invoice", kInvoice),
    Everywhere(kTemplate, "Custom Credit Memo", "<TemplateType>CreditMemo</TemplateType>"),
    Everywhere(kTemplate, "Custom Estimate", "<TemplateType>Estimate</TemplateType>"),
};

}  // namespace

std::vector<FoundRecord> Presets(Country country, std::int64_t made, std::int64_t format) {
  std::vector<FoundRecord> records;
  auto number = kFirstNumber;
  for (const auto& preset : kPresets) {
    if ((preset.countries & static_cast<Countries>(country)) == 0) continue;
    const auto place = number;
    number += kFirstNumber;
    if (preset.since <= format) continue;
    ListRecord record;
    record.listId = fmt::format("{:X}-{}", place, made);
    record.name = record.fullName = preset.name;
    record.fullKey = FullNameKey(preset.name);
    record.created = record.modified = record.editSequence = made;
    record.body = preset.body;
    records.push_back({.kind = FindListKind(preset.kind), .record = std::move(record)});
  }
  return records;
}

}  // namespace twqb::company
