// Questions to QuickBooks through its seam, a document each, in the form of the edition that answers.
//
// Which edition that is has to be asked first. Whoever asks knows the requests, and what an answer's status means to
// it; how a document is enveloped and what is no whole answer is known here.
#pragma once

#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "adapters/snapshot/Snapshot.h"
#include "messages/Schema.h"
#include "platform/transport.h"

namespace twqb::snapshot {

// The response to the one request of a document.
class Answer {
 public:
  Answer() = default;
  // The answer of a kind is long: it is read where it is.
  explicit Answer(std::string text);
  // Not so of one that breaks off: what it has is not all.
  [[nodiscard]] bool IsWhole() const { return isWhole_; }
  [[nodiscard]] pugi::xml_node Response() const;
  [[nodiscard]] int Code() const { return Response().attribute("statusCode").as_int(-1); }
  [[nodiscard]] std::string Message() const { return Response().attribute("statusMessage").value(); }

 private:
  std::unique_ptr<std::string> text_;
  pugi::xml_document document_;
  bool isWhole_ = false;
};

// Raises the SnapshotError of something that QuickBooks does not tell.
[[noreturn]] void RefuseUntold(std::string_view what, std::string_view why);

class Questions {
 public:
  // `session` has begun, and both must outlive the object.
  Questions(Transport& session, const Watch& watch) : session_(session), watch_(watch) {}

  struct Host {
    messages::Country answered = messages::Country::US;
    Answer answer;
  };
  // Asks in each country's form until one is answered, as a transfer does; what is asked behind it has that form.
  [[nodiscard]] Host AskHost();
  [[nodiscard]] const messages::Form& Form() const { return form_; }

  // All raise SnapshotError for an answer that is none; a call that fails raises it, too, or, where it is sent,
  // PlatformError.
  [[nodiscard]] Answer Ask(std::string_view what, const std::string& request);
  // What no form here knows, this edition's may not know either: then the document is none to it. Nothing for what it
  // does not tell.
  [[nodiscard]] std::optional<Answer> AskIfKnown(std::string_view what, const std::string& request);
  [[nodiscard]] Answer Send(std::string_view what, const std::string& request);

 private:
  [[nodiscard]] std::string Enveloped(const std::string& request) const;

  Transport& session_;
  const Watch& watch_;
  messages::Form form_;
};

}  // namespace twqb::snapshot
