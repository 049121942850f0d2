#!/usr/bin/env bash
# Takes the pictures of the tutorial that show the workbook as its steps leave it: the macro in its editor, the paper, the
# second sheet, the row of the button. Needs the build release.
#   tools/tutorial-pictures.sh <folder>
set -euo pipefail
cd "$(dirname "$0")/.."
pictures=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
runner() { timeout 100 build/release/tools/report-runner "$@" --build-folder "$PWD/build/release" > "$work/log.txt" 2>&1 || { cat "$work/log.txt"; exit 1; }; }

workbook="$work/Bandomasis balansas.fods"
build/release/tools/report-runner new "$workbook" samples/sablonas.fods > /dev/null
tools/tutorial.pl gidas "$workbook" "$work"
QVA_TEST_WORKBOOK=$workbook runner --no-picture --output-folder "$work/driver" "$work/driver.fods"
runner --output-folder "$work/out" --form-answers "$work/tutorial.answers" "$workbook"
convert "$work/out/Bandomasis balansas.png" -resize 700x -colors 32 "$pictures/tutorial-paper.png"

# The macro shows what is to be seen, and waits until the windows are drawn.
perl -CSD -0pi -e 'BEGIN { local $/; open my $in, "<:utf8", shift; $macro = <$in> } s{(?=</ooo:source-code>)}{$macro}' /dev/stdin "$workbook" <<EOF2

Public Sub Paveikslai()
    Main
    RodytiPinigus
    Fotografuoti "cash"
    ThisWorkbook.Worksheets("Nustatymai").Activate
    Fotografuoti "button"
    Dim aArgs(4) As New com.sun.star.beans.PropertyValue
    aArgs(0).Name = "Document" : aArgs(0).Value = ThisComponent.URL
    aArgs(1).Name = "LibName" : aArgs(1).Value = "BandomasisBalansas"
    aArgs(2).Name = "Name" : aArgs(2).Value = "Ataskaita"
    aArgs(3).Name = "Type" : aArgs(3).Value = "Module"
    aArgs(4).Name = "Line" : aArgs(4).Value = 40
    createUnoService("com.sun.star.frame.DispatchHelper").executeDispatch(ThisComponent.CurrentController.Frame, ".uno:BasicIDEAppear", "", 0, aArgs())
    Fotografuoti "content"
End Sub

Private Sub Fotografuoti(sVardas)
    Wait 3000
    Shell "import", 0, "-window root $pictures/tutorial-" &amp; sVardas &amp; ".png", True
End Sub
EOF2
{
  # The message about the archive waits for a key.
  echo 'openbox & sleep 1; while sleep 1; do xdotool search --name "^QVA_Varnholt" windowfocus key Return; done &'
  printf 'timeout 100 build/release/tools/report-runner --build-folder %q --show --output-folder %q --form-answers %q' \
    "$PWD/build/release" "$work/shown" "$work/tutorial.answers"
  printf ' --macro Ataskaita.Paveikslai %q\n' "$workbook"
  echo 'status=$?; kill $(jobs -p); exit $status'
} > "$work/session.sh"
xvfb-run -a -s "-screen 0 1100x700x24" bash "$work/session.sh" > "$work/log.txt" 2>&1 || { cat "$work/log.txt"; exit 1; }
