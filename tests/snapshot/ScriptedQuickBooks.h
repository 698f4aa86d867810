// A QuickBooks that tells what a test has written down for it, and the snapshot that is made of it.
//
// It has records of any kind, of which the embedded company file keeps some alone. Nothing is entered there: what
// becomes of that shows in the copy.
#pragma once

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/snapshot/CompanySnapshot.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "tests/support/TestHouse.h"

namespace twqb::snapshot {

inline constexpr const char* kTimes =
    "<TimeCreated>2007-07-01T10:00:00-05:00</TimeCreated><TimeModified>2008-01-02T03:04:05-05:00</TimeModified>"
    "<EditSequence>1199261045</EditSequence>";

// Answers each query with the records that it was given, and any other with "nothing found".
class ScriptedSession : public Transport {
 public:
  std::map<std::string, std::string> records;   // by kind: what stands in the response
  std::map<std::string, std::string> statuses;  // by kind: "3250"
  std::set<std::string> unknown;                // kinds of which no document is taken
  std::map<std::string, std::size_t> cutAt;     // by kind: how much of the answer comes
  std::string country = "US";                   // it takes that one's documents alone; "CA"
  std::vector<std::string> asked;

  InterfaceVersion GetVersion() override { return {.major = 13, .minor = 0}; }
  void OpenConnection(std::string_view, std::string_view) override {}
  void BeginSession(std::string_view, OpenMode) override {}
  std::string GetCurrentCompanyFileName() override { return "C:\\firm.qbw"; }
  std::string ProcessSubscription(std::string_view) override { return {}; }
  void EndSession() override {}
  void CloseConnection() override {}

  std::string ProcessDocument(std::string_view document) override {
    const std::string text(document);
    if (text.find(fmt::format("<?qbxml version=\"{}", Prefix())) == std::string::npos) {
      constexpr ErrorNumber kUnknownVersion = 0x80040423;
      throw PlatformError(kUnknownVersion);
    }
    const auto end = text.find("QueryRq");
    const auto kind = text.substr(text.rfind('<', end) + 1, end - text.rfind('<', end) - 1);
    asked.push_back(kind);
    if (unknown.contains(kind)) throw PlatformError(error::kParse);
    const auto whole = Whole(kind);
    return cutAt.contains(kind) ? whole.substr(0, cutAt.at(kind)) : whole;
  }

  [[nodiscard]] std::string Whole(const std::string& kind) const {
    if (kind == "Host") {
      return Answer(
          kind, "0",
          fmt::format(
              "<HostRet><ProductName>QuickBooks Pro</ProductName><MajorVersion>17</MajorVersion>"
              "<MinorVersion>0</MinorVersion><Country>{}</Country><SupportedQBXMLVersion>{}1.0</SupportedQBXMLVersion>"
              "<SupportedQBXMLVersion>{}13.0</SupportedQBXMLVersion></HostRet>",
              country, Prefix(), Prefix()));
    }
    if (statuses.contains(kind)) return Answer(kind, statuses.at(kind), "");
    return records.contains(kind) ? Answer(kind, "0", records.at(kind)) : Answer(kind, "1", "");
  }

 private:
  [[nodiscard]] std::string Prefix() const { return country == "US" ? std::string() : country; }
  static std::string Answer(const std::string& kind, const std::string& code, const std::string& content) {
    return fmt::format(
        "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><{0}QueryRs statusCode=\"{1}\" statusSeverity=\"x\" "
        "statusMessage=\"told {1}\">{2}</{0}QueryRs></QBXMLMsgsRs></QBXML>",
        kind, code, content);
  }
};

inline std::string Customer(const std::string& id, const std::string& name, const std::string& more = {}) {
  return fmt::format(
      "<CustomerRet><ListID>{0}</ListID>{2}<Name>{1}</Name><FullName>{1}</FullName>"
      "<IsActive>true</IsActive><Sublevel>0</Sublevel><Balance>12.50</Balance>"
      "<TotalBalance>40.00</TotalBalance>{3}</CustomerRet>",
      id, name, kTimes, more);
}

// Reads what `session_` tells into `copy_`.
class CompanySnapshot : public testing::Test {
 protected:
  void Read() {
    ReadCompany(session_, house_.Path("copy.twq"), house_.machine, [](std::string_view) {});
    copy_ = std::make_unique<company::CompanyFile>(house_.Path("copy.twq"), house_.machine);
  }
  void ExpectCantRead(const std::string& what) {
    SCOPED_TRACE(what);
    std::filesystem::remove(house_.Path("copy.twq"));
    try {
      ReadCompany(session_, house_.Path("copy.twq"), house_.machine, [](std::string_view) {});
      ADD_FAILURE();
    } catch (const SnapshotError& told) {
      ExpectHas(told.what(), "it does not tell");
      ExpectHas(told.what(), what);
    }
  }
  std::string Ask(const std::string& requests) {
    return copy_->Process(
        "<?xml version=\"1.0\"?><?qbxml version=\"" + std::string(session_.country == "US" ? "" : session_.country) +
        "3.0\"?><QBXML><QBXMLMsgsRq onError=\"continueOnError\">" + requests + "</QBXMLMsgsRq></QBXML>");
  }
  static void ExpectHas(const std::string& text, const std::string& part) {
    EXPECT_NE(text.find(part), std::string::npos) << text;
  }

  TestHouse house_;
  ScriptedSession session_;
  std::unique_ptr<company::CompanyFile> copy_;
};

}  // namespace twqb::snapshot
