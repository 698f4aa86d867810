// The country of the company file, and what two countries have in common.
//
// Some rules ask for the country of the edition that is installed instead (`g_HostCountry`), which is not upper-cased.
#pragma once

#include <string>
#include <string_view>

#include "platform/Text.h"
#include "services/ModuleVariables.h"

namespace twqb {

// "US", "CA", "UK" or "AU", in upper case.
[[nodiscard]] inline std::string FileCountry() { return UpperCase(Vars().g_QBCountry); }

// Canada and Britain have message forms of their own, and cheques.
[[nodiscard]] inline bool IsCanadianOrBritish(std::string_view country) { return country == "CA" || country == "UK"; }

}  // namespace twqb
