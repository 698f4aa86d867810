#include "adapters/snapshot/CompanySnapshot.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/companyfile/QueryForAll.h"
#include "adapters/companyfile/RecordIntake.h"
#include "messages/Schema.h"
#include "messages/StatusCodes.h"
#include "messages/ValueFormat.h"
#include "platform/PlatformError.h"

namespace twqb::snapshot {

namespace {

using messages::Country;
using messages::Form;

constexpr ErrorNumber kUnknownVersion = 0x80040423;  // how an edition turns down another's form

// Kinds that company files here don't keep, and those of theirs that they share names with.
struct OtherKind {
  std::string_view name;
  std::string_view sharesNamesWith;
};
constexpr std::array kOtherKinds = {OtherKind{"OtherName", "Customer"},
                                    OtherKind{"ItemDiscount", "ItemService"},
                                    OtherKind{"ItemSubtotal", "ItemService"},
                                    OtherKind{"ItemFixedAsset", "ItemService"},
                                    OtherKind{"ItemInventoryAssembly", "ItemService"},
                                    OtherKind{"ItemSalesTaxGroup", "ItemService"}};

// The response to the one request of a document.
class Answer {
 public:
  Answer() = default;
  // The answer of a kind is long: it is read where it is.
  explicit Answer(std::string text) : text_(std::make_unique<std::string>(std::move(text))) {
    const auto parsed = document_.load_buffer_inplace(
        text_->data(), text_->size(),
        pugi::parse_minimal | pugi::parse_escapes | pugi::parse_eol | pugi::parse_ws_pcdata_single | pugi::parse_cdata,
        pugi::encoding_utf8);
    isWhole_ = static_cast<bool>(parsed) && Code() >= 0;
  }
  // Not so of one that breaks off: what it has is not all.
  [[nodiscard]] bool IsWhole() const { return isWhole_; }
  [[nodiscard]] pugi::xml_node Response() const { return document_.child("QBXML").child("QBXMLMsgsRs").first_child(); }
  [[nodiscard]] int Code() const { return Response().attribute("statusCode").as_int(-1); }
  [[nodiscard]] std::string Message() const { return Response().attribute("statusMessage").value(); }

 private:
  std::unique_ptr<std::string> text_;
  pugi::xml_document document_;
  bool isWhole_ = false;
};

[[noreturn]] void Refuse(std::string_view what, std::string_view why) {
  throw SnapshotError(fmt::format("QuickBooks can't be read: it does not tell {}. {}", what, why));
}

template <typename Call>
auto Called(std::string_view what, const Call& call) {
  try {
    return call();
  } catch (const PlatformError& raised) {
    Refuse(what, raised.description());
  }
}

class CompanyReader {
 public:
  CompanyReader(Transport& session, const Watch& watch) : session_(session), watch_(watch) {}

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
  // Asks in each country's form until one is answered, as a transfer does.
  company::CompanyOptions ReadHost() {
    for (const auto country : {Country::US, Country::CA, Country::UK, Country::AU}) {
      form_ = {.country = country};
      watch_("the edition");
      std::optional<Answer> answer;
      try {
        answer.emplace(Send("which edition it is", "<HostQueryRq/>"));
      } catch (const PlatformError& raised) {
        if (raised.number() == kUnknownVersion || raised.number() == error::kParse) continue;
        Refuse("which edition it is", raised.description());
      }
      if (answer->Code() != status::kOk) Refuse("which edition it is", answer->Message());
      auto options = OptionsOf(answer->Response().first_child(), country);
      // Australia has no other documents of its own.
      if (country == Country::AU) form_ = {};
      return options;
    }
    throw SnapshotError("QuickBooks can't be read: this edition of it answers none of the messages that twqb knows.");
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
    const auto answer = AskIfKnown("its preferences", "<PreferencesQueryRq/>");
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
    for (const auto& [kind, answer] : read) intake.Lay(*kind, answer.Response());
    for (const auto& [name, sharesNamesWith] : kOtherKinds) {
      const auto answer =
          AskIfKnown(name, fmt::format("<{0}QueryRq><ActiveStatus>All</ActiveStatus></{0}QueryRq>", name));
      if (answer) intake.LayNames(name, company::FindListKind(sharesNamesWith)->nameSpace, answer->Response());
    }
  }

  // All of a kind with its lines and links; nothing where there are none, and of a kind that this edition does not
  // have.
  std::optional<Answer> AskForAll(std::string_view kind, company::RecordIntake& intake) {
    const auto question = company::QueryForAll(kind, form_);
    if (question.empty()) return std::nullopt;
    auto answer = Ask(kind, question);
    const auto code = answer.Code();
    if (code == status::kOk) return answer;
    // A feature that is off, or what this user may not see: a transfer hears the same.
    if (status::IsOfClosedKind(code)) {
      intake.Refuse(kind, code, answer.Message());
    } else if (code != status::kFoundNothing) {
      snapshot::Refuse(kind, answer.Message());
    }
    return std::nullopt;
  }

  // What no form here knows, this edition's may not know either: then the document is none to it. Nothing for what it
  // does not tell.
  std::optional<Answer> AskIfKnown(std::string_view what, const std::string& request) {
    watch_(what);
    try {
      auto answer = Send(what, request);
      if (answer.Code() == status::kOk) return answer;
    } catch (const PlatformError& raised) {
      if (raised.number() != error::kParse) Refuse(what, raised.description());
    }
    return std::nullopt;
  }

  Answer Ask(std::string_view what, const std::string& request) {
    watch_(what);
    return Called(what, [&] { return Send(what, request); });
  }

  Answer Send(std::string_view what, const std::string& request) {
    Answer answer(session_.ProcessDocument(Enveloped(request)));
    if (!answer.IsWhole()) Refuse(what, "Its answer breaks off, or is none.");
    return answer;
  }

  [[nodiscard]] std::string Enveloped(const std::string& request) const {
    return fmt::format(
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<?qbxml version=\"{}\"?>\n"
        "<QBXML><QBXMLMsgsRq onError=\"continueOnError\">{}</QBXMLMsgsRq></QBXML>",
        messages::FormTag(form_), request);
  }

  Transport& session_;
  const Watch& watch_;
  Form form_;
};

}  // namespace

void ReadCompany(Transport& session, const std::string& path, Machine& machine, const Watch& watch) {
  CompanyReader(session, watch).ReadInto(path, machine);
}

}  // namespace twqb::snapshot
