#include "Events.h"

#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

namespace twqb::cli {

std::vector<Event> LinesOf(std::string_view text) {
  std::vector<Event> events;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    const auto parsed = nlohmann::json::parse(line);
    Event event;
    for (const auto& [name, value] : parsed.items()) {
      event[name] = value.is_string() ? value.get<std::string>() : value.dump();
    }
    events.push_back(std::move(event));
  }
  return events;
}

std::vector<Event> EventsOf(std::string_view transcript, std::string_view kind) {
  auto events = LinesOf(transcript);
  std::erase_if(events, [&](const Event& event) { return event.at("kind") != kind; });
  return events;
}

}  // namespace twqb::cli
