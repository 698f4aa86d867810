#include "adapters/companyfile/TxnDates.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace twqb::company {

namespace {

constexpr int kDaysPerWeek = 7;

// What a range is counted in: weeks, or a number of months.
struct Period {
  std::string_view name;
  int months = 0;  // 0: a week
};
constexpr std::array kPeriods = {
    Period{"Week", 0},          Period{"Month", 1},         Period{"CalendarQuarter", 3},
    Period{"FiscalQuarter", 3}, Period{"CalendarYear", 12}, Period{"FiscalYear", 12},
};

// The one before, the present one, the one after.
struct Place {
  std::string_view name;
  int steps = 0;
};
constexpr std::array kPlaces = {Place{"This", 0}, Place{"Last", -1}, Place{"Next", 1}};

int Weekday(Date date) {
  // 30 December 1899 was a Saturday.
  constexpr int kFirstWeekday = 6;
  const auto days = date.Midnight().Milliseconds() / Date::kDay;
  return static_cast<int>(((days + kFirstWeekday) % kDaysPerWeek + kDaysPerWeek) % kDaysPerWeek);
}

Date FirstOfMonth(Date date, int months) {
  const auto c = date.ToCivil();
  return Date::FromCivil({.year = c.year, .month = c.month + months, .day = 1});
}

Date BeginOf(const Period& period, Date day) {
  if (period.months == 0) return day.PlusDays(-Weekday(day));
  return FirstOfMonth(day, -((day.ToCivil().month - 1) % period.months));
}

Date Moved(const Period& period, Date begin, int steps) {
  return period.months == 0 ? begin.PlusDays(std::int64_t{steps} * kDaysPerWeek)
                            : FirstOfMonth(begin, steps * period.months);
}

// The day that stands where `day` stands, `steps` periods away; the month's last where it is shorter.
Date SameDay(const Period& period, Date day, int steps) {
  if (period.months == 0) return day.PlusDays(std::int64_t{steps} * kDaysPerWeek);
  const auto first = FirstOfMonth(day, steps * period.months);
  const auto last = FirstOfMonth(first, 1).PlusDays(-1);
  return std::min(first.PlusDays(day.ToCivil().day - 1), last);
}

std::string_view Without(std::string_view text, std::string_view prefix) {
  text.remove_prefix(prefix.size());
  return text;
}

}  // namespace

std::optional<DateRange> RangeOfMacro(std::string_view macro, Date today) {
  constexpr std::string_view kToDate = "ToDate";
  today = today.Midnight();
  if (macro == "All") return DateRange{};
  if (macro == "Today") return DateRange{.from = today, .to = today};
  if (macro == "Yesterday") return DateRange{.from = today.PlusDays(-1), .to = today.PlusDays(-1)};
  if (macro == "NextFourWeeks") {
    const auto begin = Moved(kPeriods[0], BeginOf(kPeriods[0], today), 1);
    return DateRange{.from = begin, .to = begin.PlusDays(4 * kDaysPerWeek - 1)};
  }
  const bool toDate = macro.ends_with(kToDate);
  if (toDate) macro.remove_suffix(kToDate.size());
  const auto* place = std::ranges::find_if(kPlaces, [&](const Place& p) { return macro.starts_with(p.name); });
  if (place == kPlaces.end()) return std::nullopt;
  const auto* period = std::ranges::find(kPeriods, Without(macro, place->name), &Period::name);
  if (period == kPeriods.end() || (toDate && place->steps > 0)) return std::nullopt;

  const auto begin = Moved(*period, BeginOf(*period, today), place->steps);
  const auto end = toDate ? SameDay(*period, today, place->steps) : Moved(*period, begin, 1).PlusDays(-1);
  return DateRange{.from = begin, .to = end};
}

}  // namespace twqb::company
