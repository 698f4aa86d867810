#include "bench/Bases.h"

#include <fmt/format.h>

#include <array>

#include "adapters/companyfile/CompanyFile.h"
#include "tests/support/BillingSchema.h"

namespace twqb {

namespace {

void Sql(ado::Connection& cn, const std::string& statement) { cn.Execute(statement, nullptr); }

std::unique_ptr<ado::Connection> OpenBilling(Seams& seams) {
  auto cn = seams.database.CreateConnection();
  cn->SetConnectionString(seams.connectString);
  cn->Open();
  return cn;
}

constexpr std::int64_t kCreated = 1204700000;  // of the base's records, in Unix seconds

std::string ListId(int number) { return fmt::format("{:X}-{}", 0x80000000U + static_cast<unsigned>(number), kCreated); }

// --- Clients ---------------------------------------------------------------------------------------------------------

std::string Customer(int number) {
  return fmt::format(
      "<CustomerAddRq><CustomerAdd><Name>Company {0} (C{0:06})</Name><CompanyName>Company {0}</CompanyName>"
      "<FirstName>First{0}</FirstName><LastName>Last{0}</LastName><BillAddress><Addr1>Company {0}</Addr1>"
      "<Addr2>{0} Main Street</Addr2><City>Springfield</City><PostalCode>12345</PostalCode></BillAddress>"
      "<Phone>(207)-555-0100</Phone><Email>c{0}@example.com</Email></CustomerAdd></CustomerAddRq>",
      number);
}

std::string ClientRow(int number, std::string_view link, std::string_view lastUpdated) {
  return fmt::format(
      "INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, "
      "ClientZip, ClientPhone, ClientEmail, QBLinkID, LastUpdated) VALUES ('C{0:06}', 'Company {0}', "
      "'First{0}', 'Last{0}', '{0} Main Street', 'Springfield', '12345', '207 555 0100', "
      "'c{0}@example.com', {1}, {2})",
      number, link, lastUpdated);
}

// --- Projects: one in ten is a project, the others are its phases ----------------------------------------------------

constexpr int kPhases = 9;
int ProjectOf(int number) { return number - (number - 1) % (kPhases + 1); }

std::string ProjectsCustomer() { return "<CustomerAddRq><CustomerAdd><Name>Acme</Name></CustomerAdd></CustomerAddRq>"; }
void ProjectsClient(ado::Connection& cn) {
  Sql(cn, fmt::format("INSERT INTO Client (ClientID, QBLinkID) VALUES ('ACME', '{}')", ListId(1)));
  Sql(cn, "INSERT INTO Employee (EmployeeID) VALUES ('MHALE')");
}

std::string Job(int number) {
  const int project = ProjectOf(number);
  const bool isPhase = project != number;
  const auto name =
      isPhase ? fmt::format("P{:06}-{} Phase {}", project, number, number) : fmt::format("P{:06}", number);
  return fmt::format(
      "<CustomerAddRq><CustomerAdd><Name>{}</Name><ParentRef><ListID>{}</ListID></ParentRef>"
      "<ShipAddress><Addr1>{} Main Street</Addr1><City>Springfield</City><PostalCode>12345</PostalCode></ShipAddress>"
      "<AltContact>MHALE</AltContact><JobStatus>InProgress</JobStatus><JobStartDate>2007-06-01</JobStartDate>"
      "</CustomerAdd></CustomerAddRq>",
      name, isPhase ? ListId(project + 1) : ListId(1), number);
}

std::string ProjectRow(int number, std::string_view link, std::string_view lastUpdated) {
  const int project = ProjectOf(number);
  const bool isPhase = project != number;
  const auto phase = isPhase ? std::to_string(number) : std::string();
  const auto parent = isPhase ? fmt::format("'P{:06}:'", project) : std::string("NULL");
  return fmt::format(
      "INSERT INTO Project (ProjectID, ProjectCode, ProjectPhase, ProjectName, ClientID, EmployeeID, ProjectIsPhase, "
      "ParentProjectID, ProjectStatus, ProjectStartDate, ProjectStreet, ProjectCity, ProjectZip, QBLinkID, "
      "LastUpdated) "
      "VALUES ('P{0:06}:{1}', 'P{0:06}', '{1}', '{2}', 'ACME', 'MHALE', {3}, {4}, 'Active', '2007-06-01 00:00:00', "
      "'{5} Main Street', 'Springfield', '12345', {6}, {7})",
      project, phase, isPhase ? fmt::format("Phase {}", number) : fmt::format("P{:06}", number), isPhase ? -1 : 0,
      parent, number, link, lastUpdated);
}

constexpr std::array kTables = {
    BenchTable{.table = enClients, .name = "clients", .sendName = "Clients", .record = Customer, .row = ClientRow},
    BenchTable{.table = enProjects,
               .name = "projects",
               .sendName = "Projects",
               .recordsAhead = 1,
               .recordsAheadText = ProjectsCustomer,
               .rowsAhead = ProjectsClient,
               .record = Job,
               .row = ProjectRow},
};

}  // namespace

const std::span<const BenchTable> kBenchTables = kTables;

void MakeBase(const std::string& folder, const BenchTable& table, const Base& base) {
  Seams seams(folder);
  CreateSqliteDatabase(folder + "/billing.db");
  seams.machine.SetNow(Date::FromUnixSeconds(kCreated).PlusMinutes(-300));
  company::CreateCompanyFile(folder + "/company.twq", {}, seams.machine);
  std::string document = "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">";
  if (table.recordsAheadText != nullptr) document += table.recordsAheadText();
  for (int i = 1; i <= base.records; ++i) document += table.record(i);
  document += "</QBXMLMsgsRq></QBXML>";
  if (table.recordsAhead + base.records > 0) {
    (void)company::CompanyFile(folder + "/company.twq", seams.machine).Process(document);
  }
  const auto cn = OpenBilling(seams);
  MakeBillingSchema(*cn);
  Sql(*cn, "BEGIN");
  if (table.rowsAhead != nullptr) table.rowsAhead(*cn);
  for (int i = 1; i <= base.rows; ++i) {
    Sql(*cn, table.row(i, i <= base.linked ? "'" + ListId(table.recordsAhead + i) + "'" : "NULL",
                       i <= base.stamped ? "'2008-03-05 06:00:00'" : "'" + base.lastUpdated + "'"));
  }
  Sql(*cn, "COMMIT");
}

}  // namespace twqb
