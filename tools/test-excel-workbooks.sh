#!/usr/bin/env bash
# Makes the samples' workbooks for Excel, reads them by the published formats, and runs them in LibreOffice beside the flat
# ones: either must do the same. The last line sums the tests up.
#   tools/test-excel-workbooks.sh [<build folder>]
set -uo pipefail
cd "$(dirname "$0")/.."
. tools/test-lib.sh

build=${1:-build/release}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# What a run of a sample leaves: its steps without their times, what it printed, and each sheet of what it archived.
#   run <workbook> <folder>
run() {
  local workbook=$1 out=$2 sample print
  sample=$(basename "${workbook%.*}")
  LC_ALL=C.UTF-8 timeout --kill-after=10 200 "$build/tools/report-runner" --no-picture --output-folder "$out" \
    --log "$sample.log" --form-answers "samples/$sample.answers" "$workbook" > "$out.txt" 2>&1 ||
    { tail -n 20 "$out.txt"; return 1; }
  mkdir "$out/left"
  sed -E 's/^[0-9-]+ [0-9:]+  :  //; s/\.xlsm/.fods/g' "$out/$sample.log" > "$out/left/log.txt"
  # Excel's columns are whole pixels wide, so that lines may break elsewhere.
  for print in "$out"/printed-*.pdf; do
    pdftotext "$print" - | tr -s '[:space:]' '\n' | LC_ALL=C sort > "$out/left/$(basename "$print").txt"
  done
  find "$out/drives" -name '*.xls' -exec timeout 100 soffice --headless "-env:UserInstallation=file://$work/profile" \
    --convert-to 'csv:Text - txt - csv (StarCalc):9,34,76,1,,0,false,true,false,false,false,-1' --outdir "$out/left" {} + \
    > "$out/convert.txt" 2>&1
  ls "$out/left"/*.csv > /dev/null
}

check "workbooks for Excel are made of the samples" tools/excel-workbooks.sh "$work" samples/*.fods
for sample in samples/*.fods; do
  name=$(basename "$sample" .fods)
  check "Excel finds the sheets, names and macros of $name" tools/check-excel-workbook.py "$sample" "$work/$name.xlsm"
  check "$name runs as a flat workbook" run "$sample" "$work/fods-$name"
  check "and as Excel's in LibreOffice" run "$work/$name.xlsm" "$work/xlsm-$name"
  check "with the same steps, papers and archive" diff -r "$work/fods-$name/left" "$work/xlsm-$name/left"
done

# A sheet by its code name, which flat workbooks do not have; another workbook is in front once.
mkdir "$work/code-names"
sed 's/ThisWorkbook.Worksheets("Laikotarpis")/Lapas2/
  s/\(nNumeris = oJuostos.CreateToolbar\)(.*)$/Workbooks.Add: \1(Lapas3): ThisWorkbook.Activate/' \
  samples/sablonas.fods > "$work/code-names/sablonas.fods"
uses_code_names() {
  ! grep -q 'Worksheets("[LN]' "$1.fods" && tools/excel-workbooks.sh "$(dirname "$1")" "$1.fods" && run "$1.xlsm" "$work/by-name"
}
check "the library takes sheets by their code names" uses_code_names "$work/code-names/sablonas"
check "with the same result" diff -r "$work/fods-sablonas/left" "$work/by-name/left"

check "and the reader tells what was changed there" \
  grep -q 'modules: ' <(tools/check-excel-workbook.py samples/sablonas.fods "$work/code-names/sablonas.xlsm")
sum_up
