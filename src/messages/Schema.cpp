#include "messages/Schema.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_map>

#include "platform/Text.h"

namespace twqb::messages {

namespace {

struct CountryAndName {
  Country country;
  std::string_view name;
};
constexpr std::array kCountries = {CountryAndName{Country::US, "US"}, CountryAndName{Country::CA, "CA"},
                                   CountryAndName{Country::UK, "UK"}, CountryAndName{Country::AU, "AU"}};

constexpr std::string_view kListSuffix = "List";

bool EndsWithName(std::string_view text, std::string_view suffix) {
  return text.size() > suffix.size() && SameName(text.substr(text.size() - suffix.size()), suffix);
}

enum class Which : std::uint8_t { All, Repeating };

// The first of that name, but for its case: forms that differ may each have a row of one name.
const Element* FindRow(const Rows& rows, std::string_view name, Which which) {
  if (rows.empty()) return nullptr;
  const auto* slots = rows.Index()->slots;
  const auto count = SlotCount(rows.size());
  for (auto slot = FirstSlot(name, count); slots[slot] != 0; slot = NextSlot(slot, count)) {
    const auto& row = rows[slots[slot] - 1U];
    if ((row.repeating || which == Which::All) && SameName(row.name, name)) return &row;
  }
  return nullptr;
}

}  // namespace

std::string_view CountryName(Country country) {
  for (const auto& entry : kCountries) {
    if (entry.country == country) return entry.name;
  }
  return "US";
}

std::optional<Country> CountryFromName(std::string_view name) {
  for (const auto& entry : kCountries) {
    if (SameName(entry.name, name)) return entry.country;
  }
  return std::nullopt;
}

std::string FormTag(const Form& form) {
  std::string tag(form.country == Country::US ? std::string_view{} : CountryName(form.country));
  tag.append(std::to_string(form.version.major)).append(".").append(std::to_string(form.version.minor));
  return tag;
}

std::optional<Form> FormFromTag(std::string_view tag) {
  Form form;
  if (tag.size() > 2 && tag[0] >= 'A') {
    const auto country = CountryFromName(tag.substr(0, 2));
    if (!country) return std::nullopt;
    form.country = *country;
    tag.remove_prefix(2);
  }
  if (tag.find('-') != std::string_view::npos) return std::nullopt;  // a sign
  const char* end = tag.data() + tag.size();
  const auto major = std::from_chars(tag.data(), end, form.version.major);
  if (major.ec != std::errc{} || major.ptr == end || *major.ptr != '.') return std::nullopt;
  const auto minor = std::from_chars(major.ptr + 1, end, form.version.minor);
  if (minor.ec != std::errc{} || minor.ptr != end) return std::nullopt;
  return form;
}

const Element* FindChild(const Rows& children, std::string_view name) {
  if (const auto* row = FindRow(children, name, Which::All)) return row;
  if (!EndsWithName(name, kListSuffix)) return nullptr;
  return FindRow(children, name.substr(0, name.size() - kListSuffix.size()), Which::Repeating);
}

const Message* FindMessage(std::string_view name) {
  if (name.ends_with("Rq") || name.ends_with("Rs")) name.remove_suffix(2);
  static const auto kByName = [] {
    std::unordered_map<std::string_view, const Message*> byName;
    for (const auto& message : AllMessages()) byName.emplace(message.name, &message);
    return byName;
  }();
  const auto found = kByName.find(name);
  return found != kByName.end() ? found->second : nullptr;
}

}  // namespace twqb::messages
