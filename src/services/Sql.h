// A statement for BillingDb, or a piece of one, put together from constants and values.
//
// The rules let most values go in as they are, without their quotes doubled. A value with a quote would end its literal
// and let the rest of itself be read as SQL, so such a statement never reaches the database: it raises what a statement
// that makes no sense raises, at the place where it would have been carried out, so that whoever handles a statement
// that fails handles this one too.
#pragma once

#include <fmt/core.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace twqb {

// A value whose quotes are doubled already: goes in whatever it holds.
struct Doubled {
  std::string text;
};

class Sql;

namespace sql {

// What the text of a statement takes of a value.
template <typename T>
using Shown = std::conditional_t<std::is_same_v<T, Sql> || std::is_same_v<T, Doubled>, std::string_view, const T&>;

}  // namespace sql

class Sql {
 public:
  Sql() = default;
  // A constant.
  template <std::size_t N>
  Sql(const char (&text)[N]) : text_(text, N - 1) {}
  // A text with its values. Numbers, characters, pieces and doubled values go in as they are; a text must be without a
  // quote.
  template <typename First, typename... Rest>
  explicit Sql(fmt::format_string<sql::Shown<First>, sql::Shown<Rest>...> text, const First& first, const Rest&... rest)
      : text_(fmt::format(text, AsShown(first), AsShown(rest)...)) {
    Watch(first);
    (Watch(rest), ...);
  }

  // A table's or a selection's own text, which is a constant that is only known when it runs.
  [[nodiscard]] static Sql Own(std::string_view text);
  // The name of a record where the database wants no literal around it: letters, digits, braces and hyphens.
  [[nodiscard]] static Sql Name(std::string_view name);
  // A list of literals as it came, '…' or {…}, with commas between them.
  [[nodiscard]] static Sql List(std::string_view list);

  Sql& operator+=(const Sql& piece);
  // For a text that `piece` was put into elsewhere: no fitter than that.
  Sql& HoldTo(const Sql& piece);

  [[nodiscard]] bool IsEmpty() const { return text_.empty(); }
  // The statement. Raises `kBadSyntax` when a value in it could be read as SQL.
  operator std::string_view() const;
  // The same, for people to read: never raises.
  [[nodiscard]] const std::string& Text() const { return text_; }

 private:
  template <typename T>
  static sql::Shown<T> AsShown(const T& value) {
    if constexpr (std::is_same_v<T, Sql>) {
      return value.Text();
    } else if constexpr (std::is_same_v<T, Doubled>) {
      return value.text;
    } else {
      return value;
    }
  }
  template <typename T>
  void Watch(const T& value) {
    if constexpr (std::is_same_v<T, Sql>) {
      HoldTo(value);
    } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
      WatchText(value);
    }
  }
  void WatchText(std::string_view value);

  std::string text_;
  std::string unfit_;  // the first value that could be read as SQL
};

}  // namespace twqb
