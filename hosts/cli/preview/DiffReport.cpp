#include "cli/preview/DiffReport.h"

#include <fmt/core.h>

#include <algorithm>
#include <functional>
#include <string_view>
#include <vector>

#include "adapters/transcript/TranscriptWriter.h"
#include "cli/options/TableArgument.h"
#include "cli/preview/PreviewReport.h"

namespace twqb::cli {

namespace {

std::string Behind(const std::string& why) { return why.empty() ? std::string() : fmt::format(" ({})", why); }

// --- For people ------------------------------------------------------------------------------------------------------

std::string TakesText(std::string_view transfer, std::string_view side, Takes takes, const std::string& why) {
  switch (takes) {
    case Takes::Yes:
      return fmt::format("a {} takes {}{}", transfer, side, Behind(why));
    case Takes::No:
      return fmt::format("a {} leaves it{}", transfer, Behind(why));
    case Takes::AddsOnceMore:
      return fmt::format("a {} adds it once more{}", transfer, Behind(why));
    case Takes::Refused:
      return fmt::format("a {} would be refused{}", transfer, Behind(why));
    case Takes::Unknown:
      break;
  }
  return fmt::format("a {} does not come to it{}", transfer, Behind(why));
}

std::string RecordText(std::int32_t table, const std::string& key, const std::string& identifier) {
  return RecordName(static_cast<enTables>(table), key.empty() ? identifier : key);
}

std::string FieldsText(const std::vector<FieldChange>& fields) {
  std::string text;
  for (const auto& [field, before, after] : fields) {
    text += fmt::format("    {}: {} -> {}\n", field, FieldText(before), FieldText(after));
  }
  return text;
}

std::string PairText(const DiffPair& pair) {
  auto text =
      fmt::format("{}{} and {}: {}; {}\n", pair.standing == Standing::Line ? "a line of " : "",
                  RecordText(pair.table, pair.key, pair.identifier), pair.name.empty() ? pair.identifier : pair.name,
                  TakesText("send", "BillingDb's side", pair.send, pair.whySend),
                  TakesText("get", "QuickBooks' side", pair.get, pair.whyGet));
  if (!pair.inQuickBooks.empty())
    text += "  QuickBooks, and what BillingDb makes of it\n" + FieldsText(pair.inQuickBooks);
  for (const auto& row : pair.inBilling) {
    text += fmt::format("  BillingDb ({} {}), and what QuickBooks makes of it\n{}", row.place, row.key,
                        FieldsText(row.fields));
  }
  return text;
}

std::string SumText(const DiffSums& sums) {
  auto text = fmt::format("{}: {} linked", TypedName(static_cast<enTables>(sums.table)), sums.linked);
  text += sums.differ == 0 ? ", none differs" : fmt::format(", {} differ{}", sums.differ, sums.differ == 1 ? "s" : "");
  if (sums.lines > 0) text += fmt::format(", {} line{}", sums.lines, sums.lines == 1 ? " differs" : "s differ");
  if (!sums.dead) text += ", links that lead nowhere not known";
  if (sums.dead > 0) text += fmt::format(", {} with a link that leads nowhere", *sums.dead);
  if (!sums.roundTrips) text += ", rows that would come back as others not known";
  if (sums.roundTrips > 0) text += fmt::format(", {} would come back as others", *sums.roundTrips);
  return text + "\n";
}

std::string WholeRows(const std::vector<RoundTrip>& trips) {
  std::string text;
  for (const auto& trip : trips) {
    text += fmt::format("  {}\n{}", RecordText(trip.table, trip.row.key, ""), FieldsText(trip.row.fields));
  }
  return text;
}

std::int64_t Letters(std::string_view text) {
  return std::ranges::count_if(text, [](unsigned char c) { return c > '@' && c != '_' && c != '[' && c != ']'; });
}

// One column of a table in the rows that come back with another value.
struct ColumnTrips {
  struct Trip {
    std::string key;
    const FieldChange* field;

