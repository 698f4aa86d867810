// In what linked pairs differ, as twqb diff shows it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::vector<std::string> At(const std::string& time, std::vector<std::string> words) {
  words.insert(words.end(), {"--no-progress", "--clock", "2008-03-" + time});
  return words;
}

// All clients are linked, and agree, at ten.
class Compared : public testing::Test {
 protected:
  Compared() {
    folder_.Done(At("05T09:00:00", {"init", "--sample"}));
    folder_.Write("yes.txt", "default yes\n");
    folder_.Done(At("05T10:00:00", {"send", "clients", "--answers", "yes.txt"}));
  }

  [[nodiscard]] std::string LinkOf(const std::string& client) const {
    return folder_.Scalar("SELECT QBLinkID FROM Client WHERE ClientID = '" + client + "'");
  }
  void ChangeAtTheDesk(const std::string& client, const std::string& time) const {
    folder_.Done({"billing", "run", "-e",
                  "UPDATE Client SET ClientEmail = 'desk@abbott.example', LastUpdated = #3/5/2008 " + time +
                      "# WHERE ClientID = '" + client + "'"});
  }
  // At eight in the evening.
  void ChangeInQuickBooks(const std::string& client) const {
    folder_.Write("mod.xml",
                  "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">"
                  "<CustomerModRq><CustomerMod><ListID>" +
                      LinkOf(client) + "</ListID><EditSequence>" + EditSequenceOf(client) +
                      "</EditSequence><Email>books@abbott.example</Email></CustomerMod></CustomerModRq>"
                      "</QBXMLMsgsRq></QBXML>");
    EXPECT_THAT(folder_.Done(At("05T20:00:00", {"company", "run", "mod.xml"})), HasSubstr("statusCode=\"0\""));
  }
  [[nodiscard]] std::string EditSequenceOf(const std::string& client) const {
    folder_.Write("query.xml",
                  "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">"
                  "<CustomerQueryRq><ListID>" +
                      LinkOf(client) + "</ListID></CustomerQueryRq></QBXMLMsgsRq></QBXML>");
    const auto answer = folder_.Done({"company", "run", "query.xml"});
    const std::string tag = "<EditSequence>";
    const auto from = answer.find(tag) + tag.size();
    return answer.substr(from, answer.find('<', from) - from);
  }

  [[nodiscard]] std::string Diff(std::vector<std::string> words) const {
    words.insert(words.begin(), "diff");
    return folder_.Done(At("06T10:00:00", words));
  }
  [[nodiscard]] std::vector<nlohmann::json> DiffLines(std::vector<std::string> words, const std::string& kind) const {
    words.emplace_back("--json");
    std::vector<nlohmann::json> lines;
    std::istringstream text(Diff(words));
    for (std::string line; std::getline(text, line);) {
      auto parsed = nlohmann::json::parse(line);
      if (parsed["diff"] == kind) lines.push_back(std::move(parsed));
    }
    return lines;
  }

  WorkFolder folder_;
};

TEST_F(Compared, Tells_both_sides_of_a_field_and_which_one_a_transfer_takes) {
  ChangeAtTheDesk("ABBOTT", "20:00:00");
  EXPECT_THAT(
      Diff({"clients", "ABBOTT"}),
      testing::StartsWith("clients ABBOTT and Abbott Land Survey (ABBOTT): a send takes BillingDb's side (BillingDb is "
                          "newer by 10 h); a get leaves it (BillingDb is newer by 10 h)\n"
                          "  QuickBooks, and what BillingDb makes of it\n"
                          "    Email: kabbott@abbottland.example -> desk@abbott.example\n"
                          "  BillingDb (Client ABBOTT), and what QuickBooks makes of it\n"
                          "    ClientEmail: desk@abbott.example -> kabbott@abbottland.example\n"));
}

