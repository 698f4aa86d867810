// The parts of a firm, each in a file of its own: what goes into BillingDb, and what QuickBooks has of its own.
//
// MakeFirm's business alone. The money comes behind the work that it bills, which says what was worked.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "samples/firm/Model.h"
#include "samples/firm/Requests.h"
#include "samples/firm/Rows.h"

namespace twqb::firm {

// --- BillingDb -------------------------------------------------------------------------------------------------------

void AddPeople(const Model& model, Rows& rows);
void AddClients(const Model& model, Rows& rows);
void AddProjects(const Model& model, Rows& rows);
void AddCodes(const Model& model, Rows& rows);

// What a project did in a month that has an invoice: in cents, what its hours and its expenses come to.
struct Billed {
  std::string key;
  std::size_t job = 0;
  int month = 0;
  std::int64_t services = 0;
  std::int64_t expenses = 0;
};
// Hours and expenses; the months that are billed.
[[nodiscard]] std::vector<Billed> AddWork(const Model& model, Rows& rows);

// An invoice that is open.
struct Open {
  std::string number;
  std::size_t job = 0;
  int month = 0;
  std::int64_t amount = 0;
};
// Their invoices, those of which nobody has paid anything yet.
[[nodiscard]] std::vector<Open> AddInvoices(const Model& model, const std::vector<Billed>& months, Rows& rows);
void AddPayments(const Model& model, const std::vector<Open>& invoices, Rows& rows);
void AddBills(const Model& model, Rows& rows);
void AddBudgets(const Model& model, Rows& rows);

// --- QuickBooks ------------------------------------------------------------------------------------------------------

// How much of its own a company file has.
struct OwnRecords {
  std::vector<std::string> employees;  // full names
  std::vector<std::string> vendors;
  std::vector<std::string> customers;
  std::vector<std::string> jobs;
  std::vector<std::string> services;
  std::vector<std::string> charges;  // other charges and goods
};
// The model tells which names its rows would like to have, of which QuickBooks has some in use.
[[nodiscard]] OwnRecords AddOwnLists(const Model& model, Requests& requests);
void AddOwnTime(const FirmPlan& plan, const OwnRecords& records, Requests& requests);
void AddOwnMoney(const FirmPlan& plan, const OwnRecords& records, Requests& requests);
void AddOwnCosts(const FirmPlan& plan, const OwnRecords& records, Requests& requests);

}  // namespace twqb::firm
