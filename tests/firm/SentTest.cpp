// A firm is made and sent once, and all is looked at that holds of any firm then: it comes back, and it ends alike
// whatever the order of the tables was and wherever a run was broken off.

#include <gtest/gtest.h>

#include "tests/firm/Properties.h"

namespace twqb {
namespace {

class FirmSent : public AnyFirm {};

TEST_P(FirmSent, Ends_alike_in_any_order_and_behind_any_broken_off_run_and_comes_back_but_for_named_exceptions) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    FirmHouse house(plan, {.findsLostLinks = true});
    const TemporaryFolder prepared;
    CopyFiles(house.Folder(), prepared.Path());
    const auto calls = house.SendAndName();
    const auto all = ReadBooks(house);
    ExpectThatOrdersEndAlike(plan, prepared.Path(), all);
    ExpectThatBrokenRunsEndAlike(plan, prepared.Path(), calls, all);
    Exceptions exceptions;
    ExpectThatAllComesBack(house, exceptions);
  });
}

INSTANTIATE_TEST_SUITE_P(Firm, FirmSent, testing::Range(0U, kPartsOfFirms));

}  // namespace
}  // namespace twqb
