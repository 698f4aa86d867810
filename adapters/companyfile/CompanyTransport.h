// The QuickBooks seam on an embedded company file: connection, session, open modes and their lock.
//
// It stands for a QuickBooks that has one file open, or none. What documents are answered is CompanyFile's.
#pragma once

#include <memory>
#include <string>

#include "platform/machine.h"
#include "platform/transport.h"

namespace twqb::company {

// A session raises at its beginning, in the order in which it looks, beyond what CompanyFile raises:
//   0x8004040D  a call without its connection or session, or one too many (so do the other calls)
//   0x80040416  no name is given and no file is open
//   0x80040406  the file named is missing, is none, or has a newer format
//   0x80040403  the same of the file that is open
//   0x8004040A  a file is open in QuickBooks and another one is asked for
//   0x80040414  a dialog is open in QuickBooks
//   0x80040418  permission for the file is withheld
//   0x8004041D  the file is not open in QuickBooks, and automatic logon is withheld
//   0x80040410  another session holds the file in single-user mode, or holds it and single-user mode is asked for
class CompanyTransportFactory : public TransportFactory {
 public:
  // `openFile` is the path of the company file that QuickBooks has open; when nothing is there as a session begins,
  // QuickBooks has none open. `machine` must outlive every transport.
  CompanyTransportFactory(std::string openFile, Machine& machine) : openFile_(std::move(openFile)), machine_(machine) {}

  // The interface reports the version that stands in the open file, and 5.0 when none is open. Closing a connection
  // that was never opened does nothing. A transport that goes ends its session.
  std::unique_ptr<Transport> CreateTransport() override;

 private:
  std::string openFile_;
  Machine& machine_;
};

}  // namespace twqb::company
