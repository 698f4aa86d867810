#include "tests/firm/Return.h"

namespace twqb {

void Return::CompareInvoice(const Pair& pair) {
  const auto total = pair.Was("TransactionInvBillAmt");
  pair["ClientID"].Unless(true, Back("Client", pair.Was("ClientID")), "is the client's key there").IsBack();
  pair["ProjectID"].Unless(true, Back("Project", pair.Was("ProjectID")), "is the project's key there").IsBack();
  pair["TransactionInvNum"].Cut(11).IsBack();
  pair["InvoiceDate"].IsBack();
  pair["TransactionInvDateTo"].IsBack();
  pair["TransactionInvDateFrom"].Unless(true, pair.Was("InvoiceDate"), "is the invoice's day").IsBack();
  pair["TransactionDate"].Unless(true, created_[pair.Link()], "is when QuickBooks got it").IsBack();
  pair["TransactionInvBillAmt"].IsBack();
  pair["ServiceAmt"].Unless(true, total, "lines are not told apart").IsBack();
  for (const auto* column :
       {"ExpAmt", "ServiceTaxAmt", "ExpTaxAmt", "TransactionManInvMiscAmt", "TransactionInvDiscount"}) {
    pair[column].Unless(true, "0", "lines are not told apart").IsBack();
  }
  pair["MainServiceTaxAmt"].Unless(true, "", "lines are not told apart").IsBack();
  pair["TransactionManInv"].Unless(true, "-1", "comes as one by hand").IsBack();
  pair["TransactionInvSendBillFlag"].Unless(true, "B", "is never asked to be printed").IsBack();
  pair["TransactionMemo"].StaysHere("").IsBack();
  for (const auto* column : {"MainExpenseTaxAmt", "InvRetainerAmtApplied"}) {
    pair[column].Unless(true, "", "lines are not told apart").IsBack();
  }
  pair["TransactionID"].IsNewKey();
  // What is of payments alone, or of a time when nothing was paid yet.
  pair.AreBack({"PayID", "IsDraft", "TransactionPayAmtApplied", "TransactionPayLateFeeRecd"});
  pair.StayHere({"calcAmtOwedToDate", "TransactionManInvPaidToday"}, "0");
  pair["TransactionJointInv"].IsBack();
  // Its details come to what it comes to.
  const auto details = empty_.Scalar(
      "SELECT COALESCE(SUM(ManInvDetailTot), 0) FROM ManInvDetail WHERE TransactionID = (SELECT TransactionID FROM "
      "TransactionTable WHERE QBLinkID = '" +
      pair.Link() + "' AND PayID IS NULL)");
  EXPECT_NEAR(TextToNumber(details), TextToNumber(total), 0.001)
      << "Invoice.ManInvDetail " << pair.Was("TransactionInvNum");
}

// Each row of where a payment went is a payment of its own in QuickBooks; of a discount that comes with nothing paid
// a second one comes.
void Return::ComparePart(const Fields& payment, const Fields& row) {
  auto& inTwo = exceptions_["Payment: a discount comes as a payment of nothing beside that of the discount"];
  const auto link = row.at("QBLinkID").value_or("");
  const auto method = payment.at("PayMethod").value_or("");
  const bool isDiscount = method == "3" || method == "4" || method == "A";
  const auto payments = empty_.RowsOf("SELECT * FROM Payment WHERE QBLinkID = '" + link + "' ORDER BY PayAmt DESC");
  const auto rows = empty_.RowsOf("SELECT * FROM TransactionTable WHERE QBLinkID = '" + link +
                                  "' ORDER BY TransactionPayAmtApplied DESC");
  if (payments.size() != (isDiscount ? 2U : 1U) || rows.size() != payments.size()) {
    ADD_FAILURE() << "Payment " << payment.at("PayID").value() << " by " << method << " came as " << payments.size()
                  << " with " << rows.size();
    return;
  }
  const auto client = Back("Client", row.at("ClientID").value_or(""));
  const Pair whole("Payment", payment, payments.front(), exceptions_);
  whole["PayID"].IsNewKey();
  whole["ClientID"].Unless(true, client, "is the client's key there").IsBack();
  whole["PayAmt"]
      .Unless(true, row.at("TransactionPayAmtApplied").value_or(""), "each part is a payment of its own")
      .IsBack();
  whole["PayMethod"].Unless(isDiscount, "3", "is a credit").IsBack();
  whole["PayDate"].IsBack();
  whole["PayRef"].Cut(20).IsBack();
  whole["PayMemo"].NotBlank().IsBack();
  whole["PayRetainer"].IsBack();
  whole.StayHere({"PayEnteredBy"}, "TWQB");
  whole["PayLastModifiedOn"].Unless(true, ToText(Value(empty_.machine.Now())), "is when it came").IsBack();
  CompareStamp(whole);
  whole.ExpectThatAllWasAskedFor();

  const Pair part("Allocation", row, rows.front(), exceptions_);
  part["TransactionID"].IsNewKey();
  part["PayID"].Unless(true, payments.front().at("PayID").value_or(""), "is the payment's there").IsBack();
  part["ClientID"].Unless(true, client, "is the client's key there").IsBack();
  part["ProjectID"].Unless(true, Back("Project", part.Was("ProjectID")), "is the project's key there").IsBack();
  part["TransactionInvNum"].Cut(11).IsBack();
  part["TransactionPayAmtApplied"].IsBack();
  part["TransactionDate"].IsBack();
  part["InvoiceDate"].Unless(true, payment.at("PayDate").value_or(""), "is the payment's day").IsBack();
  part.StayHere({"TransactionPayLateFeeRecd"}, "0");
  part.AreBack({"TransactionJointInv", "TransactionManInv"});
  part.StayHere({"TransactionInvSendBillFlag"}, "B");
  // What is of invoices alone.
  part.AreBack({"TransactionInvDateFrom", "TransactionInvDateTo", "IsDraft", "TransactionInvBillAmt", "ServiceAmt",
                "ServiceTaxAmt", "ExpAmt", "ExpTaxAmt", "MainServiceTaxAmt", "MainExpenseTaxAmt",
                "TransactionManInvMiscAmt", "TransactionManInvPaidToday", "TransactionInvDiscount",
                "InvRetainerAmtApplied", "calcAmtOwedToDate", "TransactionMemo"});
  CompareStamp(part);
  part.ExpectThatAllWasAskedFor();

  if (!isDiscount) return;
  ++inTwo;
  EXPECT_EQ(payments.back().at("PayAmt"), "0");
  EXPECT_EQ(payments.back().at("PayMethod"), method == "A" ? "3" : method);
  EXPECT_EQ(rows.back().at("TransactionPayAmtApplied"), "0");
}

// A retainer is an invoice of nothing in QuickBooks, and comes as that: what is owed, and the money that was paid.
void Return::CompareRetainer(const Fields& payment, const Fields& row) {
  const Pair pair("Retainer", payment, payment, exceptions_);
  const auto number = pair.Was("PayRef");
  auto& stays = exceptions_["Retainer: of no reference it has no number, and stays in QuickBooks"];
  const auto link = pair.Link();
  const auto back = empty_.RowsOf("SELECT * FROM TransactionTable WHERE QBLinkID = '" + link + "'");
  EXPECT_EQ(empty_.Scalar("SELECT COUNT(*) FROM Payment WHERE QBLinkID = '" + link + "'"), "0");
  if (Trim(number).empty()) {
    ++stays;
    EXPECT_TRUE(back.empty());
    return;
  }
  auto& comes = exceptions_["Retainer: comes as an invoice of nothing, with the money in its details"];
  ASSERT_EQ(back.size(), 1U) << "Retainer " << number;
  ++comes;
  const auto& invoice = back.front();
  EXPECT_EQ(invoice.at("PayID"), std::nullopt);
  constexpr std::size_t kLongest = 11;
  const bool fits = CharacterCount(number) <= kLongest;
  auto& cut = exceptions_["Retainer: a reference that is too long gives up its blanks, and then its end"];
  if (!fits) ++cut;
  EXPECT_EQ(invoice.at("TransactionInvNum"), fits ? number : Left(ReplaceAll(number, " ", ""), kLongest));
  EXPECT_EQ(invoice.at("TransactionInvBillAmt"), "0");
  EXPECT_EQ(invoice.at("ClientID"), Back("Client", payment.at("ClientID").value_or("")));
  if (const auto project = row.at("ProjectID").value_or(""); project != "{CLIENT RETAINER}") {
    EXPECT_EQ(invoice.at("ProjectID"), Back("Project", project));
  }
  std::multiset<std::string> details;
  for (const auto& detail : empty_.RowsOf("SELECT ManInvDetailTot FROM ManInvDetail WHERE TransactionID = '" +
                                          invoice.at("TransactionID").value_or("") + "'")) {
    details.insert(detail.at("ManInvDetailTot").value_or(""));
  }
  EXPECT_EQ(details, (std::multiset<std::string>{pair.Was("PayAmt"), "-" + pair.Was("PayAmt")}));
}

void Return::CompareMoney() {
  house_.ForEachRecord("Invoice", "", [&](const pugi::xml_node& record) {
    constexpr std::size_t kWithoutZone = 19;
    created_[record.child_value("TxnID")] =
        ToText(Value(TextToDate(Left(record.child_value("TimeCreated"), kWithoutZone))));
  });
  Each("Invoice", "TransactionTable", "PayID IS NULL", [&](const Pair& pair) { CompareInvoice(pair); });
  std::map<std::string, Fields> payments;
  for (const auto& payment : house_.RowsOf("SELECT * FROM Payment")) payments[payment.at("PayID").value()] = payment;
  for (const auto& row : house_.RowsOf("SELECT * FROM TransactionTable WHERE PayID IS NOT NULL")) {
    const auto& payment = payments.at(row.at("PayID").value());
    payment.at("PayRetainer") == "0" ? ComparePart(payment, row) : CompareRetainer(payment, row);
  }
}

}  // namespace twqb
