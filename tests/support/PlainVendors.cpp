#include "tests/support/PlainVendors.h"

#include <array>

#include "engine/Template.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

constexpr std::array kSendFields = {
    SendField{.path = "CompanyName", .column = "EmpCompany"},
    SendField{.path = "VendorAddress.Addr1", .column = "EmpStreet", .when = SendField::When::NotEmpty},
    SendField{.path = "VendorAddress.City", .column = "EmpCity"},
    SendField{.path = "Phone", .column = "EmpHPhone"},
};
constexpr std::array<std::string_view, 2> kBlankedColumns = {"EmpCompany", "EmpHPhone"};
constexpr std::array kGetFields = {
    GetField{.path = "CompanyName", .column = "EmpCompany"},
    GetField{.path = "VendorAddress.Addr1", .column = "EmpStreet"},
    GetField{.path = "VendorAddress.City", .column = "EmpCity"},
    GetField{.path = "Phone", .column = "EmpHPhone"},
};

constexpr TableDescription kVendors = {
    .table = enVendors,
    .tableName = "Employee",
    .keyColumn = "EmployeeID",
    .fallbackDateColumn = "EmpDateHired",
    .addRequest = "VendorAddRq",
    .modRequest = "VendorModRq",
    .sendRoutine = "MovePlainVendorsToQB",
    .getRoutine = "MovePlainVendorsToTW",
    .sendingText = "Sending Vendors to QuickBooks...",
    .gettingText = "Getting Vendors from QuickBooks...",
    .recordLabel = "Vendor ID",
    .sendLogText = "A vendor could not be sent: ",
    .getLogText = "A vendor could not be taken over: ",
    .missingConnectionText = "MovePlainVendorsToTW - Connection Object is required!",
    .progressField = "Name",
    .sendFields = kSendFields,
    .blankedColumns = kBlankedColumns,
    .getFields = kGetFields,
};

constexpr TableRoutines kVendorRoutines = {
    .table = enVendors,
    .send =
        [](const SendCall& call) {
          SendTable(kVendors, call.sql, call.filters.Never, call.filters.MostRecent, call.session);
          return true;
        },
    .get =
        [](const GetCall& call) {
          GetTable(kVendors, call.records, call.filters.Never, call.filters.MostRecent,
                   call.blnByID ? Dependent::Yes : Dependent::No, call.connection);
        },
};

// Every table but the clients, whose own routines stay: the vendors, and the others without a routine.
constexpr auto kRoutines = [] {
  std::array<TableRoutines, enAll - 1> routines{};
  std::size_t at = 0;
  for (std::int32_t table = 0; table < enAll; ++table) {
    if (table == enClients) continue;
    routines[at++] = table == enVendors ? kVendorRoutines : TableRoutines{.table = table};
  }
  return routines;
}();

}  // namespace

std::span<const TableRoutines> TwoTableRoutines() { return kRoutines; }

}  // namespace twqb
