#include "adapters/sqlite/CompactRows.h"

#include <algorithm>
#include <bit>
#include <string_view>
#include <variant>

namespace twqb::sqlite {

namespace {

// A row that is larger has a block of its own.
constexpr std::size_t kBlock = std::size_t{256} * 1024;

// The alternatives of Value, but for the two booleans.
enum class Tag : char { Null, False, True, Whole, Floating, Money, Moment, Text };

constexpr unsigned kBitsOfByte = 7;
constexpr std::uint64_t kMore = 0x80;

void AppendNumber(std::string& bytes, std::uint64_t number) {
  for (; number >= kMore; number >>= kBitsOfByte) bytes += static_cast<char>(number | kMore);
  bytes += static_cast<char>(number);
}

// Small negative numbers are small, too.
std::uint64_t Folded(std::int64_t number) {
  return (static_cast<std::uint64_t>(number) << 1U) ^ static_cast<std::uint64_t>(number >> 63);
}
std::int64_t Unfolded(std::uint64_t number) { return static_cast<std::int64_t>((number >> 1U) ^ (0 - (number & 1U))); }

struct Writer {
  std::string& bytes;

  void Begin(Tag tag) const { bytes += static_cast<char>(tag); }
  void operator()(Null /*value*/) const { Begin(Tag::Null); }
  void operator()(bool value) const { Begin(value ? Tag::True : Tag::False); }
  void operator()(std::int64_t value) const { Number(Tag::Whole, Folded(value)); }
  void operator()(double value) const { Number(Tag::Floating, std::bit_cast<std::uint64_t>(value)); }
  void operator()(Currency value) const { Number(Tag::Money, Folded(value.TenThousandths())); }
  void operator()(Date value) const { Number(Tag::Moment, Folded(value.Milliseconds())); }
  void operator()(const std::string& value) const {
    Number(Tag::Text, value.size());
    bytes += value;
  }
  void Number(Tag tag, std::uint64_t number) const {
    Begin(tag);
    AppendNumber(bytes, number);
  }
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  // Into a value that has its memory already.
  void Next(Value& value) {
    switch (static_cast<Tag>(Byte())) {
      case Tag::Null:
        return Put(value, Null{});
      case Tag::False:
        return Put(value, false);
      case Tag::True:
        return Put(value, true);
      case Tag::Whole:
        return Put(value, Unfolded(Number()));
      case Tag::Floating:
        return Put(value, std::bit_cast<double>(Number()));
      case Tag::Money:
        return Put(value, Currency::FromTenThousandths(Unfolded(Number())));
      case Tag::Moment:
        return Put(value, Date::FromMilliseconds(Unfolded(Number())));
      case Tag::Text:
        return Put(value, Text(static_cast<std::size_t>(Number())));
    }
    Put(value, Null{});
  }

 private:
  template <typename Held>
  static void Put(Value& value, Held held) {
    if (auto* there = std::get_if<Held>(&value)) {
      *there = held;
    } else {
      value.emplace<Held>(held);
    }
  }
  static void Put(Value& value, std::string_view text) {
    if (auto* there = std::get_if<std::string>(&value)) {
      there->assign(text);
    } else {
      value.emplace<std::string>(text);
    }
  }
  char Byte() { return bytes_[at_++]; }
  std::uint64_t Number() {
    std::uint64_t number = 0;
    for (unsigned shift = 0;; shift += kBitsOfByte) {
      const auto byte = static_cast<unsigned char>(Byte());
      number |= (byte & ~kMore) << shift;
      if ((byte & kMore) == 0) return number;
    }
  }
  std::string_view Text(std::size_t size) {
    const auto text = bytes_.substr(at_, size);
    at_ += size;
    return text;
  }

  std::string_view bytes_;
  std::size_t at_ = 0;
};

}  // namespace

void CompactRows::Add(const std::vector<Value>& row) {
  auto& bytes = row_;
  bytes.clear();
  for (const auto& value : row) std::visit(Writer{bytes}, value);
  if (blocks_.empty() || blocks_.back().size() + bytes.size() > kBlock) {
    blocks_.emplace_back();
    // Most selections are of a row or two: only what follows a full block takes a whole one at once.
    if (blocks_.size() > 1) blocks_.back().reserve(std::max(kBlock, bytes.size()));
  }
  places_.push_back({.block = static_cast<std::uint32_t>(blocks_.size() - 1),
                     .begin = static_cast<std::uint32_t>(blocks_.back().size())});
  blocks_.back() += bytes;
}

void CompactRows::Read(std::size_t index, std::vector<Value>& row) const {
  const auto [block, begin] = places_[index];
  Reader reader(std::string_view(blocks_[block]).substr(begin));
  for (auto& value : row) reader.Next(value);
}

void CompactRows::Clear() {
  blocks_.clear();
  places_.clear();
}

}  // namespace twqb::sqlite
