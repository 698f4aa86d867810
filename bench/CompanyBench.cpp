// The company file alone: single adds into a small file and into a large one, one large answer, invoices of many lines.
//
// Each document is a transaction of its own, so an add is measured against a floor: the storage engine writing the same
// rows into the same tables of a copy of the file, one transaction each, without reading or checking anything. Prints
// a table for docs/performance.md: seconds, cost per document, ratio to the floor, and the cost in the large file
// against the small one. Exit status 1 when that growth is above 1.2.

#include <fmt/format.h>
#include <sqlite3.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/system/FrozenMachine.h"
#include "bench/Bases.h"
#include "bench/CommandLine.h"
#include "bench/Report.h"
#include "bench/Timing.h"
#include "tests/support/Process.h"

namespace twqb {
namespace {

constexpr double kGoalGrowth = 1.2;
constexpr int kSmall = 1'000;
constexpr int kLarge = 10'000;
constexpr int kLargest = 100'000;
constexpr int kTimedAdds = 500;
constexpr int kInvoices = 1'000;
constexpr int kLines = 20;
constexpr int kRepetitions = 3;  // the median counts

std::string Document(std::string_view requests) {
  return fmt::format(
      "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">{}</QBXMLMsgsRq>"
      "</QBXML>",
      requests);
}

std::string CustomerAdd(int number) { return BenchTableOf(enClients).record(number); }

std::string InvoiceAdd(int number, int customers) {
  std::string lines;
  for (int line = 1; line <= kLines; ++line) {
    lines += fmt::format(
        "<InvoiceLineAdd><ItemRef><FullName>Consulting</FullName></ItemRef><Desc>Work of day {0}</Desc>"
        "<Quantity>{0}</Quantity><Rate>85.50</Rate></InvoiceLineAdd>",
        line);
  }
  return fmt::format(
      "<InvoiceAddRq><InvoiceAdd><CustomerRef><FullName>Company {0} (C{0:06})</FullName></CustomerRef>"
      "<TxnDate>2008-03-05</TxnDate><RefNumber>{1}</RefNumber>{2}</InvoiceAdd></InvoiceAddRq>",
      number % customers + 1, number, lines);
}

constexpr std::string_view kItem =
    "<AccountAddRq><AccountAdd><Name>Fees</Name><AccountType>Income</AccountType></AccountAdd></AccountAddRq>"
    "<ItemServiceAddRq><ItemServiceAdd><Name>Consulting</Name><SalesOrPurchase><Desc>Consulting</Desc>"
    "<Price>85.50</Price><AccountRef><FullName>Fees</FullName></AccountRef></SalesOrPurchase></ItemServiceAdd>"
    "</ItemServiceAddRq>";

// A company file in a folder, with a clock that stands.
class Books {
 public:
  explicit Books(const std::string& folder)
      : path_(folder + "/company.twq"),
        machine_({.libraryFolder = folder, .registryFile = folder + "/registry.ini"},
                 {.now = TextToDate("2008-03-05T12:00:00"), .zone = {.bias = 300, .state = TimeZoneState::Standard}}) {
    if (!std::filesystem::exists(path_)) company::CreateCompanyFile(path_, {}, machine_);
    file_ = std::make_unique<company::CompanyFile>(path_, machine_);
  }

  // The answer; raises when a request in it was refused.
  std::string Process(std::string_view requests) {
    auto answer = file_->Process(Document(requests));
    const auto refused = answer.find("statusSeverity=\"Error\"");
    if (refused != std::string::npos) throw std::runtime_error(answer.substr(refused, 200));
    return answer;
  }

 private:
  std::string path_;
  FrozenMachine machine_;
  std::unique_ptr<company::CompanyFile> file_;
};

void MakeBase(const std::string& folder, int customers) {
  Books books(folder);
  std::string requests(kItem);
  for (int i = 1; i <= customers; ++i) requests += CustomerAdd(i);
  (void)books.Process(requests);
}

// --- The floor -------------------------------------------------------------------------------------------------------

class Storage {
 public:
  explicit Storage(const std::string& folder) {
    sqlite3* opened = nullptr;
    Check(sqlite3_open((folder + "/company.twq").c_str(), &opened));
    database_.reset(opened);
    Run("PRAGMA synchronous = FULL");
  }

