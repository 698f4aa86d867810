#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <regex>
#include <thread>

#include "Program.h"
#include "platform/Text.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(Init, Makes_four_files_and_nothing_else) {
  const WorkFolder folder;
  folder.Done({"init"});
  EXPECT_THAT(folder.Names(), ElementsAre("billing.db", "company.twq", "registry.ini", "twqb.ini"));
}

TEST(Init, The_registry_file_has_the_full_path_of_the_database) {
  const WorkFolder folder;
  folder.Done({"init"});
  EXPECT_THAT(folder.Read("registry.ini"),
              HasSubstr("[TW80]\r\nDatabase=" + (folder.Path() / "billing.db").string() + "\r\n"));
  EXPECT_THAT(folder.Read("registry.ini"), HasSubstr("[TW80\\GENERAL]\r\nQB_MNUSUBSCRIBE=0\r\n"));
}

TEST(Init, Neither_the_first_time_nor_the_company_file_is_settled) {
  const WorkFolder folder;
  folder.Done({"init"});
  EXPECT_EQ(folder.Twqb({"settings", "get", "GENERAL", "FIRST_TIME"}).status, 1);
  EXPECT_EQ(folder.Twqb({"settings", "get", "GENERAL", "QBDBPath"}).status, 1);
}

TEST(Init, Without_the_sample_the_tables_are_there_and_empty) {
  const WorkFolder folder;
  folder.Done({"init"});
  EXPECT_EQ(folder.Scalar("SELECT COUNT(*) FROM Client"), "0");
  EXPECT_EQ(folder.Scalar("SELECT COUNT(*) FROM TransactionTable"), "0");
}

TEST(Init, The_sample_is_on_both_sides_and_nothing_is_linked) {
  const WorkFolder folder;
  folder.Done({"init", "--sample"});
  EXPECT_EQ(folder.Scalar("SELECT COUNT(*) FROM Client"), "64");
  EXPECT_EQ(folder.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "0");
  EXPECT_THAT(folder.Done({"company", "show"}), testing::ContainsRegex("Customer +15\n"));
}

TEST(Init, A_size_is_the_number_of_clients_of_a_firm_that_stands_on_both_sides) {
  const WorkFolder folder;
  EXPECT_THAT(folder.Done({"init", "--sample", "--size", "3"}), HasSubstr(", with a firm of 3 clients.\n"));
  EXPECT_EQ(folder.Scalar("SELECT COUNT(*) FROM Client"), "3");
  EXPECT_NE(folder.Scalar("SELECT COUNT(*) FROM TimeEntry"), "0");
  EXPECT_EQ(folder.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "0");
  EXPECT_THAT(folder.Done({"company", "show"}), testing::ContainsRegex("Customer +[1-9]"));
}

TEST(Init, A_seed_chooses_among_firms_of_a_size) {
  const auto keys = [](const std::string& seed) {
    const WorkFolder folder;
    folder.Done({"init", "--sample", "--size", "4", "--seed", seed});
    return folder.Scalar("SELECT group_concat(ClientID) FROM Client");
  };
  EXPECT_EQ(keys("2"), keys("2"));
  EXPECT_NE(keys("2"), keys("3"));
}

TEST(Init, A_size_that_makes_no_sense_or_stands_without_the_sample_makes_nothing) {
  const WorkFolder folder;
  for (const std::string size : {"0", "-1", "10001", "many", "1.5"}) {
    const auto ended = folder.Twqb({"init", "--sample", "--size", size});
    EXPECT_EQ(ended.status, 2) << size;
    EXPECT_THAT(ended.err, HasSubstr("--size: Value " + size + " not in range 1 to 10000."));
  }
  EXPECT_THAT(folder.Twqb({"init", "--size", "3"}).err, HasSubstr("--size requires --sample."));
  EXPECT_THAT(folder.Twqb({"init", "--sample", "--seed", "3"}).err, HasSubstr("--seed requires --size."));
  EXPECT_THAT(folder.Names(), IsEmpty());
}

class FirmsOfCountries : public testing::TestWithParam<std::string> {};

TEST_P(FirmsOfCountries, Are_made_and_go_to_QuickBooks_and_come_back_as_a_whole) {
  const WorkFolder folder;
  folder.Done({"init", "--sample", "--size", "1", "--country", GetParam()});
  folder.Write("yes.txt", "default yes\n");
  for (const std::string verb : {"send", "get"}) {
    EXPECT_THAT(folder.Done({verb, "all", "--answers", "yes.txt", "--no-progress"}),
                HasSubstr("\n" + verb + " all: done"));
  }
}

