#!/usr/bin/env bash
# Works the library's windows under Wine as a user does, with keyboard and mouse, on a display of its own, while
# windows.vbs calls the library and checks what came of it. The last line is the script's.
#   tests/com/desktop/run.sh [--pictures <folder> <scale in percent>] <prefix folder>
# Library and test bench must be registered in the prefix. With --pictures each window is saved as
# <folder>/windows-<name>.png as it comes along; for a scale other than 100 % the name ends with the scale, and the
# prefix must have that scale (HKCU\Control Panel\Desktop, LogPixels = 96 dpi at 100 %).
set -uo pipefail
root=$(dirname "$(realpath "$0")")/../../..
. "$root/tools/test-lib.sh"

pictures= scale=100
if [[ ${1:-} == --pictures ]]; then
  pictures=$(realpath "$2") scale=$3
  shift 3
fi
[[ $# -eq 1 ]] || { sed -n '2,7s/^# //p' "$0" >&2; exit 2; }
prefix=$(realpath "$1")
work=$(mktemp -d)
state=$work/state
touch "$state"

script=
finish() {
  [[ -z $script ]] || kill "$script" 2> /dev/null
  WINEPREFIX=$prefix timeout 30 wineserver -k 2> /dev/null
  end_display
  rm -rf "$work"
}
trap finish EXIT
trap 'exit 1' INT TERM
fail() {
  echo "FAILED: $*"
  echo "What stood there:"
  cat "$state"
  [[ -z ${QVA_FAILURE_PICTURE:-} ]] || timeout 20 import -window root "$QVA_FAILURE_PICTURE"
  [[ ! -s $work/output ]] || cat "$work/output"
  exit 1
}

# Repeats a condition until it holds.
within() {
  local limit=$((SECONDS + $1)) what=$2
  shift 2
  until "$@"; do
    [[ $SECONDS -lt $limit ]] || fail "$what"
    [[ -z $script ]] || kill -0 "$script" 2> /dev/null || fail "$what: the script has ended"
    sleep 0.03
  done
}

# --- What the user sees --------------------------------------------------------------------------------------

shows() {
  local line
  for line; do grep -qxF -- "$line" "$state" || return 1; done
}
# Until all these lines stand in the state (see tests/com/bench/Onlooker.h).
await() { within 60 "in vain: $*" shows "$@"; }
lacks() { ! shows "$1"; }
await_gone() { within 60 "still there: $1" lacks "$1"; }

# A number of a place: x, y, width or height, of the inside or the frame of the window in front or of the field that
# has the focus.
place() {
  local number= tries
  for ((tries = 0; tries < 100; ++tries)); do
    number=$(sed -nE "s/^$1 .*\b$2=(-?[0-9]+).*/\1/p" "$state")
    [[ -z $number ]] || break
    sleep 0.03 # the file may just be written anew
  done
  echo "$number"
}
# Saves the window in front.
picture() {
  [[ -n $pictures ]] || return 0
  local name=$1 suffix=
  [[ $scale -eq 100 ]] || suffix=-$scale
  sleep 0.5 # the display draws what it was told, and nobody says when it has done so
  timeout 20 import -window root -crop \
    "$(place frame width)x$(place frame height)+$(place frame x)+$(place frame y)" +repage \
    +dither -colors 64 "PNG8:$pictures/windows-$name$suffix.png"
}

# --- What the user does --------------------------------------------------------------------------------------

keys() { xdotool key --delay 20 "$@"; }
text() { xdotool type --delay 20 "$1"; }
# At a place of the window in front, measured at 100 %.
click() {
  xdotool mousemove $(($(place inside x) + $1 * scale / 100)) $(($(place inside y) + $2 * scale / 100)) \
    click --delay 60 --repeat "${3:-1}" 1
}

# Draws the lower right corner of the window in front by so much, measured at 100 %.
enlarge() {
  local width height more_width=$(($1 * scale / 100)) more_height=$(($2 * scale / 100)) step
  width=$(place inside width) height=$(place inside height)
  xdotool mousemove $(($(place frame x) + $(place frame width) - 2)) \
    $(($(place frame y) + $(place frame height) - 2)) mousedown 1
  for step in 1 2 3 4; do
    xdotool mousemove_relative --sync $((more_width / 4)) $((more_height / 4))
  done
  xdotool mouseup 1
  is_larger() { [[ $(place inside width) -gt $width && $(place inside height) -gt $height ]]; }
  within 60 'a larger window' is_larger
}

readonly kPeriod='Ataskaitinio periodo nustatymai' kPicker='Pasirinkite data'

period_window() { await "$1" "window $kPeriod"; }
# Presses the button of the current cell with the mouse. Where it is, the field tells in which the cell is edited.
click_cell_button() {
  await 'focus QVA_Varnholt.Grid #14058 Papilduomi parametrai'
  keys F2
  await 'focus Edit '
  local x=$(($(place field x) + $(place field width))) y=$(place field y) height
  height=$(place field height)
  keys Escape
  await 'focus QVA_Varnholt.Grid #14058 Papilduomi parametrai'
  xdotool mousemove $((x + height / 2)) $((y + height / 2)) click --delay 60 1
}
# A new row for a book and its only account set, by the account sets' list, with its only budget, by the documents'.
# The command opens a list from its cell.
add_row() {
  click 300 250 # below the rows
  keys ctrl+End Home
  text BALTIJA
  await 'focus Edit BALTIJA'
  keys Tab
  "$@"
  await 'window Sąskaitų planas' 'Button OK'
  text f2
  await 'focus Edit f2'
  picture lookup
  keys Return
  await "window $kPeriod"
  keys Tab Tab
  "$@"
  await 'window Dokumentai'
  picture documents
  keys Down Return
  await "window $kPeriod"
}
delete_button() { click 61 $(($(place inside height) * 100 / scale - 73)); }

work_period() {
  period_window 'scene confirm'
  click 185 96 # txtYear
  keys ctrl+a
  text 2024
  await 'focus Edit 2024'
  click 185 126 # txtQuater
  keys ctrl+a
  text 2
  await 'focus Edit 2'
  picture period
  keys ctrl+Next
  await 'Button DelRec'
  add_row keys F4
  picture budgets
  keys Delete # a row
  add_row keys F4
  delete_button
  await 'focus Button DelRec'
  add_row click_cell_button
  enlarge 120 80
  delete_button
  await 'focus Button DelRec'
  add_row click_cell_button
  keys Tab
  text BIU-A
  await 'focus Edit BIU-A'
  keys ctrl+Prior
  await_gone 'Button DelRec'
  click $(($(place inside width) * 100 / scale - 148)) $(($(place inside height) * 100 / scale - 22)) # OK
}

leave_period() {
  period_window 'scene cancel'
  click 185 96
  keys ctrl+a
  text 2030
  await 'focus Edit 2030'
  click 588 378 # Cancel
  period_window 'scene escape'
  click 185 156 # txtMonth
  keys ctrl+a
  text 7
  await 'focus Edit 7'
  keys Escape
}

be_refused() {
  period_window 'scene refuse'
  click 185 126
  keys ctrl+a
  text 4
  await 'focus Edit 4'
  keys Return
  await 'Static Neteisingai nurodytas laikotarpis' 'Button Gerai'
  picture refusal
  keys Return
  await "window $kPeriod" 'focus Edit 4'
  text 2
  await 'focus Edit 2'
  keys Return
}

confirm_beside_another_request() {
  period_window 'scene nested'
  keys Return
}

pick_dates() {
  await 'scene double click' "window $kPicker"
  picture date-picker
  # The 14th, beside the 12th that is shown; calendars do not grow quite as the scale does.
  click $(($(place inside width) * 36 / scale)) $(($(place inside height) * 52 / scale)) 2
  await 'scene arrows' "window $kPicker"
  keys Right Down Return
  await 'scene leave' "window $kPicker"
  keys Right Escape
}

answer_questions() {
  await 'scene print' 'Static Kaip spausdinti ataskaitą?'
  [[ $(grep '^Button ' "$state") == $'Button Visus puslapius iš karto\nButton Po vieną puslapį' ]] ||
    fail 'other answers to how to print'
  picture question
  keys Right Return
  await 'Button Gerai'
  keys Return
}

be_told_of_the_save() {
  await "scene $1" 'Static Ataskaita įrašyta' 'Button Gerai'
  keys Return
}
save_reports() {
  be_told_of_the_save save
  await 'scene keep' 'Static Ataskaita jau yra. Ar pakeisti?' 'Button Taip' 'Button Ne' 'focus Button Taip'
  keys Right
  await 'focus Button Ne'
  keys Return
  await 'scene replace' 'Static Ataskaita jau yra. Ar pakeisti?' 'focus Button Taip'
  keys Return
  be_told_of_the_save replace
  await 'scene end'
}

# --- The run -------------------------------------------------------------------------------------------------

begin_display 1280x960 || fail 'there is no display'
export DISPLAY=:$display

# Whoever ran before may have been without a display.
WINEPREFIX=$prefix timeout 30 wineserver -k
cat "$root/tests/com/scripts/check.vbs" "$root/tests/com/desktop/windows.vbs" |
  "$root/tools/ascii-script.pl" "$work/texts.txt" > "$work/script.vbs"
perl -pi -e 'BEGIN { $path = shift } s/\@STATE\@/$path/' "$(windows_path "$state")" "$work/script.vbs"
start_script() {
  env -u QVA_VARNHOLT_MESSAGE_LOG -u QVA_VARNHOLT_FORM_ANSWERS -u QVA_VARNHOLT_ANSWERS \
    "$root/tools/wine-run.sh" --timeout 300 --on "$DISPLAY" "$prefix" 'C:\windows\system32\cscript.exe' //nologo \
    "$(windows_path "$work/script.vbs")" > "$work/output" 2>&1 &
  script=$!
}
start_script
# A loaded machine may need longer for Wine's desktop than Wine waits; the next one finds everything at hand.
until [[ -s $state ]]; do
  if ! kill -0 "$script" 2> /dev/null; then
    grep -q '^no windows' "$work/output" && [[ -z ${again:-} ]] || fail 'the script did not begin'
    again=yes
    start_script
  fi
  sleep 0.1
done

work_period
leave_period
be_refused
confirm_beside_another_request
pick_dates
answer_questions
save_reports

wait "$script"
script=
tr -d '\r' < "$work/output" | tee "$work/lines"
grep -qxE 'OK [0-9]+ checks' "$work/lines"
