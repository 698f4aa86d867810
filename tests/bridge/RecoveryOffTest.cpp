// Sends that don't look for links that got lost, because they must not or because QuickBooks can't tell, and who is who
// where they do.

#include <regex>

#include "tests/bridge/LostLinksHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

// What a send of clients, entries and payments puts on the wire, with something to add in each.
Texts DocumentsOf(const ProcessStart& start, const std::function<void(Process&)>& prepare = {}) {
  LostLinksFirm firm;
  Process process(firm.Folder(), start);
  LostLinksFirm::AddClient(process, "NEW", "New Company");
  LostLinksFirm::AddClient(process, "LATER", "Later Company");
  LostLinksFirm::AddEntry(process, "{E1}");
  LostLinksFirm::AddLinkedInvoice(process, "I-1");
  LostLinksFirm::AddPayment(process, "P", false);
  LostLinksFirm::AddPart(process, "P", "I-1");
  if (prepare) prepare(process);
  for (const auto table : {enClients, enTimeEntries, enPayments}) EXPECT_TRUE(process.Send(table));
  EXPECT_NE(process.ColumnOf("LATER", "QBLinkID"), "NULL");
  EXPECT_NE(process.Scalar("SELECT QBLinkID FROM TimeEntry"), "NULL");
  EXPECT_NE(process.Scalar("SELECT QBLinkID FROM Payment"), "NULL");
  return process.wire.documents;
}

