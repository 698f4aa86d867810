// Previews of a QuickBooks that has records of kinds which company files don't keep: what they say of transfers that
// name such records, or find them named, is what these then do.

#include <gtest/gtest.h>

#include <string>

#include "tests/firm/PreviewedFolder.h"

namespace twqb {
namespace {

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

  FirmFolder folder_{{.content = cli::Content::Sample}, FirmFolder::Stand::Elsewhere};
};

TEST_F(ToldKindsPreview, Knows_a_discount_by_its_name_and_says_that_its_amounts_are_not_known) {
  folder_.Tell("ItemDiscount", "D0000-1", "TWInvDiscount");
  ExpectSent(enAll);
  EXPECT_GT(folder_.unknown, 0);
}

TEST_F(ToldKindsPreview, Knows_an_assembly_by_its_identifier_and_what_it_comes_to) {
  folder_.Tell("ItemInventoryAssembly", "D0001-1", "Marker", "<SalesPrice>12.50</SalesPrice>",
               "<SalesPrice>12.50</SalesPrice>");
  ExpectSent(enAll);
  BillHoursBy("D0001-1");
  ExpectSent(enInvoices);
  EXPECT_EQ(folder_.unknown, 0);
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
