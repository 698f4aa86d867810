// What of a text must not reach a transcript: passwords of connection strings, and the identity numbers of people
// (social security, social insurance and national insurance numbers; a vendor's tax number, which is kept in the same
// column). Each function gives the text with such values replaced by ***; all else stays byte for byte, so a masked
// document is still well-formed and a masked statement still reads.
//
// It looks for the places where these values are known to stand. It does not search for numbers that look like one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace twqb {

// Whether a transcript is written with such values replaced.
enum class Masking : std::uint8_t { Masked, Unmasked };

inline constexpr std::string_view kMasked = "***";

// Whether a column of BillingDb holds identity numbers.
[[nodiscard]] bool IsIdentityColumn(std::string_view column);

// The value behind each "Password=" and "Pwd=" in any case, up to the ";" or the end of the line; a value in quotes up
// to its closing quote. An empty value stays empty.
[[nodiscard]] std::string MaskPasswords(std::string_view text);

// The contents of identity elements of a qbXML document, and what a status message quotes of them.
[[nodiscard]] std::string MaskIdentityElements(std::string_view document);

// In a statement the literals that an identity column is assigned or compared with, and those that an
// "INSERT INTO table (columns) VALUES (values)" gives to such a column.
[[nodiscard]] std::string MaskIdentityLiterals(std::string_view statement);

// The numbers that sentences quote: "…" is not a valid Social Insurance Number (the log's), and the status wordings
// with: "…" in the field "SSN".
[[nodiscard]] std::string MaskQuotedIdentity(std::string_view text);

}  // namespace twqb