TEST_F(Compared, Tells_of_a_later_change_in_QuickBooks_that_a_get_takes_it) {
  ChangeInQuickBooks("ABBOTT");
  const auto pairs = DiffLines({"clients"}, "pair");
  ASSERT_EQ(pairs.size(), 1U);
  EXPECT_EQ(pairs[0]["key"], "ABBOTT");
  EXPECT_EQ(pairs[0]["identifier"], LinkOf("ABBOTT"));
  EXPECT_EQ(pairs[0]["send"], "leaves");
  EXPECT_EQ(pairs[0]["get"], "takes");
  EXPECT_EQ(pairs[0]["inQuickBooks"], nlohmann::json::parse(R"([{"field":"Email","before":"books@abbott.example",
                                                                 "after":"kabbott@abbottland.example"}])"));
  EXPECT_EQ(pairs[0]["inBilling"][0]["fields"],
            nlohmann::json::parse(R"([{"field":"ClientEmail","before":"kabbott@abbottland.example",
                                       "after":"books@abbott.example"}])"));
}

TEST_F(Compared, Tells_of_equal_times_that_either_transfer_takes_its_side) {
  ChangeInQuickBooks("ABBOTT");
  ChangeAtTheDesk("ABBOTT", "20:00:00");
  const auto pairs = DiffLines({"clients", "ABBOTT"}, "pair");
  ASSERT_EQ(pairs.size(), 1U);
  EXPECT_EQ(pairs[0]["send"], "takes");
  EXPECT_EQ(pairs[0]["get"], "takes");
}

TEST_F(Compared, Says_of_a_pair_that_agrees_that_nothing_differs) {
  EXPECT_THAT(Diff({"clients", "ABBOTT"}), AllOf(Not(HasSubstr("ABBOTT and")), HasSubstr("1 linked, none differs")));
}

TEST_F(Compared, Finds_links_that_lead_nowhere) {
  folder_.Done({"billing", "run", "-e", "UPDATE Client SET QBLinkID = '80000FFF-1' WHERE ClientID = 'BAYVIEW'"});
  EXPECT_THAT(Diff({"clients"}),
              AllOf(HasSubstr("Links that lead nowhere:\n"
                              "  clients BAYVIEW -> 80000FFF-1\n"),
                    HasSubstr("clients: 64 linked, none differs, 1 with a link that leads nowhere")));
  const auto dead = DiffLines({"clients"}, "deadLink");
  ASSERT_EQ(dead.size(), 1U);
  EXPECT_EQ(dead[0]["table"], "clients");
  EXPECT_EQ(dead[0]["identifier"], "80000FFF-1");
}

TEST_F(Compared, Takes_no_link_for_dead_that_leads_to_what_QuickBooks_does_not_tell) {
  folder_.Done(At("05T11:00:00", {"send", "all", "--answers", "yes.txt"}));
  folder_.Done({"billing", "run", "-e", "UPDATE Client SET QBLinkID = '80000FFF-1' WHERE ClientID = 'BAYVIEW'"});
  folder_.Done({"company", "set", "time-tracking", "disabled"});
  const auto hours = folder_.Twqb(At("06T10:00:00", {"diff", "timeentries"}));
  EXPECT_EQ(hours.status, 1);
  EXPECT_THAT(hours.out, AllOf(Not(HasSubstr("that leads nowhere")), Not(HasSubstr("Links that lead nowhere:")),
                               HasSubstr("Where links lead is not known:\n"
                                         "  timeentries: asked for TimeTracking, QuickBooks answers: This feature is "
                                         "not enabled"),
                               HasSubstr(", links that lead nowhere not known, ")));
  const auto json = folder_.Twqb(At("06T10:00:00", {"diff", "timeentries", "--json"})).out;
  EXPECT_THAT(json, AllOf(HasSubstr("\"diff\":\"notKnown\""), HasSubstr("\"status\":3250"), HasSubstr("\"dead\":null"),
                          Not(HasSubstr("deadLink"))));
  // Of the others it is known.
  EXPECT_EQ(DiffLines({"clients"}, "deadLink").size(), 1U);
}

