#include "adapters/windows/qbfc/LastAnswer.h"

#include <utility>

namespace twqb::windows {

LastAnswer::Kept::~Kept() {
  if (--last_.keepers_ == 0) last_.answer_ = {};
}

void LastAnswer::Note(LateObject answer) {
  if (keepers_ > 0) answer_ = std::move(answer);
}

LateObject LastAnswer::Detail() {
  std::vector<Variant> first;
  first.emplace_back(0L);
  return answer_.GetObject("ResponseList").CallObject("GetAt", std::move(first)).GetObject("Detail");
}

}  // namespace twqb::windows
