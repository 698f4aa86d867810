// The documents that the fuzzing of company files begins with are real ones, and there is one for every request.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "CompanyTest.h"

namespace twqb::company {

namespace {

using messages::Country;

struct Seed {
  std::string name;
  std::string document;
};

std::vector<Seed> Seeds() {
  std::vector<Seed> seeds;
  for (const auto& entry : std::filesystem::directory_iterator(TWQB_SOURCE_DIR "/tests/fuzz/seeds/documents")) {
    std::ifstream file(entry.path(), std::ios::binary);
    seeds.push_back({.name = entry.path().filename().string(),
                     .document = {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}});
  }
  return seeds;
}

TEST(Seeds, There_is_one_for_every_request) {
  const auto seeds = Seeds();
  for (const auto& message : messages::AllMessages()) {
    const auto begins = "<" + message.RequestName();
    EXPECT_TRUE(std::ranges::any_of(seeds, [&](const Seed& seed) {
      return seed.document.find(begins) != std::string::npos;
    })) << begins;
  }
}

class SeededCompany : public CompanyTest {};

TEST_F(SeededCompany, Every_one_is_answered_but_that_which_declares_an_entity) {
  for (const auto& [name, document] : Seeds()) {
    MakeFile({.accepts = {Country::US, Country::CA, Country::UK, Country::AU}});
    const auto raised = NumberRaised([&, &text = document] { text_ = file_->ProcessAny(text); });
    EXPECT_EQ(raised, name == "entity.xml" ? kRefused : 0U) << name;
    if (raised != 0) continue;
    for (const auto& answer :
         ReadAnswers(text_.find("QBXMLMsgsRs") != std::string::npos ? "QBXMLMsgsRs" : "QBXMLSubscriptionMsgsRs")) {
      const bool isAdd = std::string_view(answer.node.name()).ends_with("AddRs");
      if (isAdd && !name.starts_with("taxcode")) {  // which a file of this country does not keep
        EXPECT_EQ(answer.code, 0) << name << " " << answer.message;
      }
    }
  }
}

}  // namespace

}  // namespace twqb::company
