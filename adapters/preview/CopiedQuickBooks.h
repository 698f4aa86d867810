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

// What was done to a copy by way of the seam.
struct CopyNotes {
  const ScratchFile* opened = nullptr;  // the file of the last session
  TouchedRecords touched;
};

class CopiedQuickBooks : public TransportFactory {
 public:
  // `inner` is to have the copy open of what QuickBooks has open. Both must outlive every transport.
  CopiedQuickBooks(TransportFactory& inner, ScratchFiles& files) : inner_(inner), files_(files) {}

  std::unique_ptr<Transport> CreateTransport() override;

  [[nodiscard]] const CopyNotes& Notes() const { return notes_; }

 private:
  class CopiedTransport;

  TransportFactory& inner_;
  ScratchFiles& files_;
  CopyNotes notes_;
};

}  // namespace twqb::preview
