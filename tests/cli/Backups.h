// A folder with two clients that stand on one side, the first transfer's question behind them: for tests of sets, of
// restore and of undo.
#pragma once

#include <fmt/core.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "Program.h"
#include "platform/Text.h"

namespace twqb::cli {

// Tells one content of a file from another, in a line.
inline std::string Mark(const std::string& bytes) {
  return fmt::format("{} bytes {:016x}", bytes.size(), HashOf(bytes));
}

inline const std::vector<std::string> kFiles = {"billing.db", "company.twq", "twqb.ini", "registry.ini"};

class Backups : public testing::Test {
 protected:
  Backups() {
    folder_.Done({"init"});
    folder_.Write("yes.txt", "default yes\n");
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
    Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ACME', 'Acme'), ('BOLT', 'Bolt')");
  }

  void Sql(const std::string& statements) const { folder_.Done({"billing", "run", "-e", statements}); }
  void Send(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> words = {"send", "clients", "--answers", "yes.txt"};
    words.insert(words.end(), options.begin(), options.end());
    folder_.Done(words);
  }
  [[nodiscard]] std::vector<std::string> Bytes() const {
    std::vector<std::string> bytes;
    for (const auto& name : kFiles) bytes.push_back(Mark(folder_.Read(name)));
    return bytes;
  }
  // The sets as the program tells them, the oldest first.
  [[nodiscard]] std::vector<nlohmann::json> Sets() const {
    std::istringstream lines(folder_.Done({"backup", "--list", "--json"}));
    std::vector<nlohmann::json> sets;
    for (std::string line; std::getline(lines, line);) sets.push_back(nlohmann::json::parse(line));
    return sets;
  }
  [[nodiscard]] std::string Newest() const { return Sets().back().at("set"); }
  [[nodiscard]] std::string Linked() const {
    return folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''");
  }
  // Everything but the sets' own folder, and what a file is replaced by.
  void ExpectNothingLeftBehind() const {
    for (const auto& name : folder_.Names()) EXPECT_THAT(name, testing::Not(testing::HasSubstr(".restoring")));
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "backups" / "restore.json"));
  }

  WorkFolder folder_;
};

}  // namespace twqb::cli
