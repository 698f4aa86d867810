// The forms in which message sets have been published.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "messages/Schema.h"

namespace twqb::company {

// The message versions of a country's form, lowest first. Australia's exists since the last version only.
[[nodiscard]] std::span<const messages::Version> VersionsOf(messages::Country country);
// The form of that tag, spelled as published; nothing for one that never was.
[[nodiscard]] std::optional<messages::Form> PublishedForm(std::string_view tag);
// Whether the text has the form of a message version, published or not: "3.0", "CA16.0".
[[nodiscard]] bool IsFormTag(std::string_view text);
// The forms in which a file that answers those of `accepts` takes requests of any kind: Australia's other requests come
// in the American form, its subscriptions in Canada's.
[[nodiscard]] std::vector<messages::Country> FormsOf(std::span<const messages::Country> accepts);

}  // namespace twqb::company
