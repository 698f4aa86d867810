#include "cli/HelpText.h"

namespace twqb::cli {

std::string_view HelpText() {
  return R"(Usage: twqb [OPTIONS] COMMAND

Keeps a time-and-billing database (BillingDb) and a QuickBooks company file in
step. QuickBooks is stood in for by a company file of twqb's own.

Commands
  init [--sample [--size N]]   make billing.db, company.twq, twqb.ini, registry.ini
  send TABLE [--id ID]         send a table, or one record, to QuickBooks
  get TABLE [--id ID]          get a table, or one record, from QuickBooks
  delete-billing TABLE ID      delete the record of BillingDb linked to ID
  delete-quickbooks TABLE ID   delete the record ID in QuickBooks
  events on | off | status     subscribe to QuickBooks events, or take it back
  status                       how far each table is linked, when it went last
  balances                     what clients owe on both sides, and why it differs
  list KIND [--all]            print a list of QuickBooks: customers, invoices ...
  accounts | is-job ID         its accounts; whether a customer is a job
  settings get SECTION KEY     print a setting    (set SECTION KEY VALUE, or list)
  company run FILE | show      answer a qbXML document; what the file holds
  company bill INVOICE LINE    let an invoice take up a billable line
  company set NAME VALUE       how a connection to it is met: permission, dialog ...
  billing run FILE | -e SQL    run SQL on BillingDb  (billing show: its tables)
  demo                         all of it on a sample firm, in a folder of its own
  COMMAND --help               more about a command, with its options

Files (the defaults stand in the working folder)
  -C DIR                       work as if started in DIR; the log goes there too
  --billing CONNECT            "Provider=SQLITE;Data Source=FILE"   (billing.db)
  --company FILE               company file that QuickBooks has open (company.twq)
  --quickbooks                 on Windows: QuickBooks itself in that file's place
  --settings FILE              settings (twqb.ini), or --settings-table: in BillingDb
  --registry FILE              registry values of the user (registry.ini)

How a transfer runs (options may stand before or behind the command)
  --answers FILE               answer its questions: yes, no, retry, default yes ...
  --wait SECONDS               wait for another transfer on the same files to end
  --no-recovery                don't look for links that got lost
  --single-user  --no-progress  --leave-open
  --report FILE                send, get: each record and why, as JSON Lines
  --strict                     send, get: errors and refusals end with status 1
  --transcript FILE            record the run as JSON Lines (--unmasked: passwords too)
  --faults FILE                let calls fail as the file tells
  --clock TIME                 stop the clock (--bias, --daylight-bias, --daylight,
                               --seed: time zone and random numbers)

Examples
  twqb demo
  twqb init --sample && twqb send clients
  twqb billing run -e "SELECT ClientID, QBLinkID FROM Client" --json

Exit status: 0 done, 1 failed or refused (with --strict, also done with errors
or refusals), 2 wrong usage or a file that can't be used, 3 a question without an
answer, 128 and its number when a signal ended it. A transfer ends with what
became of each table's records. Results go to standard output; progress and
questions to standard error.
)";
}

}  // namespace twqb::cli
