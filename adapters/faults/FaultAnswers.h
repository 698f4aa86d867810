// Requests that are answered by the script and not by QuickBooks.
//
// Such a request is taken out of its document; the rest goes on, and the scripted answer is put in at its place. So the
// library sees one answer of the usual form. The rest of both documents stays as it was, spelling of values included.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/faults/FaultScript.h"

namespace twqb::faults {

class FaultAnswers {
 public:
  explicit FaultAnswers(std::vector<StatusFault> statuses);

  // The answer to `document`, of requests or of subscription requests. `carryOut` is called at most once: not at all
  // when no request is left, and with the very document when none of its requests is at fault. After an answer of
  // severity Error in a set that stops on errors, the requests behind it are not carried out and answer 3231.
  // An answer that is no set of responses is given as it is.
  std::string Process(std::string_view document, const std::function<std::string(std::string_view)>& carryOut);

 private:
  struct Line {
    StatusFault fault;
    std::size_t seen = 0;
  };
  // Counts the request in every line of its name; the line that is due, or nullptr.
  const StatusFault* Count(std::string_view request);

  std::vector<Line> lines_;
};

}  // namespace twqb::faults
