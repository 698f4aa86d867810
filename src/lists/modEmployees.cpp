#include "lists/modEmployees.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <memory>
#include <optional>

#include "lists/EmployeeNumbers.h"
#include "lists/EmployeeRefusals.h"
#include "lists/SharedNames.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Countries.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"

namespace twqb {

namespace {

// --- Field mapping ---------------------------------------------------------------------------------------------------
// Unlike in other tables most lengths are fixed numbers: a company of more than 41 characters is QuickBooks' to refuse.

using When = SendField::When;

std::string DateOnly(std::string_view date) { return FormatSQLDate(TextToDate(date), DateForm::DateOnly); }

constexpr std::array kSendContacts = {
    SendField{.path = "AltPhone",
              .column = "EmpContactPhone",
              .when = When::NotNull,
              .convert = FormatPhoneForQB,
              .length = 21},
    SendField{.path = "MiddleName", .column = "EmpMI", .when = When::NotNull, .length = 5},
    SendField{.path = "Phone", .column = "EmpHPhone", .when = When::NotNull, .convert = FormatPhoneForQB, .length = 21},
    SendField{.path = "Email", .column = "EmpEmail", .when = When::NotNull, .length = 99},
};
constexpr std::array kSendMobile = {
    SendField{.path = "Mobile", .column = "MobileNumber", .convert = FormatPhoneForQB, .length = 21}};
constexpr std::array kSendFax = {
    SendField{.path = "Fax", .column = "EmpHFax", .convert = FormatPhoneForQB, .length = 21}};

constexpr std::array kSendEmployeeDates = {
    SendField{.path = "HiredDate", .column = "EmpDateHired", .when = When::NotNull, .convert = DateOnly},
    SendField{.path = "ReleasedDate", .column = "EmpDateReleased", .when = When::NotNull, .convert = DateOnly},
};
constexpr std::array kSendVendorDate = {
    SendField{.path = "OpenBalanceDate", .column = "EmpDateHired", .when = When::NotNull, .convert = DateOnly}};

constexpr std::array kSendCompany = {
    SendField{.path = "CompanyName", .column = "EmpCompany", .when = When::NotNull, .length = 50}};
constexpr std::array kSendTaxNumber = {
    SendField{.path = "VendorTaxIdent", .column = "EmpSSN", .when = When::NotEmpty, .cut = SendField::Cut::Uncut}};

// Inside the address.
constexpr std::array kSendVendorLines = {
    SendField{.path = "Addr1", .column = "EmpCompany", .length = 41},
    SendField{.path = "Addr2", .column = "EmpStreet"},
    SendField{.path = "Addr3", .column = "EmpStreet2"},
};
constexpr std::array kSendEmployeeLines = {
    SendField{.path = "Addr1", .column = "EmpStreet", .length = 41},
    SendField{.path = "Addr2", .column = "EmpStreet2"},
};
constexpr std::array kSendPlace = {
    SendField{.path = "City", .column = "EmpCity", .when = When::NotNull, .length = 31},
    SendField{.path = "PostalCode", .column = "EmpZip", .when = When::NotNull, .length = 13},
};

// Blanked before the record is read, so that a field which QuickBooks leaves out blanks the column.
constexpr std::array<std::string_view, 10> kBlankedColumns = {"EmpMI",    "EmpHPhone", "EmpContactPhone", "EmpEmail",
                                                              "EmpSalt",  "EmpStreet", "EmpStreet2",      "EmpCity",
                                                              "EmpState", "EmpZip"};
constexpr std::array<std::string_view, 1> kBlankedOfEmployees = {"EmpSSN"};
constexpr std::array<std::string_view, 2> kBlankedOfVendors = {"EmpHFax", "EmpCompany"};

constexpr std::array kGetContacts = {
    GetField{.path = "MiddleName", .column = "EmpMI"},
    GetField{.path = "Phone", .column = "EmpHPhone", .convert = CleanPhoneFromQB},
    GetField{.path = "AltPhone", .column = "EmpContactPhone", .convert = CleanPhoneFromQB},
    GetField{.path = "Email", .column = "EmpEmail"},
    GetField{.path = "Salutation", .column = "EmpSalt"},
};
constexpr std::array kGetMobile = {GetField{.path = "Mobile", .column = "MobileNumber", .convert = CleanPhoneFromQB}};
constexpr std::array kGetOfVendors = {
    GetField{.path = "Fax", .column = "EmpHFax", .convert = CleanPhoneFromQB},
    GetField{.path = "CompanyName", .column = "EmpCompany"},
};
constexpr std::array kGetPlace = {
    GetField{.path = "City", .column = "EmpCity"},
    GetField{.path = "PostalCode", .column = "EmpZip"},
};
// The lines of an address: from the second on where the first is the name itself.
constexpr std::array kGetStreets = {
    GetField{.path = "Addr1", .column = "EmpStreet"},
    GetField{.path = "Addr2", .column = "EmpStreet2"},
};
constexpr std::array kGetStreetsBelowName = {
    GetField{.path = "Addr2", .column = "EmpStreet"},
    GetField{.path = "Addr3", .column = "EmpStreet2"},
};

// --- Hooks: both directions ------------------------------------------------------------------------------------------

constexpr std::string_view kUnknownName = "Missing Data";  // stands in BillingDb for a name that nobody gave
// The forms of the countries have one of these each; the others stay off the wire and out of answers.
constexpr std::array<std::string_view, 3> kStateFields = {"State", "Province", "County"};

bool KnowsMobiles() { return !IsCanadianOrBritish(FileCountry()); }

std::string JoinNames(std::initializer_list<std::string> parts) {
  std::string joined;
  for (const auto& part : parts) {
    if (!Trim(part).empty()) joined += (joined.empty() ? "" : " ") + part;
  }
  return joined;
}

constexpr std::string_view kFallbackDate = "EmpDateHired";

// --- Hooks: sending --------------------------------------------------------------------------------------------------

// The counter of names in use goes behind the first name.
// The row's date is read ahead of the twin, of every row: one that can't be read is told whatever becomes of the row.
void ReadPersonRow(const ado::Recordset& row, SendRecord& record) {
  record.countedName = ColumnText(row, "EmpFName");
  record.date = GetTWDateOfUpdation(row, "LastUpdated", kFallbackDate);
}

// An employee's name is made of its parts, unless an old form has the name itself.
std::string NameOfPerson(const RequestField& request) {
  if (const auto name = request["Name"]; name.IsSet()) return name.GetValue();
  return JoinNames({request["FirstName"].GetValue(), request["MiddleName"].GetValue(), request["LastName"].GetValue()});
}

// The first name as it goes. Of an unknown one the counter alone goes, when there is one.
std::optional<std::string> FirstNameOf(const ado::Recordset& row, const SendRecord& record) {
  if (ColumnText(row, "EmpFName") != kUnknownName) return record.countedName;
  auto counter = record.countedName.substr(std::min(kUnknownName.size(), record.countedName.size()));
  return counter.empty() ? std::nullopt : std::optional(std::move(counter));
}

void AssignNames(const RequestField& request, const ado::Recordset& row, RequestKind kind, const SendRecord& record,
                 IsVendor isVendor) {
  const auto first = FirstNameOf(row, record);
  if (first) SetCutTo(request["FirstName"], *first, 25);
  const auto last = ColumnText(row, "EmpLName");
  if (last != kUnknownName && !IsNull(row.Field("EmpLName"))) SetCutTo(request["LastName"], last, 25);
  if (kind != RequestKind::Add) return;
  if (isVendor == IsVendor::Yes) {
    const auto joined =
        JoinNames({first.value_or(""), ColumnText(row, "EmpMI"), last == kUnknownName ? std::string() : last});
    SetCutTo(request["Name"], joined.empty() ? record.key : joined, 41);
  } else if (Vars().g_QBMajorVer < 3) {
    SetCutTo(request["Name"], record.key, 41);
  }
}

// A British file takes no final dot, and no "Ms".
void AssignSalutation(const RequestField& request, const ado::Recordset& row) {
  auto salutation = ColumnText(row, "EmpSalt");
  if (Trim(salutation).empty()) return;
  const bool british = FileCountry() == "UK";
  if (british && salutation.ends_with('.')) salutation.pop_back();
  salutation = Left(salutation, 15);
  if (!british || UpperCase(salutation) != "MS") request["Salutation"].SetValue(salutation);
}

void AssignAddress(const RequestField& address, const ado::Recordset& row, IsVendor isVendor) {
  const auto state = ColumnText(row, "EmpState");
  if (!Trim(state).empty()) {
    for (const auto& field : kStateFields) SetCutTo(address[field], state, 21);
  } else if (isVendor == IsVendor::No) {
    for (const auto& field : kStateFields) address[field].SetValue(kNoState);
  }
  if (isVendor == IsVendor::Yes) {
    SendFields(address, row, kSendVendorLines);
  } else {
    SendFields(address, row, kSendEmployeeLines);
  }
  SendFields(address, row, kSendPlace);
}

void AssignOfEmployee(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                      const SendRecord& record) {
  if (kind == RequestKind::Add) {
    SendFields(request, row, kSendEmployeeDates);
    AssignEmployeeNumber(request, ColumnText(row, "EmpSSN"), record.key);
    // Below version 3 the field of that name is not in the form yet, and stays off the wire.
    const int version = Vars().g_QBMajorVer;
    if (version >= 2) {
      request["EmployeePayrollInfo"][version < 3 ? "UseTimeDataToCreatePaychecks" : "IsUsingTimeDataToCreatePaychecks"]
          .SetValue(1);
    }
  }
  // A British file asks for a date; nobody is known by it.
  if (FileCountry() == "UK") request["BirthDate"].SetValue("01/01/1990");
}

void AssignOfVendor(const RequestField& request, const ado::Recordset& row, RequestKind kind) {
  if (kind == RequestKind::Add) SendFields(request, row, kSendVendorDate);
  SendFields(request, row, kSendCompany);
  if (Vars().g_QBMajorVer >= 3) SendFields(request, row, kSendTaxNumber);
}

template <IsVendor isVendor>
Filling Assign(const RequestField& request, const ado::Recordset& row, RequestKind kind, const SendRecord& record) {
  AssignEmployeeFldValues(request, row, kind, record, isVendor);
  return Filling::Filled;
}

// --- Hooks: getting --------------------------------------------------------------------------------------------------

// What new rows are worth, as text until a row needs it.
struct RateSettings : GetState {
  std::string billRate;
  std::string costRate;
  std::optional<std::string> multiplier;  // nothing: QuickBooks' earnings are not looked at
};

// Both kinds go by the settings of the employees.
std::unique_ptr<GetState> ReadRateSettings() {
  const auto read = [](std::string_view key, std::string_view fallback) {
    return gf_ReadSettings("QBGET_", fmt::format("{}{}", kEmployeesTable.names.get, key), Vars().g_TWSettingsPath,
                           fallback);
  };
  auto rates = std::make_unique<RateSettings>();
  rates->billRate = read("_DefaultBR", "1");
  rates->costRate = read("_DefaultCR", "1");
  if (TextToBoolean(read("_chkBillRate", "0"))) rates->multiplier = read("_DefaultCRM", "1");
  return rates;
}

// The rate of the first earnings that have one, by the hour; nothing without.
std::optional<double> PayRateOf(const Record& employee) {
  constexpr double kGreatestHourlyRate = 1000;
  constexpr double kHoursOfAYear = 2080;
  const auto earnings = FieldAtPath(employee, "EmployeePayrollInfo.OREarnings.EarningsList");
  for (std::size_t i = 0; i < earnings.Count(); ++i) {
    const auto rate = FieldAtPath(earnings.GetAt(i), "ORRate.Rate");
    if (rate.IsNothing()) continue;
    auto payRate = rate.GetNumber();
    if (payRate > kGreatestHourlyRate) payRate /= kHoursOfAYear;
    return payRate == 0 ? 1 : payRate;
  }
  return std::nullopt;
}

// No error of this section is told: a row without rates is a row all the same.
template <IsVendor isVendor>
void StartRow(ado::Recordset& row, const Record& record, const GetState* state) {
  const auto& rates = static_cast<const RateSettings&>(*state);
  IgnoreErrors([&] { row.SetField("EmpBillRate", TextToNumber(rates.billRate)); });
  IgnoreErrors([&] { row.SetField("EmpCostRate", TextToNumber(rates.costRate)); });
  if (isVendor == IsVendor::Yes || !rates.multiplier || FileCountry() != "US") return;
  IgnoreErrors([&] {
    const auto payRate = PayRateOf(record);
    if (!payRate) return;
    IgnoreErrors([&] { row.SetField("EmpBillRate", TextToNumber(*rates.multiplier) * *payRate); });
    row.SetField("EmpCostRate", *payRate);
  });
}

void WriteName(ado::Recordset& row, std::string_view column, const Record& name) {
  WriteCut(row, column, name.IsNothing() ? std::string(kUnknownName) : name.GetValue());
}

void WriteDate(ado::Recordset& row, std::string_view column, const Record& date) {
  if (!date.IsNothing()) row.SetField(column, FormatSQLDate(date.GetDate(), DateForm::DateOnly));
}

void WriteAddress(ado::Recordset& row, const Record& record, IsVendor isVendor) {
  const auto address = record[AddressField(isVendor)];
  if (address.IsNothing()) return;
  const bool beginsWithName =
      isVendor == IsVendor::Yes && address["Addr1"].GetValueOrEmpty() == record["Name"].GetValue();
  GetFields(row, address, beginsWithName ? kGetStreetsBelowName : kGetStreets);
  for (const auto& field : kStateFields) {
    if (const auto state = address[field].GetValueOrEmpty(); !state.empty() && state != kNoState) {
      WriteCut(row, "EmpState", state);
    }
  }
  GetFields(row, address, kGetPlace);
}

template <IsVendor isVendor>
void WriteOthers(ado::Recordset& row, const Record& record) {
  WriteName(row, "EmpFName", record["FirstName"]);
  WriteName(row, "EmpLName", record["LastName"]);
  const auto active = record["IsActive"];
  row.SetField("Status", std::string(!active.IsNothing() && active.GetBoolean() ? "Active" : "Inactive"));
  if (KnowsMobiles()) {
    row.SetField("MobileNumber", std::string());
    GetFields(row, record, kGetMobile);
  }
  row.SetField("IsSub", std::int64_t{isVendor == IsVendor::Yes ? -1 : 0});
  if (isVendor == IsVendor::Yes) {
    BlankColumns(row, kBlankedOfVendors);
    GetFields(row, record, kGetOfVendors);
  } else {
    WriteDate(row, "EmpDateHired", record["HiredDate"]);
    WriteDate(row, "EmpDateReleased", record["ReleasedDate"]);
    BlankColumns(row, kBlankedOfEmployees);
    WriteCut(row, "EmpSSN", EmployeeNumberOf(record));
  }
  WriteAddress(row, record, isVendor);
}

// --- Description -----------------------------------------------------------------------------------------------------

constexpr ListTable kEmployees = {
    .tableName = "Employee",
    .keyColumn = "EmployeeID",
    .fallbackDateColumn = kFallbackDate,
    .send =
        {
            .texts = {.routine = "MoveEmployeesToQB",
                      .shown = "Sending Employees to QuickBooks...",
                      .log = "Error transfering data to QB. Employee ID = "},
            .recordLabel = "Employee ID",
            .addRequest = "EmployeeAddRq",
            .modRequest = "EmployeeModRq",
            .rules = kEmployeeRules,
            .readRow = ReadPersonRow,
            .assign = Assign<IsVendor::No>,
            .nameOf = NameOfPerson,
        },
    .get =
        {
            .texts = {.routine = "MoveEmployeesToTW",
                      .shown = "Getting Employees from QuickBooks...",
                      .log = "Error transfering data to Tallywick. Employee = "},
            .linkCondition = "IsSub = 0 AND ",
            .progressField = "Name",
            .blankedColumns = kBlankedColumns,
            .fields = kGetContacts,
            .writeLast = WriteOthers<IsVendor::No>,
            .begin = ReadRateSettings,
            .startRow = StartRow<IsVendor::No>,
        },
};

constexpr ListTable kVendors = [] {
  auto vendors = kEmployees;
  vendors.send.addRequest = "VendorAddRq";
  vendors.send.modRequest = "VendorModRq";
  vendors.send.texts.shown = "Sending Vendors to QuickBooks...";
  vendors.send.rules = kVendorRules;
  vendors.send.assign = Assign<IsVendor::Yes>;
  vendors.get.texts.shown = "Getting Vendors from QuickBooks...";
  vendors.get.linkCondition = "IsSub = -1 AND ";
  vendors.get.writeLast = WriteOthers<IsVendor::Yes>;
  vendors.get.startRow = StartRow<IsVendor::Yes>;
  return vendors;
}();

// Employees and vendors stand in one table; a flag tells them apart.
constexpr std::array kClauses = {
    Clause{ClauseOn::LastSend, kChangedSinceLastSend},
    Clause{ClauseOn::Range, "{K}({P}LastUpdated BETWEEN {a} AND {b}) "},
    Clause{ClauseOn::Filter1, "{K}(EmployeeID BETWEEN '{a}' AND '{b}') "},
    Clause{ClauseOn::Filter2,
           "{K}(EmployeeID IN (SELECT EmployeeID FROM EmployeeGroupDetail  WHERE EGID BETWEEN '{a}' AND '{b}')) "},
};
constexpr Selection PeopleWhere(std::string_view condition) {
  return {.base =
              "SELECT EmpCity, EmpContactPhone, EmpDateHired, EmpDateReleased, EmpEmail, EmpFName, EmpHPhone, "
              "EmpHFax, EmpLName, EmployeeID, EmpMI, EmpSSN, EmpSalt, EmpState, EmpStreet, EmpStreet2, EmpZip, "
              "LastUpdated, QBLinkID, EmpCompany, Status, MobileNumber FROM Employee ",
          .where = condition,
          .clauses = kClauses,
          .activeOnly = " AND (Employee.Status IS NULL OR Employee.Status = 'Active') "};
}

constexpr QuickBooksRead kEmployeeRead = {
    .filterRoutine = "ApplyQBEmployeeFilters",
    .copyRoutine = "modEmployees GetQBEmployeeRecordsInCollectionObject",
    .requests = {"EmployeeQueryRq"},
    .choice = "ORListQuery",
    .readingText = "Reading Employees from QuickBooks...",
};
constexpr std::array kEmployeeReads = {kEmployeeRead};
// Vendors go by the routines of the employees, errors too.
constexpr std::array kVendorReads = {[] {
  auto read = kEmployeeRead;
  read.requests = {"VendorQueryRq"};
  read.choice = "ORVendorListQuery";
  read.readingText = "Reading Vendors from QuickBooks...";
  return read;
}()};

template <IsVendor isVendor>
void Send(const SendCall& call) {
  (void)MoveEmployeesToQB(call, isVendor);
}
template <IsVendor isVendor>
void Get(const GetCall& call) {
  MoveEmployeesToTW(call, isVendor);
}

constexpr std::array<std::string_view, 3> kPerson = {"EmpFName", "EmpMI", "EmpLName"};
constexpr std::array<std::string_view, 1> kEmployeeColumns = {"EmployeeID"};
constexpr std::array<std::string_view, 1> kEmployeeCalled = {"Name"};
constexpr std::array<std::string_view, 2> kVendorColumns = {"EmployeeID", "EmpCompany"};
constexpr std::array<std::string_view, 2> kVendorCalled = {"Name", "CompanyName"};

}  // namespace

constinit const Table kEmployeesTable = {
    .number = enEmployees,
    .name = "Employees",
    .names = {.send = "Employees", .get = "Employees(QB)"},
    .rows = {.table = "Employee", .condition = "IsSub = 0"},
    .selection = PeopleWhere(" WHERE IsSub = 0 "),
    .send = Send<IsVendor::No>,
    .lostLink = {.row = "employee",
                 .record = "employee",
                 .keys = {.table = "Employee", .column = "EmployeeID", .adds = "EmployeeAdd", .condition = "IsSub = 0"},
                 .called = {.columns = kEmployeeColumns,
                            .person = kPerson,
                            .elements = kEmployeeCalled,
                            .sharing = kListsOfPeople},
                 .takeUp = [](const LostAddition& lost) { return TakeUpListLink(kEmployeesTable, kEmployees, lost); }},
    .reads = kEmployeeReads,
    .get = Get<IsVendor::No>,
    .billingDeletion = {.rows = "Employee"},
    .quickBooksDeletion = {.kind = QuickBooksKind::List, .type = 6},
};

constinit const Table kVendorsTable = {
    .number = enVendors,
    .name = "Vendors",
    .names = {.send = "Vendors", .get = "Vendors(QB)"},
    .rows = {.table = "Employee", .condition = "IsSub = -1"},
    .selection = PeopleWhere(" WHERE IsSub = -1 "),
    .send = Send<IsVendor::Yes>,
    .lostLink =
        {.row = "vendor",
         .record = "vendor",
         .keys = {.table = "Employee", .column = "EmployeeID", .adds = "VendorAdd", .condition = "IsSub = -1"},
         .called = {.columns = kVendorColumns, .person = kPerson, .elements = kVendorCalled, .sharing = kListsOfPeople},
         .takeUp = [](const LostAddition& lost) { return TakeUpListLink(kVendorsTable, kVendors, lost); }},
    .reads = kVendorReads,
    .get = Get<IsVendor::Yes>,
    .billingDeletion = {.rows = "Employee"},
    .quickBooksDeletion = {.kind = QuickBooksKind::List, .type = 30},
};

// --- Public routines -------------------------------------------------------------------------------------------------

bool MoveEmployeesToQB(const SendCall& call, IsVendor isVendor) {
  if (isVendor == IsVendor::Yes) {
    SendList(kVendorsTable, kVendors, call);
  } else {
    SendList(kEmployeesTable, kEmployees, call);
  }
  return call.run.g_TableOk == TableOk::True;
}

void MoveEmployeesToTW(const GetCall& call, IsVendor isVendor) {
  GetList(isVendor == IsVendor::Yes ? kVendors : kEmployees, call);
}

void AssignEmployeeFldValues(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                             const SendRecord& record, IsVendor isVendor) {
  if (isVendor == IsVendor::Yes) {
    AssignOfVendor(request, row, kind);
  } else {
    AssignOfEmployee(request, row, kind, record);
  }
  AssignSalutation(request, row);
  AssignNames(request, row, kind, record, isVendor);
  SendFields(request, row, kSendContacts);
  if (KnowsMobiles()) SendFields(request, row, kSendMobile);
  if (FileCountry() == "US") SendFields(request, row, kSendFax);
  AssignAddress(request[AddressField(isVendor)], row, isVendor);
  const auto status = row.Field("Status");
  if (!IsNull(status) && ToText(status) != "Active") request["IsActive"].SetValue(false);
}

void AssignTWEmployeeFldValues(ado::Recordset& row, const Record& record, IsVendor isVendor) {
  WriteColumns(isVendor == IsVendor::Yes ? kVendors.get : kEmployees.get, row, record);
}

}  // namespace twqb
