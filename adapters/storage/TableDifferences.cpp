#include "adapters/storage/TableDifferences.h"

#include <fmt/core.h>

#include <algorithm>
#include <functional>
#include <map>
#include <stdexcept>
#include <string_view>

#include "adapters/storage/Handles.h"

namespace twqb::storage {

namespace {

constexpr int kPatience = 5'000;  // milliseconds
constexpr std::string_view kKind = "kind";

class CantBeRead : public std::exception {};

struct Column {
  std::string name;
  bool isKey = false;
};
struct Shape {
  std::vector<Column> columns;
  bool hasRowId = true;
};

std::string Quoted(std::string_view name) {
  std::string text = "\"";
  for (const char c : name) {
    text += c;
    if (c == '"') text += c;
  }
  return text + '"';
}

class Comparison {
 public:
  Comparison(const std::string& now, const std::string& before, Kinds kinds) : kinds_(kinds) {
    sqlite3* opened = nullptr;
    const int code = Open(now, SQLITE_OPEN_READWRITE, &opened);
    handle_.reset(opened);
    if (code != SQLITE_OK) throw CantBeRead();
    sqlite3_busy_timeout(opened, kPatience);
    Query("ATTACH ? AS before", {before}, [](sqlite3_stmt*) {});
    // One state of it, whoever writes meanwhile.
    if (!storage::Run(opened, "BEGIN")) throw CantBeRead();
  }

  std::vector<TableDifference> All() {
    std::map<std::string, int> tables;  // in which of the two
    for (const auto* schema : {"main", "before"}) {
      const int bit = std::string_view(schema) == "main" ? 1 : 2;
      Query(
          fmt::format("SELECT name FROM {}.sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite~_%' ESCAPE '~'",
                      schema),
          {}, [&](sqlite3_stmt* row) { tables[Text(row, 0)] |= bit; });
    }
    std::vector<TableDifference> all;
    for (const auto& [table, in] : tables) {
      auto found = Compare(table, (in & 1) != 0, (in & 2) != 0);
      all.insert(all.end(), found.begin(), found.end());
    }
    all.push_back(Structure());
    return all;
  }

 private:
  using ByKind = std::map<std::string, TableDifference>;

  static std::string Text(sqlite3_stmt* row, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return text == nullptr ? "" : text;
  }

  template <typename Take>
  void Query(const std::string& sql, const std::vector<std::string>& values, Take take) {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(handle_.get(), sql.c_str(), -1, &prepared, nullptr) != SQLITE_OK) throw CantBeRead();
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(prepared, &sqlite3_finalize);
    for (std::size_t i = 0; i < values.size(); ++i) {
      sqlite3_bind_text(prepared, static_cast<int>(i) + 1, values[i].c_str(), -1, SQLITE_TRANSIENT);
    }
    int code = SQLITE_OK;
    while ((code = sqlite3_step(prepared)) == SQLITE_ROW) take(prepared);
    if (code != SQLITE_DONE) throw CantBeRead();
  }

  // Definitions of tables, views, triggers and indexes, whether rows stand behind them or not.
  TableDifference Structure() {
    const auto count = [&](const std::string& from) {
      std::int64_t counted = 0;
      Query(fmt::format("SELECT count(*) FROM {} n WHERE n.name NOT LIKE 'sqlite~_%' ESCAPE '~'", from), {},
            [&](sqlite3_stmt* row) { counted = sqlite3_column_int64(row, 0); });
      return counted;
    };
    const auto differing = [&](std::string_view of, std::string_view with, std::string_view condition) {
      return count(
          fmt::format("(SELECT name FROM {}.sqlite_schema o WHERE {} (SELECT 1 FROM {}.sqlite_schema w WHERE "
                      "w.type = o.type AND w.name = o.name{}))",
                      of, condition.empty() ? "NOT EXISTS" : "EXISTS", with, condition));
    };
    return {.table = std::string(kStructure),
            .before = count("before.sqlite_schema"),
            .now = count("main.sqlite_schema"),
            .added = differing("main", "before", ""),
            .changed = differing("main", "before", " AND w.sql IS NOT o.sql"),
            .gone = differing("before", "main", "")};
  }

