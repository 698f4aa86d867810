// The pieces that backups are made of: each part of a file stands once, under its digest, however many sets have it.
//
// A transfer of one record changes a few pages of a database of any size, so a set costs what was changed since the one
// before. A piece is on the disk before it has its name: what has one is whole, whenever a process died. Which pieces a
// set has is the sets' own business.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "adapters/system/FileDescriptor.h"

namespace twqb::backup {

// A file as pieces.
struct Content {
  std::uint64_t size = 0;
  std::string pieces;  // their digests, one behind the other

  // SHA-256 over the digests of the pieces.
  [[nodiscard]] std::string Digest() const;
  friend bool operator==(const Content&, const Content&) = default;
};

class PieceStore {
 public:
  explicit PieceStore(std::string folder) : folder_(std::move(folder)) {}

  // Reads the file, and keeps the pieces that are not there yet, or not as they were; they count as kept with the next
  // Settle. `goOn` is
  // asked between the pieces: False raises BackupEnded. Raises BackupError.
  [[nodiscard]] Content Keep(const std::string& file, const std::function<bool()>& goOn);
  // Puts what was kept on the disk. Raises BackupError.
  void Settle();

  // Calls `take` with the pieces in their order. Raises BackupError for one that is missing, or not what it was.
  void Read(const Content& content, const std::function<void(std::string_view)>& take) const;

  // Whether the file is made of these pieces, which need not be there themselves. False for one that can't be read.
  // Raises BackupEnded as Keep does.
  [[nodiscard]] static bool IsMadeOf(const std::string& file, const Content& content,
                                     const std::function<bool()>& goOn);

  // Removes every piece whose digest is not among them, and what killed processes have left. Never fails.
  void RemoveAllBut(const std::unordered_set<std::string_view>& digests) const;

 private:
  struct Fresh {
    std::string temporary;
    std::string path;
  };

  [[nodiscard]] std::string PathOf(std::string_view digest) const;
  [[nodiscard]] Fresh Write(std::string_view digest, std::string_view bytes, unsigned number) const;

  std::string folder_;
  std::vector<Fresh> fresh_;
  unsigned counter_ = 0;
};

}  // namespace twqb::backup
