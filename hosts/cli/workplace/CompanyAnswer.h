// What QuickBooks answers to one request, asked of the company file by itself: no session, no library, no transcript.
//
// For commands that look at both sides beside the link. It knows the envelope of a document and no request.
#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>

#include "adapters/companyfile/CompanyFile.h"
#include "messages/Schema.h"
#include "platform/machine.h"

namespace twqb::cli {

// Raises std::runtime_error with QuickBooks' words when it refuses a record of the sample firm.
void RequireTaken(pugi::xml_node response);

// The form in which the file takes documents.
[[nodiscard]] messages::Form FormOf(company::CompanyFile& file);

// QuickBooks has answered, and has not done what was asked.
class RefusedByQuickBooks : public std::runtime_error {
 public:
  RefusedByQuickBooks(std::int32_t code, std::string words);

  [[nodiscard]] std::int32_t Code() const { return code_; }
  [[nodiscard]] const std::string& Words() const { return words_; }

 private:
  std::int32_t code_;
  std::string words_;
};

class CompanyAnswer {
 public:
  // Asks in the form given; raises RefusedByQuickBooks. Finding nothing is no refusal.
  CompanyAnswer(company::CompanyFile file, const messages::Form& form, const std::string& request);
  // The same in the American form.
  CompanyAnswer(const std::string& company, Machine& machine, const std::string& request);

  // The only response; its children are the records.
  [[nodiscard]] pugi::xml_node Response() const;

 private:
  pugi::xml_document document_;
};

}  // namespace twqb::cli
