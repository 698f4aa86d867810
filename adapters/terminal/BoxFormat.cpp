#include "adapters/terminal/BoxFormat.h"

#include <fmt/core.h>

#include "adapters/terminal/TextLayout.h"
#include "platform/Text.h"

namespace twqb {

namespace {

std::string_view IconMark(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      return "";
    case BoxIcon::Information:
      return "[i] ";
    case BoxIcon::Question:
      return "[?] ";
    case BoxIcon::Warning:
      return "[!] ";
    case BoxIcon::Error:
      return "[x] ";
  }
  return "";
}

std::string TopRule(const MessageBox& box, std::size_t width) {
  constexpr std::string_view kLead = "---- ";
  const auto title = box.title.empty() ? std::string(kDefaultBoxTitle) : OneLine(box.title);
  auto rule = CutToColumns(fmt::format("{}{}{}", kLead, IconMark(box.icon), title), width - 1) + ' ';
  return rule.append(width - ColumnCount(rule), '-');
}

bool IsAnswer(std::string_view typed, BoxAnswer answer) {
  const auto label = ButtonLabel(answer);
  return SameName(typed, label) || SameName(typed, label.substr(0, 1));
}

}  // namespace

bool OffersHelp(const MessageBox& box) { return box.help && (!box.helpFile.empty() || box.helpId != 0); }

std::string FormatBox(const MessageBox& box, std::size_t width) {
  std::string text = TopRule(box, width) + '\n';
  for (const auto& line : WrapText(box.text, width)) text += line + '\n';
  if (OffersHelp(box)) {
    const auto file = box.helpFile.empty() ? std::string() : OneLine(box.helpFile) + ", ";
    for (const auto& line : WrapText(fmt::format("(help: {}topic {})", file, box.helpId), width)) text += line + '\n';
  }
  return text.append(width, '-') + '\n';
}

std::string FormatPrompt(const MessageBox& box) {
  const std::string_view help = OffersHelp(box) ? " / [H]elp: " : ": ";
  switch (box.buttons) {
    case BoxButtons::Ok:
      return OffersHelp(box) ? "Press Enter, or h for help: " : "Press Enter: ";
    case BoxButtons::YesNo:
      return fmt::format("[Y]es / [N]o{}", help);
    case BoxButtons::RetryCancel:
      return fmt::format("[R]etry / [C]ancel{}", help);
  }
  return {};
}

std::optional<BoxAnswer> ReadBoxAnswer(BoxButtons buttons, std::string_view line) {
  const auto typed = Trim(line);
  const auto either = [&](BoxAnswer one, BoxAnswer other) -> std::optional<BoxAnswer> {
    if (IsAnswer(typed, one)) return one;
    if (IsAnswer(typed, other)) return other;
    return std::nullopt;
  };
  switch (buttons) {
    case BoxButtons::Ok:
      return BoxAnswer::Ok;
    case BoxButtons::YesNo:
      return either(BoxAnswer::Yes, BoxAnswer::No);
    case BoxButtons::RetryCancel:
      return either(BoxAnswer::Retry, BoxAnswer::Cancel);
  }
  return std::nullopt;
}

bool IsHelpRequest(std::string_view line) {
  const auto typed = Trim(line);
  return SameName(typed, "h") || SameName(typed, "help");
}

BoxAnswer UnattendedAnswer(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::Ok:
      return BoxAnswer::Ok;
    case BoxButtons::YesNo:
      return BoxAnswer::No;
    case BoxButtons::RetryCancel:
      return BoxAnswer::Cancel;
  }
  return BoxAnswer::Cancel;
}

std::string_view ButtonLabel(BoxAnswer answer) {
  switch (answer) {
    case BoxAnswer::Ok:
      return "OK";
    case BoxAnswer::Yes:
      return "Yes";
    case BoxAnswer::No:
      return "No";
    case BoxAnswer::Retry:
      return "Retry";
    case BoxAnswer::Cancel:
      return "Cancel";
  }
  return {};
}

}  // namespace twqb
