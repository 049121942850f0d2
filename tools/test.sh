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
google_test qva_calc_tests 600 build/debug/tests/qva_calc_tests

step "Cross-compile for Windows"
for preset in windows-x64 windows-x86; do
  cmake --preset $preset > /dev/null && cmake --build --preset $preset
  check "$preset build" test $? -eq 0
done

step "The 64-bit Windows library under Wine"
wine=build/wine
windows=build/windows-x64
in_wine() { tools/wine-run.sh --timeout 240 "$wine" "$@"; }
windows_path() { local path; path=$(realpath "$1"); echo "Z:${path//\//\\}"; }
QVA_VARNHOLT_MESSAGE_LOG="Z:${results//\//\\}\\boxes.log"
export QVA_VARNHOLT_MESSAGE_LOG  # nobody answers boxes here
check "Wine prefix" tools/wine-prefix.sh "$wine"
google_test qva_windows_tests 300 tools/wine-run.sh --timeout 240 "$wine" $windows/qva_windows_tests.exe
check "registration of the test bench" in_wine regsvr32 /s "$(windows_path $windows/QVA_TestBench.dll)"
google_test qva_com_tests 300 tools/wine-run.sh --timeout 240 "$wine" $windows/qva_com_tests.exe
check "registration of the library" in_wine regsvr32 /s "$(windows_path $windows/QVA_Varnholt.dll)"
check "unregistration of the library" in_wine regsvr32 /u /s "$(windows_path $windows/QVA_Varnholt.dll)"
check "unregistration of the test bench" in_wine regsvr32 /u /s "$(windows_path $windows/QVA_TestBench.dll)"
for build in windows-x64 windows-x86; do
  check "$build: the DLL is smaller than 1 MB" test "$(stat -c %s build/$build/QVA_Varnholt.dll)" -lt 1048576
done
echo "The 32-bit library was built, not run."

printf '\n%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
[[ $failed -eq 0 && $passed -gt 0 ]]
