#!/usr/bin/env bash
# Creates a private Wine prefix in the named folder, unless a whole one is there already: a Lithuanian Windows, code
# page 1257 and regional settings included. Needs no display. With the folder that tools/wine-i386.sh made, 32-bit
# programs run in it, too.
#   tools/wine-prefix.sh <folder> [<folder of the 32-bit libraries>]
set -euo pipefail

[[ $# -eq 1 || $# -eq 2 ]] || { echo "usage: $0 <folder> [<folder of the 32-bit libraries>]" >&2; exit 2; }
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

# Wine takes the user's language from the process; the machine may not have this one.
mkdir "$folder/locale"
localedef -i lt_LT -f UTF-8 "$folder/locale/lt_LT.UTF-8" \
  || { echo "$0: the Lithuanian locale could not be made; is the package locales installed?" >&2; exit 1; }

[[ $# -eq 1 ]] || ln -s "$(realpath "$2")" "$folder/i386"

log=$folder/wineboot.log
{
  "$here/wine-run.sh" --timeout 150 "$folder" wineboot -i &&
    # Displays here have no window manager; Wine would wait for one whenever a window opens or closes.
    "$here/wine-run.sh" "$folder" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
} > "$log" 2>&1 9>&- || { cat "$log" >&2; echo "$0: Wine could not make its prefix in $folder" >&2; exit 1; }
# The registry is on disk when the server has gone.
WINEPREFIX=$folder timeout 60 wineserver -w 9>&- \
  || { echo "$0: Wine did not finish its prefix in $folder" >&2; exit 1; }
touch "$mark"
