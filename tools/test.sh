#!/usr/bin/env bash
# Builds everything and runs all tests. Builds come one after the other, that of the fuzz targets in what time they leave;
# what a build is needed for runs beside the next ones, since LibreOffice and Wine mostly wait. The output ends with a table
# of the steps and a line that sums up.
set -uo pipefail
cd "$(dirname "$0")/.."
. tools/test-lib.sh

results=$(mktemp -d)
# Whatever still runs when this script is stopped goes with it.
trap 'trap - EXIT; rm -rf "$results"; kill -- $(jobs -p) 2> /dev/null' EXIT
trap 'exit 1' INT TERM
SECONDS=0
steps=0
# What is neither git's nor ignored; nothing outside of a checkout.
untracked() { git ls-files --others --exclude-standard 2> /dev/null; }
untracked > "$results/untracked"

# Runs a script of tests that ends within the limit in seconds; prints its output when it is over, and keeps for the
# table its beginning, duration, processor time and last line.
#   run_step <name> <limit> <command>...
run_step() {
  local name=$1 limit=$2 number begin=$SECONDS times status TIMEFORMAT='%R %U %S'
  shift 2
  number=$(printf '%02d' "$steps")
  times=$({ time timeout --kill-after=10 "$limit" "$@" > "$results/$number.log" 2>&1 < /dev/null; echo "$?" > "$results/$number.status"; } 2>&1)
  status=$(< "$results/$number.status")
  # What programs say as they are stopped may come after the line that sums up; who ended without it was cut off.
  local last is_whole=
  last=$(grep -aE '^[0-9]+ passed, [0-9]+ failed, [0-9]+ skipped$' "$results/$number.log" | tail -n 1)
  case $status in
    0) [[ $last == *" 0 failed,"* ]] && is_whole=1 ;;
    1) [[ -n $last && $last != *" 0 failed,"* ]] && is_whole=1 ;;
  esac
  if [[ -z $is_whole ]]; then
    last="0 passed, 1 failed, 0 skipped"
    echo "FAILED: $name was cut off, with status $status" >> "$results/$number.log"
  fi
  { flock 8; printf '\n== %s\n' "$name"; cat "$results/$number.log"; } 8> "$results/lock"
  printf '%s\n' "$name" "$begin" "$times" "$last" > "$results/$number.step"
}
# The same beside what follows.
start() {
  steps=$((steps + 1))
  run_step "$@" &
}
# A build, of which nothing else is to be seen as long as it succeeds. Tests beside it come first.
#   build <name> <preset> <options of CMake> [<target>...]
build() {
  steps=$((steps + 1))
  run_step "$1" 3000 nice tools/test-build.sh "${@:2}"
}
# The fuzz targets, built beside what follows in what time the processors have left, and run.
start_fuzzing() {
  local first=$((steps + 1))
  steps=$((steps + 2))
  {
    steps=$first run_step "Build of the fuzz targets" 3000 nice -n 19 tools/test-build.sh fuzz -DQVA_FUZZ=ON
    run_step "Bad input by machine" 300 nice tools/test-fuzz.sh 5
  } &
}

# What macros call is tested with sanitizers; the samples and the runner as they are shipped, which costs a third. A batch
# copies its LibreOffice, for which the sanitizer's memory is not made: a copy may wait for another thread's lock for ever.
shipped='Samples*:Closed*:ReportRunner*:Batch.*:*CalcProgress*:*CalcKeys*'
calc_tests="tools/google-test.sh build/debug/tests/qva_calc_tests"
build "Build for LibreOffice, with sanitizers" debug -DQVA_TESTS=ON qva_calc_tests
start "LibreOffice, first half" 1500 env GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=0 $calc_tests "--gtest_filter=-$shipped"
start "LibreOffice, second half" 1500 env GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=1 $calc_tests "--gtest_filter=-$shipped"
start "Guide's examples in LibreOffice" 300 tools/test-guide.sh build/debug
start "Corpus in LibreOffice" 600 tools/check-command.sh "macros of the corpus" tools/corpus-libreoffice.sh build/debug

start_fuzzing
build "Build of the release" release -DQVA_TESTS=OFF
start "LibreOffice, as shipped" 1500 env QVA_TESTED_BUILD="$PWD/build/release" $calc_tests "--gtest_filter=$shipped"
start "Site and help" 300 tools/test-help.sh build/release
start "Workbooks for Excel" 300 tools/test-excel-workbooks.sh build/release
start "Linux modules" 60 tools/check-modules.sh build/release

build "Build for 64-bit Windows" windows-x64 -DQVA_TESTS=ON
start "Windows, 64-bit" 1500 tools/test-windows.sh 64-bit
start "Windows, on a screen" 1500 tools/test-windows.sh screen

build "Build for 32-bit Windows" windows-x86 -DQVA_TESTS=ON
start "Doctor" 600 tools/test-doctor.sh build/windows-x64 build/windows-x86
start "Windows, 32-bit" 1500 tools/test-windows.sh 32-bit
start "Packages" 1500 tools/test-package.sh build/release build/windows-x64 build/windows-x86
start "Setup program, for the user" 600 tools/test-setup.sh user
start "Setup program, for all" 600 tools/test-setup.sh all
start "Setup program, on a screen" 600 tools/test-setup.sh screen
start "House rules" 900 nice -n 19 tools/lint.sh

build "Build of the tests, with sanitizers" debug -DQVA_TESTS=ON
tests="tools/google-test.sh build/debug/tests/qva_tests"
start "Library and seam, first half" 900 env GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=0 $tests
start "Library and seam, second half" 900 env GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=1 $tests
start "LibreOffice's door" 300 tools/google-test.sh build/debug/tests/qva_door_tests
wait
untracked > "$results/left"
start "Source tree" 60 tools/check-command.sh "tests leave no files in it" diff "$results/untracked" "$results/left"
wait

printf '\n%-42s %9s %9s %9s  %s\n' "step" "began (s)" "time (s)" "CPU (s)" "result"
for step in "$results"/*.step; do
  { read -r name; read -r begin; read -r real user sys; read -r result; } < "$step"
  [[ $result =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed,\ ([0-9]+)\ skipped$ ]]
  passed=$((passed + BASH_REMATCH[1])) failed=$((failed + BASH_REMATCH[2])) skipped=$((skipped + BASH_REMATCH[3]))
  LC_ALL=C awk -v name="$name" -v begin="$begin" -v real="$real" -v user="$user" -v sys="$sys" -v result="$result" \
    'BEGIN { printf "%-42s %9d %9d %9d  %s\n", name, begin, real, user + sys, result }'
done
printf '%-42s %9d %9d\n' "all" 0 "$SECONDS"
sum_up
