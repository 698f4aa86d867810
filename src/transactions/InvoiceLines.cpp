#include "transactions/InvoiceLines.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "engine/Mapping.h"
#include "platform/Decimal.h"
#include "platform/Text.h"
#include "quickbooks/LookupLists.h"
#include "services/Conversions.h"
#include "services/Countries.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"
#include "services/Sql.h"
#include "transactions/SpecialItems.h"
#include "transactions/TxnRow.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

bool IsAmerican() { return FileCountry() == "US"; }

// Which of the invoice forms has the field: Australia talks in the American one, and is not American.
std::string_view RateChoice() { return IsCanadianOrBritish(FileCountry()) ? "ORRate" : "ORRatePriceLevel"; }

// --- Header ----------------------------------------------------------------------------------------------------------

using When = SendField::When;
constexpr std::array kAddress = {
    SendField{.path = "Addr1", .column = "ClientCompany", .when = When::NotNull},
    SendField{.path = "Addr2", .column = "ClientStreet", .when = When::NotNull},
    SendField{.path = "Addr3", .column = "ClientStreet2", .when = When::NotNull},
    SendField{.path = "City", .column = "ClientCity", .when = When::NotNull},
    SendField{.path = "PostalCode", .column = "ClientZip", .when = When::NotNull},
    SendField{.path = "State|Province|County", .column = "ClientState", .when = When::NotNull},
};
constexpr std::array kNumber = {
    SendField{.path = "RefNumber", .column = "TransactionInvNum", .when = When::NotNull},
};

// --- Detail or summary -----------------------------------------------------------------------------------------------

struct ContractType {
  std::string_view name;  // in upper case
  std::string_view summaryKey;
};
constexpr std::array kContractTypes = {
    ContractType{"HOURLY", "_chkHourly"},
    ContractType{"HOURLY NOT TO EXCEED", "_chkHNTE"},
    ContractType{"FIXED", "_chkFixed"},
    ContractType{"PERCENTAGE", "_chkPerc"},
    ContractType{"RECURRING", "_chkRecur"},
    ContractType{"RECURRING WITH CAP", "_chkRecurCap"},
    ContractType{"RECURRING + EXPENSE", "_chkRecurExp"},
};

bool WantsSummary(const ado::Recordset& row) {
  if (IsTrueFlag(row, "TransactionManInv")) return true;
  const auto type = UpperCase(GetScalarFromSQL(
      Sql("SELECT ProjectConType FROM Project WHERE ProjectID = '{}';", ColumnText(row, "ProjectID"))));
  const auto* found = std::ranges::find(kContractTypes, type, &ContractType::name);
  return found != kContractTypes.end() &&
         gf_ReadSettings("GENERAL", found->summaryKey, Vars().g_TWSettingsPath, "0") == "1";
}

// --- What lines have in common ---------------------------------------------------------------------------------------

enum class TaxCode : std::uint8_t { Always, BeforeVersion3 };

void AssignTaxCode(const RequestField& line, TaxCode when) {
  if (IsAmerican()) {
    line["SalesTaxCodeRef"]["FullName"].SetValue(IsCanadianOrBritish(Vars().g_HostCountry) ? "E" : "NON");
  } else if (when == TaxCode::Always || Vars().g_QBMajorVer < 3) {
    line["TaxCodeRef"]["FullName"].SetValue("E");
  }
}

void AssignRate(const RequestField& line, Currency rate) { line[RateChoice()]["Rate"].SetValue(rate); }

void AssignClass(const RequestField& line, std::string_view classId) {
  if (!classId.empty()) line["ClassRef"]["ListID"].SetValue(classId);
}

// Whether a flag that may be left out says False.
bool IsSwitchedOff(const ado::Recordset& row, std::string_view column) {
  return !IsNull(row.Field(column)) && !IsTrueFlag(row, column);
}

// --- Lines -----------------------------------------------------------------------------------------------------------

