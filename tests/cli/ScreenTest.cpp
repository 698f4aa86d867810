// How results look: on terminals of some widths, in a pipe, with colours and without.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <sstream>

#include "Program.h"
#include "adapters/terminal/TextLayout.h"
#include "cli/screen/HelpLayout.h"
#include "cli/screen/TextTable.h"
#include "platform/Text.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* kEscape = "\x1b";

std::size_t WidestLine(const std::string& text) {
  std::size_t widest = 0;
  for (const auto& line : Split(text, '\n')) widest = std::max(widest, ColumnCount(line));
  return widest;
}

// --- Tables ----------------------------------------------------------------------------------------------------------

const std::vector<TableLine> kTable = {{"NAME", "AMOUNT", "REMARK"},
                                       {"Harbor & Sons", "1200.00", "to be called on Monday"},
                                       {"\u6771\u4EAC\u682A\u5F0F\u4F1A\u793E", "7.50", "-"}};
constexpr std::array kRight = {Align::Left, Align::Right, Align::Left};

TEST(TextTable, That_fits_is_left_as_it_is) {
  const auto fitted = FitTable(kTable, kRight, 80);
  EXPECT_EQ(fitted.text, TextTable(kTable, kRight));
  EXPECT_FALSE(fitted.isCut);
  EXPECT_THAT(fitted.leftOut, IsEmpty());
}

TEST(TextTable, Loses_the_end_of_its_widest_texts_first_behind_an_ellipsis) {
  const auto fitted = FitTable(kTable, kRight, 40);
  EXPECT_EQ(fitted.text,
            "NAME            AMOUNT  REMARK\n"
            "Harbor & Sons  1200.00  to be called on\u2026\n"
            "\u6771\u4EAC\u682A\u5F0F\u4F1A\u793E      7.50  -\n");
  EXPECT_TRUE(fitted.isCut);
}

TEST(TextTable, Is_at_no_width_wider_than_that_and_cuts_no_number) {
  for (std::size_t width = 20; width < 60; ++width) {
    const auto fitted = FitTable(kTable, kRight, width);
    EXPECT_LE(WidestLine(fitted.text), width) << fitted.text;
    EXPECT_THAT(fitted.text, HasSubstr("1200.00"));
    EXPECT_EQ(fitted.text.find("REMARK") == std::string::npos, !fitted.leftOut.empty()) << fitted.text;
  }
}

TEST(TextTable, Leaves_the_last_columns_out_where_there_is_no_room_for_them) {
  EXPECT_THAT(FitTable(kTable, kRight, 22).leftOut, ElementsAre("REMARK"));
}

// --- Help ------------------------------------------------------------------------------------------------------------

TEST(HelpLayout, Puts_what_an_entry_is_beside_its_name_and_below_it_where_that_is_narrow) {
  const std::string help = "Options:\n  --id ID      Only the record with this key, whatever the saved filters say\n";
  EXPECT_EQ(LaidOutHelp(help, 60),
            "Options:\n  --id ID      Only the record with this key, whatever the\n"
            "               saved filters say\n");
  EXPECT_EQ(LaidOutHelp(help, 36),
            "Options:\n  --id ID\n      Only the record with this key,\n      whatever the saved filters say\n");
}

TEST(HelpLayout, Joins_the_lines_of_a_paragraph_and_keeps_those_of_examples) {
  EXPECT_EQ(LaidOutHelp("Rows are printed\none by one.\nExamples:\n  twqb a\n  twqb b\n", 80),
            "Rows are printed one by one.\nExamples:\n  twqb a\n  twqb b\n");
}

class HelpAtWidth : public testing::TestWithParam<int> {};