INSTANTIATE_TEST_SUITE_P(Init, FirmsOfCountries, testing::Values("US", "CA", "UK", "AU"));

TEST(Init, The_sample_has_rows_in_every_table_that_is_sent) {
  const WorkFolder folder;
  folder.Done({"init", "--sample"});
  for (const std::string table :
       {"Employee", "Project", "Activity", "Expense", "AccountList", "ExpenseLog", "TimeEntry", "QBPayroll",
        "TransactionTable", "ManInvDetail", "Payment", "VendorBill", "EmployeeGroupDetail", "ProjectGroupDetail",
        "ActivityGroupDetail", "ExpenseGroupDetail"}) {
    EXPECT_NE(folder.Scalar("SELECT COUNT(*) FROM " + table), "0") << table;
  }
}

TEST(Init, The_sample_company_has_the_lists_of_a_small_firm) {
  const WorkFolder folder;
  folder.Done({"init", "--sample"});
  const auto shown = folder.Done({"company", "show"});
  for (const auto* line :
       {"Account +70", "  Bank +4, balance 90716.45", "ItemService +15", "ItemOtherCharge +11", "ItemNonInventory +5",
        "ItemInventory +4", "ItemSalesTax +3", "ItemPayment +2", "ItemGroup +1", "Class +8", "Employee +6",
        "Vendor +14", "PayrollItemWage +10", "JobType +7"}) {
    EXPECT_THAT(shown, testing::ContainsRegex(std::string("\n") + line + "\n"));
  }
  const auto answer = folder.Done(
      {"company", "run", "-"},
      {.input = "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">"
                "<EmployeeQueryRq><FullName>Dara L Finnegan</FullName></EmployeeQueryRq></QBXMLMsgsRq></QBXML>"});
  EXPECT_THAT(answer, HasSubstr("<Earnings><PayrollItemWageRef>"));
  EXPECT_THAT(answer, HasSubstr("<FullName>Surveys:Boundary</FullName>"));
}

TEST(Init, The_sample_company_has_sales_tax_items_where_its_edition_keeps_them) {
  for (const auto& [arguments, items] :
       {std::pair{"US", "3"}, std::pair{"AU", "3"}, std::pair{"CA", "0"}, std::pair{"UK", "0"}}) {
    const WorkFolder folder;
    folder.Done({"init", "--sample", "--country", arguments});
    EXPECT_THAT(folder.Done({"company", "show"}),
                testing::ContainsRegex(std::string("\nItemSalesTax +") + items + "\n"))
        << arguments;
  }
}

class InitOnExistingFile : public testing::TestWithParam<std::string> {};

