// A house whose company file has what transactions refer to, with a bridge object that hears Yes to every question.
//
// For the tests of deletions. The records to be deleted are made by each test.
#pragma once

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/bridge/BridgeHouse.h"

namespace twqb {

// A record on both sides.
struct Twin {
  std::string name;
  enTables table = enAll;
  std::string kind;  // of the record in QuickBooks, and the fields of its Add
  std::string fields;
  std::string wireType;  // ListDelType or TxnDelType
  std::string rows;      // the table of BillingDb, and its key
  std::string key;

  [[nodiscard]] bool IsTxn() const { return wireType == kind && table >= enExpenseLog; }
  [[nodiscard]] std::string Request() const { return IsTxn() ? "TxnDelRq" : "ListDelRq"; }
  [[nodiscard]] std::string IdField() const { return IsTxn() ? "TxnID" : "ListID"; }
};

inline void PrintTo(const Twin& twin, std::ostream* out) { *out << twin.name; }

inline const Twin kTwins[] = {
    {"Employees", enEmployees, "Employee", "<FirstName>Bob</FirstName><LastName>Ray</LastName>", "Employee", "Employee",
     "EmployeeID"},
    {"Vendors", enVendors, "Vendor", "<Name>Val</Name>", "Vendor", "Employee", "EmployeeID"},
    {"Clients", enClients, "Customer", "<Name>Beta</Name>", "Customer", "Client", "ClientID"},
    {"Projects", enProjects, "Customer", "<Name>Roof</Name><ParentRef><FullName>Acme</FullName></ParentRef>",
     "Customer", "Project", "ProjectID"},
    {"Activities", enActivities, "ItemService",
     "<Name>Survey</Name><SalesOrPurchase><AccountRef><FullName>Sales</FullName></AccountRef></SalesOrPurchase>",
     "ItemService", "Activity", "ActivityID"},
    {"ExpenseCodes", enExpenseCodes, "ItemOtherCharge",
     "<Name>Copies</Name><SalesOrPurchase><AccountRef><FullName>Sales</FullName></AccountRef></SalesOrPurchase>",
     "ItemOtherCharge", "Expense", "ExpID"},
    {"ExpenseLog", enExpenseLog, "Bill",
     "<VendorRef><FullName>Vic</FullName></VendorRef><ExpenseLineAdd><AccountRef><FullName>Rent</FullName>"
     "</AccountRef><Amount>150.00</Amount></ExpenseLineAdd>",
     "Bill", "ExpenseLog", "ELID"},
    {"TimeEntries", enTimeEntries, "TimeTracking",
     "<TxnDate>2008-02-29</TxnDate><EntityRef><FullName>Ann Lee</FullName></EntityRef><Duration>PT1H0M0S</Duration>",
     "TimeTracking", "TimeEntry", "TEID"},
    {"Invoices", enInvoices, "Invoice",
     "<CustomerRef><FullName>Acme</FullName></CustomerRef><InvoiceLineAdd><ItemRef><FullName>Design</FullName>"
     "</ItemRef><Amount>100.00</Amount></InvoiceLineAdd>",
     "Invoice", "TransactionTable", "TransactionID"},
    {"Payments", enPayments, "ReceivePayment",
     "<CustomerRef><FullName>Acme</FullName></CustomerRef><TotalAmount>200.00</TotalAmount>"
     "<IsAutoApply>false</IsAutoApply>",
     "ReceivePayment", "Payment", "PayID"},
};

[[nodiscard]] inline const Twin& TwinOf(enTables table) {
  for (const auto& twin : kTwins) {
    if (twin.table == table) return twin;
  }
  throw std::out_of_range("no such twin");
}

class DeletionHouse : public BridgeHouse {
 public:
  explicit DeletionHouse(std::string_view faults = {}, std::string answers = "default yes")
      : BridgeHouse({.answers = std::move(answers)}, faults) {
    for (const auto& [kind, fields] : {
             std::pair{"Account", "<Name>Sales</Name><AccountType>Income</AccountType>"},
             std::pair{"Account", "<Name>Rent</Name><AccountType>Expense</AccountType>"},
             std::pair{"Customer", "<Name>Acme</Name>"},
             std::pair{"Vendor", "<Name>Vic</Name>"},
             std::pair{"Employee", "<FirstName>Ann</FirstName><LastName>Lee</LastName>"},
             std::pair{"ItemService",
                       "<Name>Design</Name><SalesOrPurchase><AccountRef><FullName>Sales</FullName></AccountRef>"
                       "</SalesOrPurchase>"},
         }) {
      (void)AddRecord(kind, fields, "ListID");
    }
    bridge.emplace(*this);
  }
  ~DeletionHouse() { bridge.reset(); }
  DeletionHouse(const DeletionHouse&) = delete;
  DeletionHouse& operator=(const DeletionHouse&) = delete;

  // Adds a record to the company file; its identifier.
  std::string AddRecord(std::string_view kind, std::string_view fields, std::string_view idField) {
    const std::string name(kind);
    const auto answer = Company("<" + name + "AddRq><" + name + "Add>" + std::string(fields) + "</" + name + "Add></" +
                                name + "AddRq>");
    EXPECT_NE(answer.find("statusCode=\"0\""), std::string::npos) << answer;
    return TextOf(answer, idField);
  }
  std::string AddRecord(const Twin& twin) { return AddRecord(twin.kind, twin.fields, twin.IdField()); }
  // Whether the company file has it.
  bool HasRecord(const Twin& twin, std::string_view id) {
    const auto answer = Company("<" + twin.kind + "QueryRq><" + twin.IdField() + ">" + std::string(id) + "</" +
                                twin.IdField() + "></" + twin.kind + "QueryRq>");
    return TextOf(answer, twin.IdField()) == id;
  }
  // A row of BillingDb with that link.
  void AddRow(std::string_view table, std::string_view keyColumn, std::string_view key, std::string_view link) {
    Sql(fmt::format("INSERT INTO {} ({}, QBLinkID) VALUES ('{}', '{}')", table, keyColumn, key, link));
  }
  [[nodiscard]] std::string RowsOf(std::string_view table, std::string_view keyColumn) {
    return Scalar(
        fmt::format("SELECT group_concat({0}, ',') FROM (SELECT {0} FROM {1} ORDER BY rowid)", keyColumn, table));
  }

  std::optional<Bridge> bridge;
};

}  // namespace twqb
