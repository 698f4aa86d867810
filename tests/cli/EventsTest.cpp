#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::HasSubstr;

class EventsCommands : public testing::Test {
 protected:
  EventsCommands() {
    folder_.Done({"init"});
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
  }
  void ExpectStatus(bool subscribed) const {
    const auto ended = folder_.Twqb({"events", "status"});
    EXPECT_EQ(ended.status, subscribed ? 0 : 1);
    EXPECT_EQ(ended.out, subscribed ? "subscribed\n" : "not subscribed\n");
  }

  WorkFolder folder_;
};

TEST_F(EventsCommands, Switch_the_subscription_on_and_off_again) {
  ExpectStatus(false);
  EXPECT_EQ(folder_.Done({"events", "on"}), "events on: done\n");
  ExpectStatus(true);
  EXPECT_EQ(folder_.Done({"events", "off"}), "events off: done\n");
  ExpectStatus(false);
}

TEST_F(EventsCommands, Take_what_is_so_already_for_done) {
  folder_.Done({"events", "off"});
  folder_.Done({"events", "on"});
  EXPECT_EQ(folder_.Done({"events", "on"}), "events on: done\n");
}

TEST_F(EventsCommands, Do_not_keep_a_subscribed_program_from_transfers) {
  folder_.Done({"events", "on"});
  folder_.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID) VALUES ('ACME')"});
  EXPECT_EQ(folder_.Done({"send", "clients"}), "clients: 1 added\nsend clients: done\n");
}

TEST_F(EventsCommands, End_with_1_when_QuickBooks_refuses) {
  folder_.Write("faults.txt", "UIEventSubscriptionAddRq 1 status 3260 Error \"Not allowed.\"\n");
  const auto ended = folder_.Twqb({"events", "on", "--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "events on: failed\n");
  EXPECT_THAT(ended.err, HasSubstr("Request Number 2 :-"));
}

TEST_F(EventsCommands, Need_a_word_on_what_to_do) {
  const auto ended = folder_.Twqb({"events"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("needs a command: on, off, status"));
  EXPECT_THAT(folder_.Done({"--help"}), HasSubstr("  events on | off | status"));
}

TEST(EventsOfAnOldQuickBooks, Are_refused_in_words_and_with_1) {
  const WorkFolder folder;
  folder.Done({"init", "--host-version", "12"});
  folder.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
  const auto on = folder.Twqb({"events", "on"});
  EXPECT_EQ(on.status, 1);
  EXPECT_THAT(on.err, HasSubstr("Only one-way automatic sync is available."));
  EXPECT_EQ(folder.Twqb({"events", "off"}).status, 1);
  EXPECT_EQ(folder.Twqb({"events", "status"}).status, 1);
}

}  // namespace
}  // namespace twqb::cli
