// Previews of a QuickBooks that has records of kinds which company files don't keep: what they say of transfers that
// name such records, or find them named, is what these then do.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <set>
#include <sstream>
#include <string>

#include "cli/preview/PreviewReport.h"
#include "tests/firm/PreviewedFolder.h"

namespace twqb {
namespace {

int Count(const std::string& text, const std::string& part) {
  int count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

class ToldKindsPreview : public testing::Test {
 protected:
  // Hours have that item from now on, and invoices are to go once more.
  void BillHoursBy(const std::string& item) const {
    folder_.Sql("UPDATE Activity SET QBLinkID = '" + item + "'");
    folder_.Sql("UPDATE TransactionTable SET QBLinkID = NULL WHERE PayID IS NULL");
  }
  void ExpectSent(enTables table) {
    const auto before = folder_.moved;
    folder_.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = table});
    EXPECT_GT(folder_.moved, before);
  }

  // Invoices with that item, and what has sums that they are in, as QuickBooks tells them.
  [[nodiscard]] std::set<std::string> Discounted(const std::string& item) const {
    pugi::xml_document invoices;
    invoices.load_string(folder_
                             .Ask("<InvoiceQueryRq><IncludeLineItems>true</IncludeLineItems></InvoiceQueryRq>"
                                  "<ReceivePaymentQueryRq><IncludeLineItems>true</IncludeLineItems>"
                                  "</ReceivePaymentQueryRq><CustomerQueryRq/>")
                             .c_str());
    std::map<std::string, std::string> parents;
    for (const auto& found : invoices.select_nodes("//CustomerRet")) {
      parents[found.node().child_value("ListID")] = found.node().child("ParentRef").child_value("ListID");
    }
    std::set<std::string> all;
    const auto add = [&](pugi::xml_node record, const char* account) {
      all.insert(std::string("Account ") + record.child(account).child_value("ListID"));
      for (std::string id = record.child("CustomerRef").child_value("ListID"); !id.empty(); id = parents[id]) {
        all.insert("Customer " + id);
      }
    };
    for (const auto& found : invoices.select_nodes(fmt::format("//InvoiceRet[.//ItemRef/ListID='{}']", item).c_str())) {
      const std::string id = found.node().child_value("TxnID");
      all.insert("Invoice " + id);
      add(found.node(), "ARAccountRef");
      for (const auto& paid :
           invoices.select_nodes(fmt::format("//ReceivePaymentRet[AppliedToTxnRet/TxnID='{}']", id).c_str())) {
        all.insert(std::string("ReceivePayment ") + paid.node().child_value("TxnID"));
        add(paid.node(), "ARAccountRef");
        add(paid.node(), "DepositToAccountRef");
        for (const auto line : paid.node().children("AppliedToTxnRet")) {
          all.insert(std::string("Invoice ") + line.child_value("TxnID"));
        }
      }
    }
    return all;
  }

  FirmFolder folder_{{.content = cli::Content::Sample}, FirmFolder::Stand::Elsewhere};
};

TEST_F(ToldKindsPreview, Knows_a_discount_by_its_name_and_says_that_its_amounts_are_not_known) {
  folder_.Tell("ItemDiscount", "D0000-1", "TWInvDiscount");
  ExpectSent(enAll);
  const auto unknown = Discounted("D0000-1");
  EXPECT_FALSE(unknown.empty());
  for (const auto& record : folder_.unknown) EXPECT_TRUE(unknown.contains(record)) << record;
  for (const auto& record : unknown) EXPECT_FALSE(folder_.known.contains(record)) << record;
  // Others keep their figures.
  for (const auto* kind : {"Customer ", "ReceivePayment ", "Invoice "}) {
    EXPECT_TRUE(std::ranges::any_of(folder_.known, [&](const auto& record) { return record.starts_with(kind); }))
        << kind;
  }
}

TEST_F(ToldKindsPreview, Says_of_payments_of_a_discounted_invoice_that_they_hang_on_what_is_not_known) {
  folder_.Tell("ItemDiscount", "D0000-1", "TWInvDiscount");
  // More than anybody expects for them.
  folder_.Sql(
      "UPDATE TransactionTable SET TransactionPayAmtApplied = 999999 WHERE PayID IS NOT NULL AND EXISTS (SELECT 1 FROM "
      "TransactionTable i WHERE i.PayID IS NULL AND i.TransactionInvDiscount <> 0 AND i.TransactionInvNum = "
      "TransactionTable.TransactionInvNum AND i.ProjectID = TransactionTable.ProjectID)");
  folder_.ExpectPreviewThenTransfer({.direction = Direction::Send, .table = enAll});
  const auto& preview = folder_.last;
  ASSERT_TRUE(cli::HangsOnUnknown(preview));
  int hanging = 0;
  int others = 0;
  for (const auto& record : preview.records) {
    const bool isTooMuch = record.account.why == "QuickBooks does not expect so much for its invoice";
    EXPECT_EQ(record.hangsOnUnknown, isTooMuch) << record.account.key;
    if (record.hangsOnUnknown) {
      EXPECT_EQ(record.account.table.number, enPayments);
      ++hanging;
    } else if (record.account.table.number == enPayments && record.doing == cli::Doing::Add) {
      ++others;
    }
  }
  EXPECT_GT(hanging, 0);
  EXPECT_GT(others, 0);
  EXPECT_EQ(Count(cli::PreviewText(preview), "(hangs on amounts that are not known)"), hanging);
  std::istringstream lines(cli::PreviewJson(preview, "a verdict"));
  int told = 0;
  for (std::string line; std::getline(lines, line);) {
    const auto object = nlohmann::json::parse(line);
    if (object.contains("amounts")) ++told;
    if (object.at("preview") == "end") {
      EXPECT_EQ(object.value("amounts", ""), "notKnown");
    }
  }
  EXPECT_EQ(told, hanging + 1);
}

TEST_F(ToldKindsPreview, Knows_an_assembly_by_its_identifier_and_what_it_comes_to) {
  folder_.Tell("ItemInventoryAssembly", "D0001-1", "Marker", "<SalesPrice>12.50</SalesPrice>",
               "<SalesPrice>12.50</SalesPrice>");
  ExpectSent(enAll);
  BillHoursBy("D0001-1");
  ExpectSent(enInvoices);
  EXPECT_EQ(folder_.unknown, std::set<std::string>());
  EXPECT_NE(folder_.Ask("<InvoiceQueryRq><IncludeLineItems>true</IncludeLineItems></InvoiceQueryRq>")
                .find("<ItemRef><ListID>D0001-1</ListID><FullName>Marker</FullName></ItemRef>"),
            std::string::npos);
}

TEST_F(ToldKindsPreview, Reads_hours_of_other_names_as_they_are_told) {
  folder_.Tell("OtherName", "E0000-1", "Harbor Pilot");
  EXPECT_NE(folder_
                .Ask("<TimeTrackingAddRq><TimeTrackingAdd><EntityRef><FullName>Harbor Pilot</FullName></EntityRef>"
                     "<Duration>PT1H0M</Duration></TimeTrackingAdd></TimeTrackingAddRq>")
                .find("statusCode=\"0\""),
            std::string::npos);
  folder_.ExpectPreviewThenTransfer({.direction = Direction::Get, .table = enTimeEntries});
}

}  // namespace
}  // namespace twqb
