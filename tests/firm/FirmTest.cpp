// What a made firm is: the same everywhere, of the size that was asked for, with amounts that add up and texts of all
// kinds.

#include <gtest/gtest.h>

#include <set>

#include "samples/firm/Firm.h"
#include "tests/firm/FirmHouse.h"

namespace twqb {
namespace {

using firm::FirmPlan;

struct Texts {
  std::string billing;
  std::string company;
  friend bool operator==(const Texts&, const Texts&) = default;
};
Texts TextsOf(const FirmPlan& plan) {
  Texts texts;
  firm::WriteBilling(plan, [&](const std::string& statement) { texts.billing += statement + ";\n"; });
  firm::WriteCompany(plan, [&](const std::string& document) { texts.company += document; });
  return texts;
}

// FNV-1a: the same on every machine, too.
std::uint64_t HashOf(std::string_view text) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return hash;
}

TEST(Firm, Of_the_same_plan_is_the_same_on_every_machine) {
  const FirmPlan plan = {.clients = 12, .seed = 7, .months = 3, .hours = 4};
  const auto texts = TextsOf(plan);
  EXPECT_EQ(texts, TextsOf(plan));
  // Whoever changes what a firm is writes the new numbers here. Anybody else has a compiler or a library that differs.
  EXPECT_EQ(HashOf(texts.billing), 7826682583576393468U);
  EXPECT_EQ(HashOf(texts.company), 11746772714061723407U);
}

TEST(Firm, Of_another_seed_is_another_one_on_both_sides) {
  const auto one = TextsOf({.clients = 3, .seed = 1, .months = 1, .hours = 2});
  const auto other = TextsOf({.clients = 3, .seed = 2, .months = 1, .hours = 2});
  EXPECT_NE(one.billing, other.billing);
  EXPECT_NE(one.company, other.company);
}

TEST(Firm, Whose_plan_makes_no_sense_is_not_made) {
  EXPECT_EQ(firm::FaultOf({.clients = 0}), "A firm has 1 to 10000 clients, not 0.");
  EXPECT_EQ(firm::FaultOf({.clients = 10'001}), "A firm has 1 to 10000 clients, not 10001.");
  EXPECT_EQ(firm::FaultOf({.months = 13}), "A firm is made for 1 to 12 months, not 13.");
  EXPECT_EQ(firm::FaultOf({.hours = 0}), "A project has 1 to 200 entries a month, not 0.");
  EXPECT_EQ(firm::FaultOf({.clients = 10'000}), "");
  EXPECT_EQ(TextsOf({.clients = 0}), Texts{});
}

TEST(Firm, Of_a_hundred_clients_is_a_year_of_some_thousand_invoices_and_twenty_thousand_hours) {
  FirmHouse house({.clients = 100});
  const auto rows = house.CountRows();
  EXPECT_EQ(rows.at("Client"), 100);
  EXPECT_NEAR(static_cast<double>(rows.at("TimeEntry")), 20'000, 6'000);
  EXPECT_NEAR(static_cast<double>(rows.at("ExpenseLog")), 5'000, 2'500);
  EXPECT_NEAR(std::stod(house.Scalar("SELECT COUNT(*) FROM TransactionTable WHERE PayID IS NULL")), 1'000, 400);
  EXPECT_NEAR(static_cast<double>(rows.at("Payment")), 1'000, 400);
  EXPECT_EQ(house.Scalar("SELECT MIN(TEDate) >= '2007-01-01' AND MAX(TEDate) < '2008-01-01' FROM TimeEntry"), "1");
  // A few clients have most of the work.
  EXPECT_GT(
      std::stod(house.Scalar("SELECT SUM(n) * 1.0 / (SELECT COUNT(*) FROM TimeEntry) FROM (SELECT COUNT(*) AS n FROM "
                             "TimeEntry JOIN Project "
                             "ON Project.ProjectID = TimeEntry.ProjectID GROUP BY ClientID ORDER BY n DESC LIMIT 20)")),
      0.5);
}

TEST(Firm, Of_any_size_is_taken_by_both_sides) {
  for (const int clients : {1, 10, 11, 100, 310}) {
    FirmHouse house({.clients = clients, .seed = 3, .months = 1, .hours = 1});
    EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM Client"), std::to_string(clients));
    EXPECT_GT(house.CountRecords().at("Customer"), clients / 4);
  }
}

class TinyFirms : public testing::TestWithParam<unsigned> {
 protected:
  FirmHouse house_{TinyFirm(GetParam())};
};

TEST_P(TinyFirms, Have_rows_in_every_table_that_transfers_know) {
  for (const auto& [table, count] : house_.CountRows()) {
    // In two months there need not be one of these.
    if (table == "VendorBill" || table == "ManInvDetail" || table == "Payment") continue;
    EXPECT_GT(count, 0) << table;
  }
}

TEST_P(TinyFirms, Bill_what_the_columns_of_an_invoice_add_up_to) {
  EXPECT_EQ(house_.Scalar("SELECT COUNT(*) FROM TransactionTable WHERE PayID IS NULL AND ABS(TransactionInvBillAmt - "
                          "(ServiceAmt + ServiceTaxAmt + ExpAmt + ExpTaxAmt + MainServiceTaxAmt + MainExpenseTaxAmt + "
                          "TransactionManInvMiscAmt - TransactionInvDiscount - InvRetainerAmtApplied)) > 0.001"),
            "0");
}

TEST_P(TinyFirms, Bill_by_hand_what_the_details_add_up_to) {
  EXPECT_EQ(house_.Scalar("SELECT COUNT(*) FROM TransactionTable AS i WHERE i.TransactionManInv <> 0 AND "
                          "ABS(i.ServiceAmt + i.ServiceTaxAmt - (SELECT SUM(ManInvDetailTot) FROM ManInvDetail AS d "
                          "WHERE d.TransactionID = i.TransactionID)) > 0.001"),
            "0");
}

TEST_P(TinyFirms, Pay_no_invoice_twice_and_apply_all_that_was_paid) {
  EXPECT_EQ(
      house_.Scalar(
          "SELECT COUNT(*) FROM TransactionTable AS i WHERE i.PayID IS NULL AND i.TransactionInvBillAmt >= 0 AND "
          "(SELECT "
          "SUM(p.TransactionPayAmtApplied) FROM TransactionTable AS p WHERE p.PayID IS NOT NULL AND "
          "p.TransactionInvNum = i.TransactionInvNum AND p.ProjectID = i.ProjectID) > i.TransactionInvBillAmt + 0.001"),
      "0");
  EXPECT_EQ(house_.Scalar("SELECT COUNT(*) FROM Payment WHERE ABS(PayAmt - (SELECT SUM(TransactionPayAmtApplied) FROM "
                          "TransactionTable AS t WHERE t.PayID = Payment.PayID)) > 0.001"),
            "0");
}

TEST_P(TinyFirms, Refer_to_rows_that_are_there) {
  for (const auto* statement :
       {"SELECT COUNT(*) FROM Project WHERE ClientID <> '' AND ClientID NOT IN (SELECT ClientID FROM Client)",
        "SELECT COUNT(*) FROM Project WHERE ParentProjectID <> '' AND ParentProjectID NOT IN (SELECT ProjectID FROM "
        "Project)",
        "SELECT COUNT(*) FROM TimeEntry WHERE ProjectID <> '' AND ProjectID NOT IN (SELECT ProjectID FROM Project)",
        "SELECT COUNT(*) FROM TimeEntry WHERE EmployeeID <> '' AND EmployeeID NOT IN (SELECT EmployeeID FROM Employee)",
        "SELECT COUNT(*) FROM TimeEntry WHERE ActivityID <> '' AND ActivityID NOT IN (SELECT ActivityID FROM Activity)",
        "SELECT COUNT(*) FROM TimeEntry WHERE TransactionID <> '' AND TransactionID NOT IN (SELECT TransactionID FROM "
        "TransactionTable)",
        "SELECT COUNT(*) FROM ExpenseLog WHERE ExpID <> '' AND ExpID NOT IN (SELECT ExpID FROM Expense)",
        "SELECT COUNT(*) FROM ExpenseLog WHERE VendorBillID <> '' AND VendorBillID NOT IN (SELECT VendorBillID FROM "
        "VendorBill)",
        "SELECT COUNT(*) FROM TransactionTable WHERE PayID <> '' AND PayID NOT IN (SELECT PayID FROM Payment)",
        "SELECT COUNT(*) FROM AccountList WHERE ParentAccountID <> '' AND ParentAccountID NOT IN (SELECT AccountID "
        "FROM AccountList)"}) {
    EXPECT_EQ(house_.Scalar(statement), "0") << statement;
  }
}

INSTANTIATE_TEST_SUITE_P(Firm, TinyFirms, testing::Range(1U, 6U));

TEST(Firm, Has_numbers_and_flags_of_all_shapes) {
  FirmHouse house({.clients = 100, .months = 2, .hours = 8});
  for (const std::string rows : {"Activity WHERE IsInActive = -1",
                                 "Activity WHERE IsInActive IS NULL",
                                 "Activity WHERE Tax1_Rate > 0 AND Tax2_Rate = 0",
                                 "Activity WHERE Tax3_Rate IS NULL",
                                 "Expense WHERE IsInActive = -1",
                                 "Expense WHERE Tax2_Rate > 0",
                                 "TimeEntry WHERE TETax1 > 0",
                                 "TimeEntry WHERE TETax2 > 0 AND TETax3 = 0",
                                 "TimeEntry WHERE TEHours < 0",
                                 "TimeEntry WHERE TEHours > 24",
                                 "ExpenseLog WHERE ELTax1 > 0 AND VendorBillID IS NULL",
                                 "ExpenseLog WHERE ELTax3 > 0 AND VendorBillID IS NOT NULL",
                                 "ExpenseLog WHERE Reimbursable = -1 AND VendorBillID IS NOT NULL",
                                 "TransactionTable WHERE MainServiceTaxAmt > 0",
                                 "TransactionTable WHERE MainExpenseTaxAmt > 0",
                                 "TransactionTable WHERE InvRetainerAmtApplied > 0",
                                 "TransactionTable WHERE TransactionPayLateFeeRecd > 0",
                                 "TransactionTable WHERE TransactionInvBillAmt < 0",
                                 "TransactionTable WHERE IsDraft <> 0",
                                 "ManInvDetail WHERE ManInvDetailTaxPerc > 0 AND ManInvDetailTaxAmt > 0"}) {
    EXPECT_NE(house.Scalar("SELECT COUNT(*) FROM " + rows), "0") << rows;
  }
}

TEST(Firm, Has_texts_of_all_shapes) {
  FirmHouse house({.clients = 20, .months = 2, .hours = 10});
  std::set<std::string> missing;
  const auto expect = [&](const std::string& shape, const std::string& condition) {
    for (const auto* column : {"Client.ClientCompany", "TimeEntry.TEDescription", "ExpenseLog.ELDescription"}) {
      const std::string name = column;
      const auto table = name.substr(0, name.find('.'));
      std::string where = condition;
      for (auto at = where.find("{}"); at != std::string::npos; at = where.find("{}")) where.replace(at, 2, name);
      // One of the columns is enough for shapes that are rare.
      if (house.Scalar("SELECT COUNT(*) FROM " + table + " WHERE " + where) != "0") return;
    }
    missing.insert(shape);
  };
  expect("NULL", "{} IS NULL");
  expect("empty", "{} = ''");
  expect("blank", "LENGTH({}) > 0 AND TRIM({}) = ''");
  expect("blanks at ends", "TRIM({}) <> {} AND TRIM({}) <> ''");
  expect("apostrophe", "{} LIKE '%''%'");
  expect("quotation mark", "{} LIKE '%\"%'");
  expect("other scripts", "LENGTH(CAST({} AS BLOB)) > LENGTH({}) AND {} LIKE '%你%'");
  expect("beyond the first plane", "{} LIKE '%🙂%'");
  expect("full", "LENGTH({}) = 255");
  EXPECT_EQ(missing, std::set<std::string>{});
}

}  // namespace
}  // namespace twqb
