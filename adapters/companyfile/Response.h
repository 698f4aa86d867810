// The answer to one request, written at the end of the answer to its set.
#pragma once

#include <string>

#include "adapters/companyfile/RequestSet.h"
#include "adapters/companyfile/Status.h"

namespace twqb::company {

class Response {
 public:
  // Writes to `out`, which it shares with the other answers of the set.
  Response(std::string& out, const Request& request)
      : out_(out), request_(request), name_(std::string(request.name).append("Rs")) {}

  // Writes the status. Called once, before any content.
  void Begin(const Status& status);
  // Where the content goes, behind the status.
  [[nodiscard]] std::string& Content() { return out_; }
  // Closes the answer. Nothing is written behind it.
  void End();
  // Begin and End of an answer without content.
  void Answer(const Status& status);

  [[nodiscard]] bool HasBegun() const { return begun_; }
  [[nodiscard]] bool Failed() const { return failed_; }

 private:
  std::string& out_;
  const Request& request_;
  std::string name_;
  bool begun_ = false;
  bool failed_ = false;
};

}  // namespace twqb::company