// A row with its description and what it is linked to: an hour or an expense.
struct BilledTable {
  std::string_view kind;         // of GetQBLinkIDOf
  std::string_view codes;        // the table of its codes, where a class may stand
  std::string_view keyColumn;    //
  std::string_view description;  //
};
constexpr BilledTable kHours = {
    .kind = "ACTIVITY", .codes = "Activity", .keyColumn = "ActivityID", .description = "TEDescription"};
constexpr BilledTable kExpenses = {
    .kind = "EXPENSE", .codes = "Expense", .keyColumn = "ExpID", .description = "ELDescription"};

// One of the amounts that are a line each, below those of services and expenses.
struct FixedLine {
  enum class Sign : std::uint8_t { AsStored, Negated };
  enum class Class : std::uint8_t { None, OfTheServices };

  std::string_view item;
  std::string_view column;
  bool SalesTaxLines::*mayBeTax = nullptr;
  Class classOf = Class::OfTheServices;
  Sign sign = Sign::AsStored;
};

constexpr std::array kFixedLines = {
    FixedLine{.item = kMiscItem, .column = "TransactionManInvMiscAmt", .classOf = FixedLine::Class::None},
    // Its neighbours have the class.
    FixedLine{.item = kServiceTaxItem,
              .column = "ServiceTaxAmt",
              .mayBeTax = &SalesTaxLines::g_HasServiceTaxItem,
              .classOf = FixedLine::Class::None},
    FixedLine{.item = kExpenseTaxItem, .column = "ExpTaxAmt", .mayBeTax = &SalesTaxLines::g_HasExpenseTaxItem},
    FixedLine{.item = kMainServiceTaxItem,
              .column = "MainServiceTaxAmt",
              .mayBeTax = &SalesTaxLines::g_HasMainServiceTaxItem},
    FixedLine{.item = kMainExpenseTaxItem,
              .column = "MainExpenseTaxAmt",
              .mayBeTax = &SalesTaxLines::g_HasMainExpenseTaxItem},
    FixedLine{.item = kDiscountItem, .column = "TransactionInvDiscount", .sign = FixedLine::Sign::Negated},
    FixedLine{.item = kRetainerCharge, .column = "InvRetainerAmtApplied", .sign = FixedLine::Sign::Negated},
};

class InvoiceLines {
 public:
  InvoiceLines(const ado::Recordset& row, const RequestField& request, RequestKind kind, const SalesTaxLines& salesTax)
      : row_(row),
        request_(request),
        list_(kind == RequestKind::Add ? request["ORInvoiceLineAddList"] : request["ORInvoiceLineModList"]),
        lineName_(kind == RequestKind::Add ? "InvoiceLineAdd" : "InvoiceLineMod"),
        salesTax_(salesTax),
        id_(ColumnText(row, "TransactionID")),
        projectLink_(ColumnText(row, "ProjectQBLInkID")),
        wantsSummary_(WantsSummary(row)) {}

  void AppendAll() {
    if (const auto services = Amount("ServiceAmt"); !services.IsZero()) AppendServices(services);
    if (const auto expenses = Amount("ExpAmt"); !expenses.IsZero()) AppendExpenses(expenses);
    for (const auto& fixed : kFixedLines) AppendFixed(fixed);
  }

 private:
  // 0 for NULL: either way there is no line.
  [[nodiscard]] Decimal Amount(std::string_view column) const { return NumberIn(row_, column, Decimal()); }

  [[nodiscard]] RequestField Append() const { return list_.Append()[lineName_]; }
  [[nodiscard]] RequestField Append(std::string_view item) const {
    const auto line = Append();
    line["ItemRef"]["FullName"].SetValue(item);
    return line;
  }
  // A line of the row's own item; answers the item's link.
  [[nodiscard]] std::string AssignItem(const RequestField& line, const ado::Recordset& billed,
                                       const BilledTable& table) const {
    auto link = GetQBLinkIDOf(table.kind, ColumnText(billed, table.keyColumn));
    AssignReference(line["ItemRef"], link, kCatchAllItem);
    return link;
  }
  void AssignDescriptionAndClass(const RequestField& line, const ado::Recordset& billed, const BilledTable& table,
                                 std::string_view itemLink) const {
    if (const auto text = billed.Field(table.description); !IsNull(text)) {
      line["Desc"].SetValue(ToText(text));
      if (!IsXmlText(ToText(text))) LogMended("MoveInvoicesToQB", table.description, id_);
    }
    AssignClass(line, ClassFor(projectLink_, table.codes, itemLink));
  }

