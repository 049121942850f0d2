#!/usr/bin/env bash
# Pastes every example of the guide, in both languages, into a module of a fresh spreadsheet in LibreOffice, as an author
# would, and runs it with the sample company; then makes the tutorial's report, step by step. The last line sums the tests up.
#   tools/test-guide.sh [<build folder>]
set -uo pipefail
cd "$(dirname "$0")/.."
. tools/test-lib.sh

build=${1:-build/debug}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/drives/C/Ataskaitos/Archyvas"
tools/guide-examples.pl libreoffice "$work" || exit 1

sanitizer=()
if readelf -d "$build/libqva_calc.so" | grep -q libasan; then
  sanitizer=(LD_PRELOAD="$("${CXX:-g++}" -print-file-name=libasan.so)" ASAN_OPTIONS=detect_leaks=0)
fi
runner() {
  env "${sanitizer[@]}" LC_ALL=C.UTF-8 timeout --kill-after=10 200 "$build/tools/report-runner" --no-picture "$@"
}
QVA_TEST_FOLDER="$work" QVA_VARNHOLT_DRIVES="$work/drives" runner --output-folder "$work/out" \
  --form-answers "$work/form.answers" --timeout 180 "$work/driver.fods" > "$work/runner.txt" 2>&1 ||
  tail -n 30 "$work/runner.txt"

while IFS=$'\t' read -r name expected; do
  found=$(cat "$work/$name.result" 2> /dev/null)
  [[ $found == *"$expected"* ]] || printf '%s gave:\n%s\nand not: %s\n' "$name" "$found" "$expected"
  [[ $found == "no error"* && $found == *"$expected"* ]]
  report "the example of $name runs as pasted" $?
done < "$work/expected.txt"
check "SaveDoc archives under the name of a project that has none" \
  test -s "$work/drives/C/Ataskaitos/Archyvas/2024/VBAProject_2024_02.xls"

# The tutorial, from the template to the archive; then its buttons and what the reference shows.
tutorial() {
  local folder=$work/$1 workbook="$work/$1/Bandomasis balansas.fods" archived=Archyvas/2025/BandomasisBalansas_2025.xls
  mkdir "$folder"
  { "$build/tools/report-runner" new "$workbook" && tools/tutorial.pl "$1" "$workbook" "$folder" &&
    QVA_TEST_WORKBOOK="$workbook" runner --output-folder "$folder/driver" "$folder/driver.fods" &&
    runner --output-folder "$folder/out" --form-answers "$folder/tutorial.answers" \
      --expect "drives/C/Ataskaitos/$archived" "$workbook" &&
    runner --output-folder "$folder/pasted" --form-answers "$folder/visos.answers" --macro Ataskaita.Visos \
      "$workbook"; } > "$folder/log.txt" 2>&1 ||
    { tail -n 20 "$folder/log.txt"; return 1; }
}
# A report for whole years tells why it takes no other period, and nothing is archived.
refused() {
  local out=$work/$1/refused
  runner --output-folder "$out" --period "$2" "$work/$1/metams.fods" > "$work/$1/refused.txt" 2>&1
  [[ $? -eq 1 ]] && grep -q 'Ši ataskaita sudaroma tik visiems metams' "$out/messages.txt" &&
    [[ ! -e $out/drives/C/Ataskaitos/Archyvas/2025 ]]
}
# The sum of debits stands in its row twice.
printed() { pdftotext -layout "$work/$1/out/printed-$2.pdf" - | grep -qE "$3"; }
logged() { [[ $(grep -cE "  :  $2" "$work/$1/pasted/Bandomasis balansas.log") -eq $3 ]]; }
for guide in gidas guide; do
  check "$guide: the tutorial's report is made and archived" tutorial "$guide"
  check "$guide: a report for whole years refuses a month" refused "$guide" 2025-03
  check "$guide: it takes a year" runner --output-folder "$work/$guide/year" --period 2025 \
    --expect drives/C/Ataskaitos/Archyvas/2025/BandomasisBalansas_2025.xls "$work/$guide/metams.fods"
  check "$guide: its sums agree" printed "$guide" 1 'IŠ VISO  *1 609 150,57  *1 609 150,57$'
  check "$guide: the second sheet has the largest entries" printed "$guide" 2 '2025-12-20  *2710  *2410 Pirkėjų apmokėjimai  *55 944,13$'
  check "$guide: and their sum" printed "$guide" 2 '^ *498 816,72$'
  check "$guide: which is logged" logged "$guide" 'Didžiausi pinigų įrašai: 498816[,.]72$' 1
  check "$guide: for another period it is another" logged "$guide" 'Didžiausi pinigų įrašai: 273161[,.]41$' 1
  check "$guide: the new button is on the toolbar" logged "$guide" 'Įrankių juosta .*: mygtukų 12$' 1
  check "$guide: its macro shows the sheet" logged "$guide" 'Rodomas lapas Pinigai$' 1
  check "$guide: the chart of accounts is logged" logged "$guide" '[1-6][0-9]{3} [^:]*$' 56
  check "$guide: so is what came into the bank" logged "$guide" '2410 Pirkėjų skolos: 581651[,.]62$' 1
done
sum_up
