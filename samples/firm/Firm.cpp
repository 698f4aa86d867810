#include "samples/firm/Firm.h"

#include <fmt/format.h>

#include "samples/firm/Parts.h"

namespace twqb::firm {

std::string FaultOf(const FirmPlan& plan) {
  if (plan.clients < 1 || plan.clients > kMostClients) {
    return fmt::format("A firm has 1 to {} clients, not {}.", kMostClients, plan.clients);
  }
  if (plan.months < 1 || plan.months > kMostMonths) {
    return fmt::format("A firm is made for 1 to {} months, not {}.", kMostMonths, plan.months);
  }
  if (plan.hours < 1 || plan.hours > kMostHours) {
    return fmt::format("A project has 1 to {} entries a month, not {}.", kMostHours, plan.hours);
  }
  return {};
}

void WriteBilling(const FirmPlan& plan, const TakeStatement& take) {
  if (!FaultOf(plan).empty()) return;
  const auto model = MakeModel(plan);
  Rows rows(take);
  AddPeople(model, rows);
  AddClients(model, rows);
  AddProjects(model, rows);
  AddCodes(model, rows);
  const auto months = AddWork(model, rows);
  AddPayments(model, AddInvoices(model, months, rows), rows);
  AddBills(model, rows);
  AddBudgets(model, rows);
  rows.Flush();
}

void WriteCompany(const FirmPlan& plan, const TakeDocument& take) {
  if (!FaultOf(plan).empty()) return;
  Requests requests(take);
  const auto records = AddOwnLists(MakeModel(plan), requests);
  AddOwnTime(plan, records, requests);
  AddOwnMoney(plan, records, requests);
  AddOwnCosts(plan, records, requests);
  requests.Flush();
}

}  // namespace twqb::firm
