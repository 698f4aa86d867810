// Reading expense codes: items of three kinds, asked for in one set and taken over into one list.

#include <gtest/gtest.h>

#include "platform/PlatformError.h"
#include "tests/engine/ReaderHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

constexpr int kOk = 0;
constexpr int kNothing = 1;
constexpr int kIncomplete = 500;
constexpr int kRefused = 3250;

// An item for each identifier.
std::string Items(std::string_view record, const Texts& ids) {
  std::string records;
  for (const auto& id : ids) records += fmt::format("<{0}><ListID>{1}</ListID></{0}>", record, id);
  return records;
}

class ItemsHouse : public ReaderHouse {
 public:
  explicit ItemsHouse(std::string_view faults = {}) : ReaderHouse(enExpenseCodes, faults) {}

  struct Answer {
    int status = kOk;
    Texts ids = {};
  };
  bool ReadAnswered(const Answer& other, const Answer& inventory, const Answer& nonInventory,
                    const ReadFilters& filters = {}) {
    AnswerWith({Canned("ItemOtherChargeQuery", "ItemOtherChargeRet", other),
                Canned("ItemInventoryQuery", "ItemInventoryRet", inventory),
                Canned("ItemNonInventoryQuery", "ItemNonInventoryRet", nonInventory)});
    return Read(filters);
  }
  [[nodiscard]] std::string Keys() const { return FieldOfAll("ListID"); }

 private:
  static CannedAnswer Canned(std::string_view message, std::string_view record, const Answer& answer) {
    return {.message = message, .records = Items(record, answer.ids), .status = answer.status, .text = "No."};
  }
};

TEST(ExpenseCodeReader, A_whole_list_takes_all_three_kinds_in_the_order_of_the_queries) {
  ItemsHouse house;
  EXPECT_TRUE(house.ReadAnswered({.ids = {"o1", "o2"}}, {.ids = {"i1"}}, {.ids = {"n1"}}));
  EXPECT_EQ(house.Keys(), "o1 o2 i1 n1 ");
  Texts kinds;
  for (const auto& record : house.records) kinds.push_back(record.GetAsString());
  EXPECT_EQ(kinds, (Texts{"ItemOtherChargeRet", "ItemOtherChargeRet", "ItemInventoryRet", "ItemNonInventoryRet"}));
}

TEST(ExpenseCodeReader, A_whole_list_passes_over_a_further_kind_that_is_not_answered_with_records) {
  for (const int status : {kNothing, kIncomplete, kRefused}) {
    ItemsHouse house;
    EXPECT_TRUE(house.ReadAnswered({.ids = {"o1"}}, {.status = status}, {.ids = {"n1"}}));
    EXPECT_EQ(house.Keys(), "o1 n1 ");
    EXPECT_FALSE(Vars().g_NoQBRecords);
    EXPECT_TRUE(house.BoxTexts().empty());
  }
  ItemsHouse house;
  EXPECT_TRUE(house.ReadAnswered({.ids = {"o1"}}, {.ids = {"i1"}}, {.status = kNothing}));
  EXPECT_EQ(house.Keys(), "o1 i1 ");
}

TEST(ExpenseCodeReader, Without_other_charges_nothing_is_read_though_further_kinds_have_records) {
  ItemsHouse house;
  EXPECT_FALSE(house.ReadAnswered({.status = kNothing}, {.ids = {"i1"}}, {.ids = {"n1"}}));
  EXPECT_EQ(house.records.Count(), 0U);
  EXPECT_TRUE(Vars().g_NoQBRecords);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ExpenseCodeReader, A_single_other_charge_is_read_alone) {
  ItemsHouse house;
  EXPECT_TRUE(house.ReadAnswered({.ids = {"o1"}}, {.ids = {"i1"}}, {.ids = {"n1"}}, {.strID = "o1"}));
  EXPECT_EQ(house.Keys(), "o1 ");
}

TEST(ExpenseCodeReader, A_single_inventory_item_is_read_alone) {
  ItemsHouse house;
  EXPECT_TRUE(house.ReadAnswered({.status = kIncomplete}, {.ids = {"i1"}}, {.ids = {"n1"}}, {.strID = "i1"}));
  EXPECT_EQ(house.Keys(), "i1 ");
}

TEST(ExpenseCodeReader, A_single_non_inventory_item_is_read_where_the_other_kinds_have_none) {
  for (const int inventory : {kNothing, kIncomplete, kRefused}) {
    ItemsHouse house;
    EXPECT_TRUE(house.ReadAnswered({.status = kIncomplete}, {.status = inventory}, {.ids = {"n1"}}, {.strID = "n1"}));
    EXPECT_EQ(house.Keys(), "n1 ");
    EXPECT_TRUE(house.BoxTexts().empty());
  }
}

