#include <gtest/gtest.h>

#include <sstream>

#include "../faults/SeamFakes.h"
#include "adapters/transcript/Masking.h"
#include "adapters/transcript/Transcript.h"
#include "adapters/transcript/TranscriptWriter.h"

namespace twqb {
namespace {

struct Masked {
  std::string_view text;
  std::string_view result;
};

std::ostream& operator<<(std::ostream& out, const Masked& masked) { return out << masked.text; }

class Passwords : public testing::TestWithParam<Masked> {};
TEST_P(Passwords, Are_masked_up_to_their_end) { EXPECT_EQ(MaskPasswords(GetParam().text), GetParam().result); }
INSTANTIATE_TEST_SUITE_P(
    ConnectionStrings, Passwords,
    testing::Values(Masked{"Provider=X;Password=secret;User ID=me", "Provider=X;Password=***;User ID=me"},
                    Masked{"UID=me;pwd=secret", "UID=me;pwd=***"}, Masked{"PWD = secret ; A=b", "PWD = ***; A=b"},
                    Masked{"Jet OLEDB:Database Password=\"a;b\";Mode=3", "Jet OLEDB:Database Password=\"***\";Mode=3"},
                    Masked{"Password='it''s';A=b", "Password='***';A=b"},
                    Masked{"Password=a=b;C=d", "Password=***;C=d"}, Masked{"Password=;A=b", "Password=;A=b"},
                    Masked{"Password=", "Password="},
                    Masked{"can't open Password=secret\r\nnext line", "can't open Password=***\r\nnext line"},
                    Masked{"Data Source=billing.db", "Data Source=billing.db"}));

class Elements : public testing::TestWithParam<Masked> {};
TEST_P(Elements, With_identity_numbers_are_masked) {
  EXPECT_EQ(MaskIdentityElements(GetParam().text), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(
    Documents, Elements,
    testing::Values(Masked{"<A><SSN>123-45-6789</SSN><Name>x</Name></A>", "<A><SSN>***</SSN><Name>x</Name></A>"},
                    Masked{"<SIN>1</SIN><Sin>2</Sin>", "<SIN>***</SIN><Sin>***</Sin>"},
                    Masked{"<NiNumber>AB 12 34 56 C</NiNumber>", "<NiNumber>***</NiNumber>"},
                    Masked{"<VendorTaxIdent>12</VendorTaxIdent>", "<VendorTaxIdent>***</VendorTaxIdent>"},
                    Masked{"<SSN></SSN><SSN/><SSN />", "<SSN></SSN><SSN/><SSN />"},
                    Masked{"<SSNotes>1</SSNotes>", "<SSNotes>1</SSNotes>"},
                    Masked{"<Notes>Password=x</Notes>", "<Notes>Password=x</Notes>"},
                    Masked{
                        "<A statusMessage=\"The string &quot;123&quot; in the field &quot;SSN&quot; is too long.\"/>",
                        "<A statusMessage=\"The string &quot;***&quot; in the field &quot;SSN&quot; is too long.\"/>"},
                    Masked{"<A m=\"The string &quot;x&quot; in the field &quot;Name&quot; is too long.\"/>",
                           "<A m=\"The string &quot;x&quot; in the field &quot;Name&quot; is too long.\"/>"},
                    Masked{"<SSN>1", "<SSN>***"}));

class Literals : public testing::TestWithParam<Masked> {};
TEST_P(Literals, Of_identity_columns_are_masked) {
  EXPECT_EQ(MaskIdentityLiterals(GetParam().text), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(
    Statements, Literals,
    testing::Values(Masked{"UPDATE Employee SET EmpSSN = '123', EmpCity = 'Ulm'",
                           "UPDATE Employee SET EmpSSN = '***', EmpCity = 'Ulm'"},
                    Masked{"SET empssn='it''s',A='b'", "SET empssn='***',A='b'"},
                    Masked{"WHERE [EmpSSN] <> '1' OR EmpSSN LIKE '2%'", "WHERE [EmpSSN] <> '***' OR EmpSSN LIKE '***'"},
                    Masked{"SET EmpSSN = 123456789 WHERE A=1", "SET EmpSSN = *** WHERE A=1"},
                    Masked{"SET EmpSSN = NULL, EmpSSN = ''", "SET EmpSSN = NULL, EmpSSN = ''"},
                    Masked{"SELECT EmpSSN, EmpCity FROM Employee WHERE EmpCity = 'x'",
                           "SELECT EmpSSN, EmpCity FROM Employee WHERE EmpCity = 'x'"},
                    Masked{"SET Notes = 'EmpSSN = ', A = 'b'", "SET Notes = 'EmpSSN = ', A = 'b'"},
                    Masked{"INSERT INTO Employee (EmployeeID, EmpSSN ,Status) VALUES ('a, (b', '123', NULL)",
                           "INSERT INTO Employee (EmployeeID, EmpSSN ,Status) VALUES ('a, (b', '***', NULL)"},
                    Masked{"insert into Employee([EmpSSN]) values (f(1,2)), ('3');",
                           "insert into Employee([EmpSSN]) values (***), ('***');"},
                    Masked{"INSERT INTO Employee (EmpSSN) VALUES (NULL)",
                           "INSERT INTO Employee (EmpSSN) VALUES (NULL)"}));

TEST(QuotedIdentity, Of_a_sentence_about_it_is_masked) {
  EXPECT_EQ(MaskQuotedIdentity("\"123 456 789\" is not a valid Social Insurance Number. EmployeeID = \"Ann\""),
            "\"***\" is not a valid Social Insurance Number. EmployeeID = \"Ann\"");
  EXPECT_EQ(MaskQuotedIdentity("The string \"123\" in the field \"NiNumber\" is too long."),
            "The string \"***\" in the field \"NiNumber\" is too long.");
  EXPECT_EQ(MaskQuotedIdentity("The string \"123\" in the field \"Name\" is too long."),
            "The string \"123\" in the field \"Name\" is too long.");
}

// Sends one secret through every place, and gives the transcript.
std::string RunWithSecrets(Masking masking) {
  fakes::FakePlatform fakes;
  std::ostringstream out;
  TranscriptWriter writer(out, masking);
  TranscriptPlatform transcript(fakes.Seams(), writer);
  const auto platform = transcript.Decorated();

  transcript.Call("SetConnect", {"Password=secret"});
  const auto connection = platform.database->CreateConnection();
  connection->SetConnectionString("Data Source=x;Password=secret");
  fakes.notes.raiseNext = PlatformError(error::kCannotOpen, "not opened: Password=secret");
  EXPECT_THROW(connection->Open(), PlatformError);
  connection->Execute("UPDATE Employee SET EmpSSN = 'secret'", nullptr);
  const auto table =
      connection->OpenRecordset("SELECT * FROM Employee;", ado::CursorType::Static, ado::LockType::Optimistic);
  table->SetField("empssn", std::string("secret"));
  table->Update();
  const auto session = platform.quickbooks->CreateTransport();
  fakes.quickbooks.answer =
      "<QBXML><QBXMLMsgsRs><EmployeeAddRs><SSN>secret</SSN></EmployeeAddRs></QBXMLMsgsRs></QBXML>";
  (void)session->ProcessDocument(
      "<QBXML><QBXMLMsgsRq><EmployeeAddRq><SSN>secret</SSN></EmployeeAddRq></QBXMLMsgsRq></QBXML>");
  platform.machine->AppendLine("log", "\"secret\" is not a valid Social Insurance Number.");
  fakes.machine.registry = "Password=secret";
  (void)platform.machine->ReadRegistry("TW80", "Database");
  platform.desk->ShowMessageBox({.text = "The string \"secret\" in the field \"SSN\" is too long.", .title = ""});
  return out.str();
}

TEST(TranscriptMasking, Leaves_no_secret_in_a_masked_transcript) {
  const auto transcript = RunWithSecrets(Masking::Masked);
  EXPECT_EQ(transcript.find("secret"), std::string::npos) << transcript;
  EXPECT_NE(transcript.find(R"("connectionString":"Data Source=x;Password=***")"), std::string::npos) << transcript;
  EXPECT_NE(transcript.find(R"("values":{"empssn":"***"})"), std::string::npos) << transcript;
}

TEST(TranscriptMasking, Changes_nothing_in_an_unmasked_transcript) {
  EXPECT_EQ(RunWithSecrets(Masking::Unmasked).find("***"), std::string::npos);
}

TEST(TranscriptMasking, Shows_that_an_identity_number_is_NULL_or_empty) {
  std::ostringstream out;
  TranscriptWriter writer(out);
  writer.Write("row", {{"values", EventFields{{"EmpSSN", nullptr}, {"EMPSSN", ""}}}});
  EXPECT_EQ(out.str(), "{\"seq\":1,\"kind\":\"row\",\"values\":{\"EmpSSN\":null,\"EMPSSN\":\"\"}}\n");
}

}  // namespace
}  // namespace twqb