  // Goes over the rows of the invoice in a table; answers whether there are any that are to be told one by one.
  template <typename TakeRow>
  bool InDetail(const Sql& statement, TakeRow takeRow) const {
    return WithGlobalConnection([&] {
      const auto rows = GlobalConnection().OpenRecordset(statement, ado::CursorType::Static, ado::LockType::ReadOnly);
      const bool detail = rows->RecordCount() > 0 && !wantsSummary_;
      for (; detail && !rows->Eof(); rows->MoveNext()) takeRow(*rows);
      rows->Close();
      return detail;
    });
  }

  void AppendServices(Decimal services) {
    Decimal told;
    const bool detail =
        InDetail(Sql("SELECT ActivityID, TEHours, TEDescription, TEBillRate, WUD, TEBill FROM TimeEntry WHERE "
                     "TransactionID = '{}';",
                     id_),
                 [&](const ado::Recordset& entry) { told = told + AppendHours(entry); });
    if (!detail) {
      AppendServiceSummary(services);
    } else if (const auto difference = services + Decimal(-1) * told; !difference.IsZero()) {
      const auto line = Append(kAdjustmentItem);
      line["Quantity"].SetValue(1);
      AssignRate(line, difference.ToCents());
      line["Desc"].SetValue("Write Up / Down Adjustment");
      AssignTaxCode(line, TaxCode::BeforeVersion3);
    }
  }

  // Answers what the line comes to in QuickBooks, which multiplies and rounds by itself.
  [[nodiscard]] Decimal AppendHours(const ado::Recordset& entry) const {
    const auto hours = NumberIn(entry, "TEHours", Decimal());
    if (hours.IsZero() || hours.IsNegative()) return {};
    const auto line = Append();
    const auto link = AssignItem(line, entry, kHours);
    auto factor = NumberIn(entry, "WUD", Decimal(1));
    if (factor.IsNegative()) factor = Decimal();
    const auto quantity = (hours * factor).ToCents();
    line["Quantity"].SetValue(quantity);
    const auto rate = IsSwitchedOff(entry, "TEBill") ? Currency() : NumberIn(entry, "TEBillRate", Decimal()).ToCents();
    AssignRate(line, rate);
    AssignTaxCode(line, TaxCode::BeforeVersion3);
    AssignDescriptionAndClass(line, entry, kHours, link);
    return Decimal::FromCurrency((Decimal::FromCurrency(quantity) * Decimal::FromCurrency(rate)).ToCents());
  }

  void AppendServiceSummary(Decimal services) {
    const auto line = Append(kServiceItem);
    class_ = ClassOf("Project", projectLink_);
    AssignClass(request_, class_);
    AssignTaxCode(line, TaxCode::BeforeVersion3);
    line["Quantity"].SetValue(1);
    AssignMoney(line, services.ToCents());
    AssignClass(line, class_);
  }

  void AppendExpenses(Decimal expenses) {
    // Kept from row to row: a NULL is what the row before it had.
    Decimal units;
    Decimal cost;
    Decimal markup;
    const bool detail =
        InDetail(Sql("SELECT ExpID, ElUnits, ELDescription, ELCost, ELMarkup, ELChgAmt, ELBillable FROM ExpenseLog "
                     "WHERE TransactionID = '{}';",
                     id_),
                 [&](const ado::Recordset& expense) {
                   const auto line = Append();
                   const auto link = AssignItem(line, expense, kExpenses);
                   units = NumberIn(expense, "ElUnits", units);
                   line["Quantity"].SetValue(units.ToCents());
                   cost = NumberIn(expense, "ELCost", cost);
                   markup = NumberIn(expense, "ELMarkup", markup);
                   const auto charge = units * cost * (Decimal(1) + markup.PerCent());
                   line["Amount"].SetValue(IsSwitchedOff(expense, "ELBillable") ? Currency() : charge.ToCents());
                   AssignTaxCode(line, TaxCode::BeforeVersion3);
                   AssignDescriptionAndClass(line, expense, kExpenses, link);
                 });
    if (detail) return;
    const auto line = Append(kExpenseItem);
    AssignTaxCode(line, TaxCode::Always);
    line["Quantity"].SetValue(1);
    AssignMoney(line, expenses.ToCents());
    AssignClass(line, class_);
  }

