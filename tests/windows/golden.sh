#!/usr/bin/env bash
# The golden scenarios once more, through COM: a host binds to the registered class, doubles of ADO and of QuickBooks'
# session library stand behind the library, and the record comes from its seams. It must be that of twqb here.
#   golden.sh TEST_GOLDEN BUILD-FOLDER-FOR-WINDOWS [GTEST-FILTER]
set -euo pipefail
golden=$1
built=$2
filter=${3:-Transcripts/GoldenRun.*}
. "$(dirname "${BASH_SOURCE[0]}")/Wine.sh"

export WINEDEBUG=-all,err+seh  # what a host dies of

register_doubles "$built/tests/windows/doubles.dll"
check "The library of the golden runs registers itself" \
  wine regsvr32 /s "$(there "$built/tests/windows/golden/TWQBClient90.dll")"
export TWQB_COM_HOST="wine $built/tests/windows/golden_host.exe"
wanted=$("$golden" --gtest_list_tests --gtest_filter="$filter" | grep -c '^  ') || true
# In so many parts at a time as there are cores: wine's programs mostly wait.
parts=$(nproc)
export GTEST_TOTAL_SHARDS=$parts
for ((part = 0; part < parts; ++part)); do
  GTEST_SHARD_INDEX=$part timeout 1800 "$golden" --gtest_filter="$filter" --gtest_brief=1 >"$work/out.$part" 2>&1 &
done
status=0
for job in $(jobs -p); do wait "$job" || status=1; done
grep -hvE '^(not through COM|Running main|Note: This is test shard)' "$work"/out.* | head -200 || true
came=$(sed -nE 's/^\[  PASSED  \] ([0-9]+) .*/\1/p' "$work"/out.* | awk '{ sum += $1 } END { print sum + 0 }')
left=$(grep -c '^not through COM' "$work/out.0" || true)
echo "through COM: $came scenarios came out as they are recorded; $left ask for what no host has"
check "All golden scenarios that a host can take come out through COM as they are recorded" \
  test "$status $came" = "0 $wanted" -a "$wanted" -gt 0
conclude
