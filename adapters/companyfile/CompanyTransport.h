// The QuickBooks seam on an embedded company file: connection, session, open modes and their lock.
//
// It stands for a QuickBooks that has one file open, or none. What documents are answered is CompanyFile's.
#pragma once

#include <memory>
#include <string>

#include "platform/machine.h"
#include "platform/transport.h"

namespace twqb::company {

// Sessions raise, beyond what CompanyFile raises:
//   0x80040403  the file can't be opened
//   0x8004040A  a file is open in QuickBooks and another one is asked for
//   0x8004040D  a call without its connection or session, or one too many
//   0x80040410  another session holds the file in single-user mode, or holds it and single-user mode is asked for
//   0x80040416  no name is given and no file is open
class CompanyTransportFactory : public TransportFactory {
 public:
  // `openFile` is the path of the company file that QuickBooks has open; when nothing is there as a session begins,
  // QuickBooks has none open. `machine` must outlive every transport.
  CompanyTransportFactory(std::string openFile, Machine& machine) : openFile_(std::move(openFile)), machine_(machine) {}

  // The interface reports version 5.0. A transport that goes ends its session.
  std::unique_ptr<Transport> CreateTransport() override;

 private:
  std::string openFile_;
  Machine& machine_;
};

}  // namespace twqb::company
