// The hours of the sample firm on both sides: added up by employee, project and activity they are the same to the
// minute, but for the kinds that don't travel.
//
// The two sides are joined by links alone. Names of items and jobs change on their way.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <tuple>

#include "Firm.h"

namespace twqb::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr double kMinute = 60;
constexpr double kHour = 3600;

// The identifiers of employee, job and item.
using Work = std::tuple<std::string, std::string, std::string>;
using Seconds = std::map<Work, double>;

double SecondsOf(const std::string& duration) {
  int hours = 0;
  int minutes = 0;
  int seconds = 0;
  EXPECT_EQ(std::sscanf(duration.c_str(), "PT%dH%dM%dS", &hours, &minutes, &seconds), 3) << duration;
  return hours * kHour + minutes * kMinute + seconds;
}

class Hours : public Firm {
 protected:
  using Firm::Firm;

  std::string Count(const std::string& condition) const {
    return Scalar("SELECT COUNT(*) FROM TimeEntry WHERE " + condition);
  }

  template <typename Take>
  void ForEachEntryThere(Take take) const {
    int entries = 0;
    ForEachRecord("TimeTracking", "", [&](const pugi::xml_node& entry) {
      ++entries;
      take(entry);
    });
    EXPECT_GT(entries, 0);
  }

  // Without those that are lines of bills in QuickBooks.
  Seconds HoursHere(const std::string& condition) const {
    Seconds hours;
    const auto rows = Rows(
        "SELECT e.QBLinkID, p.QBLinkID, COALESCE(a.QBLinkID, '-'), TEHours FROM TimeEntry t "
        "LEFT JOIN Employee e ON e.EmployeeID = t.EmployeeID "
        "LEFT JOIN Project p ON p.ProjectID = t.ProjectID "
        "LEFT JOIN Activity a ON a.ActivityID = t.ActivityID WHERE VendorBillID IS NULL AND " +
        condition);
    for (const auto& fields : rows) {
      EXPECT_EQ(fields.size(), 4U);
      if (fields.size() == 4) hours[{fields[0], fields[1], fields[2]}] += std::stod(fields[3]) * kHour;
    }
    return hours;
  }

  Seconds HoursThere() const {
    Seconds hours;
    ForEachEntryThere([&](const pugi::xml_node& entry) {
      const auto id = [&](const char* reference) { return std::string(entry.child(reference).child_value("ListID")); };
      const auto item = id("ItemServiceRef");
      hours[{id("EntityRef"), id("CustomerRef"), item.empty() ? "-" : item}] +=
          SecondsOf(entry.child_value("Duration"));
    });
    return hours;
  }
};

double Total(const Seconds& hours) {
  double total = 0;
  for (const auto& [work, seconds] : hours) total += seconds;
  return total;
}

// The kinds that don't travel as they are.
constexpr const char* kNotPosted = "TEPosted = 0";
constexpr const char* kBelowNothing = "TEHours < 0";
constexpr const char* kMoreThanADay = "TEHours > 24";

class HoursOfCountry : public Hours, public testing::WithParamInterface<std::string> {
 protected:
  HoursOfCountry() : Hours(GetParam()) {}
};

TEST_P(HoursOfCountry, Are_the_same_to_the_minute_but_for_the_kinds_that_do_not_travel) {
  Transfer("send", 11);
  Transfer("get", 12);

  EXPECT_EQ(Count(kNotPosted), "14");
  EXPECT_EQ(Count(kBelowNothing), "2");
  EXPECT_EQ(Count(std::string("QBLinkID IS NULL AND NOT (") + kNotPosted + ") AND NOT (" + kBelowNothing + ")"), "0");
  // Hours on a vendor's bill are not posted, and linked to the bill's line.
  EXPECT_EQ(Count(std::string("QBLinkID <> '' AND (") + kNotPosted + " OR " + kBelowNothing + ")"), "5");
  EXPECT_EQ(Count("QBLinkID <> '' AND VendorBillID IS NOT NULL"), "6") << "five went, and one came";

  auto here = HoursHere(std::string("NOT (") + kNotPosted + ") AND NOT (" + kBelowNothing + ")");
  auto there = HoursThere();
  // What goes as a day is 6 hours longer here.
  const auto overlong = HoursHere(kMoreThanADay);
  ASSERT_EQ(overlong.size(), 1U);
  EXPECT_EQ(overlong.begin()->second, 30 * kHour);
  here[overlong.begin()->first] -= 6 * kHour;
  // What is of no customer stays in QuickBooks.
  const auto isOfNobody = [](const auto& entry) { return std::get<1>(entry.first).empty(); };
  const auto ofNobody = std::find_if(there.begin(), there.end(), isOfNobody);
  ASSERT_NE(ofNobody, there.end());
  EXPECT_EQ(ofNobody->second, 7 * kHour);
  there.erase(ofNobody);
  EXPECT_EQ(std::find_if(there.begin(), there.end(), isOfNobody), there.end());

  EXPECT_GT(Total(here), 1400 * kHour);
  EXPECT_GT(here.size(), 60U);
  for (const auto& [work, seconds] : here) {
    const auto& [employee, project, activity] = work;
    ASSERT_TRUE(there.contains(work)) << employee << ", " << project << ", " << activity;
    EXPECT_LT(std::abs(there.at(work) - seconds), kMinute) << employee << ", " << project << ", " << activity;
  }
  EXPECT_EQ(here.size(), there.size());
}

