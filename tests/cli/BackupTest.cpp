// Sets that are made by hand and by themselves, put back, and taken back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "Backups.h"
#include "HeldTransfer.h"
#include "LockedFile.h"

namespace twqb::cli {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST_F(Backups, A_set_made_by_hand_tells_what_it_is_of) {
  EXPECT_THAT(folder_.Done({"backup"}), HasSubstr("Made the set "));
  const auto sets = Sets();
  ASSERT_EQ(sets.size(), 1U);
  EXPECT_EQ(sets[0].at("by"), "hand");
  const auto manifest =
      nlohmann::json::parse(folder_.Read("backups/" + sets[0].at("set").get<std::string>() + "/manifest.json"));
  EXPECT_THAT(manifest.at("made").get<std::string>(), testing::ContainsRegex("T[0-9:]+[+-][0-9][0-9]:[0-9][0-9]$"));
  EXPECT_FALSE(manifest.at("twqb").get<std::string>().empty());
  ASSERT_EQ(manifest.at("files").size(), 4U);
  for (std::size_t i = 0; i < kFiles.size(); ++i) {
    const auto& file = manifest.at("files").at(i);
    EXPECT_EQ(file.at("name"), kFiles[i]);
    EXPECT_EQ(file.at("size"), fs::file_size(folder_.Path() / kFiles[i]));
    EXPECT_EQ(file.at("sha256").get<std::string>().size(), 64U);
  }
}

TEST_F(Backups, A_set_is_written_out_as_the_files_that_it_was_made_of) {
  const auto before = Bytes();
  folder_.Done({"backup"});
  Send();
  fs::create_directory(folder_.Path() / "out");
  folder_.Done({"restore", Sets().front().at("set"), "--to", "out"});
  for (std::size_t i = 0; i < kFiles.size(); ++i)
    EXPECT_EQ(Mark(folder_.Read("out/" + kFiles[i])), before[i]) << kFiles[i];
  EXPECT_EQ(Linked(), "2");
}

TEST_F(Backups, One_is_made_before_each_run_that_writes_and_ten_are_kept_beside_those_made_by_hand) {
  folder_.Done({"backup"});
  const auto byHand = Newest();
  for (int i = 0; i < 12; ++i) {
    Sql("UPDATE Client SET ClientCity = 'Town " + std::to_string(i) + "', LastUpdated = '2030-01-01'");
    Send();
  }
  const auto sets = Sets();
  ASSERT_EQ(sets.size(), 11U);
  EXPECT_EQ(sets.front().at("set"), byHand);
  for (std::size_t i = 1; i < sets.size(); ++i) {
    EXPECT_EQ(sets[i].at("before"), "send clients");
    EXPECT_GT(sets[i].at("set"), sets[i - 1].at("set"));
  }
  // Pieces that no set has go with the sets that had them: what is left still is all of each.
  fs::create_directory(folder_.Path() / "out");
  for (const auto& set : sets) {
    folder_.Done({"restore", set.at("set"), "--to", "out"});
    for (const auto& name : kFiles) fs::remove(folder_.Path() / "out" / name);
  }
}

TEST_F(Backups, What_somebody_keeps_among_the_sets_stays_and_so_do_sets_with_names_of_their_own) {
  Send();
  const auto first = Newest();
  const auto backups = folder_.Path() / "backups";
  for (const auto* name : {"2026-11-22-000000 my notes", "2026-11-22-000000.12", "2026-11-22-000001"}) {
    fs::create_directory(backups / name);
    folder_.Write(std::string("backups/") + name + "/notes.txt", "somebody's own");
  }
  fs::create_directory(backups / (first + " files"));
  folder_.Done({"restore", first, "--to", "backups/" + first + " files"});
  fs::create_directory(backups / first / "out");
  folder_.Done({"restore", first, "--to", "backups/" + first + "/out"});
  fs::copy(backups / first, backups / (first + " ahead of all"));
  for (int i = 0; i < 12; ++i) {
    Sql("UPDATE Client SET ClientCity = 'Town " + std::to_string(i) + "', LastUpdated = '2030-01-01'");
    Send();
  }
  for (const auto* name : {"2026-11-22-000000 my notes", "2026-11-22-000000.12", "2026-11-22-000001"}) {
    EXPECT_EQ(folder_.Read(std::string("backups/") + name + "/notes.txt"), "somebody's own") << name;
  }
  for (const auto& name : kFiles) {
    EXPECT_TRUE(fs::exists(backups / (first + " files") / name)) << name;
    EXPECT_TRUE(fs::exists(backups / first / "out" / name)) << name;
  }
  // It is a set as any other, and whole.
  const auto sets = Sets();
  ASSERT_EQ(sets.size(), 11U);
  EXPECT_EQ(sets.front().at("set"), first + " ahead of all");
  fs::create_directory(folder_.Path() / "out");
  folder_.Done({"restore", first + " ahead of all", "--to", "out"});
  folder_.Done({"undo"});
}

TEST_F(Backups, None_is_made_with_no_backup_nor_by_what_only_reads_nor_kept_of_what_changed_nothing) {
  Send({"--no-backup"});
  folder_.Done({"status"});
  folder_.Done({"list", "customers"});
  EXPECT_THAT(Sets(), IsEmpty());
  EXPECT_EQ(folder_.Twqb({"delete-billing", "clients", "80000001-1"}).status, 1) << "nobody said yes";
  EXPECT_THAT(Sets(), IsEmpty());
}

TEST_F(Backups, A_run_whose_set_can_t_be_made_changes_nothing_and_says_what_to_do) {
  folder_.Write("backups", "somebody's own");
  const auto before = Bytes();
  const auto ended = folder_.Twqb({"send", "clients", "--answers", "yes.txt"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("Nothing has been changed"), HasSubstr("backups"), HasSubstr("--no-backup")));
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(folder_.Read("backups"), "somebody's own");
  Send({"--no-backup"});
  EXPECT_EQ(Linked(), "2");
}

TEST_F(Backups, Of_a_file_whose_name_is_not_UTF_8_are_not_made) {
  const std::string company = "firm\xff.twq";
  fs::rename(folder_.Path() / "company.twq", folder_.Path() / company);
  const auto before = Mark(folder_.Read(company));
  for (const auto& words :
       std::vector<std::vector<std::string>>{{"backup"}, {"send", "clients", "--answers", "yes.txt"}}) {
    auto all = words;
    all.insert(all.end(), {"--company", company});
    const auto refused = folder_.Twqb(all);
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, HasSubstr("its name is not UTF-8"));
  }
  EXPECT_EQ(Mark(folder_.Read(company)), before);
  EXPECT_THAT(Sets(), IsEmpty());
  Send({"--company", company, "--no-backup"});
  EXPECT_EQ(Linked(), "2");
}

