#include "cli/screen/HelpLayout.h"

#include <algorithm>

#include "adapters/terminal/TextLayout.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::size_t kFarRight = 20;     // a line that begins there goes on with the entry above
constexpr std::size_t kLeastText = 24;    // less room beside a name is not used
constexpr std::size_t kBelowName = 4;     // how far a text below its name is indented
constexpr std::size_t kLongHeading = 30;  // a paragraph may end in a colon, too
constexpr std::string_view kGap = "  ";

class HelpLayout {
 public:
  explicit HelpLayout(std::size_t width) : width_(width) {}

  std::string Lay(std::string_view text) {
    for (const auto& line : Split(text, '\n')) Take(line);
    Flush();
    while (laid_.ends_with("\n\n")) laid_.pop_back();
    return std::move(laid_);
  }

 private:
  void Take(std::string_view line) {
    const auto indent = line.find_first_not_of(' ');
    if (indent == std::string_view::npos) {
      Flush();
      laid_ += "\n";
    } else if (indent == 0) {
      TakeParagraph(line);
    } else if (indent >= kFarRight && isEntry_) {
      if (text_.empty()) textColumn_ = indent;
      text_ += (text_.empty() ? "" : " ") + std::string(line.substr(indent));
    } else {
      TakeEntry(line, indent);
    }
  }

  void TakeParagraph(std::string_view line) {
    const bool isHeading = (line.ends_with(':') && line.size() <= kLongHeading) || line.starts_with("Usage:");
    if (isEntry_ || isHeading) Flush();
    text_ += (text_.empty() ? "" : " ") + std::string(line);
    if (isHeading) Flush();
  }

  void TakeEntry(std::string_view line, std::size_t indent) {
    Flush();
    isEntry_ = true;
    indent_ = indent;
    const auto gap = line.find(kGap, indent);
    name_ = line.substr(indent, gap == std::string_view::npos ? gap : gap - indent);
    if (gap == std::string_view::npos) return;
    textColumn_ = std::min(line.find_first_not_of(' ', gap), line.size());
    text_ = line.substr(textColumn_);
  }

  void Flush() {
    if (isEntry_) {
      FlushEntry();
    } else {
      Append(text_, 0, 0);
    }
    name_.clear();
    text_.clear();
    textColumn_ = 0;
    isEntry_ = false;
  }

  void FlushEntry() {
    if (text_.empty()) {
      Append(name_, indent_, indent_ + kBelowName);
      return;
    }
    const bool isBeside = textColumn_ + kLeastText <= width_ && indent_ + ColumnCount(name_) < textColumn_;
    if (!isBeside) {
      Append(name_, indent_, indent_ + kBelowName);
      Append(text_, indent_ + kBelowName, indent_ + kBelowName);
      return;
    }
    const std::string before = std::string(indent_, ' ') + name_;
    const std::string blanks(textColumn_ - ColumnCount(before), ' ');
    const auto at = laid_.size();
    Append(text_, textColumn_, textColumn_);
    laid_.replace(at, textColumn_, before + blanks);
  }

  // The lines of a text; those behind the first stand at `hanging`.
  void Append(std::string_view text, std::size_t indent, std::size_t hanging) {
    constexpr std::size_t kLeastRoom = 10;
    const auto room = std::max(width_ - std::min(width_, hanging), kLeastRoom);
    for (const auto& line : WrapText(text, room)) {
      laid_ += std::string(indent, ' ') + line + "\n";
      indent = hanging;
    }
  }

  std::size_t width_;
  std::string laid_;
  std::string name_;  // of the entry in hand
  std::string text_;  // its text, or the paragraph in hand
  std::size_t indent_ = 0;
  std::size_t textColumn_ = 0;
  bool isEntry_ = false;
};

}  // namespace

std::string LaidOutHelp(std::string_view text, std::size_t width) { return HelpLayout(width).Lay(text); }

}  // namespace twqb::cli
