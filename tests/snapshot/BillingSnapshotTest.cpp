// What a snapshot makes of a database that is not as the embedded one: its booleans, its bytes, its looser rules, and a
// table that it does not let be read.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "adapters/snapshot/BillingSnapshot.h"
#include "adapters/sqlite/Database.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "platform/Forwarding.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "tests/support/Process.h"

namespace twqb::snapshot {
namespace {

// What a server tells otherwise than the engine below it.
struct Server {
  std::string provider = "SQLOLEDB";
  std::set<std::string> booleans;  // columns
  std::set<std::string> bytes;
  std::set<std::string> closed;  // tables
};

class ServerRows : public ado::ForwardingRecordset {
 public:
  ServerRows(std::unique_ptr<ado::Recordset> inner, const Server& server)
      : ForwardingRecordset(std::move(inner)), server_(server) {}
  [[nodiscard]] Value Field(std::string_view name) const override {
    const std::string column(name);
    if (server_.bytes.contains(column)) throw PlatformError(error::kConversion);
    auto value = ForwardingRecordset::Field(name);
    return server_.booleans.contains(column) && !IsNull(value) ? Value(ToText(value) != "0") : value;
  }
  [[nodiscard]] Value FieldAt(int index) const override { return Field(FieldName(index)); }
  // As ADO has it.
  void MoveFirst() override {
    if (RecordCount() == 0) throw PlatformError(error::kAtEof);
    ForwardingRecordset::MoveFirst();
  }

 private:
  const Server& server_;
};

class ServerConnection : public ado::ForwardingConnection {
 public:
  ServerConnection(std::unique_ptr<ado::Connection> inner, const Server& server)
      : ForwardingConnection(std::move(inner)), server_(server) {}
  [[nodiscard]] std::string Provider() const override { return server_.provider; }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    if (server_.closed.contains(ado::TableOfSelect(statement))) {
      throw PlatformError(error::kCannotOpen, "The SELECT permission was denied.");
    }
    return std::make_unique<ServerRows>(ForwardingConnection::OpenRecordset(statement, cursor, lock), server_);
  }

 private:
  const Server& server_;
};

class BillingSnapshot : public testing::Test {
 protected:
  BillingSnapshot() { CreateSqliteDatabase(Path("server.db")); }

  [[nodiscard]] std::string Path(std::string_view name) const { return folder_.Path() + "/" + std::string(name); }
  [[nodiscard]] std::unique_ptr<ado::Connection> Open(std::string_view name) const {
    auto connection = SqliteProvider().CreateConnection();
    connection->SetConnectionString(fmt::format("Provider=SQLITE;Data Source=\"{}\"", Path(name)));
    connection->Open();
    return connection;
  }
  void OnServer(const std::string& statement) const { Open("server.db")->Execute(statement, nullptr); }
  void Read() const {
    ServerConnection source(Open("server.db"), server_);
    const std::vector<std::string> schema = {
        "CREATE TABLE Employee (EmployeeID VARCHAR(65) NOT NULL PRIMARY KEY, IsSub INTEGER NOT NULL DEFAULT 0)",
        "CREATE TABLE Note (NoteID INTEGER PRIMARY KEY)", "CREATE UNIQUE INDEX One ON Employee (IsSub)"};
    ReadBilling(source, Path("copy.db"), schema, [](std::string_view) {});
  }
  [[nodiscard]] std::string Copied(const std::string& expression) const {
    const auto copy = Open("copy.db");
    const auto rows = copy->Execute(fmt::format("SELECT {} FROM Employee", expression), nullptr);
    return ToText(rows->FieldAt(0));
  }

