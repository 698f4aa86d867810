#include <gtest/gtest.h>

#include "Readings.h"
#include "tests/support/Process.h"

namespace twqb::sweep {
namespace {

constexpr std::string_view kStatement = "SELECT * FROM Client";
const std::vector<Fields> kRows = {{{"ClientID", "ACME"}, {"ClientFName", "\\N"}},
                                   {{"ClientID", "two\nlines"}, {"ClientFName", ""}}};

// A file that the rows have been kept of.
class Reading : public testing::Test {
 protected:
  Reading() {
    KeepReadings(folder_ / "readings");
    WriteWholeFile(File(), "pages");
    Readings(File()).Keep(kStatement, kRows);
  }

  [[nodiscard]] std::string File() const { return folder_ / "billing.db"; }
  [[nodiscard]] bool IsKnown() const { return Readings(File()).Find(kStatement).has_value(); }

  // The header of a log, and a frame that has its salts or others.
  static std::string Log(char salt, char saltOfFrame, char sum, char page) {
    constexpr std::size_t kPage = 512;
    std::string text(8, 'h');
    text += std::string("\0\0\2\0", 4) + "seq.";
    text += std::string(8, salt) + std::string(8, sum);
    return text + "numbers." + std::string(8, saltOfFrame) + std::string(8, sum) + std::string(kPage, page);
  }

  TemporaryFolder folder_;
};

TEST_F(Reading, Is_found_for_a_file_of_the_same_content_wherever_it_stands) {
  EXPECT_EQ(Readings(File()).Find(kStatement), kRows);
  WriteWholeFile(folder_ / "copy.db", "pages");
  EXPECT_EQ(Readings(folder_ / "copy.db").Find(kStatement), kRows);
}

TEST_F(Reading, Is_that_of_its_statement_alone) {
  EXPECT_FALSE(Readings(File()).Find("SELECT * FROM Project").has_value());
}

TEST_F(Reading, Is_not_found_for_another_content) {
  WriteWholeFile(File(), "other");
  EXPECT_FALSE(IsKnown());
}

TEST_F(Reading, Is_none_of_a_file_with_a_journal) {
  WriteWholeFile(File() + "-journal", "pages of before");
  EXPECT_FALSE(IsKnown());
}

TEST_F(Reading, Goes_by_the_pages_of_the_log_and_not_by_its_salts_and_sums) {
  WriteWholeFile(File() + "-wal", Log('a', 'a', 's', 'p'));
  EXPECT_FALSE(IsKnown());
  Readings(File()).Keep(kStatement, kRows);
  WriteWholeFile(File() + "-wal", Log('b', 'b', 't', 'p'));
  EXPECT_TRUE(IsKnown());
  WriteWholeFile(File() + "-wal", Log('a', 'a', 's', 'q'));
  EXPECT_FALSE(IsKnown());
  WriteWholeFile(File() + "-wal", Log('a', 'b', 's', 'p'));  // a frame of an earlier log
  EXPECT_FALSE(IsKnown());
}

}  // namespace
}  // namespace twqb::sweep
