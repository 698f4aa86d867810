// A house in which the routines of employees and vendors are called as the dispatcher calls them.
#pragma once

#include <fmt/core.h>

#include <map>
#include <span>

#include "lists/modEmployees.h"
#include "services/Database.h"
#include "services/Settings.h"
#include "tests/engine/SpiedHouse.h"
#include "tests/support/TablesByNumber.h"
#include "twqb/enTables.h"

namespace twqb {

using Columns = std::map<std::string, std::string>;  // as SQL expressions; what is not there is NULL
using Texts = std::vector<std::string>;

// How a company file and the form of the message sets are met.
struct Edition {
  messages::Country file = messages::Country::US;
  std::string_view country = "US";      // as the probe found it
  std::string_view hostCountry = "US";  // as the host told it
  std::int16_t version = 3;
};

class PeopleHouse : public SpiedHouse {
 public:
  explicit PeopleHouse(IsVendor isVendor, HouseOptions options = {}, std::string_view faults = {},
                       const Edition& edition = {})
      : SpiedHouse(WithFile(std::move(options), edition), faults), isVendor_(isVendor), edition_(edition) {
    Connect(edition.country);
    Vars().g_HostCountry = edition.hostCountry;
    Vars().g_QBMajorVer = edition.version;
    connection_ = database.CreateConnection();
    OpenConnection(*connection_, nullptr, "");
  }
  ~PeopleHouse() { connection_.reset(); }

  [[nodiscard]] bool OfVendors() const { return isVendor_ == IsVendor::Yes; }
  [[nodiscard]] std::string Kind() const { return OfVendors() ? "Vendor" : "Employee"; }
  [[nodiscard]] std::int32_t Table() const { return OfVendors() ? enVendors : enEmployees; }

  // All rows of the kind, in the order in which they were inserted.
  bool Send(bool never = false, bool mostRecent = false) {
    Vars().g_TableOk = TableOk::False;
    const auto sql = twqb::Sql::Own(BuildSelectSQL(Table(), {.IgnoreLastSync = true}));
    return MoveEmployeesToQB({.sql = sql, .rule = TwinRuleOf(never, mostRecent), .session = Session(), .run = Vars()},
                             isVendor_);
  }
  // All records of the kind.
  void Get(bool never = false, bool mostRecent = false) {
    RecordList records;
    Vars().g_TableOk = TableOk::False;
    const bool noBar = std::exchange(Vars().g_NoProgressBar, true);  // the reader's own form work is not looked at
    ASSERT_TRUE(ApplyQBFiltersAndReadRecords(Table(), records, Session(), {}));
    Vars().g_NoProgressBar = noBar;
    MoveEmployeesToTW({.records = records, .rule = TwinRuleOf(never, mostRecent), .run = Vars()}, isVendor_);
  }

  // A row of the kind.
  void Person(const Columns& columns) {
    std::string names = "IsSub";
    std::string values = OfVendors() ? "-1" : "0";
    for (const auto& [name, value] : columns) {
      names += ", " + name;
      values += ", " + value;
    }
    Sql("INSERT INTO Employee (" + names + ") VALUES (" + values + ")");
  }
  [[nodiscard]] std::string ColumnOf(std::string_view key, std::string_view column) {
    return Scalar(fmt::format("SELECT {} FROM Employee WHERE EmployeeID = '{}'", column, key));
  }
  [[nodiscard]] std::string Keys() {
    return Scalar("SELECT group_concat(EmployeeID, ',') FROM (SELECT EmployeeID FROM Employee ORDER BY rowid)");
  }