TEST_P(HoursOfCountry, A_second_send_and_a_second_get_move_none) {
  Transfer("send", 11);
  Transfer("get", 12);
  const auto rows = [this] { return folder_.Done({"billing", "run", "-e", "SELECT * FROM TimeEntry ORDER BY TEID"}); };
  const auto records = [this] {
    std::string text;
    ForEachEntryThere([&](const pugi::xml_node& entry) {
      text += std::string(entry.child_value("TxnID")) + ' ' + entry.child_value("EditSequence") + '\n';
    });
    return text;
  };
  const auto rowsBefore = rows();
  const auto recordsBefore = records();
  Transfer("send", 13);
  EXPECT_THAT(Transcript("send", 11), HasSubstr("<TimeTrackingAddRq"));
  EXPECT_THAT(Transcript("send", 13), Not(HasSubstr("<TimeTrackingAddRq")));
  Transfer("get", 14);
  EXPECT_EQ(rows(), rowsBefore);
  EXPECT_EQ(records(), recordsBefore);
}

INSTANTIATE_TEST_SUITE_P(Hours, HoursOfCountry, testing::Values("US", "CA", "UK", "AU"),
                         [](const auto& suite) { return suite.param; });

TEST_F(Hours, Are_counted_by_status) {
  Transfer("send", 11);
  EXPECT_THAT(folder_.Done({"status"}), testing::ContainsRegex("\ntimeentries +303 +292 +11 +0 "));
  Transfer("get", 12);
  EXPECT_THAT(folder_.Done({"status"}), testing::ContainsRegex("\ntimeentries +317 +306 +11 +"));
}

TEST_F(Hours, Of_customers_bring_the_customers_as_projects) {
  Transfer("send", 11);
  Transfer("get", 12);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Project p, Client c WHERE p.QBLinkID = c.QBLinkID AND p.ProjectID IN "
                   "('HARTWELL FARMS:', 'Solano:', 'Pioneer Dental (Pioneer):')"),
            "3");
  EXPECT_EQ(Scalar("SELECT SUM(TEHours) FROM TimeEntry WHERE ProjectID = 'HARTWELL FARMS:'"), "16");
}

TEST_F(Hours, That_QuickBooks_entered_itself_lose_their_seconds_and_keep_a_long_note_whole) {
  Transfer("send", 11);
  Transfer("get", 12);
  EXPECT_EQ(Scalar("SELECT TEHours FROM TimeEntry WHERE TEMemo LIKE 'Stopwatch%'"), "2.5");
  EXPECT_EQ(Scalar("SELECT LENGTH(TEDescription) || ' ' || (LENGTH(TEMemo) > 255) FROM TimeEntry WHERE TEMemo LIKE "
                   "'A & B <both>%'"),
            "255 1");
  EXPECT_EQ(Count("TEDescription = 'Design' AND TEMemo IS NULL"), "1") << "the item's name stands for a note";
}

TEST_F(Hours, Below_nothing_are_told_in_the_log_by_every_send) {
  const auto told = [this] {
    const auto log = folder_.Read("TWQBLog20083.txt");
    int lines = 0;
    for (auto at = log.find("negative time entry"); at != std::string::npos;
         at = log.find("negative time entry", at + 1)) {
      ++lines;
    }
    return lines;
  };
  Transfer("send", 11);
  EXPECT_EQ(told(), 2);
  Transfer("send", 12);
  EXPECT_EQ(told(), 4);
}

// An entry of the sample firm, by its description, and the payroll item that it goes with.
struct Paid {
  std::string description;
  std::string item;
};