TEST(ExpenseCodeReader, An_item_that_no_kind_knows_is_False_in_silence) {
  ItemsHouse house;
  EXPECT_FALSE(
      house.ReadAnswered({.status = kIncomplete}, {.status = kIncomplete}, {.status = kIncomplete}, {.strID = "gone"}));
  EXPECT_FALSE(Vars().g_NoQBRecords);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(ExpenseCodeReader, An_incomplete_first_query_of_a_whole_list_reads_one_further_kind_alone) {
  ItemsHouse house;
  EXPECT_TRUE(house.ReadAnswered({.status = kIncomplete}, {.ids = {"i1"}}, {.ids = {"n1"}}));
  EXPECT_EQ(house.Keys(), "i1 ");
}

TEST(ExpenseCodeReader, A_refusal_of_the_first_query_is_told_and_is_False) {
  ItemsHouse house;
  EXPECT_FALSE(house.ReadAnswered({.status = kRefused}, {.ids = {"i1"}}, {.ids = {"n1"}}));
  EXPECT_EQ(house.BoxTexts(), Texts{RefusalText("No.", kRefused, "Info")});
  EXPECT_EQ(house.records.Count(), 0U);
}

TEST(ExpenseCodeReader, Many_items_show_no_text_of_their_own) {
  ItemsHouse house;
  EXPECT_TRUE(house.ReadAnswered({.ids = {"o1", "o2", "o3"}}, {.ids = {"i1"}}, {.ids = {"n1"}}));
  EXPECT_EQ(house.FormTexts(), Texts{"Reading ...Expense Codes (QB)(may take some time)"});
}

TEST(ExpenseCodeReader, A_key_that_comes_twice_is_told_in_a_box_of_its_own_and_the_other_kinds_are_still_taken) {
  ItemsHouse house;
  EXPECT_TRUE(house.ReadAnswered({.ids = {"1", "2"}}, {.ids = {"3", "2", "4"}}, {.ids = {"5"}}));
  EXPECT_EQ(house.Keys(), "1 2 3 5 ");
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text, fmt::format("Error in 'GetQBExpenseCodeRecordsInCollectionObject()' :- {}\r\nError No = 457",
                                  ErrorText(error::kKeyInUse)));
  EXPECT_EQ(box.title, "Error");
  EXPECT_FALSE(house.desk.Form());
}

TEST(ExpenseCodeReader, A_date_that_is_none_is_told_in_a_box_of_its_own) {
  ItemsHouse house;
  EXPECT_TRUE(house.ReadAnswered({.ids = {"o1"}}, {.ids = {"i1"}}, {.ids = {"n1"}},
                                 {.strFromDate = "soon", .strToDate = "3/5/2008"}));
  EXPECT_EQ(house.Requests("ItemOtherChargeQueryRq").back(), "<ActiveStatus>All</ActiveStatus>");
  EXPECT_EQ(house.Requests("ItemNonInventoryQueryRq").size(), 1U);
  EXPECT_EQ(house.BoxTexts(), Texts{fmt::format("Error in 'ApplyQBExpenseCodeFilters()' :- {}\r\nError No = 13",
                                                ErrorText(error::kConversion))});
  EXPECT_EQ(house.Keys(), "o1 i1 n1 ");
}

TEST(ExpenseCodeReader, Records_are_added_to_the_list_in_hand) {
  ItemsHouse house;
  EXPECT_TRUE(house.ReadAnswered({.ids = {"o1"}}, {.status = kNothing}, {.status = kNothing}));
  EXPECT_TRUE(house.ReadAnswered({.ids = {"o2"}}, {.status = kNothing}, {.status = kNothing}));
  EXPECT_EQ(house.Keys(), "o1 o2 ");
}

TEST(ExpenseCodeReader, An_answer_that_lacks_a_kind_is_told_under_the_readers_name) {
  ItemsHouse house;
  house.AnswerWith({{.message = "ItemOtherChargeQuery", .records = Items("ItemOtherChargeRet", {"o1"})}});
  EXPECT_FALSE(house.Read());
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].starts_with("Error #: 91(5B) -- "));
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("ApplyQBFiltersAndReadRecords")));
  EXPECT_FALSE(house.desk.Form());
}

}  // namespace
}  // namespace twqb
