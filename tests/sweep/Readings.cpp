#include "Readings.h"

#include <fmt/core.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <span>
#include <utility>

namespace twqb::sweep {

namespace {

namespace fs = std::filesystem;

std::string& Folder() {
  static std::string folder;
  return folder;
}

// Stands for bytes, however many; they are never all in the memory at once, which each child process would have to be
// given anew.
class Digest {
 public:
  void Add(std::string_view bytes) {
    constexpr std::uint64_t kPrime = 1099511628211U;
    value_ = value_ * kPrime + std::hash<std::string_view>()(bytes);
    size_ += bytes.size();
  }
  [[nodiscard]] std::string Text() const { return fmt::format("{:x}-{:x}", size_, value_); }

 private:
  std::uint64_t value_ = 0;
  std::uint64_t size_ = 0;
};

// The next bytes of a file, as many as the buffer takes, or fewer at its end.
std::string_view Next(std::istream& in, std::span<char> buffer) {
  in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
  return {buffer.data(), static_cast<std::size_t>(in.gcount())};
}

std::string DigestOfFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::array<char, 1U << 14U> buffer;
  Digest digest;
  for (auto bytes = Next(in, buffer); !bytes.empty(); bytes = Next(in, buffer)) digest.Add(bytes);
  return digest.Text();
}

std::uint32_t BigEndian(std::string_view bytes) {
  std::uint32_t number = 0;
  for (const unsigned char byte : bytes.substr(0, 4)) number = number << 8U | byte;
  return number;
}

// The log of a database as the storage engine lays it out: a header, and frames of a header and a page each. Salts and
// sums are new each time that a log is begun; a frame counts when its salts are the log's.
std::string DigestOfLog(const std::string& path) {
  constexpr std::size_t kHeader = 32;
  constexpr std::size_t kFrameHeader = 24;
  constexpr std::size_t kPageSizeAt = 8;
  constexpr std::size_t kSaltsAt = 16;
  constexpr std::size_t kFrameSaltsAt = 8;
  constexpr std::size_t kSalts = 8;
  std::ifstream in(path, std::ios::binary);
  std::array<char, kHeader> headerBytes;
  const auto header = Next(in, headerBytes);
  if (header.size() < kHeader) return {};
  std::vector<char> frameBytes(kFrameHeader + BigEndian(header.substr(kPageSizeAt)));
  Digest digest;
  for (auto frame = Next(in, frameBytes); !frame.empty(); frame = Next(in, frameBytes)) {
    if (frame.size() == frameBytes.size()) {
      const bool counts = frame.substr(kFrameSaltsAt, kSalts) == header.substr(kSaltsAt, kSalts);
      digest.Add(counts ? "counts" : "of before");
      digest.Add(frame.substr(0, kFrameSaltsAt));
      frame.remove_prefix(kFrameHeader);
    }
    digest.Add(frame);
  }
  return digest.Text();
}

void Put(std::ostream& out, std::string_view text) { out << text.size() << ' ' << text; }

std::string Take(std::istream& in) {
  std::size_t size = 0;
  in >> size;
  in.get();
  std::string text(size, '\0');
  in.read(text.data(), static_cast<std::streamsize>(size));
  return text;
}

}  // namespace

void KeepReadings(std::string folder) {
  fs::create_directories(folder);
  Folder() = std::move(folder);
}

Readings::Readings(const std::string& path) {
  if (Folder().empty() || fs::exists(path + "-journal")) return;
  content_ = DigestOfFile(path) + "+" + DigestOfLog(path + "-wal");
}

std::string Readings::FileOf(std::string_view sql) const {
  return fmt::format("{}/{}-{:x}", Folder(), content_, std::hash<std::string_view>()(sql));
}

std::optional<std::vector<Fields>> Readings::Find(std::string_view sql) const {
  if (content_.empty()) return std::nullopt;
  std::ifstream in(FileOf(sql), std::ios::binary);
  if (!in) return std::nullopt;
  std::vector<Fields> rows;
  std::size_t count = 0;
  in >> count;
  for (std::size_t row = 0; row < count; ++row) {
    std::size_t fields = 0;
    in >> fields;
    auto& read = rows.emplace_back();
    for (std::size_t field = 0; field < fields; ++field) {
      auto column = Take(in);
      read.emplace(std::move(column), Take(in));
    }
  }
  return rows;
}

void Readings::Keep(std::string_view sql, const std::vector<Fields>& rows) const {
  if (content_.empty()) return;
  const auto path = FileOf(sql);
  const auto unfinished = path + ".tmp";
  {
    std::ofstream out(unfinished, std::ios::binary);
    out << rows.size() << ' ';
    for (const auto& row : rows) {
      out << row.size() << ' ';
      for (const auto& [column, value] : row) {
        Put(out, column);
        Put(out, value);
      }
    }
    if (!out) return;
  }
  std::error_code ignored;
  fs::rename(unfinished, path, ignored);
}

}  // namespace twqb::sweep
