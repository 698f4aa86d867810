// What is settled about a company file when it is made, and how it is open. Plain values, for hosts and for the parts
// of this folder alike.
#pragma once

#include <cstdint>
#include <vector>

#include "messages/Schema.h"

namespace twqb::company {

// How the file is open, as the host record tells it.
enum class FileMode : std::uint8_t { SingleUser, MultiUser };

inline constexpr int kDefaultHostVersion = 16;

struct CompanyOptions {
  messages::Country country = messages::Country::US;
  int hostVersion = kDefaultHostVersion;        // the major version that the host record reports
  std::vector<messages::Country> accepts = {};  // the forms that are answered; empty: the country's own
};

}  // namespace twqb::company
