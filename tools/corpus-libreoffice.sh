#!/usr/bin/env bash
# Runs the macros of tests/corpus in LibreOffice, all of them in one process, and compares their logs. Exit
# status 1 when one differs otherwise than tests/corpus/divergences.txt tells.
#   tools/corpus-libreoffice.sh [<build folder>]
set -uo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/debug}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/drives/C"
tools/corpus.pl basic "$work" || exit 1

# LibreOffice itself is built without the sanitizers, which must be there before our component is; it keeps
# memory to its end, and so do we for it.
sanitizer=()
if readelf -d "$build/libqva_calc.so" | grep -q libasan; then
  sanitizer=(LD_PRELOAD="$("${CXX:-g++}" -print-file-name=libasan.so)" ASAN_OPTIONS=detect_leaks=0)
fi
env "${sanitizer[@]}" LC_ALL=C.UTF-8 QVA_TEST_LOG="$work/log.txt" QVA_VARNHOLT_DRIVES="$work/drives" \
  timeout --kill-after=10 400 "$build/tools/report-runner" --no-picture --output-folder "$work/out" \
  --host-resources "$work/host" --answers "$work/box.answers" --form-answers "$work/form.answers" --timeout 380 \
  "$work/corpus.fods" > "$work/runner.txt" 2>&1
# Status 1 is the failures that the macros report on purpose.
[[ $? -le 1 ]] || tail -n 20 "$work/runner.txt"
release=$(timeout 60 soffice --version | sed -nE 's/^LibreOffice ([0-9]+\.[0-9]+).*/\1/p')
tools/corpus.pl compare libreoffice "$work/log.txt" "$release"
