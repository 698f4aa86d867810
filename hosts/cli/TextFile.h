// Whole files of text, for what a user names on the command line.
#pragma once

#include <string>
#include <string_view>

namespace twqb::cli {

// Names standard input.
inline constexpr const char* kStandardInput = "-";

// The whole content of a file, a pipe, or standard input. Raises UsageError, naming the file and the cause.
[[nodiscard]] std::string ReadTextFile(const std::string& path);
// Makes a file, durable when it returns. Raises UsageError.
void WriteTextFile(const std::string& path, std::string_view text);

}  // namespace twqb::cli
