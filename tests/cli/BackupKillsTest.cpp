// Restores and undos that are killed at their system calls: the next run completes them, or nothing has begun.
#include <fmt/core.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "LockedFile.h"
#include "Program.h"
#include "adapters/system/HeldFile.h"
#include "platform/Text.h"
#include "tests/support/Chance.h"
#include "tests/support/Killer.h"

namespace twqb::cli {
namespace {

namespace fs = std::filesystem;

using State = std::vector<std::string>;

const std::vector<std::string> kNames = {"billing.db", "company.twq", "twqb.ini", "registry.ini"};

// A folder whose last run was a send, and how it is ahead of it and behind it.
class SentFolder {
 protected:
  SentFolder() {
    folder_.Done({"init"});
    folder_.Write("yes.txt", "default yes\n");
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
    folder_.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID) VALUES ('ACME'), ('BOLT')"});
    before_ = Now();
    folder_.Done({"send", "clients", "--answers", "yes.txt"});
    after_ = Now();
    for (const auto& entry : fs::directory_iterator(folder_.Path() / "backups")) {
      if (fs::exists(entry.path() / "manifest.json")) set_ = entry.path().filename().string();
    }
    fs::copy(folder_.Path(), start_ / "all", fs::copy_options::recursive);
  }

  static State StateOf(const WorkFolder& folder, const std::string& within = {}) {
    State state;
    for (const auto& name : kNames) {
      state.push_back(fmt::format("{} {:016x}", name, HashOf(folder.Read(within + name))));
    }
    return state;
  }
  State Now() const { return StateOf(folder_); }
  void ExpectNothingLaidReady() const {
    for (const auto& name : folder_.Names()) EXPECT_EQ(name.find(".restoring"), std::string::npos) << name;
  }
  // The folder as it was ahead of the first kill, under the same path.
  void Again() const { Again("all"); }
  void Again(const std::string& copy) const {
    for (const auto& entry : fs::directory_iterator(folder_.Path())) fs::remove_all(entry.path());
    fs::copy(start_ / copy, folder_.Path(), fs::copy_options::recursive);
  }
  // In BillingDb, from a folder that knows nothing of what was broken off in this one.
  void Change(const std::string& sql) const {
    const WorkFolder elsewhere;
    elsewhere.Done({"billing", "run", "-e", sql, "--billing",
                    "Provider=SQLITE;Data Source=" + (folder_.Path() / "billing.db").string()});
  }
  // In the child.
  void Become(const std::vector<std::string>& arguments) const {
    std::vector<std::string> words = {TWQB_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    if (arguments.front() == "restore") words.push_back(set_);
    std::vector<char*> argv;
    for (auto& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    const auto silent = folder_.Path() / "silent";
    if (std::freopen(silent.c_str(), "w", stdout) == nullptr || std::freopen(silent.c_str(), "w", stderr) == nullptr) {
      return;
    }
    if (chdir(folder_.Path().c_str()) == 0) execv(argv[0], argv.data());
  }

  WorkFolder folder_;
  TemporaryFolder start_;
  std::string set_;  // of before the send
  State before_;
  State after_;
};

class Killed : public SentFolder, public testing::TestWithParam<std::vector<std::string>> {};

class BrokenOffRestore : public SentFolder, public testing::Test {
 protected:
  // Kills a run of it where it has begun, and `isIt` holds.
  template <typename Predicate>
  void BreakOff(const std::vector<std::string>& restore, Predicate isIt) {
    const auto body = [&] { Become(restore); };
    std::uint64_t tooEarly = 0;
    auto tooLate = MeasureInChild(body).systemCalls;
    while (tooEarly + 1 < tooLate) {
      const auto n = (tooEarly + tooLate) / 2;
      Again();
      static_cast<void>(KillInChild(body, {.n = n}));
      const bool hasBegun = fs::exists(folder_.Path() / "backups" / "restore.json");
      if (hasBegun && isIt()) return;
      (Now() == after_ ? tooEarly : tooLate) = n;
    }
    FAIL() << "there is no such moment";
  }
  // With some of it done, and the rest to do.
  void BreakOffInTheMiddle() {
    BreakOff({"restore", "--answers", "yes.txt"}, [this] {
      const auto now = Now();
      return now != before_ && now != after_;
    });
  }
  // BillingDb is as of the set, the company file is not yet.
  void BreakOffBetweenTheSides() {
    BreakOff({"restore", "--answers", "yes.txt"}, [this] {
      const auto now = Now();
      return now[0] == before_[0] && now[1] == after_[1];
    });
  }
  // Those of the set, and the new file that was made of them.
  void DamageTheCompanyPieces() const {
    for (const auto& name : folder_.Names()) {
      if (name.find(".restoring") != std::string::npos) fs::remove(folder_.Path() / name);
    }
    folder_.Write(PieceOf(1), "nothing of it");
  }
  // The first piece of a file of the set.
  [[nodiscard]] std::string PieceOf(std::size_t file) const {
    const auto manifest = nlohmann::json::parse(folder_.Read("backups/" + set_ + "/manifest.json"));
    const auto digest = manifest.at("files").at(file).at("pieces").get<std::string>();
    constexpr std::size_t kDigestLength = 64;
    return "backups/pieces/" + digest.substr(0, 2) + "/" + digest.substr(2, kDigestLength - 2);
  }
  // The first set of changes that the text tells of.
  static std::string KeptSet(const std::string& text) {
    const std::string told = "Something has changed since a restore was broken off, and is kept: \"twqb restore ";
    const auto at = text.find(told);
    EXPECT_NE(at, std::string::npos) << text;
    return at == std::string::npos ? ""
                                   : text.substr(at + told.size(), text.find('"', at + told.size()) - at - told.size());
  }
  [[nodiscard]] std::size_t Customers() const {
    const auto listed = folder_.Done({"list", "customers", "--json"});
    return static_cast<std::size_t>(std::ranges::count(listed, '\n'));
  }
  [[nodiscard]] std::size_t SetsByHand() const {
    const auto listed = folder_.Done({"backup", "--list", "--json"});
    std::size_t count = 0;
    for (auto at = listed.find("\"hand\""); at != std::string::npos; at = listed.find("\"hand\"", at + 1)) ++count;
    return count;
  }
};

TEST_P(Killed, Anywhere_it_is_completed_by_the_next_run_or_has_not_begun) {
  constexpr int kKills = 40;
  const auto body = [this] { Become(GetParam()); };
  const auto length = MeasureInChild(body);
  ASSERT_EQ(Now(), before_) << "it is one that puts back";
  Chance chance(static_cast<unsigned>(HashOf(GetParam().front())));
  int completed = 0;
  int begun = 0;
  for (int i = 0; i < kKills; ++i) {
    // Most of them near the end, where files are replaced.
    const auto last = std::min<std::uint64_t>(length.systemCalls, 1000);
    const auto from = i % 4 == 0 ? 0 : length.systemCalls - last;
    const KillPlan plan{.n = from + 1 + chance.Place(length.systemCalls - from)};
    SCOPED_TRACE(fmt::format("killed at call {} of {}", plan.n, length.systemCalls));
    Again();
    if (!KillInChild(body, plan)) continue;
    const bool hasBegun = fs::exists(folder_.Path() / "backups" / "restore.json");
    if (hasBegun) ++begun;
    // Whatever command comes next.
    const auto next = folder_.Twqb({"status"});
    EXPECT_EQ(next.status, 0) << next.err;
    EXPECT_EQ(next.err.find("that is completed now") != std::string::npos, hasBegun) << next.err;
    const auto now = Now();
    if (hasBegun) {
      EXPECT_EQ(now, before_);
    }
    EXPECT_TRUE(now == before_ || now == after_);
    if (now == before_) ++completed;
    EXPECT_FALSE(fs::exists(folder_.Path() / "backups" / "restore.json"));
    // And the one after that finds a folder as any other: what was laid ready is gone.
    EXPECT_EQ(folder_.Twqb({"send", "clients", "--answers", "yes.txt"}).status, 0);
    ExpectNothingLaidReady();
    EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "2");
    for (const auto& set : fs::directory_iterator(folder_.Path() / "backups")) {
      const bool isSet = set.path().filename().string().starts_with("20");
      EXPECT_TRUE(!isSet || fs::exists(set.path() / "manifest.json"));
    }
  }
  EXPECT_GT(completed, 0);
  EXPECT_GT(begun, 0) << "some kill has met it between the journal and its end";
}

TEST_F(BrokenOffRestore, Keeps_what_has_changed_since_before_it_is_completed) {
  BreakOffInTheMiddle();
  folder_.Write("registry.ini", folder_.Read("registry.ini") + "[Somebody]\nWas=here\n");
  const auto next = folder_.Twqb({"status"});
  EXPECT_EQ(next.status, 0) << next.err;
  EXPECT_EQ(Now(), before_);
  folder_.Done({"restore", KeptSet(next.err), "--answers", "yes.txt"});
  EXPECT_THAT(folder_.Read("registry.ini"), testing::HasSubstr("Was=here"));
}

// The set of what somebody changed, put back; then both sides go together.
TEST_F(BrokenOffRestore, Keeps_what_has_changed_beside_what_goes_with_it) {
  for (const bool isBillingReplaced : {true, false}) {
    SCOPED_TRACE(isBillingReplaced ? "BillingDb is replaced" : "BillingDb is not replaced yet");
    Again();
    if (isBillingReplaced) {
      BreakOffBetweenTheSides();
    } else {
      BreakOff({"restore", "--answers", "yes.txt"}, [this] { return Now() == after_; });
    }
    Change("INSERT INTO Client (ClientID) VALUES ('SOMEBODY')");
    const auto next = folder_.Twqb({"status"});
    EXPECT_EQ(Now(), before_);
    folder_.Done({"restore", KeptSet(next.err), "--answers", "yes.txt"});
    EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE ClientID = 'SOMEBODY'"), "1");
    EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), isBillingReplaced ? "0" : "2");
    folder_.Done({"send", "clients", "--answers", "yes.txt"});
    EXPECT_EQ(Customers(), 3U);
  }
}

