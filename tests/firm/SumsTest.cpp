// The sums of both sides with company files of other countries; those of the United States are looked at between
// rounds.

#include <gtest/gtest.h>

#include "tests/firm/Sums.h"

namespace twqb {
namespace {

using messages::Country;

class FirmSums : public testing::TestWithParam<Country> {};

TEST_P(FirmSums, Are_the_same_on_both_sides_by_client_project_and_person) {
  for (unsigned number = 0; number < 6; ++number) {
    const auto plan = TinyFirm(number);
    SCOPED_TRACE("seed " + std::to_string(plan.seed));
    FirmHouse house(plan, HouseOptions{.company = {.country = GetParam()}});
    const auto own = TimeOfQuickBooks(house);
    house.Send();
    house.Get();
    ExpectThatSumsAgree(house, own);
  }
}

INSTANTIATE_TEST_SUITE_P(Firm, FirmSums, testing::Values(Country::CA, Country::UK, Country::AU));

}  // namespace
}  // namespace twqb
