#!/usr/bin/env bash
# Makes workbooks with macros for Excel from flat ones, .xlsm files of the same names. LibreOffice converts the sheets; the
# macros, which it would leave behind, are put in afterwards.
#   tools/excel-workbooks.sh <output folder> <workbook.fods>...
set -euo pipefail
[[ $# -ge 2 ]] || { sed -n '2,4s/^# //p' "$0" >&2; exit 2; }
output=$1
shift
tools=$(dirname "$0")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

timeout 300 soffice --headless "-env:UserInstallation=file://$work/profile" --infilter="OpenDocument Spreadsheet Flat XML" \
  --convert-to "xlsm:Calc MS Excel 2007 VBA XML" --outdir "$work/sheets" "$@" > "$work/convert.log" 2>&1 ||
  { cat "$work/convert.log" >&2; exit 1; }
mkdir -p "$output"
for workbook in "$@"; do
  name=$(basename "$workbook" .fods)
  [[ -s $work/sheets/$name.xlsm ]] || { echo "$0: $name.xlsm was not made" >&2; exit 1; }
  unzip -q "$work/sheets/$name.xlsm" -d "$work/$name"
  "$tools/embed-vba.pl" "$workbook" "$work/$name"
  # The types come first, as Excel writes them.
  (cd "$work/$name" && zip -q -X -nw "../$name.zip" '[Content_Types].xml' && zip -q -X -D -r "../$name.zip" .)
  mv "$work/$name.zip" "$output/$name.xlsm"
done
