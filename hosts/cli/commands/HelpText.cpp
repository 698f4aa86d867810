#include "cli/commands/HelpText.h"

namespace twqb::cli {

std::string_view HelpText() {
  return R"(Usage: twqb [OPTIONS] COMMAND

Keeps a time-and-billing database (BillingDb) and a QuickBooks company file in
step. QuickBooks is stood in for by a company file of twqb's own.

Commands
  init [--sample [--size N]]   make the four files, empty or a sample firm
  send TABLE [--id ID]         send a table, or one record, to QuickBooks
  get TABLE [--id ID]          get a table, or one record, from QuickBooks
  send|get TABLE --preview     show what that would do; nothing is changed
  delete-billing TABLE ID      delete the record of BillingDb linked to ID
  delete-quickbooks TABLE ID   delete the record ID in QuickBooks
  events on | off | status     subscribe to QuickBooks events, or take it back
  deletions [TABLE] [--list]   what is gone on one side alone, asking for each
  backup [--list]              keep both sides and the settings as a set
  restore [SET]                put a set back, or one side of it, after asking
  undo                         take the last transfer back
  status [--deep]              how far each table is linked, when it went last
  balances                     what clients owe on both sides, compared
  link [TABLE] [--apply]       link rows to records that both sides have already
  check [TABLE]                what a send would refuse, cut or leave behind
  diff [TABLE] [ID]            in what linked pairs differ, whose side is taken
  list KIND [--all]            print a list of QuickBooks, such as customers
  accounts | is-job ID         its accounts; whether a customer is a job
  settings get SECTION KEY     print a setting (or set it, or list them)
  settings describe [WORD]     what settings there are, and what they do
  company run FILE | show      answer a qbXML document; what the file holds
  company bill INVOICE LINE    let an invoice take up a billable line
  company set NAME VALUE       how a connection to it is met
  billing run FILE | -e SQL    run SQL on BillingDb  (billing show: its tables)
  import TABLE FILE.csv        add the rows of a file to a table of BillingDb
  demo                         all of it on a sample firm in its own folder
  COMMAND --help               more about a command, with its options

Files (the defaults stand in the working folder)
  -C DIR                       work as if started in DIR; the log goes there too
  --billing CONNECT            "Provider=SQLITE;Data Source=FILE"   (billing.db)
  --company FILE               company file that is open (company.twq)
  --quickbooks                 on Windows: QuickBooks itself, not that file
  --settings FILE              settings (twqb.ini), or --settings-table
  --registry FILE              registry values of the user (registry.ini)

How a transfer runs (options may stand before or behind the command)
  --answers FILE               answer its questions: yes, no, retry ...
  --wait SECONDS               wait for a transfer on the same files to end
  --no-recovery                don't look for links that got lost
  --no-backup                  make no backup ahead of what is written
  --single-user  --no-progress  --leave-open
  --wide                       show tables whole, however wide the screen is
  --report FILE                send, get: each record and why, as JSON Lines
  --strict                     send, get: errors and refusals end with status 1
  --transcript FILE            record the run (--unmasked: passwords too)
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
