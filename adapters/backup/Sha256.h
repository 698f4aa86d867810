// SHA-256 of bytes in memory, by the system's own library.
//
// What a backup is told apart and checked by. Files are read by who asks for it.
#pragma once

#include <string>
#include <string_view>

namespace twqb::backup {

// 64 hexadecimal digits. Raises BackupError where the library has no such digest.
[[nodiscard]] std::string Sha256Of(std::string_view bytes);

// How many digits that are.
inline constexpr std::size_t kDigestLength = 64;

}  // namespace twqb::backup