TEST_P(InitOnExistingFile, Refuses_and_makes_nothing) {
  const WorkFolder folder;
  folder.Write(GetParam(), "mine");
  const auto ended = folder.Twqb({"init"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr((folder.Path() / GetParam()).string()));
  EXPECT_THAT(ended.err, HasSubstr("-C"));
  EXPECT_THAT(folder.Names(), ElementsAre(GetParam()));
  EXPECT_EQ(folder.Read(GetParam()), "mine");
}

INSTANTIATE_TEST_SUITE_P(Init, InitOnExistingFile,
                         testing::Values("billing.db", "company.twq", "twqb.ini", "registry.ini"),
                         [](const auto& suite) { return suite.param.substr(0, suite.param.find('.')); });

// What a making that was killed leaves: a folder beside the files, and those of them that it had put in place.
class BrokenInit : public testing::Test {
 protected:
  BrokenInit() {
    folder_.Done({"init"});
    std::filesystem::create_directory(left_);
    std::string mark;
    for (const auto* name : {"billing.db", "company.twq", "twqb.ini", "registry.ini"}) {
      std::filesystem::create_hard_link(folder_.Path() / name, left_ / name);
      struct stat status = {};
      EXPECT_EQ(stat((left_ / name).c_str(), &status), 0);
      mark += std::string(name) + " " + std::to_string(status.st_dev) + " " + std::to_string(status.st_ino) + " " +
              std::to_string(status.st_size) + "\n";
    }
    folder_.Write(".twqb-init-aBc123/placing", mark);
  }

  WorkFolder folder_;
  std::filesystem::path left_ = folder_.Path() / ".twqb-init-aBc123";
};

TEST_F(BrokenInit, Is_cleared_away_by_the_next_one) {
  std::filesystem::remove(folder_.Path() / "twqb.ini");
  std::filesystem::remove(folder_.Path() / "registry.ini");
  folder_.Done({"init", "--sample"});
  EXPECT_THAT(folder_.Names(), ElementsAre("billing.db", "company.twq", "registry.ini", "twqb.ini"));
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client"), "64");
}

TEST_F(BrokenInit, Before_anything_was_in_place_is_cleared_away_too) {
  for (const auto* name : {"billing.db", "company.twq", "twqb.ini", "registry.ini"}) {
    std::filesystem::remove(folder_.Path() / name);
  }
  std::filesystem::remove(left_ / "placing");
  folder_.Done({"init"});
  EXPECT_THAT(folder_.Names(), ElementsAre("billing.db", "company.twq", "registry.ini", "twqb.ini"));
}

TEST_F(BrokenInit, That_had_all_in_place_takes_none_of_it_away) {
  EXPECT_EQ(folder_.Twqb({"init"}).status, 2);
  EXPECT_THAT(folder_.Names(), ElementsAre("billing.db", "company.twq", "registry.ini", "twqb.ini"));
}

TEST_F(BrokenInit, Never_takes_a_file_that_has_been_worked_on_since) {
  std::filesystem::remove(folder_.Path() / "twqb.ini");
  std::filesystem::last_write_time(folder_.Path() / "billing.db",
                                   std::filesystem::file_time_type::clock::now() + std::chrono::seconds(2));
  EXPECT_EQ(folder_.Twqb({"init"}).status, 2);
  EXPECT_THAT(folder_.Names(), testing::Contains("billing.db"));
}

TEST_F(BrokenInit, Never_takes_a_file_of_another_size_whatever_its_time) {
  const auto registry = folder_.Path() / "registry.ini";
  std::filesystem::remove(folder_.Path() / "twqb.ini");
  const auto made = std::filesystem::last_write_time(registry);
  std::ofstream(registry, std::ios::app) << "; mine\r\n";
  std::filesystem::last_write_time(registry, made);
  EXPECT_EQ(folder_.Twqb({"init"}).status, 2);
  EXPECT_THAT(folder_.Read("registry.ini"), HasSubstr("; mine"));
}

TEST_F(BrokenInit, Leaves_a_folder_of_that_name_alone_that_holds_something_else) {
  folder_.Write(".twqb-init-aBc123/novel.txt", "mine");
  EXPECT_EQ(folder_.Twqb({"init"}).status, 2);
  EXPECT_EQ(folder_.Read(".twqb-init-aBc123/novel.txt"), "mine");
}

// At whatever moment the signal comes: nothing is made, or all of it.
class InitAndSignal : public testing::TestWithParam<int> {};

TEST_P(InitAndSignal, Leaves_nothing_that_is_in_the_next_ones_way) {
  for (int milliseconds = 0; milliseconds < 60; milliseconds += 4) {
    const WorkFolder folder;
    const auto init = folder.Start({"init", "--sample"});
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    init->Signal(GetParam());
    const auto ended = init->Wait();
    if (GetParam() != SIGKILL && ended.signal == 0) {
      const auto names = folder.Names();
      EXPECT_TRUE(names.empty() || names.size() == 4) << names.size() << " after " << milliseconds << " ms";
    }
    if (folder.Names().size() == 4 && ended.exitStatus == 0) continue;
    const auto next = folder.Twqb({"init", "--sample"});
    const bool wasThrough = next.status == 2 && std::filesystem::exists(folder.Path() / "registry.ini");
    EXPECT_TRUE(next.status == 0 || wasThrough) << next.err;
  }
}

INSTANTIATE_TEST_SUITE_P(Init, InitAndSignal, testing::Values(SIGKILL, SIGTERM, SIGINT),
                         [](const auto& suite) { return "Signal" + std::to_string(suite.param); });

// By a limit to the size of files, at which a write fails as on a full disk.
TEST(Init, A_full_disk_is_told_of_the_folder_that_was_to_get_the_files) {
  for (const std::string blocks : {"1", "100", "1000"}) {
    const WorkFolder folder;
    const auto ended = folder.Shell("trap '' XFSZ; ulimit -f " + blocks + "; exec \"$0\" init --sample");
    EXPECT_EQ(ended.status, 2) << blocks;
    EXPECT_THAT(ended.err, HasSubstr(folder.Path().string())) << blocks;
    EXPECT_THAT(ended.err, AllOf(Not(HasSubstr(".twqb-init-")), Not(HasSubstr("0x")))) << blocks;
    EXPECT_THAT(folder.Names(), IsEmpty());
  }
}

TEST(Init, A_second_one_in_a_folder_refuses_and_leaves_the_first) {
  const WorkFolder folder;
  folder.Done({"init", "--sample"});
  const auto before = folder.Read("billing.db");
  EXPECT_EQ(folder.Twqb({"init"}).status, 2);
  EXPECT_EQ(folder.Read("billing.db"), before);
}

TEST(Init, A_link_that_leads_nowhere_is_not_overwritten) {
  const WorkFolder folder;
  std::filesystem::create_symlink("nowhere", folder.Path() / "twqb.ini");
  EXPECT_EQ(folder.Twqb({"init"}).status, 2);
  EXPECT_THAT(folder.Names(), ElementsAre("twqb.ini"));
}

TEST(Init, A_folder_with_a_semicolon_in_its_name_can_be_worked_in) {
  const WorkFolder folder;
  std::filesystem::create_directory(folder.Path() / "a; \"b\"");
  folder.Done({"-C", "a; \"b\"", "init"});
  EXPECT_EQ(folder.Done({"-C", "a; \"b\"", "billing", "run", "-e", "SELECT 1 AS one"}), "one\n1\n");
}

class InitOfCountry : public testing::TestWithParam<std::string> {};

TEST_P(InitOfCountry, The_sample_goes_in_and_can_be_transferred_both_ways) {
  const WorkFolder folder;
  folder.Done({"init", "--sample", "--country", GetParam()});
  EXPECT_THAT(folder.Done({"company", "show"}), HasSubstr(GetParam()));
  folder.Done({"send", "clients", "--id", "ABBOTT"});
  folder.Done({"get", "clients"});
  // The one that was sent, and the customers that QuickBooks had.
  EXPECT_EQ(folder.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "12");
}

INSTANTIATE_TEST_SUITE_P(Init, InitOfCountry, testing::Values("US", "CA", "UK", "AU"),
                         [](const auto& suite) { return suite.param; });

TEST(Init, The_accepted_forms_and_the_host_version_are_those_asked_for) {
  const WorkFolder folder;
  folder.Done({"init", "--sample", "--country", "CA", "--accepts", "uk,US", "--host-version", "18"});
  const auto shown = folder.Done({"company", "show"});
  EXPECT_THAT(shown, testing::ContainsRegex("Message forms +UK,US\n"));
  EXPECT_THAT(shown, testing::ContainsRegex("Host version +18\n"));
}

TEST(Init, The_clock_tells_when_the_company_file_was_made) {
  const WorkFolder folder;
  folder.Done({"init", "--clock", "2008-03-05T10:00:00", "--bias", "300"});
  EXPECT_THAT(folder.Done({"company", "show"}), HasSubstr("2008-03-05T15:00:00Z"));
}

TEST(Init, Names_in_the_settings_file_only_what_there_is) {
  const WorkFolder folder;
  folder.Done({"init"});
  std::string comments;
  for (auto line : Split(folder.Read("twqb.ini"), '\n')) {
    if (line.starts_with("; ")) comments += Trim(ReplaceAll(line.substr(2), "\r", "")) + " ";
  }
  const std::regex named("([A-Za-z()]+_[A-Za-z0-9]+) in \\[([A-Za-z0-9_]+)\\]");
  int count = 0;
  for (std::sregex_iterator at(comments.begin(), comments.end(), named); at != std::sregex_iterator(); ++at, ++count) {
    const auto name = "[" + (*at)[2].str() + "] " + (*at)[1].str();
    const auto described = folder.Done({"settings", "describe", name, "--json"});
    EXPECT_THAT(described, HasSubstr("\"section\":\"" + (*at)[2].str() + "\",\"key\":\"" + (*at)[1].str() + "\""))
        << name;
  }
  EXPECT_EQ(count, 2) << comments;
  // None stands there otherwise.
  EXPECT_EQ(std::ranges::count(std::regex_replace(comments, named, ""), '_'), 0) << comments;
}

}  // namespace
}  // namespace twqb::cli
