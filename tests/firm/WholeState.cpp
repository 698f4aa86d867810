#include "tests/firm/WholeState.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <pugixml.hpp>
#include <sstream>
#include <string_view>
#include <vector>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"

namespace twqb {

namespace {

std::string TextIn(const Value& value) {
  const auto* date = std::get_if<Date>(&value);
  return date != nullptr ? IsoDate(*date) : ToText(value);
}

void ReadTable(ado::Connection& connection, const std::string& table, WholeState& state) {
  std::vector<std::string> keys;
  const auto columns = connection.Execute(
      fmt::format("SELECT name FROM pragma_table_info('{}') WHERE pk > 0 ORDER BY pk", table), nullptr);
  for (; !columns->Eof(); columns->MoveNext()) keys.push_back(ToText(columns->FieldAt(0)));
  const auto rows = connection.Execute("SELECT * FROM " + table, nullptr);
  for (; !rows->Eof(); rows->MoveNext()) {
    std::vector<std::string> key;
    for (const auto& column : keys) key.push_back(ToText(rows->Field(column)));
    auto& fields = state.rows[fmt::format("{} {}", table, Join(key, ","))];
    for (int i = 0; i < rows->FieldCount(); ++i) {
      if (const auto value = rows->FieldAt(i); !IsNull(value)) fields[rows->FieldName(i)] = TextIn(value);
    }
  }
}

void ReadFields(pugi::xml_node parent, const std::string& above, WholeState::Fields& fields) {
  constexpr std::array<std::string_view, 7> kGiven = {"TimeCreated", "TimeModified", "EditSequence", "TxnNumber",
                                                      "TxnID",       "TxnLineID",    "ListID"};
  std::map<std::string, int> count;
  for (const auto node : parent.children()) {
    const std::string name = node.name();
    const bool isReference = std::string_view(parent.name()).ends_with("Ref");
    if (std::ranges::find(kGiven, name) != kGiven.end() && (!isReference || parent.child("FullName"))) continue;
    auto path = above + (above.empty() ? "" : "/") + name;
    const int number = ++count[name];
    if (number > 1 || name.find("LineRet") != std::string::npos) path += fmt::format("[{}]", number);
    if (node.first_child().type() == pugi::node_element) {
      ReadFields(node, path, fields);
    } else {
      fields[path] = node.child_value();
    }
  }
}

class Company {
 public:
  Company(const std::string& path, Machine& machine) : file_(path, machine) {
    const auto accepts = file_.Summary().options.accepts;
    if (!accepts.empty() && accepts.front() != messages::Country::AU) form_.country = accepts.front();
  }

  void ReadInto(WholeState& state) {
    for (const auto& kind : file_.Summary().kinds) {
      // What is asked of lists is refused by transactions, and the other way round.
      for (const auto* fields : {"<ActiveStatus>All</ActiveStatus>", "<IncludeLineItems>true</IncludeLineItems>", ""}) {
        try {
          if (Read(kind.name, fields, state)) break;
        } catch (const PlatformError&) {
          continue;
        }
      }
    }
  }

 private:
  bool Read(const std::string& kind, const std::string& fields, WholeState& state) {
    const auto answer = file_.Process(
        fmt::format("<?xml version=\"1.0\"?><?qbxml version=\"{0}\"?><QBXML><QBXMLMsgsRq onError=\"continueOnError\">"
                    "<{1}QueryRq>{2}</{1}QueryRq></QBXMLMsgsRq></QBXML>",
                    messages::FormTag(form_), kind, fields));
    pugi::xml_document document;
    document.load_string(answer.c_str());
    const auto response = document.child("QBXML").child("QBXMLMsgsRs").first_child();
    for (const auto record : response.children()) {
      const std::string list = record.child_value("ListID");
      const auto name = kind + " " + (list.empty() ? record.child_value("TxnID") : list);
      ReadFields(record, "", state.records[name]);
      state.editSequences[name] = record.child_value("EditSequence");
    }
    return response && std::string_view(response.attribute("statusSeverity").value()) != "Error";
  }

  company::CompanyFile file_;
  messages::Form form_;
};

std::string Shown(const WholeState::Fields& fields, const std::string& name) {
  const auto found = fields.find(name);
  return found == fields.end() ? "-" : found->second;
}

void Compare(const std::string& what, const WholeState::Fields& before, const WholeState::Fields& after,
             Differences& differences) {
  auto names = before;
  names.insert(after.begin(), after.end());
  for (const auto& [name, ignored] : names) {
    const auto then = Shown(before, name);
    const auto now = Shown(after, name);
    if (then != now) differences.insert(fmt::format("{} {}: {} -> {}", what, name, then, now));
  }
}

using Parts = std::map<std::string, WholeState::Fields>;

const WholeState::Fields& In(const Parts& parts, const std::string& name) {
  static const WholeState::Fields kNone;
  const auto found = parts.find(name);
  return found == parts.end() ? kNone : found->second;
}

}  // namespace

WholeState ReadWhole(const FirmFiles& files, Machine& machine) {
  WholeState state;
  const auto connection = SqliteProvider().CreateConnection();
  connection->SetConnectionString(files.Connection() + ";Mode=Read");
  connection->Open();
  const auto tables = connection->Execute("SELECT name FROM sqlite_master WHERE type = 'table'", nullptr);
  for (; !tables->Eof(); tables->MoveNext()) ReadTable(*connection, ToText(tables->FieldAt(0)), state);
  connection->Close();
  Company(files.Path("company.twq"), machine).ReadInto(state);
  return state;
}

Differences RowDifferences(const WholeState& before, const WholeState& after) {
  auto names = before.rows;
  names.insert(after.rows.begin(), after.rows.end());
  Differences differences;
  for (const auto& [name, ignored] : names) Compare(name, In(before.rows, name), In(after.rows, name), differences);
  return differences;
}

Differences RecordDifferences(const WholeState& before, const WholeState& after) {
  Differences differences;
  for (const auto& [name, sequence] : after.editSequences) {
    const auto then = before.editSequences.find(name);
    if (then != before.editSequences.end() && then->second == sequence) continue;
    Compare(name, In(before.records, name), In(after.records, name), differences);
  }
  return differences;
}

std::string Unlike(const Differences& one, const Differences& other) {
  constexpr std::size_t kShown = 5;
  std::string text;
  const auto add = [&](const Differences& left, const Differences& right, std::string_view sign) {
    std::vector<std::string> alone;
    std::ranges::set_difference(left, right, std::back_inserter(alone));
    for (std::size_t i = 0; i < std::min(kShown, alone.size()); ++i) text += fmt::format("{} {}\n", sign, alone[i]);
  };
  add(one, other, "said alone:");
  add(other, one, "done alone:");
  return text;
}

std::map<std::string, std::string> BytesOf(const std::string& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ostringstream bytes;
    bytes << std::ifstream(entry.path(), std::ios::binary).rdbuf();
    files[entry.path().string()] = bytes.str();
  }
  return files;
}

}  // namespace twqb
