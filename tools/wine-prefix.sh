#!/usr/bin/env bash
# Creates a private Wine prefix in the named folder, unless a whole one is there already. Needs no display.
#   tools/wine-prefix.sh <folder>
set -euo pipefail

[[ $# -eq 1 ]] || { echo "usage: $0 <folder>" >&2; exit 2; }
mkdir -p "$1"
folder=$(realpath "$1")
here=$(dirname "$(realpath "$0")")

# The mark comes last, so that a prefix whose making was cut off is made anew.
mark=$folder/.complete
[[ -e $mark ]] && exit 0

# Two at a time would spoil each other's work.
exec 9> "$folder/.lock"
flock --timeout 180 9 || { echo "$0: another process is still making $folder" >&2; exit 1; }
[[ -e $mark ]] && exit 0
find "$folder" -mindepth 1 -maxdepth 1 ! -name .lock -exec rm -rf {} +

log=$folder/wineboot.log
"$here/wine-run.sh" --timeout 150 "$folder" wineboot -i > "$log" 2>&1 9>&- \
  || { cat "$log" >&2; echo "$0: Wine could not make its prefix in $folder" >&2; exit 1; }
# The registry is on disk when the server has gone.
WINEPREFIX=$folder timeout 60 wineserver -w 9>&- \
  || { echo "$0: Wine did not finish its prefix in $folder" >&2; exit 1; }
touch "$mark"
