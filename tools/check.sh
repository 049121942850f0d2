#!/usr/bin/env bash
# The short loop: formatting of what differs from the last commit, staged or not, an incremental build, and the tests of
# library and seam, in as many processes as there are processors. The last line sums up.
set -uo pipefail
cd "$(dirname "$0")/.."
. tools/test-lib.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

{ git diff -z --name-only --diff-filter=d HEAD -- '*.h' '*.cpp' '*.c' &&
  git ls-files -z --others --exclude-standard '*.h' '*.cpp' '*.c'; } > "$work/changed" || exit
formatted "formatting of what was changed" "$work/changed"

cmake --preset debug > /dev/null && cmake --build --preset debug --target qva_tests
report "build" $?
[[ $failed -eq 0 ]] || { sum_up; exit 1; }

processes=$(nproc)
for ((i = 0; i < processes; ++i)); do
  GTEST_TOTAL_SHARDS=$processes GTEST_SHARD_INDEX=$i \
    timeout --kill-after=10 600 tools/google-test.sh build/debug/tests/qva_tests > "$work/$i" 2>&1 &
done
wait
for ((i = 0; i < processes; ++i)); do
  grep -v 'skipped$' "$work/$i"
  last=$(tail -n 1 "$work/$i")
  [[ $last =~ ^[0-9]+\ passed,\ [0-9]+\ failed,\ [0-9]+\ skipped$ ]] || {
    echo "FAILED: the tests were cut off"
    last="0 passed, 1 failed, 0 skipped"
  }
  read -r good _ bad _ none _ <<< "$last"
  passed=$((passed + good)) failed=$((failed + bad)) skipped=$((skipped + none))
done
sum_up
