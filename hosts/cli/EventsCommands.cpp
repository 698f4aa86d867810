#include "cli/Commands.h"
#include "cli/Operations.h"

namespace twqb::cli {

namespace {

ExitStatus Subscribe(const Options& options, bool subscribe) {
  const std::string label = subscribe ? "events on" : "events off";
  return RunOperation(options,
                      {.name = "SubscribeToQBEvents",
                       .arguments = {subscribe},
                       .run = [=](CTWQBBridge& bridge) { return bridge.SubscribeToQBEvents(subscribe); }},
                      {.done = label + ": done", .failed = label + ": failed"});
}

ExitStatus Ask(const Options& options) {
  return RunOperation(options,
                      {.name = "IsSubscribedToQBEvents",
                       .arguments = nlohmann::ordered_json::array(),
                       .run = [](CTWQBBridge& bridge) { return bridge.IsSubscribedToQBEvents(); }},
                      {.done = "subscribed", .failed = "not subscribed"});
}

void AddSwitch(CLI::App& group, Command& chosen, const char* name, const char* text, bool subscribe) {
  group.add_subcommand(name, text)->callback([subscribe, &chosen] {
    chosen = [subscribe](const Options& options) { return Subscribe(options, subscribe); };
  });
}

}  // namespace

void AddEventsCommands(CLI::App& app, Command& chosen) {
  auto* group = app.add_subcommand("events", "Subscribe to what happens in QuickBooks, or take it back");
  group->require_subcommand(1);
  group->footer(
      "A subscription stands in the company file and names the call-back class of the billing product, which\n"
      "QuickBooks tells of changes and of its menu items. It needs a host version of 13 or later.");
  AddSwitch(*group, chosen, "on", "Subscribe; a subscription that is there already stays", true);
  AddSwitch(*group, chosen, "off", "Take the subscription back; one that is not there is fine", false);
  auto* status = group->add_subcommand("status", "Tell whether it is there; status 1 when it is not");
  status->callback([&chosen] { chosen = Ask; });
}

}  // namespace twqb::cli
