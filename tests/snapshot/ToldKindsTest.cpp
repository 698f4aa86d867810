// Records of kinds that the embedded company file does not keep, in a snapshot: transactions take them where QuickBooks
// does, and what they come to is right, or said not to be known.

#include <gmock/gmock.h>

#include <filesystem>
#include <string_view>
#include <vector>

#include "tests/snapshot/ScriptedQuickBooks.h"

namespace twqb::snapshot {
namespace {

std::string Told(const std::string& kind, const std::string& id, const std::string& name,
                 const std::string& more = {}) {
  return fmt::format("<{0}Ret><ListID>{1}</ListID>{2}<Name>{3}</Name><IsActive>true</IsActive>{4}</{0}Ret>", kind, id,
                     kTimes, name, more);
}

class ToldKinds : public CompanySnapshot {
 protected:
  ToldKinds() {
    auto& records = session_.records;
    records["Account"] = Told("Account", "A-1", "Checking",
                              "<FullName>Checking</FullName><Sublevel>0</Sublevel><AccountType>Bank</AccountType>");
    records["SalesTaxCode"] = Told("SalesTaxCode", "7A-1", "Tax", "<IsTaxable>true</IsTaxable>") +
                              Told("SalesTaxCode", "7A-2", "Non", "<IsTaxable>false</IsTaxable>");
    records["ItemSalesTax"] = Told("ItemSalesTax", "5A-1", "County", "<TaxRate>4.5</TaxRate>") +
                              Told("ItemSalesTax", "5A-2", "City", "<TaxRate>1.25</TaxRate>");
    records["ItemSalesTaxGroup"] = Told("ItemSalesTaxGroup", "6E-1", "Both",
                                        "<ItemSalesTaxRef><ListID>5A-1</ListID><FullName>County</FullName>"
                                        "</ItemSalesTaxRef><ItemSalesTaxRef><ListID>5A-2</ListID><FullName>City"
                                        "</FullName></ItemSalesTaxRef>") +
                                   Told("ItemSalesTaxGroup", "6E-2", "Partly",
                                        "<ItemSalesTaxRef><ListID>5A-9</ListID><FullName>Gone</FullName>"
                                        "</ItemSalesTaxRef>");
    records["ItemDiscount"] = Told("ItemDiscount", "D-1", "Rebate", "<FullName>Rebate</FullName>");
    records["ItemSubtotal"] = Told("ItemSubtotal", "D-2", "Sum");
    records["ItemFixedAsset"] = Told("ItemFixedAsset", "D-3", "Theodolite", "<PurchaseCost>900.00</PurchaseCost>");
    records["ItemInventoryAssembly"] =
        Told("ItemInventoryAssembly", "D-4", "Marker",
             "<FullName>Marker</FullName><SalesDesc>A marker, set</SalesDesc><SalesPrice>12.50</SalesPrice>"
             "<SalesTaxCodeRef><ListID>7A-1</ListID><FullName>Tax</FullName></SalesTaxCodeRef>");
    records["OtherName"] = Told("OtherName", "E-1", "Harbor");
    records["Vendor"] = Told("Vendor", "BA-1", "Pier");
    records["Customer"] =
        Customer("C-1", "Abbott", "<ItemSalesTaxRef><ListID>6E-1</ListID><FullName>Both</FullName></ItemSalesTaxRef>") +
        Customer("C-2", "Bayview",
                 "<ItemSalesTaxRef><ListID>6E-2</ListID><FullName>Partly</FullName></ItemSalesTaxRef>");
    Read();
  }

