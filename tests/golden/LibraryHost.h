// A host of the library inside the test: bridge objects of one process over the files of a folder, recorded as the
// command line records its runs.
//
// For what the command line does not offer: several calls of one process, operations without a command, and a
// QuickBooks that changes while the library waits for an answer. Unlike the command line it has the call-back class.
// The files are made by others.
#pragma once

#include <memory>
#include <string>

#include "adapters/transcript/EventValue.h"
#include "tests/golden/ScenarioHost.h"

namespace twqb {

class LibraryHost : public ScenarioHost {
 public:
  // Composes the library; no other host may exist.
  explicit LibraryHost(const HostOptions& options);
  // Ends the objects, the last one first.
  ~LibraryHost() override;
  LibraryHost(const LibraryHost&) = delete;
  LibraryHost& operator=(const LibraryHost&) = delete;

  void BeginObject() override;
  void EndObject() override;
  [[nodiscard]] bool HasObjects() const override;
  // Besides the operations and properties it knows routines of the library that no operation shows alone.
  void Call(const HostCall& call) override;
  void Set(const HostWords& words) override;
  [[nodiscard]] std::string TakeRecord() override;

 private:
  EventValue Run(const HostWords& words);

  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace twqb
