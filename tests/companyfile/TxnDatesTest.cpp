#include "TxnTest.h"
#include "adapters/companyfile/TxnDates.h"
#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

struct Macro {
  std::string name;
  std::string from;
  std::string to;
};

std::string RangeText(std::string_view macro, const char* today) {
  const auto range = RangeOfMacro(macro, messages::ParseDateText(today).value());
  if (!range) return "none";
  const auto text = [](const std::optional<Date>& date) {
    return date ? messages::DateText(*date) : std::string("open");
  };
  return text(range->from) + " to " + text(range->to);
}

class DateMacro : public testing::TestWithParam<Macro> {};

// 5 March 2008 was a Wednesday.
TEST_P(DateMacro, Means_a_range_around_today) {
  EXPECT_EQ(RangeText(GetParam().name, "2008-03-05"), GetParam().from + " to " + GetParam().to);
}

const std::vector<Macro> kMacros = {{"All", "open", "open"},
                                    {"Today", "2008-03-05", "2008-03-05"},
                                    {"ThisWeek", "2008-03-02", "2008-03-08"},
                                    {"ThisWeekToDate", "2008-03-02", "2008-03-05"},
                                    {"ThisMonth", "2008-03-01", "2008-03-31"},
                                    {"ThisMonthToDate", "2008-03-01", "2008-03-05"},
                                    {"ThisCalendarQuarter", "2008-01-01", "2008-03-31"},
                                    {"ThisCalendarQuarterToDate", "2008-01-01", "2008-03-05"},
                                    {"ThisFiscalQuarter", "2008-01-01", "2008-03-31"},
                                    {"ThisFiscalQuarterToDate", "2008-01-01", "2008-03-05"},
                                    {"ThisCalendarYear", "2008-01-01", "2008-12-31"},
                                    {"ThisCalendarYearToDate", "2008-01-01", "2008-03-05"},
                                    {"ThisFiscalYear", "2008-01-01", "2008-12-31"},
                                    {"ThisFiscalYearToDate", "2008-01-01", "2008-03-05"},
                                    {"Yesterday", "2008-03-04", "2008-03-04"},
                                    {"LastWeek", "2008-02-24", "2008-03-01"},
                                    {"LastWeekToDate", "2008-02-24", "2008-02-27"},
                                    {"LastMonth", "2008-02-01", "2008-02-29"},
                                    {"LastMonthToDate", "2008-02-01", "2008-02-05"},
                                    {"LastCalendarQuarter", "2007-10-01", "2007-12-31"},
                                    {"LastCalendarQuarterToDate", "2007-10-01", "2007-12-05"},
                                    {"LastFiscalQuarter", "2007-10-01", "2007-12-31"},
                                    {"LastFiscalQuarterToDate", "2007-10-01", "2007-12-05"},
                                    {"LastCalendarYear", "2007-01-01", "2007-12-31"},
                                    {"LastCalendarYearToDate", "2007-01-01", "2007-03-05"},
                                    {"LastFiscalYear", "2007-01-01", "2007-12-31"},
                                    {"LastFiscalYearToDate", "2007-01-01", "2007-03-05"},
                                    {"NextWeek", "2008-03-09", "2008-03-15"},
                                    {"NextFourWeeks", "2008-03-09", "2008-04-05"},
                                    {"NextMonth", "2008-04-01", "2008-04-30"},
                                    {"NextCalendarQuarter", "2008-04-01", "2008-06-30"},
                                    {"NextCalendarYear", "2009-01-01", "2009-12-31"},
                                    {"NextFiscalQuarter", "2008-04-01", "2008-06-30"},
                                    {"NextFiscalYear", "2009-01-01", "2009-12-31"}};

INSTANTIATE_TEST_SUITE_P(Published, DateMacro, testing::ValuesIn(kMacros),
                         [](const auto& test) { return test.param.name; });

TEST(DateMacros, All_that_are_published_are_known) {
  const auto* query = messages::FindMessage("InvoiceQueryRq");
  std::vector<std::string> published;
  const auto collect = [&](const auto& self, std::span<const messages::Element> rows) -> void {
    for (const auto& row : rows) {
      if (row.name == "DateMacro") {
        for (const auto& value : row.Values()) published.emplace_back(value.name);
      }
      self(self, row.Children());
    }
  };
  collect(collect, query->request);
  std::vector<std::string> tested;
  for (const auto& macro : kMacros) tested.push_back(macro.name);
  EXPECT_EQ(published, tested);
}

TEST(DateMacros, At_the_ends_of_weeks_months_and_years_keep_to_the_calendar) {
  EXPECT_EQ(RangeText("ThisWeek", "2008-03-02"), "2008-03-02 to 2008-03-08");
  EXPECT_EQ(RangeText("ThisWeek", "2008-03-08"), "2008-03-02 to 2008-03-08");
  EXPECT_EQ(RangeText("LastMonthToDate", "2008-03-31"), "2008-02-01 to 2008-02-29");
  EXPECT_EQ(RangeText("LastMonth", "2008-01-31"), "2007-12-01 to 2007-12-31");
  EXPECT_EQ(RangeText("NextMonth", "2008-12-31"), "2009-01-01 to 2009-01-31");
  EXPECT_EQ(RangeText("LastCalendarYearToDate", "2008-02-29"), "2007-01-01 to 2007-02-28");
  EXPECT_EQ(RangeText("NextCalendarQuarter", "2008-11-15"), "2009-01-01 to 2009-03-31");
}

TEST(DateMacros, What_is_not_published_is_none) {
  for (const char* name : {"", "Tomorrow", "This", "NextWeekToDate", "LastDecade", "thisweek"}) {
    EXPECT_EQ(RangeText(name, "2008-03-05"), "none") << name;
  }
}

}  // namespace

}  // namespace twqb::company
