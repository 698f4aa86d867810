// What the process holds of other programs, when the library is about to be unloaded.

#include <gtest/gtest.h>

#include <memory>

#include "services/Database.h"
#include "services/OthersObjects.h"
#include "services/msgForm.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

class WatchedCallback : public Callback {
 public:
  explicit WatchedCallback(bool& isGone) : isGone_(isGone) {}
  ~WatchedCallback() override { isGone_ = true; }
  WatchedCallback(const WatchedCallback&) = delete;
  WatchedCallback& operator=(const WatchedCallback&) = delete;

  int Mode() override { return 0; }
  void SetMode(int /*mode*/) override {}
  void SetText(std::string_view /*text*/) override {}

 private:
  bool& isGone_;
};

TEST(OthersObjects, Go_ahead_of_the_library_and_are_made_anew_while_all_values_stay) {
  NotingHouse house;
  bool isGone = false;
  Vars().g_QBCallback = std::make_unique<WatchedCallback>(isGone);
  Vars().g_NewQBLinkID = "80000001-1";
  gp_cnGlobal80(true);
  LetGoOfOthersObjects();
  EXPECT_EQ(Vars().g_cnGlobal, nullptr);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_TRUE(isGone);
  EXPECT_EQ(Vars().g_NewQBLinkID, "80000001-1");
  gp_cnGlobal80(true);
  EXPECT_EQ(Vars().g_cnGlobal->State(), ado::ObjectState::Open);
  EXPECT_EQ(Vars().g_CnRefCount, 1);
  gp_cnGlobal80(false);
}

TEST(OthersObjects, Are_forgotten_without_being_called) {
  NotingHouse house;
  static bool isGone = false;
  Vars().g_QBCallback = std::make_unique<WatchedCallback>(isGone);
  ForgetOthersObjects();
  EXPECT_EQ(Vars().g_QBCallback, nullptr);
  EXPECT_FALSE(isGone);
}

TEST(OthersObjects, Do_not_go_while_the_progress_form_stands) {
  NotingHouse house;
  EXPECT_FALSE(DoesFormStand());
  ShowMsgForm("Sending Clients to QuickBooks...");
  EXPECT_TRUE(DoesFormStand());
  UnloadMsgForm();
  EXPECT_FALSE(DoesFormStand());
}

}  // namespace
}  // namespace twqb
