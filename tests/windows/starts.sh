#!/usr/bin/env bash
# Whether wine starts a program on this machine. Status 3: it does not, as in a container without what it asks for.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/Wine.sh"
if ! said=$(wine cmd /c echo begun 2>&1) || [ "$(tr -d '\r' <<<"$said")" != begun ]; then
  printf 'A program did not run under wine: %s\n' "$said" >&2
  exit 3
fi
