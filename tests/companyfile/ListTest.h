// The fixture of tests over several kinds of lists: the company file's, with requests of any kind.
#pragma once

#include "CompanyTest.h"
#include "ListSamples.h"

namespace twqb::company {

class ListTest : public CompanyTest {
 protected:
  static std::string AddText(const std::string& kind, const std::string& fields) {
    return "<" + kind + "AddRq requestID=\"1\"><" + kind + "Add>" + fields + "</" + kind + "Add></" + kind + "AddRq>";
  }
  static std::string ModText(const std::string& kind, const std::string& fields) {
    return "<" + kind + "ModRq requestID=\"1\"><" + kind + "Mod>" + fields + "</" + kind + "Mod></" + kind + "ModRq>";
  }
  static std::string QueryText(const std::string& kind, const std::string& conditions) {
    return "<" + kind + "QueryRq requestID=\"1\">" + conditions + "</" + kind + "QueryRq>";
  }
  static std::string DelText(const std::string& kind, const std::string& listId) {
    return "<ListDelRq requestID=\"1\"><ListDelType>" + kind + "</ListDelType><ListID>" + listId +
           "</ListID></ListDelRq>";
  }
  static std::string Id(const std::string& listId) { return "<ListID>" + listId + "</ListID>"; }

  Answer AddTo(const std::string& kind, const std::string& fields) { return Send(AddText(kind, fields), tag_); }
  std::string AddId(const std::string& kind, const std::string& fields) {
    const auto answer = AddTo(kind, fields);
    EXPECT_EQ(answer.code, 0) << kind << fields << answer.message;
    return answer.Value("ListID");
  }
  std::string AddAccount(const std::string& name, const std::string& type) {
    return AddId("Account", "<Name>" + name + "</Name><AccountType>" + type + "</AccountType>");
  }
  Answer QueryOf(const std::string& kind, const std::string& conditions = {}) {
    return Send(QueryText(kind, conditions), tag_);
  }
  Answer Delete(const std::string& kind, const std::string& listId) { return Send(DelText(kind, listId), tag_); }
  // A Mod of the record under its present edit sequence.
  Answer ModifyIn(const std::string& kind, const std::string& listId, const std::string& fields) {
    const auto sequence = QueryOf(kind, Id(listId)).Value("EditSequence");
    return Send(ModText(kind, Id(listId) + "<EditSequence>" + sequence + "</EditSequence>" + fields), tag_);
  }
  void Set(std::string_view name, std::string_view value) {
    auto conditions = file_->GetConditions();
    ASSERT_TRUE(FindCondition(name)->set(conditions, value));
    file_->SetConditions(conditions);
  }

  std::string tag_ = "3.0";  // of the requests
};

}  // namespace twqb::company
