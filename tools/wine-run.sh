#!/usr/bin/env bash
# Runs a Windows program in a Wine prefix, with the program's output and exit status.
#   tools/wine-run.sh [--timeout <seconds>] [--display | --on <display>] [--locale <locale>] <prefix folder> <program>
#     [<argument>...]
# With --display it gets one of its own, with --on one that is there. Otherwise there is none: a program that opens
# a window is told that it cannot, instead of waiting for nobody. The user is Lithuanian unless another locale is named.
# The exit status is 124 when the time is up; the limit is 120 seconds unless given.
set -euo pipefail

limit=120 locale=lt_LT.UTF-8
display=()
while [[ ${1:-} == --* ]]; do
  case $1 in
    --timeout) limit=$2; shift 2 ;;
    --display) display=(xvfb-run --auto-servernum --server-args='-screen 0 1024x768x24'); shift ;;
    --locale) locale=$2; shift 2 ;;
    --on) display=(env "DISPLAY=$2"); shift 2 ;;
    *) echo "$0: unknown option $1" >&2; exit 2 ;;
  esac
done
[[ $# -ge 2 ]] || { sed -n '2,7s/^# //p' "$0" >&2; exit 2; }

WINEPREFIX=$(realpath "$1")
shift
export WINEPREFIX WINEDEBUG=-all WINEARCH=win64
# Neither .NET nor a browser is wanted; the prefix is made without asking for them, and without menu entries.
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d'
[[ ! -e $WINEPREFIX/i386 ]] || export WINEDLLPATH=$WINEPREFIX/i386
unset DISPLAY WAYLAND_DISPLAY

# The first program decides for all that run at the same time whether there is a display.
[[ ${#display[@]} -eq 0 ]] || timeout 60 wineserver -w || true

exec env LOCPATH="$WINEPREFIX/locale" LC_ALL="$locale" \
  timeout --kill-after=10 "$limit" "${display[@]}" wine "$@"