  Shape ShapeOf(const std::string& schema, const std::string& table) {
    Shape shape;
    Query(fmt::format("PRAGMA {}.table_info({})", schema, Quoted(table)), {}, [&](sqlite3_stmt* row) {
      shape.columns.push_back({.name = Text(row, 1), .isKey = sqlite3_column_int(row, 5) > 0});
    });
    Query("SELECT wr FROM pragma_table_list(?) WHERE schema = ?", {table, schema},
          [&](sqlite3_stmt* row) { shape.hasRowId = sqlite3_column_int(row, 0) == 0; });
    return shape;
  }

  static bool HasKind(const Shape& shape) {
    return std::ranges::find(shape.columns, kKind, &Column::name) != shape.columns.end();
  }

  std::vector<TableDifference> Compare(const std::string& table, bool isNow, bool wasBefore) {
    const auto shape = ShapeOf(isNow ? "main" : "before", table);
    const auto earlier = isNow && wasBefore ? ShapeOf("before", table) : shape;
    const bool hasKind = kinds_ == Kinds::Apart && HasKind(shape) && HasKind(earlier);
    ByKind kinds;
    const auto count = [&](const std::string& from, std::string_view alias, std::int64_t TableDifference::*field) {
      const auto kind = hasKind ? fmt::format("{}.kind", alias) : std::string("''");
      Query(fmt::format("SELECT {0}, count(*) FROM {1} GROUP BY {0}", kind, from), {},
            [&](sqlite3_stmt* row) { kinds[Text(row, 0)].*field = sqlite3_column_int64(row, 1); });
    };
    const auto now = "main." + Quoted(table) + " n";
    const auto before = "before." + Quoted(table) + " b";
    if (isNow) count(now, "n", &TableDifference::now);
    if (wasBefore) count(before, "b", &TableDifference::before);
    if (isNow && wasBefore) {
      CountChanges(shape, earlier, now, before, count);
    } else {
      for (auto& [kind, difference] : kinds)
        (isNow ? difference.added : difference.gone) = difference.now + difference.before;
    }
    std::vector<TableDifference> all;
    for (auto& [kind, difference] : kinds) {
      if (kind.empty() && difference.now == 0 && difference.before == 0 && hasKind) continue;
      difference.table = table;
      difference.kind = kind;
      all.push_back(difference);
    }
    return all;
  }

  template <typename Count>
  static void CountChanges(const Shape& shape, const Shape& earlier, const std::string& now, const std::string& before,
                           Count count) {
    std::string same = shape.hasRowId ? "b.rowid = n.rowid" : "";
    std::string differs;
    for (const auto& column : shape.columns) {
      const auto name = Quoted(column.name);
      if (column.isKey && !shape.hasRowId)
        same += fmt::format("{}b.{} = n.{}", same.empty() ? "" : " AND ", name, name);
      if (std::ranges::find(earlier.columns, column.name, &Column::name) == earlier.columns.end()) continue;
      differs += fmt::format("{}n.{} COLLATE BINARY IS NOT b.{}", differs.empty() ? "" : " OR ", name, name);
    }
    // A column more or less changes every row.
    if (shape.columns.size() != earlier.columns.size() || differs.empty()) differs = "1";
    count(fmt::format("{} JOIN {} ON {} WHERE {}", now, before, same, differs), "n", &TableDifference::changed);
    count(fmt::format("{} WHERE NOT EXISTS (SELECT 1 FROM {} WHERE {})", now, before, same), "n",
          &TableDifference::added);
    count(fmt::format("{} WHERE NOT EXISTS (SELECT 1 FROM {} WHERE {})", before, now, same), "b",
          &TableDifference::gone);
  }

  Kinds kinds_;
  Handle handle_;
};

}  // namespace

std::optional<std::vector<TableDifference>> TableDifferences(const std::string& now, const std::string& before,
                                                             Kinds kinds) {
  try {
    return Comparison(now, before, kinds).All();
  } catch (const CantBeRead&) {
    return std::nullopt;
  }
}

}  // namespace twqb::storage