TEST_F(BrokenOffRestore, Keeps_each_state_that_has_changed_by_itself) {
  BreakOffBetweenTheSides();
  Change("INSERT INTO Client (ClientID) VALUES ('SOMEBODY')");
  folder_.Write("registry.ini", folder_.Read("registry.ini") + "[Somebody]\nWas=here\n");
  const auto next = folder_.Twqb({"status"});
  const auto first = KeptSet(next.err);
  const auto second = KeptSet(next.err.substr(next.err.find(first)));
  ASSERT_NE(first, second);
  folder_.Done({"restore", first, "--answers", "yes.txt"});
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "0");
  EXPECT_EQ(Customers(), 0U);
  folder_.Done({"restore", second, "--answers", "yes.txt"});
  EXPECT_THAT(folder_.Read("registry.ini"), testing::HasSubstr("Was=here"));
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "2");
  EXPECT_EQ(Customers(), 2U);
}

TEST_F(BrokenOffRestore, Is_completed_however_often_its_completion_is_killed) {
  BreakOffBetweenTheSides();
  Change("INSERT INTO Client (ClientID) VALUES ('SOMEBODY')");
  fs::permissions(folder_.Path() / "billing.db", static_cast<fs::perms>(0664));
  fs::copy(folder_.Path(), start_ / "changed", fs::copy_options::recursive);
  const auto body = [this] { Become({"status"}); };
  const auto length = MeasureInChild(body).systemCalls;
  constexpr std::uint64_t kKills = 60;
  std::uint64_t inTheMiddle = 0;
  for (std::uint64_t i = 1; i <= kKills; ++i) {
    const auto n = length * i / kKills;
    SCOPED_TRACE(fmt::format("killed at call {} of {}", n, length));
    Again("changed");
    if (!KillInChild(body, {.n = n})) continue;
    const bool isLeft = fs::exists(folder_.Path() / "backups" / "restore.json");
    if (isLeft) ++inTheMiddle;
    const auto next = folder_.Twqb({"status"});
    EXPECT_EQ(next.status, 0) << next.err;
    ASSERT_EQ(Now(), before_);
    EXPECT_EQ(SetsByHand(), 1U) << "what was changed is kept, and once";
    if (isLeft) {
      EXPECT_FALSE(KeptSet(next.err).empty());
    }
    EXPECT_EQ(fs::status(folder_.Path() / "billing.db").permissions(), static_cast<fs::perms>(0664));
    ExpectNothingLaidReady();
  }
  EXPECT_GT(inTheMiddle, kKills / 3);
}

