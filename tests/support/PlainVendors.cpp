#include "tests/support/PlainVendors.h"

#include <array>
#include <vector>

#include "bridge/Tables.h"
#include "engine/ListTable.h"
#include "lists/modEmployees.h"

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

constexpr ListTable kVendors = {
    .tableName = "Employee",
    .keyColumn = "EmployeeID",
    .fallbackDateColumn = "EmpDateHired",
    .send =
        {
            .texts = {.routine = "MovePlainVendorsToQB",
                      .shown = "Sending Vendors to QuickBooks...",
                      .log = "A vendor could not be sent: "},
            .recordLabel = "Vendor ID",
            .addRequest = "VendorAddRq",
            .modRequest = "VendorModRq",
            .fields = kSendFields,
        },
    .get =
        {
            .texts = {.routine = "MovePlainVendorsToTW",
                      .shown = "Getting Vendors from QuickBooks...",
                      .log = "A vendor could not be taken over: ",
                      .missingConnection = "MovePlainVendorsToTW - Connection Object is required!"},
            .progressField = "Name",
            .blankedColumns = kBlankedColumns,
            .fields = kGetFields,
        },
};

void SendVendors(const SendCall& call) { SendList(kPlainVendorsTable, kVendors, call); }
void GetVendors(const GetCall& call) { GetList(kVendors, call); }
TakenUp TakeUpVendorLink(const LostAddition& lost) { return TakeUpListLink(kPlainVendorsTable, kVendors, lost); }

// Names, selection, reads and deletion are those of the table in whose place this one stands.
Table InPlaceOf(const Table& table) {
  auto own = table;
  own.send = SendVendors;
  own.get = GetVendors;
  own.lostLink.takeUp = TakeUpVendorLink;
  return own;
}

}  // namespace

const Table kPlainVendorsTable = InPlaceOf(kVendorsTable);

std::span<const Table* const> TwoTables() {
  static const auto tables = [] {
    std::vector<Table> all;
    for (const auto* table : BuiltInTables()) {
      if (table->number == enVendors) {
        all.push_back(kPlainVendorsTable);
        continue;
      }
      all.push_back(*table);
      if (table->number == enClients) continue;
      // Sending estimates is a regular run that does nothing, and stays one.
      if (table->number != enEstimates) all.back().send = nullptr;
      all.back().get = nullptr;
    }
    return all;
  }();
  static const auto list = [] {
    std::vector<const Table*> pointers;
    for (const auto& table : tables) pointers.push_back(&table);
    return pointers;
  }();
  return list;
}

}  // namespace twqb
