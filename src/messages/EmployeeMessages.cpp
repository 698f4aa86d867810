#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr EnumValue kEmployeeTypes[] = {{"Regular", 0}, {"Officer", 1}, {"Statutory", 2}, {"Owner", 3}};
constexpr EnumValue kGenders[] = {{"Male", 0}, {"Female", 1}};
constexpr EnumValue kPayPeriods[] = {{"Daily", 0},   {"Weekly", 1},    {"Biweekly", 2}, {"Semimonthly", 3},
                                     {"Monthly", 4}, {"Quarterly", 5}, {"Yearly", 6}};
constexpr EnumValue kTimeDataUses[] = {{"NotSet", 0}, {"UseTimeData", 1}, {"DoNotUseTimeData", 2}};
constexpr EnumValue kAccrualPeriods[] = {{"BeginningOfYear", 0}, {"EveryPaycheck", 1}, {"EveryHourOnPaycheck", 2}};
constexpr EnumValue kVacationPayModes[] = {{"Retain", 0}, {"PayEveryPeriod", 1}};
// Hourly and Salary are the object model's alone: old names, which no form here knows. The others follow in the order
// of the alphabet.
constexpr EnumValue kWageTypes[] = {{.name = "Hourly", .number = 0, .countries = kNowhere},
                                    {.name = "Salary", .number = 1, .countries = kNowhere},
                                    {.name = "Bonus", .number = 2},
                                    {.name = "Commission", .number = 3},
                                    {.name = "HourlyOvertime", .number = 4, .since = {5, 0}},
                                    {.name = "HourlyRegular", .number = 5},
                                    {.name = "HourlySick", .number = 6, .countries = kUnitedStates | kBritain},
                                    {.name = "HourlyVacation", .number = 7, .countries = kUnitedStates | kBritain},
                                    {.name = "SalaryRegular", .number = 8},
                                    {.name = "SalarySick", .number = 9, .countries = kUnitedStates | kBritain},
                                    {.name = "SalaryVacation", .number = 10, .countries = kUnitedStates | kBritain}};

constexpr Element kEmployeeAddress[] = {
    Text("Addr1", 41).Opt(),
    Text("Addr2", 41).Opt(),
    Text("City", 31).Opt(),
    Text("State", 21).Opt().In(kUnitedStates),
    Text("Province", 21).Opt().In(kCanada),
    Text("County", 21).Opt().In(kBritain),
    Text("PostalCode", 13).Opt(),
};

constexpr Element kEarnings[] = {
    Ref<31>("PayrollItemWageRef"),
    Choice("ORRate", kRateBranches).Opt(),
};

constexpr Element kEarningsBranches[] = {
    Aggregate("Earnings", kEarnings).Opt().Rep(),
};

constexpr Element kSickHours[] = {
    Leaf("HoursAvailable", Type::TimeInterval).Opt(),      Enumeration("AccrualPeriod", kAccrualPeriods).Opt(),
    Leaf("HoursAccrued", Type::TimeInterval).Opt(),        Leaf("MaximumHours", Type::TimeInterval).Opt(),
    Leaf("IsResettingHoursEachNewYear", Type::Bool).Opt(),
};

constexpr Element kVacationHours[] = {
    Leaf("HoursAvailable", Type::TimeInterval).Opt().In(kUnitedStates | kBritain),
    Enumeration("AccrualPeriod", kAccrualPeriods).Opt().In(kUnitedStates | kBritain),
    Leaf("HoursAccrued", Type::TimeInterval).Opt().In(kUnitedStates | kBritain),
    Leaf("MaximumHours", Type::TimeInterval).Opt().In(kUnitedStates | kBritain),
    Leaf("IsResettingHoursEachNewYear", Type::Bool).Opt().In(kUnitedStates | kBritain),
    Leaf("VacationPayAvailable", Type::Amt).Opt().Since(3, 0).In(kCanada),
    Leaf("VacationPayUsed", Type::Amt).Opt().Since(3, 0).In(kCanada),
    Enumeration("RetainOrPayEveryPeriod", kVacationPayModes).Opt().Since(3, 0).In(kCanada),
    Leaf("VacationPercentage", Type::Percent).Opt().Since(3, 0).In(kCanada),
    Ref<31>("PayrollItemVacationRef").Opt().Rep().Since(3, 0).In(kCanada),
};

