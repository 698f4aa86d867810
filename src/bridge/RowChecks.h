// What of a table's rows would fail in a send, or be lost on the way, found without one: the table makes of each row
// the request that its send would make (engine/RowLook.h), and that is looked at.
//
// It reads both sides and writes nothing. What shows only in QuickBooks' answers is not found here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/Table.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

enum class Check : std::uint8_t {
  QuoteInKey,
  ColonInName,
  ControlCharacters,
  TextCut,
  TextTooLong,
  UnreadableDate,
  ParentUnlinked,
  ParentMissing,
  NameClash,
  MissingAccount,
  MissingPayrollItem,
  Unreadable,  // something else of the row
  Refused,     // QuickBooks would not have it
};

// For programs: "quoteInKey".
[[nodiscard]] std::string_view CheckName(Check check);

struct Finding {
  std::string key;
  std::string name;  // what the row would be called in QuickBooks; "" where it did not get so far
  Check check = Check::Unreadable;
  std::string rule;    // a sentence: what it runs into
  std::string advice;  // and one: what to do
};

struct TableFindings {
  const Table* table = nullptr;
  std::size_t rows = 0;  // that were looked at
  std::vector<Finding> findings = {};
};

// Checks tables one after the other; what QuickBooks has is read once, and only where a row refers to it. Names are
// held against the rows without a link of all tables, also of those that are not checked.
class RowChecker {
 public:
  RowChecker(QBSessionManager& session, std::vector<const Table*> checked);
  ~RowChecker();
  RowChecker(const RowChecker&) = delete;
  RowChecker& operator=(const RowChecker&) = delete;

  // Raises when a side can't be read.
  void Check(TableFindings& told);

 private:
  class Look;
  using Names = std::map<std::pair<std::string, std::string>, std::pair<std::string, std::string>>;

  void CheckRow(TableFindings& told, std::string_view key, std::string_view link, const KeyPlace& place, Look& look);
  void CheckValues(const Table& table, const Look& look, bool isLinked, std::vector<Finding>& findings);
  void CheckName(const Table& table, const KeyPlace& place, const Look& look, std::string_view key,
                 std::vector<Finding>& findings);
  void CheckReference(const Table& table, const std::string& path, const std::string& text,
                      std::vector<Finding>& findings);

  // The identifiers and full names of what a query finds, folded.
  const std::set<std::string>& Known(std::string_view query);
  // Who has a name, by what it stands below and the name.
  Names& NamesOf(std::span<const std::string_view> queries);
  // Those that the rows of a table would have there which have no link yet.
  void AddNamesOfRows(const Table& table, Names& names);

  // What the name of a row has to be its own below: the parent's identifier, or, while that has no link, its key.
  [[nodiscard]] static std::string PlaceOf(const Table& table, const KeyPlace& place, std::string_view key,
                                           const Look& look);

  // What the row is of and BillingDb does not have, so that no send selects it.
  [[nodiscard]] static std::vector<Finding> MissingParents(const Table& table, const KeyPlace& place,
                                                           std::string_view key);

  // What the row would be; what was told of it meanwhile, by boxes or an error, in one text, "" for nothing.
  [[nodiscard]] std::string LookAt(const Table& table, std::string_view key, const KeyPlace& place, Look& look);

  QBSessionManager& session_;
  std::vector<const Table*> checked_;
  std::map<std::string, std::set<std::string>, std::less<>> known_;
  std::map<const std::string_view*, Names> names_;
};

}  // namespace twqb
