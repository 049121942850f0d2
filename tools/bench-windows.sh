#!/usr/bin/env bash
# Builds and runs the benchmarks of the Windows library, under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/windows-x64
prefix=build/wine
cmake --preset windows-x64 -DQVA_BENCH=ON > /dev/null
cmake --build --preset windows-x64 --target QVA_Varnholt qva_calls_bench qva_load_bench
tools/wine-prefix.sh "$prefix"
tools/wine-run.sh "$prefix" "$build/qva_load_bench.exe" "$build/QVA_Varnholt.dll"
tools/wine-run.sh "$prefix" "$build/qva_calls_bench.exe"
