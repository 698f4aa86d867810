// The public object: its properties, its log lines, what belongs to the object and what to the process.

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/Forwarding.h"
#include "tests/bridge/BridgeHouse.h"
#include "tests/support/GivenUp.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;
const std::string kRule(55, '*');

TEST(BridgeObject, Its_start_and_end_are_logged) {
  BridgeHouse house;
  {
    const CTWQBBridge bridge;
    EXPECT_EQ(house.Log(), (Texts{kRule, "TWTWClient Initialized on 3/5/2008 10:00:00 AM", kRule}));
    house.machine.Advance(Date::kHour * 3);
  }
  EXPECT_EQ(house.Log(), (Texts{kRule, "TWTWClient Initialized on 3/5/2008 10:00:00 AM", kRule,
                                "TWTWClient Terminated on 3/5/2008 1:00:00 PM", ""}));
  EXPECT_TRUE(house.BoxTexts().empty());
}

std::string WhatIsMissing() {
  try {
    const CTWQBBridge bridge;
  } catch (const NotComposed& failure) {
    return failure.what();
  }
  return {};
}

TEST(BridgeObject, Asked_for_ahead_of_Compose_raises_what_is_missing) {
  EXPECT_EQ(WhatIsMissing(),
            "A CTWQBBridge needs all five seams of the platform, and nothing stands behind database, quickbooks, desk, "
            "machine, callback. Call twqb::Compose with them ahead of the first object.");
}

TEST(BridgeObject, Asked_for_with_one_seam_that_is_empty_raises_which_one) {
  const BridgeHouse house;
  auto seams = Vars().platform;
  seams.desk = nullptr;
  Compose(seams);
  EXPECT_EQ(WhatIsMissing(),
            "A CTWQBBridge needs all five seams of the platform, and nothing stands behind desk. Call twqb::Compose "
            "with them ahead of the first object.");
  EXPECT_TRUE(house.Log().empty());
}

TEST(BridgeObject, A_log_that_cannot_be_written_is_lost_without_a_word) {
  BridgeHouse house({}, "log 1 raise 75\nlog 2 raise 75");
  { const CTWQBBridge bridge; }
  EXPECT_EQ(house.Log().size(), 3U);
  EXPECT_EQ(house.Log()[0], kRule);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(BridgeObject, Its_end_ends_the_session) {
  BridgeHouse house;
  {
    Bridge bridge(house);
    EXPECT_TRUE(bridge.ConnectToQB(true));
    EXPECT_TRUE(Vars().g_QBSession);
  }
  EXPECT_FALSE(Vars().g_QBSession);
}

TEST(BridgeObject, Its_end_survives_a_session_that_does_not_end) {
  BridgeHouse house({}, "EndSession 1 raise 0x80040408 \"Stuck.\"");
  {
    Bridge bridge(house);
    EXPECT_TRUE(bridge.ConnectToQB(true));
  }
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_TRUE(house.Log().at(3).starts_with("TWTWClient Terminated on "));
}

// --- Properties ------------------------------------------------------------------------------------------------------

TEST(BridgeProperties, Have_their_defaults) {
  BridgeHouse house;
  Compose(house.Spied());
  const CTWQBBridge bridge;
  EXPECT_FALSE(bridge.LeaveMsgBoxOpen());
  EXPECT_FALSE(bridge.NoRecsInQBTable());
  EXPECT_EQ(bridge.QBHostVer(), 0);
  EXPECT_EQ(bridge.QBCountry(), "");
  EXPECT_EQ(bridge.HelpID(), 0);
  EXPECT_EQ(bridge.ConnectString(), "");
  EXPECT_EQ(bridge.TWSettingsPath(), "");
  EXPECT_EQ(bridge.NewQBLinkID(), "");
  EXPECT_EQ(bridge.PassedID(), "");
  EXPECT_EQ(bridge.HelpFilePath(), "");
  EXPECT_FALSE(bridge.IsSilentMode());
  EXPECT_FALSE(bridge.NoProgressBar());
  EXPECT_FALSE(bridge.IsQBSingleMode());
  EXPECT_FALSE(bridge.UseTWSTable());
  EXPECT_FALSE(bridge.IsSync());
  EXPECT_FALSE(bridge.UsePreferencesTW());
}

TEST(BridgeProperties, Of_the_process_are_shared_by_two_objects) {
  BridgeHouse house;
  CTWQBBridge one;
  const CTWQBBridge two;
  one.SetLeaveMsgBoxOpen(true);
  one.SetHelpID(7);
  one.SetConnectString("connect");
  one.SetTWSettingsPath("path");
  one.SetNewQBLinkID("new");
  one.SetPassedID("passed");
  one.SetHelpFilePath("help");
  one.SetIsSilentMode(true);
  one.SetNoProgressBar(true);
  one.SetUseTWSTable(true);
  for (const auto* bridge : {&std::as_const(one), &two}) {
    EXPECT_TRUE(bridge->LeaveMsgBoxOpen());
    EXPECT_EQ(bridge->HelpID(), 7);
    EXPECT_EQ(bridge->ConnectString(), "connect");
    EXPECT_EQ(bridge->TWSettingsPath(), "path");
    EXPECT_EQ(bridge->NewQBLinkID(), "new");
    EXPECT_EQ(bridge->PassedID(), "passed");
    EXPECT_EQ(bridge->HelpFilePath(), "help");
    EXPECT_TRUE(bridge->IsSilentMode());
    EXPECT_TRUE(bridge->NoProgressBar());
    EXPECT_TRUE(bridge->UseTWSTable());
  }
}

TEST(BridgeProperties, Of_the_object_are_its_own) {
  BridgeHouse house;
  CTWQBBridge one;
  const CTWQBBridge two;
  one.SetUsePreferencesTW(true);
  one.SetIsSync(true);
  one.SetIsQBSingleMode(true);
  EXPECT_TRUE(one.UsePreferencesTW() && one.IsSync() && one.IsQBSingleMode());
  EXPECT_FALSE(two.UsePreferencesTW() || two.IsSync() || two.IsQBSingleMode());
}

TEST(BridgeProperties, Survive_the_object_but_for_the_host_version) {
  BridgeHouse house;
  {
    Bridge bridge(house);
    bridge.SetPassedID("passed");
    EXPECT_TRUE(bridge.ConnectToQB(true));
    EXPECT_EQ(bridge.QBHostVer(), 16);
  }
  const CTWQBBridge next;
  EXPECT_EQ(next.PassedID(), "passed");
  EXPECT_EQ(next.QBCountry(), "US");
  EXPECT_EQ(next.QBHostVer(), 0);
}

TEST(BridgeProperties, Silent_mode_suppresses_no_box) {
  BridgeHouse house({.answers = "yes"}, "CustomerAddRq 1 status 3180 Error \"No.\"");
  house.Client("ClientID", "'ACME'");
  Bridge bridge(house);
  bridge.SetIsSilentMode(true);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.BoxTexts().size(), 1U);
}