TEST_F(BrokenOffRestore, Keeps_nothing_where_nothing_has_changed) {
  BreakOffInTheMiddle();
  const auto next = folder_.Twqb({"status"});
  EXPECT_THAT(next.err, testing::Not(testing::HasSubstr("Something has changed")));
  EXPECT_EQ(Now(), before_);
}

TEST_F(BrokenOffRestore, Is_completed_where_its_folder_was_moved_to) {
  BreakOffInTheMiddle();
  const WorkFolder moved;
  for (const auto& entry : fs::directory_iterator(folder_.Path())) {
    fs::copy(entry.path(), moved.Path() / entry.path().filename(), fs::copy_options::recursive);
  }
  const auto left = Now();
  EXPECT_EQ(moved.Twqb({"status"}).status, 0);
  EXPECT_EQ(StateOf(moved), before_);
  EXPECT_EQ(Now(), left);
}

TEST_F(BrokenOffRestore, Is_taken_back_by_undo_once_it_is_completed) {
  BreakOffInTheMiddle();
  folder_.Done({"status"});
  ASSERT_EQ(Now(), before_);
  EXPECT_THAT(folder_.Done({"undo"}), testing::HasSubstr("undo restore " + set_ + ": done"));
  EXPECT_EQ(Now(), after_);
}

