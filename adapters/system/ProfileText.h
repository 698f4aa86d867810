// ProfileText: the text of a profile (INI) file, taken apart once: its entries, and the text with one entry changed.
//
// It stands under ProfileFile and knows no files. Sections and keys match without case; the first section of a name and
// the first key in it count. A line that begins with ';' is a comment; a line without '=' means nothing. Everything
// that a change does not touch stays byte for byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace twqb {

struct ProfileEntry {
  std::string section;  // as spelled in the file, without outer blanks
  std::string key;
  std::string value;  // without outer blanks and without the quotes around it

  friend bool operator==(const ProfileEntry&, const ProfileEntry&) = default;
};

class ProfileText {
 public:
  explicit ProfileText(std::string text);

  // Nothing when the section or the key is missing.
  [[nodiscard]] std::optional<std::string> Find(std::string_view section, std::string_view key) const;
  // The entries that Find can find, in the order of the file.
  [[nodiscard]] std::vector<ProfileEntry> Entries() const;
  // What else stands there, without outer blanks: comments, lines that mean nothing, keys that are there a second time,
  // headers of sections without an entry. Blank lines are none.
  [[nodiscard]] std::vector<std::string> OtherLines() const;

  // The text in which Find gives `value` for section and key. A value whose outer blanks or quotes a reader would drop
  // is put in quotes. An existing entry is changed where it stands; a new one goes to the end of its section, before
  // the blank lines there, with the line ends that the text has (CR LF in a text without any); a new section goes to
  // the end. Nothing when a line can't hold it: line breaks or NUL anywhere, ']' in the section, '=' in the key, or a
  // key that reads as a comment or a section.
  [[nodiscard]] std::optional<std::string> With(std::string_view section, std::string_view key,
                                                std::string_view value) const;

 private:
  // A range of bytes of the text.
  struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
  };
  struct Entry {
    Span section;
    Span key;
    Span value;  // with its quotes
  };

  void ReadLine(Span line, std::size_t next, std::string& section, Span& sectionName);
  [[nodiscard]] std::string_view View(Span span) const;
  [[nodiscard]] Span Trimmed(Span span) const;
  [[nodiscard]] std::string_view LineEnd() const;

  std::string text_;
  std::vector<Entry> entries_;
  std::vector<Span> others_;                               // lines that are no entries, headers among them
  std::unordered_map<std::string, std::size_t> keys_;      // by folded section and key: index of the entry
  std::unordered_map<std::string, std::size_t> sections_;  // by folded name: where a new entry of it goes
};

}  // namespace twqb