TEST_P(HelpAtWidth, Is_no_wider_and_loses_no_word) {
  const WorkFolder folder;
  const std::vector<std::vector<std::string>> commands = {
      {}, {"init"}, {"send"}, {"status"}, {"balances"}, {"list"}, {"company", "set"}, {"billing", "run"}, {"settings"}};
  const auto columns = "COLUMNS=" + std::to_string(GetParam());
  const auto words = [](const std::string& text) {
    std::istringstream stream(text);
    return std::vector<std::string>(std::istream_iterator<std::string>(stream), {});
  };
  for (auto command : commands) {
    command.emplace_back("--help");
    const auto shown = folder.OnTerminal(command, {.environment = {columns}});
    EXPECT_LE(WidestLine(shown), static_cast<std::size_t>(GetParam())) << shown;
    EXPECT_EQ(words(shown), words(folder.Done(command)));
  }
}

INSTANTIATE_TEST_SUITE_P(Screen, HelpAtWidth, testing::Values(40, 80, 120));

// --- Lists -----------------------------------------------------------------------------------------------------------

class Screen : public testing::Test {
 protected:
  Screen() {
    folder_.Done({"init", "--sample"});
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
  }
  WorkFolder folder_;
};

TEST_F(Screen, Lists_fit_the_terminal_or_say_that_they_are_cut) {
  for (const auto columns : std::array<unsigned short, 3>{40, 80, 120}) {
    const std::vector<std::vector<std::string>> commands = {
        {"status"}, {"list", "customers"}, {"list", "accounts"}, {"accounts"}, {"balances"}};
    for (const auto& command : commands) {
      const auto shown = folder_.OnTerminal(command, {.columns = columns, .environment = {"NO_COLOR=1"}});
      std::string table;
      bool isTold = false;
      for (const auto& line : Split(shown, '\n')) {
        if (line.starts_with("twqb: ")) isTold = true;
        if (!isTold) table += line + "\n";
      }
      EXPECT_LE(WidestLine(table), columns) << shown;
      const bool isCut = table.find("\u2026") != std::string::npos;
      EXPECT_EQ(isCut, shown.find("Some texts are cut") != std::string::npos) << shown;
      EXPECT_EQ(isTold, shown.find("--wide") != std::string::npos) << shown;
    }
  }
}

TEST_F(Screen, Shows_no_table_of_BillingDb_wider_than_it_is) {
  folder_.Done({"billing", "run", "-e", "CREATE TABLE " + std::string(50, 'T') + " (A TEXT)"});
  const auto shown = folder_.OnTerminal({"billing", "show"}, {.columns = 40, .environment = {"NO_COLOR=1"}});
  EXPECT_THAT(shown, AllOf(HasSubstr("TTT\u2026"), HasSubstr("--wide")));
}

TEST_F(Screen, Is_not_asked_where_wide_lists_are_wanted) {
  const auto shown =
      folder_.OnTerminal({"list", "customers", "--wide"}, {.columns = 40, .environment = {"NO_COLOR=1"}});
  EXPECT_THAT(shown, Not(HasSubstr("\u2026")));
  EXPECT_GT(WidestLine(shown), 40U);
}

TEST_F(Screen, Cuts_nothing_in_a_pipe) {
  folder_.Done({"billing", "run", "-e",
                "UPDATE Client SET ClientCompany = '" + std::string(80, 'x') + "' WHERE ClientID = 'ABBOTT'"});
  const auto ended = folder_.Shell("COLUMNS=40 \"$0\" list accounts | cat");
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_GT(WidestLine(ended.out), 40U);
  EXPECT_THAT(ended.out, Not(HasSubstr("\u2026")));
  EXPECT_EQ(folder_.Shell("COLUMNS=40 \"$0\" status | cat").out, folder_.Done({"status"}));
}

TEST_F(Screen, Has_colours_on_a_terminal_that_shows_them_alone) {
  EXPECT_THAT(folder_.OnTerminal({"status"}), HasSubstr(std::string(kEscape) + "[1mTABLE"));
  for (const std::string without : {"NO_COLOR=1", "TERM=dumb", "TERM="}) {
    EXPECT_THAT(folder_.OnTerminal({"status"}, {.environment = {without}}), Not(HasSubstr(kEscape))) << without;
  }
  EXPECT_THAT(folder_.Done({"status"}), Not(HasSubstr(kEscape)));
}

}  // namespace
}  // namespace twqb::cli
