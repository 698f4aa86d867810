#include "adapters/transcript/TranscriptSession.h"

#include <pugixml.hpp>
#include <string>
#include <utility>

#include "adapters/transcript/Recorded.h"
#include "platform/Forwarding.h"

namespace twqb::transcript {

namespace {

// The requests or responses of a document: the elements two steps below its root element. None for what is no XML.
template <typename Describe>
EventList DescribeMessages(std::string_view document, Describe describe) {
  EventList list;
  pugi::xml_document parsed;
  // A document that breaks off is described as far as it goes.
  parsed.load_buffer(document.data(), document.size(), pugi::parse_default, pugi::encoding_utf8);
  for (const auto message : parsed.document_element().first_child().children()) {
    if (message.type() == pugi::node_element) list.push_back(describe(message));
  }
  return list;
}

EventList RequestNames(std::string_view document) {
  return DescribeMessages(document, [](pugi::xml_node request) { return EventValue(request.name()); });
}

EventList StatusCodes(std::string_view document) {
  return DescribeMessages(document, [](pugi::xml_node response) {
    const auto code = response.attribute("statusCode");
    return code ? EventValue(code.as_int()) : EventValue(nullptr);
  });
}

class TranscriptTransport : public ForwardingTransport {
 public:
  TranscriptTransport(std::unique_ptr<Transport> inner, TranscriptWriter& writer)
      : ForwardingTransport(std::move(inner)), writer_(writer) {}

  InterfaceVersion GetVersion() override {
    return Record(
        writer_, "session", Operation("GetVersion"), [&] { return ForwardingTransport::GetVersion(); },
        [](EventFields& event, const InterfaceVersion& version) {
          event["result"] = EventList{version.major, version.minor, version.releaseLevel, version.releaseNumber};
        });
  }
  void OpenConnection(std::string_view applicationId, std::string_view applicationName) override {
    Record(writer_, "session", Operation("OpenConnection", {applicationId, applicationName}),
           [&] { ForwardingTransport::OpenConnection(applicationId, applicationName); });
  }
  void BeginSession(std::string_view fileName, OpenMode mode) override {
    Record(writer_, "session", Operation("BeginSession", {fileName, static_cast<int>(mode)}),
           [&] { ForwardingTransport::BeginSession(fileName, mode); });
  }
  std::string GetCurrentCompanyFileName() override {
    return Record(
        writer_, "session", Operation("GetCurrentCompanyFileName"),
        [&] { return ForwardingTransport::GetCurrentCompanyFileName(); },
        [](EventFields& event, const std::string& name) { event["result"] = name; });
  }
  void EndSession() override {
    Record(writer_, "session", Operation("EndSession"), [&] { ForwardingTransport::EndSession(); });
  }
  void CloseConnection() override {
    Record(writer_, "session", Operation("CloseConnection"), [&] { ForwardingTransport::CloseConnection(); });
  }

  std::string ProcessDocument(std::string_view document) override {
    return Exchange(document, [&] { return ForwardingTransport::ProcessDocument(document); });
  }
  std::string ProcessSubscription(std::string_view document) override {
    return Exchange(document, [&] { return ForwardingTransport::ProcessSubscription(document); });
  }

  static EventFields Operation(std::string_view name, EventList arguments = {}) {
    return {{"operation", name}, {"arguments", std::move(arguments)}};
  }

 private:
  template <typename Function>
  std::string Exchange(std::string_view document, Function call) {
    writer_.Write("request", {{"requests", RequestNames(document)}, {"xml", document}});
    return Record(writer_, "response", {}, call, [](EventFields& event, const std::string& answer) {
      event["statuses"] = StatusCodes(answer);
      event["xml"] = answer;
    });
  }

  TranscriptWriter& writer_;
};

}  // namespace

std::unique_ptr<Transport> TranscriptTransportFactory::CreateTransport() {
  auto transport = Record(writer_, "session", TranscriptTransport::Operation("CreateTransport"),
                          [&] { return inner_.CreateTransport(); });
  return std::make_unique<TranscriptTransport>(std::move(transport), writer_);
}

}  // namespace twqb::transcript
