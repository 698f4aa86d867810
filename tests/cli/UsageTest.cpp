#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(CommandLine, Help_and_version_go_to_standard_output) {
  const WorkFolder folder;
  EXPECT_THAT(folder.Done({"--help"}), AllOf(StartsWith("Usage: twqb"), HasSubstr("Exit status")));
  EXPECT_THAT(folder.Done({"send", "--help"}), AllOf(HasSubstr("Usage: twqb send"), HasSubstr("expensecodes")));
  EXPECT_THAT(folder.Done({"billing", "run", "--help"}), HasSubstr("Usage: twqb billing run"));
  EXPECT_THAT(folder.Done({"--help"}), AllOf(HasSubstr("  status "), HasSubstr("or list them)")));
  EXPECT_THAT(folder.Done({"status", "--help"}), AllOf(HasSubstr("Usage: twqb status"), HasSubstr("LAST SEND")));
  EXPECT_THAT(folder.Done({"settings", "list", "--help"}),
              AllOf(HasSubstr("Usage: twqb settings list"), HasSubstr("TWSTable")));
  EXPECT_THAT(folder.Done({"--version"}), StartsWith("twqb "));
}

struct Mistake {
  std::string name;
  std::vector<std::string> arguments;
  std::string told;
};

class WrongUsage : public testing::TestWithParam<Mistake> {};

TEST_P(WrongUsage, Ends_with_2_and_says_what_is_wrong) {
  const WorkFolder folder;
  const auto ended = folder.Twqb(GetParam().arguments);
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(StartsWith("twqb: "), HasSubstr(GetParam().told)));
  EXPECT_THAT(ended.out, IsEmpty());
  EXPECT_THAT(folder.Names(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, WrongUsage,
    testing::Values(Mistake{"Nothing", {}, "needs a command: init, send, get"},
                    Mistake{"MistypedCommand", {"sned", "clients"}, "Did you mean \"send\"?"},
                    Mistake{"MistypedNestedCommand", {"billing", "shwo"}, "Did you mean \"show\"?"},
                    Mistake{"FarOffCommand", {"synchronise"}, "There is no command \"twqb synchronise\".\n"},
                    Mistake{"GroupAlone", {"settings"}, "needs a command: get, set, list"},
                    Mistake{"QuickBooksItself", {"send", "clients", "--quickbooks"}, "--company names it"},
                    Mistake{"QuickBooksItselfOfAList", {"list", "customers", "--quickbooks"}, "runs on Windows"},
                    Mistake{"QuickBooksItselfAndAFile",
                            {"send", "clients", "--company", "company.twq", "--quickbooks"},
                            "--company excludes --quickbooks"},
                    Mistake{"MistypedOption", {"send", "clients", "--sycn"}, "Did you mean \"--sync\"?"},
                    Mistake{
                        "MistypedGlobalOption", {"--anwsers", "x", "send", "clients"}, "Did you mean \"--answers\"?"},
                    Mistake{"TooManyWords", {"send", "clients", "projects"}, "\"projects\" is more than"},
                    Mistake{"NoTable", {"send"}, "TABLE is required"},
                    Mistake{"MistypedTable", {"send", "cleints"}, "Did you mean \"clients\"?"},
                    Mistake{"TableNobodyMoves", {"get", "creditmemo"}, "The tables are: employees, vendors, clients"},
                    Mistake{"RecordOfAllTables", {"send", "all", "--id", "ABBOTT"}, "name the table"},
                    Mistake{"EmptyRecord", {"send", "clients", "--id", ""}, "needs the identifier"},
                    Mistake{"InvoiceWithoutNumber",
                            {"send", "invoices", "--id", "HARBOR:SURVEY"},
                            "a project and an invoice number with a comma between"},
                    Mistake{"NoKind", {"list"}, "KIND is required"},
                    Mistake{"MistypedKind", {"list", "custmers"}, "Did you mean \"customers\"?"},
                    Mistake{"ListNobodyHas", {"list", "ledgers"}, "The lists are: accounts, employees, customers"},
                    Mistake{"AllOfAListWithoutInactive", {"list", "invoices", "--all"}, "\"invoices\" has no --all"},
                    Mistake{"MistypedLookup", {"acounts"}, "Did you mean \"accounts\"?"},
                    Mistake{"MistypedHyphen", {"isjob", "1"}, "Did you mean \"is-job\"?"},
                    Mistake{"EmptyIdentifier", {"is-job", ""}, "is empty"},
                    Mistake{"NoTime", {"send", "clients", "--clock", "tomorrow"}, "2008-03-05T10:00:00"},
                    Mistake{"ZoneWithoutClock", {"send", "clients", "--bias", "300"}, "--bias requires --clock"},
                    Mistake{"NoFolder", {"-C", "nowhere", "init"}, "nowhere can't be entered"},
                    Mistake{"UnknownCountry", {"init", "--country", "FR"}, "US, CA, UK or AU"},
                    Mistake{"UnknownForm", {"init", "--accepts", "US,FR"}, "US, CA, UK or AU"},
                    Mistake{"NoStatement", {"billing", "run"}, "-e"},
                    Mistake{"BlankStatement", {"billing", "run", "-e", " ; -- nothing"}, "no statement"},
                    Mistake{"DemoOnOwnFiles", {"demo", "--company", "mine.twq"}, "-C alone"}),
    [](const auto& suite) { return suite.param.name; });

TEST(CommandLine, An_option_may_stand_before_the_command_and_behind_it) {
  const WorkFolder folder;
  std::filesystem::create_directory(folder.Path() / "firm");
  folder.Done({"-C", "firm", "init"});
  EXPECT_THAT(folder.Done({"company", "show", "-C", "firm"}), HasSubstr("firm/company.twq"));
}

TEST(CommandLine, Paths_are_meant_from_the_folder_of_C) {
  const WorkFolder folder;
  std::filesystem::create_directory(folder.Path() / "firm");
  folder.Done({"-C", "firm", "init"});
  folder.Write("firm/q.sql", "SELECT 7 AS seven;");
  EXPECT_EQ(folder.Done({"-C", "firm", "billing", "run", "q.sql"}), "seven\n7\n");
}

TEST(CommandLine, A_result_that_can_not_be_written_ends_with_2) {
  const WorkFolder folder;
  folder.Done({"init"});
  for (const auto out : {Stdout::Closed, Stdout::FullDisk}) {
    const auto ended = folder.Twqb({"billing", "show"}, {.out = out});
    EXPECT_EQ(ended.status, 2);
    EXPECT_THAT(ended.err, HasSubstr("Standard output can't be written"));
  }
}

}  // namespace
}  // namespace twqb::cli
