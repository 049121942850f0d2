#!/usr/bin/env bash
# Builds everything and runs all tests. The last line sums them up.
set -uo pipefail
cd "$(dirname "$0")/.."

passed=0 failed=0 notes=()
results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT

step() { printf '\n== %s\n' "$*"; }

# One test that is a command: it passes when the command does.
check() {
  local name=$1
  shift
  if "$@"; then
    passed=$((passed + 1))
    echo "passed: $name"
  else
    failed=$((failed + 1))
    echo "FAILED: $name"
  fi
}

# A Google Test program: its tests count one by one. A program that dies counts as a failure, too.
google_test() {
  local name=$1 limit=$2
  shift 2
  timeout --kill-after=10 "$limit" "$@" --gtest_brief=1 2>&1 | tee "$results/$name.log"
  local status=${PIPESTATUS[0]} good bad
  good=$(sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\.?.*/\1/p' "$results/$name.log" | tail -n 1)
  bad=$(sed -nE 's/^\[  FAILED  \] ([0-9]+) tests?, listed below:.*/\1/p' "$results/$name.log" | tail -n 1)
  passed=$((passed + ${good:-0}))
  failed=$((failed + ${bad:-0}))
  if [[ $status -ne 0 && ${bad:-0} -eq 0 ]]; then
    failed=$((failed + 1))
    echo "FAILED: $name ended with status $status"
  fi
}

step "Build under AddressSanitizer and UndefinedBehaviorSanitizer"
cmake --preset debug > /dev/null && cmake --build --preset debug
check "debug build" test $? -eq 0

step "Every test source is in the build"
for source in $(git ls-files 'tests/*.cpp' | grep -vE '^tests/(com|windows)/'); do
  grep -q "/$source\"" build/debug/compile_commands.json || { echo "not in the build: $source"; lost=1; }
done
check "test sources" test -z "${lost:-}"

step "The library includes the seam and the standard library alone"
# Below platform/ stand the adapters; a system's header has a folder or ends in .h.
strays=$(grep -nE '^#include ("(platform/[a-z]+/|server/|host/|tests/)|<([a-z]+/|[A-Za-z]+\.h[px]*>))' \
  {global,period,reports,storage,excelui}/*.{h,cpp} 2> /dev/null)
check "includes of the library" test -z "$strays"
printf '%s' "$strays"

step "Library and seam"
google_test qva_tests 600 build/debug/tests/qva_tests

step "Macros in LibreOffice"
google_test qva_calc_tests 600 build/debug/tests/qva_calc_tests

step "Cross-compile for Windows"
for preset in windows-x64 windows-x86; do
  cmake --preset $preset > /dev/null && cmake --build --preset $preset
  check "$preset build" test $? -eq 0
done

for note in "${notes[@]}"; do echo "$note"; done
printf '\n%d passed, %d failed\n' "$passed" "$failed"
[[ $failed -eq 0 && $passed -gt 0 ]]
