// The remembered choices, in one of two interchangeable stores (an INI file, or `TWSTable` in BillingDb, chosen anew at
// every call by `UseTWSTable`), and the host's per-user registry values, read-only.
#pragma once

#include <string>
#include <string_view>

namespace twqb {

// The value, or `strDefault` when there is none. In the table store a blank value counts as none; in the INI store a
// value has at most 254 characters. Raises what the database raises.
[[nodiscard]] std::string gf_ReadSettings(std::string_view strSection, std::string_view strKey,
                                          std::string_view strPath, std::string_view strDefault = {});

// Answers False, after ErrorHandler, when the table store raised; the INI store's failures are not looked at.
// An empty value is NULL in the table store.
bool gf_WriteSettings(std::string_view strSection, std::string_view strKey, std::string_view strValue,
                      std::string_view strPath);

// A value under the current user's `SOFTWARE\OFS\` key, trimmed; `strDefault` when it can't be read.
[[nodiscard]] std::string RegGetSetting(std::string_view strApplication, std::string_view strSection,
                                        std::string_view strKey, std::string_view strDefault);

// Fills the four activity codes: the built-in ones, each replaced by a non-empty row of `TWSTable`, whichever store is
// in use. Ignores errors.
void LoadActivityCodes();

}  // namespace twqb
