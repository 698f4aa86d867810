// A document that is refused as a whole with a text that is published.
//
// Programs compare these texts, so each is the whole description of the error, and what was wrong with the document
// stands beside it, for people.
#pragma once

#include <string>
#include <string_view>

#include "platform/PlatformError.h"

namespace twqb::company {

class RefusedDocument : public PlatformError {
 public:
  RefusedDocument(ErrorNumber number, std::string_view detail);

  [[nodiscard]] const std::string& detail() const { return detail_; }

 private:
  std::string detail_;
};

// Throws with `error::kParse`: it is no document of published requests.
[[noreturn]] void RefuseDocument(std::string_view detail);
// Throws with `kUnknownVersion`: of a version that never was, or in a form that the file does not take.
[[noreturn]] void RefuseVersion(std::string_view detail);

}  // namespace twqb::company
