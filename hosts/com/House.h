// What stands behind the library's seams in a host's process.
//
// The desk is the screen, the machine Windows. BillingDb is what the connection string names: SQLITE and JETLITE are
// the embedded engine. QuickBooks is QuickBooks' own session library, unless the file TWQBClient90.ini beside the
// library names a company file of the embedded kind: section QUICKBOOKS, key CompanyFile.
#pragma once

namespace twqb::windows {
class QbfcTransportFactory;
}

namespace twqb::com {

// Composes the library, once in a process; later calls do nothing.
void Compose();

// QuickBooks' session library as the other side; null where that is another, and ahead of Compose.
[[nodiscard]] windows::QbfcTransportFactory* SessionLibrary();

}  // namespace twqb::com
