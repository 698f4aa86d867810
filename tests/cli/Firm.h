// The sample firm in a folder of its own, moved by the program at hours of one day, and QuickBooks' own account of it.
//
// For tests that compare what the two sides hold. What they make of it is theirs.
#pragma once

#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "Program.h"

namespace twqb::cli {

class Firm : public testing::Test {
 protected:
  explicit Firm(std::string country = "US");

  // One table, or all; every question is answered Yes. The transcript is named for the verb and the hour.
  Ended Run(const std::string& verb, const std::string& table, int hour,
            const std::vector<std::string>& options = {}) const;
  // All tables; the test fails unless the run is done.
  void Transfer(const std::string& verb, int hour) const;
  std::string Transcript(const std::string& verb, int hour) const;

  std::string Scalar(const std::string& statement) const { return folder_.Scalar(statement); }
  void Sql(const std::string& statements) const { folder_.Done({"billing", "run", "-e", statements}); }
  // The rows that a statement answers, in fields.
  std::vector<std::vector<std::string>> Rows(const std::string& statement) const;

  // Calls `take` with each record of the kind that QuickBooks answers to its query with `fields`.
  template <typename Take>
  void ForEachRecord(const std::string& kind, const std::string& fields, Take take) const {
    pugi::xml_document document;
    const auto answer = AnswerOfQuickBooks("<" + kind + "QueryRq>" + fields + "</" + kind + "QueryRq>");
    ASSERT_TRUE(document.load_string(answer.c_str())) << answer;
    const auto response = document.child("QBXML").child("QBXMLMsgsRs").first_child();
    // The range keeps the pointer alone.
    const auto name = kind + "Ret";
    for (const auto& record : response.children(name.c_str())) take(record);
  }

  std::string country_;
  WorkFolder folder_;

 private:
  std::string AnswerOfQuickBooks(const std::string& request) const;
};

}  // namespace twqb::cli
