#!/usr/bin/env bash
# Tries the fuzz targets (tests/fuzz) of build/fuzz: each gets the inputs of its corpus, then new ones for so many
# seconds. An input that breaks a target is left in out/fuzz. The last line sums up.
#   tools/test-fuzz.sh [--collect | --keep] <seconds> [<target>...]
# With --collect inputs that reach new code stay in out/fuzz/corpora for the next run; with --keep those of them that
# the corpora lack go there, too, to be committed.
set -uo pipefail
cd "$(dirname "$0")/.."
. tools/test-lib.sh
work=$(mktemp -d)
trap 'trap - EXIT; rm -rf "$work"; kill -- $(jobs -p) 2> /dev/null' EXIT
trap 'exit 1' INT TERM

collects='' keeps=''
case $1 in
  --collect) collects=1 && shift ;;
  --keep) collects=1 keeps=1 && shift ;;
esac
seconds=$1
shift
[[ $# -gt 0 ]] || set -- $(basename -s .cpp tests/fuzz/*.cpp)

# An input may take that long and that much memory, and may be long from the beginning.
limits=(-timeout=10 -rss_limit_mb=1024 -len_control=0)

run() {
  local step=$1 target=$2
  shift 2
  timeout --kill-after=10 "$((seconds + 120))" "build/fuzz/tests/fuzz/fuzz_$target" "${limits[@]}" \
    "-artifact_prefix=out/fuzz/$target-" "$@" > "$work/$target.$step" 2>&1
  echo "$?" >> "$work/$target.$step"
}
try() {
  local target=$1 corpus=tests/fuzz/corpora/$1 new=$work/$1
  [[ -z $collects ]] || new=out/fuzz/corpora/$target
  mkdir -p "$new"
  run corpus "$target" -runs=0 "$corpus"
  run new "$target" "-max_total_time=$seconds" -print_final_stats=1 "$new" "$corpus"
  [[ -z $keeps ]] || run merge "$target" -merge=1 "$corpus" "$new"
}
# What a step said and whether it ended well; the last lines of one that did not.
tell() {
  local name=$1 log=$2 status
  status=$(tail -n 1 "$log")
  [[ $status -eq 0 ]] || tail -n 60 "$log"
  report "$name" "$status"
}

mkdir -p out/fuzz
for target; do
  while [[ $(jobs -rp | wc -l) -ge 2 ]]; do wait -n; done
  try "$target" &
done
wait
for target; do
  tell "$target: $(find "tests/fuzz/corpora/$target" -type f | wc -l) inputs of its corpus" "$work/$target.corpus"
  runs=$(sed -nE 's/^stat::number_of_executed_units: *([0-9]+)$/\1/p' "$work/$target.new")
  tell "$target: ${runs:-no} inputs in $seconds s" "$work/$target.new"
done
sum_up
