#include <poll.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <thread>

#include "CompanyTest.h"
#include "adapters/companyfile/ListKind.h"

namespace twqb::company {

namespace {

using messages::Country;

constexpr ErrorNumber kCannotOpen = 0x80040403;

class CompanyStorage : public CompanyTest {
 protected:
  ErrorNumber RaisedByOpening(const std::string& path) {
    return NumberRaised([&] { CompanyFile opened(path, machine_); });
  }
  std::string Scalar(const std::string& sql) {
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(path_.c_str(), &database), SQLITE_OK);
    std::string text;
    const auto keep = [](void* out, int, char** values, char**) {
      *static_cast<std::string*>(out) = values[0] == nullptr ? "" : values[0];
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), keep, &text, nullptr), SQLITE_OK);
    sqlite3_close(database);
    return text;
  }
};

TEST_F(CompanyStorage, A_file_keeps_what_it_was_made_with) {
  MakeFile({.country = Country::AU, .hostVersion = 12, .accepts = {Country::AU, Country::CA}});
  AddNamed("Acme");
  AddJob("Roof", "Acme");
  file_.emplace(path_, machine_);
  const auto summary = file_->Summary();
  EXPECT_EQ(summary.options.country, Country::AU);
  EXPECT_EQ(summary.options.hostVersion, 12);
  EXPECT_EQ(summary.options.accepts, (std::vector{Country::AU, Country::CA}));
  EXPECT_EQ(summary.created, 1204729200);
  ASSERT_FALSE(summary.kinds.empty());
  EXPECT_EQ(summary.kinds[0].name, "Customer");
  EXPECT_EQ(summary.kinds[0].records, 2);
}

TEST_F(CompanyStorage, The_summary_counts_every_list_and_every_kind_of_transaction_and_sums_the_balances) {
  const auto opening = "<OpenBalance>100.25</OpenBalance><OpenBalanceDate>2008-03-01</OpenBalanceDate>";
  EXPECT_EQ(Add(std::string("<Name>Acme</Name>") + opening).code, 0);
  EXPECT_EQ(Add(std::string("<Name>Roof</Name><ParentRef><FullName>Acme</FullName></ParentRef>") + opening).code, 0);
  EXPECT_EQ(Send("<AccountAddRq><AccountAdd><Name>Checking</Name><AccountType>Bank</AccountType>"
                 "<OpenBalance>7.50</OpenBalance><OpenBalanceDate>2008-03-01</OpenBalanceDate></AccountAdd>"
                 "</AccountAddRq>")
                .code,
            0);
  std::vector<std::string> names;
  for (const auto& kind : file_->Summary().kinds) {
    names.push_back(kind.name);
    if (kind.name == "Customer") {
      EXPECT_EQ(kind.records, 2);
      ASSERT_EQ(kind.balances.size(), 1U);
      EXPECT_EQ(kind.balances[0].type, "");
      EXPECT_EQ(kind.balances[0].balance.TenThousandths(), 2'005'000) << "a job's counts once";
    }
    if (kind.name == "Account") {
      const auto bank = std::ranges::find(kind.balances, "Bank", &CompanySummary::Part::type);
      ASSERT_NE(bank, kind.balances.end());
      EXPECT_EQ(bank->records, 1);
      EXPECT_EQ(bank->balance.TenThousandths(), 75'000);
      std::int64_t records = 0;
      for (const auto& part : kind.balances) records += part.records;
      EXPECT_EQ(records, kind.records);
    }
    if (kind.name == "Class") {
      EXPECT_TRUE(kind.balances.empty());
    }
  }
  for (const auto& message : messages::AllMessages()) {
    if (!message.name.ends_with("Query") || message.name == "HostQuery" || message.name == "SubscriptionQuery")
      continue;
    const auto kind = message.name.substr(0, message.name.size() - std::string_view("Query").size());
    if (FindJointList(kind) != nullptr) continue;
    EXPECT_NE(std::ranges::find(names, kind), names.end()) << kind;
  }
}

TEST_F(CompanyStorage, Making_a_file_overwrites_nothing) {
  AddNamed("Acme");
  EXPECT_EQ(NumberRaised([&] { CreateCompanyFile(path_, {}, machine_); }), error::kFileAccess);
  EXPECT_EQ(ByName("Acme").code, 0);
}

TEST_F(CompanyStorage, A_file_can_not_be_made_in_a_folder_that_is_not_there) {
  EXPECT_EQ(NumberRaised([&] { CreateCompanyFile(folder_ / "none/company.twq", {}, machine_); }), error::kPathNotFound);
}

TEST_F(CompanyStorage, What_is_no_company_file_is_not_opened) {
  std::ofstream(folder_ / "text") << std::string(5000, 'x');
  std::ofstream(folder_ / "empty").flush();
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open((folder_ / "other").c_str(), &database), SQLITE_OK);
  sqlite3_exec(database, "CREATE TABLE setting (key, value)", nullptr, nullptr, nullptr);
  sqlite3_close(database);
  for (const char* name : {"missing", "text", "empty", "other", "."}) {
    EXPECT_EQ(RaisedByOpening(folder_ / name), kCannotOpen) << name;
  }
  EXPECT_FALSE(std::filesystem::exists(folder_ / "missing"));
}

