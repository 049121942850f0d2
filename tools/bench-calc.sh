#!/usr/bin/env bash
# Runs the LibreOffice benchmark of a built release.
#   tools/bench-calc.sh [<build folder>]
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/release}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
QVA_BENCH_RESULTS=$work/results "$build/tools/report-runner" --build-folder "$build" --output-folder "$work/out" \
  --no-picture --timeout 300 --macro VBAProject.Bench.Main bench/calc/clear_formulas.fods > "$work/steps" \
  || { cat "$work/steps" >&2; exit 1; }
echo "LibreOffice:"
cat "$work/results"