TEST_F(Hours, Go_with_the_payroll_item_of_their_kind) {
  Transfer("send", 11);
  std::map<std::string, std::map<std::string, int>> items;
  ForEachEntryThere([&](const pugi::xml_node& entry) {
    ++items[entry.child_value("Notes")][entry.child("PayrollItemWageRef").child_value("FullName")];
  });
  const Paid kPaid[] = {
      {"Saturday, at low water", "Time and a Half"},    // overtime, billable, by the employee's own choice
      {"Night run", "Office Overtime"},                 // not billable
      {"After the storm", "Overtime Pay"},              // of one who has no choice
      {"Redrawn at our cost", "Overtime Pay"},          // and not billable
      {"Night shift", "Night Premium"},                 // by the flag that counts
      {"On the ladder", "Night Premium"},               // by another flag
      {"Flagged, and a holiday", "Night Premium"},      // the flag comes first
      {"Flagged, with no item for it", "Hourly Wage"},  // and falls through
      {"Flagged, and nothing says which flag counts", "Regular Pay"},
      {"Saturday, for comp time", "Regular Pay"},  // of two people, one of whom is paid a salary
      {"Rig and two men", "Regular Pay"},          // of a vendor
  };
  for (const auto& [description, item] : kPaid) EXPECT_TRUE(items[description].contains(item)) << description;
  EXPECT_THAT(items["Vacation"], ElementsAre(testing::Pair("Vacation Hourly", 4)));
  EXPECT_THAT(items["Sick"], ElementsAre(testing::Pair("Sick Hourly", 3)));
  EXPECT_THAT(items["Holiday"], ElementsAre(testing::Pair("Holiday Hourly", 2), testing::Pair("Regular Pay", 8)));
}

TEST_F(Hours, Of_comp_time_stay_where_the_settings_say_so) {
  folder_.Done({"settings", "set", "QBSEND", "_Time Entries_chkCompTime", "1"});
  Transfer("send", 11);
  EXPECT_EQ(Count("TECompTime <> 0"), "3");
  EXPECT_EQ(Count("TECompTime <> 0 AND QBLinkID <> ''"), "0");
  EXPECT_EQ(Count("QBLinkID <> ''"), "289");
}

TEST_F(Hours, Are_those_of_the_other_column_where_the_settings_say_so) {
  folder_.Done({"settings", "set", "QBSEND", "_Time Entries_chkAhrs", "1"});
  const auto before = Total(HoursThere());
  Transfer("send", 11);
  const auto sumOf = [this](const std::string& column) {
    return std::stod(
        Scalar("SELECT SUM(MIN(" + column + ", 24)) FROM TimeEntry WHERE QBLinkID <> '' AND VendorBillID IS NULL"));
  };
  EXPECT_GT(sumOf("aHours"), sumOf("TEHours") + 5);
  EXPECT_NEAR(Total(HoursThere()) - before, sumOf("aHours") * kHour, kMinute);
}

// Neither an employee nor a vendor: no send takes this person to QuickBooks.
constexpr const char* kStranger =
    "INSERT INTO Employee (EmployeeID, IsSub, EmpFName, EmpLName) VALUES ('TEMP', NULL, 'Terry', 'Temple');"
    "INSERT INTO TimeEntry (TEID, TEDate, EmployeeID, ProjectID, ActivityID, TEHours, TEBill, TEPosted) VALUES "
    "('{7E0C0001-5B1C-4D2E-8F30-9A6B5C4D0001}', '2008-03-03 00:00:00', 'TEMP', 'MARINA:', 'STRUCT:SITE', 4, -1, -1)";

TEST_F(Hours, Of_somebody_without_a_link_stay_and_are_told_once_while_all_others_go) {
  Sql(kStranger);
  const auto ended = Run("send", "all", 11);
  EXPECT_EQ(ended.status, 1);
  const std::string told = "There was a problem in transfering some of the time records.";
  EXPECT_THAT(ended.err, HasSubstr(told));
  EXPECT_EQ(ended.err.find(told), ended.err.rfind(told));
  EXPECT_EQ(Count("QBLinkID <> ''"), "287") << "the tables behind are not reached";
  EXPECT_EQ(Count("EmployeeID = 'TEMP' AND QBLinkID IS NULL"), "1");

  Sql("UPDATE Employee SET IsSub = 0 WHERE EmployeeID = 'TEMP'");
  const auto cured = Run("send", "all", 12);
  EXPECT_EQ(cured.status, 0) << cured.err;
  EXPECT_THAT(cured.err, IsEmpty());
  EXPECT_EQ(Count("EmployeeID = 'TEMP' AND QBLinkID <> ''"), "1");
}

TEST_F(Hours, Are_lost_to_nobody_when_time_tracking_is_off) {
  folder_.Done({"company", "set", "time-tracking", "disabled"});
  const auto refused = Run("send", "all", 11);
  EXPECT_EQ(Count("QBLinkID <> ''"), "0");
  EXPECT_THAT(refused.err, HasSubstr("You have not Enabled the Time Tracking Feature in QuickBooks."));
  folder_.Done({"company", "set", "time-tracking", "enabled"});
  Transfer("send", 12);
  EXPECT_EQ(Count("QBLinkID <> ''"), "292");
}

}  // namespace
}  // namespace twqb::cli
