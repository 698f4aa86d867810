// Both sides of a firm, whole, at one moment; and what differs between two moments, as texts.
//
// By names of its own for fields, so that what a preview tells can be held against it.
#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/machine.h"

namespace twqb {

// The four files of a folder.
struct FirmFiles {
  std::string folder;

  [[nodiscard]] std::string Path(const std::string& name) const { return folder + "/" + name; }
  [[nodiscard]] std::string Connection() const { return "Provider=SQLITE;Data Source=" + Path("billing.db"); }
};

struct WholeState {
  using Fields = std::map<std::string, std::string>;  // by name; those that are NULL, or not there, are not in it
  std::map<std::string, Fields> rows;                 // by table and key
  std::map<std::string, Fields> records;              // by kind and identifier
  std::map<std::string, std::string> editSequences;   // likewise
};
[[nodiscard]] WholeState ReadWhole(const FirmFiles& files, Machine& machine);

// "Client ABBOTT ClientPhone: 555 -> 556", "Client NEW ClientID: - -> NEW".
using Differences = std::multiset<std::string>;
[[nodiscard]] Differences RowDifferences(const WholeState& before, const WholeState& after);
// Of records that were added or changed by themselves: balances that follow have no edit of their own.
[[nodiscard]] Differences RecordDifferences(const WholeState& before, const WholeState& after);

// Of a few that one has and the other has not, for a failure's message.
[[nodiscard]] std::string Unlike(const Differences& one, const Differences& other);

// Every file of the folder: name and bytes.
[[nodiscard]] std::map<std::string, std::string> BytesOf(const std::string& folder);

}  // namespace twqb
