// Links between rows and records that were there before anything was sent: written as a send writes them, on the word
// of whoever looked at both.
//
// Which they may be, engine/TwinFinder says; how a row of each table gets its link, its `takeUp`. Nothing else of row
// or record is changed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "engine/Table.h"
#include "engine/TwinFinder.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// Which side of a pair counts as the newer one from then on.
enum class Newer : std::uint8_t {
  AsDated,     // what the dates of both say
  BillingDb,   //
  QuickBooks,  //
};

// What became of a pair.
enum class PairEnd : std::uint8_t { Shown, Linked, Declined, Failed };
struct PairTold {
  LikelyPair pair;
  PairEnd end = PairEnd::Shown;
  std::string why = {};  // it failed
};

struct TablePairs {
  const Table* table = nullptr;
  std::vector<PairTold> pairs = {};
  std::size_t unlinked = 0;    // rows without a link, ahead of all
  std::size_t staying = 0;     // that can't go: what they belong to has no link
  std::size_t unreadable = 0;  // of which nothing can be made
};

// Finds the likely pairs of the table, and writes nothing.
void ShowPairs(TablePairs& told, QBSessionManager& session);

// Links the exact pairs of the table, and those of the others that `confirms` says are the same. With the link go those
// of lines, and the date of a row that has none: all of it is written, or nothing. What was done by then stands in
// `told` when `confirms` raises. False: whoever looks on wants no more pairs, and those that were not settled by then,
// the one in question too, stay shown.
[[nodiscard]] bool LinkPairs(TablePairs& told, Newer newer, QBSessionManager& session,
                             const std::function<bool(const LikelyPair& pair)>& confirms);

}  // namespace twqb
