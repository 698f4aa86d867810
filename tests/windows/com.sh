#!/usr/bin/env bash
# TWQBClient90.dll as hosts load it: registered, called by script and by slots, on the sample firm, with boxes that are
# pressed; compared with what twqb here does on the same firm.
#   com.sh TWQB BUILD-FOLDER-FOR-WINDOWS
set -euo pipefail
here=$1
built=$2
tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$tests/Wine.sh"
# Windows without a display; what has begun already has none at all.
wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null
shut_down
boot

library=$work/lib
mkdir "$library"
cp "$built/hosts/com/TWQBClient90.dll" "$library"

# opened NAME: the embedded QuickBooks has the company file of that firm open.
opened() { printf '[QUICKBOOKS]\r\nCompanyFile=%s\r\n' "$(there "$work/$1/company.twq")" >"$library/TWQBClient90.ini"; }
# in_folder NAME: a new firm, whose company file is open.
in_folder() {
  mkdir "$work/$1"
  "$here" -C "$work/$1" init --sample >/dev/null
  opened "$1"
  wine reg add 'HKCU\SOFTWARE\OFS\TW80' /v Database /d "$(there "$work/$1/billing.db")" /f >/dev/null
}

# pressing ORDERS COMMAND...: runs it while boxes are pressed; what they said goes to $work/boxes.
pressing() {
  local orders=$1 status=0
  shift
  rm -f "$work/stop" "$work/boxes"
  # shellcheck disable=SC2086  # orders are words
  wine "$built/tests/windows/presser.exe" "$(there "$work/boxes")" "$(there "$work/stop")" $orders &
  local presser=$!
  # It looks on once its file is there.
  for _ in $(seq 1200); do
    [ ! -e "$work/boxes" ] && kill -0 "$presser" 2>/dev/null || break
    sleep 0.05
  done
  if [ -e "$work/boxes" ]; then
    "$@" || status=$?
  else
    echo "FAILED  presser.exe does not look for boxes, so that this was not run: $*" >&2
    status=1
  fi
  touch "$work/stop"
  wait "$presser" || { echo "FAILED  presser.exe ended with status $?" >&2; status=1; }
  return "$status"
}

