#!/usr/bin/env bash
# What the compiler does not say: formatting, sources that no build has, includes that no folder may have, and clang-tidy's
# findings. Needs the builds debug, windows-x64, windows-x86 and fuzz, with the headers that they make. The last line sums up.
set -uo pipefail
cd "$(dirname "$0")/.."

. tools/test-lib.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

builds=(build/debug build/windows-x64 build/windows-x86 build/fuzz)

git ls-files -z '*.h' '*.cpp' '*.c' > "$work/formatted"
formatted "formatting" "$work/formatted"

# The benchmarks are built on request only. Sources that are compiled some at a time stand in files of the build.
for build in "${builds[@]}"; do cat "$build"/compile_commands.json "$build"/{,tests/,tests/fuzz/}CMakeFiles/*/Unity/*.cxx; done 2> /dev/null > "$work/sources"
lost=$(git ls-files '*.cpp' ':!bench' | while read -r source; do
  grep -qF "\"$PWD/$source\"" "$work/sources" || echo "not in the build: $source"
done)
printf '%s' "${lost:+$lost$'\n'}"
report "every source is in a build" ${#lost}

tools/includes.pl
report "every folder includes what it may" $?

# A system's header has a folder or ends in .h.
strays=$(grep -nE '^#include <([a-z]+/|[A-Za-z]+\.h[px]*>)' {global,period,reports,storage,excelui}/*.{h,cpp})
printf '%s' "${strays:+$strays$'\n'}"
report "the library includes the standard library alone besides" ${#strays}

# Newer versions find other things in other versions of the standard headers.
if [[ $(clang-tidy --version 2> /dev/null) == *"version 14."* ]]; then
  tools/tidy.pl "${builds[@]:0:2}"
  report "clang-tidy" $?
else
  not_run "clang-tidy, whose findings are those of version 14"
fi
sum_up
