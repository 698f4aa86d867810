// The texts of samples/ as they were when the program was built: the tables of BillingDb, the sample firm, and what its
// QuickBooks has already.
//
// The functions are written by the build (EmbedTexts.cmake). Nothing here runs or reads them.
#pragma once

#include <string_view>

namespace twqb::cli {

// CREATE statements of every table.
[[nodiscard]] std::string_view BillingSchema();
// INSERT statements: the firm's clients, behind them what it works with, the most of its projects, its codes and
// accounts, the hours of three months, the invoices of two, the payments of these, and
// what was spent in the last of them.
[[nodiscard]] std::string_view SampleFirm();
[[nodiscard]] std::string_view SampleWork();
[[nodiscard]] std::string_view SampleProjects();
[[nodiscard]] std::string_view SampleCodes();
[[nodiscard]] std::string_view SampleHours();
[[nodiscard]] std::string_view SampleInvoices();
[[nodiscard]] std::string_view SamplePayments();
[[nodiscard]] std::string_view SampleExpenses();
// Payments that are held back, which the firm comes without.
[[nodiscard]] std::string_view SampleHeldPayments();
// A retainer of QuickBooks' as it is entered in BillingDb in its place.
[[nodiscard]] std::string_view SampleRetainerAtTheDesk();
// qbXML documents of the United States form, version 3.0. Each refers to records of those before it alone.
[[nodiscard]] std::string_view SampleCustomers();
[[nodiscard]] std::string_view SampleAccounts();
[[nodiscard]] std::string_view SamplePlainLists();
[[nodiscard]] std::string_view SampleVendors();
[[nodiscard]] std::string_view SampleEmployees();
[[nodiscard]] std::string_view SampleItems();
[[nodiscard]] std::string_view SampleTime();
[[nodiscard]] std::string_view SampleMoney();
[[nodiscard]] std::string_view SampleCosts();
[[nodiscard]] std::string_view SampleSalesTaxItems();
[[nodiscard]] std::string_view SampleTaxedMoney();

}  // namespace twqb::cli
