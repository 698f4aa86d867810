// The events of the host, of QuickBooks, desk, machine and call-back, line by line.
#include <filesystem>
#include <fstream>

#include "TranscriptFixture.h"

namespace twqb {
namespace {

constexpr ErrorNumber kNoFile = 0x80040416;

TEST_F(Transcript, A_call_of_the_host_and_its_return_are_written) {
  transcript_.Call("SendDataToQB", {"enClients"});
  transcript_.Return("SendDataToQB", true);
  const std::vector<std::string> expected = {R"({"kind":"call","operation":"SendDataToQB","arguments":["enClients"]})",
                                             R"({"kind":"return","operation":"SendDataToQB","value":true})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, A_call_of_the_host_that_raises_returns_its_error) {
  transcript_.Return("SendDataToQB", PlatformError(error::kConversion));
  EXPECT_EQ(
      Line(),
      R"({"kind":"return","operation":"SendDataToQB","raised":{"number":"0x0000000D","description":"Type mismatch"}})");
}

TEST_F(Transcript, Session_operations_are_written_with_arguments_and_results) {
  const auto session = platform_.quickbooks->CreateTransport();
  EXPECT_EQ(session->GetVersion().major, 5);
  session->OpenConnection("", "Link");
  session->BeginSession("", OpenMode::DoNotCare);
  EXPECT_EQ(session->GetCurrentCompanyFileName(), "/firm/company.twq");
  session->EndSession();
  session->CloseConnection();
  const std::vector<std::string> expected = {
      R"({"kind":"session","operation":"CreateTransport","arguments":[]})",
      R"({"kind":"session","operation":"GetVersion","arguments":[],"result":[5,0,2,7]})",
      R"({"kind":"session","operation":"OpenConnection","arguments":["","Link"]})",
      R"({"kind":"session","operation":"BeginSession","arguments":["",2]})",
      R"({"kind":"session","operation":"GetCurrentCompanyFileName","arguments":[],"result":"/firm/company.twq"})",
      R"({"kind":"session","operation":"EndSession","arguments":[]})",
      R"({"kind":"session","operation":"CloseConnection","arguments":[]})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, A_failed_call_has_its_error_in_place_of_a_result_and_fails_all_the_same) {
  const auto session = platform_.quickbooks->CreateTransport();
  Lines();
  RaiseNext(kNoFile, "no file");
  try {
    (void)session->GetCurrentCompanyFileName();
    FAIL() << "the error must pass through";
  } catch (const PlatformError& failure) {
    EXPECT_EQ(failure.number(), kNoFile);
    EXPECT_EQ(failure.description(), "no file");
  }
  EXPECT_EQ(Line(), R"({"kind":"session","operation":"GetCurrentCompanyFileName","arguments":[],)"
                    R"("raised":{"number":"0x80040416","description":"no file"}})");
}

TEST_F(Transcript, A_session_object_that_cannot_be_made_is_written) {
  RaiseNext(0x800401F3, "not installed");
  EXPECT_THROW((void)platform_.quickbooks->CreateTransport(), PlatformError);
  EXPECT_EQ(Line(), R"({"kind":"session","operation":"CreateTransport","arguments":[],)"
                    R"("raised":{"number":"0x800401F3","description":"not installed"}})");
}

TEST_F(Transcript, A_document_is_a_request_and_a_response) {
  const auto session = platform_.quickbooks->CreateTransport();
  Lines();
  fakes_.quickbooks.answer =
      R"(<QBXML><QBXMLMsgsRs><CustomerAddRs statusCode="0"/><CustomerQueryRs statusCode="500"/></QBXMLMsgsRs></QBXML>)";
  const auto answer = session->ProcessDocument(
      "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq><CustomerAddRq/><CustomerQueryRq/>"
      "</QBXMLMsgsRq></QBXML>");
  EXPECT_EQ(answer, fakes_.quickbooks.answer);
  const std::vector<std::string> expected = {
      R"({"kind":"request","requests":["CustomerAddRq","CustomerQueryRq"],)"
      R"("xml":"<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq><CustomerAddRq/>)"
      R"(<CustomerQueryRq/></QBXMLMsgsRq></QBXML>"})",
      R"({"kind":"response","statuses":[0,500],"xml":"<QBXML><QBXMLMsgsRs><CustomerAddRs statusCode=\"0\"/>)"
      R"(<CustomerQueryRs statusCode=\"500\"/></QBXMLMsgsRs></QBXML>"})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, A_subscription_document_is_a_request_and_a_response_too) {
  const auto session = platform_.quickbooks->CreateTransport();
  Lines();
  fakes_.quickbooks.answer =
      "<QBXML><QBXMLSubscriptionMsgsRs><SubscriptionDelRs statusCode='3120'/></QBXMLSubscriptionMsgsRs></QBXML>";
  (void)session->ProcessSubscription(
      "<QBXML><QBXMLSubscriptionMsgsRq><SubscriptionDelRq/></QBXMLSubscriptionMsgsRq></QBXML>");
  const auto lines = Lines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_TRUE(lines[0].starts_with(R"({"kind":"request","requests":["SubscriptionDelRq"],"xml":"<QBXML>)"));
  EXPECT_TRUE(lines[1].starts_with(R"({"kind":"response","statuses":[3120],"xml":"<QBXML>)"));
}

TEST_F(Transcript, A_document_that_is_refused_has_its_request_and_the_error_as_response) {
  const auto session = platform_.quickbooks->CreateTransport();
  Lines();
  RaiseNext(error::kParse, "can't parse");
  EXPECT_THROW((void)session->ProcessDocument("no xml"), PlatformError);
  const std::vector<std::string> expected = {
      R"({"kind":"request","requests":[],"xml":"no xml"})",
      R"({"kind":"response","raised":{"number":"0x80040400","description":"can't parse"}})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, A_message_box_has_its_answer) {
  fakes_.desk.answer = BoxAnswer::No;
  EXPECT_EQ(platform_.desk->ShowMessageBox({.text = "Continue?\r\nReally?",
                                            .title = "Question",
                                            .icon = BoxIcon::Question,
                                            .buttons = BoxButtons::YesNo,
                                            .help = true}),
            BoxAnswer::No);
  EXPECT_EQ(Line(),
            R"({"kind":"box","text":"Continue?\r\nReally?","title":"Question","icon":"question","buttons":"yesno",)"
            R"("help":true,"answer":"no"})");
}

TEST_F(Transcript, A_default_title_is_an_empty_text) {
  platform_.desk->ShowMessageBox({.text = "Done", .title = ""});
  EXPECT_EQ(Line(),
            R"({"kind":"box","text":"Done","title":"","icon":"none","buttons":"ok","help":false,"answer":"ok"})");
}

struct BoxNames {
  BoxIcon icon;
  BoxButtons buttons;
  BoxAnswer answer;
  std::string_view json;
};
class EveryBox : public Transcript, public testing::WithParamInterface<BoxNames> {};
TEST_P(EveryBox, Is_written_with_the_names_of_its_icon_buttons_and_answer) {
  fakes_.desk.answer = GetParam().answer;
  platform_.desk->ShowMessageBox({.text = "", .title = "", .icon = GetParam().icon, .buttons = GetParam().buttons});
  EXPECT_NE(Line().find(GetParam().json), std::string::npos);
}
INSTANTIATE_TEST_SUITE_P(
    Names, EveryBox,
    testing::Values(BoxNames{BoxIcon::Information, BoxButtons::Ok, BoxAnswer::Ok,
                             R"("icon":"information","buttons":"ok","help":false,"answer":"ok")"},
                    BoxNames{BoxIcon::Warning, BoxButtons::YesNo, BoxAnswer::Yes,
                             R"("icon":"warning","buttons":"yesno","help":false,"answer":"yes")"},
                    BoxNames{BoxIcon::Error, BoxButtons::RetryCancel, BoxAnswer::Retry,
                             R"("icon":"error","buttons":"retrycancel","help":false,"answer":"retry")"},
                    BoxNames{BoxIcon::Error, BoxButtons::RetryCancel, BoxAnswer::Cancel,
                             R"("icon":"error","buttons":"retrycancel","help":false,"answer":"cancel")"}));

TEST_F(Transcript, A_question_that_the_desk_gives_up_is_written_without_an_answer) {
  fakes_.desk.givesUp = true;
  EXPECT_THROW(platform_.desk->ShowMessageBox({.text = "Well?", .title = ""}), DeskGaveUp);
  EXPECT_EQ(Line(), R"({"kind":"box","text":"Well?","title":"","icon":"none","buttons":"ok","help":false,)"
                    R"("raised":{"number":null,"description":"Well?"}})");
}

TEST_F(Transcript, The_progress_form_has_its_four_fields_and_keeps_the_last_to_its_end) {
  bool cancelled = false;
  platform_.desk->ShowMsgForm({.caption = "c", .action = "Sending Clients to QuickBooks..."},
                              [&] { cancelled = true; });
  MsgFormState state{.action = "Sending", .record = "Acme", .percent = 50, .position = ProgressPosition{1, 2}};
  platform_.desk->UpdateMsgForm(state);
  state.position->timeLeft = std::chrono::seconds(3);
  platform_.desk->UpdateMsgForm(state);
  platform_.desk->UnloadMsgForm();
  const std::vector<std::string> expected = {
      R"({"kind":"form","form":"msgForm","event":"show","lblItem":"Sending Clients to QuickBooks...","Text1":"",)"
      R"("pbconv":0,"txtProg":""})",
      R"({"kind":"form","form":"msgForm","event":"update","lblItem":"Sending","Text1":"Acme","pbconv":50,)"
      R"("txtProg":"1/2"})",
      R"({"kind":"form","form":"msgForm","event":"update","lblItem":"Sending","Text1":"Acme","pbconv":50,)"
      R"("txtProg":"1/2 --> 00:00:03"})",
      R"({"kind":"form","form":"msgForm","event":"unload","lblItem":"Sending","Text1":"Acme","pbconv":50,)"
      R"("txtProg":"1/2 --> 00:00:03"})"};
  EXPECT_EQ(Lines(), expected);
  fakes_.desk.onCancel();
  EXPECT_TRUE(cancelled);
}

TEST_F(Transcript, A_vendor_picked_and_one_not_picked_are_written) {
  fakes_.desk.vendor = "V1";
  EXPECT_EQ(platform_.desk->PickVendor("Which?", {"V1", "V2"}), "V1");
  fakes_.desk.vendor = std::nullopt;
  EXPECT_EQ(platform_.desk->PickVendor("Which?", {}), std::nullopt);
  const std::vector<std::string> expected = {
      R"({"kind":"form","form":"frmPickVendor","lblMsg":"Which?","choices":["V1","V2"],"answer":"V1"})",
      R"({"kind":"form","form":"frmPickVendor","lblMsg":"Which?","choices":[],"answer":null})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, The_file_dialog_has_title_folder_and_answer) {
  platform_.desk->OpenFileDialog({.title = "Open QuickBooks File", .folder = "/firm"});
  EXPECT_EQ(Line(), R"({"kind":"file","title":"Open QuickBooks File","folder":"/firm","answer":""})");
}

TEST_F(Transcript, The_pointer_is_written) {
  platform_.desk->SetPointer(Pointer::Wait);
  platform_.desk->SetPointer(Pointer::Default);
  const std::vector<std::string> expected = {R"({"kind":"cursor","shape":"wait"})",
                                             R"({"kind":"cursor","shape":"default"})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, Sleeps_copies_and_log_lines_are_written) {
  platform_.machine->Sleep(500);
  platform_.machine->CopyFile("a", "b");
  platform_.machine->AppendLine("/firm/log", "a line");
  const std::vector<std::string> expected = {R"({"kind":"sleep","milliseconds":500})",
                                             R"({"kind":"copy","from":"a","to":"b"})",
                                             R"({"kind":"log","line":"a line"})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, A_copy_that_fails_is_written) {
  RaiseNext(error::kPathNotFound, "Path not found");
  EXPECT_THROW(platform_.machine->CopyFile("a", "b"), PlatformError);
  EXPECT_EQ(Line(),
            R"({"kind":"copy","from":"a","to":"b","raised":{"number":"0x0000004C","description":"Path not found"}})");
}

TEST_F(Transcript, Settings_are_written_with_what_was_read_or_written) {
  auto& machine = *platform_.machine;
  EXPECT_EQ(machine.GetPrivateProfileString("GENERAL", "Edition", "none", 255, "/firm/twqb.ini"), "none");
  EXPECT_TRUE(machine.WritePrivateProfileString("GENERAL", "Edition", "Pro", "/firm/twqb.ini"));
  fakes_.machine.writable = false;
  EXPECT_FALSE(machine.WritePrivateProfileString("GENERAL", "Edition", "Old", "/firm/twqb.ini"));
  const std::vector<std::string> expected = {
      R"({"kind":"setting","operation":"read","section":"GENERAL","key":"Edition","value":"none"})",
      R"({"kind":"setting","operation":"write","section":"GENERAL","key":"Edition","value":"Pro"})",
      R"({"kind":"setting","operation":"write","section":"GENERAL","key":"Edition","value":"Old","result":false})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, A_registry_value_is_written_and_a_missing_one_is_null) {
  EXPECT_EQ(platform_.machine->ReadRegistry("Software\\TW80", "Database"), std::nullopt);
  fakes_.machine.registry = "1";
  EXPECT_EQ(platform_.machine->ReadRegistry("Software\\TW80", "Database"), "1");
  const std::vector<std::string> expected = {
      R"({"kind":"registry","key":"Software\\TW80","name":"Database","value":null})",
      R"({"kind":"registry","key":"Software\\TW80","name":"Database","value":"1"})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, The_mode_and_the_text_of_the_call_back_are_written) {
  const auto callback = platform_.callback->CreateCallback();
  callback->SetMode(3);
  callback->SetText("Acme");
  const std::vector<std::string> expected = {R"({"kind":"callback","mode":3})", R"({"kind":"callback","text":"Acme"})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, A_call_back_class_that_is_not_there_is_written) {
  RaiseNext(0x800401F3, "no class");
  EXPECT_THROW((void)platform_.callback->CreateCallback(), PlatformError);
  EXPECT_EQ(Line(), R"({"kind":"callback","raised":{"number":"0x800401F3","description":"no class"}})");
}

TEST_F(Transcript, Clock_GUIDs_random_numbers_pump_and_beep_leave_no_event) {
  (void)platform_.machine->Now();
  (void)platform_.machine->GetTimeZoneInformation();
  (void)platform_.machine->CreateGuid();
  (void)platform_.machine->Random();
  platform_.desk->PumpMessages();
  platform_.desk->Beep();
  EXPECT_EQ(platform_.callback->CreateCallback()->Mode(), 7);
  EXPECT_TRUE(Lines().empty());
}

TEST_F(Transcript, A_seam_that_is_not_there_stays_away) {
  const TranscriptPlatform decorated({.desk = &fakes_.desk}, writer_);
  EXPECT_EQ(decorated.Decorated().database, nullptr);
  EXPECT_EQ(decorated.Decorated().callback, nullptr);
  EXPECT_NE(decorated.Decorated().desk, nullptr);
}

TEST_F(Transcript, Bytes_that_are_no_UTF_8_are_replaced) {
  platform_.machine->AppendLine("log", "caf\xE9 \xC3\xA9");
  EXPECT_EQ(Line(), "{\"kind\":\"log\",\"line\":\"caf\xEF\xBF\xBD \xC3\xA9\"}");
}

TEST_F(Transcript, Control_characters_are_escaped) {
  platform_.machine->AppendLine("log", "a\x1b\x7f\xC2\x9B");
  EXPECT_EQ(Line(), R"({"kind":"log","line":"a\u001b\u007f\u009b"})");
}

TEST(TranscriptFile, Holds_each_line_as_soon_as_it_is_written) {
  const auto path = std::filesystem::temp_directory_path() / "twqb-transcript-test.jsonl";
  std::ofstream out(path);
  TranscriptWriter writer(out);
  writer.Write("log", {{"line", "first"}});
  std::ifstream in(path);
  std::string line;
  ASSERT_TRUE(std::getline(in, line));
  EXPECT_EQ(line, R"({"seq":1,"kind":"log","line":"first"})");
  EXPECT_TRUE(line.starts_with(TranscriptWriter::kBeginning)) << "how a file of another time is known as one";
  EXPECT_TRUE(writer.Good());
  std::filesystem::remove(path);
}

}  // namespace
}  // namespace twqb
