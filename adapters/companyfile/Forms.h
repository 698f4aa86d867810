// The forms in which message sets have been published.
#pragma once

#include <span>

#include "messages/Schema.h"

namespace twqb::company {

// The message versions of a country's form, lowest first. Australia's exists since the last version only.
[[nodiscard]] std::span<const messages::Version> VersionsOf(messages::Country country);
[[nodiscard]] bool IsPublished(const messages::Form& form);

}  // namespace twqb::company