TEST_F(Backups, A_disk_that_takes_no_more_stops_the_run_before_anything_is_written) {
  const auto before = Bytes();
  // No file may become larger than a few blocks.
  const auto ended = folder_.Shell("trap '' XFSZ; ulimit -f 40; \"$0\" send clients --answers yes.txt");
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err,
              AllOf(HasSubstr("Nothing has been changed"), HasSubstr("Make room"), HasSubstr("--no-backup")));
  EXPECT_EQ(Bytes(), before);
  EXPECT_THAT(Sets(), IsEmpty());
  std::size_t pieces = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder_.Path() / "backups" / "pieces")) {
    if (entry.is_regular_file()) ++pieces;
  }
  EXPECT_EQ(pieces, 0U) << "what was written of it goes again";
}

TEST_F(Backups, Restore_shows_what_would_be_lost_asks_and_puts_everything_back) {
  folder_.Done({"backup"});
  const auto set = Newest();
  const auto before = Bytes();
  Send();
  Sql("INSERT INTO Client (ClientID) VALUES ('NEW')");
  const auto after = Bytes();

  folder_.Write("no.txt", "default no\n");
  const auto refused = folder_.Twqb({"restore", set, "--answers", "no.txt"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.out,
              AllOf(testing::ContainsRegex("billing +Client +2 +3 +1 +2 +0\n"),
                    testing::ContainsRegex("company +Customer +0 +2 +2 +0 +0\n"), HasSubstr(": not done\n")));
  EXPECT_EQ(Bytes(), after);
  ExpectNothingLeftBehind();

  const auto done = folder_.Done({"restore", set, "--answers", "yes.txt"});
  EXPECT_THAT(done, HasSubstr("restore " + set + ": done\n"));
  EXPECT_EQ(Bytes(), before);
  ExpectNothingLeftBehind();

  // And what was there before is a set itself.
  folder_.Done({"restore", Newest(), "--answers", "yes.txt"});
  EXPECT_EQ(Bytes(), after);
}

TEST_F(Backups, Restore_takes_one_side_alone) {
  folder_.Done({"backup"});
  const auto set = Newest();
  const auto before = Bytes();
  Send();
  const auto after = Bytes();
  folder_.Done({"restore", set, "--only", "quickbooks", "--answers", "yes.txt"});
  EXPECT_EQ(Bytes(), (std::vector{after[0], before[1], after[2], after[3]}));
  folder_.Done({"restore", set, "--only", "billing", "--answers", "yes.txt"});
  EXPECT_EQ(Bytes(), (std::vector{before[0], before[1], after[2], after[3]}));
  folder_.Done({"restore", set, "--only", "settings", "--answers", "yes.txt"});
  EXPECT_EQ(Bytes(), before);
  const auto mistyped = folder_.Twqb({"restore", set, "--only", "biling"});
  EXPECT_EQ(mistyped.status, 2);
  EXPECT_THAT(mistyped.err, HasSubstr("Did you mean \"billing\"?"));
}

TEST_F(Backups, A_set_with_a_damaged_file_is_refused_and_nothing_is_changed) {
  folder_.Done({"backup"});
  const auto set = Newest();
  Send();
  const auto after = Bytes();
  for (const auto& entry : fs::recursive_directory_iterator(folder_.Path() / "backups" / "pieces")) {
    if (!entry.is_regular_file()) continue;
    auto bytes = ReadWholeFile(entry.path().string());
    bytes.back() = static_cast<char>(bytes.back() ^ 1);
    WriteWholeFile(entry.path().string(), bytes);
  }
  const auto ended = folder_.Twqb({"restore", set, "--answers", "yes.txt"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(HasSubstr(set), HasSubstr("damaged"), HasSubstr("nothing has been changed")));
  EXPECT_EQ(Bytes(), after);
  ExpectNothingLeftBehind();
}

TEST_F(Backups, A_damaged_piece_is_written_anew_with_the_next_set_of_what_was_in_it) {
  folder_.Done({"backup"});
  for (const auto& entry : fs::recursive_directory_iterator(folder_.Path() / "backups" / "pieces")) {
    if (!entry.is_regular_file()) continue;
    auto bytes = ReadWholeFile(entry.path().string());
    bytes.front() = static_cast<char>(bytes.front() ^ 1);
    WriteWholeFile(entry.path().string(), bytes);
  }
  // Nothing is known any more of files that were written anew with what they held.
  const auto before = Bytes();
  for (const auto& name : kFiles) folder_.Write(name, folder_.Read(name));
  folder_.Done({"backup"});
  fs::create_directory(folder_.Path() / "out");
  folder_.Done({"restore", Newest(), "--to", "out"});
  for (std::size_t i = 0; i < kFiles.size(); ++i) EXPECT_EQ(Mark(folder_.Read("out/" + kFiles[i])), before[i]);
}

// What is known of a file by its identity says nothing of its pieces.
TEST_F(Backups, A_set_by_hand_and_those_ahead_of_restore_and_undo_are_whole_whatever_has_become_of_their_pieces) {
  folder_.Done({"backup"});
  const auto old = Newest();
  Send();
  const auto settle = [&] {
    for (const auto* name : {"billing.db", "company.twq"}) {
      fs::last_write_time(folder_.Path() / name, fs::file_time_type::clock::now() - std::chrono::hours(1));
    }
  };
  const auto after = Bytes();
  const auto billingOf = [&](const std::string& set, const std::string& note) {
    return nlohmann::json::parse(folder_.Read("backups/" + set + "/" + note)).at("files").at(0);
  };
  const auto damage = [&](const std::string& set) {
    const auto billing = billingOf(set, "manifest.json");
    ASSERT_FALSE(billing.value("identity", "").empty()) << "it is known without being read";
    const auto kept = billing.at("pieces").get<std::string>();
    const auto others = billingOf(old, "manifest.json").at("pieces").get<std::string>();
    constexpr std::size_t kDigestLength = 64;
    int damaged = 0;
    for (std::size_t at = 0; at < kept.size(); at += kDigestLength) {
      const auto digest = kept.substr(at, kDigestLength);
      if (others.find(digest) != std::string::npos) continue;
      const auto path = "backups/pieces/" + digest.substr(0, 2) + "/" + digest.substr(2);
      auto bytes = folder_.Read(path);
      bytes.front() = static_cast<char>(bytes.front() ^ 1);
      folder_.Write(path, bytes);
      ++damaged;
    }
    ASSERT_GT(damaged, 0);
  };
  settle();
  folder_.Done({"backup"});
  ASSERT_NO_FATAL_FAILURE(damage(Newest()));
  folder_.Done({"backup"});
  fs::create_directory(folder_.Path() / "out");
  folder_.Done({"restore", Newest(), "--to", "out"});
  EXPECT_EQ(Mark(folder_.Read("out/billing.db")), after[0]);

  ASSERT_NO_FATAL_FAILURE(damage(Newest()));
  folder_.Done({"restore", old, "--answers", "yes.txt"});
  const auto kept = Newest();
  folder_.Done({"restore", kept, "--answers", "yes.txt"});
  EXPECT_EQ(Bytes(), after);

  settle();
  folder_.Done({"backup"});
  ASSERT_NO_FATAL_FAILURE(damage(Newest()));
  folder_.Done({"undo"});
  EXPECT_NE(Bytes(), after);
  folder_.Done({"restore", Newest(), "--answers", "yes.txt"});
  EXPECT_EQ(Bytes(), after);
}

TEST_F(Backups, A_side_that_was_destroyed_or_is_gone_comes_back) {
  folder_.Done({"backup"});
  const auto set = Newest();
  const auto before = Bytes();
  folder_.Write("billing.db", "what somebody has made of it");
  fs::remove(folder_.Path() / "company.twq");
  const auto ended = folder_.Twqb({"restore", set, "--answers", "yes.txt"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out, AllOf(testing::ContainsRegex("billing +can't be compared"),
                               testing::ContainsRegex("company +can't be compared")));
  EXPECT_EQ(Bytes(), before);
}

TEST_F(Backups, A_restore_is_refused_while_another_program_writes_to_a_side) {
  folder_.Done({"backup"});
  Send();
  const auto after = Bytes();
  const auto set = Sets().front().at("set").get<std::string>();
  {
    const LockedFile held(folder_.Path() / "billing.db");
    const auto refused = folder_.Twqb({"restore", set, "--answers", "yes.txt"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, HasSubstr("another program is writing to it"));
  }
  EXPECT_EQ(Sets().size(), 2U) << "what was not put back leaves no set";
  EXPECT_EQ(Bytes(), after);
  ExpectNothingLeftBehind();
}

TEST_F(Backups, A_set_whose_manifest_can_t_be_read_keeps_its_pieces_and_is_not_listed) {
  folder_.Done({"backup"});
  const auto set = Newest();
  const auto manifest = "backups/" + set + "/manifest.json";
  const auto text = folder_.Read(manifest);
  folder_.Write(manifest, "{\"format\": 2}");
  for (int i = 0; i < 12; ++i) {
    Sql("UPDATE Client SET ClientCity = 'Town " + std::to_string(i) + "', LastUpdated = '2030-01-01'");
    Send();
  }
  EXPECT_EQ(Sets().size(), 10U);
  folder_.Write(manifest, text);
  fs::create_directory(folder_.Path() / "out");
  folder_.Done({"restore", set, "--to", "out"});
}

TEST_F(Backups, Undo_takes_back_one_transfer_after_the_other) {
  std::vector<std::vector<std::string>> states = {Bytes()};
  Send();
  states.push_back(Bytes());
  Sql("INSERT INTO Client (ClientID) VALUES ('NEW')");
  states.push_back(Bytes());
  Send();

  const auto undone = folder_.Done({"undo"});
  EXPECT_THAT(undone, AllOf(HasSubstr("\"send clients\" of "), testing::ContainsRegex("company +Customer +2 +3 +1 "),
                            HasSubstr("undo send clients: done\n")));
  EXPECT_EQ(Bytes(), states[2]);

  // A row came in between: that is nobody's to take back.
  const auto refused = folder_.Twqb({"undo"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.out, testing::ContainsRegex("billing +Client +2 +3 +1 +0 +0\n"));
  EXPECT_THAT(refused.err, HasSubstr("something has changed since it ended"));
  EXPECT_EQ(Bytes(), states[2]);

  Sql("DELETE FROM Client WHERE ClientID = 'NEW'");
  folder_.Done({"undo"});
  EXPECT_EQ(Linked(), "0");
  EXPECT_EQ(Mark(folder_.Read("company.twq")), states[0][1]);
  EXPECT_EQ(Mark(folder_.Read("billing.db")), states[0][0]);
  EXPECT_EQ(folder_.Twqb({"undo"}).status, 2) << "nothing is left to take back";
  ExpectNothingLeftBehind();
}

TEST_F(Backups, Undo_takes_back_as_many_runs_as_are_kept) {
  std::vector<std::vector<std::string>> states;
  for (int i = 0; i < 12; ++i) {
    states.push_back(Bytes());
    folder_.Write("new.csv", "ClientID\nNEW" + std::to_string(i) + "\n");
    folder_.Done({"import", "clients", "new.csv", "--apply"});
  }
  for (int i = 11; i >= 2; --i) {
    folder_.Done({"undo"});
    EXPECT_EQ(Bytes(), states[static_cast<std::size_t>(i)]) << i;
  }
  EXPECT_THAT(folder_.Twqb({"undo"}).err, HasSubstr("There is nothing to take back"));
}

// One working folder for two firms.
TEST_F(Backups, Of_another_firm_are_not_taken_back_unless_its_files_are_named_nor_pushed_out) {
  fs::create_directory(folder_.Path() / "b");
  for (const auto& name : kFiles) fs::copy(folder_.Path() / name, folder_.Path() / "b" / name);
  const std::vector<std::string> other = {"--billing",  "Provider=SQLITE;Data Source=b/billing.db",
                                          "--company",  "b/company.twq",
                                          "--settings", "b/twqb.ini",
                                          "--registry", "b/registry.ini"};
  const auto undo = [&](bool ofOther) {
    std::vector<std::string> words = {"undo"};
    if (ofOther) words.insert(words.end(), other.begin(), other.end());
    return folder_.Twqb(words);
  };
  const auto before = Bytes();
  Send(other);
  const auto refused = undo(false);
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, AllOf(HasSubstr("There is nothing to take back"), HasSubstr("b/billing.db and "),
                                 HasSubstr("b/company.twq"), HasSubstr("--billing")));
  EXPECT_EQ(undo(true).status, 0);

  Send();
  for (int i = 0; i < 12; ++i) {
    folder_.Write("new.csv", "ClientID\nNEW" + std::to_string(i) + "\n");
    std::vector<std::string> words = {"import", "clients", "new.csv", "--apply"};
    words.insert(words.end(), other.begin(), other.end());
    folder_.Done(words);
  }
  const auto theirs = Mark(folder_.Read("b/billing.db"));
  EXPECT_EQ(undo(false).status, 0);
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(Mark(folder_.Read("b/billing.db")), theirs);
}

TEST_F(Backups, Undo_refuses_after_a_change_in_QuickBooks_or_of_a_setting_and_says_where) {
  Send();
  folder_.Write("vendor.xml",
                "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">"
                "<VendorAddRq><VendorAdd><Name>Hill</Name></VendorAdd></VendorAddRq></QBXMLMsgsRq></QBXML>");
  folder_.Done({"company", "run", "vendor.xml"});
  folder_.Done({"settings", "set", "QBSEND_", "Clients_OptNever", "True"});
  const auto after = Bytes();
  const auto refused = folder_.Twqb({"undo"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.out, AllOf(testing::ContainsRegex("company +Vendor +0 +1 +1 +0 +0\n"),
                                 testing::ContainsRegex("settings +entries .*")));
  EXPECT_THAT(refused.err, AllOf(HasSubstr("[QBSEND_] Clients_OptNever"), HasSubstr("twqb restore ")));
  EXPECT_EQ(Bytes(), after);
}

TEST_F(Backups, A_transfer_that_was_killed_is_not_undone_but_can_be_restored) {
  const auto before = Bytes();
  {
    HeldTransfer transfer(folder_, {"send", "clients", "--answers", "yes.txt"}, "CustomerAddRs");
    transfer.Process().Signal(SIGKILL);
    static_cast<void>(transfer.Finish());
  }
  const auto refused = folder_.Twqb({"undo"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, AllOf(HasSubstr("was broken off"), HasSubstr("twqb restore " + Newest())));
  folder_.Done({"restore", Newest(), "--answers", "yes.txt"});
  EXPECT_EQ(Bytes(), before);
}

TEST_F(Backups, A_restore_is_refused_while_a_transfer_or_a_session_is_at_work) {
  Send();
  HeldTransfer transfer(folder_, {"get", "clients", "--answers", "yes.txt"}, "CustomerQueryRs");
  const auto refused = folder_.Twqb({"restore", "--answers", "yes.txt"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("A transfer is at work"));
  EXPECT_EQ(transfer.Finish().exitStatus, 0);
}

// What holds of any firm.
class BackupsOfFirms : public testing::TestWithParam<int> {};

TEST_P(BackupsOfFirms, What_was_is_again_byte_for_byte) {
  const WorkFolder folder;
  folder.Done({"init", "--sample", "--size", "2", "--seed", std::to_string(GetParam())});
  folder.Write("yes.txt", "default yes\n");
  const auto bytes = [&] {
    std::vector<std::string> all;
    for (const auto& name : kFiles) all.push_back(Mark(folder.Read(name)));
    return all;
  };
  std::vector<std::vector<std::string>> states = {bytes()};
  folder.Done({"backup"});
  for (const auto* verb : {"send", "get"}) {
    static_cast<void>(folder.Twqb({verb, "all", "--answers", "yes.txt"}, {.unanswered = Unanswered::Expected}));
    states.push_back(bytes());
  }
  EXPECT_NE(states[0], states[1]);
  EXPECT_NE(states[1], states[2]);
  folder.Done({"undo"});
  EXPECT_EQ(bytes(), states[1]);
  folder.Done({"undo"});
  EXPECT_EQ(bytes(), states[0]);
}

INSTANTIATE_TEST_SUITE_P(Made, BackupsOfFirms, testing::Values(1, 2, 3));

}  // namespace
}  // namespace twqb::cli