constexpr Element kEmployeePayrollInfo[] = {
    Enumeration("PayPeriod", kPayPeriods).Opt(),
    Ref<159>("ClassRef").Opt(),
    Step("OREarnings", kEarningsBranches),
    Leaf("IsUsingTimeDataToCreatePaychecks", Type::Bool).Opt(),
    Enumeration("UseTimeDataToCreatePaychecks", kTimeDataUses).Opt().Since(3, 0),
    Aggregate("SickHours", kSickHours).Opt(),
    Aggregate("VacationHours", kVacationHours).Opt(),
};

constexpr Element kEmployeeAdd[] = {
    Text("Name", 41).Opt().Until(3, 0),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("Salutation", 15).Opt(),
    Text("FirstName", 25).Opt(),
    Text("MiddleName", 5).Opt(),
    Text("LastName", 25).Opt(),
    Aggregate("EmployeeAddress", kEmployeeAddress).Opt(),
    Text("PrintAs", 41).Opt(),
    Text("Phone", 21).Opt(),
    Text("Mobile", 21).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("Pager", 21).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("PagerPIN", 10).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("AltPhone", 21).Opt(),
    Text("Fax", 21).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("SSN", 15).Opt().In(kUnitedStates),
    Text("NiNumber", 15).Opt().In(kBritain),
    Text("SIN", 15).Opt().In(kCanada),
    Text("Email", 99).Opt(),
    Enumeration("EmployeeType", kEmployeeTypes).Opt(),
    Enumeration("Gender", kGenders).Opt(),
    Leaf("HiredDate", Type::Date).Opt(),
    Leaf("ReleasedDate", Type::Date).Opt(),
    Leaf("BirthDate", Type::Date).Opt().Since(2, 0),
    Text("AccountNumber", 99).Opt(),
    Text("Notes", 4095).Opt().Since(3, 0).In(kUnitedStates | kBritain),
    Aggregate("EmployeePayrollInfo", kEmployeePayrollInfo).Opt().Since(2, 0),
};

constexpr Element kEmployeeAddRequest[] = {
    Aggregate("EmployeeAdd", kEmployeeAdd),
};

constexpr Element kEarningsEmployeeBranches[] = {
    Leaf("ClearEarnings", Type::Bool),
    Aggregate("Earnings", kEarnings).Rep(),
};

constexpr Element kEmployeePayrollInfoMod[] = {
    Enumeration("PayPeriod", kPayPeriods).Opt(),
    Ref<159>("ClassRef").Opt(),
    Choice("OREarnings", kEarningsEmployeeBranches).Opt(),
    Leaf("IsUsingTimeDataToCreatePaychecks", Type::Bool).Opt(),
    Enumeration("UseTimeDataToCreatePaychecks", kTimeDataUses).Opt().Since(3, 0),
    Aggregate("SickHours", kSickHours).Opt(),
    Aggregate("VacationHours", kVacationHours).Opt(),
};

