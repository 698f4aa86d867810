// Files of the first format, and the parts of the storage that transactions build on.

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "FileSql.h"
#include "ListTest.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/References.h"
#include "adapters/companyfile/SpecialAccounts.h"

namespace twqb::company {

namespace {

using messages::Country;
using testing::ElementsAre;
using testing::IsEmpty;

// A file as the first format had it, with a customer and a job of it.
constexpr const char* kFirstFormat = R"(
PRAGMA application_id = 1415005007;
PRAGMA user_version = 1;
CREATE TABLE setting (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
INSERT INTO setting VALUES ('country', 'CA'), ('host_version', '12'), ('accepts', 'CA,US'), ('created', '1204700000'),
  ('dialog', 'open');
CREATE TABLE counter (name TEXT PRIMARY KEY, next INTEGER NOT NULL) WITHOUT ROWID;
INSERT INTO counter VALUES ('list', 2147483651);
CREATE TABLE record (
  list_id TEXT PRIMARY KEY, kind TEXT NOT NULL, parent_id TEXT NOT NULL, scope TEXT NOT NULL, name TEXT NOT NULL,
  name_key TEXT NOT NULL, full_name TEXT NOT NULL, full_key TEXT NOT NULL, sublevel INTEGER NOT NULL,
  active INTEGER NOT NULL, created INTEGER NOT NULL, modified INTEGER NOT NULL, edit_sequence INTEGER NOT NULL,
  balance INTEGER NOT NULL, total_balance INTEGER NOT NULL, body TEXT NOT NULL, UNIQUE (scope, name_key)
);
INSERT INTO record VALUES ('80000001-1204700001', 'Customer', '', 'names', 'Acme', 'acme', 'Acme', 'acme', 0, 1,
  1204700001, 1204700001, 1204700001, 50000, 75000, '<Phone>1</Phone>');
INSERT INTO record VALUES ('80000002-1204700002', 'Customer', '80000001-1204700001', '80000001-1204700001', 'Roof',
  'roof', 'Acme:Roof', 'acme' || char(1) || 'roof', 1, 1, 1204700002, 1204700002, 1204700002, 25000, 25000, '');
CREATE INDEX record_order ON record (kind, full_key);
CREATE TABLE subscription (subscriber_id TEXT NOT NULL, kind TEXT NOT NULL, body TEXT NOT NULL,
                           PRIMARY KEY (subscriber_id, kind)) WITHOUT ROWID;
)";

class FirstFormat : public ListTest {
 protected:
  void SetUp() override {
    Run(kFirstFormat);
    tag_ = "CA3.0";
  }
  void Run(const std::string& sql) { RunSql(path_, sql); }
  std::string Scalar(const std::string& sql) {
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(path_.c_str(), &database), SQLITE_OK);
    std::string text;
    const auto keep = [](void* out, int, char** values, char**) {
      *static_cast<std::string*>(out) = values[0];
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), keep, &text, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
    sqlite3_close(database);
    return text;
  }
};

TEST_F(FirstFormat, A_file_of_it_keeps_what_it_holds_and_gets_the_new_lists) {
  file_.emplace(path_, machine_);
  EXPECT_EQ(Scalar("PRAGMA user_version"), "5");
  EXPECT_EQ(file_->GetConditions().dialog, DialogState::Open);
  EXPECT_EQ(file_->Summary().options.hostVersion, 12);
  const auto customers = QueryOf("Customer");
  EXPECT_THAT(customers.All("FullName"), ElementsAre("Acme", "Acme:Roof"));
  EXPECT_THAT(customers.All("TotalBalance"), ElementsAre("7.50", "2.50"));
  EXPECT_EQ(customers.Value("Phone"), "1");
  EXPECT_THAT(QueryOf("TaxCode").All("Name"), ElementsAre("E", "G", "H", "NON", "P", "S", "Z"));
  EXPECT_EQ(AddId("Vendor", "<Name>New</Name>"), "80000003-1204729200");
  EXPECT_EQ(AddTo("Vendor", "<Name>ACME</Name>").code, 3100);
}

TEST_F(FirstFormat, A_file_that_was_brought_on_has_the_tables_of_a_new_one) {
  { CompanyFile opened(path_, machine_); }
  const auto tables =
      "SELECT group_concat(name || ' ' || ncol) FROM (SELECT name, (SELECT count(*) FROM "
      "pragma_table_info(s.name)) AS ncol FROM sqlite_schema AS s WHERE type IN ('table', 'index') "
      "ORDER BY name)";
  const auto broughtOn = Scalar(tables);
  std::filesystem::remove(path_);
  CreateCompanyFile(path_, {.country = Country::CA}, machine_);
  EXPECT_EQ(broughtOn, Scalar(tables));
}

TEST_F(FirstFormat, Two_that_open_the_file_bring_it_on_once) {
  CompanyFile first(path_, machine_);
  CompanyFile second(path_, machine_);
  EXPECT_EQ(Scalar("SELECT count(*) FROM record WHERE kind = 'TaxCode'"), "7");
}

TEST_F(FirstFormat, A_file_that_can_not_be_brought_on_stays_as_it_was) {
  Run("CREATE TABLE uses (other)");
  EXPECT_EQ(NumberRaised([&] { CompanyFile opened(path_, machine_); }), 0x80040403U);
  EXPECT_EQ(Scalar("PRAGMA user_version"), "1");
  EXPECT_EQ(Scalar("SELECT count(*) FROM pragma_table_info('record')"), "16");
}

constexpr auto kPresets =
    "SELECT group_concat(list_id || kind || name || body) FROM (SELECT * FROM record ORDER BY list_id)";

// A file that was new in the third format, in which somebody has deleted a way of paying.
class ThirdFormat : public FirstFormat {
 protected:
  void SetUp() override {
    CreateCompanyFile(path_, {}, machine_);
    Run("DELETE FROM record WHERE name = 'Discover'");
    brandNew_ = Scalar(kPresets);
    Run(kWithoutListsOfFourthFormat);
    Run("DROP TABLE billed_line; PRAGMA user_version = 3");
  }
  std::string brandNew_;
};

TEST_F(ThirdFormat, A_file_of_it_gets_the_terms_types_and_templates_of_a_new_one_and_nothing_that_was_deleted) {
  ASSERT_NE(Scalar(kPresets), brandNew_);
  { CompanyFile opened(path_, machine_); }
  EXPECT_EQ(Scalar("PRAGMA user_version"), "5");
  EXPECT_EQ(Scalar(kPresets), brandNew_);
}

TEST_F(ThirdFormat, What_is_deleted_afterwards_does_not_come_back) {
  { CompanyFile opened(path_, machine_); }
  Run("DELETE FROM record WHERE name = 'Net 15'");
  { CompanyFile opened(path_, machine_); }
  EXPECT_EQ(Scalar("SELECT count(*) FROM record WHERE name = 'Net 15'"), "0");
}

// The storage as transactions see it.
class StoredBooks : public ListTest {
 protected:
  void SetUp() override {
    ListTest::SetUp();
    store_.emplace(path_);
  }
  template <typename Change>
  auto Write(const Change& change) {
    auto transaction = store_->Begin(SqliteTransaction::Purpose::Write);
    auto result = change();
    transaction.Commit();
    return result;
  }
  ListRecord Special(const SpecialAccount& account) {
    return Write([&] { return FindOrMakeSpecialAccount(*store_, account, 1204729300); });
  }

