// Rows of BillingDb on their way into INSERT statements.
//
// Values are whole numbers and texts, so that a statement is the same text on every machine.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Date.h"

namespace twqb::firm {

using TakeStatement = std::function<void(const std::string& statement)>;

// Nothing: NULL.
using Text = std::optional<std::string>;

class Row {
 public:
  Row& Put(std::string_view column, const Text& text);
  // `digits` with so many of them behind the point; 1234 and 2 are 12.34.
  Row& Number(std::string_view column, std::int64_t digits, int decimals = 0);
  Row& Number(std::string_view column, const std::optional<std::int64_t>& digits, int decimals = 0);
  Row& Money(std::string_view column, std::int64_t cents) { return Number(column, cents, 2); }
  // True is -1.
  Row& Flag(std::string_view column, bool value) { return Number(column, value ? -1 : 0); }
  Row& Moment(std::string_view column, const std::optional<Date>& date);
  Row& Null(std::string_view column) { return PutLiteral(column, "NULL"); }

  [[nodiscard]] const std::string& Columns() const { return columns_; }
  [[nodiscard]] const std::string& Values() const { return values_; }

 private:
  Row& PutLiteral(std::string_view column, std::string_view literal);

  std::string columns_;
  std::string values_;
};

// Gathers the rows of each table that have the same columns into statements of many rows. Rows of a table keep their
// order.
class Rows {
 public:
  explicit Rows(TakeStatement take) : take_(std::move(take)) {}
  void Add(const std::string& table, const Row& row);
  // What is still gathered.
  void Flush();

 private:
  struct Gathered {
    std::string columns;
    std::string values;
    int count = 0;
  };
  void Flush(const std::string& table, Gathered& gathered);

  TakeStatement take_;
  std::map<std::string, Gathered> tables_;
};

// A key as the billing product makes them: GUID text in braces. `kind` tells the tables apart.
[[nodiscard]] std::string RowKey(std::uint32_t kind, std::int64_t number);

}  // namespace twqb::firm
