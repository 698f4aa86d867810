#include "tests/golden/HostTransfer.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <string_view>

#include "bridge/Tables.h"
#include "platform/Text.h"

namespace twqb {

namespace {

constexpr std::array kWithValue = {"--id", "--billing", "--company"};

// A command as it was typed, taken apart.
struct Command {
  std::vector<std::string> words;              // the verb first
  std::map<std::string, std::string> options;  // "" for a flag

  [[nodiscard]] std::string Has(const std::string& flag) const { return options.contains(flag) ? "True" : "False"; }
  [[nodiscard]] std::string ValueOf(const std::string& option) const {
    const auto found = options.find(option);
    return found == options.end() ? std::string() : found->second;
  }
  [[nodiscard]] const std::string& Word(std::size_t at) const {
    if (at >= words.size()) throw std::runtime_error("a word is missing behind " + words.front());
    return words[at];
  }
};

Command CommandOf(const std::vector<std::string>& words) {
  Command command;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const auto& word = words[i];
    if (!word.starts_with("--")) {
      command.words.push_back(word);
    } else if (std::ranges::find(kWithValue, word) != kWithValue.end() && i + 1 < words.size()) {
      command.options.emplace(word, words[++i]);
    } else {
      command.options.emplace(word, "");
    }
  }
  return command;
}

std::string DeclaredTable(const std::string& typed) {
  if (typed == "all") return "enAll";
  for (const auto* table : BuiltInTables()) {
    if (FoldCase(table->name) == typed) return "en" + std::string(table->name);
  }
  throw std::runtime_error("no table: " + typed);
}

HostCall TransferCall(const Command& command) {
  const bool hasId = command.options.contains("--id");
  return {.words = {command.Word(0) == "send" ? "SendDataToQB" : "GetDataFromQB", DeclaredTable(command.Word(1))},
          .first = {{"SetUsePreferencesTW", hasId ? "False" : "True"},
                    {"SetPassedID", command.ValueOf("--id")},
                    {"SetIsSync", command.Has("--sync")}}};
}

// The command line connects ahead of a list, so as to tell a failure from an empty one.
HostCall ListCall(const Command& command) {
  const std::map<std::string, HostWords> lists = {{"customers", {"GetCustomers", command.Has("--all")}},
                                                  {"employees", {"GetEmployees", command.Has("--all")}},
                                                  {"vendors", {"GetVendors", command.Has("--all")}},
                                                  {"classitems", {"GetClassItems"}}};
  const auto list = lists.find(command.Word(1));
  if (list == lists.end()) throw std::runtime_error("no list of these runs: " + command.Word(1));
  return {.words = list->second, .first = {{"ConnectToQB", "True"}}};
}

HostCall EventsCall(const Command& command) {
  if (command.Word(1) == "status") return {.words = {"IsSubscribedToQBEvents"}};
  return {.words = {"SubscribeToQBEvents", command.Word(1) == "on" ? "True" : "False"}};
}

HostCall CallOf(const Command& command) {
  const auto& verb = command.Word(0);
  if (verb == "send" || verb == "get") return TransferCall(command);
  if (verb == "list") return ListCall(command);
  if (verb == "events") return EventsCall(command);
  if (verb == "accounts") return {.words = {"HasQBAccounts"}, .recordedAs = "GetQBAccounts"};
  if (verb == "is-job") return {.words = {"IsJob", command.Word(1)}};
  if (verb == "delete-billing") return {.words = {"DeleteTWRecord", DeclaredTable(command.Word(1)), command.Word(2)}};
  if (verb == "delete-quickbooks") {
    return {.words = {"DeleteQBRecord", DeclaredTable(command.Word(1)), command.Word(2)}};
  }
  throw std::runtime_error("no operation of a host: " + verb);
}

}  // namespace

HostTransfer HostTransferOf(const std::vector<std::string>& words) {
  const auto command = CommandOf(words);
  return {.billing = command.ValueOf("--billing"),
          .company = command.ValueOf("--company"),
          .settings = {{"SetUseTWSTable", command.Has("--settings-table")},
                       {"SetIsQBSingleMode", command.Has("--single-user")},
                       {"SetNoProgressBar", command.Has("--no-progress")},
                       {"SetLeaveMsgBoxOpen", command.Has("--leave-open")}},
          .call = CallOf(command)};
}

}  // namespace twqb
