// Houses to which QuickBooks returns checks, charges, bills and estimates. A vendor, the project with its manager, an
// activity and an expense code are linked to V-1, P-1, A-1 and X-1.
#pragma once

#include <utility>

#include "tests/transactions/ArrivalsHouse.h"

namespace twqb {

inline const std::string kVendorRef = "<ListID>V-1</ListID><FullName>Smith Ltd</FullName>";
inline const std::string kTravelRef = "<ListID>X-1</ListID><FullName>Travel</FullName>";
inline const std::string kDesignRef = "<ListID>A-1</ListID><FullName>Design</FullName>";
inline const std::string kUnknownRef = "<ListID>Z-1</ListID><FullName>Unheard of</FullName>";

// QuickBooks' times are of yesterday: rows that a get writes today are the later side.
inline constexpr std::string_view kModified = "2008-03-04T09:00:00-05:00";
inline constexpr MoveFlags kMostRecent = {.mostRecent = true};
inline constexpr MoveFlags kNever = {.never = true};

// Elements as QuickBooks returns them, and a line as an element of its own.
inline std::string Line(std::string_view kind, const Elements& elements, const Changes& changes = {}) {
  return RecordOf(kind, elements, changes);
}

// Ten for the road, on an account.
inline std::string AccountLine(const Changes& changes = {}) {
  return Line("ExpenseLine",
              {{"TxnLineID", "E-1"},
               {"AccountRef", "<FullName>Automobile</FullName>"},
               {"Amount", "10.00"},
               {"Memo", "Fuel"},
               {"CustomerRef", kJobRef}},
              changes);
}
// The record with those lines behind its elements.
inline std::string With(std::string record, const Texts& lines) {
  std::string text;
  for (const auto& line : lines) text += line;
  return record.insert(record.rfind("</"), text);
}

class CostsHouse : public ArrivalsHouse {
 public:
  explicit CostsHouse(const TestedTable& table, HouseOptions options = {}, std::string_view faults = {})
      : ArrivalsHouse(table, "", std::move(options), faults), costs_(table) {
    Vars().g_DbKind = "SQL";
    Sql("UPDATE Project SET EmployeeID = 'BOSS', ProjectName = 'The roof'");
    Sql("INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('SMITH', -1, 'V-1')");
    Sql("INSERT INTO Activity (ActivityID, ActivityDescription, QBLinkID) VALUES ('DESIGN:', 'Design work', 'A-1')");
    Sql("INSERT INTO Expense (ExpID, ExpDescription, QBLinkID) VALUES ('TRAVEL:', 'Travel by rail', 'X-1')");
    Clear();
  }

  using ListHouse::Take;
  // What QuickBooks is made to return to one of the table's reads.
  [[nodiscard]] RecordList ReadAnswer(std::string_view query, std::string_view text, std::int16_t part = 0) {
    Answer(query, text);
    RecordList records;
    const bool noBar = std::exchange(Vars().g_NoProgressBar, true);
    EXPECT_TRUE(ApplyQBFiltersAndReadRecords(costs_.table, records, Session(), {}, static_cast<std::size_t>(part)));
    Vars().g_NoProgressBar = noBar;
    return records;
  }
  // The get of it.
  void TakeAnswer(std::string_view query, std::string_view text, MoveFlags flags = {}, std::int16_t part = 0) {
    const auto records = ReadAnswer(query, text, part);
    Vars().g_TableOk = TableOk::False;
    costs_.toTW({.records = records, .rule = flags.Rule(), .run = Vars(), .part = part});
  }

 private:
  const TestedTable& costs_;
};

inline std::string OwnBox(std::string_view routine, std::string_view text = "Broken.",
                          std::int32_t number = -2147217900) {
  return fmt::format("Error in '{}()' :- {}\r\nError No = {}", routine, text, number);
}

}  // namespace twqb