  void AppendFixed(const FixedLine& fixed) const {
    const auto amount = Amount(fixed.column);
    if (amount.IsZero()) return;
    const auto line = Append(fixed.item);
    const bool isTax = fixed.mayBeTax != nullptr && salesTax_.*fixed.mayBeTax;
    if (!isTax) line["Quantity"].SetValue(1);
    // Elsewhere the code stands on a tax, too.
    if (!isTax || !IsAmerican()) AssignTaxCode(line, TaxCode::Always);
    AssignMoney(line, (fixed.sign == FixedLine::Sign::Negated ? Decimal(-1) * amount : amount).ToCents());
    if (fixed.classOf == FixedLine::Class::OfTheServices) AssignClass(line, class_);
  }

  const ado::Recordset& row_;
  const RequestField& request_;
  RequestField list_;
  std::string_view lineName_;
  const SalesTaxLines& salesTax_;
  std::string id_;
  std::string projectLink_;
  bool wantsSummary_;
  std::string class_;  // of the summary of services; of any other invoice ""
};

}  // namespace

void AssignMoney(const RequestField& line, Currency amount) {
  if (IsAmerican()) {
    line["Amount"].SetValue(amount);
  } else {
    AssignRate(line, amount);
  }
}

SalesTaxLines CheckTaxItems() {
  SalesTaxLines found;
  if (IsCanadianOrBritish(FileCountry())) return found;
  const auto items = LookUp(LookupList::SalesTaxItems).list;
  if (items.IsNothing()) return found;
  for (std::size_t i = 0; i < items.Count(); ++i) {
    const auto name = items.GetAt(i)["Name"].GetValue();
    for (const auto& fixed : kFixedLines) {
      if (fixed.mayBeTax != nullptr && name == fixed.item) found.*fixed.mayBeTax = true;
    }
  }
  return found;
}

bool AssignInvoiceHeader(const RequestField& request, const ado::Recordset& row) {
  if (ColumnText(row, "TransactionInvSendBillFlag") == "B") request["IsToBePrinted"].SetValue(false);
  if (const auto total = row.Field("TransactionInvBillAmt"); !IsNull(total) && ToDecimal(total).IsNegative()) {
    return false;
  }
  // It always goes to the project, but not before the client is there.
  if (ColumnText(row, "ClientQBLinkID").empty()) return false;
  const auto project = ColumnText(row, "ProjectQBLInkID");
  if (project.empty()) return false;
  request["CustomerRef"]["ListID"].SetValue(project);
  SendFields(request["BillAddress"], row, kAddress);
  if (const auto date = row.Field("InvoiceDate"); !IsNull(date)) {
    const auto written = ToDate(date);
    request["TxnDate"].SetValue(DateFloor(written));
    request["DueDate"].SetValue(DateFloor(written.PlusDays(kDaysToPay)));
  }
  SendFields(request, row, kNumber);
  return true;
}

bool AssignInvoiceFldValues(const ado::Recordset& row, const RequestField& request, RequestKind kind,
                            const SalesTaxLines& salesTax) {
  return RunAs("AssignInvoiceFldValues", false, [&] {
    if (!AssignInvoiceHeader(request, row)) return false;
    InvoiceLines(row, request, kind, salesTax).AppendAll();
    return true;
  });
}

}  // namespace twqb
