// Rows of values, stored as bytes in blocks: a selection is fetched whole, and a firm may have a million clients.
//
// A value takes its tag and what it needs: a small number two bytes, a text its bytes and one or two more. Rows are
// only ever added at the end; a row is read by decoding it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/Value.h"

namespace twqb::sqlite {

class CompactRows {
 public:
  void Add(const std::vector<Value>& row);
  [[nodiscard]] std::size_t Count() const { return places_.size(); }
  // `index` must be below Count.
  void Read(std::size_t index, std::vector<Value>& row) const;
  void Clear();

 private:
  struct Place {
    std::uint32_t block = 0;
    std::uint32_t begin = 0;
  };

  std::string row_;  // that is being added; kept for its memory
  std::vector<std::string> blocks_;
  std::vector<Place> places_;
};

}  // namespace twqb::sqlite
