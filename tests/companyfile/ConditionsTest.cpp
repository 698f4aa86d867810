#include <gmock/gmock.h>
#include <sqlite3.h>

#include "CompanyTest.h"
#include "adapters/companyfile/CompanyTransport.h"

namespace twqb::company {

namespace {

constexpr ErrorNumber kOtherOpen = 0x8004040A;
constexpr ErrorNumber kOtherMode = 0x80040410;
constexpr ErrorNumber kDialogIsOpen = 0x80040414;
constexpr ErrorNumber kNotAllowed = 0x80040418;
constexpr ErrorNumber kNotLoggedOn = 0x8004041D;

class ConditionsOfACompany : public CompanyTest {
 protected:
  void Set(std::string_view name, std::string_view value) { SetIn(*file_, name, value); }
  static void SetIn(CompanyFile& file, std::string_view name, std::string_view value) {
    auto conditions = file.GetConditions();
    ASSERT_TRUE(FindCondition(name)->set(conditions, value)) << name << " " << value;
    file.SetConditions(conditions);
  }
  static std::vector<std::string> Texts(const CompanyConditions& conditions) {
    std::vector<std::string> texts;
    for (const auto& condition : Conditions()) texts.push_back(condition.text(conditions));
    return texts;
  }
  // What a session with `name` raises when QuickBooks has `openFile` open.
  ErrorNumber Begin(const std::string& openFile, std::string_view name, OpenMode mode = OpenMode::DoNotCare) {
    const auto transport = CompanyTransportFactory(openFile, machine_).CreateTransport();
    transport->OpenConnection("ID", "Name");
    return NumberRaised([&] { transport->BeginSession(name, mode); });
  }
  int StoredSettings() {
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(path_.c_str(), &database), SQLITE_OK);
    int count = 0;
    const auto keep = [](void* out, int, char** values, char**) {
      *static_cast<int*>(out) = std::stoi(values[0]);
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(database, "SELECT count(*) FROM setting", keep, &count, nullptr), SQLITE_OK);
    sqlite3_close(database);
    return count;
  }
};

TEST_F(ConditionsOfACompany, A_new_file_is_in_the_way_of_nobody) {
  EXPECT_THAT(Texts(file_->GetConditions()), testing::ElementsAre("granted", "granted", "closed", "answered", "granted",
                                                                  "enabled", "strict", "none", "5.0"));
  EXPECT_EQ(Begin(path_, ""), 0U);
  EXPECT_EQ(Begin("", path_), 0U);
}

TEST_F(ConditionsOfACompany, Are_kept_in_the_file_and_leave_nothing_there_once_they_are_as_in_a_new_one) {
  const auto before = StoredSettings();
  const std::vector<std::string> changed = {"withheld", "withheld", "open",       "refused", "withheld",
                                            "disabled", "lenient",  "2007-12-31", "12.07"};
  for (std::size_t i = 0; i < changed.size(); ++i) Set(Conditions()[i].name, changed[i]);
  file_.emplace(path_, machine_);
  EXPECT_THAT(Texts(file_->GetConditions()), testing::ElementsAre("withheld", "withheld", "open", "refused", "withheld",
                                                                  "disabled", "lenient", "2007-12-31", "12.7"));
  EXPECT_EQ(StoredSettings(), before + static_cast<int>(changed.size()));
  file_->SetConditions({});
  EXPECT_EQ(StoredSettings(), before);
}

TEST_F(ConditionsOfACompany, Names_and_words_are_read_in_any_case) {
  Set("PERMISSION", "Withheld");
  EXPECT_EQ(file_->GetConditions().application, Permission::Withheld);
}

TEST_F(ConditionsOfACompany, A_value_that_is_not_allowed_changes_nothing) {
  for (const auto& condition : Conditions()) {
    CompanyConditions conditions{.application = Permission::Withheld, .interfaceVersion = {.major = 4, .minor = 2}};
    const auto before = Texts(conditions);
    for (const char* value : {"", "perhaps", "5", "5.", ".0", "5.0.1", "-5.0", "5.-1", "100.0", "5.100", "5,0", "5.0 ",
                              "2007-02-30", "12/31/2007"}) {
      EXPECT_FALSE(condition.set(conditions, value)) << condition.name << " \"" << value << "\"";
    }
    EXPECT_EQ(Texts(conditions), before);
  }
  EXPECT_EQ(FindCondition("permissions"), nullptr);
}

TEST_F(ConditionsOfACompany, Without_permission_no_session_begins) {
  Set("permission", "withheld");
  EXPECT_EQ(Begin(path_, ""), kNotAllowed);
  EXPECT_EQ(Begin(path_, path_), kNotAllowed);
  EXPECT_EQ(Begin("", path_), kNotAllowed);
  Set("permission", "granted");
  EXPECT_EQ(Begin(path_, ""), 0U);
}

TEST_F(ConditionsOfACompany, Without_automatic_logon_only_the_file_that_is_open_gets_a_session) {
  Set("auto-logon", "withheld");
  EXPECT_EQ(Begin("", path_), kNotLoggedOn);
  EXPECT_EQ(Begin(path_, ""), 0U);
  EXPECT_EQ(Begin(path_, path_), 0U);
}

TEST_F(ConditionsOfACompany, While_a_dialog_is_open_no_session_begins_and_one_that_began_goes_on) {
  const auto transport = CompanyTransportFactory(path_, machine_).CreateTransport();
  transport->OpenConnection("ID", "Name");
  transport->BeginSession("", OpenMode::DoNotCare);
  Set("dialog", "open");
  EXPECT_NE(transport->ProcessDocument(Document("<HostQueryRq/>")).find("statusCode=\"0\""), std::string::npos);
  EXPECT_EQ(Begin(path_, ""), kDialogIsOpen);
  EXPECT_EQ(Begin("", path_), kDialogIsOpen);
}

TEST_F(ConditionsOfACompany, Of_several_causes_the_dialog_comes_first_and_the_mode_last) {
  for (const char* name : {"permission", "auto-logon"}) Set(name, "withheld");
  Set("dialog", "open");
  CreateCompanyFile(folder_ / "other.twq", {}, machine_);
  EXPECT_EQ(Begin(folder_ / "other.twq", path_), kOtherOpen);
  EXPECT_EQ(Begin("", path_), kDialogIsOpen);
  Set("dialog", "closed");
  EXPECT_EQ(Begin("", path_), kNotAllowed);
  Set("permission", "granted");
  EXPECT_EQ(Begin("", path_), kNotLoggedOn);

  const auto holder = CompanyTransportFactory(path_, machine_).CreateTransport();
  holder->OpenConnection("ID", "Name");
  holder->BeginSession("", OpenMode::SingleUser);
  EXPECT_EQ(Begin("", path_), kNotLoggedOn);
  Set("auto-logon", "granted");
  EXPECT_EQ(Begin("", path_), kOtherMode);
}

TEST_F(ConditionsOfACompany, The_interface_version_is_that_of_the_open_file) {
  Set("interface-version", "2.1");
  const auto versionOf = [this](const std::string& openFile) {
    return CompanyTransportFactory(openFile, machine_).CreateTransport()->GetVersion();
  };
  EXPECT_EQ(versionOf(path_).major, 2);
  EXPECT_EQ(versionOf(path_).minor, 1);
  EXPECT_EQ(versionOf("").major, 5);
  EXPECT_EQ(versionOf(folder_ / "missing.twq").major, 5);
}

TEST_F(ConditionsOfACompany, A_refused_host_query_is_answered_with_a_status_and_without_a_record) {
  Set("host-query", "refused");
  const auto refused = Send("<HostQueryRq/>");
  EXPECT_EQ(refused.code, 3260);
  EXPECT_EQ(refused.severity, "Error");
  EXPECT_EQ(refused.message, "Insufficient permission level to perform this action.");
  EXPECT_FALSE(refused.node.first_child());
  EXPECT_EQ(AddNamed("Acme").code, 0);
  Set("host-query", "answered");
  EXPECT_EQ(Send("<HostQueryRq/>").Value("MajorVersion"), "16");
}

TEST_F(ConditionsOfACompany, A_host_query_that_is_unknown_is_refused_with_its_whole_document_and_no_other_request_is) {
  Set("host-query", "unknown");
  EXPECT_EQ(NumberRaised([&] { (void)file_->Process(Document("<HostQueryRq/>")); }), error::kParse);
  EXPECT_EQ(AddNamed("Acme").code, 0);
  Set("host-query", "answered");
  EXPECT_EQ(Send("<HostQueryRq/>").Value("MajorVersion"), "16");
}

}  // namespace

}  // namespace twqb::company
