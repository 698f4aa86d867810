// The QuickBooks seam on snapshots of QuickBooks itself: a session begins there as it would, is read whole and ends,
// and what comes behind it goes to a copy of what was read.
//
// So which company file is opened, and how a session is refused, is as in a run without copies. Nothing but questions
// reaches QuickBooks itself. A snapshot that can't be taken is no error of the run: it passes through to the host.
#pragma once

#include <memory>

#include "adapters/preview/CopiedQuickBooks.h"
#include "adapters/preview/ScratchFiles.h"
#include "adapters/preview/Snapshots.h"
#include "platform/machine.h"
#include "platform/transport.h"

namespace twqb::preview {

class SnapshotQuickBooks : public TransportFactory {
 public:
  // All must outlive every transport. `machine` is the run's.
  SnapshotQuickBooks(TransportFactory& itself, Snapshots& snapshots, ScratchFiles& files, Machine& machine)
      : itself_(itself), snapshots_(snapshots), files_(files), machine_(machine) {}

  std::unique_ptr<Transport> CreateTransport() override;

  [[nodiscard]] const CopyNotes& Notes() const { return notes_; }

 private:
  class SnapshotTransport;

  TransportFactory& itself_;
  Snapshots& snapshots_;
  ScratchFiles& files_;
  Machine& machine_;
  CopyNotes notes_;
};

}  // namespace twqb::preview
