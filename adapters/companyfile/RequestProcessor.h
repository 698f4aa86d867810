// Carries out a document of requests against a company file and writes the answer: which forms the file takes, which
// request goes where, what happens after an error, and what becomes durable together.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/HostRequests.h"
#include "adapters/companyfile/RequestSet.h"
#include "platform/machine.h"

namespace twqb::company {

class RequestProcessor {
 public:
  // Neither is owned; both must outlive the processor.
  RequestProcessor(CompanyStore& store, Machine& machine, FileMode mode)
      : store_(store), machine_(machine), mode_(mode) {}

  // The answer, given once everything in it is durable. Raises `error::kParse` for a document that is refused as a
  // whole, one of another `kind` too, and then nothing of it is carried out.
  [[nodiscard]] std::string Process(std::string_view document, std::optional<messages::MessageSet> kind);

 private:
  // Raises for a request that the file does not carry out, or not in this form.
  void CheckRequests(const RequestSet& set) const;
  [[nodiscard]] bool KnowsHostQuery() const;
  void Carry(const messages::Form& form, const Request& request, Response& response);

  CompanyStore& store_;
  Machine& machine_;
  FileMode mode_;
};

}  // namespace twqb::company