  void Run(const std::string& sql) { Check(sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr)); }

  struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
  };
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

  Statement Prepare(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(database_.get(), sql.c_str(), -1, &statement, nullptr));
    return Statement(statement);
  }

  void Check(int code) const {
    if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_.get()));
  }

 private:
  std::unique_ptr<sqlite3, Close> database_;
};

// The values of one row, as the engine has them.
struct ValueFree {
  void operator()(sqlite3_value* value) const { sqlite3_value_free(value); }
};
using StoredRow = std::vector<std::unique_ptr<sqlite3_value, ValueFree>>;

struct WrittenRows {
  std::string insert;
  std::vector<StoredRow> rows;
};

std::int64_t LastRow(Storage& storage, const std::string& table) {
  const auto statement = storage.Prepare("SELECT coalesce(max(rowid), 0) FROM " + table);
  sqlite3_step(statement.get());
  return sqlite3_column_int64(statement.get(), 0);
}

// The rows that `after` has and `before` has not, of every table whose rows are numbered.
std::vector<WrittenRows> RowsWritten(const std::string& before, const std::string& after) {
  Storage old(before);
  Storage now(after);
  std::vector<std::string> tables;
  const auto names =
      now.Prepare("SELECT name FROM sqlite_master WHERE type = 'table' AND sql NOT LIKE '%WITHOUT ROWID%'");
  while (sqlite3_step(names.get()) == SQLITE_ROW) {
    tables.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(names.get(), 0)));
  }
  std::vector<WrittenRows> written;
  for (const auto& table : tables) {
    const auto rows =
        now.Prepare(fmt::format("SELECT * FROM {} WHERE rowid > {} ORDER BY rowid", table, LastRow(old, table)));
    WrittenRows found;
    const int columns = sqlite3_column_count(rows.get());
    std::string marks;
    for (int i = 0; i < columns; ++i) marks += i == 0 ? "?" : ", ?";
    found.insert = fmt::format("INSERT INTO {} VALUES ({})", table, marks);
    while (sqlite3_step(rows.get()) == SQLITE_ROW) {
      StoredRow row;
      for (int i = 0; i < columns; ++i) row.emplace_back(sqlite3_value_dup(sqlite3_column_value(rows.get(), i)));
      found.rows.push_back(std::move(row));
    }
    if (!found.rows.empty()) written.push_back(std::move(found));
  }
  return written;
}

// Writes the rows in `documents` transactions, each with its share of every table and with the counter's step.
void WriteAll(Storage& storage, const std::vector<WrittenRows>& written, int documents) {
  std::vector<Storage::Statement> inserts;
  inserts.reserve(written.size());
  for (const auto& table : written) inserts.push_back(storage.Prepare(table.insert));
  const auto counter = storage.Prepare("UPDATE counter SET next = next + 1 WHERE name = 'list'");
  for (int document = 0; document < documents; ++document) {
    storage.Run("BEGIN IMMEDIATE");
    sqlite3_step(counter.get());
    sqlite3_reset(counter.get());
    for (std::size_t t = 0; t < written.size(); ++t) {
      const auto& rows = written[t].rows;
      const auto share = [&](int i) {
        return rows.size() * static_cast<std::size_t>(i) / static_cast<std::size_t>(documents);
      };
      for (auto row = share(document); row < share(document + 1); ++row) {
        for (std::size_t i = 0; i < rows[row].size(); ++i) {
          sqlite3_bind_value(inserts[t].get(), static_cast<int>(i) + 1, rows[row][i].get());
        }
        if (sqlite3_step(inserts[t].get()) != SQLITE_DONE) throw std::runtime_error(written[t].insert);
        sqlite3_reset(inserts[t].get());
      }
    }
    storage.Run("COMMIT");
  }
}

