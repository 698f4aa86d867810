#include "adapters/companyfile/RequestProcessor.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <utility>

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/Forms.h"
#include "adapters/companyfile/ListRequests.h"
#include "adapters/companyfile/MessageSetMemory.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/RefusedDocument.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/SubscriptionRequests.h"
#include "adapters/companyfile/TxnRequests.h"
#include "adapters/companyfile/XmlText.h"

namespace twqb::company {

namespace {

using messages::Country;

// Bytes of a set's answer, behind which no further query is carried out: a document of thousands of queries for
// everything must not fill the memory. One query alone is always answered whole.
constexpr std::size_t kMostAnswered = std::size_t{64} << 20U;

enum class Verb : std::uint8_t {
  QueryHost,
  QuerySubscription,
  ChangeSubscription,
  Add,
  Modify,
  Query,
  DeleteListRecord,
  DeleteTxn,
  DisplayTxn,
  None,  // published, but not carried out here
};

struct Operation {
  Verb verb;
  const ListKind* kind = nullptr;    // of a list request
  const TxnKind* txnKind = nullptr;  // of a request for transactions
  const JointList* joint = nullptr;  // of a query for several kinds of lists
  [[nodiscard]] bool Writes() const {
    return verb != Verb::QueryHost && verb != Verb::QuerySubscription && verb != Verb::Query &&
           verb != Verb::DisplayTxn && verb != Verb::None;
  }
};

struct VerbName {
  std::string_view name;
  Verb verb;
};
constexpr std::array kTxnVerbs = {VerbName{"Add", Verb::Add}, VerbName{"Query", Verb::Query}};
constexpr std::array kListVerbs = {VerbName{"Add", Verb::Add}, VerbName{"Mod", Verb::Modify},
                                   VerbName{"Query", Verb::Query}};

Operation OperationOf(const messages::Message& message) {
  if (message.name == "HostQuery") return Operation{Verb::QueryHost};
  if (message.name == "SubscriptionQuery") return Operation{Verb::QuerySubscription};
  if (message.set == messages::MessageSet::Subscription) return Operation{Verb::ChangeSubscription};
  if (message.name == "ListDel") return Operation{Verb::DeleteListRecord};
  if (message.name == "TxnDel") return Operation{Verb::DeleteTxn};
  if (message.name == "TxnDisplayMod") return Operation{Verb::DisplayTxn};
  for (const auto& verb : kTxnVerbs) {
    if (!message.name.ends_with(verb.name)) continue;
    const auto* kind = FindTxnKind(message.name.substr(0, message.name.size() - verb.name.size()));
    if (kind != nullptr) return Operation{.verb = verb.verb, .txnKind = kind};
  }
  for (const auto& kind : ListKinds()) {
    if (!message.name.starts_with(kind.name)) continue;
    const auto rest = message.name.substr(kind.name.size());
    const auto* verb = std::ranges::find(kListVerbs, rest, &VerbName::name);
    if (verb != kListVerbs.end()) return Operation{verb->verb, &kind};
  }
  constexpr std::string_view kQuery = "Query";
  if (message.name.ends_with(kQuery)) {
    const auto* joint = FindJointList(message.name.substr(0, message.name.size() - kQuery.size()));
    if (joint != nullptr) return Operation{.verb = Verb::Query, .joint = joint};
  }
  return Operation{Verb::None};
}

Operation FindOperation(const messages::Message& message) {
  // Found out once: it follows from tables that never change.
  static std::mutex mutex;
  static std::unordered_map<const messages::Message*, Operation> known;
  const std::lock_guard lock(mutex);
  const auto found = known.find(&message);
  return found != known.end() ? found->second : known.emplace(&message, OperationOf(message)).first->second;
}

Operation FindOperation(const Request& request) {
  return request.message == nullptr ? Operation{Verb::None} : FindOperation(*request.message);
}

// Empty of what is about several kinds, or none.
std::string_view KindOf(const Operation& operation, const Request& request) {
  switch (operation.verb) {
    case Verb::DeleteListRecord:
      return ChildText(request.node, "ListDelType");
    case Verb::DeleteTxn:
      return ChildText(request.node, "TxnDelType");
    case Verb::DisplayTxn:
      return ChildText(request.node, "TxnDisplayModType");
    default:
      break;
  }
  if (operation.txnKind != nullptr) return operation.txnKind->name;
  return operation.kind != nullptr ? operation.kind->name : std::string_view{};
}

bool Accepts(const CompanyOptions& options, Country country) {
  return std::ranges::find(options.accepts, country) != options.accepts.end();
}

// Australia's form is that of the host query and of nothing else: its other requests come in the US form, its
// subscriptions in Canada's.
bool Accepts(const CompanyOptions& options, Country country, Verb verb) {
  const bool subscription = verb == Verb::QuerySubscription || verb == Verb::ChangeSubscription;
  if (subscription && country == Country::CA && Accepts(options, Country::AU)) return true;
  if (verb == Verb::QueryHost) return Accepts(options, country);
  if (country == Country::AU) return false;
  return Accepts(options, country) || (country == Country::US && Accepts(options, Country::AU));
}

std::string Enveloped(const RequestSet& set, const SetAnswer& answer) {
  const auto setName = std::string(SetName(set.Kind())).append("Rs");
  constexpr std::size_t kEnvelope = 256;  // bytes, and more than what stands around the elements
  std::string text;
  text.reserve(answer.elements.size() + kEnvelope);
  text.append("<?xml version=\"1.0\" ?>");
  AppendOpenTag(text, "QBXML");
  text.append("<").append(setName);
  if (!answer.newId.empty()) AppendAttribute(text, "newMessageSetID", answer.newId);
  if (answer.code) AppendAttribute(text, "messageSetStatusCode", std::to_string(*answer.code));
  text.append(">").append(answer.elements);
  AppendCloseTag(text, setName);
  AppendCloseTag(text, "QBXML");
  return text;
}

[[noreturn]] void RefuseForm(const RequestSet& set, std::string_view what) {
  RefuseVersion(
      fmt::format("This company data file does not take {} in \"{}\".", what, messages::FormTag(set.GetForm())));
}

bool WritesAnything(const RequestSet& set) {
  return std::ranges::any_of(set.Requests(), [](const Request& request) { return FindOperation(request).Writes(); });
}

}  // namespace

std::string RequestProcessor::Process(std::string_view document, std::optional<messages::MessageSet> kind) {
  const RequestSet set(document, kind, FormsOf(store_.Options().accepts));
  CheckRequests(set);
  // Reads in the transaction, so that it takes no locks of its own.
  std::optional<MessageSetMemory> memory;
  auto macros = session_.macros;
  std::optional<SetAnswer> answer;
  bool runs = false;
  {
    using Purpose = SqliteTransaction::Purpose;
    const bool writes = WritesAnything(set) || set.Attributes().Any();
    auto transaction = store_.Begin(writes ? Purpose::Write : Purpose::Read);
    memory.emplace(store_, session_.application, set, machine_);
    answer = memory->AnswerWithoutRunning();
    runs = !answer;
    if (runs) answer = memory->Finish(CarryOut(set, macros));
    transaction.Commit();
  }
  if (runs) memory->RememberAfterwards(*answer);
  session_.macros = std::move(macros);
  return Enveloped(set, *answer);
}

std::string RequestProcessor::CarryOut(const RequestSet& set, Macros& macros) {
  std::string answers;
  bool stopped = false;
  for (const auto& request : set.Requests()) {
    Response response(answers, request);
    const bool isTooMuch = answers.size() > kMostAnswered && FindOperation(request).verb == Verb::Query;
    if (stopped || isTooMuch) {
      response.Answer(status::NotProcessed());
    } else if (request.refusal) {
      response.Answer(*request.refusal);
    } else {
      Carry(set.GetForm(), request, macros, response);
    }
    stopped = stopped || (response.Failed() && set.GetOnError() == OnError::Stop);
  }
  return answers;
}

void RequestProcessor::CheckRequests(const RequestSet& set) const {
  const auto country = set.GetForm().country;
  // A set without requests is taken in any form that one with requests could have.
  if (set.Requests().empty() && !Accepts(store_.Options(), country, Verb::Query) &&
      !Accepts(store_.Options(), country, Verb::QueryHost)) {
    RefuseForm(set, "an empty set");
  }
  for (const auto& request : set.Requests()) {
    const auto verb = FindOperation(request).verb;
    if (verb == Verb::QueryHost && !KnowsHostQuery()) {
      RefuseDocument(fmt::format("The request {} is not known.", request.node.name()));
    }
    if (!Accepts(store_.Options(), country, verb)) RefuseForm(set, request.node.name());
  }
}

bool RequestProcessor::KnowsHostQuery() const { return store_.ReadConditions().hostQuery != HostAnswer::Unknown; }

void RequestProcessor::Carry(const messages::Form& form, const Request& request, Macros& macros, Response& response) {
  const auto operation = FindOperation(request);
  if (operation.verb == Verb::None) return response.Answer(status::UnsupportedMessage(request.node.name()));
  if (operation.verb == Verb::QueryHost) return QueryHost(store_, mode_, form, request, response);

  try {
    macros.Resolve(request.node);
  } catch (const Refused& refused) {
    return response.Answer(refused.status);
  }
  const auto clock = ReadClock(machine_);
  if (request.message->set == messages::MessageSet::Subscription) {
    return CarrySubscription(store_, clock, request, response);
  }
  const auto kind = KindOf(operation, request);
  if (const auto refusal = kind.empty() ? std::nullopt : store_.FindRefusal(kind)) return response.Answer(*refusal);
  if (operation.verb == Verb::DeleteListRecord) return DeleteRecord(store_, clock, request, response);
  if (operation.verb == Verb::DeleteTxn) return DeleteTxn(store_, clock, request, response);
  if (operation.verb == Verb::DisplayTxn) return DisplayTxn(store_, request, response);
  if (operation.txnKind != nullptr) {
    const TxnContext context{
        .store = store_, .kind = *operation.txnKind, .form = form, .clock = clock, .macros = macros};
    return operation.verb == Verb::Add ? AddTxn(context, request, response) : QueryTxns(context, request, response);
  }
  if (operation.joint != nullptr) {
    // Who may not see one of them does not see all.
    for (const auto name : operation.joint->kinds) {
      if (const auto refusal = store_.FindRefusal(name)) return response.Answer(*refusal);
    }
    return QueryRecords({.store = store_, .list = *operation.joint, .form = form, .clock = clock}, request, response);
  }
  const ListContext context{.store = store_, .kind = *operation.kind, .form = form, .clock = clock};
  switch (operation.verb) {
    case Verb::Add:
      return AddRecord(context, request, response);
    case Verb::Modify:
      return ModifyRecord(context, request, response);
    default:
      return QueryRecords(context, request, response);
  }
}

}  // namespace twqb::company
