// The QuickBooks seam on copies of company files: a session opens the copy of the file that it asks for.
//
// For a QuickBooks that opens files by their paths, as the embedded one does. It tells the names of the files
// themselves, and notes which records a run adds, changes and deletes.
#pragma once

#include <memory>
#include <optional>

#include "adapters/preview/ScratchFiles.h"
#include "adapters/preview/TouchedRecords.h"
#include "platform/transport.h"

namespace twqb::preview {

class CopiedQuickBooks : public TransportFactory {
 public:
  // `inner` is to have the copy open of what QuickBooks has open. Both must outlive every transport.
  CopiedQuickBooks(TransportFactory& inner, ScratchFiles& files) : inner_(inner), files_(files) {}

  std::unique_ptr<Transport> CreateTransport() override;

  // The file of the last session; nothing while there was none.
  [[nodiscard]] const ScratchFile* Opened() const { return notes_.opened; }
  [[nodiscard]] const TouchedRecords& Touched() const { return notes_.touched; }

 private:
  struct Notes {
    const ScratchFile* opened = nullptr;
    TouchedRecords touched;
  };
  class CopiedTransport;

  TransportFactory& inner_;
  ScratchFiles& files_;
  Notes notes_;
};

}  // namespace twqb::preview
