#!/usr/bin/env bash
# Takes the pictures of docs/images anew: each window in LibreOffice and on Windows (by Wine), at 100 % and 150 %, those of
# LibreOffice in its plain look and in GTK's, light and dark, and the steps of the tutorial. Needs the builds debug and
# windows-x64, with their tests, and release.
# Whoever runs it looks at what it made.
set -euo pipefail
cd "$(dirname "$0")/.."

x64=$PWD/build/windows-x64
work=$(mktemp -d)
prefix=$work/prefix
. tools/test-lib.sh
trap 'WINEPREFIX=$prefix timeout 30 wineserver -k 2> /dev/null || true; rm -rf "$work"' EXIT

for dpi in 96 144; do
  QVA_DESKTOP_DPI=$dpi QVA_PICTURES=docs/images timeout 600 build/debug/tests/qva_calc_tests --gtest_brief=1 \
    --gtest_filter='CalcWindows.ThePeriod*:CalcWindows.Dates*:Desktops/CalcLooks.*/Gtk*:Desktops/CalcKeys.*'
done

tools/tutorial-pictures.sh docs/images

mkdir -p "$prefix"
tools/wine-prefix.sh "$prefix"
# The title's buttons are signs of a font that Wine's own package does not bring.
cp /usr/share/wine/fonts/marlett.ttf "$prefix/drive_c/windows/Fonts/"
for library in QVA_TestBench QVA_Varnholt; do
  tools/wine-run.sh "$prefix" 'C:\windows\system32\regsvr32.exe' /s "$(windows_path "$x64/$library.dll")"
done
for scale in 100 150; do
  tools/wine-run.sh "$prefix" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d $((96 * scale / 100)) /f \
    > /dev/null
  WINEPREFIX=$prefix timeout 30 wineserver -k
  timeout 600 tests/com/desktop/run.sh --pictures docs/images "$scale" "$prefix"
done
