#!/usr/bin/env bash
# twqb of the build for Windows does what twqb here does: the same commands on the same firm, compared by what they print,
# by every call through every seam, and by the log.
#   program.sh TWQB TWQB.EXE
set -euo pipefail
here=$1
there=$2
. "$(dirname "${BASH_SOURCE[0]}")/Wine.sh"

commands=("send all --strict" "get all --strict" "send clients" "balances" "status" "billing show" "company show"
  "list customers --all" "accounts" "settings list" "settings get GENERAL FIRST_TIME" "is-job none"
  "delete-billing clients NONE" "events on" "events status" "send nothing" "get all --company missing.twq")

# firm FOLDER PROGRAM...: all commands in a new folder, on a clock that stands still.
firm() {
  local folder=$work/$1 command
  local options=(--clock 2008-03-05T10:30:00 --bias 300 --seed 7)
  shift
  mkdir "$folder"
  cd "$folder"
  echo 'default yes' >answers
  "$@" "${options[@]}" init --sample >init.out 2>&1
  for command in "${commands[@]}"; do
    # shellcheck disable=SC2086  # a command is several words
    "$@" "${options[@]}" --answers answers --transcript "${command// /-}.jsonl" $command \
      >"${command// /-}.out" 2>"${command// /-}.err" || echo "status $?" >>"${command// /-}.out"
  done
  cd "$work"
}

# Where a path is told, each system tells its own; and by the path of BillingDb its message sets are told apart.
told() {
  sed -E "s#$work/here#FOLDER#g; s#Z:$(sed 's#/#\\\\+#g' <<<"$work")\\\\+there#FOLDER#g; s#FOLDER(/|\\\\+)#FOLDER/#g
    s#TW[0-9A-F]{16}([AB])\b#OWNER\1#g" "$1"
}
same() { diff <(told "$work/here/$1") <(told "$work/there/$1"); }

firm here "$here"
firm there wine "$there"
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
check "The first send moved something" grep -qE '^clients: +[0-9]+ added' "$work/there/send-all---strict.out"

letters() { [ "$(cd "$work/there" && wine "$there" -C "$1" billing run -e "SELECT 'Größe', upper('x')" | tail -1)" = $'Größe\tX' ]; }
mkdir "$work/there/Bücher €"
check "A folder and an argument with letters of every kind are taken" sh -c \
  "cd '$work/there' && wine '$there' -C 'Bücher €' init && test -s 'Bücher €/billing.db'"
check "A statement goes in and comes out as it was written" letters "Bücher €"
check "A file that stands in the way is not overwritten" sh -c "cd '$work/there' && ! wine '$there' init"
conclude
