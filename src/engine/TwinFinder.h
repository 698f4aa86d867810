// Rows without a link beside the records of QuickBooks that nothing is linked to: which of them are likely the same.
//
// It reads both sides and writes nothing. What a row would be in QuickBooks says the way of its send
// (engine/RowLook.h); what is linked, and what the user is asked, is the callers' affair.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Table.h"
#include "engine/TwinPool.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// A field that both sides have, as QuickBooks has it.
struct FieldPair {
  std::string field;
  std::string billing;
  std::string quickBooks;  // "": nothing
};

struct LikelyPair {
  std::string key;
  std::string request;  // that the row would be added by
  std::string row;      // what it is called there
  Record record;
  std::string identifier;
  std::string recordName;
  Likeness likeness;  // exact: nothing else is like it on either side
  std::vector<std::string> agreeing;
  std::vector<FieldPair> differing;
};

struct LikelyPairs {
  std::vector<LikelyPair> pairs;  // exact ones first, then the likeliest
  std::size_t unlinked = 0;       // rows without a link
  std::size_t staying = 0;        // that can't go, for what they belong to has no link
  std::size_t unreadable = 0;     // of which nothing can be made, for a key or a value of theirs
};

// What becomes of a row whose place is below another one that has no link yet.
enum class AtTop : std::uint8_t {
  Stays,     // it waits for that link
  IsLooked,  // it is looked for where a send would put it
};

struct PairSearch {
  std::optional<std::string> key = {};  // of one row; nothing: all
  AtTop atTop = AtTop::Stays;
};

// Of one table. Raises when a side can't be read.
[[nodiscard]] LikelyPairs FindLikelyPairs(const Table& table, std::span<const Table* const> tables,
                                          QBSessionManager& session, const PairSearch& search = {});

}  // namespace twqb
