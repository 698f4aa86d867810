// What each word of the language comes to, in the table that the readers of messages see: Sample.messages is made into
// C++ as the product's messages are, and compiled into this program.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "messages/Schema.h"

namespace twqb::messages {

std::span<const Message> SampleMessages();

namespace {

using testing::ElementsAre;

const Message& Named(std::string_view name) {
  for (const auto& message : SampleMessages()) {
    if (message.name == name) return message;
  }
  throw std::invalid_argument(std::string(name));
}

// The rows of that name below the one element of a request ("WidgetAdd") or an answer ("WidgetQuery answer").
std::vector<Element> All(std::string_view message, std::string_view name) {
  constexpr std::string_view kAnswer = " answer";
  const bool answer = message.ends_with(kAnswer);
  if (answer) message.remove_suffix(kAnswer.size());
  const auto rows = (answer ? Named(message).response : Named(message).request).front().Children();
  std::vector<Element> found;
  for (const auto& row : rows) {
    if (row.name == name) found.push_back(row);
  }
  return found;
}

Element One(std::string_view message, std::string_view name) {
  const auto found = All(message, name);
  if (found.size() != 1) throw std::invalid_argument(std::string(name));
  return found.front();
}

std::vector<std::string> Names(std::span<const Element> rows) {
  std::vector<std::string> names;
  for (const auto& row : rows) names.emplace_back(row.name);
  return names;
}

constexpr auto kAdd = "WidgetAdd";
constexpr auto kMod = "WidgetMod";
constexpr auto kRet = "WidgetQuery answer";

TEST(Messages, Stand_in_the_order_of_their_names) {
  std::vector<std::string> names;
  for (const auto& message : SampleMessages()) names.emplace_back(message.name);
  EXPECT_THAT(names, ElementsAre("WidgetAdd", "WidgetCount", "WidgetDel", "WidgetMod", "WidgetQuery", "WidgetShow",
                                 "WidgetWatch"));
}

TEST(Messages, That_add_and_modify_send_the_record_and_answer_with_one_if_with_any) {
  for (const auto* name : {"WidgetAdd", "WidgetMod"}) {
    const auto& message = Named(name);
    ASSERT_EQ(message.request.size(), 1U);
    EXPECT_EQ(message.request[0].name, name);
    EXPECT_EQ(message.request[0].type, Type::Aggregate);
    EXPECT_FALSE(message.request[0].optional);
    ASSERT_EQ(message.response.size(), 1U);
    EXPECT_EQ(message.response[0].name, "WidgetRet");
    EXPECT_TRUE(message.response[0].optional);
    EXPECT_FALSE(message.response[0].repeating);
  }
}

TEST(Messages, That_query_send_what_they_say_and_answer_with_any_number_of_records) {
  const auto& query = Named("WidgetQuery");
  EXPECT_THAT(Names(query.request), ElementsAre("ORWidgetQuery", "OwnerID"));
  ASSERT_EQ(query.response.size(), 1U);
  EXPECT_EQ(query.response[0].name, "WidgetRet");
  EXPECT_TRUE(query.response[0].optional);
  EXPECT_TRUE(query.response[0].repeating);
}

TEST(Messages, Of_their_own_say_what_is_sent_and_answered_and_may_leave_either_out) {
  EXPECT_THAT(Names(Named("WidgetDel").request), ElementsAre("ListID"));
  EXPECT_THAT(Names(Named("WidgetDel").response), ElementsAre("TimeDeleted"));
  EXPECT_TRUE(Named("WidgetCount").request.empty());
  EXPECT_TRUE(Named("WidgetWatch").response.empty());
}

TEST(Messages, Of_their_own_may_answer_with_records_as_these_are_answered) {
  const auto& shown = Named("WidgetShow").response.front().Children().front();
  EXPECT_EQ(shown.name, "WidgetShown");
  EXPECT_EQ(shown.Children().data(), Named("WidgetQuery").response.front().Children().data());
}

TEST(Messages, Have_versions_and_countries_as_their_elements_have) {
  EXPECT_EQ(Named("WidgetAdd").known, Availability{});
  EXPECT_EQ(Named("WidgetMod").known, (Availability{.since = {2, 0}}));
  EXPECT_EQ(Named("WidgetDel").known, (Availability{.since = {1, 1},
                                                    .sinceInCanada = {2, 0},
                                                    .until = {13, 0},
                                                    .countries = static_cast<Countries>(kCanada | kBritain)}));
}

TEST(Messages, Of_subscriptions_are_a_set_of_their_own) {
  EXPECT_EQ(Named("WidgetWatch").set, MessageSet::Subscription);
  EXPECT_EQ(Named("WidgetDel").set, MessageSet::Company);
}

TEST(Roles, A_field_in_some_of_them_is_in_no_other) {
  EXPECT_THAT(All(kAdd, "ListID"), testing::IsEmpty());
  EXPECT_EQ(Names(Named(kMod).request[0].Children()).front(), "ListID");
  EXPECT_EQ(One(kRet, "EditSequence").maxLength, 16);
  EXPECT_THAT(All(kAdd, "FullName"), testing::IsEmpty());
  EXPECT_THAT(All(kRet, "Secret"), testing::IsEmpty());
  EXPECT_EQ(One(kMod, "Secret").type, Type::Macro);
}

TEST(Roles, Marks_behind_one_are_its_alone) {
  EXPECT_FALSE(One(kAdd, "Name").optional);
  EXPECT_TRUE(One(kMod, "Name").optional);
  EXPECT_FALSE(One(kRet, "Name").optional);
  EXPECT_EQ(One(kAdd, "Short").known, (Availability{.since = {2, 0}}));
  EXPECT_EQ(One(kMod, "Short").known, Availability{});
  EXPECT_EQ(One(kRet, "Short").known, (Availability{.sinceInCanada = {2, 1}}));
  EXPECT_FALSE(One(kAdd, "Stamp").repeating);
  EXPECT_TRUE(One(kMod, "Stamp").repeating);
  EXPECT_TRUE(One(kMod, "Stamp").optional) << "what stands before the roles holds for all";
  EXPECT_EQ(One(kMod, "Stamp").known.countries, kUnitedStates);
  EXPECT_EQ(One(kRet, "Stamp").known.countries, kEverywhere);
}

TEST(Roles, Are_handed_down_to_shared_aggregates) {
  EXPECT_THAT(Names(One(kAdd, "Inner").Children()), ElementsAre("Width"));
  EXPECT_THAT(Names(One(kRet, "Inner").Children()), ElementsAre("Depth", "Width"));
  EXPECT_FALSE(One(kAdd, "Inner").Children()[0].optional);
  EXPECT_TRUE(One(kMod, "Inner").Children()[0].optional);
}

TEST(Names, Are_as_long_as_their_list_says_and_paths_as_all_levels_with_a_colon_between) {
  EXPECT_EQ(One(kAdd, "Name").maxLength, 31);
  EXPECT_EQ(One(kRet, "FullName").maxLength, 5 * 31 + 4);
  const auto path = [](std::string_view message, std::string_view reference) {
    return One(message, reference).Children()[1].maxLength;
  };
  EXPECT_EQ(path(kAdd, "ShelfRef"), 3 * 10 + 2);
  EXPECT_EQ(path(kAdd, "MakerRef"), 12);
  EXPECT_EQ(path(kRet, "PartRef"), 5 * 31 + 4);
  EXPECT_EQ(path(kAdd, "ParentRef"), 0) << "no list, no limit";
}

TEST(Types, Are_those_of_the_table) {
  EXPECT_EQ(One(kAdd, "Free").type, Type::Str);
  EXPECT_EQ(One(kAdd, "Free").maxLength, 0);
  EXPECT_EQ(One(kAdd, "Short").maxLength, 7);
  for (const auto& [name, type] :
       {std::pair{"Tag", Type::Id}, std::pair{"Middle", Type::Bool}, std::pair{"Canadian", Type::Date},
        std::pair{"Abroad", Type::DateTime}, std::pair{"Home", Type::TimeInterval}, std::pair{"Stamp", Type::Float}}) {
    EXPECT_EQ(One(kAdd, name).type, type) << name;
  }
  EXPECT_EQ(One(kRet, "Key").type, Type::Guid);
  EXPECT_EQ(One(kAdd, "Box").Children()[0].type, Type::Quan);
  const auto prices = One(kAdd, "ORPrice");
  EXPECT_EQ(prices.Children()[0].type, Type::Price);
  EXPECT_EQ(prices.Children()[1].type, Type::Percent);
  EXPECT_EQ(prices.Children()[2].Children()[0].type, Type::Int);
  EXPECT_EQ(prices.Children()[2].Children()[1].type, Type::Amt);
}

TEST(Types, An_element_without_one_has_that_of_its_name) {
  EXPECT_EQ(One(kAdd, "Colour").type, Type::Enum);
  EXPECT_EQ(One(kAdd, "Colour").firstValue, One(kAdd, "Paint").firstValue);
}

TEST(Enumerations, Count_from_nothing_on_and_from_each_number_that_is_given) {
  std::vector<std::pair<std::string, int>> values;
  for (const auto& value : One(kAdd, "Colour").Values()) values.emplace_back(value.name, value.number);
  EXPECT_THAT(values, ElementsAre(std::pair("Red", 0), std::pair("Green", 1), std::pair("Blue", 7),
                                  std::pair("Black", 8), std::pair("Unseen", 3)));
}

TEST(Enumerations, Have_values_that_not_every_form_knows) {
  const auto values = One(kAdd, "Colour").Values();
  EXPECT_EQ(values[0].known, Availability{});
  EXPECT_EQ(values[1].known, (Availability{.since = {2, 0}}));
  EXPECT_EQ(values[2].known, (Availability{.countries = kCanada}));
  EXPECT_EQ(values[4].known, (Availability{.countries = kNowhere}));
}

TEST(Marks, Tell_obligation_and_repetition) {
  EXPECT_FALSE(One(kAdd, "Free").optional);
  EXPECT_FALSE(One(kAdd, "Free").repeating);
  EXPECT_TRUE(One(kAdd, "Paint").optional);
  EXPECT_FALSE(One(kAdd, "Paint").repeating);
  EXPECT_TRUE(One(kAdd, "Colour").optional);
  EXPECT_TRUE(One(kAdd, "Colour").repeating);
  EXPECT_TRUE(One(kAdd, "Box").repeating);
}

TEST(Marks, Tell_the_first_version_and_the_first_that_knows_it_no_more) {
  const auto old = All(kAdd, "Old");
  ASSERT_EQ(old.size(), 2U) << "one name may stand twice where no form knows both";
  EXPECT_EQ(old[0].known, (Availability{.until = {3, 0}}));
  EXPECT_EQ(old[1].known, (Availability{.since = {3, 0}}));
  EXPECT_EQ(One(kAdd, "Middle").known, (Availability{.since = {1, 1}, .until = {2, 0}}));
  EXPECT_EQ(One(kAdd, "Late").known, (Availability{.sinceInCanada = {3, 0}}));
  EXPECT_EQ(One(kAdd, "Box").known, (Availability{.since = {2, 1}})) << "behind the brackets";
}

TEST(Marks, Tell_the_countries) {
  EXPECT_EQ(One(kAdd, "Canadian").known, (Availability{.since = {2, 0}, .countries = kCanada}));
  EXPECT_EQ(One(kAdd, "Abroad").known.countries, kCanada | kBritain);
  EXPECT_EQ(One(kAdd, "Home").known.countries, kUnitedStates) << "and Australia, which has their form";
  EXPECT_EQ(One(kAdd, "Inner").known.countries, kNowhere);
  EXPECT_EQ(One(kAdd, "Free").known.countries, kEverywhere);
}

TEST(Marks, Tell_the_attribute_that_an_element_may_carry) {
  EXPECT_EQ(Named(kAdd).request[0].attribute, "defMacro");
  EXPECT_EQ(Named(kMod).request[0].attribute, "");
  EXPECT_EQ(One(kAdd, "Tag").attribute, "useMacro");
  EXPECT_EQ(One(kAdd, "Free").attribute, "");
}

TEST(Brackets, Are_aggregates_choices_and_steps) {
  const auto box = One(kAdd, "Box");
  EXPECT_EQ(box.type, Type::Aggregate);
  EXPECT_THAT(Names(box.Children()), ElementsAre("Height", "Width", "Depth"));
  const auto price = One(kAdd, "ORPrice");
  EXPECT_EQ(price.type, Type::Choice);
  EXPECT_FALSE(price.optional);
  EXPECT_THAT(Names(price.Children()), ElementsAre("Price", "PricePercent", "Terms"));
  EXPECT_EQ(price.Children()[2].type, Type::Step);
  const auto priceMod = One(kMod, "ORPriceMod");
  EXPECT_TRUE(priceMod.optional);
  EXPECT_TRUE(priceMod.repeating);
}

TEST(Groups, Stand_for_what_is_in_them) {
  const auto& choice = Named("WidgetQuery").request[0];
  EXPECT_THAT(Names(choice.Children()), ElementsAre("ListID", "WidgetFilter"));
  EXPECT_THAT(Names(choice.Children()[1].Children()), ElementsAre("MaxReturned", "Colour"));
}

TEST(Shared, What_does_not_depend_on_its_user_is_one_list) {
  EXPECT_EQ(One(kAdd, "Box").firstChild, One(kRet, "Box").firstChild);
  EXPECT_EQ(One(kAdd, "ShelfRef").firstChild, One(kMod, "ShelfRef").firstChild);
  EXPECT_NE(One(kAdd, "ShelfRef").firstChild, One(kAdd, "MakerRef").firstChild);
}

}  // namespace
}  // namespace twqb::messages