  // Adds a record of the kind with its fields in wire order; its ListID.
  std::string Add(std::string_view fields) {
    const auto answer = Company(fmt::format("<{0}AddRq><{0}Add>{1}</{0}Add></{0}AddRq>", Kind(), fields), Tag());
    EXPECT_NE(answer.find("statusCode=\"0\""), std::string::npos) << answer;
    return TextOf(answer, "ListID");
  }
  // The value of an element of the record with that identifier; "(none)" when it has none.
  std::string FieldOf(std::string_view listId, std::string_view element) {
    return TextOf(Company(fmt::format("<{0}QueryRq><ListID>{1}</ListID></{0}QueryRq>", Kind(), listId), Tag()),
                  element);
  }
  // The ListID of the record of that name; "(none)" without one.
  std::string IdOf(std::string_view name) {
    return TextOf(Company(fmt::format("<{0}QueryRq><FullName>{1}</FullName></{0}QueryRq>", Kind(), name), Tag()),
                  "ListID");
  }

  // The fields of a request as they go on the wire; `record` is the row in hand.
  std::string Fields(const Columns& columns, RequestKind kind = RequestKind::Mod) {
    const auto row = Row(columns);
    return Fields(*row, kind, {.key = ColumnText(*row, "EmployeeID"), .countedName = ColumnText(*row, "EmpFName")});
  }
  std::string Fields(const ado::Recordset& row, RequestKind kind, const SendRecord& record) {
    const auto name = Kind() + (kind == RequestKind::Add ? "Add" : "Mod");
    auto set = Session().CreateMsgSetRequest(Form(), edition_.version, edition_.version == 2 ? 1 : 0);
    AssignEmployeeFldValues(set.Append(name + "Rq"), row, kind, record, isVendor_);
    const auto xml = set.ToXMLString();
    const auto from = xml.find("<" + name + ">");
    if (from == std::string::npos) return {};
    return xml.substr(from + name.size() + 2, xml.find("</" + name + ">") - from - name.size() - 2);
  }
  std::string Field(const Columns& columns, std::string_view element, RequestKind kind = RequestKind::Mod) {
    return TextOf(Fields(columns, kind), element);
  }
  std::unique_ptr<ado::Recordset> Row(const Columns& columns) {
    std::string sql;
    for (const std::string column :
         {"EmployeeID", "EmpFName", "EmpLName",     "EmpMI",           "EmpSalt",   "EmpCompany",      "EmpStreet",
          "EmpStreet2", "EmpCity",  "EmpState",     "EmpZip",          "EmpHPhone", "EmpContactPhone", "MobileNumber",
          "EmpHFax",    "EmpEmail", "EmpDateHired", "EmpDateReleased", "EmpSSN",    "Status"}) {
      const auto given = columns.find(column);
      sql += sql.empty() ? "SELECT " : ", ";
      sql += (given == columns.end() ? "NULL" : given->second) + " AS " + column;
    }
    return connection_->OpenRecordset(sql, ado::CursorType::Static, ado::LockType::ReadOnly);
  }

  [[nodiscard]] std::string Tag() const {
    return edition_.file == messages::Country::CA ? "CA3.0" : edition_.file == messages::Country::UK ? "UK3.0" : "3.0";
  }

 private:
  static HouseOptions WithFile(HouseOptions options, const Edition& edition) {
    options.company.country = edition.file;
    return options;
  }
  [[nodiscard]] std::string_view Form() const {
    return edition_.country == "CA" || edition_.country == "UK" ? edition_.country : "US";
  }

  IsVendor isVendor_;
  Edition edition_;
  std::unique_ptr<ado::Connection> connection_;
};

inline constexpr Edition kCanadian = {.file = messages::Country::CA, .country = "CA", .hostCountry = "CA"};
inline constexpr Edition kBritish = {.file = messages::Country::UK, .country = "UK", .hostCountry = "UK"};

inline std::string Letters(std::size_t count) { return std::string(count, 'x'); }
inline std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

// The person is the user's to decide on: the text of the box of a failed Mod.
inline std::string RefusedMod(std::string_view message, int code, std::string_view key) {
  return RefusalText(message, code, "Error") + "\r\n\r\n[Employee ID = \"" + std::string(key) + "\"]";
}
inline std::string RefusedAdd(std::string_view message, int code, std::string_view key) {
  return RefusedMod(message, code, key) + "\r\n\r\nDo you want to continue?";
}

}  // namespace twqb