  // What the copy answers to an invoice with that line.
  std::string Invoice(const std::string& line, const std::string& customer = "C-1") {
    return Ask(
        fmt::format("<InvoiceAddRq><InvoiceAdd><CustomerRef><ListID>{}</ListID></CustomerRef><InvoiceLineAdd>{}"
                    "</InvoiceLineAdd></InvoiceAdd></InvoiceAddRq>",
                    customer, line));
  }
  std::string Bill(const std::string& item) {
    return Ask(
        fmt::format("<BillAddRq><BillAdd><VendorRef><ListID>BA-1</ListID></VendorRef><ItemLineAdd><ItemRef>"
                    "<ListID>{}</ListID></ItemRef><Amount>900.00</Amount></ItemLineAdd></BillAdd></BillAddRq>",
                    item));
  }
  static std::string TxnIdIn(const std::string& answer) {
    const auto from = answer.find("<TxnID>") + std::string_view("<TxnID>").size();
    return answer.substr(from, answer.find('<', from) - from);
  }
  void ExpectTaken(const std::string& answer) { ExpectHas(answer, "statusCode=\"0\""); }
  void ExpectKnown(const std::string& answer) {
    ExpectTaken(answer);
    EXPECT_EQ(copy_->UnknownAmounts(), std::vector<std::string>());
  }
  void ExpectUnknown(const std::string& answer) {
    ExpectTaken(answer);
    EXPECT_EQ(copy_->UnknownAmounts(), std::vector{TxnIdIn(answer)});
  }
};

TEST_F(ToldKinds, Are_found_by_name_and_by_identifier_and_named_in_answers) {
  for (const auto* item : {"<FullName>THEODOLITE</FullName>", "<ListID>D-3</ListID>"}) {
    const auto answer =
        Invoice(fmt::format("<ItemRef>{}</ItemRef><Amount>100.00</Amount><SalesTaxCodeRef><ListID>7A-2"
                            "</ListID></SalesTaxCodeRef>",
                            item));
    ExpectKnown(answer);
    ExpectHas(answer, "<ItemRef><ListID>D-3</ListID><FullName>Theodolite</FullName></ItemRef>");
    ExpectHas(answer, "<Subtotal>100.00</Subtotal>");
  }
}

TEST_F(ToldKinds, Give_a_line_what_QuickBooks_has_of_an_assembly) {
  const auto answer = Invoice("<ItemRef><ListID>D-4</ListID></ItemRef><Quantity>8</Quantity>");
  ExpectKnown(answer);
  ExpectHas(answer, "<Desc>A marker, set</Desc>");
  ExpectHas(answer, "<Amount>100.00</Amount>");
  ExpectHas(answer, "<SalesTaxPercentage>5.75</SalesTaxPercentage><SalesTaxTotal>5.75</SalesTaxTotal>");
}

TEST_F(ToldKinds, Leave_what_a_fixed_asset_costs_or_is_taxed_as_unknown) {
  ExpectUnknown(
      Invoice("<ItemRef><ListID>D-3</ListID></ItemRef><SalesTaxCodeRef><ListID>7A-2</ListID>"
              "</SalesTaxCodeRef>"));
}

TEST_F(ToldKinds, Leave_the_tax_of_a_fixed_asset_without_a_code_unknown) {
  ExpectUnknown(Invoice("<ItemRef><ListID>D-3</ListID></ItemRef><Amount>100.00</Amount>"));
}

TEST_F(ToldKinds, Leave_the_amounts_of_discounts_unknown) {
  ExpectUnknown(
      Invoice("<ItemRef><FullName>Rebate</FullName></ItemRef><Desc>Rebate</Desc><Amount>0.00</Amount>"
              "<SalesTaxCodeRef><ListID>7A-2</ListID></SalesTaxCodeRef>"));
}

TEST_F(ToldKinds, Are_not_refused_for_a_sum_that_is_not_known) {
  const auto answer = Invoice(
      "<ItemRef><FullName>Rebate</FullName></ItemRef><Amount>-40.00</Amount><SalesTaxCodeRef><ListID>7A-2"
      "</ListID></SalesTaxCodeRef>");
  ExpectUnknown(answer);
  ExpectHas(answer, "<BalanceRemaining>0.00</BalanceRemaining>");
}

TEST_F(ToldKinds, Leave_the_amounts_of_subtotals_unknown_and_add_nothing_for_them) {
  const auto answer = Invoice("<ItemRef><ListID>D-2</ListID></ItemRef><Amount>50.00</Amount>");
  ExpectUnknown(answer);
  ExpectHas(answer, "<Subtotal>0.00</Subtotal>");
}

TEST_F(ToldKinds, Stand_in_bills_where_they_are_bought) {
  for (const auto* item : {"D-3", "D-4"}) ExpectKnown(Bill(item));
}

TEST_F(ToldKinds, Leave_the_amounts_of_bills_unknown_whose_lines_may_not_even_be_taken) {
  std::vector<std::string> unknown;
  for (const auto* item : {"D-1", "D-2"}) {
    const auto answer = Bill(item);
    ExpectTaken(answer);
    unknown.push_back(TxnIdIn(answer));
  }
  EXPECT_THAT(copy_->UnknownAmounts(), testing::UnorderedElementsAreArray(unknown));
}

TEST_F(ToldKinds, Give_a_line_of_Canada_the_code_of_the_sale_or_of_the_purchase) {
  copy_.reset();
  std::filesystem::remove(house_.Path("copy.twq"));
  session_.country = "CA";
  session_.records["TaxCode"] = Told("TaxCode", "7A-3", "S") + Told("TaxCode", "7A-4", "P");
  session_.records["ItemInventoryAssembly"] =
      Told("ItemInventoryAssembly", "D-4", "Marker",
           "<FullName>Marker</FullName><TaxCodeForSaleRef><ListID>7A-3</ListID><FullName>S</FullName>"
           "</TaxCodeForSaleRef><TaxCodeForPurchaseRef><ListID>7A-4</ListID><FullName>P</FullName>"
           "</TaxCodeForPurchaseRef>");
  Read();
  ExpectHas(Invoice("<ItemRef><ListID>D-4</ListID></ItemRef><Amount>100.00</Amount>"),
            "<TaxCodeRef><ListID>7A-3</ListID><FullName>S</FullName></TaxCodeRef>");
  ExpectHas(Bill("D-4"), "<TaxCodeRef><ListID>7A-4</ListID><FullName>P</FullName></TaxCodeRef>");
}

TEST_F(ToldKinds, Tax_by_the_rates_of_a_group_unless_it_matters_where_QuickBooks_rounds) {
  const std::string line =
      "<ItemRef><ListID>D-4</ListID></ItemRef><Amount>{}</Amount><SalesTaxCodeRef><ListID>7A-1</ListID>"
      "</SalesTaxCodeRef>";
  const auto known = Invoice(ReplaceAll(line, "{}", "200.00"));
  ExpectKnown(known);
  ExpectHas(known, "<ItemSalesTaxRef><ListID>6E-1</ListID><FullName>Both</FullName></ItemSalesTaxRef>");
  ExpectHas(known, "<SalesTaxTotal>11.50</SalesTaxTotal>");
  // 2 cents of the whole, 2 and 1 of the parts.
  ExpectUnknown(Invoice(ReplaceAll(line, "{}", "0.40")));
}

TEST_F(ToldKinds, Leave_the_tax_of_a_group_unknown_of_which_not_all_rates_are_known) {
  ExpectUnknown(Invoice("<ItemRef><ListID>D-4</ListID></ItemRef><Amount>200.00</Amount>", "C-2"));
}

TEST_F(ToldKinds, Are_customers_groups_of_sales_tax_and_no_items_of_a_line) {
  ExpectTaken(
      Ask("<CustomerAddRq><CustomerAdd><Name>Quay</Name><ItemSalesTaxRef><FullName>Both</FullName>"
          "</ItemSalesTaxRef></CustomerAdd></CustomerAddRq>"));
  ExpectHas(Invoice("<ItemRef><ListID>6E-1</ListID></ItemRef><Amount>1.00</Amount>"), "statusCode=\"31");
}

TEST_F(ToldKinds, Are_other_names_where_anybody_may_be_named_and_no_vendors) {
  for (const auto* named : {"<ListID>E-1</ListID>", "<FullName>Harbor</FullName>"}) {
    const auto time =
        Ask(fmt::format("<TimeTrackingAddRq><TimeTrackingAdd><EntityRef>{}</EntityRef><Duration>PT1H0M"
                        "</Duration></TimeTrackingAdd></TimeTrackingAddRq>",
                        named));
    ExpectTaken(time);
    ExpectHas(time, "<EntityRef><ListID>E-1</ListID><FullName>Harbor</FullName></EntityRef>");
    ExpectTaken(
        Ask(fmt::format("<CheckAddRq><CheckAdd><AccountRef><ListID>A-1</ListID></AccountRef><PayeeEntityRef>{}"
                        "</PayeeEntityRef><ExpenseLineAdd><AccountRef><ListID>A-1</ListID></AccountRef><Amount>5.00</"
                        "Amount></ExpenseLineAdd></CheckAdd></CheckAddRq>",
                        named)));
  }
  ExpectHas(Ask("<BillAddRq><BillAdd><VendorRef><ListID>E-1</ListID></VendorRef></BillAdd></BillAddRq>"),
            "statusCode=\"31");
}

TEST_F(ToldKinds, Are_answered_to_no_question_and_not_deleted) {
  ExpectHas(Ask("<ListDelRq><ListDelType>ItemDiscount</ListDelType><ListID>D-1</ListID></ListDelRq>"),
            "statusCode=\"3120\"");
  EXPECT_EQ(Ask("<ItemServiceQueryRq/>").find("Rebate"), std::string::npos);
}

}  // namespace
}  // namespace twqb::snapshot
