// The first month of an office that has both sides already (samples/office): the script counts for itself, and here
// what it shows beforehand and afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/Program.h"

namespace twqb::cli {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(OfficeMonth, Doubles_nothing_and_shows_each_step_beforehand_and_afterwards) {
  const WorkFolder folder;
  const auto month = folder.Shell("TMPDIR=\"$PWD\" bash " TWQB_SOURCE_DIR "/samples/office/month.sh \"$0\"");
  EXPECT_EQ(month.status, 0) << month.out << month.err;
  EXPECT_THAT(month.out, Not(HasSubstr("NOT AS IT SHOULD BE")));
  for (const auto* shown : {
           "QuickBooks has a record of the name \"Saratoga Print Shop (SARATOGA)\" already: vendor",
           "clients: 50 without a link; 8 with an exact twin, 17 with one that is like it",
           "clients: 50 without a link; 25 linked",
           "clients: 25 added, 25 changed\npreview of send clients: it would be done; nothing has been changed",
           "clients: 25 added, 25 changed\nsend clients: done",
           "a send takes BillingDb's side",
           "a get takes QuickBooks' side",
           "deleted",
           "undo send clients: done",
           "Nothing is there twice, and nothing is lost.",
       }) {
    EXPECT_THAT(month.out, HasSubstr(shown));
  }
}

}  // namespace
}  // namespace twqb::cli