constexpr Element kEmployeeMod[] = {
    Leaf("ListID", Type::Id),
    Text("EditSequence", 16),
    Text("Name", 41).Opt().Until(3, 0),
    Leaf("IsActive", Type::Bool).Opt().Since(3, 0),
    Text("Salutation", 15).Opt(),
    Text("FirstName", 25).Opt(),
    Text("MiddleName", 5).Opt(),
    Text("LastName", 25).Opt(),
    Aggregate("EmployeeAddress", kEmployeeAddress).Opt(),
    Text("PrintAs", 41).Opt(),
    Text("Phone", 21).Opt(),
    Text("Mobile", 21).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("Pager", 21).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("PagerPIN", 10).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("AltPhone", 21).Opt(),
    Text("Fax", 21).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("Email", 99).Opt(),
    Leaf("BirthDate", Type::Date).Opt().Since(2, 0),
    Text("AccountNumber", 99).Opt(),
    Text("Notes", 4095).Opt().Since(3, 0).In(kUnitedStates | kBritain),
    Aggregate("EmployeePayrollInfoMod", kEmployeePayrollInfoMod).Opt().Since(2, 0),
};

constexpr Element kEmployeeModRequest[] = {
    Aggregate("EmployeeMod", kEmployeeMod),
};

constexpr Element kEmployeeRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 41),
    Leaf("IsActive", Type::Bool).Opt(),
    Text("Salutation", 15).Opt(),
    Text("FirstName", 25).Opt(),
    Text("MiddleName", 5).Opt(),
    Text("LastName", 25).Opt(),
    Aggregate("EmployeeAddress", kEmployeeAddress).Opt(),
    Text("PrintAs", 41).Opt(),
    Text("Phone", 21).Opt(),
    Text("Mobile", 21).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("Pager", 21).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("PagerPIN", 10).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("AltPhone", 21).Opt(),
    Text("Fax", 21).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Text("SSN", 11).Opt().Since(2, 0).In(kUnitedStates),
    Text("NiNumber", 15).Opt().In(kBritain),
    Text("SIN", 11).Opt().Since(2, 0).In(kCanada),
    Text("Email", 99).Opt(),
    Enumeration("EmployeeType", kEmployeeTypes).Opt(),
    Enumeration("Gender", kGenders).Opt(),
    Leaf("HiredDate", Type::Date).Opt(),
    Leaf("ReleasedDate", Type::Date).Opt(),
    Leaf("BirthDate", Type::Date).Opt().Since(2, 0),
    Text("AccountNumber", 99).Opt(),
    Text("Notes", 4095).Opt().Since(2, 1).In(kUnitedStates | kBritain),
    Aggregate("EmployeePayrollInfo", kEmployeePayrollInfo).Opt().Since(2, 0),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
};

constexpr Element kEmployeeQueryResponse[] = {
    Aggregate("EmployeeRet", kEmployeeRet).Opt().Rep(),
};

constexpr Element kPayrollItemWageAdd[] = {
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Enumeration("WageType", kWageTypes),
    Ref<159>("ExpenseAccountRef"),
};

constexpr Element kPayrollItemWageAddRequest[] = {
    Aggregate("PayrollItemWageAdd", kPayrollItemWageAdd),
};

constexpr Element kPayrollItemWageRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Enumeration("WageType", kWageTypes),
    Ref<159>("ExpenseAccountRef").SinceInCanada(2, 0),
};

constexpr Element kPayrollItemWageQueryResponse[] = {
    Aggregate("PayrollItemWageRet", kPayrollItemWageRet).Opt().Rep(),
};

constexpr Element kOneEmployee[] = {Aggregate("EmployeeRet", kEmployeeRet).Opt()};
constexpr Element kOnePayrollItemWage[] = {Aggregate("PayrollItemWageRet", kPayrollItemWageRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "EmployeeAdd", .request = kEmployeeAddRequest, .response = kOneEmployee},
    {.name = "EmployeeMod", .request = kEmployeeModRequest, .response = kOneEmployee},
    {.name = "EmployeeQuery", .request = kOwnedListQuery, .response = kEmployeeQueryResponse},
    {.name = "PayrollItemWageAdd", .request = kPayrollItemWageAddRequest, .response = kOnePayrollItemWage},
    {.name = "PayrollItemWageQuery", .request = kListQuery, .response = kPayrollItemWageQueryResponse},
};

}  // namespace

std::span<const Message> EmployeeMessages() { return kMessages; }

}  // namespace twqb::messages
