#include "cli/commands/Commands.h"
#include "cli/runs/Operations.h"

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
                       .arguments = {},
                       .run = [](CTWQBBridge& bridge) { return bridge.IsSubscribedToQBEvents(); },
                       .sides = Sides::Read},
                      {.done = "subscribed", .failed = "not subscribed"});
}

CommandSyntax Switch(std::string_view name, std::string_view text, bool subscribe) {
  return {
      .name = name, .text = text, .run = [subscribe](const Options& options) { return Subscribe(options, subscribe); }};
}

}  // namespace

CommandSyntax EventsCommand() {
  return {.name = "events",
          .text = "Subscribe to what happens in QuickBooks, or take it back",
          .footer =
              "A subscription stands in the company file and names the call-back class of the billing product, which\n"
              "QuickBooks tells of changes and of its menu items. It needs a host version of 13 or later.",
          .commands = {Switch("on", "Subscribe; a subscription that is there already stays", true),
                       Switch("off", "Take the subscription back; one that is not there is fine", false),
                       {.name = "status", .text = "Tell whether it is there; status 1 when it is not", .run = Ask}}};
}

}  // namespace twqb::cli
