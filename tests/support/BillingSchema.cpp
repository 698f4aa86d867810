#include "tests/support/BillingSchema.h"

#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/Process.h"

namespace twqb {

namespace {

// Statements of these files end with ";" at a line's end.
std::vector<std::string> Statements(const std::string& text) {
  std::vector<std::string> statements;
  std::string statement;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (const auto comment = line.find("--"); comment != std::string::npos) line.erase(comment);
    while (!line.empty() && line.back() == ' ') line.pop_back();
    statement += line + "\n";
    if (line.ends_with(';')) {
      statements.push_back(std::move(statement));
      statement.clear();
    }
  }
  return statements;
}

void Run(ado::Connection& connection, std::initializer_list<std::string> files) {
  connection.Execute("BEGIN", nullptr);
  for (const auto& file : files) {
    for (const auto& statement : Statements(ReadWholeFile(TWQB_SOURCE_DIR "/samples/billing/" + file))) {
      connection.Execute(statement, nullptr);
    }
  }
  connection.Execute("COMMIT", nullptr);
}

}  // namespace

void MakeBillingSchema(ado::Connection& connection) { Run(connection, {"schema.sql"}); }

void FillSampleFirm(ado::Connection& connection) {
  Run(connection, {"firm.sql", "work.sql", "projects.sql", "codes.sql", "hours.sql", "invoices.sql", "payments.sql",
                   "expenses.sql"});
}

}  // namespace twqb