TEST_F(BrokenOffRestore, Does_not_count_what_somebody_else_changed_as_its_own) {
  BreakOff({"restore", "--only", "settings", "--answers", "yes.txt"}, [] { return true; });
  folder_.Write("registry.ini", folder_.Read("registry.ini") + "[Somebody]\nWas=here\n");
  folder_.Done({"status"});
  const auto refused = folder_.Twqb({"undo"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, testing::HasSubstr("[Somebody] Was"));
}

TEST_F(BrokenOffRestore, Keeps_what_has_changed_once_however_often_it_is_tried) {
  BreakOffInTheMiddle();
  folder_.Write("registry.ini", folder_.Read("registry.ini") + "[Somebody]\nWas=here\n");
  {
    const LockedFile held(folder_.Path() / "billing.db");
    for (int i = 0; i < 3; ++i) {
      const auto refused = folder_.Twqb({"status"});
      EXPECT_EQ(refused.status, 2);
      EXPECT_THAT(refused.err, testing::HasSubstr("can't be completed now"));
    }
  }
  folder_.Done({"status"});
  EXPECT_EQ(SetsByHand(), 1U);
  EXPECT_EQ(Now(), before_);
}

TEST_F(BrokenOffRestore, That_can_t_be_completed_leaves_the_sets_to_be_listed_copied_and_put_in_its_place) {
  BreakOffBetweenTheSides();
  DamageTheCompanyPieces();
  const auto kept = nlohmann::json::parse(folder_.Read("backups/restore.json")).at("kept").get<std::string>();

  for (const auto& words : std::vector<std::vector<std::string>>{
           {"status"}, {"backup"}, {"undo"}, {"restore"}, {"restore", kept, "--only", "billing"}}) {
    const auto refused = folder_.Twqb(words);
    EXPECT_EQ(refused.status, 2) << words.front();
    EXPECT_THAT(refused.err,
                testing::AllOf(testing::HasSubstr("can't be completed now"), testing::HasSubstr("is damaged"),
                               testing::HasSubstr("backups/restore.json"), testing::HasSubstr("the set " + kept),
                               testing::HasSubstr("twqb restore SET")));
  }
  EXPECT_THAT(folder_.Done({"backup", "--list"}), testing::HasSubstr(kept));
  fs::create_directory(folder_.Path() / "out");
  folder_.Done({"restore", kept, "--to", "out"});
  EXPECT_EQ(fmt::format("company.twq {:016x}", HashOf(folder_.Read("out/company.twq"))), after_[1]);

  EXPECT_EQ(folder_.Twqb({"restore", set_, "--answers", "yes.txt"}).status, 2);
  EXPECT_TRUE(fs::exists(folder_.Path() / "backups" / "restore.json"));
  const auto done = folder_.Twqb({"restore", kept, "--json", "--answers", "yes.txt"});
  EXPECT_EQ(done.status, 0);
  EXPECT_THAT(done.err, testing::HasSubstr("put back in part, is kept as the set "));
  EXPECT_EQ(Now(), after_);
  EXPECT_THAT(folder_.Twqb({"status"}).err, testing::Not(testing::HasSubstr("broken off")));
}

// What would be put back has some links of the one state and some records of the other.
TEST_F(BrokenOffRestore, Is_not_what_undo_goes_back_to_when_a_set_was_put_in_its_place) {
  BreakOffBetweenTheSides();
  DamageTheCompanyPieces();
  const auto kept = nlohmann::json::parse(folder_.Read("backups/restore.json")).at("kept").get<std::string>();
  const auto done = folder_.Done({"restore", kept, "--answers", "yes.txt"});
  EXPECT_THAT(done, testing::AllOf(testing::HasSubstr("would double records"),
                                   testing::Not(testing::HasSubstr("brings it back"))));
  EXPECT_THAT(folder_.Twqb({"undo"}).err, testing::HasSubstr("is not taken back"));
  EXPECT_EQ(Now(), after_);
  EXPECT_THAT(folder_.Done({"backup", "--list"}), testing::HasSubstr("put back in part"));
  EXPECT_THAT(folder_.Done({"backup", "--list", "--json"}), testing::HasSubstr("\"inPart\":true"));
  folder_.Write("no.txt", "default no\n");
  const auto mixture = done.substr(done.find("is kept as the set ") + std::string("is kept as the set ").size());
  const auto asked = folder_.Twqb({"restore", mixture.substr(0, mixture.find(':')), "--answers", "no.txt"});
  EXPECT_EQ(asked.status, 1);
  EXPECT_THAT(asked.err, testing::HasSubstr("would double records"));
  // The newest is the one that was put back.
  EXPECT_THAT(folder_.Twqb({"restore", "--answers", "no.txt"}).err, testing::HasSubstr("the set " + kept));
  // What comes later is taken back, and no more than that.
  folder_.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID) VALUES ('LATER')"});
  folder_.Done({"send", "clients", "--answers", "yes.txt"});
  folder_.Done({"undo"});
  EXPECT_EQ(folder_.Twqb({"undo"}).status, 2);
}

