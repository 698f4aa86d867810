#include "cli/DemoBooks.h"

#include <fmt/core.h>

#include <vector>

#include "adapters/sqlite/SqliteProvider.h"
#include "cli/CompanyAnswer.h"
#include "cli/SqlScript.h"
#include "platform/Date.h"
#include "services/Conversions.h"

namespace twqb::cli {

namespace {

constexpr const char* kCustomerRecord = "CustomerRet";

// Kinds of records, and of a kind that two lists share, whether those with a parent are wanted.
enum class Level : std::uint8_t { Any, Top, Below };
struct ListContent {
  std::vector<std::string_view> kinds;
  Level level = Level::Any;
  std::string_view query = "<ActiveStatus>All</ActiveStatus>";
  const char* identifier = "ListID";
};

ListContent TransactionsOf(std::string_view kind) { return {.kinds = {kind}, .query = {}, .identifier = "TxnID"}; }

ListContent ContentOf(DemoBooks::ListedIn list) {
  using enum DemoBooks::ListedIn;
  switch (list) {
    case Employees:
      return {.kinds = {"Employee"}};
    case Vendors:
      return {.kinds = {"Vendor"}};
    case Customers:
      return {.kinds = {"Customer"}, .level = Level::Top};
    case Jobs:
      return {.kinds = {"Customer"}, .level = Level::Below};
    case ServiceItems:
      return {.kinds = {"ItemService"}};
    case OtherItems:
      return {.kinds = {"ItemOtherCharge", "ItemInventory", "ItemNonInventory"}};
    case Accounts:
      return {.kinds = {"Account"}};
    case TimeEntries:
      return TransactionsOf("TimeTracking");
    case Invoices:
      return TransactionsOf("Invoice");
    case Payments:
      return TransactionsOf("ReceivePayment");
    case Bills:
      return TransactionsOf("Bill");
  }
  return {};
}

std::string CustomerQuery(std::string_view listId) {
  return fmt::format("<CustomerQueryRq><ListID>{}</ListID></CustomerQueryRq>", listId);
}

}  // namespace

DemoBooks::DemoBooks(const Workplace& place, Machine& machine)
    : company_(place.company), machine_(machine), billing_(SqliteProvider().CreateConnection()) {
  billing_->SetConnectionString(place.billing);
  billing_->Open();
}

std::string DemoBooks::FirstField(const std::string& statement) {
  const auto rows = billing_->Execute(statement, nullptr);
  return rows->Eof() ? std::string() : ToText(rows->FieldAt(0));
}

DemoBooks::RowCount DemoBooks::Rows(std::string_view table, std::string_view condition) {
  const auto count = [&](std::string_view andLinked) {
    return TextToInteger(FirstField(fmt::format("SELECT COUNT(*) FROM {} WHERE {}{}", table, condition, andLinked)));
  };
  return {.rows = count(""), .linked = count(" AND QBLinkID <> ''")};
}

DemoBooks::Records DemoBooks::RecordsOf(ListedIn list) {
  const auto content = ContentOf(list);
  Records records;
  for (const auto kind : content.kinds) {
    const CompanyAnswer answer(company_, machine_, fmt::format("<{0}QueryRq>{1}</{0}QueryRq>", kind, content.query));
    for (const auto& record : answer.Response().children()) {
      const auto level = record.child("ParentRef") ? Level::Below : Level::Top;
      if (content.level != Level::Any && content.level != level) continue;
      records.emplace(record.child_value(content.identifier), record.child_value("EditSequence"));
    }
  }
  return records;
}

std::string DemoBooks::LinkOf(std::string_view client) {
  return FirstField(fmt::format("SELECT QBLinkID FROM Client WHERE ClientID = '{}'", DoubleQuotes(client)));
}

std::string DemoBooks::EmailInBilling(std::string_view client) {
  return FirstField(fmt::format("SELECT ClientEmail FROM Client WHERE ClientID = '{}'", DoubleQuotes(client)));
}

std::string DemoBooks::EmailInQuickBooks(std::string_view client) {
  const CompanyAnswer answer(company_, machine_, CustomerQuery(LinkOf(client)));
  return answer.Response().child(kCustomerRecord).child_value("Email");
}

void DemoBooks::EnterInBilling(std::string_view script) {
  billing_->Execute("BEGIN", nullptr);
  for (const auto& statement : SplitStatements(script)) billing_->Execute(statement, nullptr);
  billing_->Execute("COMMIT", nullptr);
}

void DemoBooks::ChangeInBilling(std::string_view client, std::string_view email) {
  billing_->Execute(fmt::format("UPDATE Client SET ClientEmail = '{}', LastUpdated = '{}' WHERE ClientID = '{}'",
                                DoubleQuotes(email), IsoDate(LocalToUTC(machine_.Now())), DoubleQuotes(client)),
                    nullptr);
}

void DemoBooks::ChangeInQuickBooks(std::string_view client, std::string_view email) {
  const auto link = LinkOf(client);
  const CompanyAnswer answer(company_, machine_, CustomerQuery(link));
  const auto* sequence = answer.Response().child(kCustomerRecord).child_value("EditSequence");
  const CompanyAnswer changed(
      company_, machine_,
      fmt::format("<CustomerModRq><CustomerMod><ListID>{}</ListID><EditSequence>{}</EditSequence>"
                  "<Email>{}</Email></CustomerMod></CustomerModRq>",
                  link, sequence, email));
}

}  // namespace twqb::cli
