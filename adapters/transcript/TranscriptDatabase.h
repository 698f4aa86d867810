// The database seam with its events: connect, disconnect, sql, row.
#pragma once

#include <memory>

#include "platform/ado.h"

namespace twqb {
class TranscriptWriter;
}

namespace twqb::transcript {

class TranscriptProvider : public ado::Provider {
 public:
  // Both must outlive the provider and every connection of it.
  TranscriptProvider(ado::Provider& inner, TranscriptWriter& writer) : inner_(inner), writer_(writer) {}
  std::unique_ptr<ado::Connection> CreateConnection() override;

 private:
  ado::Provider& inner_;
  TranscriptWriter& writer_;
};

}  // namespace twqb::transcript
