// All tables of the sample firm in one run each, sent and got and sent again: what QuickBooks is asked to add and to
// change, and how it answers, counted in the transcripts.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "Events.h"
#include "Firm.h"

namespace twqb::cli {
namespace {

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;

constexpr int kNameInUse = 3100;
constexpr int kPaymentItemInUse = 3180;
constexpr int kInvalidWageType = 3150;
constexpr const char* kPayrollItem = "PayrollItemWageAdd";

class AllTables : public Firm {
 protected:
  explicit AllTables(const std::string& country = "US") : Firm(country) { Transfer("send", 11); }

  // Runs all tables at that hour and gives what was shown.
  std::string Transfer(const std::string& verb, int hour) {
    const auto ended = Run(verb, "all", hour);
    EXPECT_EQ(ended.status, 0) << ended.err;
    // What is refused is names in use alone: of 6 accounts at every send, and of 6 items behind a get.
    EXPECT_THAT(ended.out,
                ContainsRegex(verb == "send" ? "\nsend all: done, but (6|12) records were refused: see the log\n$"
                                             : "\nget all: done\n$"));
    transcript_ = Transcript(verb, hour);
    return ended.err;
  }

  // The additions and changes of the last run by request and status code, payroll items and methods of payment aside.
  using Answers = std::map<std::pair<std::string, int>, int>;
  Answers Changes() const {
    auto changes = AllChanges();
    std::erase_if(changes, [](const auto& change) {
      return change.first.first == kPayrollItem || change.first.first == "PaymentMethodAdd";
    });
    return changes;
  }
  Answers PayrollItems() const {
    auto changes = AllChanges();
    std::erase_if(changes, [](const auto& change) { return change.first.first != kPayrollItem; });
    return changes;
  }
  Answers AllChanges() const {
    Answers changes;
    for (const auto& event : EventsOf(transcript_, "response")) {
      if (!event.contains("xml")) continue;  // a form that is refused has no answer
      pugi::xml_document document;
      EXPECT_TRUE(document.load_string(event.at("xml").c_str()));
      for (const auto& response : document.child("QBXML").child("QBXMLMsgsRs").children()) {
        const std::string name = response.name();
        if (!name.ends_with("AddRs") && !name.ends_with("ModRs")) continue;
        ++changes[{name.substr(0, name.size() - 2), response.attribute("statusCode").as_int(-1)}];
      }
    }
    return changes;
  }

  static auto Answered(const std::string& request, int status, int times) { return Pair(Pair(request, status), times); }

  // What the last run has sent, behind a get.
  void ExpectTheSecondSend() const {
    // The employee that is added came in as the manager of jobs; the invoice is one of nothing, for the retainer that
    // came in. The names in use are told below.
    EXPECT_THAT(
        Changes(),
        ElementsAre(Answered("AccountAdd", kNameInUse, 8), Answered("CustomerMod", 0, 201),
                    Answered("EmployeeAdd", 0, 1), Answered("EmployeeMod", 0, 32), Answered("InvoiceAdd", 0, 1),
                    Answered("ItemInventoryMod", 0, 4), Answered("ItemNonInventoryMod", 0, 5),
                    Answered("ItemOtherChargeAdd", kNameInUse, 2), Answered("ItemOtherChargeMod", 0, 42),
                    Answered("ItemOtherChargeMod", kNameInUse, 3), Answered("ItemPaymentAdd", kPaymentItemInUse, 2),
                    Answered("ItemServiceAdd", kNameInUse, 12), Answered("ItemServiceMod", 0, 67),
                    Answered("ItemServiceMod", kNameInUse, 3), Answered("VendorMod", 0, 28)));
  }

  // What a send behind all others tries: six accounts of the firm, and what invoices and retainers need, because there
  // is always an invoice that has not gone.
  void ExpectTheNamesInUse() const {
    EXPECT_THAT(
        Changes(),
        ElementsAre(Answered("AccountAdd", kNameInUse, 8), Answered("ItemOtherChargeAdd", kNameInUse, 2),
                    Answered("ItemPaymentAdd", kPaymentItemInUse, 2), Answered("ItemServiceAdd", kNameInUse, 12)));
  }

  std::string Count(const std::string& rows) const { return Scalar("SELECT COUNT(*) FROM " + rows); }

