#include "adapters/companyfile/Forms.h"

#include <algorithm>
#include <array>

namespace twqb::company {

namespace {

constexpr std::array<messages::Version, 5> kVersions = {{{1, 0}, {1, 1}, {2, 0}, {2, 1}, {3, 0}}};

}  // namespace

std::span<const messages::Version> VersionsOf(messages::Country country) {
  const std::span<const messages::Version> all = kVersions;
  return country == messages::Country::AU ? all.last(1) : all;
}

bool IsFormTag(std::string_view text) {
  constexpr std::size_t kCountryLetters = 2;
  constexpr std::size_t kMostDigits = 2;
  const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
  const auto isNumber = [](std::string_view digits) {
    return !digits.empty() && digits.size() <= kMostDigits && (digits.size() == 1 || digits.front() != '0') &&
           std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; });
  };
  if (text.size() > kCountryLetters && std::ranges::all_of(text.substr(0, kCountryLetters), isLetter)) {
    text.remove_prefix(kCountryLetters);
  }
  const auto point = text.find('.');
  return point != std::string_view::npos && isNumber(text.substr(0, point)) && isNumber(text.substr(point + 1));
}

std::vector<messages::Country> FormsOf(std::span<const messages::Country> accepts) {
  using messages::Country;
  std::vector<Country> forms(accepts.begin(), accepts.end());
  if (std::ranges::find(accepts, Country::AU) != accepts.end()) {
    forms.insert(forms.end(), {Country::US, Country::CA});
  }
  return forms;
}

std::optional<messages::Form> PublishedForm(std::string_view tag) {
  const auto form = messages::FormFromTag(tag);
  // The American form goes without its country.
  if (!form || messages::FormTag(*form) != tag) return std::nullopt;
  const auto versions = VersionsOf(form->country);
  return std::ranges::find(versions, form->version) == versions.end() ? std::nullopt : form;
}

}  // namespace twqb::company
