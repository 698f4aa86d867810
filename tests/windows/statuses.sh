#!/usr/bin/env bash
# By which status starts.sh says what: a wine that can't be executed is told from one that can and fails. Programs that fail
# in each of these ways stand in for wine's; none of its own is run.
set -euo pipefail
tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" "$work/free"
ln -s "$(command -v true)" "$work/bin/wineserver"
failed=0

# expect STATUS WHAT [VARIABLE=VALUE...]: starts.sh ends with that, with what stands in bin.
expect() {
  local wanted=$1 what=$2 status=0
  shift 2
  env TMPDIR="$work/free" WINEARCH=win32 PATH="$work/bin:$PATH" "$@" "$tests/starts.sh" >"$work/said" 2>&1 || status=$?
  [ "$status" != "$wanted" ] || { echo "ok      status $wanted: $what"; return; }
  failed=1
  printf 'FAILED  status %s where it should be %s: %s\n' "$status" "$wanted" "$what"
  head -20 "$work/said"
}
# loader LINES: what wine does.
loader() {
  rm -f "$work/bin/wine"
  printf '#!/bin/sh\n%s\n' "$1" >"$work/bin/wine"
  chmod +x "$work/bin/wine"
}

loader 'test "$1" != cmd || echo begun'
expect 0 "a program starts"
loader 'echo "wine: something else is wrong" >&2; exit 1'
expect 1 "wine fails for a reason of its own"
loader 'test "$1" = wineboot || exit 1'
expect 1 "wine starts, and no program does"
loader 'test "$1" = wineboot || { echo "wine: Operation not permitted" >&2; exit 1; }'
expect 3 "no program may start"
loader 'echo "wine: cannot create files: No space left on device: Permission denied" >&2; exit 1'
expect 1 "the disk is full"
loader 'exec sleep 60'
expect 1 "the start takes too long" TWQB_WINE_SECONDS=1
loader 'kill -SYS $$'
expect 3 "the system does not allow wine a call"
loader 'echo "wine client error:0: socketpair: Function not implemented" >&2; exit 1'
expect 3 "the system does not have a call"
printf '\177ELF of another machine' >"$work/bin/wine"
expect 3 "wine is of another machine"
loader 'test "$1" != cmd || echo begun'
printf '#!/bin/sh\nprintf "Avail\\n1000\\n"\n' >"$work/bin/df"
chmod +x "$work/bin/df"
expect 1 "there is no room in the folder that is used"
exit "$failed"
