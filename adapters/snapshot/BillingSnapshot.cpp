#include "adapters/snapshot/BillingSnapshot.h"

#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "adapters/sqlite/Columns.h"
#include "adapters/sqlite/Database.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::snapshot {

namespace {

std::string Quoted(std::string_view name) { return fmt::format("\"{}\"", ReplaceAll(name, "\"", "\"\"")); }

// A column as a table is made with it.
struct DeclaredColumn {
  std::string name;
  std::string type;
  std::string rest = {};  // NOT NULL, DEFAULT
  int placeInKey = 0;     // from 1; 0: it is no part of it

  friend bool operator==(const DeclaredColumn&, const DeclaredColumn&) = default;
};
using Declared = std::vector<DeclaredColumn>;

bool IsText(std::string_view type) { return type.starts_with("VARCHAR") || type.starts_with("TEXT"); }
std::string TextType(int size) { return size > 0 ? fmt::format("VARCHAR({})", size) : "TEXT"; }

// Of a column that nobody here knows, what its first value is.
std::string TypeOf(ado::Recordset& rows, const std::string& name) {
  if (const int size = rows.DefinedSize(name); size > 0) return TextType(size);
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    const auto value = rows.Field(name);
    if (IsNull(value)) continue;
    if (std::holds_alternative<Date>(value)) return "DATETIME";
    if (std::holds_alternative<Currency>(value)) return "DECIMAL(19,4)";
    if (std::holds_alternative<double>(value)) return "DOUBLE";
    return std::holds_alternative<std::string>(value) ? "TEXT" : "INTEGER";
  }
  return "TEXT";
}

class BillingReader {
 public:
  BillingReader(ado::Connection& source, const std::string& path, const Watch& watch)
      : source_(source), path_(path), watch_(watch), made_(SqliteProvider().CreateConnection()) {
    CreateSqliteDatabase(path);
    made_->SetConnectionString("Provider=SQLITE;Data Source=" + Quoted(path));
    made_->Open();
  }

  void Read(std::span<const std::string> schema) {
    for (const auto& statement : schema) {
      if (IsTable(statement)) made_->Execute(statement, nullptr);
    }
    for (const auto& table : Named("table")) ReadTable(table);
    for (const auto& statement : schema) {
      if (!IsTable(statement)) MakeBeside(statement);
    }
    for (const auto& view : Named("view")) {
      if (!IsThere(view)) made_->Execute("DROP VIEW " + Quoted(view), nullptr);
    }
    made_->Close();
  }

 private:
  static bool IsTable(std::string_view statement) { return statement.find("CREATE TABLE") != std::string_view::npos; }

  [[nodiscard]] std::vector<std::string> Named(std::string_view type) {
    std::vector<std::string> found;
    const auto names =
        made_->Execute(fmt::format("SELECT name FROM sqlite_master WHERE type = '{}' ORDER BY rowid", type), nullptr);
    for (; !names->Eof(); names->MoveNext()) found.push_back(ToText(names->FieldAt(0)));
    return found;
  }

  [[nodiscard]] bool IsThere(const std::string& view) {
    watch_("the view " + view);
    try {
      source_.OpenRecordset(fmt::format("SELECT * FROM {} WHERE 1 = 0;", view), ado::CursorType::Static,
                            ado::LockType::ReadOnly);
      return true;
    } catch (const PlatformError& raised) {
      if (raised.number() != error::kNoSuchTable) Refuse(view, raised);
      return false;
    }
  }

  // What indexes and views need, this database may lack.
  void MakeBeside(const std::string& statement) {
    try {
      made_->Execute(statement, nullptr);
    } catch (const PlatformError& raised) {
      if (raised.number() != error::kNoSuchTable && raised.number() != error::kBadSyntax) throw;
    }
  }

  void ReadTable(const std::string& table) {
    watch_("the table " + table);
    std::unique_ptr<ado::Recordset> rows;
    try {
      rows = source_.OpenRecordset(fmt::format("SELECT * FROM {};", table), ado::CursorType::Static,
                                   ado::LockType::ReadOnly);
    } catch (const PlatformError& raised) {
      if (raised.number() != error::kNoSuchTable) Refuse(table, raised);
      made_->Execute("DROP TABLE " + Quoted(table), nullptr);
      return;
    }
    try {
      Shape(table, *rows);
      Fill(table, *rows);
      rows->Close();
    } catch (const PlatformError& raised) {
      Refuse(table, raised);
    }
  }

