#include "cli/screen/CsvText.h"

#include <fmt/core.h>

#include <algorithm>

#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::string_view kSaveAnew = "Save it anew as \"CSV UTF-8\".";

std::size_t LineAt(std::string_view text, std::size_t at) {
  return 1 + static_cast<std::size_t>(std::ranges::count(text.substr(0, at), '\n'));
}

void CheckCharacters(std::string_view text) {
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
    throw CsvError(fmt::format("The file is UTF-16. {}", kSaveAnew));
  }
  if (const auto at = text.find('\0'); at != std::string_view::npos) {
    throw CsvError(fmt::format("Line {} holds a NUL character: the file is no text.", LineAt(text, at)));
  }
  if (IsUtf8(text)) return;
  std::size_t line = 1;
  for (const auto& content : Split(text, '\n')) {
    if (!IsUtf8(content)) throw CsvError(fmt::format("Line {} holds bytes that are no UTF-8. {}", line, kSaveAnew));
    ++line;
  }
}

class CsvReader {
 public:
  explicit CsvReader(std::string_view text) : text_(text) {}

  std::vector<CsvRecord> Read() && {
    while (at_ < text_.size()) ReadRecord();
    return std::move(records_);
  }

 private:
  void ReadRecord() {
    record_ = {.line = line_, .fields = {}, .trouble = {}};
    const auto begin = at_;
    do {
      ReadField();
    } while (Takes(','));
    const bool isEmpty = at_ == begin;
    TakeLineEnd();
    if (!isEmpty) records_.push_back(std::move(record_));
  }

  void ReadField() {
    auto& field = record_.fields.emplace_back();
    if (Takes('"')) {
      ReadQuoted(field);
      if (!EndsField()) Trouble("text stands behind a closing quote");
    }
    while (!EndsField()) {
      if (text_[at_] == '"') Trouble("a quote stands inside of a field that does not begin with one");
      field += text_[at_++];
    }
  }

  void ReadQuoted(std::string& field) {
    for (; at_ < text_.size(); ++at_) {
      if (text_[at_] == '"') {
        ++at_;
        if (at_ >= text_.size() || text_[at_] != '"') return;
      } else if (text_[at_] == '\n') {
        ++line_;
      }
      field += text_[at_];
    }
    Trouble("a quote is not closed, up to the end of the file");
  }

  [[nodiscard]] bool EndsField() const {
    return at_ >= text_.size() || text_[at_] == ',' || text_[at_] == '\n' || text_[at_] == '\r';
  }
  bool Takes(char character) {
    if (at_ >= text_.size() || text_[at_] != character) return false;
    ++at_;
    return true;
  }
  void TakeLineEnd() {
    const bool hasReturn = Takes('\r');
    if (Takes('\n') || hasReturn) ++line_;
  }
  // The first one is told.
  void Trouble(std::string_view what) {
    if (record_.trouble.empty()) record_.trouble = what;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  CsvRecord record_;
  std::vector<CsvRecord> records_;
};

}  // namespace

std::vector<CsvRecord> ReadCsv(std::string_view text) {
  CheckCharacters(text);
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  return CsvReader(text).Read();
}

}  // namespace twqb::cli