TEST(BridgeProperties, The_company_file_last_used_comes_from_the_settings) {
  BridgeHouse house;
  Bridge bridge(house);
  EXPECT_EQ(bridge.QBDB(), "");
  EXPECT_TRUE(bridge.ConnectToQB(true));
  EXPECT_EQ(bridge.QBDB(), house.Path("company.twq"));
}

TEST(BridgeProperties, A_company_file_that_cannot_be_read_from_the_settings_is_empty_without_a_word) {
  BridgeHouse house({}, "sql 1 raise 0x80040E14");
  Bridge bridge(house);
  bridge.SetUseTWSTable(true);
  EXPECT_EQ(bridge.QBDB(), "");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(BridgeProperties, The_subscription_is_asked_at_each_read_and_connects_by_itself) {
  BridgeHouse house({},
                    "SubscriptionQueryRq 1 status 0 Info \"Status OK\"\n"
                    "SubscriptionQueryRq 2 status 1 Info \"None.\"");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.IsSubscribedToQBEvents());
  EXPECT_TRUE(Vars().g_IsSubscribed);
  EXPECT_TRUE(Vars().g_QBSession);
  EXPECT_FALSE(bridge.IsSubscribedToQBEvents());
  EXPECT_FALSE(Vars().g_IsSubscribed);
}

// --- The session -----------------------------------------------------------------------------------------------------

