#!/usr/bin/env bash
# A first month in an office that has both sides already: fifty clients in BillingDb, of which QuickBooks has twenty-five
# under slightly other names, with changes on both sides, a deletion, a clash of names, a phase that moves, and a mistake
# that is taken back. Each step shows what is going to happen, does it, and shows what was done; the end counts.
#
# usage: month.sh [TWQB]     the program; "twqb" where it is left out
#
# It works in a folder of its own, which stays (TMPDIR says where). Status 1: something is not as it should be.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
twqb=${1:-twqb}
folder=$(mktemp -d "${TMPDIR:-/tmp}/twqb-office-XXXXXX")
cd "$folder"
failed=0

title() { printf '\n%s\n%s\n' "$1" "$(printf '%*s' ${#1} '' | tr ' ' '-')"; }
say() { printf '%s\n' "$@"; }
# Shows a command and runs it; progress is left out, and where there is much to see the end of it is shown.
run() { printf '\n$ twqb %s\n' "$*"; "$twqb" "$@" --no-progress 2>&1; }
shows() { local lines=$1; shift; run "$@" | tail -n "$lines"; }
sql() { "$twqb" billing run -e "$1" 2>/dev/null | tail -n +2; }
# One request of QuickBooks' own; its answer.
quickbooks() {
  printf '<?xml version="1.0"?><?qbxml version="3.0"?><QBXML><QBXMLMsgsRq onError="stopOnError">%s</QBXMLMsgsRq></QBXML>' \
    "$1" >request.xml
  "$twqb" company run request.xml 2>/dev/null
}
field() { sed -n "/<$1>/{s/.*<$1>\([^<]*\)<\/$1>.*/\1/p;q}" <<<"$2"; }
# Changes a field of the customer of that identifier, as the bookkeeper would.
change_there() {
  local answer
  answer=$(quickbooks "<CustomerQueryRq><ListID>$1</ListID></CustomerQueryRq>")
  quickbooks "<CustomerModRq><CustomerMod><ListID>$1</ListID><EditSequence>$(field EditSequence "$answer")</EditSequence>$2</CustomerMod></CustomerModRq>" >/dev/null
}
expect() {
  if [ "$2" = "$3" ]; then return; fi
  printf 'NOT AS IT SHOULD BE: %s is %s, not %s\n' "$1" "$2" "$3"
  failed=1
}
link_of() { sql "SELECT QBLinkID FROM Client WHERE ClientID = '$1'"; }
customers() { "$twqb" list customers --all 2>/dev/null | tail -n +2 | wc -l; }

title "The two sides, as they are"
"$twqb" init >/dev/null 2>&1
"$twqb" billing run "$here/billing.sql" >/dev/null 2>&1
"$twqb" company run "$here/company.xml" >/dev/null 2>&1
"$twqb" settings set GENERAL FIRST_TIME False >/dev/null 2>&1
printf 'default yes\n' >yes.txt
say "In $folder."
shows 5 status
expect "the number of customers and jobs" "$(customers)" 28

title "What would go wrong: a clash of names"
shows 4 check clients
say "" "A supplier has the name that the client would get. The bookkeeper calls the supplier by what it sells."
vendor=$(quickbooks "<VendorQueryRq><FullName>Saratoga Print Shop (SARATOGA)</FullName></VendorQueryRq>")
quickbooks "<VendorModRq><VendorMod><ListID>$(field ListID "$vendor")</ListID><EditSequence>$(field EditSequence "$vendor")</EditSequence><Name>Saratoga Print Shop, paper</Name></VendorMod></VendorModRq>" >/dev/null
shows 1 check clients

title "Who is on both sides already"
run link clients | grep -v '^    '
say "" "The names at the desk are the right ones, so they are to count as newer. The near ones are confirmed."
shows 2 link clients --apply --keep billing --answers yes.txt
expect "the number of linked clients" "$(sql "SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''")" 25

title "The first send"
say "Beforehand:"
shows 2 send clients --preview
say "" "And done:"
shows 2 send clients
shows 2 send projects
expect "the number of customers and jobs" "$(customers)" 57

