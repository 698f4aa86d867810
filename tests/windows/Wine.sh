# What the tests of the build for Windows share: a Windows of their own under wine, without a display, in a folder that
# goes at the end; and checks that are counted.

# Status 3 of a test says that wine itself can't be executed on this machine. All else that goes wrong is 1: a folder
# without room, and a start that takes too long, would else pass for a machine that nothing can be tested on.
#
# In memory where nobody has said otherwise and there is room: wine's start and its programs' files are many small writes,
# and its Windows takes more than half a gigabyte.
# has_room FOLDER: it takes files, has 1.5 GB free, and programs can be run from it, as wine does.
has_room() {
  local free probe
  free=$(df --output=avail "$1" 2>/dev/null | tail -1) && [ "${free:-0}" -gt 1500000 ] || return 1
  probe=$(mktemp -p "$1" 2>/dev/null) || return 1
  printf '#!/bin/sh\n' >"$probe" && chmod +x "$probe" && "$probe" 2>/dev/null
  local status=$?
  rm -f "$probe"
  return "$status"
}
if [ -z "${TMPDIR:-}" ] && has_room /dev/shm; then export TMPDIR=/dev/shm; fi
work=$(mktemp -d)
has_room "$work" || {
  echo "No room for wine's Windows: ${work%/*} must have 1.5 GB free, and programs must run from it; TMPDIR names another." >&2
  rm -rf "$work"
  exit 1
}
# By this folder wine's programs find the server that they share. Were it another one later, two of them would be at work
# on one registry, and what one has registered would go when the other writes its own.
export TMPDIR=$work
# Nothing is written into the caller's home, and none is needed.
mkdir "$work/wine" "$work/home"
export HOME=$work/home WINEPREFIX=$work/wine
unset XDG_CACHE_HOME XDG_CONFIG_HOME XDG_DATA_HOME
export WINEDEBUG=-all WINEARCH=${WINEARCH:-win64} WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
export LC_ALL=C.UTF-8  # by which wine reads names and arguments
unset DISPLAY
# What is asked for is asked of files, never of who runs this.
exec </dev/null

# wine, wherever it is called from here on, ends: a program that hangs is ended after so many seconds, which is told.
wine_seconds=${TWQB_WINE_SECONDS:-600}
loader=$(command -v wine) || { echo "wine is not installed." >&2; exit 3; }
# For 64 bits the system's programs are those of 64, where there are those of 32 as well: these see another part of the
# registry.
if [ "$WINEARCH" = win64 ] && [ -x /usr/lib/wine/wine64 ]; then
  loader=/usr/lib/wine/wine64
  export WINELOADER=$loader
fi
mkdir "$work/bin"
cat >"$work/bin/wine" <<TEXT
#!/bin/sh
status=0
timeout -k 10 $wine_seconds '$loader' "\$@" || status=\$?
[ "\$status" != 124 ] || echo "wine: ended after $wine_seconds seconds without an end: \$*" >&2
exit "\$status"
TEXT
chmod +x "$work/bin/wine"
PATH=$work/bin:$PATH

# boot: the server stays until it is told to go, or a quarter of an hour without programs should nobody be left to tell
# it. By itself it goes at each moment without, and the next one waits until there is a new one that has read the registry.
boot() {
  local status=0
  wineserver -p900 >"$work/boot" 2>&1 || status=$?
  [ "$status" != 0 ] || wine wineboot "$@" >>"$work/boot" 2>&1 || status=$?
  [ "$status" != 0 ] || return 0
  echo "Wine's Windows did not start (status $status):" >&2
  head -40 "$work/boot" >&2
  exit "$(verdict_on "$status" "$work/boot")"
}
# verdict_on STATUS FILE: 3 where wine, which ended with that status and wrote what is in the file, can't be executed here:
# the shell found nothing that it could run, the system ended it for a call that it does not allow, or wine says so. 1 else.
# What wine says are the system's own words for ENOEXEC, ENOSYS, EPERM and EACCES, and one line of its loader's.
verdict_on() {
  local cannot='Exec format error|Function not implemented|Operation not permitted|Permission denied|could not exec '
  case $1 in
    124 | 137) echo 1 ;;
    126 | 127 | 159) echo 3 ;;
    *) if grep -q 'No space left' "$2" || ! grep -qE "$cannot" "$2"; then echo 1; else echo 3; fi ;;
  esac
}
shut_down() {
  timeout 60 wineserver -k || true
  timeout 60 wineserver -w || true
}
leave() {
  jobs -p | xargs -r kill 2>/dev/null || true
  shut_down
  rm -rf "$work"
}
trap leave EXIT
# What ends a test ahead of its last line is told.
set -E
trap 'echo "FAILED  line $LINENO gave status $?: $BASH_COMMAND" >&2' ERR
boot -i

# As Windows spells a path.
there() { sed 's#/#\\#g; s#^#Z:#' <<<"$1"; }

# register_doubles DLL: from here on doubles stand under the names of ADO, of QuickBooks' session library and of a host's
# call-back class.
register_doubles() {
  local number=0 name id
  for name in ADODB.Connection ADODB.Recordset QBFC5.QBSessionManager TWQBCallback90.CMain; do
    number=$((number + 1))
    id="{7A1B000$number-5C44-4E1B-9D20-0B3C5177E906}"
    wine reg add "HKLM\\Software\\Classes\\$name\\CLSID" /ve /d "$id" /f >/dev/null
    wine reg add "HKLM\\Software\\Classes\\CLSID\\$id\\InprocServer32" /ve /d "$(there "$1")" /f >/dev/null
  done
}

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
