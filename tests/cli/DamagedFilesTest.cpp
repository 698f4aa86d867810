// Files that were damaged outside: whatever stands in one of them, the program ends by itself with a status of its own,
// says something about it when it could not do its work, and leaves the other files sound.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "Program.h"
#include "tests/support/Chance.h"

namespace twqb::cli {
namespace {

constexpr std::array<std::string_view, 4> kFiles = {"billing.db", "company.twq", "twqb.ini", "registry.ini"};

char Byte(Chance& chance) { return static_cast<char>(chance.Of(0, 255)); }

std::string Damaged(std::string text, Chance& chance) {
  if (text.empty()) return "\x01\xFF";
  switch (chance.Of(0, 3)) {
    case 0:  // cut off
      return text.substr(0, chance.Place(text.size()));
    case 1:  // some bytes are others
      for (auto left = chance.Of(1, 200); left > 0; --left) text[chance.Place(text.size())] = Byte(chance);
      return text;
    case 2: {  // a stretch of nothing
      const auto at = chance.Place(text.size());
      return text.replace(at, 4096, std::string(4096, '\0'));
    }
    default:  // the head
      for (std::size_t i = 0; i < text.size() && i < 100; ++i) {
        if (chance.OnceIn(8)) text[i] = Byte(chance);
      }
      return text;
  }
}

class DamagedFile : public testing::TestWithParam<unsigned> {};

TEST_P(DamagedFile, Ends_a_run_by_itself_and_leaves_the_others_sound) {
  Chance chance(GetParam());
  WorkFolder folder;
  folder.Done({"init", "--sample"});
  folder.Write("yes.txt", "default yes\ndefault skip\n");
  const auto& damaged = kFiles.at(GetParam() % kFiles.size());
  folder.Write(damaged, Damaged(folder.Read(damaged), chance));
  for (const std::vector<std::string>& command : {std::vector<std::string>{"status"},
                                                  {"send", "clients", "--answers", "yes.txt"},
                                                  {"get", "clients", "--answers", "yes.txt"},
                                                  {"settings", "list"},
                                                  {"balances"},
                                                  {"company", "show"}}) {
    const auto ended = folder.Twqb(command, {.unanswered = Unanswered::Expected});
    EXPECT_GE(ended.status, 0) << command[0] << " of a damaged " << damaged << "\n" << ended.err;
    EXPECT_LE(ended.status, 3) << command[0] << " of a damaged " << damaged << "\n" << ended.err;
    if (ended.status != 0) {
      EXPECT_FALSE(ended.err.empty() && ended.out.empty()) << command[0];
    }
  }
  if (damaged != "billing.db") {
    EXPECT_EQ(folder.Scalar("PRAGMA integrity_check"), "ok") << damaged;
  }
  if (damaged != "company.twq") {
    EXPECT_EQ(folder.Twqb({"company", "show"}).status, 0) << damaged;
  }
}
INSTANTIATE_TEST_SUITE_P(Files, DamagedFile, testing::Range(1U, 25U));

}  // namespace
}  // namespace twqb::cli
