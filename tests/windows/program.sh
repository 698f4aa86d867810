#!/usr/bin/env bash
# twqb of the build for Windows does what twqb here does: the same commands on the same firm, compared by what they print,
# by every call through every seam, and by the log.
#   program.sh TWQB BUILD-FOLDER-FOR-WINDOWS
set -euo pipefail
here=$1
built=$2
program=$built/hosts/cli/twqb.exe
. "$(dirname "${BASH_SOURCE[0]}")/Wine.sh"

# The sample firm has rows that look like records of QuickBooks' file, by which --strict sends nothing.
commands=("send all --strict" "send all" "get all --strict" "send clients" "balances" "status" "billing show" "company show"
  "list customers --all" "accounts" "settings list" "settings get GENERAL FIRST_TIME" "is-job none"
  "delete-billing clients NONE" "events on" "events status" "send nothing" "get all --company missing.twq")

clock=(--clock 2008-03-05T10:30:00 --bias 300 --seed 7)

# new_firm FOLDER PROGRAM...: in a new folder, on a clock that stands still.
new_firm() {
  mkdir "$work/$1"
  echo 'default yes' >"$work/$1/answers"
  (cd "$work/$1" && "${@:2}" "${clock[@]}" init --sample >init.out 2>&1)
}
# run FOLDER COMMAND PROGRAM...: a command there; what it prints, tells and records go to files with the command's name.
run() {
  local name=${2// /-}
  # shellcheck disable=SC2086  # a command is several words
  (cd "$work/$1" && "${@:3}" "${clock[@]}" --answers answers --transcript "$name.jsonl" $2 >"$name.out" 2>"$name.err") ||
    echo "status $?" >>"$work/$1/$name.out"
}

# Where a path is told, each system tells its own; by the path of BillingDb its message sets are told apart; and by the
# name of its provider a database is ADO's.
told() {
  sed -E "s#$work/(here|beside|late)#FOLDER#g; s#Z:$(sed 's#/#\\\\+#g' <<<"$work")\\\\+(there|late)#FOLDER#g
    s#FOLDER(/|\\\\+)#FOLDER/#g; s#TW[0-9A-F]{16}([AB])\b#OWNER\1#g; s#Provider=SQLOLEDB#Provider=SQLITE#g" "$1"
}
# same FILE [FOLDER FOLDER]
same() { diff <(told "$work/${2:-here}/$1") <(told "$work/${3:-there}/$1"); }

new_firm here "$here"
new_firm there wine "$program"
for command in "${commands[@]}"; do
  run here "$command" "$here"
  run there "$command" wine "$program"
done
for command in "${commands[@]}"; do
  file=${command// /-}
  check "\"twqb $command\" prints the same" same "$file.out"
  check "\"twqb $command\" tells the same on the way" same "$file.err"
  [ ! -e "$work/here/$file.jsonl" ] || check "\"twqb $command\" makes the same calls" same "$file.jsonl"
done
owners() { grep -ohE 'SetID=\\"TW[0-9A-F]{16}' "$work/$1"/*.jsonl | sed 's/.*TW//' | sort -u | wc -l; }
one_owner_each() { [ "$(owners here)" = 1 ] && [ "$(owners there)" = 1 ]; }
check "All message sets of a firm go under one owner" one_owner_each
check "The log has the same lines" same TWQBLog20083.txt
check "The first send moved something" grep -qE '^clients: +[0-9]+ added' "$work/there/send-all.out"

letters() { [ "$(cd "$work/there" && wine "$program" -C "$1" billing run -e "SELECT 'Größe', upper('x')" | tail -1)" = $'Größe\tX' ]; }
mkdir "$work/there/Bücher €"
check "A folder and an argument with letters of every kind are taken" sh -c \
  "cd '$work/there' && wine '$program' -C 'Bücher €' init && test -s 'Bücher €/billing.db'"
check "A statement goes in and comes out as it was written" letters "Bücher €"
check "A file that stands in the way is not overwritten" sh -c "cd '$work/there' && ! wine '$program' init"

# QuickBooks itself and a database of another maker: doubles stand in for them. Accounts stay out: their send waits, and
# QuickBooks' clock, which the double stops, is not told so.
export TWQB_DOUBLE_COMPANY TWQB_DOUBLE_CLOCK='2008-03-05T10:30:00 300' TWQB_DOUBLE_CALLBACK
TWQB_DOUBLE_COMPANY=$(there "$work/late/company.twq")
TWQB_DOUBLE_CALLBACK=$(there "$work/late/callback")
real=(wine "$program" --quickbooks --billing "Provider=SQLOLEDB;Data Source=$(there "$work/late/billing.db")")
new_firm beside "$here"
new_firm late "$here"
run late "status" "${real[@]}"
check "Without ADO a database of another maker can't be opened, and that is said" grep -q 'BillingDb: ' "$work/late/status.err"
run there "send vendors" wine "$program" --quickbooks
check "Without QuickBooks' session library a transfer fails, and that is said" \
  grep -q -- -2147024770 "$work/there/send-vendors.jsonl"
register_doubles "$built/tests/windows/doubles.dll"
real_commands=("send employees" "send vendors" "send clients" "send projects" "send activities" "send expensecodes"
  "send timeentries" "send invoices --strict" "send payments" "send expenselog" "get clients" "get invoices" "get payments"
  "get vendorbill" "send clients --strict" "status" "list customers --all" "is-job none" "settings list"
  "delete-billing clients NONE" "events on" "events status" "send nothing")
# A preview reads both sides whole, by their doubles, and changes nothing of them.
preview="send clients --preview"
cp "$work/late/company.twq" "$work/late/billing.db" "$work"
run beside "$preview" "$here"
run late "$preview" "${real[@]}"
check "\"twqb $preview\" says the same of QuickBooks itself" same "${preview// /-}.out" beside late
check "It tells that QuickBooks is being read" grep -q 'Reading QuickBooks as a whole' "$work/late/${preview// /-}.err"
check "It changes nothing" sh -c "cmp '$work/company.twq' '$work/late/company.twq' && cmp '$work/billing.db' '$work/late/billing.db'"
for command in "${real_commands[@]}"; do
  file=${command// /-}
  run beside "$command" "$here"
  run late "$command" "${real[@]}"
  check "\"twqb $command\" prints the same with QuickBooks itself" same "$file.out" beside late
  check "\"twqb $command\" tells the same on the way with QuickBooks itself" same "$file.err" beside late
  [ ! -e "$work/beside/$file.jsonl" ] ||
    check "\"twqb $command\" makes the same calls to QuickBooks itself" same "$file.jsonl" beside late
done
run late "send employees" "${real[@]}"
check "The call-back class is held still while a transfer runs, and given its mode back" \
  diff <(printf 'mode 3\nmode 0\n') <(tail -2 "$work/late/callback")
# refuses COMMAND WORDS: it ends with status 2 and says so.
refuses() {
  run late "$1" "${real[@]}"
  grep -q "$2" "$work/late/${1// /-}.err" && grep -qx 'status 2' "$work/late/${1// /-}.out"
}
for command in balances "company show" "company set permission withheld"; do
  check "\"twqb $command\" is refused with QuickBooks itself" refuses "$command" 'Leave --quickbooks out'
done
check "\"twqb billing show\" is refused with another maker's database" refuses "billing show" 'billing run -e SQL'
rows() { (cd "$work/late" && "$@" billing run -e "SELECT ClientID, QBLinkID, LastUpdated, Status FROM Client"); }
check "\"twqb billing run\" works on it" diff <(rows "$here") <(rows "${real[@]}")
conclude
