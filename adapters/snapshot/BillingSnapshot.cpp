#include "adapters/snapshot/BillingSnapshot.h"

#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
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
  std::string rest = {};  // DEFAULT
  int placeInKey = 0;     // from 1; 0: it is no part of it
  bool isNotNull = false;
  bool isItsOwn = false;  // the database's, and not one of those that BillingDb has

  friend bool operator==(const DeclaredColumn&, const DeclaredColumn&) = default;
};
using Declared = std::vector<DeclaredColumn>;

// Which of our rules a table has. The database's rows go by its own rules, and may break ours.
enum class Rules : std::uint8_t { All, NullsAllowed, None };

bool IsText(std::string_view type) { return type.starts_with("VARCHAR") || type.starts_with("TEXT"); }
std::string TextType(int size) { return size > 0 ? fmt::format("VARCHAR({})", size) : "TEXT"; }

// Bytes (pictures, versions of rows) are no value that a transfer could take: in a column of the database's own, which
// none looks at, nothing stands in their place.
template <typename Read>
Value NullIfNoValue(const Read& read) {
  try {
    return read();
  } catch (const PlatformError& raised) {
    if (raised.number() != error::kConversion) throw;
    return Null{};
  }
}

// Servers compare a BIT as 1, and the databases of the Jet family a Yes as -1.
enum class TrueNumber : std::int8_t { One = 1, MinusOne = -1 };
TrueNumber TrueNumberOf(std::string_view provider) {
  const auto name = UpperCase(provider);
  const auto has = [&](std::string_view part) { return name.find(part) != std::string::npos; };
  const bool isJet = name.starts_with("JET") || has(".JET.") || has(".ACE.");
  return isJet ? TrueNumber::MinusOne : TrueNumber::One;
}

// The rows of a table, just opened, which are gone over more than once. Of none there is no first to move to.
class TableRows {
 public:
  explicit TableRows(ado::Recordset& set) : set_(set), isEmpty_(set.Eof()) {}

  [[nodiscard]] ado::Recordset& Set() const { return set_; }
  [[nodiscard]] ado::Recordset& FromTheFirst() const {
    if (!isEmpty_) set_.MoveFirst();
    return set_;
  }

 private:
  ado::Recordset& set_;
  bool isEmpty_;
};

// Of a column that nobody here knows, what its first value is.
std::string TypeOf(const TableRows& table, const std::string& name) {
  if (const int size = table.Set().DefinedSize(name); size > 0) return TextType(size);
  for (auto& rows = table.FromTheFirst(); !rows.Eof(); rows.MoveNext()) {
    const auto value = NullIfNoValue([&] { return rows.Field(name); });
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

  // What indexes and views need, this database may lack, and what is to be unique it may have twice.
  void MakeBeside(const std::string& statement) {
    try {
      made_->Execute(statement, nullptr);
    } catch (const PlatformError& raised) {
      if (raised.number() != error::kNoSuchTable && raised.number() != error::kBadSyntax &&
          raised.number() != error::kConstraint) {
        throw;
      }
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
      const auto known = ColumnsOf(table);
      const TableRows all(*rows);
      const auto wanted = Wanted(known, all);
      if (wanted != known) Make(table, wanted, KeyOf(known, wanted), Rules::All);
      if (!Takes(table, wanted, all)) {
        Make(table, wanted, KeyOf(known, wanted), Rules::NullsAllowed);
        if (!Takes(table, wanted, all)) {
          Make(table, wanted, {}, Rules::None);
          Fill(table, wanted, all);
        }
      }
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
      column.isNotNull = ToText(rows->FieldAt(field++)) != "0";
      if (const auto value = rows->FieldAt(field++); !IsNull(value)) column.rest += " DEFAULT " + ToText(value);
      column.placeInKey = static_cast<int>(LeadingNumber(ToText(rows->FieldAt(field++))));
      columns.push_back(std::move(column));
    }
    return columns;
  }

  // The table has the columns that the database's has, under its names and with its lengths.
  static Declared Wanted(const Declared& known, const TableRows& all) {
    Declared wanted;
    const auto& rows = all.Set();
    for (int field = 0; field < rows.FieldCount(); ++field) {
      const auto name = rows.FieldName(field);
      const auto same = std::ranges::find_if(known, [&](const auto& column) { return SameName(column.name, name); });
      auto column =
          same == known.end() ? DeclaredColumn{.name = name, .type = TypeOf(all, name), .isItsOwn = true} : *same;
      if (same != known.end() && IsText(column.type)) column.type = TextType(rows.DefinedSize(name));
      wanted.push_back(std::move(column));
    }
    return wanted;
  }

  void Make(const std::string& table, const Declared& columns, const std::string& key, Rules rules) {
    made_->Execute("DROP TABLE " + Quoted(table), nullptr);
    std::vector<std::string> parts;
    for (const auto& column : columns) {
      const auto* bound = column.isNotNull && rules == Rules::All ? " NOT NULL" : "";
      parts.push_back(Quoted(column.name) + " " + column.type + bound + column.rest);
    }
    if (!key.empty()) parts.push_back("PRIMARY KEY (" + key + ")");
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

  // False when a row breaks a rule of the table, which has no row then.
  bool Takes(const std::string& table, const Declared& columns, const TableRows& rows) {
    try {
      Fill(table, columns, rows);
      return true;
    } catch (const PlatformError& raised) {
      if (raised.number() != error::kConstraint) throw;
      return false;
    }
  }

  // By the engine itself: what stands in a column of dates and is none has to come along.
  void Fill(const std::string& table, const Declared& columns, const TableRows& all) {
    sqlite::Database file(std::make_shared<sqlite::EnginePool>(), path_, sqlite::Access::ReadWrite,
                          sqlite::kBusyPatience);
    const auto run = [&](std::string_view statement) { file.Prepare(statement, sqlite::Use::Once).Step(); };
    const std::vector<std::string> marks(columns.size(), "?");
    run("BEGIN");
    {
      auto insert =
          file.Prepare(fmt::format("INSERT INTO {} VALUES ({})", Quoted(table), Join(marks, ", ")), sqlite::Use::Again);
      auto& rows = all.FromTheFirst();
      for (int seen = 0; !rows.Eof(); rows.MoveNext()) {
        constexpr int kBetweenLooks = 1000;
        if (++seen % kBetweenLooks == 0) watch_("the table " + table);
        int field = 0;
        for (const auto& column : columns) {
          const auto read = [&] { return rows.FieldAt(field); };
          const auto value = column.isItsOwn ? NullIfNoValue(read) : read();
          sqlite::Bind(insert, ++field, Stored(value));
        }
        insert.Step();
        insert.Reset();
      }
    }
    run("COMMIT");
    file.Close();
  }

  [[nodiscard]] Value Stored(const Value& value) const {
    const auto* boolean = std::get_if<bool>(&value);
    return boolean == nullptr ? value : Value(std::int64_t{*boolean ? static_cast<int>(true_) : 0});
  }

  [[noreturn]] static void Refuse(const std::string& table, const PlatformError& raised) {
    throw SnapshotError(fmt::format("BillingDb can't be read: its table {}. {}", table, raised.description()));
  }

  ado::Connection& source_;
  const std::string& path_;
  const Watch& watch_;
  std::unique_ptr<ado::Connection> made_;
  const TrueNumber true_ = TrueNumberOf(source_.Provider());
};

}  // namespace

void ReadBilling(ado::Connection& source, const std::string& path, std::span<const std::string> schema,
                 const Watch& watch) {
  BillingReader(source, path, watch).Read(schema);
}

}  // namespace twqb::snapshot
