// The seams on copies: what is worked on is a copy, and what is told has the names of the files themselves.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/preview/CopiedDatabase.h"
#include "adapters/preview/CopiedMachine.h"
#include "adapters/preview/CopiedQuickBooks.h"
#include "tests/support/TestHouse.h"

namespace twqb::preview {
namespace {

std::string BytesOf(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

class Copies : public testing::Test {
 protected:
  TestHouse house_;
  ScratchFiles files_{house_.machine};
};

TEST_F(Copies, Of_a_database_take_what_is_written_and_the_file_itself_does_not) {
  CopiedProvider provider(house_.database, files_);
  const auto connection = provider.CreateConnection();
  connection->SetConnectionString(house_.ConnectString());
  connection->Open();
  connection->Execute("INSERT INTO Client (ClientID) VALUES ('NEW')", nullptr);
  EXPECT_FALSE(connection->Execute("SELECT * FROM Client WHERE ClientID = 'NEW'", nullptr)->Eof());
  EXPECT_EQ(house_.Scalar("SELECT COUNT(*) FROM Client"), "0");
  EXPECT_EQ(connection->ConnectionString(), house_.ConnectString());
  EXPECT_EQ(connection->Provider(), "SQLITE");
}

TEST_F(Copies, Are_the_same_for_every_connection) {
  CopiedProvider provider(house_.database, files_);
  for (const std::string statement : {"INSERT INTO Client (ClientID) VALUES ('NEW')",
                                      "UPDATE Client SET ClientFName = 'Ann' WHERE ClientID = 'NEW'"}) {
    const auto connection = provider.CreateConnection();
    connection->SetConnectionString(house_.ConnectString());
    connection->Open();
    std::int64_t rows = 0;
    connection->Execute(statement, &rows);
    EXPECT_EQ(rows, 1);
  }
}

TEST_F(Copies, Of_a_database_that_is_not_there_fail_by_its_own_name) {
  CopiedProvider provider(house_.database, files_);
  const auto connection = provider.CreateConnection();
  connection->SetConnectionString("Provider=SQLITE;Data Source=" + house_.Path("none.db"));
  try {
    connection->Open();
    FAIL() << "it opened";
  } catch (const PlatformError& failure) {
    EXPECT_EQ(failure.number(), error::kCannotOpen);
    EXPECT_NE(failure.description().find(house_.Path("none.db")), std::string::npos) << failure.description();
    EXPECT_EQ(failure.description().find("twqb-preview"), std::string::npos) << failure.description();
  }
}

TEST_F(Copies, Of_a_company_file_take_an_addition_and_note_it) {
  const auto bytes = BytesOf(house_.Path("company.twq"));
  company::CompanyTransportFactory inner(files_.Of(house_.Path("company.twq")).worked, house_.machine);
  CopiedQuickBooks factory(inner, files_);
  const auto session = factory.CreateTransport();
  session->OpenConnection("", "test");
  session->BeginSession(house_.Path("company.twq"), OpenMode::DoNotCare);
  EXPECT_EQ(session->GetCurrentCompanyFileName(), house_.Path("company.twq"));
  const auto answer = session->ProcessDocument(
      "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"continueOnError\">"
      "<CustomerAddRq><CustomerAdd><Name>Abbott</Name></CustomerAdd></CustomerAddRq>"
      "<CustomerAddRq><CustomerAdd><Name>Abbott</Name></CustomerAdd></CustomerAddRq>"
      "<CustomerQueryRq/></QBXMLMsgsRq></QBXML>");
  session->EndSession();
  ASSERT_EQ(factory.Notes().touched.All().size(), 1U) << answer;
  const auto& touched = factory.Notes().touched.All().front();
  EXPECT_EQ(touched.kind, "Customer");
  EXPECT_EQ(touched.first, Touch::Added);
  EXPECT_NE(answer.find("<ListID>" + touched.identifier), std::string::npos);
  EXPECT_EQ(factory.Notes().opened->original, house_.Path("company.twq"));
  EXPECT_TRUE(BytesOf(house_.Path("company.twq")) == bytes);
}

TEST_F(Copies, Of_settings_are_read_back_and_the_log_is_kept) {
  std::ofstream(house_.Path("twqb.ini")) << "[A]\r\nKey=old\r\n";
  CopiedMachine machine(house_.machine, files_);
  const auto path = house_.Path("twqb.ini");
  EXPECT_TRUE(machine.WritePrivateProfileString("A", "Key", "new", path));
  EXPECT_EQ(machine.GetPrivateProfileString("A", "Key", "", 99, path), "new");
  EXPECT_EQ(BytesOf(path), "[A]\r\nKey=old\r\n");
  machine.AppendLine(house_.Path("log.txt"), "a line");
  EXPECT_EQ(machine.Log(), std::vector<std::string>{"a line"});
  EXPECT_FALSE(std::filesystem::exists(house_.Path("log.txt")));
}

TEST_F(Copies, Make_no_others_and_tell_what_has_none) {
  CopiedMachine machine(house_.machine, files_);
  machine.CopyFile(house_.Path("billing.db"), house_.Path("billing.bak"));
  EXPECT_FALSE(std::filesystem::exists(house_.Path("billing.bak")));
  try {
    machine.CopyFile(house_.Path("none.db"), house_.Path("none.bak"));
    FAIL() << "it was copied";
  } catch (const PlatformError& failure) {
    EXPECT_EQ(failure.number(), error::kFileNotFound);
  }
}

TEST_F(Copies, Let_a_sleep_put_the_clock_forward) {
  CopiedMachine machine(house_.machine, files_);
  const auto before = machine.Now();
  machine.Sleep(1500);
  machine.Sleep(600);
  EXPECT_EQ(machine.Now().Milliseconds() - before.Milliseconds(), 2000);
  EXPECT_EQ(house_.machine.Now(), before);
}

TEST(ScratchFolder, Goes_with_all_that_is_in_it) {
  TestHouse house;
  std::string worked;
  {
    ScratchFiles files(house.machine);
    worked = files.Of(house.Path("billing.db")).worked;
    EXPECT_TRUE(std::filesystem::exists(worked));
    EXPECT_EQ(files.InOwnNames("in " + worked), "in " + house.Path("billing.db"));
    const auto folder = std::filesystem::path(worked).parent_path().parent_path().parent_path();
    EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms::owner_all);
  }
  EXPECT_FALSE(std::filesystem::exists(worked));
}

TEST(TouchedRecordsOfAnAnswer, Are_those_that_were_changed_each_once_by_the_first_that_was_done) {
  TouchedRecords touched;
  touched.Note(
      "<QBXML><QBXMLMsgsRs>"
      "<InvoiceAddRs statusCode=\"0\"><InvoiceRet><TxnID>1-1</TxnID></InvoiceRet></InvoiceAddRs>"
      "<CustomerModRs statusCode=\"0\"><CustomerRet><ListID>8-1</ListID></CustomerRet></CustomerModRs>"
      "<CustomerModRs statusCode=\"3200\"/>"
      "<CustomerQueryRs statusCode=\"0\"><CustomerRet><ListID>8-2</ListID></CustomerRet></CustomerQueryRs>"
      "</QBXMLMsgsRs></QBXML>");
  touched.Note(
      "<QBXML><QBXMLMsgsRs><TxnDelRs statusCode=\"0\"><TxnDelType>Invoice</TxnDelType><TxnID>1-1</TxnID></TxnDelRs>"
      "<ListDelRs statusCode=\"0\"><ListDelType>Vendor</ListDelType><ListID>8-3</ListID></ListDelRs>"
      "</QBXMLMsgsRs></QBXML>");
  const std::vector<TouchedRecord> expected = {
      {.kind = "Invoice", .identifier = "1-1", .isTransaction = true, .first = Touch::Added},
      {.kind = "Customer", .identifier = "8-1", .isTransaction = false, .first = Touch::Changed},
      {.kind = "Vendor", .identifier = "8-3", .isTransaction = false, .first = Touch::Removed}};
  EXPECT_EQ(touched.All(), expected);
}

}  // namespace
}  // namespace twqb::preview
