// What is expected of a column that went to QuickBooks and came back into an empty BillingDb: its own value, but for
// named exceptions, each of which says when it applies and what comes instead. A column that nobody asks for is a
// failure: a test looks at all that a row has.
//
// NULL and empty are one to QuickBooks, and so they are here.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "platform/Text.h"
#include "platform/Value.h"
#include "tests/firm/FirmHouse.h"

namespace twqb {

// "Table.Column: why", and how often it was met.
using Exceptions = std::map<std::string, int>;

class Column {
 public:
  Column(std::string name, std::string value, std::string back, Exceptions& exceptions)
      : name_(std::move(name)), value_(std::move(value)), back_(std::move(back)), exceptions_(exceptions) {}

  // Where it applies, that comes instead.
  Column& Unless(bool applies, const std::string& instead, std::string_view why) {
    auto& met = exceptions_[name_ + ": " + std::string(why)];
    if (!applies || instead == value_) return *this;
    ++met;
    value_ = instead;
    return *this;
  }
  Column& Cut(std::size_t longest) { return Unless(true, Left(value_, longest), "is longer than QuickBooks' field"); }
  Column& NotBlank() { return Unless(Trim(value_).empty(), "", "blanks alone do not go"); }
  Column& Phone() {
    std::string digits;
    std::ranges::copy_if(value_, std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
    return Unless(true, digits, "of a number the digits come");
  }
  // Never goes: the same comes whatever it is.
  Column& StaysHere(const std::string& instead) { return Unless(true, instead, "does not go"); }
  // Comes as near as that.
  Column& Within(double least, std::string_view why) {
    const bool isNear = std::abs(TextToNumber(Number(value_)) - TextToNumber(Number(back_))) <= least;
    return Unless(isNear, back_, why);
  }
  void IsBack() const { EXPECT_EQ(back_, value_) << name_; }
  // A key of its own, made as the row came.
  void IsNewKey() const {
    EXPECT_TRUE(IsKey(back_)) << name_ << " " << back_;
    EXPECT_NE(back_, value_) << name_;
  }

 private:
  // GUID text in braces.
  static bool IsKey(std::string_view text) {
    constexpr std::string_view kForm = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
    return std::ranges::equal(text, kForm, [](char c, char form) {
      return form == 'x' ? std::string_view("0123456789ABCDEF").find(c) != std::string_view::npos : c == form;
    });
  }
  static std::string Number(const std::string& text) { return text.empty() ? "0" : text; }

  std::string name_;
  std::string value_;
  std::string back_;
  Exceptions& exceptions_;
};

// A row and what came back of it.
class Pair {
 public:
  Pair(std::string table, const Fields& row, const Fields& back, Exceptions& exceptions)
      : table_(std::move(table)), row_(row), back_(back), exceptions_(exceptions) {}

  [[nodiscard]] Column operator[](const std::string& column) const {
    asked_.insert(column);
    return {table_ + "." + column, Was(column), back_.at(column).value_or(""), exceptions_};
  }
  // None of these goes: the same comes in each, whatever it is.
  void StayHere(std::initializer_list<const char*> columns, const std::string& instead) const {
    for (const auto* column : columns) (*this)[column].StaysHere(instead).IsBack();
  }
  // As they were, which in these firms need not be much.
  void AreBack(std::initializer_list<const char*> columns) const {
    for (const auto* column : columns) (*this)[column].IsBack();
  }
  [[nodiscard]] std::string Was(const std::string& column) const { return row_.at(column).value_or(""); }
  [[nodiscard]] std::string Link() const { return Was("QBLinkID"); }

  // By their links rows were paired.
  void ExpectThatAllWasAskedFor() const {
    for (const auto& [column, value] : row_) {
      EXPECT_TRUE(asked_.contains(column) || column == "QBLinkID")
          << table_ << "." << column << " is compared with nothing; it came as " << back_.at(column).value_or("NULL");
    }
  }

 private:
  std::string table_;
  const Fields& row_;
  const Fields& back_;
  Exceptions& exceptions_;
  mutable std::set<std::string, std::less<>> asked_;
};

}  // namespace twqb
