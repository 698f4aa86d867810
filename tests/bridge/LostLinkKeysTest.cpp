// Rows whose link got lost and whose key, name or link is not plain, or which are not any more what they were.

#include <tuple>

#include "tests/bridge/LostLinksHouse.h"

namespace twqb {
namespace {

constexpr std::string_view kLater = "2008-03-05T11:30:00";

class LostLinkRows : public testing::TestWithParam<const char*> {
 protected:
  // A process that dies once QuickBooks has carried out the n-th set with that text.
  void LoseAt(std::string_view request, const std::function<void(Process&)>& prepare, enTables table, int nth = 1) {
    Process first(firm.Folder());
    prepare(first);
    first.wire.breaks = {.at = std::string(request), .nth = nth, .alsoFailing = kForGood};
    static_cast<void>(first.Send(table));
    EXPECT_EQ(first.wire.breaks.nth, 0) << "no such set went";
    EXPECT_TRUE(first.told.found.empty());
  }
  void LoseClient(std::string_view key) {
    LoseAt(
        "<CustomerAddRq", [&](Process& first) { AddClient(first, key, "New Company"); }, enClients);
  }
  static void AddClient(TestHouse& house, std::string_view key, std::string_view company) {
    LostLinksFirm::AddClient(house, key, company);
  }
  static std::set<std::string> Customers(TestHouse& house) { return LostLinksFirm::AllOf(house, "Customer", "ListID"); }
  static void SendAndExpectFound(Process& process) {
    const auto before = Customers(process);
    EXPECT_TRUE(process.Send(enClients));
    EXPECT_EQ(Customers(process), before);
    EXPECT_EQ(process.told.found.size(), 1U);
    EXPECT_TRUE(before.contains(process.ColumnOf("NEW", "QBLinkID")));
  }
  static std::string NameOf(Process& process, std::string_view listId) { return process.CustomerField(listId, "Name"); }

