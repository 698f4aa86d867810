#include "adapters/system/ProfileText.h"

#include <algorithm>
#include <utility>

#include "platform/Text.h"

namespace twqb {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kLineBreaks("\r\n\0", 3);
// Stands in no section's and no key's text, so it keeps them apart in one text.
constexpr char kSeparator = '\n';

std::string_view WithoutOuterBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string FoldedName(std::string_view name) { return FoldCase(WithoutOuterBlanks(name)); }

bool IsQuoted(std::string_view text) {
  return text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
}

std::string WithoutQuotes(std::string_view text) {
  return std::string(IsQuoted(text) ? text.substr(1, text.size() - 2) : text);
}

std::string WrittenValue(std::string_view value) {
  const bool needsQuotes = WithoutOuterBlanks(value).size() != value.size() || IsQuoted(value);
  return needsQuotes ? '"' + std::string(value) + '"' : std::string(value);
}

bool CanBeWritten(std::string_view section, std::string_view key, std::string_view value) {
  const auto name = WithoutOuterBlanks(key);
  for (const auto text : {section, key, value}) {
    if (text.find_first_of(kLineBreaks) != std::string_view::npos) return false;
  }
  return section.find(']') == std::string_view::npos && name.find('=') == std::string_view::npos &&
         !name.starts_with(';') && !name.starts_with('[');
}

}  // namespace

ProfileText::ProfileText(std::string text) : text_(std::move(text)) {
  std::size_t at = text_.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  std::string section;
  // Entries above the first section header are in no section that could be named.
  Span sectionName = {.begin = std::string::npos, .end = std::string::npos};
  while (at < text_.size()) {
    const auto end = std::min(text_.find('\n', at), text_.size());
    const auto next = std::min(end + 1, text_.size());
    ReadLine(Trimmed({at, end}), next, section, sectionName);
    at = next;
  }
}

void ProfileText::ReadLine(Span line, std::size_t next, std::string& section, Span& sectionName) {
  const auto text = View(line);
  if (text.empty()) return;
  if (text.front() == '[') {
    if (const auto close = text.find(']'); close != std::string_view::npos) {
      others_.push_back(line);
      sectionName = Trimmed({line.begin + 1, line.begin + close});
      section = FoldedName(View(sectionName));
      const bool isFirst = sections_.emplace(section, next).second;
      if (!isFirst) sectionName = {.begin = std::string::npos, .end = std::string::npos};
      return;
    }
  }
  if (sectionName.begin == std::string::npos) {
    others_.push_back(line);
    return;
  }
  sections_[section] = next;
  const auto equals = text.find('=');
  if (text.front() == ';' || equals == std::string_view::npos) {
    others_.push_back(line);
    return;
  }
  const Entry entry = {.section = sectionName,
                       .key = Trimmed({line.begin, line.begin + equals}),
                       .value = Trimmed({line.begin + equals + 1, line.end})};
  if (keys_.emplace(section + kSeparator + FoldedName(View(entry.key)), entries_.size()).second) {
    entries_.push_back(entry);
  } else {
    others_.push_back(line);
  }
}

std::optional<std::string> ProfileText::Find(std::string_view section, std::string_view key) const {
  const auto found = keys_.find(FoldedName(section) + kSeparator + FoldedName(key));
  if (found == keys_.end()) return std::nullopt;
  return WithoutQuotes(View(entries_[found->second].value));
}

std::vector<ProfileEntry> ProfileText::Entries() const {
  std::vector<ProfileEntry> result;
  result.reserve(entries_.size());
  for (const auto& entry : entries_) {
    result.push_back({.section = std::string(View(entry.section)),
                      .key = std::string(View(entry.key)),
                      .value = WithoutQuotes(View(entry.value))});
  }
  return result;
}

std::vector<std::string> ProfileText::OtherLines() const {
  const auto hasEntries = [this](std::string_view header) {
    const auto name = FoldedName(header.substr(1, header.find(']') - 1));
    return std::ranges::any_of(entries_, [&](const Entry& entry) { return FoldedName(View(entry.section)) == name; });
  };
  std::vector<std::string> lines;
  for (const auto span : others_) {
    const auto line = View(span);
    const bool isHeader = line.starts_with('[') && line.find(']') != std::string_view::npos;
    if (!isHeader || !hasEntries(line)) lines.emplace_back(line);
  }
  return lines;
}

std::optional<std::string> ProfileText::With(std::string_view section, std::string_view key,
                                             std::string_view value) const {
  if (!CanBeWritten(section, key, value)) return std::nullopt;
  const auto written = WrittenValue(value);
  auto result = text_;
  const auto folded = FoldedName(section);
  if (const auto found = keys_.find(folded + kSeparator + FoldedName(key)); found != keys_.end()) {
    const auto span = entries_[found->second].value;
    result.replace(span.begin, span.end - span.begin, written);
    return result;
  }

  const std::string lineEnd(LineEnd());
  std::string added;
  auto at = result.size();
  if (const auto place = sections_.find(folded); place != sections_.end()) {
    at = place->second;
  } else {
    added.append("[").append(section).append("]").append(lineEnd);
  }
  added.append(key).append("=").append(written).append(lineEnd);
  const bool followsOpenLine = at > 0 && result[at - 1] != '\n' && text_ != kByteOrderMark;
  result.insert(at, followsOpenLine ? lineEnd + added : added);
  return result;
}

std::string_view ProfileText::View(Span span) const {
  return std::string_view(text_).substr(span.begin, span.end - span.begin);
}

ProfileText::Span ProfileText::Trimmed(Span span) const {
  while (span.begin < span.end && kBlanks.find(text_[span.begin]) != std::string_view::npos) ++span.begin;
  while (span.begin < span.end && kBlanks.find(text_[span.end - 1]) != std::string_view::npos) --span.end;
  return span;
}

std::string_view ProfileText::LineEnd() const {
  const auto feed = text_.find('\n');
  const bool isBare = feed != std::string::npos && (feed == 0 || text_[feed - 1] != '\r');
  return isBare ? kCrLf.substr(1) : kCrLf;
}

}  // namespace twqb
