// What the sends read of their rows, against what the selections name: a column that a mapping or a hook reads and the
// selection lacks is found here for every table there is, however its error is taken.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "bridge/Tables.h"
#include "platform/Forwarding.h"
#include "services/Database.h"
#include "tests/bridge/BridgeHouse.h"
#include "tests/support/BillingSchema.h"
#include "tests/support/Decorating.h"

namespace twqb {
namespace {

using Columns = std::set<std::string>;

// Notes the columns that are asked for and not there.
class ColumnSpy : public ado::ForwardingRecordset {
 public:
  ColumnSpy(std::unique_ptr<ado::Recordset> inner, Columns& missing)
      : ForwardingRecordset(std::move(inner)), missing_(missing) {}
  [[nodiscard]] Value Field(std::string_view name) const override {
    try {
      return ForwardingRecordset::Field(name);
    } catch (const PlatformError& raised) {
      if (raised.number() == error::kNoSuchField) missing_.emplace(name);
      throw;
    }
  }

 private:
  Columns& missing_;
};

class ColumnSpyConnection : public ado::ForwardingConnection {
 public:
  ColumnSpyConnection(std::unique_ptr<ado::Connection> inner, Columns& missing)
      : ForwardingConnection(std::move(inner)), missing_(missing) {}
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    return std::make_unique<ColumnSpy>(ForwardingConnection::OpenRecordset(statement, cursor, lock), missing_);
  }

 private:
  Columns& missing_;
};

class SentColumns : public testing::Test {
 protected:
  SentColumns() {
    auto seams = house_.Seams();
    seams.database = &provider_;
    house_.Enter(seams);
    Bridge(house_).SetNoProgressBar(true);
    const auto connection = house_.database.CreateConnection();
    OpenConnection(*connection, nullptr, "");
    FillSampleFirm(*connection);
    // What codes, wages and time stand on.
    house_.Company(
        "<AccountAddRq><AccountAdd><Name>Other "
        "Income</Name><AccountType>Income</AccountType></AccountAdd></AccountAddRq>"
        "<AccountAddRq><AccountAdd><Name>Payroll Expenses</Name><AccountType>Expense</AccountType></AccountAdd>"
        "</AccountAddRq>"
        "<PayrollItemWageAddRq><PayrollItemWageAdd><Name>Hourly Wage</Name><WageType>HourlyRegular</WageType>"
        "<ExpenseAccountRef><FullName>Payroll Expenses</FullName></ExpenseAccountRef></PayrollItemWageAdd>"
        "</PayrollItemWageAddRq>");
  }
  // How many rows of a table have a twin.
  [[nodiscard]] std::string Linked(const Table& table) {
    return house_.Scalar(
        fmt::format("SELECT COUNT(*) FROM {} WHERE ({}) AND QBLinkID <> ''", table.rows.table, table.rows.condition));
  }

  BridgeHouse house_{{.answers = "default yes"}};
  Columns missing_;
  DecoratingProvider<ColumnSpyConnection, Columns> provider_{house_.database, missing_};
};

TEST_F(SentColumns, Are_in_the_selection_of_their_table) {
  Bridge bridge(house_);
  for (const auto* table : BuiltInTables()) {
    if (table->send == nullptr || table->selection.base.empty()) continue;
    SCOPED_TRACE(table->name);
    const auto before = Linked(*table);
    if (table->sends == SentRows::NamedAlone) {
      bridge.SetUsePreferencesTW(false);
      bridge.SetPassedID("'{5E6F0003-8A7B-4C9D-AE10-2F3A4B5C6D03}'");
    }
    bridge.SendDataToQB(table->number);
    bridge.SetUsePreferencesTW(true);
    bridge.SetPassedID("");
    EXPECT_NE(Linked(*table), before) << "The sample firm has a row that goes.";
    EXPECT_EQ(std::exchange(missing_, {}), Columns());
  }
}

}  // namespace
}  // namespace twqb
