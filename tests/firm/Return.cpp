#include "tests/firm/Return.h"

namespace twqb {

Return::Return(FirmHouse& house, FirmHouse& empty, Exceptions& exceptions)
    : house_(house), empty_(empty), exceptions_(exceptions) {
  for (const auto* kind : {"Customer", "Employee", "Vendor", "ItemService", "ItemOtherCharge"}) {
    house.ForEachRecord(kind, "<ActiveStatus>All</ActiveStatus>", [&](const pugi::xml_node& record) {
      names_[record.child_value("ListID")] = record.child_value("Name");
      fullNames_[record.child_value("ListID")] = record.child_value("FullName");
      inUse_.insert(Trim(record.child_value("Name")));
    });
  }
  ReadKeys("Employee", "EmployeeID");
  ReadKeys("Client", "ClientID");
  ReadKeys("Project", "ProjectID");
  ReadKeys("Activity", "ActivityID");
  ReadKeys("Expense", "ExpID");
  ReadKeys("VendorBill", "VendorBillID");
  for (const auto& row : empty.RowsOf("SELECT * FROM Activity")) activities_[row.at("ActivityID").value()] = row;
  for (const auto& row : empty.RowsOf("SELECT * FROM Expense")) codes_[row.at("ExpID").value()] = row;
  for (const auto& row : empty.RowsOf("SELECT * FROM Project")) {
    const auto& key = row.at("ProjectID").value();
    projects_[key] = row;
    // Blanks at ends tell no two keys apart.
    projectLinks_[UpperCase(Trim(key))] = row.at("QBLinkID").value_or("");
  }
  house.ForEachRecord("Account", "<FullName>Other Income</FullName>",
                      [&](const pugi::xml_node& record) { account_ = record.child_value("ListID"); });
  // Of Greenwich, which the machine's time zone is behind.
  constexpr int kMinutesBehind = 300;
  stamp_ = ToText(Value(empty.machine.Now().PlusMinutes(kMinutesBehind)));
}

void Return::Compare() {
  CompareLists();
  CompareWork();
  CompareMoney();
}

void Return::ReadKeys(const std::string& table, const std::string& key) {
  Keys byLink;
  const auto statement = fmt::format("SELECT {}, QBLinkID FROM {} WHERE QBLinkID <> ''", key, table);
  for (const auto& row : empty_.RowsOf(statement)) byLink[row.at("QBLinkID").value()] = row.at(key).value();
  for (const auto& row : house_.RowsOf(statement)) {
    keys_[table][row.at(key).value()] = byLink[row.at("QBLinkID").value()];
  }
}

std::string Return::WithoutJunk(std::string text) {
  for (char& c : text) {
    if (std::string_view(",#;:'").find(c) != std::string_view::npos) c = ' ';
  }
  return text;
}

}  // namespace twqb