TEST_F(BrokenOffRestore, Takes_nothing_for_a_new_file_by_its_name) {
  for (const bool isBillingReplaced : {false, true}) {
    Again();
    BreakOff({"restore", "--answers", "yes.txt"}, [&] {
      return Now() == (isBillingReplaced ? State{before_[0], after_[1], after_[2], after_[3]} : after_);
    });
    // Of another set; broken off while written.
    const auto other = [&](const auto& name) { return name == "company.twq" ? folder_.Read(name) : ""; };
    for (const auto& name : kNames) folder_.Write(name + ".restoring", other(name));
    folder_.Done({"status"});
    EXPECT_EQ(Now(), before_);
    ExpectNothingLaidReady();
  }
}

// How far it came is known by the files that it has laid ready.
TEST_F(BrokenOffRestore, Keeps_what_belongs_together_after_a_restore_that_was_refused_in_its_place) {
  BreakOff({"restore", "--answers", "yes.txt"}, [this] { return Now() == after_; });
  const auto piece = folder_.Read(PieceOf(0));
  folder_.Write(PieceOf(0), "nothing of it");
  folder_.Write("billing.db.restoring", "nothing of it");
  const auto refused = folder_.Twqb({"restore", set_, "--answers", "yes.txt"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, testing::AllOf(testing::HasSubstr("can't be completed now"),
                                          testing::HasSubstr("nothing has been changed")));
  folder_.Write(PieceOf(0), piece);
  Change("INSERT INTO Client (ClientID) VALUES ('SOMEBODY')");
  const auto next = folder_.Twqb({"status"});
  EXPECT_EQ(Now(), before_);
  folder_.Done({"restore", KeptSet(next.err), "--answers", "yes.txt"});
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "2");
  EXPECT_EQ(Customers(), 2U);
  folder_.Done({"send", "clients", "--answers", "yes.txt"});
  EXPECT_EQ(Customers(), 3U);
}