# host FILE ORDERS COMMAND...: a host runs while boxes are pressed by these orders; what it says goes to the file. That it
# has ended as a program that ends well is looked at once all hosts have run: one that dies while it lets go of the library
# has said all by then.
hosts=0
badly_ended=()
host() {
  local file=$work/$1 status=0
  shift
  pressing "$@" >"$file" 2>"$work/err" || status=$?
  hosts=$((hosts + 1))
  [ "$status" = 0 ] || badly_ended+=("status $status: ${*:2}" "$(head -20 "$work/err")")
}
all_ended_well() { [ ${#badly_ended[@]} = 0 ] || { printf '%s\n' "${badly_ended[@]}"; return 1; }; }

not() { ! "$@"; }

script() { wine cscript //nologo "$(there "$1")" "${@:2}" | tr -d '\r'; }
# classes NAME: what the registry holds of classes, of the machine and of the user.
classes() {
  local whose
  for whose in HKLM HKCU; do
    wine reg export "$whose\Software\Classes" "$(there "$work/exported")" /y >/dev/null 2>&1 || continue
    iconv -f UTF-16 -t UTF-8 "$work/exported" >"$work/$1.$whose"
  done
}

# What the script host itself registers when it is first used is none of the library's.
echo >"$work/nothing.vbs"
script "$work/nothing.vbs"
# Every user has that; here it is made by the first who writes there.
wine reg add 'HKCU\Software\Classes\CLSID' /f >/dev/null
classes before
check "The library registers itself" wine regsvr32 /s "$(there "$library/TWQBClient90.dll")"
check "The class is found by its name" \
  wine reg query 'HKLM\Software\Classes\TWQBClient90.CTWQBBridge\CLSID'

check "What hosts have bound to is as it has always been" \
  wine "$built/tests/windows/types_host.exe" "$(there "$library/TWQBClient90.dll")"

# By script.
in_folder script
"$here" -C "$work/script" settings set GENERAL FIRST_TIME False
cat >"$work/expected" <<'TEXT'
customers 14, with those that are inactive 15
version 16 US Boolean
Boolean Double Date String Long
no middle name: True, a fax: (413) 555-0197
accounts True, rows 3, columns True, String
once more True
no such field: 1B6
behind the last: BB9
too few arguments: 1C2
wrong type: D
not to be set: True
no array: True
TEXT
host got "" script "$tests/script.vbs" "$(there "$work/script")"
check "A script reaches properties, lists, arrays and errors" diff "$work/expected" "$work/got"
check "No box came up for that" test ! -s "$work/boxes"

in_folder every
"$here" -C "$work/every" settings set GENERAL FIRST_TIME False
cat >"$work/expected" <<'TEXT'
paths True True
set True True True True True True True
put back False False False False False
texts 4711 C:\firm\link.hlp new passed
ConnectToQB True 16 US
QBDB True
SendDataToQB True
GetDataFromQB True
IsJob False
DeleteTWRecord True
DeleteQBRecord False
SubscribeToQBEvents True True
and taken back True False
SaveSettings True
GetAccounts True False
GetEmployees True False
GetCustomers True False
GetVendors True False
GetInvoices True False
GetPayments True False
GetExpCodes True False
GetActivities True False
GetTimeEntries True False
GetChecks True False
GetBills True False
GetClassItems True False
GetPayrollItems True False
GetQBAccounts True 3
TEXT
host got "" script "$tests/every.vbs" "$(there "$work/every")"
check "A script calls every property and operation by its name" diff "$work/expected" "$work/got"

# The demonstration firm, by a script of ten lines and by twqb.
in_folder there
mkdir "$work/here"
"$here" -C "$work/here" init --sample >/dev/null
host got "" script "$tests/demo.vbs" "$(there "$work/there")"
cp "$work/boxes" "$work/boxes.there"
check "The script says that all was sent and fetched" diff <(printf 'sent: True\nfetched: True\n') "$work/got"
echo 'default yes' >"$work/here/answers"
for direction in send get; do
  "$here" -C "$work/here" --answers "$work/here/answers" --transcript "$work/here/$direction.jsonl" $direction all \
    >/dev/null 2>&1 || true
done

statement() { "$here" -C "$work/$1" billing run -e "$2"; }
# same_by COMMAND...: WHERE in it is each of the two firms; what it prints is the same, and something.
same_by() {
  "${@/WHERE/here}" >"$work/by.here" && "${@/WHERE/there}" >"$work/by.there" && [ -s "$work/by.here" ] &&
    diff "$work/by.here" "$work/by.there"
}
counted() { "$here" -C "$work/$1" billing show && "$here" -C "$work/$1" company show | grep -vE '^(File|Made) '; }
# Without what changed since, which hangs on the second in which each record went.
linked() { "$here" -C "$work/$1" status | cut -c1-40; }
owed() { "$here" -C "$work/$1" balances --json | sed -E 's/[0-9A-F]+-[0-9]{8,}/ID/g'; }
check "BillingDb and the company file hold the same numbers of records, worth the same" same_by counted WHERE
check "As many rows are linked" same_by linked WHERE
check "Clients owe the same on both sides" same_by owed WHERE
# What else a row holds hangs on which side was the newer by a second.
for table in Client:ClientID Employee:EmployeeID Project:ProjectID Activity:ActivityID Expense:ExpID; do
  check "Rows of ${table%:*} are the same, and linked" same_by statement WHERE \
    "SELECT ${table#*:}, QBLinkID IS NULL FROM ${table%:*} ORDER BY 1"
done
check "The same boxes were shown" diff \
  <(python3 "$tests/boxes.py" "$work/here/send.jsonl" "$work/here/get.jsonl") <(tr -d '\r' <"$work/boxes.there" |
    sed -E "s#Z:$(sed 's#/#\\\\+#g' <<<"$work")\\\\+there\\\\#FOLDER/#g")
check "The log stands beside the library" grep -q 'TWTWClient Terminated on' "$library"/TWQBLog*.txt

# The progress form and its Cancel.
in_folder cancel
"$here" -C "$work/cancel" settings set GENERAL FIRST_TIME False
cat >"$work/cancel.vbs" <<'TEXT'
Set link = CreateObject("TWQBClient90.CTWQBBridge")
link.ConnectString = "Provider=SQLITE;Data Source=" & WScript.Arguments(0) & "\billing.db"
link.TWSettingsPath = WScript.Arguments(0) & "\twqb.ini"
link.UsePreferencesTW = True
WScript.Echo "sent: " & link.SendDataToQB(2)
TEXT
host got cancel script "$work/cancel.vbs" "$(there "$work/cancel")"
check "Cancel on the progress form ends the run" grep -q False "$work/got"
check "Once it has been confirmed" grep -q 'Are you sure you want to Cancel' "$work/boxes"
check "And that is told" grep -q 'Operation cancelled!' "$work/boxes"
check "Not all clients went" sh -c "'$here' -C '$work/cancel' status | grep clients | grep -vE 'clients +64 +64'"

# The forms alone.
forms() { wine "$built/tests/windows/desk_host.exe" "$@" 2>/dev/null | tr -d '\r'; }
host got "vendor 1" forms vendor
check "The vendor that is chosen is the one picked" grep -qx 'Böhm & Söhne' "$work/got"
host got cancel forms progress
check "A press of Cancel comes at the next pump" grep -qx pressed "$work/got"

# Boxes with help, and the help itself, which the system's viewer does not find.
forms_help() {
  forms help 'C:\firm\link.hlp' || return
  for _ in $(seq 400); do
    ! grep -q 'link\.hlp' "$work/boxes" || break
    sleep 0.25
  done
}
host got "" forms box
check "A box has a help button where there is help" \
  diff <(printf '[Help] Would you like help?\n[Help] (with help) Would you like help?\n') "$work/boxes"
host got "" forms_help
check "Help is the system's, on the file that it is told" grep -qF "'C:\firm\link.hlp'" "$work/boxes"

# The file dialog begins in the folder of a path that is not there. Wine's own does not look below /dev.
mkdir "$WINEPREFIX/drive_c/firm"
touch "$WINEPREFIX/drive_c/firm/books.twq"
host got "file books.twq" forms file 'C:\firm\gone.twq'
check "A name that is typed into the file dialog is one of its folder" grep -qxF 'C:\firm\books.twq' "$work/got"
host got "" forms file 'C:\firm'
check "A file dialog that is cancelled gives no file" grep -qx '(none)' "$work/got"

forms profile 'C:\firm\settings.ini' >"$work/got"
check "Settings that Windows' own calls write are read, and the other way round" grep -qx '16 came as they went' "$work/got"

# By slots.
in_folder slots
"$here" -C "$work/slots" settings set GENERAL FIRST_TIME False
host got "" wine "$built/tests/windows/vtable_host.exe" "$(there "$work/slots")"
check "A host of C++ finds every slot as it should be" grep -q ' 0 failed' "$work/got"
[ "$(grep -c . "$work/got")" = 1 ] || cat "$work/got"

# Without QuickBooks.
rm "$library/TWQBClient90.ini"
cat >"$work/without.vbs" <<'TEXT'
Set link = CreateObject("TWQBClient90.CTWQBBridge")
WScript.Echo "connected: " & link.ConnectToQB(True)
TEXT
host got "" script "$work/without.vbs"
check "Without QuickBooks' library a connection fails" grep -q False "$work/got"
check "And the person is told, with its number" grep -q -- '-2147024770' "$work/boxes"

# As one who may not take it away.
cat >"$work/expected" <<'TEXT'
before: machine yes, user no
without rights taking it back gives 80070005
afterwards: machine yes, user no
with rights it gives 0
taken back: machine no, user no
once more it gives 0
TEXT
user_host() { wine "$built/tests/windows/user_host.exe" "$(there "$library/TWQBClient90.dll")" "$@" | tr -d '\r'; }
host got "" user_host denied
check "A registration that can't be taken back is told, and stays" diff "$work/expected" "$work/got"
check "The library registers itself again" wine regsvr32 /s "$(there "$library/TWQBClient90.dll")"

# The library of the other width is registered, too, which goes by the same name. A Windows of 32 bits has no other.
class='HKLM\Software\Classes\CLSID\{728FE982-3C17-49FA-B474-F5768A07B0AF}'
take_back() { wine regsvr32 /s /u "$(there "$library/TWQBClient90.dll")"; }
named() { wine reg query 'HKLM\Software\Classes\TWQBClient90.CTWQBBridge\CLSID'; }
if [ "$WINEARCH" = win64 ]; then
  wine reg add "$class\InprocServer32" /ve /d 'C:\other\TWQBClient90.dll' /f /reg:32 >/dev/null
  check "Of both widths one takes its registration back" take_back
  check "And the name stays, which is the other one's, too" named
  check "As its class does" wine reg query "$class\InprocServer32" /reg:32
  check "Its own class goes" not wine reg query "$class" /reg:64
  wine reg delete "$class" /f /reg:32 >/dev/null
fi
check "The library takes its registration back" take_back
check "And its name with it" not named
classes after
check "Nothing is left of it for the machine" diff "$work/before.HKLM" "$work/after.HKLM"
check "Nor for the user" diff "$work/before.HKCU" "$work/after.HKCU"

# As a user who may not write to the machine's part of the registry.
host got "" user_host
cat >"$work/expected" <<'TEXT'
before: machine no, user no
registering gives 0
registered: machine no, user yes
its path is the library's
taking it back gives 0
taken back: machine no, user no
TEXT
check "Where the machine's part of the registry takes nothing, the user's does" diff "$work/expected" "$work/got"
classes after
check "Nothing is left of that either" sh -c \
  "diff '$work/before.HKLM' '$work/after.HKLM' && diff '$work/before.HKCU' '$work/after.HKCU'"

# Without ADO. Wine has one of its own, of which most is not there.
opened every
wine regsvr32 /s "$(there "$library/TWQBClient90.dll")"
wine reg delete 'HKLM\Software\Classes\ADODB.Connection' /f >/dev/null
cat >"$work/without.vbs" <<'TEXT'
Set link = CreateObject("TWQBClient90.CTWQBBridge")
link.ConnectString = "Provider=SQLOLEDB;Data Source=OFFICE"
link.TWSettingsPath = WScript.Arguments(0) & "\twqb.ini"
WScript.Echo "sent: " & link.SendDataToQB(2)
TEXT
host got "" script "$work/without.vbs" "$(there "$work/every")"
check "Without ADO a transfer fails" grep -q 'sent: False' "$work/got"
check "And the person is told that, with its number" grep -q -- '-2147221005(800401F3)' "$work/boxes"

# By late binding.
register_doubles "$built/tests/windows/doubles.dll"
in_folder late
rm "$library/TWQBClient90.ini"
"$here" -C "$work/late" settings set GENERAL FIRST_TIME False
sed 's/Provider=SQLITE/Provider=SQLOLEDB/' "$tests/demo.vbs" >"$work/late.vbs"
TWQB_DOUBLE_COMPANY=$(there "$work/late/company.twq") \
  host got "" script "$work/late.vbs" "$(there "$work/late")"
check "By ADO and QuickBooks' session library all is sent and fetched, too" \
  diff <(printf 'sent: True\nfetched: True\n') "$work/got"
ends_alike() { diff <("$1" here) <("$1" late); }
for what in counted linked owed; do
  check "And both sides end alike by that road ($what)" ends_alike "$what"
done

# Lists are the session library's own objects there, and ours with the embedded company file. Read twice, they say the
# same.
lists() { script "$tests/lists.vbs" "$(there "$work/late")" >"$work/$1"; }
lists_by_late_binding() {
  TWQB_DOUBLE_COMPANY=$(there "$work/late/company.twq") lists "$@"
}
# whose WHOM FILE: all six are theirs.
whose() { [ "$(grep -acE "^[1-9][0-9]* [a-z]+ of $1\$" "$work/$2")" = 6 ]; }
of_somebody() { sed -E 's/ of (TWQBClient90|session library)$/ of somebody/' "$work/$1"; }
host said "" lists_by_late_binding lists.own
check "A host is given the session library's own lists" whose 'session library' lists.own
TWQB_DOUBLE_LISTS=none host said "" lists_by_late_binding lists.ours
check "Where that gives the text alone they are this library's" whose TWQBClient90 lists.ours
opened late
host said "" lists lists.embedded
check "So they are with the embedded company file" whose TWQBClient90 lists.embedded
check "How long somebody worked is in the session library's own" grep -qaE ' [1-9][0-9]*:[0-9]+:[0-9]+ False$' "$work/lists.own"
for lists in lists.ours lists.embedded; do
  check "And they hold the same records (${lists#*.})" diff <(of_somebody lists.own) <(of_somebody "$lists")
done
rm "$library/TWQBClient90.ini"

# logged WORDS: how many lines of the log have them.
logged() { grep -haE "$1" "$library"/TWQBLog*.txt | wc -l; }
# ours_and_logged WORD LINE: with lists like that a host is given this library's, all records are in them, and the log
# has the line for each of the six.
ours_and_logged() {
  local before
  before=$(logged "$2")
  TWQB_DOUBLE_LISTS=$1 pressing "" lists_by_late_binding "lists.$1" || return
  whose TWQBClient90 "lists.$1" && diff <(of_somebody lists.own) <(of_somebody "lists.$1") &&
    [ "$(logged "$2")" = $((before + 6)) ]
}
check "Where its list raises an error they are this library's, and the log has its number and text" \
  ours_and_logged fails 'another one\. -2147467259 The list is not to be had\.'
check "An object that has gone is told with the number of that, and not as one that lacks a name" \
  ours_and_logged gone 'another one\. -2147417848 '
check "Where its list has other records, too, and the log says how many" \
  ours_and_logged fewer 'own list has [0-9]+ records, where [1-9][0-9]* were read'
TWQB_DOUBLE_LISTS=unknown host said "" lists_by_late_binding lists.unknown
check "An object that comes without names is asked for them" diff "$work/lists.own" "$work/lists.unknown"

# By slots, with the session library's own lists.
in_folder owned
rm "$library/TWQBClient90.ini"
"$here" -C "$work/owned" settings set GENERAL FIRST_TIME False
TWQB_DOUBLE_COMPANY=$(there "$work/owned/company.twq") \
  host got "" wine "$built/tests/windows/vtable_host.exe" "$(there "$work/owned")" own-lists
check "By slots all lists are the session library's own and the host's alone, and nothing of it is kept at the end" grep -q ' 0 failed' "$work/got"
[ "$(grep -c . "$work/got")" = 1 ] || cat "$work/got"

# An older version of the session library, whose name is known and which has nothing behind it here.
names='HKLM\Software\Classes'
session=$(wine reg query "$names\QBFC5.QBSessionManager\CLSID" /ve | grep -oE '\{[-0-9A-F]+\}')
wine reg add "$names\QBFC5.QBSessionManager\CLSID" /ve /d '{7A1B00FF-5C44-4E1B-9D20-0B3C5177E906}' /f >/dev/null
wine reg add "$names\QBFC15.QBSessionManager\CLSID" /ve /d "$session" /f >/dev/null
host said "" lists_by_late_binding lists.later
check "A version that is not there for this width gives way to a later one" diff "$work/lists.own" "$work/lists.later"
wine reg delete "$names\QBFC15.QBSessionManager" /f >/dev/null
cat >"$work/without.vbs" <<'TEXT'
Set link = CreateObject("TWQBClient90.CTWQBBridge")
WScript.Echo "connected: " & link.ConnectToQB(True)
TEXT
host got "" script "$work/without.vbs"
check "Where there is no other a connection fails" grep -q 'connected: False' "$work/got"
check "And the person is told that version, with its number" \
  grep -q -- '-2147221164.*QBFC5' <(tr -d '\r\n' <"$work/boxes")
check "All $hosts hosts that ran have ended with status 0" all_ended_well
conclude
