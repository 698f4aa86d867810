#include "tests/golden/Expectation.h"

#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

namespace twqb {

std::optional<Subject> SubjectNamed(std::string_view word) {
  if (word == "progress") return Subject::Progress;
  if (word == "settings") return Subject::Settings;
  return std::nullopt;
}

std::optional<Subject> SubjectOf(const std::string& event) {
  const auto fields = nlohmann::json::parse(event);
  const auto& kind = fields.at("kind");
  // The choice of a vendor is a form as well, and a question of the run.
  if (kind == "form" && fields.at("form") == "msgForm") return Subject::Progress;
  if (kind == "setting" || kind == "registry") return Subject::Settings;
  return std::nullopt;
}

std::vector<std::string> ComparedLines(const std::string& text) {
  constexpr std::string_view kNumber = "{\"seq\":";
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with(kNumber)) line.replace(0, line.find(',') + 1, "{");
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> LinesThroughCom(const std::string& text) {
  static const std::regex kExit(R"(^(\{"kind":"step".*),"exit":[0-9]+\})");
  auto lines = ComparedLines(text);
  std::erase_if(lines, [](const auto& line) { return line.starts_with(R"({"kind":"screen")"); });
  for (auto& line : lines) line = std::regex_replace(line, kExit, "$1}");
  return lines;
}

}  // namespace twqb