  [[nodiscard]] Declared ColumnsOf(const std::string& table) {
    Declared columns;
    const auto rows = made_->Execute(
        fmt::format("SELECT name, type, \"notnull\", dflt_value, pk FROM pragma_table_info('{}')", table), nullptr);
    for (; !rows->Eof(); rows->MoveNext()) {
      int field = 0;
      DeclaredColumn column;
      column.name = ToText(rows->FieldAt(field++));
      column.type = ToText(rows->FieldAt(field++));
      if (ToText(rows->FieldAt(field++)) != "0") column.rest += " NOT NULL";
      if (const auto value = rows->FieldAt(field++); !IsNull(value)) column.rest += " DEFAULT " + ToText(value);
      column.placeInKey = static_cast<int>(LeadingNumber(ToText(rows->FieldAt(field++))));
      columns.push_back(std::move(column));
    }
    return columns;
  }

  // The table has the columns that the database's has, under its names and with its lengths.
  void Shape(const std::string& table, ado::Recordset& rows) {
    const auto known = ColumnsOf(table);
    Declared wanted;
    for (int field = 0; field < rows.FieldCount(); ++field) {
      const auto name = rows.FieldName(field);
      const auto same = std::ranges::find_if(known, [&](const auto& column) { return SameName(column.name, name); });
      auto column = same == known.end() ? DeclaredColumn{.name = name, .type = TypeOf(rows, name)} : *same;
      if (same != known.end() && IsText(column.type)) column.type = TextType(rows.DefinedSize(name));
      wanted.push_back(std::move(column));
    }
    if (wanted == known) return;
    made_->Execute("DROP TABLE " + Quoted(table), nullptr);
    std::vector<std::string> parts;
    for (const auto& column : wanted) parts.push_back(Quoted(column.name) + " " + column.type + column.rest);
    if (const auto key = KeyOf(known, wanted); !key.empty()) parts.push_back("PRIMARY KEY (" + key + ")");
    made_->Execute(fmt::format("CREATE TABLE {} ({})", Quoted(table), Join(parts, ", ")), nullptr);
  }

  // Empty where the database lacks a part of it.
  static std::string KeyOf(const Declared& known, const Declared& wanted) {
    const auto size = std::ranges::count_if(known, [](const auto& column) { return column.placeInKey > 0; });
    std::vector<std::string> parts;
    for (int place = 1; place <= size; ++place) {
      const auto part = std::ranges::find(wanted, place, &DeclaredColumn::placeInKey);
      if (part == wanted.end()) return {};
      parts.push_back(Quoted(part->name));
    }
    return Join(parts, ", ");
  }

  // By the engine itself: what stands in a column of dates and is none has to come along.
  void Fill(const std::string& table, ado::Recordset& rows) {
    sqlite::Database file(std::make_shared<sqlite::EnginePool>(), path_, sqlite::Access::ReadWrite,
                          sqlite::kBusyPatience);
    const auto run = [&](std::string_view statement) { file.Prepare(statement, sqlite::Use::Once).Step(); };
    const int columns = rows.FieldCount();
    const std::vector<std::string> marks(static_cast<std::size_t>(columns), "?");
    run("BEGIN");
    {
      auto insert =
          file.Prepare(fmt::format("INSERT INTO {} VALUES ({})", Quoted(table), Join(marks, ", ")), sqlite::Use::Again);
      if (!rows.Eof()) rows.MoveFirst();
      for (int seen = 0; !rows.Eof(); rows.MoveNext()) {
        constexpr int kBetweenLooks = 1000;
        if (++seen % kBetweenLooks == 0) watch_("the table " + table);
        for (int column = 0; column < columns; ++column) sqlite::Bind(insert, column + 1, rows.FieldAt(column));
        insert.Step();
        insert.Reset();
      }
    }
    run("COMMIT");
    file.Close();
  }

  [[noreturn]] static void Refuse(const std::string& table, const PlatformError& raised) {
    throw SnapshotError(fmt::format("BillingDb can't be read: its table {}. {}", table, raised.description()));
  }

  ado::Connection& source_;
  const std::string& path_;
  const Watch& watch_;
  std::unique_ptr<ado::Connection> made_;
};

}  // namespace

void ReadBilling(ado::Connection& source, const std::string& path, std::span<const std::string> schema,
                 const Watch& watch) {
  BillingReader(source, path, watch).Read(schema);
}

}  // namespace twqb::snapshot