TEST_F(BrokenOffRestore, Is_replaced_by_one_in_its_place_however_that_is_killed) {
  BreakOffBetweenTheSides();
  DamageTheCompanyPieces();
  set_ = nlohmann::json::parse(folder_.Read("backups/restore.json")).at("kept").get<std::string>();
  fs::copy(folder_.Path(), start_ / "damaged", fs::copy_options::recursive);
  const auto left = Now();
  const auto body = [this] { Become({"restore", "--answers", "yes.txt"}); };
  const auto length = MeasureInChild(body).systemCalls;
  constexpr std::uint64_t kKills = 30;
  std::uint64_t completed = 0;
  for (std::uint64_t i = 1; i <= kKills; ++i) {
    const auto n = length * i / kKills;
    SCOPED_TRACE(fmt::format("killed at call {} of {}", n, length));
    Again("damaged");
    if (!KillInChild(body, {.n = n})) continue;
    const auto next = folder_.Twqb({"status"});
    if (next.status == 2) {
      EXPECT_EQ(Now(), left) << "its journal has not taken the place of the other";
      folder_.Done({"restore", set_, "--answers", "yes.txt"});
    } else {
      ++completed;
    }
    ASSERT_EQ(Now(), after_);
    EXPECT_EQ(folder_.Twqb({"undo"}).status, 2) << "nobody goes back unasked to what was left";
    ExpectNothingLaidReady();
  }
  EXPECT_GT(completed, 0U);
}

TEST_F(BrokenOffRestore, Whose_files_can_t_be_held_leaves_the_sets_to_be_listed_and_copied) {
  BreakOffBetweenTheSides();
  const auto billing = (folder_.Path() / "billing.db").string();
  fs::create_directory(folder_.Path() / "out");
  const auto expectBoth = [&](const std::string& reason) {
    for (const auto& words :
         std::vector<std::vector<std::string>>{{"backup", "--list"}, {"restore", set_, "--to", "out"}}) {
      const auto ended = folder_.Twqb(words);
      EXPECT_EQ(ended.status, 0) << ended.err;
      EXPECT_THAT(ended.err, testing::AllOf(testing::HasSubstr("can't be completed now"), testing::HasSubstr(reason),
                                            testing::HasSubstr("backups/restore.json")));
    }
    EXPECT_EQ(StateOf(folder_, "out/"), before_);
    for (const auto& entry : fs::directory_iterator(folder_.Path() / "out")) fs::remove(entry.path());
  };
  fs::create_hard_link(billing, folder_.Path() / "second.db");
  expectBoth("hard links");
  const auto refused = folder_.Twqb({"status"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, testing::AllOf(testing::HasSubstr("hard links"), testing::HasSubstr("restore.json")));
  fs::remove(folder_.Path() / "second.db");
  {
    const auto held = HeldFile::Claim(billing + ".transfer", billing, ThisHolder("twqb send", "now"));
    ASSERT_EQ(held.outcome, HeldFile::Outcome::Held);
    expectBoth("is at work on");
    EXPECT_EQ(folder_.Twqb({"restore", set_, "--answers", "yes.txt"}).status, 1) << "whoever holds it may complete it";
  }
  folder_.Done({"status"});
  EXPECT_EQ(Now(), before_);
}

TEST_F(BrokenOffRestore, Whose_journal_can_t_be_read_is_replaced_by_a_set_that_is_put_back) {
  folder_.Write("backups/restore.json", "{");
  EXPECT_EQ(folder_.Twqb({"status"}).status, 2);
  folder_.Done({"restore", set_, "--answers", "yes.txt"});
  EXPECT_EQ(Now(), before_);
  folder_.Done({"status"});
}

TEST_F(BrokenOffRestore, Whose_journal_can_t_be_read_says_what_to_do) {
  folder_.Write("backups/restore.json", "{\"format\": 1}");
  const auto refused = folder_.Twqb({"status"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err,
              testing::AllOf(testing::HasSubstr("restore.json can't be read"), testing::HasSubstr("Remove it")));
}

INSTANTIATE_TEST_SUITE_P(Runs, Killed,
                         testing::Values(std::vector<std::string>{"undo"},
                                         std::vector<std::string>{"restore", "--answers", "yes.txt"}),
                         [](const auto& suite) { return suite.param.front(); });

}  // namespace
}  // namespace twqb::cli
