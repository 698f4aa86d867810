// The record of a run as JSON Lines: one event a line, in order, each with "seq" (from 1) and "kind" first.
//
// The writer numbers, masks and writes; it knows the form of a line and of a value, and no event. Lines are flushed one
// by one, so that the record of a run that dies holds all that happened before.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include "adapters/transcript/EventValue.h"
#include "adapters/transcript/Masking.h"

namespace twqb {

class TranscriptWriter {
 public:
  // How every transcript begins.
  static constexpr std::string_view kBeginning = R"({"seq":1,"kind":")";

  // `out` must outlive the writer.
  explicit TranscriptWriter(std::ostream& out, Masking masking = Masking::Masked);
  TranscriptWriter(const TranscriptWriter&) = delete;
  TranscriptWriter& operator=(const TranscriptWriter&) = delete;

  // Writes one event; `fields` follow "seq" and "kind" in their order. Bytes that are no
  // UTF-8 come out as U+FFFD. A failure to write does not raise, since the run that is recorded must not change by it.
  void Write(std::string_view kind, const EventFields& fields);

  // False once a line could not be written.
  [[nodiscard]] bool Good() const;

 private:
  std::ostream& out_;
  Masking masking_;
  std::int64_t seq_ = 0;
};

// Fields as one JSON object, without an end of line. Bytes that are no UTF-8 come out as U+FFFD.
[[nodiscard]] std::string JsonLine(const EventFields& fields);

}  // namespace twqb