  LostLinksFirm firm{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Readings, LostLinkRows, testing::Values("strict", "lenient"),
                         [](const auto& test) { return std::string(test.param); });

// --- Keys ------------------------------------------------------------------------------------------------------------

TEST_P(LostLinkRows, A_row_whose_key_has_a_quote_is_held_and_told_and_never_added_twice) {
  LoseClient("O''Brien");
  Process second(firm.Folder(), {.now = kLater});
  const auto before = Customers(second);
  static_cast<void>(second.Send(enClients));
  EXPECT_EQ(Customers(second), before);
  EXPECT_TRUE(second.told.found.empty());
  ASSERT_EQ(second.told.open.size(), 1U);
  EXPECT_NE(second.told.open[0].find("The client O'Brien may be in QuickBooks already"), std::string::npos);
  EXPECT_EQ(second.Scalar("SELECT QBLinkID FROM Client WHERE ClientID = 'O''Brien'"), "NULL");
}

TEST_P(LostLinkRows, A_key_that_is_not_plain_or_does_not_fit_is_found_by_its_hash) {
  const std::string keys[] = {"M\xC3\x9CLLER", std::string(60, 'K'), "two  blanks", "50" + std::string(47, 'x')};
  for (const auto& key : keys) {
    LostLinksFirm own(GetParam());
    {
      Process first(own.Folder());
      AddClient(first, key, "New Company");
      first.wire.breaks = {.at = "<CustomerAddRq", .alsoFailing = kForGood};
      static_cast<void>(first.Send(enClients));
      const auto sent = first.DocumentsWith("<CustomerAddRq");
      ASSERT_EQ(sent.size(), 1U) << key;
      const auto from = sent[0].find("requestID=\"") + std::string_view("requestID=\"").size();
      EXPECT_LE(sent[0].find('"', from) - from, 50U) << key;
    }
    Process second(own.Folder(), {.now = kLater});
    const auto before = Customers(second);
    EXPECT_TRUE(second.Send(enClients)) << key;
    EXPECT_EQ(Customers(second), before) << key;
    ASSERT_EQ(second.told.found.size(), 1U) << key;
    EXPECT_NE(second.told.found[0].find("client " + key + " is customer "), std::string::npos) << second.told.found[0];
    EXPECT_TRUE(before.contains(second.ColumnOf(key, "QBLinkID"))) << key;
  }
}

TEST_P(LostLinkRows, A_key_that_is_spelled_in_another_case_by_now_is_the_same_row) {
  LoseClient("new");
  Process second(firm.Folder(), {.now = kLater});
  second.Sql("UPDATE Client SET ClientID = 'NEW' WHERE ClientID = 'new'");
  SendAndExpectFound(second);
}

// --- Names and links -------------------------------------------------------------------------------------------------

TEST_P(LostLinkRows, The_second_name_of_one_whose_name_is_in_use_is_found) {
  LoseAt(
      "<CustomerAddRq",
      [&](Process& first) {
        AddClient(first, "NEW", "New Company");
        LostLinksFirm::AddNamed(first, "Vendor", "New Company (NEW)");
      },
      enClients, 2);
  Process second(firm.Folder(), {.now = kLater});
  SendAndExpectFound(second);
  EXPECT_EQ(NameOf(second, second.ColumnOf("NEW", "QBLinkID")), "New Company (NEW)1");
}

TEST_P(LostLinkRows, A_row_that_was_added_in_the_place_of_its_twin_gets_the_new_link) {
  std::string twin;
  {
    Process before(firm.Folder(), {.now = "2008-03-05T10:00:00"});
    twin = SpiedHouse::TextOf(
        LostLinksFirm::Added(before, "Employee", "<FirstName>Rob</FirstName><LastName>Ray</LastName>"), "ListID");
    LostLinksFirm::AddNamed(before, "Vendor", "Bob Ray");
    // Changed at half past ten.
    before.Sql(
        "INSERT INTO Employee (EmployeeID, IsSub, EmpFName, EmpLName, QBLinkID, LastUpdated) VALUES ('BRAY', 0, "
        "'Bob', 'Ray', '" +
        twin + "', '2008-03-05 15:30:00')");
  }
  LoseAt(
      "<EmployeeAddRq", [](Process& /*first*/) {}, enEmployees);
  Process second(firm.Folder(), {.now = kLater});
  const auto before = LostLinksFirm::AllOf(second, "Employee", "ListID");
  static_cast<void>(second.Send(enEmployees));
  EXPECT_EQ(LostLinksFirm::AllOf(second, "Employee", "ListID"), before);
  ASSERT_EQ(second.told.found.size(), 1U) << (second.told.open.empty() ? "" : second.told.open[0]);
  const auto link = second.Scalar("SELECT QBLinkID FROM Employee WHERE EmployeeID = 'BRAY'");
  EXPECT_NE(link, twin);
  EXPECT_TRUE(before.contains(link));
}

TEST_P(LostLinkRows, A_link_that_leads_nowhere_is_replaced) {
  LoseAt(
      "<CustomerAddRq",
      [&](Process& first) { first.Client("ClientID, ClientCompany, QBLinkID", "'NEW', 'New Company', 'DEAD-1'"); },
      enClients);
  Process second(firm.Folder(), {.now = kLater});
  SendAndExpectFound(second);
}

// --- Rows that changed meanwhile -------------------------------------------------------------------------------------

TEST_P(LostLinkRows, A_row_that_was_linked_otherwise_meanwhile_is_left_alone) {
  LoseClient("NEW");
  Process second(firm.Folder(), {.now = kLater});
  const auto other = LostLinksFirm::AddNamed(second, "Customer", "Other");
  second.Sql("UPDATE Client SET QBLinkID = '" + other + "' WHERE ClientID = 'NEW'");
  const auto before = Customers(second);
  static_cast<void>(second.Send(enClients));
  EXPECT_EQ(second.ColumnOf("NEW", "QBLinkID"), other);
  EXPECT_EQ(Customers(second), before);
  EXPECT_TRUE(second.told.found.empty());
  EXPECT_EQ(LinesWith(second.Log(), "The client NEW has another link by now, " + other).size(), 1U);
}

TEST_P(LostLinkRows, A_row_that_was_linked_by_hand_to_the_very_record_is_left_so_without_a_word) {
  LoseClient("NEW");
  Process second(firm.Folder(), {.now = kLater});
  const auto added = second.ListIdOf("New Company (NEW)");
  second.Sql("UPDATE Client SET QBLinkID = '" + added + "' WHERE ClientID = 'NEW'");
  const auto before = Customers(second);
  EXPECT_TRUE(second.Send(enClients));
  EXPECT_EQ(second.ColumnOf("NEW", "QBLinkID"), added);
  EXPECT_EQ(Customers(second), before);
  EXPECT_TRUE(second.told.found.empty());
  EXPECT_TRUE(second.told.open.empty());
}

TEST_P(LostLinkRows, What_was_added_for_a_row_that_is_gone_is_left_alone) {
  LoseClient("NEW");
  Process second(firm.Folder(), {.now = kLater});
  second.Sql("DELETE FROM Client WHERE ClientID = 'NEW'");
  AddClient(second, "LATER", "Later Company");
  EXPECT_TRUE(second.Send(enClients));
  EXPECT_TRUE(second.told.found.empty());
  EXPECT_EQ(
      LinesWith(second.Log(), "The client NEW is no longer there; the customer that was added for it is left alone.")
          .size(),
      1U);
  EXPECT_NE(second.ColumnOf("LATER", "QBLinkID"), "NULL") << "and the send goes on";
}

TEST_P(LostLinkRows, A_row_that_is_none_that_is_sent_now_is_held_and_told) {
  LoseAt(
      "<TimeTrackingAddRq", [](Process& first) { LostLinksFirm::AddEntry(first, "{E1}"); }, enTimeEntries);
  {
    Process second(firm.Folder(), {.now = kLater});
    second.Sql("UPDATE TimeEntry SET ActivityID = 'NONE' WHERE TEID = '{E1}'");
    static_cast<void>(second.Send(enTimeEntries));
    EXPECT_TRUE(second.told.found.empty());
    ASSERT_EQ(second.told.open.size(), 1U);
    EXPECT_NE(second.told.open[0].find("time entry {E1}"), std::string::npos);
    EXPECT_EQ(LinesWith(second.Log(), second.told.open[0]).size(), 1U);
    EXPECT_EQ(second.Scalar("SELECT QBLinkID FROM TimeEntry"), "NULL");
    static_cast<void>(second.Send(enTimeEntries));
    EXPECT_EQ(second.Scalar("SELECT QBLinkID FROM TimeEntry"), "NULL") << "each transfer tries again";
    EXPECT_EQ(second.told.open.size(), 2U);
  }
  Process third(firm.Folder(), {.now = "2008-03-05T12:00:00"});
  third.Sql("UPDATE TimeEntry SET ActivityID = 'DRAFT:' WHERE TEID = '{E1}'");
  EXPECT_TRUE(third.Send(enTimeEntries));
  EXPECT_EQ(third.told.found.size(), 1U);
  EXPECT_EQ(LostLinksFirm::AllOf(third, "TimeTracking", "TxnID"),
            std::set<std::string>{third.Scalar("SELECT QBLinkID FROM TimeEntry")});
}

TEST_P(LostLinkRows, An_employee_of_a_second_name_is_found_and_not_added_under_a_third) {
  LoseAt(
      "<EmployeeAddRq",
      [&](Process& first) {
        LostLinksFirm::AddNamed(first, "Vendor", "Bob Ray");
        first.Sql("INSERT INTO Employee (EmployeeID, IsSub, EmpFName, EmpLName) VALUES ('BRAY', 0, 'Bob', 'Ray')");
      },
      enEmployees, 2);
  Process second(firm.Folder(), {.now = kLater});
  const auto before = LostLinksFirm::AllOf(second, "Employee", "ListID");
  static_cast<void>(second.Send(enEmployees));
  EXPECT_EQ(second.told.found.size(), 1U);
  EXPECT_EQ(LostLinksFirm::AllOf(second, "Employee", "ListID"), before) << Join(second.wire.documents, "\n");
}

}  // namespace
}  // namespace twqb