title "Changes on both sides"
say "Some days go by: what stands at the desk is older than what is changed from now on."
sql "UPDATE Client SET LastUpdated = datetime('now', '-1 hour')" >/dev/null
sleep 1
sql "UPDATE Client SET ClientPhone = '518-555-0199', LastUpdated = datetime('now', '+1 minute') WHERE ClientID = 'BARTON'" >/dev/null
change_there "$(link_of FINCH)" "<Phone>518-555-0114 x2</Phone>"
sql "UPDATE Client SET ClientEmail = 'old@gateshudson.example', LastUpdated = '2007-12-01 12:00:00' WHERE ClientID = 'GATES'" >/dev/null
change_there "$(link_of GATES)" "<Email>new@gateshudson.example</Email>"
run diff clients | grep -A 4 -E '^clients (BARTON|FINCH|GATES)' || true
shows 2 send clients
shows 2 get clients
expect "the telephone of FINCH at the desk" "$(sql "SELECT ClientPhone FROM Client WHERE ClientID = 'FINCH'")" 5185550114x2
expect "the telephone of BARTON in QuickBooks" \
  "$(field Phone "$(quickbooks "<CustomerQueryRq><ListID>$(link_of BARTON)</ListID></CustomerQueryRq>")")" "(518)-555-0199"
expect "the e-mail of GATES at the desk" "$(sql "SELECT ClientEmail FROM Client WHERE ClientID = 'GATES'")" \
  "new@gateshudson.example"

title "A deletion"
quickbooks "<ListDelRq><ListDelType>Customer</ListDelType><ListID>$(link_of TIVOLI)</ListID></ListDelRq>" >/dev/null
say "The bookkeeper has deleted Tivoli Books, who never came back. The desk is asked, and agrees."
shows 3 deletions clients --list
shows 2 deletions clients --answers yes.txt
expect "the number of clients" "$(sql "SELECT COUNT(*) FROM Client WHERE ClientID = 'TIVOLI'")" 0

title "A phase that moves"
say "The plans are for the marina, and stand under the library. QuickBooks keeps a job where it is: the preview says so."
sleep 1
sql "UPDATE Project SET ProjectID = 'MARINA:PLANS', ProjectCode = 'MARINA', ClientID = 'STILL', ParentProjectID = 'MARINA:', LastUpdated = datetime('now', '+1 minute') WHERE ProjectID = 'LIBRARY:PLANS'" >/dev/null
run send projects --preview | grep -A 6 'PLANS' || true
shows 2 send projects
expect "the number of jobs called PLANS" "$(quickbooks "<CustomerQueryRq></CustomerQueryRq>" | grep -o '<Name>[^<]*PLANS[^<]*</Name>' | wc -l)" 1

title "A mistake, taken back"
sleep 1
sql "UPDATE Client SET ClientPhone = '', LastUpdated = datetime('now', '+2 minutes')" >/dev/null
say "Somebody has cleared all telephones, and sent them."
shows 2 send clients
shows 12 undo
expect "the telephone of ALDEN in QuickBooks" \
  "$(field Phone "$(quickbooks "<CustomerQueryRq><ListID>$(link_of ALDEN)</ListID></CustomerQueryRq>")")" "(716)-555-0101"
say "" "What was cleared at the desk comes back from QuickBooks, which is asked for all of it."
"$twqb" settings set QBGET_ Customers_OptMostRecent False >/dev/null 2>&1
shows 2 get clients
expect "the telephone of ALDEN at the desk" "$(sql "SELECT ClientPhone FROM Client WHERE ClientID = 'ALDEN'")" "7165550101"

title "At the end"
shows 5 status --deep
expect "the number of customers and jobs" "$(customers)" 56
expect "the number of clients whose record another one has" \
  "$(sql "SELECT COUNT(*) - COUNT(DISTINCT QBLinkID) FROM Client WHERE QBLinkID <> ''")" 0
expect "names in QuickBooks that are there twice but for case" \
  "$(quickbooks "<CustomerQueryRq></CustomerQueryRq>" | grep -o '<Name>[^<]*</Name>' | tr 'A-Z' 'a-z' | sort | uniq -d | wc -l)" 0
if [ "$failed" -ne 0 ]; then exit 1; fi
say "" "Nothing is there twice, and nothing is lost."