TEST_F(Compared, Finds_what_a_round_trip_cuts_and_what_loses_its_words) {
  const auto all = Diff({"clients"});
  EXPECT_THAT(all, AllOf(HasSubstr("KESTREL: (603) 555-0193 ext. 4 -> 60355501934\n"),
                         HasSubstr("    ClientCity of 1, 1 of which loses letters\n      HARBORAUTH: ")));
  const auto one = DiffLines({"clients", "KESTREL"}, "roundTrip");
  ASSERT_EQ(one.size(), 1U);
  EXPECT_EQ(one[0]["key"], "KESTREL");
  EXPECT_EQ(one[0]["fields"][0],
            nlohmann::json::parse(R"({"field":"ClientPhone","before":"(603) 555-0193 ext. 4","after":"60355501934"})"));
}

TEST_F(Compared, Tells_of_costs_what_a_get_would_write) {
  folder_.Done(At("05T11:00:00", {"send", "all", "--answers", "yes.txt"}));
  const auto pairs = DiffLines({"vendorbill"}, "pair");
  EXPECT_EQ(std::ranges::count_if(pairs, [](const auto& pair) { return pair["line"] == false; }), 5);
  for (const auto& pair : pairs) {
    EXPECT_TRUE(pair["inQuickBooks"].empty());
    EXPECT_FALSE(pair["inBilling"].empty());
    EXPECT_NE(pair["send"], "takes");
    EXPECT_EQ(pair["get"], "takes");
  }
}

TEST_F(Compared, Tells_of_a_twin_whose_name_is_in_use_that_a_send_adds_it_once_more) {
  folder_.Done(At("05T11:00:00", {"send", "employees", "--answers", "yes.txt"}));
  const auto pairs = DiffLines({"employees", "ALEE2"}, "pair");
  ASSERT_EQ(pairs.size(), 1U);
  EXPECT_EQ(pairs[0]["send"], "addsOnceMore");
  EXPECT_THAT(std::string(pairs[0]["whySend"]), HasSubstr("its name is in use"));
}

TEST_F(Compared, Changes_no_file_and_leaves_none_behind) {
  std::filesystem::create_directory(folder_.Path() / "tmp");
  std::map<std::string, std::string> before;
  for (const auto& name : folder_.Names()) before[name] = folder_.Read(name);
  EXPECT_EQ(folder_.Shell("TMPDIR=\"$PWD/tmp\" \"$0\" diff --no-progress").status, 0);
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path() / "tmp"));
  for (const auto& [name, bytes] : before) EXPECT_TRUE(folder_.Read(name) == bytes) << name;
  EXPECT_EQ(folder_.Names().size(), before.size());
}

TEST_F(Compared, Names_the_nearest_row_for_one_that_is_not_linked) {
  const auto mistyped = folder_.Twqb({"diff", "clients", "ABBOT"});
  EXPECT_EQ(mistyped.status, 2);
  EXPECT_THAT(mistyped.err, HasSubstr("with the key or the link ABBOT, or it has no link. Did you mean \"ABBOTT\"?"));
  EXPECT_EQ(folder_.Twqb({"diff", "client"}).status, 2);
  EXPECT_EQ(folder_.Twqb({"diff", "all", "ABBOTT"}).status, 2);
  EXPECT_EQ(folder_.Twqb({"diff", "--transcript", "t.jsonl"}).status, 2);
}

// The send behind which a get would go, that does not come to its end.
TEST_F(Compared, Of_a_send_that_ends_at_a_row_blames_the_send_and_says_what_is_not_known) {
  folder_.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID, ClientCompany) VALUES ('O''HARA', 'Hara')"});
  const auto ended = folder_.Twqb(At("05T21:00:00", {"diff", "clients"}));
  EXPECT_THAT(ended.out + ended.err, AllOf(HasSubstr("A send of clients would not come to its end"),
                                           Not(HasSubstr("A get of clients would not come to its end")),
                                           HasSubstr("rows that would come back as others not known")));
  EXPECT_THAT(folder_.Twqb(At("05T21:00:00", {"diff", "clients", "--json"})).out, HasSubstr("\"roundTrips\":null"));
}

}  // namespace
}  // namespace twqb::cli
