#include "messagegen/Tokens.h"

#include <algorithm>

namespace twqb::messagegen {

namespace {

constexpr std::string_view kSigns = ":?*+=,|()[]{}";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsOfWord(char c) { return IsLetter(c) || IsDigit(c); }
bool IsOfVersion(char c) { return IsOfWord(c) || c == '.'; }

class Reader {
 public:
  explicit Reader(const SourceFile& file) : file_(file), rest_(file.text) {}

  std::vector<Token> Read() {
    while (!rest_.empty()) ReadOne();
    EndLine();
    Add(TokenKind::End, {});
    return std::move(tokens_);
  }

 private:
  void ReadOne() {
    const char c = rest_.front();
    if (c == '\n') {
      EndLine();
      Take(1);
      ++line_;
    } else if (c == ' ' || c == '\t' || c == '\r') {
      Take(1);
    } else if (c == '#') {
      Take(std::min(rest_.find('\n'), rest_.size()));
    } else if (c == '@' || c == '<') {
      Take(1);
      Add(c == '@' ? TokenKind::Since : TokenKind::Until, TakeWhile(IsOfVersion));
    } else if (IsLetter(c)) {
      Add(TokenKind::Word, TakeWhile(IsOfWord));
    } else if (IsDigit(c)) {
      Add(TokenKind::Number, TakeWhile(IsDigit));
    } else if (kSigns.find(c) != std::string_view::npos) {
      Add(TokenKind::Sign, Take(1));
    } else {
      throw BadInput(file_.name, line_, "the character '" + std::string(1, c) + "' has no meaning here");
    }
  }

  std::string_view Take(std::size_t count) {
    const auto taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }
  std::string_view TakeWhile(bool (*belongs)(char)) {
    const auto end = std::ranges::find_if_not(rest_, belongs);
    return Take(static_cast<std::size_t>(end - rest_.begin()));
  }

  void Add(TokenKind kind, std::string_view text) {
    tokens_.push_back({.kind = kind, .text = std::string(text), .line = line_});
  }
  void EndLine() {
    if (!tokens_.empty() && tokens_.back().kind != TokenKind::LineEnd) Add(TokenKind::LineEnd, {});
  }

  const SourceFile& file_;
  std::string_view rest_;
  int line_ = 1;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> ReadTokens(const SourceFile& file) { return Reader(file).Read(); }

}  // namespace twqb::messagegen
