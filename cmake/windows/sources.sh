#!/usr/bin/env bash
# The libraries that a build for Windows compiles itself, as Debian's own sources and headers:
#   sources.sh FOLDER
# leaves FOLDER/{sqlite,pugixml,fmt} with sources and FOLDER/include with the libraries that are headers alone. Nothing of
# the machine's list of sources is changed. A folder that is complete is left as it is.
set -euo pipefail

folder=$(mkdir -p "$1" && cd "$1" && pwd)
[ ! -e "$folder/complete" ] || exit 0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

mkdir -p "$work/lists/partial" "$work/packages" "$work/parts"
# Debian's own archives alone: others need not have sources.
for list in /etc/apt/sources.list.d/*.sources /etc/apt/sources.list.d/*.list /etc/apt/sources.list; do
  [ -e "$list" ] && grep -q '/debian' "$list" || continue
  case $list in
    *.sources) sed -E 's/^Types:.*/Types: deb-src/' "$list" >"$work/parts/$(basename "$list")" ;;
    *) sed -nE 's/^deb(-src)? (.*\/debian.*)/deb-src \2/p' "$list" | sort -u >"$work/parts/$(basename "$list" .list).list" ;;
  esac
done
apt=(apt-get -qq -o Acquire::Retries=3 -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$work/parts"
  -o "Dir::State::lists=$work/lists" -o APT::Sandbox::User=root)
"${apt[@]}" update
(cd "$work/packages" && "${apt[@]}" source --download-only sqlite3 pugixml fmtlib)

# The one archive of a package with its sources, unpacked without the folder that it names.
unpack() {
  mkdir -p "$2"
  tar -xf "$(ls "$work/packages/$1"_*.orig.tar.?z)" --strip-components=1 -C "$2"
}

unpack sqlite3 "$work/sqlite"
(cd "$work/sqlite" && ./configure --disable-readline && make sqlite3.c) >"$work/sqlite.log" 2>&1 ||
  { cat "$work/sqlite.log" >&2; exit 1; }
mkdir -p "$folder/sqlite" "$folder/include"
cp "$work/sqlite/sqlite3.c" "$work/sqlite/sqlite3.h" "$folder/sqlite"
unpack pugixml "$folder/pugixml"
unpack fmtlib "$folder/fmt"
cp -R /usr/include/CLI /usr/include/nlohmann "$folder/include"
touch "$folder/complete"