// With requests as they are numbered without identifiers; the sets that ask or drop left out.
Texts WithoutRecovery(const Texts& documents) {
  static const std::regex kIdentifier(R"re( (new|old)MessageSetID="[^"]*")re");
  static const std::regex kName(R"re(requestID="[^"]*:[^"]*")re");
  Texts left;
  for (const auto& document : documents) {
    if (document.find("requestID=") == std::string::npos) continue;
    left.push_back(std::regex_replace(std::regex_replace(document, kIdentifier, ""), kName, "requestID=\"1\""));
  }
  return left;
}

TEST(RecoveryOff, By_the_host_or_by_the_setting_documents_are_the_same_and_those_without_the_search) {
  const auto on = DocumentsOf({});
  const auto byHost = DocumentsOf({.findsLostLinks = false});
  const auto bySetting =
      DocumentsOf({}, [](Process& process) { process.Setting("GENERAL", "FindLostLinks", "False"); });
  EXPECT_EQ(byHost, bySetting);
  EXPECT_EQ(byHost, WithoutRecovery(on));
  EXPECT_NE(byHost, on);
  for (const auto& document : byHost) {
    EXPECT_EQ(document.find("MessageSetID"), std::string::npos) << document;
  }
}

TEST(RecoveryOff, A_host_that_leaves_lost_links_alone_sends_without_identifiers) {
  for (const auto links : {LostLinks::Leave, LostLinks::FindAgain}) {
    LostLinksFirm firm;
    Process process(firm.Folder());
    LostLinksFirm::AddClient(process, "NEW", "New Company");
    process.bridge.reset();
    Compose(process.Spied(), {}, nullptr, links);
    {
      Bridge bridge(process);
      EXPECT_TRUE(bridge.SendDataToQB(enClients));
    }
    const auto& documents = process.traffic.documents;
    const bool hasAny = std::ranges::any_of(
        documents, [](const auto& document) { return document.find("MessageSetID") != std::string::npos; });
    EXPECT_EQ(hasAny, links == LostLinks::FindAgain);
    EXPECT_NE(process.ColumnOf("NEW", "QBLinkID"), "NULL");
  }
}

TEST(RecoveryOff, A_payment_that_broke_off_between_two_invoices_leaves_nothing_to_ask_for) {
  LostLinksFirm firm;
  Process process(firm.Folder(), {.findsLostLinks = false});
  for (const auto* invoice : {"I-1", "I-2"}) LostLinksFirm::AddLinkedInvoice(process, invoice);
  LostLinksFirm::AddPayment(process, "P", false);
  for (const auto* invoice : {"I-1", "I-2"}) LostLinksFirm::AddPart(process, "P", invoice);
  process.wire.breaks = {.at = "<ReceivePaymentAddRq", .when = WireBreak::When::NeverGoes, .nth = 2};
  static_cast<void>(process.Send(enPayments));
  EXPECT_TRUE(process.Send(enPayments));
  EXPECT_FALSE(process.UsesIdentifiers());
  EXPECT_EQ(LostLinksFirm::AllOf(process, "ReceivePayment", "TxnID").size(), 1U);
}

TEST(RecoveryOff, What_is_kept_while_it_is_off_is_found_once_it_is_on_again) {
  LostLinksFirm firm;
  {
    Process first(firm.Folder());
    LostLinksFirm::AddClient(first, "NEW", "New Company");
    first.wire.breaks = {.at = "<CustomerAddRq", .alsoFailing = kForGood};
    static_cast<void>(first.Send(enClients));
  }
  {
    Process off(firm.Folder(), {.findsLostLinks = false, .now = "2008-03-05T11:30:00"});
    LostLinksFirm::AddEntry(off, "{E1}");
    EXPECT_TRUE(off.Send(enTimeEntries));
  }
  Process on(firm.Folder(), {.now = "2008-03-05T12:00:00"});
  EXPECT_TRUE(on.Send(enClients));
  EXPECT_EQ(on.told.found.size(), 1U);
  EXPECT_EQ(on.ColumnOf("NEW", "QBLinkID"), on.ListIdOf("New Company (NEW)"));
}

TEST(RecoveryOn, A_get_asks_what_was_left_and_no_request_of_its_own_carries_an_identifier) {
  LostLinksFirm firm;
  Process process(firm.Folder());
  EXPECT_TRUE(process.bridge->GetDataFromQB(enClients));
  EXPECT_TRUE(process.UsesIdentifiers());
  for (const auto& document : process.wire.documents) {
    if (document.find("MessageSetID") == std::string::npos) continue;
    EXPECT_EQ(document.find("requestID"), std::string::npos) << document;
  }
}

// --- A QuickBooks that does not know them ----------------------------------------------------------------------------

TEST(RecoveryUnknown, Of_a_QuickBooks_that_does_not_know_identifiers_the_log_tells_once_and_rows_go_as_ever) {
  LostLinksFirm firm;
  Process process(firm.Folder());
  LostLinksFirm::AddClient(process, "NEW", "New Company");
  process.wire.answers = [](const std::string& document, const SendOn& /*sendOn*/) -> std::optional<std::string> {
    if (document.find("MessageSetID") != std::string::npos) throw PlatformError(error::kParse);
    return std::nullopt;
  };
  EXPECT_TRUE(process.Send(enClients));
  LostLinksFirm::AddClient(process, "LATER", "Later Company");
  EXPECT_TRUE(process.Send(enClients));
  EXPECT_NE(process.ColumnOf("NEW", "QBLinkID"), "NULL");
  EXPECT_NE(process.ColumnOf("LATER", "QBLinkID"), "NULL");
  EXPECT_EQ(process.DocumentsWith("MessageSetID").size(), 1U);
  EXPECT_EQ(LinesWith(process.Log(), "QuickBooks keeps no outcomes of message sets").size(), 1U);
  EXPECT_TRUE(process.BoxTexts().empty());
  EXPECT_TRUE(process.told.open.empty());
}

TEST(RecoveryUnknown, Where_QuickBooks_can_not_be_asked_nothing_goes_and_the_user_is_told) {
  LostLinksFirm firm;
  Process process(firm.Folder());
  LostLinksFirm::AddClient(process, "NEW", "New Company");
  process.wire.breaks = {.at = "newMessageSetID", .when = WireBreak::When::NeverGoes};
  EXPECT_FALSE(process.Send(enClients));
  EXPECT_EQ(process.ColumnOf("NEW", "QBLinkID"), "NULL");
  EXPECT_FALSE(process.BoxTexts().empty());
  EXPECT_TRUE(process.Send(enClients)) << "and the next send asks again";
  EXPECT_NE(process.ColumnOf("NEW", "QBLinkID"), "NULL");
}

// --- Identifiers of a send -------------------------------------------------------------------------------------------

// The identifiers that a set brings in, in order.
Texts NewIds(const Texts& documents) {
  static const std::regex kNew(R"re(newMessageSetID="([^"]*)")re");
  Texts ids;
  for (const auto& document : documents) {
    std::smatch found;
    if (document.find("requestID=") != std::string::npos && std::regex_search(document, found, kNew)) {
      ids.push_back(found[1]);
    }
  }
  return ids;
}

TEST(RecoveryOfASend, Sets_that_add_a_row_alternate_between_two_identifiers_and_all_others_have_none) {
  const auto ids = NewIds(DocumentsOf({}));
  ASSERT_EQ(ids.size(), 4U);
  EXPECT_NE(ids[0], ids[1]);
  EXPECT_EQ(ids[2], ids[0]);
  EXPECT_EQ(ids[3], ids[1]);
  // What rows refer to and QuickBooks lacks, such as methods of payment, is no row.
  constexpr const char* kRows[] = {"<CustomerAddRq", "<TimeTrackingAddRq", "<ReceivePaymentAddRq"};
  for (const auto& document : DocumentsOf({})) {
    if (document.find("requestID=") == std::string::npos) continue;
    const bool adds =
        std::ranges::any_of(kRows, [&](const auto* request) { return document.find(request) != std::string::npos; });
    EXPECT_EQ(document.find("MessageSetID") != std::string::npos, adds) << document;
    EXPECT_EQ(document.find("requestID=\"1\"") != std::string::npos, !adds) << document;
  }
}

TEST(RecoveryOfASend, Every_addition_names_its_table_and_its_row) {
  const auto documents = DocumentsOf({});
  const auto nameIn = [&](std::string_view request) {
    Texts names;
    const std::regex name(fmt::format(R"re(<{} requestID="([^"]*)")re", request));
    for (const auto& document : documents) {
      std::smatch found;
      if (std::regex_search(document, found, name)) names.push_back(found[1]);
    }
    return names;
  };
  EXPECT_EQ(nameIn("CustomerAddRq"), (Texts{fmt::format("{}:NEW", static_cast<int>(enClients)),
                                            fmt::format("{}:LATER", static_cast<int>(enClients))}));
  EXPECT_EQ(nameIn("TimeTrackingAddRq"), Texts{fmt::format("{}:{{E1}}", static_cast<int>(enTimeEntries))});
  EXPECT_EQ(nameIn("ReceivePaymentAddRq"), Texts{fmt::format("{}:P to I-1", static_cast<int>(enPayments))});
}

}  // namespace
}  // namespace twqb
