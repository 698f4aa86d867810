// Texts on their way to a transcript and to a terminal: nothing that could steer a terminal gets through, no line is
// wider than was asked for, and no identity number stays in its element.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "adapters/terminal/BoxFormat.h"
#include "adapters/terminal/TextLayout.h"
#include "adapters/transcript/Masking.h"
#include "platform/Text.h"

namespace {

using namespace twqb;

void Require(bool holds) {
  if (!holds) std::abort();
}

bool IsQuiet(std::string_view text) {
  return IsUtf8(text) && std::ranges::all_of(text, [](char c) {
           const auto byte = static_cast<unsigned char>(c);
           return byte >= 0x20 && byte != 0x7F;
         });
}

void Layout(std::string_view text, std::size_t columns) {
  const auto printable = Printable(text);
  Require(IsQuiet(printable));
  Require(Printable(printable) == printable);
  Require(IsQuiet(OneLine(text)));
  const auto trimmed = TrimToColumns(printable, columns);
  Require(printable.starts_with(trimmed) && ColumnCount(trimmed) <= columns);
  for (const auto& line : WrapText(text, columns)) Require(IsQuiet(line) && ColumnCount(line) <= columns);
  constexpr std::size_t kNarrowestBox = 20;
  const auto width = std::max(columns, kNarrowestBox);
  const auto box = FormatBox({.text = std::string(text), .title = std::string(text.substr(0, columns))}, width);
  for (const auto& line : Split(box, '\n')) Require(IsQuiet(line) && ColumnCount(line) <= width);
}

void Masks(std::string_view text) {
  (void)MaskPasswords(text);
  (void)MaskIdentityLiterals(text);
  (void)MaskQuotedIdentity(text);
  (void)MaskIdentityElements(text);
  // What stands alone in its element is replaced, and nothing beside it.
  if (text.empty() || text.find_first_of("<>&") != std::string_view::npos) return;
  const auto element = [](std::string_view content) { return "<EmployeeAdd><SSN>" + std::string(content) + "</SSN>"; };
  Require(MaskIdentityElements(element(text) + "<Name>A</Name>") == element(kMasked) + "<Name>A</Name>");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  constexpr std::size_t kNarrowest = 2;
  Layout(text, std::max<std::size_t>(data[0], kNarrowest));
  Masks(text);
  return 0;
}
