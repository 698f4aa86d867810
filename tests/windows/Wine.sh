# What the tests of the build for Windows share: a Windows of their own under wine, without a display, in a folder that
# goes at the end; and checks that are counted.

work=$(mktemp -d)
export WINEPREFIX=$work/wine WINEDEBUG=-all WINEARCH=win64 WINEDLLOVERRIDES='mscoree,mshtml='
export LC_ALL=C.UTF-8  # by which wine reads names and arguments
unset DISPLAY

leave() {
  wineserver -k || true
  wineserver -w || true
  rm -rf "$work"
}
trap leave EXIT
wine wineboot -i >/dev/null 2>&1

passed=0
failed=0

# check NAME COMMAND...: the command must succeed; what it prints is shown when it does not.
check() {
  local name=$1 output
  shift
  if output=$("$@" 2>&1); then
    passed=$((passed + 1))
    echo "ok      $name"
  else
    failed=$((failed + 1))
    printf 'FAILED  %s\n%s\n' "$name" "$(head -40 <<<"$output")"
  fi
}

# The closing line; the status is that of all checks.
conclude() {
  echo "$passed passed, $failed failed"
  [ "$failed" = 0 ]
}