TEST(BridgeSession, Ending_one_that_is_not_there_is_False) {
  BridgeHouse house;
  Bridge bridge(house);
  EXPECT_FALSE(bridge.ConnectToQB(false));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(BridgeSession, Starts_once_and_ends_once) {
  BridgeHouse house;
  Bridge bridge(house);
  EXPECT_TRUE(bridge.ConnectToQB(true));
  const auto documents = house.traffic.documents.size();
  EXPECT_TRUE(bridge.ConnectToQB(true));
  EXPECT_EQ(house.traffic.documents.size(), documents);
  EXPECT_TRUE(bridge.ConnectToQB(false));
  EXPECT_FALSE(bridge.ConnectToQB(false));
}

TEST(BridgeSession, Is_found_open_by_a_second_object_which_puts_the_host_version_to_nothing) {
  BridgeHouse house;
  Bridge one(house);
  EXPECT_TRUE(one.ConnectToQB(true));
  EXPECT_EQ(one.QBHostVer(), 16);
  Bridge two(house);
  EXPECT_EQ(one.QBHostVer(), 0);
  EXPECT_TRUE(two.ConnectToQB(true));
  EXPECT_EQ(two.QBHostVer(), 0);
  EXPECT_TRUE(two.ConnectToQB(false));
  EXPECT_TRUE(one.ConnectToQB(true));
  EXPECT_EQ(two.QBHostVer(), 16);
}

TEST(BridgeSession, Of_the_process_ends_with_the_first_object_that_goes) {
  BridgeHouse house;
  Bridge one(house);
  {
    Bridge two(house);
    EXPECT_TRUE(one.ConnectToQB(true));
  }
  EXPECT_FALSE(one.ConnectToQB(false));
}

// A host whose own timer, or whose second object's end, falls into a transfer that lets events run.
class EndingTheSession : public ForwardingDesk {
 public:
  EndingTheSession(Desk& inner, int atPump) : ForwardingDesk(inner), left_(atPump) {}
  void PumpMessages() override {
    if (--left_ == 0) static_cast<void>(CTWQBBridge().ConnectToQB(false));
    ForwardingDesk::PumpMessages();
  }
  [[nodiscard]] bool HasCome() const { return left_ <= 0; }

 private:
  int left_;
};

TEST(BridgeSession, That_a_host_ends_in_the_middle_of_a_transfer_is_told_and_the_next_one_goes) {
  bool isInside = true;
  bool wasTold = false;
  for (int pump = 1; isInside; ++pump) {
    BridgeHouse house({.answers = "yes\nyes\nyes\nyes\nyes\nyes\n"});
    house.Client("ClientID, ClientCompany", "'ACME', 'Acme'");
    house.Client("ClientID, ClientCompany", "'BOLT', 'Bolt'");
    EndingTheSession desk(house.desk, pump);
    auto seams = house.Seams();
    seams.desk = &desk;
    house.Enter(seams);
    Bridge bridge(house);
    static_cast<void>(bridge.SendDataToQB(enAll));
    static_cast<void>(bridge.GetDataFromQB(enAll));
    isInside = desk.HasCome();
    for (const auto& text : house.BoxTexts()) wasTold = wasTold || text.find("Object variable") != std::string::npos;
    if (!isInside) break;
    EXPECT_TRUE(bridge.SendDataToQB(enClients)) << pump;
    EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID > ''"), "2") << pump;
  }
  EXPECT_TRUE(wasTold);
}

TEST(BridgeSession, Single_user_mode_shuts_others_out) {
  for (const bool single : {false, true}) {
    BridgeHouse house;
    Bridge bridge(house);
    bridge.SetIsQBSingleMode(single);
    EXPECT_TRUE(bridge.ConnectToQB(true));
    EXPECT_EQ(OthersCanOpenTheFile(house), !single);
  }
}

// --- Other operations ------------------------------------------------------------------------------------------------

TEST(BridgeObject, DisplaySettings_does_nothing) {
  BridgeHouse house;
  Bridge bridge(house);
  bridge.DisplaySettings();
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(BridgeObject, CloseProgressScreen_without_a_form_shows_nothing) {
  BridgeHouse house;
  Bridge bridge(house);
  bridge.CloseProgressScreen();
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(BridgeObject, CloseProgressScreen_takes_down_a_form_that_was_left_open) {
  BridgeHouse house;
  house.Client("ClientID", "'ACME'");
  Bridge bridge(house);
  bridge.SetLeaveMsgBoxOpen(true);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_TRUE(house.desk.Form());
  bridge.CloseProgressScreen();
  EXPECT_FALSE(house.desk.Form());
  EXPECT_FALSE(Vars().msgForm);
}

TEST(BridgeObject, A_desk_without_an_answer_reaches_the_host) {
  BridgeHouse house({}, "CustomerAddRq 1 status 3180 Error \"No.\"");
  house.Client("ClientID", "'ACME'");
  {
    Bridge bridge(house);
    const auto question = GivenUpAt([&] { bridge.SendDataToQB(enClients); });
    for (const auto* const part : {"Do you want to continue?", "(title \"Error\")", "It offers yes, no."}) {
      EXPECT_NE(question.find(part), std::string::npos) << question;
    }
    EXPECT_EQ(Vars().g_CnRefCount, 0);
  }
  EXPECT_TRUE(house.Log().back().empty());
}

}  // namespace
}  // namespace twqb