    [[nodiscard]] std::int64_t Lost() const {
      return Letters(field->before.value_or("")) - Letters(field->after.value_or(""));
    }
  };
  std::string column;
  std::vector<Trip> trips = {};
};

std::string ColumnText(ColumnTrips& column) {
  constexpr std::size_t kShown = 3;
  auto& trips = column.trips;
  std::ranges::stable_sort(trips, std::greater(), &ColumnTrips::Trip::Lost);
  const auto lose = std::ranges::count_if(trips, [](const auto& trip) { return trip.Lost() > 0; });
  auto text = fmt::format("    {} of {}{}\n", column.column, trips.size(),
                          lose == 0 ? "" : fmt::format(", {} of which lose{} letters", lose, lose == 1 ? "s" : ""));
  for (std::size_t i = 0; i < std::min(kShown, trips.size()); ++i) {
    text += fmt::format("      {}: {} -> {}\n", trips[i].key, FieldText(trips[i].field->before),
                        FieldText(trips[i].field->after));
  }
  return text;
}

std::string ColumnsInShort(const std::vector<RoundTrip>& trips) {
  std::string text;
  for (auto from = trips.begin(); from != trips.end();) {
    const auto to = std::find_if(from, trips.end(), [&](const auto& trip) { return trip.table != from->table; });
    std::vector<ColumnTrips> columns;
    for (auto trip = from; trip != to; ++trip) {
      for (const auto& field : trip->row.fields) {
        auto column = std::ranges::find(columns, field.field, &ColumnTrips::column);
        if (column == columns.end()) column = columns.insert(column, {.column = field.field});
        column->trips.push_back({.key = trip->row.key, .field = &field});
      }
    }
    text += fmt::format("  {}, {} of them\n", TypedName(static_cast<enTables>(from->table)), to - from);
    for (auto& column : columns) text += ColumnText(column);
    from = to;
  }
  return text + "  (each row whole: \"twqb diff TABLE ID\", or --json)\n";
}

// --- For programs ----------------------------------------------------------------------------------------------------

std::string_view TakesWord(Takes takes) {
  switch (takes) {
    case Takes::No:
      return "leaves";
    case Takes::Yes:
      return "takes";
    case Takes::AddsOnceMore:
      return "addsOnceMore";
    case Takes::Refused:
      return "refused";
    case Takes::Unknown:
      break;
  }
  return "none";
}

EventFields Line(std::string_view kind, std::int32_t table) {
  return {{"diff", kind}, {"table", TypedName(static_cast<enTables>(table))}};
}

EventFields PairFields(const DiffPair& pair) {
  auto fields = Line("pair", pair.table);
  fields["line"] = pair.standing == Standing::Line;
  fields["key"] = pair.key;
  fields["identifier"] = pair.identifier;
  fields["name"] = pair.name;
  fields["send"] = TakesWord(pair.send);
  fields["whySend"] = pair.whySend;
  fields["get"] = TakesWord(pair.get);
  fields["whyGet"] = pair.whyGet;
  fields["inQuickBooks"] = FieldList(pair.inQuickBooks);
  EventList rows;
  for (const auto& row : pair.inBilling) {
    rows.emplace_back(EventFields{{"place", row.place}, {"key", row.key}, {"fields", FieldList(row.fields)}});
  }
  fields["inBilling"] = std::move(rows);
  return fields;
}

}  // namespace

std::string DifferenceText(const Difference& difference, Shown shown) {
  std::string text;
  for (const auto& pair : difference.pairs) text += PairText(pair);
  const auto head = [&text](std::string_view heading) {
    text += fmt::format("{}{}\n", text.empty() ? "" : "\n", heading);
  };
  if (!difference.deadLinks.empty()) {
    head("Links that lead nowhere:");
    for (const auto& link : difference.deadLinks) {
      text += fmt::format("  {} -> {}\n", RecordText(link.table, link.key, link.identifier), link.identifier);
    }
  }
  if (!difference.closed.empty()) {
    head("Where links lead is not known:");
    for (const auto& closed : difference.closed) {
      text += fmt::format("  {}: asked for {}, QuickBooks answers: {}\n",
                          TypedName(static_cast<enTables>(closed.table)), closed.kind, closed.answer);
    }
  }
  if (!difference.roundTrips.empty()) {
    head("Rows that would come back as others, once they are sent and got:");
    text += shown == Shown::Whole ? WholeRows(difference.roundTrips) : ColumnsInShort(difference.roundTrips);
  }
  if (!text.empty()) text += "\n";
  for (const auto& sums : difference.sums) text += SumText(sums);
  return text.empty() ? "Nothing is linked.\n" : text;
}

std::string DifferenceJson(const Difference& difference) {
  std::string text;
  const auto add = [&text](const EventFields& fields) { text += JsonLine(fields) + "\n"; };
  for (const auto& pair : difference.pairs) add(PairFields(pair));
  for (const auto& link : difference.deadLinks) {
    auto fields = Line("deadLink", link.table);
    fields["key"] = link.key;
    fields["identifier"] = link.identifier;
    add(fields);
  }
  for (const auto& closed : difference.closed) {
    auto fields = Line("notKnown", closed.table);
    fields["kind"] = closed.kind;
    fields["status"] = closed.code;
    fields["answer"] = closed.answer;
    add(fields);
  }
  for (const auto& trip : difference.roundTrips) {
    auto fields = Line("roundTrip", trip.table);
    fields["place"] = trip.row.place;
    fields["key"] = trip.row.key;
    fields["fields"] = FieldList(trip.row.fields);
    add(fields);
  }
  for (const auto& sums : difference.sums) {
    auto fields = Line("sums", sums.table);
    fields["linked"] = sums.linked;
    fields["differ"] = sums.differ;
    fields["lines"] = sums.lines;
    fields["dead"] = sums.dead ? EventValue(*sums.dead) : EventValue(nullptr);
    fields["roundTrips"] = sums.roundTrips ? EventValue(*sums.roundTrips) : EventValue(nullptr);
    add(fields);
  }
  return text;
}

}  // namespace twqb::cli
