// A made firm's folder whose two sides can be had as files, or as if they were elsewhere.
//
// For tests of commands that hold the one against the other. What goes on between the two sides is Elsewhere's.
#pragma once

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/system/FrozenMachine.h"
#include "cli/options/Options.h"
#include "cli/preview/Preview.h"
#include "cli/preview/PreviewReport.h"
#include "cli/workplace/CompanyAnswer.h"
#include "cli/workplace/FolderMaker.h"
#include "platform/Text.h"
#include "tests/firm/Elsewhere.h"
#include "tests/firm/WholeState.h"
#include "tests/support/Process.h"

namespace twqb {

// A firm's folder, which is the current one meanwhile; what is temporary stands in a folder of its own.
class Office {
 public:
  // The dialect of the database is told from its provider: "JETLITE" here is "JETFARAWAY" there.
  enum class Dialect : bool { Sql, Jet };
  explicit Office(const cli::FolderPlan& plan, Dialect dialect = Dialect::Sql)
      : files_{.folder = folder_.Path()},
        machine_({.libraryFolder = files_.folder, .registryFile = files_.Path("registry.ini")}, clock_) {
    cli::MakeFolder(files_.folder, plan, machine_);
    std::filesystem::current_path(files_.folder);
    if (const auto* was = std::getenv("TMPDIR")) tmp_ = was;
    ::setenv("TMPDIR", temporary_.Path().c_str(), 1);
    if (dialect == Dialect::Jet) here_ = "Provider=JETLITE;Data Source=" + files_.Path("billing.db");
    elsewhere.emplace(files_, machine_, dialect == Dialect::Jet ? "JETFARAWAY" : "SQLFARAWAY");
    sides_ = elsewhere->Sides();
  }
  ~Office() {
    tmp_ ? ::setenv("TMPDIR", tmp_->c_str(), 1) : ::unsetenv("TMPDIR");
    std::filesystem::current_path(before_);
  }
  Office(const Office&) = delete;
  Office& operator=(const Office&) = delete;

  [[nodiscard]] cli::Options Here() const { return {.billing = here_, .noProgress = true, .clock = clock_}; }
  [[nodiscard]] cli::Options There() const {
    auto options = Here();
    options.billing = elsewhere->Connection();
    options.quickBooksItself = true;
    options.sides = &sides_;
    return options;
  }
  // The files that are others than in `before`, but for the lock that sessions leave beside the company file.
  using Bytes = std::map<std::string, std::string>;
  [[nodiscard]] Bytes Files() const { return BytesOf(files_.folder); }
  [[nodiscard]] std::string Changed(const Bytes& before) const {
    std::string names;
    for (const auto& [name, bytes] : Files()) {
      const auto then = before.find(name);
      if (!name.ends_with("/company.twq.lock") && (then == before.end() || then->second != bytes)) names += name + " ";
    }
    return names;
  }
  [[nodiscard]] bool IsTidy() const { return std::filesystem::is_empty(temporary_.Path()); }

  // The lines of both previews are the same.
  void ExpectSamePreview(const cli::TransferRequest& request) { ExpectSamePreview(request, There()); }
  void ExpectSamePreview(const cli::TransferRequest& request, const cli::Options& there) {
    SCOPED_TRACE(fmt::format("{} {}", request.direction == Direction::Send ? "send" : "get", int{request.table}));
    ExpectSameLines(cli::PreviewJson(cli::RunPreview(Here(), request), "v"),
                    cli::PreviewJson(cli::RunPreview(there, request), "v"));
  }
  // Somebody at QuickBooks adds one, whose identifier this is.
  [[nodiscard]] std::string AddCustomer(const std::string& name) {
    company::CompanyFile file(files_.Path("company.twq"), machine_);
    const auto form = cli::FormOf(file);
    const cli::CompanyAnswer answer(
        std::move(file), form,
        fmt::format("<CustomerAddRq><CustomerAdd><Name>{}</Name></CustomerAdd></CustomerAddRq>", name));
    return answer.Response().first_child().child_value("ListID");
  }
  // Somebody at QuickBooks sets something.
  template <typename Value>
  void Set(Value company::CompanyConditions::*condition, Value value) {
    company::CompanyFile file(files_.Path("company.twq"), machine_);
    auto conditions = file.GetConditions();
    conditions.*condition = value;
    file.SetConditions(conditions);
  }
  static void ExpectSameLines(const std::string& here, const std::string& there) {
    const auto expected = Split(here, '\n');
    const auto found = Split(there, '\n');
    EXPECT_GT(expected.size(), 2U);
    for (std::size_t i = 0; i < std::min(expected.size(), found.size()); ++i) {
      if (expected[i] == found[i]) continue;
      ADD_FAILURE() << expected[i] << "\n" << found[i];
      return;
    }
    EXPECT_EQ(expected.size(), found.size());
  }

  std::optional<Elsewhere> elsewhere;

 private:
  const std::filesystem::path before_ = std::filesystem::current_path();
  TemporaryFolder folder_;
  TemporaryFolder temporary_;
  FirmFiles files_;
  FrozenOptions clock_ = {.now = TextToDate("2008-03-05T10:00:00"),
                          .zone = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard},
                          .seed = 7};
  FrozenMachine machine_;
  std::string here_;
  std::optional<std::string> tmp_;
  cli::OtherSides sides_;
};

}  // namespace twqb
