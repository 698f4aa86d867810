#include "adapters/snapshot/CompanySnapshot.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <pugixml.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/companyfile/QueryForAll.h"
#include "adapters/companyfile/RecordIntake.h"
#include "adapters/snapshot/Questions.h"
#include "messages/Schema.h"
#include "messages/StatusCodes.h"
#include "messages/ValueFormat.h"
#include "platform/PlatformError.h"

namespace twqb::snapshot {

namespace {

using messages::Country;

template <typename Call>
auto Called(std::string_view what, const Call& call) {
  try {
    return call();
  } catch (const PlatformError& raised) {
    RefuseUntold(what, raised.description());
  }
}

class CompanyReader {
 public:
  CompanyReader(Transport& session, const Watch& watch)
      : session_(session), watch_(watch), questions_(session, watch) {}

  void ReadInto(const std::string& path, Machine& machine) {
    const auto options = ReadHost();
    company::CompanyConditions conditions;
    watch_("the version");
    conditions.interfaceVersion = Called("its version", [&] { return session_.GetVersion(); });
    ReadClosingDate(conditions);
    company::RecordIntake intake(path, options, machine);
    ReadLists(intake);
    for (const auto& kind : company::TxnKinds()) {
      if (const auto answer = AskForAll(kind.name, intake)) intake.Lay(kind, answer->Response());
    }
    intake.Finish(conditions);
  }

 private:
  company::CompanyOptions ReadHost() {
    const auto host = questions_.AskHost();
    return OptionsOf(host.answer.Response().first_child(), host.answered);
  }

  static company::CompanyOptions OptionsOf(pugi::xml_node host, Country answered) {
    company::CompanyOptions options;
    options.country = messages::CountryFromName(host.child_value("Country")).value_or(answered);
    const std::string_view version = host.child_value("MajorVersion");
    std::from_chars(version.data(), version.data() + version.size(), options.hostVersion);
    const auto accept = [&](Country country) {
      if (std::ranges::find(options.accepts, country) == options.accepts.end()) options.accepts.push_back(country);
    };
    for (const auto tag : host.children("SupportedQBXMLVersion")) {
      if (const auto form = messages::FormFromTag(tag.child_value())) accept(form->country);
    }
    accept(answered);
    return options;
  }

  // A QuickBooks that tells no preferences has none that matters here.
  void ReadClosingDate(company::CompanyConditions& conditions) {
    const auto answer = questions_.AskIfKnown("its preferences", "<PreferencesQueryRq/>");
    if (!answer) return;
    const auto accounting = answer->Response().first_child().child("AccountingPreferences");
    const std::string date = accounting.child_value("ClosingDate");
    if (messages::ParseDateText(date)) conditions.closingDate = date;
  }

  void ReadLists(company::RecordIntake& intake) {
    std::vector<std::pair<const company::ListKind*, Answer>> read;
    for (const auto& kind : company::ListKinds()) {
      auto answer = AskForAll(kind.name, intake);
      if (!answer) continue;
      intake.Announce(kind, answer->Response());
      read.emplace_back(&kind, *std::move(answer));
    }
    std::vector<std::pair<const company::ListKind*, Answer>> told;
    for (const auto& kind : company::ToldKinds()) {
      auto answer = questions_.AskIfKnown(
          kind.name, fmt::format("<{0}QueryRq><ActiveStatus>All</ActiveStatus></{0}QueryRq>", kind.name));
      if (!answer) continue;
      intake.AnnounceTold(kind, answer->Response());
      told.emplace_back(&kind, *std::move(answer));
    }
    for (const auto& [kind, answer] : read) intake.Lay(*kind, answer.Response());
    for (const auto& [kind, answer] : told) intake.LayTold(*kind, answer.Response());
  }

  // All of a kind with its lines and links; nothing where there are none, and of a kind that this edition does not
  // have.
  std::optional<Answer> AskForAll(std::string_view kind, company::RecordIntake& intake) {
    const auto question = company::QueryForAll(kind, questions_.Form());
    if (question.empty()) return std::nullopt;
    auto answer = questions_.Ask(kind, question);
    const auto code = answer.Code();
    if (code == status::kOk) return answer;
    // A feature that is off, or what this user may not see: a transfer hears the same.
    if (status::IsOfClosedKind(code)) {
      intake.Refuse(kind, code, answer.Message());
    } else if (code != status::kFoundNothing) {
      RefuseUntold(kind, answer.Message());
    }
    return std::nullopt;
  }

  Transport& session_;
  const Watch& watch_;
  Questions questions_;
};

}  // namespace

void ReadCompany(Transport& session, const std::string& path, Machine& machine, const Watch& watch) {
  CompanyReader(session, watch).ReadInto(path, machine);
}

}  // namespace twqb::snapshot
