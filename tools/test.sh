#!/usr/bin/env bash
# Builds everything and runs all tests. The last line sums them up.
set -uo pipefail
cd "$(dirname "$0")/.."

passed=0 failed=0 skipped=0
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
  timeout --kill-after=10 "$limit" "$@" 2>&1 | tr -d '\r' > "$results/$name.log"
  local status=${PIPESTATUS[0]} good bad none
  grep -vE '^\[( RUN      |       OK |----------)\]|^$' "$results/$name.log"
  good=$(grep -cE '^\[       OK \] ' "$results/$name.log")
  bad=$(grep -cE '^\[  FAILED  \] .*\([0-9]+ ms\)$' "$results/$name.log")
  none=$(grep -cE '^\[  SKIPPED \] .*\([0-9]+ ms\)$' "$results/$name.log")
  passed=$((passed + good))
  failed=$((failed + bad))
  skipped=$((skipped + none))
  if [[ $status -ne 0 && $bad -eq 0 ]]; then
    failed=$((failed + 1))
    echo "FAILED: $name ended with status $status"
  fi
}

# A script of tests, whose last line sums them up.
script() {
  local limit=$1
  shift
  timeout --kill-after=10 "$limit" "$@" 2>&1 | tee "$results/script.log"
  if [[ $(tail -n 1 "$results/script.log") =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed,\ ([0-9]+)\ skipped$ ]]; then
    passed=$((passed + BASH_REMATCH[1]))
    failed=$((failed + BASH_REMATCH[2]))
    skipped=$((skipped + BASH_REMATCH[3]))
  else
    failed=$((failed + 1))
    echo "FAILED: $1 was cut off"
  fi
}

step "Build under AddressSanitizer and UndefinedBehaviorSanitizer"
cmake --preset debug > /dev/null && cmake --build --preset debug
check "debug build" test $? -eq 0

step "Every test source is in the build"
found=0
for source in $(find tests -name '*.cpp' | grep -vE '^tests/(com|windows)/'); do
  if grep -q "/$source\"" build/debug/compile_commands.json; then found=$((found + 1)); else echo "not in the build: $source"; lost=1; fi
done
check "test sources ($found)" test -z "${lost:-}" -a "$found" -gt 0

step "The library includes the seam and the standard library alone"
# Below platform/ stand the adapters; a system's header has a folder or ends in .h.
strays=$(grep -nE '^#include ("(platform/[a-z]+/|server/|host/|tests/)|<([a-z]+/|[A-Za-z]+\.h[px]*>))' \
  {global,period,reports,storage,excelui}/*.{h,cpp} 2> /dev/null)
check "includes of the library" test -z "$strays"
printf '%s' "$strays"

step "Library and seam"
google_test qva_tests 600 build/debug/tests/qva_tests

step "Macros in LibreOffice"
google_test qva_calc_tests 1500 build/debug/tests/qva_calc_tests
check "macros of the corpus" tools/corpus-libreoffice.sh build/debug

step "Cross-compile for Windows"
for preset in windows-x64 windows-x86; do
  cmake --preset $preset > /dev/null && cmake --build --preset $preset
  check "$preset build" test $? -eq 0
done

step "The Windows library"
script 2400 tools/test-windows.sh

step "The packages"
cmake --preset release -DQVA_TESTS=OFF > /dev/null && cmake --build --preset release
check "release build" test $? -eq 0
script 1500 tools/test-package.sh build/release build/windows-x64 build/windows-x86

printf '\n%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
[[ $failed -eq 0 && $passed -gt 0 ]]