TEST_F(CompanyStorage, A_file_of_a_newer_format_is_not_opened) {
  file_.reset();
  Scalar("PRAGMA user_version = 6");
  EXPECT_EQ(RaisedByOpening(path_), kCannotOpen);
  Scalar("PRAGMA user_version = 5");
  EXPECT_EQ(RaisedByOpening(path_), 0U);
}

TEST_F(CompanyStorage, Two_that_have_the_file_open_see_each_other_s_records) {
  CompanyFile other(path_, machine_);
  static_cast<void>(other.Process(Document(AddRequest("<Name>Acme</Name>"))));
  EXPECT_EQ(ByName("Acme").code, 0);
  EXPECT_EQ(AddNamed("acme").code, 3100);
  EXPECT_EQ(AddNamed("Other").Value("ListID"), "80000002-1204729200");
}

// Whether the file alone is all there is.
bool IsPlain(const std::string& path) {
  for (const char* suffix : {"-wal", "-shm", "-journal"}) {
    if (std::filesystem::exists(path + suffix)) return false;
  }
  constexpr std::streamoff kVersions = 18;  // to write it and to read it
  std::ifstream file(path, std::ios::binary);
  file.seekg(kVersions);
  return file.get() == 1 && file.get() == 1;
}

TEST_F(CompanyStorage, A_file_is_written_ahead_while_somebody_writes_and_one_plain_file_at_rest) {
  static_cast<void>(Query(""));
  EXPECT_TRUE(IsPlain(path_)) << "who only reads changes nothing";
  AddNamed("Acme");
  EXPECT_TRUE(std::filesystem::exists(path_ + "-wal"));
  CompanyFile other(path_, machine_);
  static_cast<void>(other.Process(Document(AddRequest("<Name>Beta</Name>"))));
  file_.reset();
  EXPECT_TRUE(std::filesystem::exists(path_ + "-wal"));
  { const CompanyFile last(std::move(other)); }
  EXPECT_TRUE(IsPlain(path_));
  std::filesystem::copy_file(path_, folder_ / "copy");
  EXPECT_NE(CompanyFile(folder_ / "copy", machine_).Process(Document(QueryRequest(""))).find("Beta"),
            std::string::npos);
}

TEST_F(CompanyStorage, What_a_killed_process_left_beside_the_file_is_taken_up_by_who_only_looks) {
  file_.reset();
  const pid_t child = fork();
  if (child == 0) {
    CompanyFile file(path_, machine_);
    static_cast<void>(file.Process(Document(AddRequest("<Name>Acme</Name>"))));
    kill(getpid(), SIGKILL);
  }
  waitpid(child, nullptr, 0);
  EXPECT_TRUE(std::filesystem::exists(path_ + "-wal"));
  {
    CompanyFile looking(path_, machine_);
    EXPECT_EQ(looking.Summary().kinds.at(0).records, 1);
  }
  EXPECT_TRUE(IsPlain(path_));
}

