// Carries out a document of requests against a company file and writes the answer: which forms the file takes, which
// request goes where, what happens after an error, and what becomes durable together.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/HostRequests.h"
#include "adapters/companyfile/Macros.h"
#include "adapters/companyfile/RequestSet.h"
#include "platform/machine.h"

namespace twqb::company {

// What lasts from one document of a program to the next.
struct ProgramSession {
  std::string application;  // the name that the program gave itself
  Macros macros = {};
};

class RequestProcessor {
 public:
  // None is owned; all must outlive the processor.
  RequestProcessor(CompanyStore& store, Machine& machine, FileMode mode, ProgramSession& session)
      : store_(store), machine_(machine), mode_(mode), session_(session) {}

  // The answer, given once everything in it is durable. Raises `error::kParse` for a document that is refused as a
  // whole, one of another `kind` too, and then nothing of it is carried out.
  [[nodiscard]] std::string Process(std::string_view document, std::optional<messages::MessageSet> kind);

 private:
  // Raises for a request that the file does not carry out, or not in this form.
  void CheckRequests(const RequestSet& set) const;
  [[nodiscard]] bool KnowsHostQuery() const;
  // The answers to the requests, one after the other.
  [[nodiscard]] std::string CarryOut(const RequestSet& set, Macros& macros);
  void Carry(const messages::Form& form, const Request& request, Macros& macros, Response& response);

  CompanyStore& store_;
  Machine& machine_;
  FileMode mode_;
  ProgramSession& session_;
};

}  // namespace twqb::company
