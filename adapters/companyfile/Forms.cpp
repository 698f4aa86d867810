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

bool IsPublished(const messages::Form& form) {
  const auto versions = VersionsOf(form.country);
  return std::ranges::find(versions, form.version) != versions.end();
}

}  // namespace twqb::company
