#include "adapters/companyfile/Terms.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <pugixml.hpp>

#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/SchemaWalk.h"

namespace twqb::company {

namespace {

constexpr int kMostDays = 36'500;  // more is no date that anybody is paid on

struct Bounds {
  std::string_view field;
  double least;
  double most;
};
constexpr std::array kBounds = {
    Bounds{"StdDueDays", 0, kMostDays},       Bounds{"StdDiscountDays", 0, kMostDays}, Bounds{"DayOfMonthDue", 1, 31},
    Bounds{"DueNextMonthDays", 0, kMostDays}, Bounds{"DiscountDayOfMonth", 1, 31},     Bounds{"DiscountPct", 0, 100},
};

// 0 for a field that is not there.
int ReadDays(pugi::xml_node body, std::string_view field) {
  const auto text = ChildText(body, field);
  int days = 0;
  std::from_chars(text.data(), text.data() + text.size(), days);
  return days;
}

// That day of the month that lies `months` behind the one of `date`, or the month's last where it is shorter.
Date DayOfMonth(Date date, int months, int day) {
  const auto c = date.ToCivil();
  const auto last = Date::FromCivil({.year = c.year, .month = c.month + months + 1, .day = 1}).PlusDays(-1);
  return last.PlusDays(std::min(day - last.ToCivil().day, 0));
}

}  // namespace

void CheckTerms(pugi::xml_node fields) {
  for (const auto& [field, least, most] : kBounds) {
    const auto text = ChildText(fields, field);
    double value = 0;
    if (text.empty() || std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc()) continue;
    if (value < least || value > most) {
      Refuse(status::InvalidValue(field, text, fmt::format("It must be {} to {}.", least, most)));
    }
  }
}

Date DueDate(const FoundRecord& terms, Date date) {
  pugi::xml_document body;
  ParseBody(body, terms.record.body);
  if (terms.kind->name == "StandardTerms") return date.PlusDays(ReadDays(body, "StdDueDays"));
  const int day = ReadDays(body, "DayOfMonthDue");
  int months = 0;
  while (DayOfMonth(date, months, day) < date) ++months;
  // What is made that few days ahead is due a month later.
  const int ahead = ReadDays(body, "DueNextMonthDays");
  if (ahead > 0 && DayOfMonth(date, months, day) <= date.PlusDays(ahead)) ++months;
  return DayOfMonth(date, months, day);
}

}  // namespace twqb::company