  Server server_;
  TemporaryFolder folder_;
};

TEST_F(BillingSnapshot, Has_a_server_s_booleans_as_it_compares_them) {
  OnServer("CREATE TABLE Employee (EmployeeID VARCHAR(65) NOT NULL PRIMARY KEY, IsSub INTEGER)");
  OnServer("INSERT INTO Employee VALUES ('LEE', 1), ('RAY', 0)");
  server_.booleans = {"IsSub"};
  Read();
  EXPECT_EQ(Copied("group_concat(EmployeeID || IsSub)"), "LEE1,RAY0");
}

TEST_F(BillingSnapshot, Has_a_Yes_of_the_Jet_family_as_minus_one) {
  OnServer("CREATE TABLE Employee (EmployeeID VARCHAR(65) NOT NULL PRIMARY KEY, IsSub INTEGER)");
  OnServer("INSERT INTO Employee VALUES ('LEE', -1), ('RAY', 0)");
  server_.booleans = {"IsSub"};
  for (const auto* provider : {"Microsoft.Jet.OLEDB.4.0", "Microsoft.ACE.OLEDB.12.0", "JETLITE"}) {
    SCOPED_TRACE(provider);
    server_.provider = provider;
    std::filesystem::remove(Path("copy.db"));
    Read();
    EXPECT_EQ(Copied("group_concat(EmployeeID || IsSub)"), "LEE-1,RAY0");
  }
}

TEST_F(BillingSnapshot, Does_without_the_bytes_in_a_column_that_no_transfer_knows) {
  OnServer("CREATE TABLE Employee (EmployeeID VARCHAR(65) NOT NULL PRIMARY KEY, IsSub INTEGER, Photo, Stamp CHAR(8))");
  OnServer("INSERT INTO Employee VALUES ('LEE', 0, x'00ff', x'0001'), ('RAY', 1, NULL, x'0002')");
  server_.bytes = {"Photo", "Stamp"};
  Read();
  EXPECT_EQ(Copied("group_concat(EmployeeID || (Photo IS NULL) || (Stamp IS NULL))"), "LEE11,RAY11");
}

TEST_F(BillingSnapshot, Has_all_rows_beside_a_column_that_holds_nothing_yet) {
  OnServer("CREATE TABLE Employee (EmployeeID VARCHAR(65) NOT NULL PRIMARY KEY, IsSub INTEGER, Height DOUBLE)");
  Read();
  EXPECT_EQ(Copied("count(*)"), "0");
  OnServer("INSERT INTO Employee VALUES ('LEE', 1, NULL), ('RAY', 0, NULL)");
  std::filesystem::remove(Path("copy.db"));
  Read();
  EXPECT_EQ(Copied("count(*)"), "2");
}

TEST_F(BillingSnapshot, Says_which_table_has_bytes_where_a_transfer_reads_a_value) {
  OnServer("CREATE TABLE Employee (EmployeeID VARCHAR(65) NOT NULL PRIMARY KEY, IsSub INTEGER)");
  OnServer("INSERT INTO Employee VALUES ('LEE', 0)");
  server_.bytes = {"IsSub"};
  EXPECT_THROW(Read(), SnapshotError);
}

TEST_F(BillingSnapshot, Takes_rows_that_break_our_rules_and_keep_the_database_s) {
  OnServer("CREATE TABLE Employee (EmployeeID VARCHAR(65), IsSub INTEGER)");
  OnServer("INSERT INTO Employee VALUES ('LEE', NULL), ('RAY', 0), ('ROY', 0)");
  Read();
  EXPECT_EQ(Copied("group_concat(EmployeeID || ifnull(IsSub, '-'))"), "LEE-,RAY0,ROY0");
  EXPECT_EQ(Copied("(SELECT sum(pk) FROM pragma_table_info('Employee'))"), "1");
  OnServer("INSERT INTO Employee VALUES ('LEE', 1)");
  std::filesystem::remove(Path("copy.db"));
  Read();
  EXPECT_EQ(Copied("group_concat(EmployeeID || ifnull(IsSub, '-'))"), "LEE-,RAY0,ROY0,LEE1");
}

TEST_F(BillingSnapshot, Names_a_table_that_is_not_to_be_read_and_why) {
  OnServer("CREATE TABLE Employee (EmployeeID VARCHAR(65) NOT NULL PRIMARY KEY, IsSub INTEGER)");
  OnServer("CREATE TABLE Note (NoteID INTEGER PRIMARY KEY)");
  server_.closed = {"Note"};
  try {
    Read();
    FAIL();
  } catch (const SnapshotError& told) {
    EXPECT_STREQ(told.what(), "BillingDb can't be read: its table Note. The SELECT permission was denied.");
  }
}

}  // namespace
}  // namespace twqb::snapshot
