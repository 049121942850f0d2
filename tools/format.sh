#!/usr/bin/env bash
# Formats all sources.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/test-lib.sh

program=$(house_clang_format)
[[ -n $program ]] || { echo "Sources are formatted by clang-format 14, which is not here." >&2; exit 1; }
git ls-files -z '*.h' '*.cpp' '*.c' | xargs -0 "$program" -i
