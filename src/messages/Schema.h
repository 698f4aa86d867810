// The one table of the published qbXML messages: element order on the wire, types, lengths, obligation, choices,
// versions and countries.
//
// The request model, the wire form, the validation and the embedded company file all read this table and hold no list
// of fields of their own. The rows are made at build time out of the *.messages files of this folder, whose language
// docs/messages.md tells. Nothing here knows what any message means.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "messages/NameSlots.h"

namespace twqb::messages {

// The form of a message set: a country's dialect at a version. On the wire: "3.0", "CA3.0", "UK3.0", "AU3.0".
enum class Country : std::uint8_t { US = 1, CA = 2, UK = 4, AU = 8 };

struct Version {
  int major = 0;
  int minor = 0;
  friend constexpr auto operator<=>(const Version&, const Version&) = default;
};

struct Form {
  Country country = Country::US;
  Version version = {3, 0};
  friend constexpr bool operator==(const Form&, const Form&) = default;
};

[[nodiscard]] std::string_view CountryName(Country country);                  // "US", "CA", "UK", "AU"
[[nodiscard]] std::optional<Country> CountryFromName(std::string_view name);  // in any case
[[nodiscard]] std::string FormTag(const Form& form);                          // "CA3.0"
[[nodiscard]] std::optional<Form> FormFromTag(std::string_view tag);          // nothing for what is no tag

// A set of countries.
using Countries = std::uint8_t;
inline constexpr Countries kNowhere = 0;
inline constexpr Countries kEverywhere = 0x0F;
// Australia has no form of its own beyond the host query: its other requests are the US form's.
inline constexpr Countries kUnitedStates = static_cast<Countries>(Country::US) | static_cast<Countries>(Country::AU);
inline constexpr Countries kCanada = static_cast<Countries>(Country::CA);
inline constexpr Countries kBritain = static_cast<Countries>(Country::UK);

enum class Type : std::uint8_t {
  Aggregate,  // an element with elements in it
  Choice,     // a step of a path without an element: one of its branches
  Step,       // a step of a path without an element: its fields in order
  Str,
  Id,  // ListID or TxnID
  Bool,
  Int,
  Amt,    // money, always two decimals on the wire
  Price,  // up to five decimals
  Quan,   // up to five decimals
  Percent,
  Float,
  Date,
  DateTime,
  TimeInterval,
  Enum,
  Guid,
  Macro,
};

// Which forms know something. Left out, all do.
struct Availability {
  Version since = {1, 0};
  Version sinceInCanada = {};  // where the Canadian form came to know it later; {} is the same
  Version until = {};          // the first version that does not know it any more; {} is never
  Countries countries = kEverywhere;

  [[nodiscard]] constexpr Version SinceIn(Country country) const {
    return country == Country::CA && sinceInCanada != Version{} ? sinceInCanada : since;
  }
  [[nodiscard]] constexpr bool Covers(const Form& form) const {
    return SinceIn(form.country) <= form.version && (until == Version{} || form.version < until) &&
           (countries & static_cast<Countries>(form.country)) != 0;
  }
  friend constexpr bool operator==(const Availability&, const Availability&) = default;
};

struct EnumValue {
  std::string_view name;  // on the wire
  int number = 0;         // in the object model
  Availability known;

  [[nodiscard]] constexpr bool KnownIn(const Form& form) const { return known.Covers(form); }
};

class Rows;
struct RowIndex;

struct Element {          // NOLINT(clang-analyzer-optin.performance.Padding): in the order in which a row is read
  std::string_view name;  // of a literal: a zero stands behind it
  Type type = Type::Str;
  int maxLength = 0;  // characters; 0 is no limit
  bool optional = false;
  bool repeating = false;
  std::string_view attribute;  // the one that the element may carry; empty is none
  Availability known;
  const Element* firstChild = nullptr;
  std::size_t childCount = 0;
  const RowIndex* childIndex = nullptr;
  const EnumValue* firstValue = nullptr;
  std::size_t valueCount = 0;

  [[nodiscard]] constexpr Rows Children() const;
  [[nodiscard]] constexpr std::span<const EnumValue> Values() const { return {firstValue, valueCount}; }
  [[nodiscard]] constexpr bool LeavesNoElement() const { return type == Type::Choice || type == Type::Step; }
  [[nodiscard]] constexpr bool HasChildren() const { return type == Type::Aggregate || LeavesNoElement(); }
  // Whether a message set of this form has the element.
  [[nodiscard]] constexpr bool KnownIn(const Form& form) const { return known.Covers(form); }
};

// What is known of a list of rows beside the rows; made with them.
struct RowIndex {
  const NameSlot* slots = nullptr;
  bool hasRequiredChoice = false;
};

// The rows of an aggregate, a step or a message, in the order of the wire.
class Rows : public std::span<const Element> {
 public:
  constexpr Rows() = default;
  // `index` may be missing for no rows alone.
  constexpr Rows(const Element* first, std::size_t count, const RowIndex* index) : span(first, count), index_(index) {}

  [[nodiscard]] constexpr const RowIndex* Index() const { return index_; }
  // Whether there is a choice among them of which one branch must be there.
  [[nodiscard]] constexpr bool HasRequiredChoice() const { return index_ != nullptr && index_->hasRequiredChoice; }

 private:
  const RowIndex* index_ = nullptr;
};

constexpr Rows Element::Children() const { return {firstChild, childCount, childIndex}; }

// The child of that name, without regard to case. A repeating child "X" is found as "XList" too.
[[nodiscard]] const Element* FindChild(const Rows& children, std::string_view name);

enum class MessageSet : std::uint8_t { Company, Subscription };

struct Message {
  std::string_view name;  // without Rq and Rs: "CustomerAdd"
  Rows request;
  Rows response;
  Availability known;
  MessageSet set = MessageSet::Company;

  [[nodiscard]] constexpr bool KnownIn(const Form& form) const { return known.Covers(form); }
  [[nodiscard]] std::string RequestName() const { return std::string(name) + "Rq"; }
  [[nodiscard]] std::string ResponseName() const { return std::string(name) + "Rs"; }
};

// Every message of the table, in the order of the names.
[[nodiscard]] std::span<const Message> AllMessages();
// By the name with or without "Rq" or "Rs"; exact case. nullptr when there is none.
[[nodiscard]] const Message* FindMessage(std::string_view name);

}  // namespace twqb::messages
