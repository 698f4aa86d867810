// The requests about records that no company file here keeps, against the message table.

#include <gtest/gtest.h>

#include "adapters/companyfile/PublishedRequests.h"
#include "messages/Schema.h"

namespace twqb::company {
namespace {

constexpr messages::Version kLatest = {3, 0};

TEST(RequestsOfOtherRecords, Are_none_that_the_message_table_has) {
  for (const auto& message : messages::AllMessages()) {
    EXPECT_FALSE(IsRequestOfOtherRecords(message.RequestName(), kLatest)) << message.RequestName();
  }
}

TEST(RequestsOfOtherRecords, Are_told_by_their_kind_and_what_can_be_done_with_it) {
  for (const auto* const name : {"DepositAddRq", "PurchaseOrderModRq", "ToDoQueryRq", "DataExtDelRq", "TxnVoidRq"}) {
    EXPECT_TRUE(IsRequestOfOtherRecords(name, kLatest)) << name;
  }
  for (const auto* const name :
       {"DepositModRq", "ToDoVoidRq", "Deposit", "DepositAdd", "AddRq", "", "NonesuchQueryRq"}) {
    EXPECT_FALSE(IsRequestOfOtherRecords(name, kLatest)) << name;
  }
}

}  // namespace
}  // namespace twqb::company