  std::optional<CompanyStore> store_;
};

TEST_F(StoredBooks, An_amount_counts_for_the_record_and_everything_above_it) {
  const auto acme = AddId("Customer", "<Name>Acme</Name><OpenBalance>1.00</OpenBalance>");
  const auto roof = AddJob("Roof", "Acme").Value("ListID");
  const auto sequence = ByName("Acme").Value("EditSequence");
  Write([&] {
    store_->AddToBalance(roof, Currency::FromTenThousandths(25000));
    store_->AddToBalance(acme, Currency::FromTenThousandths(-5000));
    return 0;
  });
  const auto all = Query("");
  EXPECT_THAT(all.All("Balance"), ElementsAre("0.50", "2.50"));
  EXPECT_THAT(all.All("TotalBalance"), ElementsAre("3.00", "2.50"));
  EXPECT_EQ(all.Value("EditSequence"), sequence);
}

TEST_F(StoredBooks, What_a_transaction_uses_is_not_deleted) {
  const auto acme = AddId("Customer", "<Name>Acme</Name>");
  const auto set = [&](const std::vector<std::string>& targets) {
    return Write([&] {
      store_->SetUses("1A-1204729200", targets);
      return store_->IsUsed(acme);
    });
  };
  EXPECT_TRUE(set({acme, acme}));
  EXPECT_EQ(Delete("Customer", acme).code, 3160);
  EXPECT_FALSE(set({}));
  EXPECT_EQ(Delete("Customer", acme).code, 0);
}

TEST_F(StoredBooks, Identifiers_of_transactions_count_from_one) {
  EXPECT_EQ(Write([&] { return store_->NewTxnId(1204729200); }), "1-1204729200");
  EXPECT_EQ(Write([&] { return store_->NewTxnId(1204729200); }), "2-1204729200");
  EXPECT_EQ(Write([&] { return store_->NewListId(1204729200); }), "80000001-1204729200");
}

TEST_F(StoredBooks, A_special_account_is_made_once) {
  const auto made = Special(kUndepositedFunds);
  const auto answer = QueryOf("Account");
  EXPECT_EQ(answer.Value("ListID"), made.listId);
  EXPECT_EQ(answer.Value("Name"), "Undeposited Funds");
  EXPECT_EQ(answer.Value("AccountType"), "OtherCurrentAsset");
  EXPECT_EQ(answer.Value("SpecialAccountType"), "UndepositedFunds");
  EXPECT_EQ(answer.Value("TimeCreated"), "2008-03-05T10:01:40-05:00");
  EXPECT_EQ(Special(kUndepositedFunds).listId, made.listId);
  ASSERT_EQ(Delete("Account", made.listId).code, 0);
  EXPECT_NE(Special(kUndepositedFunds).listId, made.listId) << "and again when it was deleted";
}

TEST_F(StoredBooks, An_account_that_somebody_made_stands_in_for_a_special_one) {
  const auto debtors = AddAccount("Debtors", "AccountsReceivable");
  AddAccount("Later", "AccountsReceivable");
  EXPECT_EQ(Special(kAccountsReceivable).listId, debtors);
  AddAccount("Accounts Receivable", "AccountsReceivable");
  EXPECT_EQ(Special(kAccountsReceivable).listId, debtors) << "as long as it is there";
  const auto funds = AddAccount("undeposited funds", "OtherCurrentAsset");
  EXPECT_EQ(Special(kUndepositedFunds).listId, funds);
}

TEST_F(StoredBooks, A_special_account_whose_name_is_taken_gets_a_number) {
  AddAccount("Undeposited Funds", "Bank");
  AddAccount("Undeposited Funds 2", "Bank");
  EXPECT_EQ(Special(kUndepositedFunds).name, "Undeposited Funds 3");
}

TEST_F(StoredBooks, A_name_is_looked_up_once_for_an_answer) {
  const auto acme = AddId("Customer", "<Name>Acme</Name>");
  NameCache names(*store_);
  EXPECT_EQ(names.FullNameOf(acme), "Acme");
  ModifyIn("Customer", acme, "<Name>Other</Name>");
  EXPECT_EQ(names.FullNameOf(acme), "Acme");
  EXPECT_EQ(NameCache(*store_).FullNameOf(acme), "Other");
  EXPECT_THAT(names.FullNameOf("80009999-1"), IsEmpty());
}

}  // namespace

}  // namespace twqb::company
