#include "Books.h"

#include <fmt/core.h>

#include <stdexcept>
#include <string>

namespace twqb::sweep {

namespace {

std::string Ask(TestHouse& house, const std::string& request) {
  auto answer = house.Company(request);
  if (answer.find("statusCode=\"0\"") == std::string::npos) throw std::runtime_error(answer);
  return answer;
}

std::string ValueOf(std::string_view answer, std::string_view element) {
  const auto tag = fmt::format("<{}>", element);
  const auto from = answer.find(tag) + tag.size();
  return std::string(answer.substr(from, answer.find('<', from) - from));
}

std::string Read(TestHouse& house, std::string_view kind, std::string_view fullName) {
  return Ask(house, fmt::format("<{0}QueryRq><FullName>{1}</FullName></{0}QueryRq>", kind, fullName));
}

std::string Add(TestHouse& house, std::string_view kind, std::string_view fields) {
  return Ask(house, fmt::format("<{0}AddRq><{0}Add>{1}</{0}Add></{0}AddRq>", kind, fields));
}

}  // namespace

void AddRecord(TestHouse& house, std::string_view kind, std::string_view fields) { (void)Add(house, kind, fields); }

void AddItem(TestHouse& house, std::string_view kind, std::string_view name, std::string_view account) {
  AddRecord(house, kind,
            fmt::format("<Name>{}</Name><SalesOrPurchase><AccountRef><FullName>{}</FullName></AccountRef>"
                        "</SalesOrPurchase>",
                        name, account));
}

std::string AddTransaction(TestHouse& house, std::string_view kind, std::string_view fields) {
  return ValueOf(Add(house, kind, fields), "TxnID");
}

void ChangeRecord(TestHouse& house, std::string_view kind, std::string_view fullName, std::string_view fields) {
  const auto answer = Read(house, kind, fullName);
  (void)Ask(house, fmt::format("<{0}ModRq><{0}Mod><ListID>{1}</ListID><EditSequence>{2}</EditSequence>{3}"
                               "</{0}Mod></{0}ModRq>",
                               kind, ValueOf(answer, "ListID"), ValueOf(answer, "EditSequence"), fields));
}

std::string IdOf(TestHouse& house, std::string_view kind, std::string_view fullName) {
  return ValueOf(Read(house, kind, fullName), "ListID");
}

void TransferNow(TestHouse& house, const Scenario& scenario) {
  house.Enter();
  if (!RunTransfers(house, scenario)) throw std::runtime_error("the transfer beforehand failed");
}

}  // namespace twqb::sweep
