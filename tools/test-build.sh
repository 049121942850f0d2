#!/usr/bin/env bash
# A build as a test: configures a preset, builds, and says whether that went well. What the compiler says is shown
# when it did not. The last line sums up.
#   tools/test-build.sh <preset> <options of CMake> [<target>...]
cd "$(dirname "$0")/.." || exit
. tools/test-lib.sh
log=$(mktemp)
trap 'rm -f "$log"' EXIT
preset=$1 options=$2
shift 2

cmake --preset "$preset" "$options" > "$log" 2>&1 && cmake --build --preset "$preset" ${1:+--target "$@"} >> "$log" 2>&1
status=$?
[[ $status -eq 0 ]] || grep -vE '^\[[0-9]+/[0-9]+\]' "$log"
report "$preset build${1:+ of $*}" "$status"
sum_up
