#include "ScenarioSteps.h"

#include <fmt/format.h>

#include <stdexcept>
#include <string>

namespace twqb::sweep {

namespace {

// Carries one request out.
void Ask(TestHouse& house, const std::string& request) {
  const auto answer = house.Company(request);
  if (answer.find("statusCode=\"0\"") == std::string::npos) throw std::runtime_error(answer);
}

}  // namespace

void AddCustomer(TestHouse& house, std::string_view fields) {
  Ask(house, fmt::format("<CustomerAddRq><CustomerAdd>{}</CustomerAdd></CustomerAddRq>", fields));
}

void ChangeCustomer(TestHouse& house, std::string_view fullName, std::string_view fields) {
  const auto answer =
      house.Company(fmt::format("<CustomerQueryRq><FullName>{}</FullName></CustomerQueryRq>", fullName));
  constexpr std::string_view kTag = "<EditSequence>";
  const auto from = answer.find(kTag) + kTag.size();
  Ask(house, fmt::format("<CustomerModRq><CustomerMod><ListID>{}</ListID><EditSequence>{}</EditSequence>{}"
                         "</CustomerMod></CustomerModRq>",
                         house.ListIdOf(fullName), answer.substr(from, answer.find('<', from) - from), fields));
}

void TransferNow(TestHouse& house, const Scenario& scenario) {
  house.Enter();
  if (!RunTransfers(house, scenario)) throw std::runtime_error("the transfer beforehand failed");
}

}  // namespace twqb::sweep
