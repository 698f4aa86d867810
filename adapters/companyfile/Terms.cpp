#include "adapters/companyfile/Terms.h"

#include <algorithm>
#include <charconv>
#include <pugixml.hpp>

#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/SchemaWalk.h"

namespace twqb::company {

namespace {

constexpr int kMostDays = 36'500;  // more is no date that anybody is paid on

// 0 for a field that is not there.
int ReadDays(pugi::xml_node body, std::string_view field) {
  const auto text = ChildText(body, field);
  int days = 0;
  std::from_chars(text.data(), text.data() + text.size(), days);
  return std::clamp(days, 0, kMostDays);
}

// That day of the month that lies `months` behind the one of `date`, or the month's last where it is shorter.
Date DayOfMonth(Date date, int months, int day) {
  const auto c = date.ToCivil();
  const auto last = Date::FromCivil({.year = c.year, .month = c.month + months + 1, .day = 1}).PlusDays(-1);
  return last.PlusDays(std::min(std::max(day, 1) - last.ToCivil().day, 0));
}

}  // namespace

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
