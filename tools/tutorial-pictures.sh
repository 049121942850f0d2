#!/usr/bin/env bash
# Takes the pictures of the tutorial that show the workbook as its steps leave it: the template, the widened sheet, the macro
# in its editor, the first run, the paper, the second sheet, the row of the button. Needs the build release.
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
# The window's title is the file's name.
mkdir "$work/template" "$work/first"
template="$work/template/${workbook##*/}"
first="$work/first/${workbook##*/}"
mv "$work/pirma.fods" "$template"
cp "$template" "$first"
QVA_TEST_WORKBOOK=$first runner --no-picture --macro Ataskaita.Plesti --output-folder "$work/driver" "$work/driver.fods"
QVA_TEST_WORKBOOK=$workbook runner --no-picture --output-folder "$work/driver" "$work/driver.fods"
runner --output-folder "$work/out" --form-answers "$work/tutorial.answers" "$workbook"
convert "$work/out/Bandomasis balansas.png" -resize 700x -colors 32 "$pictures/tutorial-paper.png"

# Macros show what is to be seen, and wait until the windows are drawn.
cat > "$work/macros.txt" <<END

Public Sub Sablonas()
    Fotografuoti "template"
End Sub

Public Sub Lapas()
    ThisWorkbook.Worksheets("Ataskaita").Range("D101").Select
    ActiveWindow.ScrollRow = 90
    Fotografuoti "sheet"
End Sub

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
END
for file in "$template" "$first" "$workbook"; do
  perl -CSD -0pi -e 'BEGIN { local $/; open my $in, "<:utf8", shift; $macros = <$in> } s{(?=</ooo:source-code>)}{$macros}' \
    "$work/macros.txt" "$file"
done

# On a screen: shown <macro> <workbook> runs one, box waits for the library's message, which waits for a key.
{
  echo 'openbox & sleep 1'
  printf 'shown() { timeout 100 build/release/tools/report-runner --build-folder %q --show --form-answers %q --output-folder %q' \
    "$PWD/build/release" "$work/tutorial.answers" "$work/shown"
  cat <<'END'
"/$1" --macro "Ataskaita.$1" "$2"; }
box() { until xdotool search --onlyvisible --name "^QVA_Varnholt" > /dev/null; do sleep 1; done; sleep 2; }
press() { xdotool search --onlyvisible --name "^QVA_Varnholt" windowfocus key Return; }
END
  printf 'shown Sablonas %q && shown Lapas %q &&\n' "$template" "$first"
  printf '  { (box; import -window root %q; press) & shown Main %q; } &&\n' "$pictures/tutorial-result.png" "$first"
  printf '  { (box; press) & shown Paveikslai %q; }\n' "$workbook"
  echo 'status=$?; kill $(jobs -p); exit $status'
} > "$work/session.sh"
xvfb-run -a -s "-screen 0 1100x700x24" bash "$work/session.sh" > "$work/log.txt" 2>&1 || { cat "$work/log.txt"; exit 1; }
