// The fixture of these tests: a company file in a folder of its own, and short ways to ask it things.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "TestMachine.h"
#include "adapters/companyfile/CompanyFile.h"
#include "platform/PlatformError.h"
#include "tests/support/Process.h"

namespace twqb::company {

inline constexpr ErrorNumber kRefused = 0x80040400;
inline constexpr ErrorNumber kUnknownVersion = 0x80040423;

// One answer to one request.
struct Answer {
  int code = -1;
  std::string severity;
  std::string message;
  std::string id;  // requestID
  pugi::xml_node node;

  // The text at a path of elements inside the first record: "BillAddress/City".
  [[nodiscard]] std::string Value(const char* path) const {
    return node.first_child().first_element_by_path(path).text().get();
  }
  [[nodiscard]] bool Has(const char* path) const {
    return static_cast<bool>(node.first_child().first_element_by_path(path));
  }
  // One field of all records, in their order.
  [[nodiscard]] std::vector<std::string> All(const char* field) const {
    std::vector<std::string> values;
    for (const auto record : node.children()) values.emplace_back(record.child(field).text().get());
    return values;
  }
};

inline std::string Document(std::string_view requests, std::string_view tag = "3.0",
                            std::string_view onError = "continueOnError") {
  std::string text = "<?xml version=\"1.0\"?><?qbxml version=\"";
  text.append(tag).append("\"?><QBXML><QBXMLMsgsRq onError=\"").append(onError).append("\">");
  return text.append(requests).append("</QBXMLMsgsRq></QBXML>");
}

inline std::string SubscriptionDocument(std::string_view requests, std::string_view tag = "3.0") {
  std::string text = "<?xml version=\"1.0\"?><?qbxml version=\"";
  text.append(tag).append("\"?><QBXML><QBXMLSubscriptionMsgsRq>").append(requests);
  return text.append("</QBXMLSubscriptionMsgsRq></QBXML>");
}

inline std::string AddRequest(std::string_view fields) {
  return std::string("<CustomerAddRq requestID=\"1\"><CustomerAdd>")
      .append(fields)
      .append("</CustomerAdd></CustomerAddRq>");
}
inline std::string ModRequest(std::string_view fields) {
  return std::string("<CustomerModRq requestID=\"1\"><CustomerMod>")
      .append(fields)
      .append("</CustomerMod></CustomerModRq>");
}
inline std::string QueryRequest(std::string_view conditions) {
  return std::string("<CustomerQueryRq requestID=\"1\">").append(conditions).append("</CustomerQueryRq>");
}

// The number that a call raises; 0 when it raises nothing.
template <typename Call>
ErrorNumber NumberRaised(const Call& call) {
  try {
    call();
  } catch (const PlatformError& raised) {
    EXPECT_FALSE(raised.description().empty());
    return raised.number();
  }
  return 0;
}

class CompanyTest : public testing::Test {
 protected:
  // Makes another file in place of the one in use.
  void MakeFile(const CompanyOptions& options) {
    file_.reset();
    std::filesystem::remove(path_);
    CreateCompanyFile(path_, options, machine_);
    file_.emplace(path_, machine_);
  }

  void SetUp() override { MakeFile({}); }

  std::vector<Answer> SendAll(std::string_view requests, std::string_view tag = "3.0",
                              std::string_view onError = "continueOnError") {
    text_ = file_->Process(Document(requests, tag, onError));
    return ReadAnswers("QBXMLMsgsRs");
  }
  Answer Send(std::string_view request, std::string_view tag = "3.0") {
    const auto answers = SendAll(request, tag);
    EXPECT_EQ(answers.size(), 1U);
    return answers.front();
  }
  Answer Add(std::string_view fields, std::string_view tag = "3.0") { return Send(AddRequest(fields), tag); }
  Answer AddNamed(std::string_view name) { return Add(std::string("<Name>").append(name).append("</Name>")); }
  Answer AddJob(std::string_view name, std::string_view parent) {
    return Add(std::string("<Name>")
                   .append(name)
                   .append("</Name><ParentRef><FullName>")
                   .append(parent)
                   .append("</FullName></ParentRef>"));
  }
  // A Mod of the record under its present edit sequence.
  Answer Modify(const std::string& listId, std::string_view fields, std::string_view tag = "3.0") {
    const auto sequence = Send(QueryRequest("<ListID>" + listId + "</ListID>")).Value("EditSequence");
    return Send(ModRequest("<ListID>" + listId + "</ListID><EditSequence>" + sequence + "</EditSequence>" +
                           std::string(fields)),
                tag);
  }
  Answer Query(std::string_view conditions, std::string_view tag = "3.0") {
    return Send(QueryRequest(conditions), tag);
  }
  Answer ByName(std::string_view fullName) {
    return Query(std::string("<FullName>").append(fullName).append("</FullName>"));
  }
  ErrorNumber RefusalOf(std::string_view document) {
    return NumberRaised([&] { static_cast<void>(file_->Process(document)); });
  }
  ErrorNumber RefusalOfRequest(std::string_view requests, std::string_view tag = "3.0") {
    return RefusalOf(Document(requests, tag));
  }

  std::vector<Answer> ReadAnswers(const char* set) {
    EXPECT_TRUE(parsed_.load_string(text_.c_str(), pugi::parse_default | pugi::parse_ws_pcdata_single));
    std::vector<Answer> answers;
    for (const auto node : parsed_.child("QBXML").child(set).children()) {
      answers.push_back({.code = node.attribute("statusCode").as_int(-1),
                         .severity = node.attribute("statusSeverity").value(),
                         .message = node.attribute("statusMessage").value(),
                         .id = node.attribute("requestID").value(),
                         .node = node});
    }
    return answers;
  }

  TemporaryFolder folder_;
  std::string path_ = folder_ / "company.twq";
  TestMachine machine_;
  std::optional<CompanyFile> file_;
  std::string text_;           // the last answer as it came
  pugi::xml_document parsed_;  // the same; an Answer is good until the next one
};

}  // namespace twqb::company
