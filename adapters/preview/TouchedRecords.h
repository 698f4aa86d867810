// Which records of QuickBooks a run has added, changed and deleted, as the answers to it tell.
//
// It reads answers and asks nothing. What a change did to other records (a balance, what an invoice is still owed) is
// not among it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace twqb::preview {

enum class Touch : std::uint8_t { Added, Changed, Removed };

struct TouchedRecord {
  std::string kind;        // "Customer"
  std::string identifier;  // ListID or TxnID
  bool isTransaction = false;
  Touch first = Touch::Added;  // what was done to it first

  friend bool operator==(const TouchedRecord&, const TouchedRecord&) = default;
};

class TouchedRecords {
 public:
  // An answer to requests that change something, or to others.
  void Note(std::string_view answer);
  // Each once, in the order in which they were touched first.
  [[nodiscard]] const std::vector<TouchedRecord>& All() const { return records_; }

 private:
  void Add(TouchedRecord record);

  std::vector<TouchedRecord> records_;
  std::map<std::string, std::size_t, std::less<>> byIdentifier_;
};

}  // namespace twqb::preview