TEST_F(CompanyStorage, When_the_storage_fails_nothing_of_the_document_stays) {
  Scalar(
      "CREATE TRIGGER full BEFORE INSERT ON record WHEN new.name = 'Second' BEGIN SELECT raise(ABORT, 'disk is full'); "
      "END");
  const auto document = Document(AddRequest("<Name>First</Name>") + AddRequest("<Name>Second</Name>"));
  EXPECT_EQ(RefusalOf(document), 0x80040402U);
  EXPECT_EQ(Query("").code, 1);
  EXPECT_EQ(AddNamed("Third").Value("ListID"), "80000001-1204729200");
}

TEST_F(CompanyStorage, A_document_of_many_requests_is_carried_out_and_answered_in_one_go) {
  constexpr int kMany = 3000;
  std::string requests;
  for (int i = 0; i < kMany; ++i) requests += AddRequest("<Name>Customer " + std::to_string(i) + "</Name>");
  const auto added = SendAll(requests);
  ASSERT_EQ(added.size(), std::size_t{kMany});
  for (const auto& answer : added) ASSERT_EQ(answer.code, 0);
  EXPECT_EQ(Query("").All("Name").size(), std::size_t{kMany});
}

// Reads whole names, one a line, of what the child was answered for.
std::vector<std::string> ReadLines(int descriptor) {
  std::string text;
  std::array<char, 4096> buffer;
  for (ssize_t count = 0; (count = read(descriptor, buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  std::vector<std::string> lines;
  std::size_t from = 0;
  for (auto at = text.find('\n'); at != std::string::npos; at = text.find('\n', from)) {
    lines.push_back(text.substr(from, at - from));
    from = at + 1;
  }
  return lines;
}

class KilledCompany : public CompanyStorage, public testing::WithParamInterface<int> {};

TEST_P(KilledCompany, Keeps_every_record_that_was_answered_for) {
  file_.reset();
  int acknowledged[2];
  ASSERT_EQ(pipe(acknowledged), 0);
  const pid_t child = fork();
  if (child == 0) {
    close(acknowledged[0]);
    CompanyFile file(path_, machine_);
    for (int i = 0;; ++i) {
      const auto name = "Customer " + std::to_string(i);
      const auto answer = file.Process(Document(AddRequest("<Name>" + name + "</Name>")));
      if (answer.find("statusCode=\"0\"") == std::string::npos) _exit(1);
      const auto line = name + "\n";
      if (write(acknowledged[1], line.data(), line.size()) < 0) _exit(1);
    }
  }
  close(acknowledged[1]);
  pollfd first = {.fd = acknowledged[0], .events = POLLIN, .revents = 0};
  EXPECT_EQ(poll(&first, 1, -1), 1) << "not before a first record was answered for";
  std::this_thread::sleep_for(std::chrono::milliseconds(GetParam()));
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status));
  const auto names = ReadLines(acknowledged[0]);
  close(acknowledged[0]);
  ASSERT_FALSE(names.empty());

  file_.emplace(path_, machine_);
  for (const auto& name : names) EXPECT_EQ(ByName(name).code, 0) << name;
  const auto held = Query("").All("Name").size();
  EXPECT_LE(held, names.size() + 1) << "at most the one that was not answered for any more";
  EXPECT_EQ(Scalar("PRAGMA integrity_check"), "ok");
  EXPECT_EQ(AddNamed("After").code, 0);
}

INSTANTIATE_TEST_SUITE_P(After, KilledCompany, testing::Values(150, 233, 317, 404),
                         [](const auto& test) { return std::to_string(test.param) + "_milliseconds"; });

}  // namespace

}  // namespace twqb::company
