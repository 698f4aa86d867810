// A platform of fakes behind a transcript, and the lines that it writes.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "../faults/SeamFakes.h"
#include "adapters/transcript/Transcript.h"
#include "adapters/transcript/TranscriptWriter.h"

namespace twqb {

class Transcript : public testing::Test {
 protected:
  // The lines since the last look, without "seq".
  std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    std::istringstream in(out_.str());
    for (std::string line; std::getline(in, line);) {
      const auto comma = line.find(',');
      EXPECT_EQ(line.substr(0, comma), "{\"seq\":" + std::to_string(++seen_));
      lines.push_back("{" + line.substr(comma + 1));
    }
    out_.str("");
    return lines;
  }
  std::string Line() {
    const auto lines = Lines();
    EXPECT_EQ(lines.size(), 1U);
    return lines.empty() ? "" : lines.front();
  }
  void RaiseNext(ErrorNumber number, std::string description) {
    fakes_.notes.raiseNext = PlatformError(number, std::move(description));
  }

  fakes::FakePlatform fakes_;
  std::ostringstream out_;
  TranscriptWriter writer_{out_};
  TranscriptPlatform transcript_{fakes_.Seams(), writer_};
  Platform platform_ = transcript_.Decorated();

 private:
  int seen_ = 0;
};

}  // namespace twqb