// --- The measurements ------------------------------------------------------------------------------------------------

struct Measurement {
  double file = 0;  // seconds
  double floor = 0;
};

std::string CopyOf(const std::string& base, const TemporaryFolder& folder) {
  std::filesystem::copy_file(base + "/company.twq", folder.Path() + "/company.twq");
  return folder.Path();
}

// So many documents, each made by `request`.
Measurement MeasureDocuments(const std::string& base, int documents, const std::function<std::string(int)>& request) {
  std::vector<double> file;
  std::vector<double> floor;
  for (int repetition = 0; repetition < kRepetitions; ++repetition) {
    const TemporaryFolder written;
    {
      Books books(CopyOf(base, written));
      file.push_back(Seconds([&] {
        for (int i = 0; i < documents; ++i) (void)books.Process(request(i));
      }));
    }
    const auto rows = RowsWritten(base, written.Path());
    const TemporaryFolder replayed;
    Storage storage(CopyOf(base, replayed));
    floor.push_back(Seconds([&] {
      storage.Run("PRAGMA journal_mode = WAL");
      WriteAll(storage, rows, documents);
    }));
  }
  return {.file = Median(file), .floor = Median(floor)};
}

void PrintMeasured(std::string_view name, int records, int documents, const Measurement& measured,
                   const std::string& growth) {
  PrintLine({std::string(name), Grouped(records), Grouped(documents), fmt::format("{:.3f}", measured.file),
             fmt::format("{:.3f}", measured.floor), Grouped(std::llround(measured.file / documents * 1e6)),
             fmt::format("{:.2f}", measured.file / measured.floor), growth});
}

Goals Main(int most) {
  const TemporaryFolder small;
  const TemporaryFolder large;
  MakeBase(small.Path(), kSmall);
  MakeBase(large.Path(), most);

  fmt::print("\n### the company file alone\n\n");
  PrintHead({"documents", "records in the file", "documents timed", "file, s", "floor, s", "µs a document", "ratio",
             "growth"});
  const auto add = [](int base) { return [base](int i) { return CustomerAdd(base + 1 + i); }; };
  const auto inSmall = MeasureDocuments(small.Path(), kTimedAdds, add(kSmall));
  const auto inLarge = MeasureDocuments(large.Path(), kTimedAdds, add(most));
  const double growth = inLarge.file / inSmall.file;
  PrintMeasured("a customer each", kSmall, kTimedAdds, inSmall, "");
  PrintMeasured("a customer each", most, kTimedAdds, inLarge, fmt::format("{:.2f}", growth));
  const auto invoices = MeasureDocuments(small.Path(), kInvoices, [](int i) { return InvoiceAdd(i + 1, kSmall); });
  PrintMeasured(fmt::format("an invoice of {} lines each", kLines), kSmall, kInvoices, invoices, "");

  Books books(large.Path());
  std::size_t size = 0;
  const double query = Seconds(
      [&] { size = books.Process("<CustomerQueryRq><ActiveStatus>All</ActiveStatus></CustomerQueryRq>").size(); });
  fmt::print("\nOne query that answers {} customers took {:.2f} s for {}.\n", Grouped(most), query, InMegabytes(size));
  return growth > kGoalGrowth ? Goals::Missed : Goals::Met;
}

}  // namespace
}  // namespace twqb

int main(int argc, char** argv) {
  CLI::App app("Measures the company file alone against its floor.");
  int most = twqb::kLarge;
  app.add_flag_callback(
      "--all", [&most] { most = twqb::kLargest; },
      fmt::format("up to {} records in it, instead of {}", twqb::Grouped(twqb::kLargest), twqb::Grouped(twqb::kLarge)));
  return twqb::RunBench(app, argc, argv, [&most] { return twqb::Main(most); });
}
