// What is said of a link by how many rows it was written to.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/WriteBack.h"
#include "platform/Forwarding.h"
#include "tests/support/TestHouse.h"

namespace twqb {
namespace {

// Answers a number of its own to each statement.
class CountingConnection : public ado::ForwardingConnection {
 public:
  CountingConnection(std::unique_ptr<ado::Connection> inner, std::int64_t rows)
      : ForwardingConnection(std::move(inner)), rows_(rows) {}
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* affected) override {
    auto answer = ForwardingConnection::Execute(statement, affected);
    if (affected != nullptr) *affected = rows_;
    return answer;
  }

 private:
  std::int64_t rows_;
};

struct Said {
  std::int64_t rows;
  std::size_t lines;
};

class WrittenLink : public testing::TestWithParam<Said> {};

TEST_P(WrittenLink, Is_told_where_it_is_not_in_one_row_unless_nobody_counted) {
  TestHouse house;
  house.Enter();
  house.Sql("INSERT INTO Client (ClientID) VALUES ('ACME')");
  auto inner = house.database.CreateConnection();
  inner->SetConnectionString(house.ConnectString());
  inner->Open();
  CountingConnection connection(std::move(inner), GetParam().rows);
  WriteLink(connection, {.table = "Client", .condition = KeyCondition("ClientID", "ACME")}, "80000001-1");
  EXPECT_EQ(house.Log().size(), GetParam().lines);
  EXPECT_EQ(house.Scalar("SELECT QBLinkID FROM Client"), "80000001-1");
}

// A server with its counting off answers -1.
INSTANTIATE_TEST_SUITE_P(WriteBack, WrittenLink, testing::Values(Said{0, 1}, Said{1, 0}, Said{2, 1}, Said{-1, 0}),
                         [](const auto& test) { return "Rows" + std::to_string(test.param.rows + 1) + "LessOne"; });

}  // namespace
}  // namespace twqb
