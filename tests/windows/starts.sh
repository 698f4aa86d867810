#!/usr/bin/env bash
# Whether wine starts a program on this machine. Status 3: it can't be executed, as in a container without what it asks for;
# 1: it can, and did not start one.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/Wine.sh"
status=0
wine cmd /c echo begun >"$work/said" 2>&1 || status=$?
if [ "$status" != 0 ] || [ "$(tr -d '\r' <"$work/said")" != begun ]; then
  printf 'A program did not run under wine (status %s): %s\n' "$status" "$(head -40 "$work/said")" >&2
  exit "$(verdict_on "$status" "$work/said")"
fi
