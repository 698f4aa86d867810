// The client of a job.

#include <gtest/gtest.h>

#include "tests/lists/ClientsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

class JobHouse : public ClientsHouse {
 public:
  explicit JobHouse(std::string_view faults = {}) : ClientsHouse({}, faults) {
    customer = AddCustomer("<Name>Acme</Name>");
    job = AddJob("Roof", customer);
    phase = AddJob("Tiles", job);
    traffic.statements.clear();
  }
  // Whether the client of that record is there; its key goes to `client`.
  bool Exists(const std::string& listId) {
    auto set = Session().CreateMsgSetRequest("US", 3, 0);
    set.Append("CustomerQueryRq")["ORCustomerListQuery"]["ListIDList"].Add(listId);
    const auto answer = Session().DoRequests(set);
    return QBCustomerExistsInTW(answer.GetAt(0).Detail(), client);
  }

  std::string customer;
  std::string job;
  std::string phase;
  std::string client = "(untouched)";
};

TEST(ClientOfJob, Is_the_client_that_is_linked_to_the_parent) {
  JobHouse house;
  house.Client("ClientID, QBLinkID", "'ACME', '" + house.customer + "'");
  EXPECT_TRUE(house.Exists(house.job));
  EXPECT_EQ(house.client, "ACME");
  EXPECT_EQ(house.traffic.statements, Texts{"SELECT ClientID from Client WHERE QBLinkID = '" + house.customer + "';"});
}

TEST(ClientOfJob, Is_asked_of_the_parents_project_for_a_job_below_a_job) {
  JobHouse house;
  house.Sql("INSERT INTO Project (ProjectID, ClientID, QBLinkID) VALUES ('P:', 'ACME', '" + house.job + "')");
  EXPECT_TRUE(house.Exists(house.phase));
  EXPECT_EQ(house.client, "ACME");
  EXPECT_EQ(house.traffic.statements, (Texts{"SELECT ClientID from Client WHERE QBLinkID = '" + house.job + "';",
                                             "SELECT ClientID FROM Project WHERE QBLinkID = '" + house.job + "';"}));
}

TEST(ClientOfJob, Is_not_there_when_nothing_is_linked_to_the_parent) {
  JobHouse house;
  EXPECT_FALSE(house.Exists(house.job));
  EXPECT_EQ(house.traffic.statements.size(), 1U);  // a parent at the top has no project
  EXPECT_FALSE(house.Exists(house.phase));
  EXPECT_EQ(house.client, "(untouched)");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ClientOfJob, A_project_without_a_client_counts_as_none) {
  JobHouse house;
  house.Sql("INSERT INTO Project (ProjectID, QBLinkID) VALUES ('P:', '" + house.job + "')");
  EXPECT_FALSE(house.Exists(house.phase));
}

TEST(ClientOfJob, A_customer_is_the_wrong_context) {
  JobHouse house;
  EXPECT_FALSE(house.Exists(house.customer));
  EXPECT_EQ(house.BoxTexts(), Texts{"\"QBCustomerExistsInTW\" called in the wrong context!"});
  EXPECT_TRUE(house.traffic.statements.empty());
}

TEST(ClientOfJob, An_error_of_the_client_lookup_is_told_and_is_False) {
  JobHouse house("sql 1 raise 0x80040E14 \"Broken.\" SELECT ClientID from Client");
  EXPECT_FALSE(house.Exists(house.job));
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Error #: -2147217900(80040E14) -- \r\n\r\nBroken." + ErrorBoxEnd("QBCustomerExistsInTW")});
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(ClientOfJob, An_error_of_the_project_lookup_is_ignored) {
  JobHouse house("sql 1 raise 0x80040E14 \"Broken.\" SELECT ClientID FROM Project");
  EXPECT_FALSE(house.Exists(house.phase));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

}  // namespace
}  // namespace twqb
