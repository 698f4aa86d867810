// What a transfer shows beside the library's boxes: the record that an error is about, and answers from a file.

#include <gtest/gtest.h>

#include "Program.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/system/SystemMachine.h"
#include "cli/runs/AnsweredDesk.h"
#include "cli/runs/NamingDesk.h"

namespace twqb::cli {
namespace {

class Deaf final : public RunObserver {
 public:
  void RecordTold(const RecordAccount& /*record*/) override {}
  void ErrorTold(const ErrorAccount& /*error*/) override {}
};

std::vector<std::string> TextsOf(const ScriptedDesk& desk) {
  std::vector<std::string> texts;
  for (const auto& shown : desk.Boxes()) texts.push_back(shown.box.text);
  return texts;
}

TEST(AccountDesks, A_name_waits_for_the_box_of_its_own_error_alone) {
  ScriptedDesk person(ParseAnswers("default yes\n"));
  NamingDesk desk(person);
  Deaf deaf;
  NamingObserver observer(deaf, desk);
  ErrorAccount error = {.routine = "R", .text = "Broken.", .table = TableInHand{.number = enClients}, .key = "ACME"};
  observer.ErrorTold(error);
  desk.ShowMessageBox({.text = "One"});
  observer.ErrorTold(error);
  observer.RecordTold({});
  desk.ShowMessageBox({.text = "Two"});
  observer.ErrorTold(error);
  observer.TableEnded({}, "");
  desk.ShowMessageBox({.text = "Three"});
  for (const auto toldBy : {ToldBy::Log, ToldBy::Nobody}) {
    error.toldBy = toldBy;
    observer.ErrorTold(error);
    desk.ShowMessageBox({.text = "Four"});
  }
  EXPECT_EQ(TextsOf(person), (std::vector<std::string>{"One\r\n\r\nIn clients ACME.", "Two", "Three", "Four", "Four"}));
}

TEST(AccountDesks, A_vendor_and_a_file_that_a_file_answers_are_shown_and_logged) {
  const WorkFolder folder;
  SystemMachine machine({.libraryFolder = folder.Path().string(), .registryFile = ""});
  ScriptedDesk script(ParseAnswers("vendor V1\nskip\nfile c.twq\ncancel\n"));
  ScriptedDesk person(ParseAnswers(""));
  AnsweredDesk desk(script, person, machine);
  EXPECT_EQ(desk.PickVendor("Whose?", {"V1"}), "V1");
  EXPECT_EQ(desk.PickVendor("Whose?", {"V1"}), std::nullopt);
  EXPECT_EQ(desk.OpenFileDialog({.title = "Which?"}), "c.twq");
  EXPECT_EQ(desk.OpenFileDialog({.title = "Which?"}), "");
  const std::string shown = "\r\n\r\nAnswered from the file: ";
  EXPECT_EQ(TextsOf(person), (std::vector<std::string>{"Whose?" + shown + "V1", "Whose?" + shown + "nothing",
                                                       "Which?" + shown + "c.twq", "Which?" + shown + "nothing"}));
  const auto log = folder.Read(std::filesystem::path(LogFile(machine)).filename().string());
  EXPECT_EQ(
      log, "Answered V1: Whose?\r\nAnswered nothing: Whose?\r\nAnswered c.twq: Which?\r\nAnswered nothing: Which?\r\n");
}

}  // namespace
}  // namespace twqb::cli