  std::string transcript_;  // of the last run
};

TEST_F(AllTables, The_first_send_adds_what_is_in_the_selections_and_finds_names_in_use) {
  EXPECT_THAT(
      Changes(),
      ElementsAre(Answered("AccountAdd", 0, 45), Answered("AccountAdd", kNameInUse, 7), Answered("BillAdd", 0, 5),
                  Answered("CustomerAdd", 0, 186), Answered("CustomerAdd", kNameInUse, 8),
                  Answered("EmployeeAdd", 0, 26), Answered("EmployeeAdd", kNameInUse, 2), Answered("InvoiceAdd", 0, 19),
                  Answered("ItemOtherChargeAdd", 0, 34), Answered("ItemOtherChargeAdd", kNameInUse, 7),
                  Answered("ItemPaymentAdd", 0, 1), Answered("ItemPaymentAdd", kPaymentItemInUse, 1),
                  Answered("ItemServiceAdd", 0, 55), Answered("ItemServiceAdd", kNameInUse, 4),
                  Answered("ReceivePaymentAdd", 0, 15), Answered("TimeTrackingAdd", 0, 287),
                  Answered("VendorAdd", 0, 14), Answered("VendorAdd", kNameInUse, 5)));
}

TEST_F(AllTables,
       A_send_behind_a_send_tries_the_accounts_whose_names_are_in_use_and_the_items_of_invoices_and_nothing_else) {
  EXPECT_THAT(Transfer("send", 12), IsEmpty());
  ExpectTheNamesInUse();
  EXPECT_EQ(Count("AccountList WHERE QBLinkID IS NULL AND AccountID IN ('1200','2000','4000','4100','6000','1030')"),
            "6");
}

TEST_F(AllTables, A_send_behind_a_get_sends_each_linked_row_but_accounts_once) {
  EXPECT_THAT(Transfer("get", 12), IsEmpty());
  EXPECT_THAT(Changes(), IsEmpty());
  EXPECT_THAT(Transfer("send", 13), IsEmpty());
  ExpectTheSecondSend();
  EXPECT_EQ(Count("Client"), "75");
  EXPECT_EQ(Count("Project"), "130") << "three of them customers for the hours on them, one for its retainer";
  EXPECT_THAT(Transfer("send", 14), IsEmpty());
  ExpectTheNamesInUse();
}

class AllTablesOfCountry : public AllTables, public testing::WithParamInterface<std::string> {
 protected:
  AllTablesOfCountry() : AllTables(GetParam()) {}
};

TEST_P(AllTablesOfCountry, Go_and_come_without_a_box_and_go_again_as_everywhere) {
  EXPECT_THAT(Transfer("get", 12), IsEmpty());
  EXPECT_THAT(Transfer("send", 13), IsEmpty());
  ExpectTheSecondSend();
  EXPECT_THAT(Transfer("send", 14), IsEmpty());
  ExpectTheNamesInUse();
}

TEST_P(AllTablesOfCountry, Each_send_of_hours_asks_for_the_four_payroll_items_of_which_a_Canadian_file_knows_three) {
  const auto fourth = GetParam() == "CA" ? kInvalidWageType : kNameInUse;
  EXPECT_THAT(PayrollItems(), ElementsAre(Answered(kPayrollItem, 0, 3), Answered(kPayrollItem, fourth, 1)));
  Transfer("send", 12);
  if (GetParam() == "CA") {
    EXPECT_THAT(PayrollItems(), ElementsAre(Answered(kPayrollItem, kNameInUse, 3), Answered(kPayrollItem, fourth, 1)));
  } else {
    EXPECT_THAT(PayrollItems(), ElementsAre(Answered(kPayrollItem, kNameInUse, 4)));
  }
}

INSTANTIATE_TEST_SUITE_P(AllTables, AllTablesOfCountry, testing::Values("CA", "UK", "AU"),
                         [](const auto& suite) { return suite.param; });

TEST_F(AllTables, A_change_that_would_give_back_a_name_in_use_is_logged) {
  Transfer("get", 12);
  Transfer("send", 13);
  const auto log = folder_.Read("TWQBLog20083.txt");
  for (const auto* name : {"STRUCT WIND:", "DESIGN:", "Design:1", "Soil analysis, as the code was once",
                           "Films and prints", "Mileage, as the code was once"}) {
    EXPECT_THAT(log, HasSubstr(std::string("Modifying Activity : '") + name + "' already exists in QB")) << name;
  }
  EXPECT_THAT(log, Not(HasSubstr("Error")));
}

TEST_F(AllTables, The_code_for_items_without_one_never_goes) {
  EXPECT_EQ(Count("Expense WHERE QBLinkID IS NULL"), "1");
  EXPECT_EQ(Count("Expense WHERE QBLinkID IS NULL AND ExpID = 'FROMQB:'"), "1");
  EXPECT_THAT(transcript_, Not(HasSubstr("<Name>FROMQB")));
}

TEST_F(AllTables, A_get_brings_the_money_that_was_entered_in_quickbooks) {
  const std::string linked = " WHERE QBLinkID IS NOT NULL";
  const std::string documents = "TransactionTable" + linked + " AND PayID IS NULL";
  const std::pair<std::string, int> rows[] = {
      {documents, 8},  // the pending one stays
      {documents + " AND TransactionInvNum LIKE 'CM%' AND TransactionInvBillAmt < 0", 3},
      {documents + " AND ExpTaxAmt = 5.25 AND TransactionInvBillAmt = 350.25", 1},
      // Of a group, on an invoice and on a credit memo.
      {"ManInvDetail WHERE ManInvDetailDesc = 'Survey of one lot, with bounds' AND ManInvDetailAmt = 2280", 2},
      {"Payment" + linked, 6},  // one of them a discount
      {"Payment" + linked + " AND PayMethod = '3' AND PayAmt = 40", 1},
      {"Payment" + linked + " AND PayRetainer = -1", 1},
      {"TransactionTable" + linked + " AND PayID IS NOT NULL", 6}};
  std::vector<int> before;
  for (const auto& [what, come] : rows) before.push_back(std::stoi(Count(what)));
  for (const int hour : {12, 13}) {
    Transfer("get", hour);
    for (std::size_t i = 0; i < before.size(); ++i) {
      EXPECT_EQ(std::stoi(Count(rows[i].first)) - before[i], rows[i].second) << rows[i].first;
    }
  }
}

TEST_F(AllTables, A_get_brings_the_costs_that_were_entered_in_quickbooks) {
  Transfer("get", 12);
  const std::string expenses = "ExpenseLog WHERE QBLinkID IS NOT NULL";
  EXPECT_EQ(Count(expenses + " AND ExpID = 'FROMQB:' AND ELChgAmt = 12 AND ELUnits = 0"), "1") << "on an account";
  EXPECT_EQ(Count(expenses + " AND ELDescription = 'Key deposit, laid out' AND ELChgAmt = 75"), "1") << "a whole check";
  EXPECT_EQ(Count(expenses + " AND ELDescription = 'Supper' AND ELChgAmt = 0 AND ELBillable = -1"), "1");
  EXPECT_EQ(Count(expenses + " AND VendorBillID IS NULL"), "5");
  EXPECT_EQ(Count("VendorBill b WHERE BillNumber = 'NSL-5521' AND 2 = (SELECT COUNT(*) FROM ExpenseLog e WHERE "
                  "e.VendorBillID = b.VendorBillID AND ExpID IN ('Laboratory:', 'Test Borings:'))"),
            "1");
  EXPECT_EQ(Count("VendorBill b JOIN TimeEntry t ON t.VendorBillID = b.VendorBillID WHERE b.VendorID = 'Gareth "
                  "Mullen' AND b.BillNumber LIKE '2008%' AND t.TEHours = 12.25 AND t.TECostRate = 48"),
            "1")
      << "without a number";
  EXPECT_EQ(Count("VendorBill WHERE BillNumber = 'FEB-08'"), "0") << "of no job";
  EXPECT_EQ(Count("Budget WHERE QBLinkID IS NOT NULL AND IsEstimate = -1"), "3");
  EXPECT_EQ(Count("BudgetActivity WHERE QBLinkID IS NOT NULL"), "4");
  EXPECT_EQ(Count("BudgetExpense WHERE QBLinkID IS NOT NULL AND BEAmt = 60 AND BEUnits = 8"), "1");
  EXPECT_EQ(Count("Project WHERE EstimateID = 'E-301'"), "1") << "the first of two";
  const auto rows = [this] {
    return Count("ExpenseLog") + " " + Count("VendorBill") + " " + Count("TimeEntry") + " " + Count("Budget") + " " +
           Count("BudgetActivity") + " " + Count("BudgetExpense");
  };
  const auto before = rows();
  Transfer("get", 13);
  EXPECT_EQ(rows(), before);
}

TEST_F(AllTables, A_get_brings_items_of_every_form_and_accounts_of_every_depth) {
  Transfer("get", 12);
  EXPECT_EQ(Count("Activity WHERE ActivityID = 'Survey:Field Crew' AND AC_BillRate = 165"), "1");
  EXPECT_EQ(Count("Activity WHERE ActivityID = 'Inspection:Dock' AND AC_CostRate = 140 AND QBAccountID2 <> ''"), "1");
  EXPECT_EQ(Count("Expense WHERE ExpID = 'Permits:Wetlands' AND ExpCost = 250 AND ExpMarkup = 10"), "1");
  EXPECT_EQ(Count("Expense WHERE ExpID = 'Lodging:Shared Room' AND ExpMarkup = 0"), "1") << "below its cost";
  EXPECT_EQ(Count("Expense WHERE ExpID = 'Iron Pin:Cap' AND IsProduct <> 0"), "1");
  EXPECT_EQ(Count("AccountList a, AccountList b, AccountList c WHERE a.AccountName = 'Unemployment' AND "
                  "a.ParentAccountID = b.AccountID AND b.ParentAccountID = c.AccountID AND c.AccountID = '60000'"),
            "1");
  EXPECT_EQ(Count("AccountList WHERE AccountName = 'Other Income' AND AccountID = QBLinkID"), "1") << "no number";
}

}  // namespace
}  // namespace twqb::cli
