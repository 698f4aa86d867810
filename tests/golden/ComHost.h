// A host in another program, which reaches the library by COM: golden_host.exe of the build for Windows, under wine.
//
// The program takes orders on its standard input, one a line with tabs between words, and answers each on its standard
// output (tests/windows/GoldenHost.cpp). Behind its library stand late-bound doubles of ADO and of QuickBooks' session
// library on the files of the folder; the record comes from its seams.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/transport.h"
#include "tests/golden/ScenarioHost.h"

namespace twqb {

class ComHost : public ScenarioHost {
 public:
  // Starts the program that `command` runs, without orders yet. Throws std::runtime_error when that fails.
  ComHost(const HostOptions& options, const std::vector<std::string>& command);
  // Ends it; the test fails where its end is not that of a program that ended well.
  ~ComHost() override;
  ComHost(const ComHost&) = delete;
  ComHost& operator=(const ComHost&) = delete;

  void BeginObject() override;
  void EndObject() override;
  [[nodiscard]] bool HasObjects() const override;
  void Call(const HostCall& call) override;
  void Set(const HostWords& words) override;
  [[nodiscard]] std::string TakeRecord() override;

  // Opens the company file on its own, beside any object, and keeps it open to its end.
  void Hold(OpenMode mode);

  // Why the steps of a scenario can't be taken by such a host; empty when they can.
  [[nodiscard]] static std::string WhyNot(const std::string& steps);

 private:
  struct Parts;

  void Order(const HostWords& words);

  std::unique_ptr<Parts> parts_;
};

}  // namespace twqb
