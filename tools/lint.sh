#!/usr/bin/env bash
# What the compiler does not say: formatting, sources that no build has, and clang-tidy's findings. Needs the builds
# debug, windows-x64 and windows-x86, with the headers that they make. The last line sums up.
set -uo pipefail
cd "$(dirname "$0")/.."

builds=(build/debug build/windows-x64 build/windows-x86)
passed=0 failed=0 skipped=0

check() {
  if [[ $1 -eq 0 ]]; then
    passed=$((passed + 1))
    echo "passed: $2"
  else
    failed=$((failed + 1))
    echo "FAILED: $2"
  fi
}

# Versions format differently, in a few places; the house's is 14.
format=$(command -v clang-format-14 || command -v clang-format)
if [[ $("$format" --version 2> /dev/null) == *"version 14."* ]]; then
  git ls-files '*.h' '*.cpp' | xargs "$format" --dry-run -Werror
  check $? "formatting"
else
  skipped=$((skipped + 1))
  echo "NOT RUN: formatting, which only clang-format 14 can tell"
fi

# The benchmarks are built on request only.
lost=$(git ls-files '*.cpp' ':!bench' | while read -r source; do
  grep -qsF "\"$PWD/$source\"" "${builds[@]/%//compile_commands.json}" || echo "not in the build: $source"
done)
printf '%s' "${lost:+$lost$'\n'}"
check ${#lost} "every source is in a build"

tools/tidy.pl "${builds[@]:0:2}"
check $? "clang-tidy"

printf '\n%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
[[ $failed -eq 0 && $passed -gt 0 ]]
