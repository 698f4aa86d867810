// Employees and vendors: those who work in the model, and some who have left or are known by odd names.
#include <fmt/format.h>

#include "platform/Text.h"
#include "samples/firm/Parts.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

enum class Kind : std::uint8_t { Employee, Vendor };

// A social insurance number as the link takes it: eight digits of which the sixth counts twice, so that nine are looked
// at. Every other one of those counts double, and all of them come to tens.
std::string SocialInsurance(Dice& dice) {
  auto digits = fmt::format("{:07}", dice.Of(1'000'000, 9'999'999));
  int sum = 0;
  int place = 0;
  for (const char c : digits.substr(0, 6) + digits.substr(5)) {
    const int value = (c - '0') * (++place % 2 == 0 ? 2 : 1);
    sum += value / 10 + value % 10;
  }
  return digits + std::to_string((10 - sum % 10) % 10);
}

// Social security, social insurance and national insurance numbers, and what people type in for want of one.
Text AnyNumber(Dice& dice) {
  switch (dice.Of(0, 10)) {
    case 0:
      return std::nullopt;
    case 1:
      return "";
    case 2:
      return "111111111";
    case 3:
      return "AB123456C";
    case 4:
      return "046454286";
    case 5:
    case 6:
      return SocialInsurance(dice);
    default:
      return fmt::format("98765{:04}", dice.Of(1, 9999));
  }
}

struct Name {
  Text first;
  Text last;
};

// An employee needs a name, for QuickBooks makes one out of it; a vendor without one goes under the key.
Name AnyName(Dice& dice, Kind kind) {
  Name name = {.first = FirstName(dice), .last = LastName(dice)};
  switch (dice.Of(0, 11)) {
    case 0:
      name.first = Left(fmt::format("{0}-{0} Bartholomew", *name.first), 30);
      break;
    case 1:
      name.last = "Missing Data";
      break;
    case 2:
      name.first = fmt::format(" {} ", *name.first);
      break;
    case 3:
      name.first = Left(fmt::format("{} \"Mac\"", *name.first), 30);
      break;
    case 4:
      if (kind == Kind::Vendor) name = {};
      break;
    case 5:
      // QuickBooks knows people by their names, of which it takes each once.
      name = {.first = "Ann", .last = "Lee"};
      break;
    default:
      break;
  }
  return name;
}

void AddPerson(Dice& dice, Kind kind, const Worker& worker, bool works, Rows& rows) {
  const bool isVendor = kind == Kind::Vendor;
  const auto name = AnyName(dice, kind);
  const auto hired = dice.OnceIn(8) ? std::optional<Date>() : DayOf(0, dice.Of(-3000, 0));
  Row row;
  row.Put("EmployeeID", worker.key).Flag("IsSub", isVendor).Put("EmpFName", name.first).Put("EmpLName", name.last);
  row.Put("EmpMI", dice.OnceIn(3) ? Text("T") : dice.OnceIn(3) ? Text("") : Text());
  row.Put("EmpSalt", Salutation(dice));
  // One longer than 41 characters is QuickBooks' to refuse.
  row.Put("EmpCompany", isVendor ? AnyText(dice, CompanyWords(dice), 41) : Text());
  row.Put("EmpStreet", AnyText(dice, Street(dice), 60)).Put("EmpStreet2", AnyText(dice, "Suite 200", 60));
  row.Put("EmpCity", AnyText(dice, City(dice), 35)).Put("EmpState", State(dice));
  row.Put("EmpZip", AnyText(dice, PostalCode(dice), 15));
  row.Put("EmpHPhone", Phone(dice)).Put("EmpContactPhone", Phone(dice)).Put("MobileNumber", Phone(dice));
  row.Put("EmpHFax", Phone(dice)).Put("EmpEmail", AnyText(dice, worker.key + "@firm.example", 99));
  row.Moment("EmpDateHired", hired);
  row.Moment("EmpDateReleased", works ? std::optional<Date>() : DayOf(0, dice.Of(0, 300)));
  row.Put("EmpSSN", AnyNumber(dice));
  row.Money("EmpBillRate", worker.billRate).Money("EmpCostRate", worker.costRate);
  row.Put("Status", !works ? Text("Inactive") : dice.OnceIn(6) ? Text() : Text("Active"));
  row.Moment("LastUpdated", AnyMoment(dice));
  rows.Add("Employee", row);
}

// Payroll items of an employee's own, by kind of time.
void AddPayroll(Dice& dice, const Worker& worker, Rows& rows) {
  if (!dice.OnceIn(4)) return;
  for (const int type : {1, 2, 3}) {
    rows.Add("QBPayroll",
             Row().Put("EmployeeID", worker.key).Number("EntryType", type).Put("PayrollItem", "Hourly Wage"));
  }
}

}  // namespace

void AddPeople(const Model& model, Rows& rows) {
  auto dice = DiceFor(model.plan, Purpose::People);
  for (const auto& worker : model.employees) {
    AddPerson(dice, Kind::Employee, worker, true, rows);
    AddPayroll(dice, worker, rows);
    if (dice.OnceIn(3)) {
      rows.Add("EmployeeGroupDetail", Row().Put("EGID", "FIELD").Put("EmployeeID", worker.key));
    }
  }
  for (const auto& worker : model.vendors) AddPerson(dice, Kind::Vendor, worker, true, rows);
  const auto left = 1 + model.plan.clients / 10;
  for (std::int64_t i = 1; i <= left; ++i) {
    AddPerson(dice, Kind::Employee, {.key = fmt::format("GONE{}", i), .billRate = 4'500, .costRate = 1'800}, false,
              rows);
  }
}

}  // namespace twqb::firm
