// Whole files of text, for what a user names on the command line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace twqb::cli {

// Names standard input.
inline constexpr const char* kStandardInput = "-";

// No text that is read whole is longer: a larger file, or an input without an end, was not meant.
inline constexpr std::size_t kMaxText = std::size_t{512} << 20U;

// The whole content of a file, a pipe, or standard input. Raises UsageError, naming the file and the cause; one that is
// longer than kMaxText is such a cause.
[[nodiscard]] std::string ReadTextFile(const std::string& path);
// Makes a file, durable when it returns. Raises UsageError.
void WriteTextFile(const std::string& path, std::string_view text);

}  // namespace twqb::cli
