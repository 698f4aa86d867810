#!/usr/bin/env bash
# What the system sees of a library: the four entries and no more, and that it needs nothing but libraries of the system.
#   entries.sh OBJDUMP DLL
set -euo pipefail
seen=$("$1" -p "$2")
entries=$(sed -nE 's/^\t\[ *[0-9]+\] (Dll[A-Za-z]+|[A-Za-z_0-9]+)$/\1/p' <<<"$seen" | sort | tr '\n' ' ')
needed=$(sed -nE 's/^\tDLL Name: (.*)$/\1/p' <<<"$seen" | tr '[:upper:]' '[:lower:]' | sort -u)
wanted='DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer '
others=$(grep -vxE '(advapi32|bcrypt|comctl32|comdlg32|gdi32|kernel32|msvcrt|ole32|oleaut32|user32)\.dll' <<<"$needed" || true)
[ "$entries" = "$wanted" ] || { echo "entries: $entries"; exit 1; }
[ -z "$others" ] || { echo "needs: $others"; exit 1; }
echo "$2: four entries, libraries of the system alone"
