#include "transactions/PickVendor.h"

#include <fmt/format.h>

#include <utility>
#include <vector>

#include "engine/Mapping.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

std::vector<std::string> Vendors() {
  return WithGlobalConnection([] {
    std::vector<std::string> vendors;
    const auto rows = GlobalConnection().OpenRecordset(
        "SELECT EmployeeID, EmpCompany, (EmpFName + ' ' + EmpLName) as EmpName  FROM Employee WHERE IsSub = -1 AND "
        "QBLinkID IS NOT NULL ORDER BY EmployeeID;",
        ado::CursorType::Static, ado::LockType::ReadOnly);
    for (; !rows->Eof(); rows->MoveNext()) vendors.push_back(ColumnText(*rows, "EmployeeID"));
    return vendors;
  });
}

}  // namespace

void ShowPickVendor(std::string_view EmployeeID) {
  const auto message = fmt::format(
      "Tallywick allows you to transfer employee expenses as a vendor bill in QuickBooks. However, it needs "
      "to know which vendor to use for employee {}.",
      EmployeeID);
  std::vector<std::string> vendors;
  IgnoreErrors([&] { vendors = Vendors(); });
  Vars().g_PickedVendor = TheDesk().PickVendor(message, vendors).value_or("");
}

std::string PickVendorFor(std::string_view EmployeeID) {
  ShowPickVendor(EmployeeID);
  return std::exchange(Vars().g_PickedVendor, {});
}

}  // namespace twqb
