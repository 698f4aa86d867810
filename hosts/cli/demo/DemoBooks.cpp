#include "cli/demo/DemoBooks.h"

#include <fmt/core.h>

#include <iterator>

#include "adapters/sqlite/SqliteProvider.h"
#include "cli/workplace/CompanyAnswer.h"
#include "cli/workplace/SqlScript.h"
#include "platform/Date.h"
#include "services/Conversions.h"

namespace twqb::cli {

namespace {

constexpr const char* kCustomerRecord = "CustomerRet";

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

std::int64_t DemoBooks::Rows(std::string_view table, std::string_view condition) {
  return TextToInteger(FirstField(fmt::format("SELECT COUNT(*) FROM {} WHERE {}", table, condition)));
}

std::int64_t DemoBooks::SharedLinks(std::string_view table, std::string_view condition) {
  return TextToInteger(FirstField(
      fmt::format("SELECT COUNT(*) - COUNT(DISTINCT QBLinkID) FROM {} WHERE QBLinkID <> '' AND {}", table, condition)));
}

DemoBooks::Count DemoBooks::ListedOf(std::string_view kind) {
  const CompanyAnswer answer(company_, machine_,
                             fmt::format("<{0}QueryRq><ActiveStatus>All</ActiveStatus></{0}QueryRq>", kind));
  Count count;
  for (const auto& record : answer.Response().children()) {
    ++count.all;
    if (record.child("ParentRef")) ++count.below;
  }
  return count;
}

std::int64_t DemoBooks::BookedOf(std::string_view kind) {
  const CompanyAnswer answer(company_, machine_, fmt::format("<{0}QueryRq></{0}QueryRq>", kind));
  return std::ranges::distance(answer.Response().children());
}

std::vector<std::string> DemoBooks::Keys(const std::string& statement) {
  std::vector<std::string> keys;
  const auto rows = billing_->Execute(statement, nullptr);
  for (; !rows->Eof(); rows->MoveNext()) keys.push_back(ToText(rows->FieldAt(0)));
  return keys;
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
