#!/usr/bin/env bash
# Tests the Windows library: the DLLs statically, then what Wine can run, in private prefixes that are removed at the
# end. The last line sums the tests up.
#   tools/test-windows.sh [64-bit | screen | 32-bit]...
# 64-bit and 32-bit are the clients of each library, screen is everything that opens windows; without an argument all
# three. The builds are build/windows-x64 and build/windows-x86, with their tests.
set -uo pipefail
cd "$(dirname "$0")/.."
. tools/test-lib.sh

x64=$PWD/build/windows-x64
x86=$PWD/build/windows-x86
work=$(mktemp -d)
prefix=$work/prefix
trap 'WINEPREFIX=$prefix timeout 30 wineserver -k 2> /dev/null; rm -rf "$work"' EXIT

wine_run() { tools/wine-run.sh "$prefix" "$@"; }

# --- The files themselves ------------------------------------------------------------------------------------

exports() { sed -nE '/Name Pointer\] Table/,/^$/s/^[[:space:]]+\[.* //p' "$1" | sort | tr '\n' ' '; }
static_checks() {
  local name=$1 dll=$2/QVA_Varnholt.dll tools=$3
  local dump=$work/$name.dump
  "$tools-objdump" -p "$dll" > "$dump" || { report "$name: the DLL can be read" 1; return; }
  check "$name: exports the server's entries under their plain names" test "$(exports "$dump")" = \
    "DllCanUnloadNow DllGetClassObject DllInstall DllRegisterServer DllUnregisterServer "
  local foreign
  foreign=$(sed -n 's/.*DLL Name: //p' "$dump" | tr 'A-Z' 'a-z' | \
    grep -vxE '(advapi32|gdi32|kernel32|msvcrt|ole32|oleaut32|shell32|user32|version)\.dll')
  [[ -n $foreign ]] && echo "imports $foreign"
  check "$name: imports the system's own DLLs alone" test -z "$foreign"
  check "$name: holds its type library" grep -q 'TYPELIB' "$dump"
  local version file
  version=$(sed -nE 's/^project\(QVA_Varnholt VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
  for file in QVA_Varnholt.dll QVA_DemoHost.dll qva-doctor.exe; do
    check "$name: $file has the project's version" test "$(file_version "$2/$file")" = "$version.0"
  done
  has_no_sqlite() { ! grep -aqi sqlite "$dll" && grep -aqi sqlite "$1"; }
  check "$name: SQLite is in the demo host and not in the library" has_no_sqlite "$2/QVA_DemoHost.dll"
  local size
  size=$(stat -c %s "$dll")
  echo "$name: $size bytes"
  # What slips in shows: the tables of std::to_chars are a fifth of it. For 32 bits g++ 12 makes 995 KB of it and g++ 14
  # 1035, with all members of std::string, of which it calls one.
  check "$name: is smaller than 1060 KB" test "$size" -lt $((1060 * 1024))
  check "$name: has a manifest of every class" test \
    "$(grep -c '<comClass ' "$2/QVA_Varnholt.manifest")" = "$(grep -c '^  coclass ' server/com/QVA_Varnholt.idl)"
}

# --- Programs under Wine -------------------------------------------------------------------------------------

# A program of tests; more arguments are options of tools/wine-run.sh.
wine_test() {
  local name=$1 program=$2
  shift 2
  google_test "$name" tools/wine-run.sh --timeout 600 "$@" "$prefix" "$(windows_path "$program")"
}

# One script of tests/com/scripts. Dialogs are answered by the script's own answers file.
script() {
  local name=$1 cscript=$2
  cat tests/com/scripts/check.vbs "tests/com/scripts/$name.vbs" | \
    tools/ascii-script.pl "$work/texts.txt" > "$work/script.vbs"
  local output
  output=$(QVA_VARNHOLT_FORM_ANSWERS=$(windows_path "$PWD/tests/com/scripts/$name.answers") wine_run "$cscript" //nologo "$(windows_path "$work/script.vbs")" 2>&1 | tr -d '\r')
  echo "$output"
  grep -qxE 'OK [0-9]+ checks' <<< "$output"
}

# The macros of the corpus, in one script.
corpus() {
  local cscript=$1 folder=$work/corpus
  rm -rf "$folder"
  mkdir "$folder"
  tools/corpus.pl vbscript "$folder" || return 1
  QVA_VARNHOLT_FORM_ANSWERS=$(windows_path "$folder/form.answers") \
    QVA_VARNHOLT_MESSAGE_LOG=$(windows_path "$folder/boxes.log") \
    tools/wine-run.sh --timeout 300 "$prefix" "$cscript" //nologo "$(windows_path "$folder/script.vbs")" 2>&1
  tools/corpus.pl compare com "$folder/log.txt"
}

# The keys that stand in one snapshot of the registry and did not stand in the first.
new_keys() { comm -13 <(grep '^\[' "$work/before.reg" | sort) <(grep '^\[' "$work/$1.reg" | sort); }

registration() {
  local name=$1 dll=$2 system=$3
  local regsvr32=$system\\regsvr32.exe
  registry "$work/before.reg" || { report "$name: the registry can be exported" 1; return; }

  wine_run "$regsvr32" /s /n /i:"dryrun:$(windows_path "$work/dry.reg")" "$dll"
  report "$name: writes a registry script" $?
  check "$name: a dry run changes nothing" same_registry "$work/before.reg"

  wine_run "$regsvr32" /s "$dll"
  report "$name: registers" $?
  registry "$work/registered.reg"
  check "$name: the registration is in the registry" grep -q 'QVA_Varnholt.gExcelObject' "$work/registered.reg"
  wine_run "$regsvr32" /s "$dll"
  report "$name: registers again" $?
  check "$name: which changes nothing" same_registry "$work/registered.reg"
  wine_run "$regsvr32" /s /u "$dll"
  report "$name: unregisters" $?
  check "$name: no key is left" same_registry "$work/before.reg"
  wine_run "$regsvr32" /s /u "$dll"
  report "$name: unregisters what is not registered" $?

  wine_run "$system\\reg.exe" import "$(windows_path "$work/dry.reg")" > /dev/null 2>&1
  check "$name: the registry script says what registration writes" same_registry "$work/registered.reg"
  wine_run "$regsvr32" /s /u "$dll"
  check "$name: what a script registered is unregistered, too" same_registry "$work/before.reg"

  wine_run "$regsvr32" /s /n /i:user "$dll"
  report "$name: registers for the user" $?
  registry "$work/user.reg"
  check "$name: for the user alone" test "$(new_keys user | cut -d'\' -f1 | sort -u)" = "[HKEY_CURRENT_USER"
  # Wine shows a 32-bit program's keys, and those that both bitnesses share, in several places.
  plain_keys() { new_keys "$1" | cut -d'\' -f2- | sed 's/Wow6432Node\\//' | sort -fu; }
  diff -i <(plain_keys user | grep -vE '^Software\\Classes(\\(CLSID|Interface|TypeLib))?]') \
       <(plain_keys registered) > "$work/difference"
  report "$name: with the same keys as for the machine" $?
  head -n 10 "$work/difference"
  wine_run "$regsvr32" /s "$dll"
  check "$name: a registration for the machine takes over" same_registry "$work/registered.reg"
  wine_run "$regsvr32" /s /u "$dll"
  check "$name: and nothing is left of either" same_registry "$work/before.reg"
}

clients() {
  local name=$1 build=$2 system=$3
  local regsvr32=$system\\regsvr32.exe cscript=$system\\cscript.exe
  local dll bench
  dll=$(windows_path "$build/QVA_Varnholt.dll")
  bench=$(windows_path "$build/QVA_TestBench.dll")

  # Wine's script host registers itself when it is first used.
  echo 'WScript.Echo "ready"' > "$work/script.vbs"
  wine_run "$cscript" //nologo "$(windows_path "$work/script.vbs")" > /dev/null 2>&1

  registration "$name" "$dll" "$system"
  registry "$work/start.reg"
  wine_run "$regsvr32" /s "$bench"
  report "$name: the test bench registers" $?
  wine_test "$name: qva_com_tests" "$build/qva_com_tests.exe"

  wine_run "$regsvr32" /s "$dll"
  local source
  for source in tests/com/scripts/*.vbs; do
    local script_name
    script_name=$(basename "$source" .vbs)
    [[ $script_name == check ]] || check "$name: script $script_name" script "$script_name" "$cscript"
  done
  check "$name: macros of the corpus" corpus "$cscript"
  call_log "$name" "$cscript" "$system\\reg.exe" "$build"
  wine_run "$regsvr32" /s /u "$dll"
  wine_run "$regsvr32" /s /u "$bench"
  wine_run reg delete 'HKCU\Software\VB and VBA Program Settings' /f > /dev/null 2>&1
  # What a macro of the corpus had the library keep of the PATH.
  wine_run reg delete 'HKCU\Environment' /v PATH_before_QVA_Varnholt /f > /dev/null
  check "$name: all of it leaves the registry as it was" same_registry "$work/start.reg"
}

# The log of calls: off, switched on by the environment and by the registry, with content where it is asked for.
call_log() {
  local name="$1: call log" cscript=$2 reg=$3 tests=$4/qva_com_tests.exe
  local key='HKCU\Software\QVA_Varnholt' folder=$work/calls log=$work/calls/calls.log
  calls() {
    rm -rf "$folder"
    mkdir "$folder"
    wine_run "$cscript" //nologo "$(windows_path "$PWD/tests/com/call_log.vbs")" 2>&1 | tr -d '\r' | grep -qx OK
  }
  says() { grep -qP "$1" "$log"; }
  says_not() { test -s "$log" && ! grep -q "$1" "$log"; }

  calls
  check "$name: is off" test -z "$(ls -A "$folder")"
  QVA_VARNHOLT_CALL_LOG=$(windows_path "$log") calls
  report "$name: the environment switches it on" $?
  check "$name: has time, process, duration, member and result" says \
    '^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\t\d+\t\d+ ms\tCSaveForm\.ErrorStatus\t\(\)\t-> \d+$'
  check "$name: has a call's arguments" says '\tCTools\.FileExist\t\("C:\\nowhere", "argument\.xls"\)\t! 91 '
  check "$name: has number, source and text of an error" says '\tCReports\.FillAttr\t\("B1"\)\t! 13 \S+: Type mismatch$'
  check "$name: has an array's size" says '\tCReports\.FillAttr\t\(array of 3\)\t'
  check "$name: has an object's class" says '\tCReports\.FillAttr\t\(<Range>\)\t'
  check "$name: has no content" says_not slaptas
  QVA_VARNHOLT_CALL_LOG=$(windows_path "$log") QVA_VARNHOLT_CALL_LOG_CONTENT=1 calls
  check "$name: has it where the environment asks for it" says 'slaptas masyvas'

  # Clients that are bound early.
  rm -f "$log"
  GTEST_FILTER='EarlyBinding.Re*:EarlyBinding.Hands*' QVA_VARNHOLT_CALL_LOG=$(windows_path "$log") wine_run "$(windows_path "$tests")" > /dev/null
  report "$name: early-bound clients call" $?
  check "$name: has their calls' arguments" says 'ms\tCButtonProperties\.sBCaption =\t\(2, "Spausdinti ąčęėįšųūž"\)\t$'
  check "$name: has results" says '\t\d+ ms\tCButtonProperties\.TotalButtons\t\(\)\t-> 2$'
  check "$name: has objects" says '\tCToolbar\.CmdEvent =\t\(<CCommandsEvent>\)\t$'
  check "$name: has errors" says '\tCButtonProperties\.sBCaption\t\(1\)\t! 9 QVA_Varnholt: Subscript out of range$'

  wine_run "$reg" add "$key" /v CallLog /d "$(windows_path "$log")" /f > /dev/null
  calls
  check "$name: the registry switches it on" says 'CTools\.FileExist'
  check "$name: without content" says_not slaptas
  wine_run "$reg" add "$key" /v CallLogContent /t REG_DWORD /d 1 /f > /dev/null
  calls
  check "$name: has it where the registry asks for it" says 'slaptas masyvas'
  wine_run "$reg" delete "$key" /f > /dev/null
  calls
  check "$name: is off when the value is gone" test -z "$(ls -A "$folder")"
}

# The demo host where nobody has a host and where somebody has one, and the samples on it. It leaves the prefix in use.
demo_host() {
  local name="$1: demo host" build=$2 system=$3
  local regsvr32=$system\\regsvr32.exe cscript=$system\\cscript.exe reg=$system\\reg.exe
  local demo bench dll sample left
  demo=$(windows_path "$build/QVA_DemoHost.dll")
  bench=$(windows_path "$build/QVA_TestBench.dll")
  dll=$(windows_path "$build/QVA_Varnholt.dll")

  registry "$work/before.reg"
  wine_run "$regsvr32" /s "$demo"
  report "$name: registers" $?
  registry "$work/demo.reg"
  check "$name: for the user alone" test "$(new_keys demo | cut -d'\' -f1 | sort -u)" = "[HKEY_CURRENT_USER"
  wine_run "$regsvr32" /s /n /i:user "$demo"
  report "$name: registers again" $?
  check "$name: which changes nothing" same_registry "$work/demo.reg"
  wine_run "$regsvr32" /s /u "$demo"
  report "$name: unregisters" $?
  check "$name: no key is left" same_registry "$work/before.reg"

  # Another host takes over one of the classes.
  local plant='HKCU\Software\Classes\NVXCommonObjects.Plant'
  wine_run "$regsvr32" /s "$demo"
  wine_run "$reg" add "$plant\\CLSID" /ve /d '{11111111-2222-3333-4444-555555555555}' /f > /dev/null
  wine_run "$regsvr32" /s /u "$demo"
  left=$(wine_run "$reg" query 'HKCU\Software\Classes' /s | tr -d '\r' | grep '^HKEY' | cut -d'\' -f4-)
  check "$name: leaves what another host registered since" test "$left" = $'NVXCommonObjects.Plant\nNVXCommonObjects.Plant\\CLSID'
  refuses() { ! wine_run "$regsvr32" /s "$demo"; }
  check "$name: refuses to be registered beside a host of the user's" refuses
  wine_run "$reg" delete 'HKCU\Software\Classes' /f > /dev/null

  wine_run "$regsvr32" /s /n /i:excel "$bench"
  wine_run "$regsvr32" /s "$dll"
  check "$name: where there is no host, the missing class is named" without_host "$cscript" "$1"
  wine_run "$regsvr32" /s "$demo"
  # Windows looks for a class among the user's, too; this Wine among the machine's alone.
  wine_run "$reg" copy 'HKCU\Software\Classes' 'HKLM\Software\Classes' /s /f > /dev/null
  for sample in balance profit-loss vat; do
    check "$name: sample $sample has the figures that it has on Linux" sample_figures "$sample" "$cscript"
  done
  # The samples put a folder on the user's PATH, and so do the examples.
  wine_run "$reg" delete 'HKCU\Environment' /v PATH /f > /dev/null 2>&1
  guide_examples "$name" "$cscript"
  wine_run "$reg" delete 'HKCU\Environment' /v PATH /f > /dev/null
  check "$name: has its database in the user's own folder" test -s "$prefix"/drive_c/users/*/AppData/Local/QVA_Varnholt/host.sqlite
  check "$name: gives great amounts whole, and none beyond their range" great_amounts "$cscript"
  # The kit runs in the script host of the machine's own bitness.
  [[ $1 != 64-bit ]] || acceptance "$build" "$regsvr32" "$reg"
  wine_run "$regsvr32" /s /u "$demo"

  wine_run "$regsvr32" /s "$bench"
  registry "$work/other.reg"
  check "$name: refuses to be registered beside a host of the machine's" refuses
  check "$name: which changes nothing" same_registry "$work/other.reg"
}
# The acceptance kit on the bench's Excel, which goes by the name of the real one; library and demo host are registered.
acceptance() {
  local name="acceptance kit" build=$1 regsvr32=$2 reg=$3 kit=$work/acceptance dll demo
  dll=$(windows_path "$build/QVA_Varnholt.dll")
  demo=$(windows_path "$build/QVA_DemoHost.dll")
  rm -rf "$kit"
  tools/corpus.pl acceptance "$kit" || { report "$name: can be made" 1; return; }
  wine_run "$reg" copy 'HKLM\Software\Classes\QVA_TestBench.Excel' 'HKLM\Software\Classes\Excel.Application' /s /f > /dev/null
  wine_run "$reg" add 'HKCU\Software\VB and VBA Program Settings\Quillon Enterprise\Forms\MDI' /v P0 /d MANO /f > /dev/null
  registry "$work/acceptance.reg"
  (cd "$prefix/drive_c" && find . | sort) > "$work/acceptance.files"

  # The bench's Excel runs no workbook's macros.
  mkdir -p "$work/samples"
  touch "$work/samples/balance.xlsm"
  kit_run 0
  report "$name: finds what Excel is taken for" $?
  check "$name: tells of the workbooks" grep -aq '^Workbook balance.xlsm, DataTekstu(2025-03-31): error ' "$kit/report"
  check "$name: tells what comes of saving them as .xls" grep -aqE '^Workbook balance.xlsm, saved as .xls: (error|format) ' "$kit/report"
  rm -r "$work/samples"
  check "$name: has tried all" grep -aqE '^[0-9]{3} agree, 0 differ, 0 not run$' "$kit/report"
  check "$name: leaves the registry as it was" same_registry "$work/acceptance.reg"
  check "$name: leaves no file behind" same_files

  # An Excel that gives a wrong answer, to the kit as to the library.
  QVA_BENCH_LIE=Range.Locked kit_run 1
  report "$name: tells that Excel differs" $?
  check "$name: in macros and in what is taken for granted" test "$(grep -a '^DIFFERS' "$kit/report" | tr '\n' ' ')" = \
    "DIFFERS  report_life DIFFERS  reports_locking DIFFERS  excel_areas DIFFERS  excel_formats DIFFERS  excel_merged_cells "
  check "$name: with what is expected" grep -aqF '    expected: sheet.Range("A1").Locked => True' "$kit/report"
  check "$name: and what came" grep -aqF '    here:     sheet.Range("A1").Locked => False' "$kit/report"

  mkdir "$prefix/drive_c/QVA_Xl"
  touch "$prefix/drive_c/QVA_Xl/mano.txt"
  kit_run 2 cscript //nologo "$(windows_path "$kit/acceptance.vbs")"
  report "$name: started by its script it does nothing where its folder is somebody's" $?
  check "$name: leaves that folder alone" test -e "$prefix/drive_c/QVA_Xl/mano.txt"
  rm -r "$prefix/drive_c/QVA_Xl"

  # Where the library is not registered the kit does so for the user, and this Wine finds no classes of a user's.
  wine_run "$regsvr32" /s /u "$dll"
  registry "$work/acceptance.reg"
  mkdir -p "$work/x64"
  cp "$build/QVA_Varnholt.dll" "$work/x64"
  kit_run 2
  check "$name: registers what is not registered" grep -aq '^The library cannot be created: 429 ' "$kit/report"
  check "$name: removes what it registered" same_registry "$work/acceptance.reg"

  # A run that was cut off had registered the demo host.
  wine_run "$regsvr32" /s /u "$demo"
  registry "$work/acceptance.reg"
  wine_run "$regsvr32" /s "$demo"
  local folder
  folder=$(wine_run cmd /c 'echo %TEMP%' | tr -d '\r' | tr '\\' /)/QVA_Acceptance
  folder=$prefix/drive_c/${folder#?:/}
  mkdir -p "$folder"
  wine_run "$reg" export 'HKCU\Software\VB and VBA Program Settings\Quillon Enterprise' "$(windows_path "$folder/settings.reg")" /y > /dev/null
  { printf '\xff\xfe'; printf '%s\r\n' 2026-05-15 "$demo" | iconv -t UTF-16LE; } > "$folder/began"
  kit_run 2
  check "$name: puts back what a run that was cut off left" same_registry "$work/acceptance.reg"
  check "$name: and forgets it" test ! -e "$folder"
  wine_run "$regsvr32" /s "$dll"
  wine_run "$reg" delete 'HKLM\Software\Classes\Excel.Application' /f > /dev/null
}
# Runs the kit, by a double click or as it is told; whether its exit status is this one.
#   kit_run <exit status> [<command>...]
kit_run() {
  local expected=$1 status
  shift
  [[ $# -gt 0 ]] || set -- cmd /c "$(windows_path "$work/acceptance/acceptance.cmd")"
  tools/wine-run.sh --timeout 200 "$prefix" "$@" "$(windows_path "$work/acceptance/report.txt")"
  status=$?
  iconv -f UTF-16 -t UTF-8 "$work/acceptance/report.txt" | tr -d '\r' > "$work/acceptance/report"
  grep -av '^agrees' "$work/acceptance/report"
  [[ $status -eq $expected ]]
}
same_files() { (cd "$prefix/drive_c" && find . | sort) | diff "$work/acceptance.files" -; }
without_host() {
  local output
  output=$(wine_run "$1" //nologo "$(windows_path "$PWD/tests/com/demo/without_host.vbs")" "$2" 2>&1 | tr -d '\r')
  echo "$output"
  grep -qx 'OK' <<< "$output"
}
# A ledger of its own, in a database of its own.
great_amounts() {
  local output resources=$work/resources
  rm -rf "$resources" "$work/great.sqlite"
  cp -r host "$resources"
  cat tests/host/great_amounts.sql >> "$resources/sample.sql"
  output=$(QVA_HOST_RESOURCES=$(windows_path "$resources") QVA_HOST_DATABASE=$(windows_path "$work/great.sqlite") \
    wine_run "$1" //nologo "$(windows_path "$PWD/tests/com/demo/amounts.vbs")" 2>&1 | tr -d '\r')
  echo "$output"
  grep -qx 'OK' <<< "$output"
}
# A sample's macros on the bench's Excel, against what they give in LibreOffice.
sample_figures() {
  local folder=$work/sample
  rm -rf "$folder"
  mkdir "$folder"
  tools/sample-script.pl "$1" "$folder" || return 1
  QVA_VARNHOLT_FORM_ANSWERS=$(windows_path "$folder/form.answers") QVA_HOST_LIST_ANSWERS=$(windows_path "$folder/list.answers") \
    wine_run "$2" //nologo "$(windows_path "$folder/script.vbs")" 2>&1
  iconv -f UTF-16 -t UTF-8 "$folder/log.txt" > "$folder/log" || return 1
  sed '1,/^==$/d' "$folder/log" | diff "tests/calc/figures/$1.txt" - && grep -q '^Išsaugota' "$folder/log" &&
    grep -q '^Baigta: ' "$folder/log" && grep -q '^Grąžinta ' "$folder/log" &&
    ! grep -E '^(ERROR|KLAIDA|Neišsaugota)' "$folder/log"
}

# What the guide shows: each class's example as it stands, all in one script; then the tutorial's report with whatever the
# guide pastes into it, without the types and error handlers that VBScript does not have.
guide_examples() {
  local name=$1 cscript=$2 folder=$work/guide guide example expected found
  rm -rf "$folder"
  mkdir "$folder"
  tools/guide-examples.pl vbscript "$folder" || { report "$name: the guide's examples can be written" 1; return; }
  QVA_VARNHOLT_FORM_ANSWERS=$(windows_path "$folder/form.answers") \
    wine_run "$cscript" //nologo "$(windows_path "$folder/script.vbs")" 2>&1
  iconv -f UTF-16 -t UTF-8 "$folder/log.txt" > "$folder/log"
  while IFS=$'\t' read -r example expected; do
    found=$(sed -n "s/^$example\t//p" "$folder/log")
    [[ $found == "no error"* && $found == *"$expected"* ]] || printf '%s gave:\n%s\nand not: %s\n' "$example" "$found" "$expected"
    [[ $found == "no error"* && $found == *"$expected"* ]]
    report "$name: the example of $example runs as it stands" $?
  done < "$folder/expected.txt"
  for guide in gidas guide; do
    check "$name: $guide: the tutorial's report has the figures that it has on Linux" tutorial_figures "$guide" "$cscript"
  done
}
tutorial_figures() {
  local folder=$work/tutorial line
  rm -rf "$folder"
  mkdir -p "$folder/script"
  cp samples/sablonas.fods "$folder/tutorial.fods"
  tools/tutorial.pl "$1" "$folder/tutorial.fods" "$folder" && mv "$folder/visos.answers" "$folder/tutorial.answers" &&
    tools/sample-script.pl "$folder/tutorial.fods" "$folder/script" Visos "$folder/changes.vbs" || return 1
  QVA_VARNHOLT_FORM_ANSWERS=$(windows_path "$folder/script/form.answers") \
    wine_run "$2" //nologo "$(windows_path "$folder/script/script.vbs")" 2>&1
  iconv -f UTF-16 -t UTF-8 "$folder/script/log.txt" > "$folder/log" || return 1
  for line in 'Įrankių juosta .*: mygtukų 12' 'Didžiausi pinigų įrašai: 498816.72' \
    'Didžiausi pinigų įrašai: 273161.41' 'Rodomas lapas Pinigai' 'Baigta: .*' \
    '6900 Pelno mokesčio sąnaudos' '2410 Pirkėjų skolos: 581651.62' 'Grąžinta .*' 'IŠ VISO\|1609150.57\|1609150.57'; do
    grep -qxE "$line" "$folder/log" || { echo "no line $line"; return 1; }
  done
  [[ $(grep -cE '^[1-6][0-9]{3} [^:|]*$' "$folder/log") -eq 56 ]] && ! grep -E '^(ERROR|KLAIDA)' "$folder/log"
}

# Whatever opens windows; Wine's 32-bit side has no displays.
screen() {
  local regsvr32='C:\windows\system32\regsvr32.exe'
  wine_test "qva_windows_tests at 100 %" "$x64/qva_windows_tests.exe" --display
  # The windows once more: at 100 % all pixels are the same, whoever measures them.
  dots_per_inch 144
  GTEST_FILTER='Form*:Month*:Grid*:List*:BoxOnScreen*' \
    wine_test "windows at 150 %" "$x64/qva_windows_tests.exe" --display
  dots_per_inch 96
  wine_run "$regsvr32" /s "$(windows_path "$x64/QVA_TestBench.dll")"
  wine_run "$regsvr32" /s "$(windows_path "$x64/QVA_Varnholt.dll")"
  check "windows worked with keyboard and mouse" tests/com/desktop/run.sh "$prefix"
}
dots_per_inch() {
  wine_run reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f > /dev/null 2>&1
  WINEPREFIX=$prefix timeout 30 wineserver -k
}

# Each bitness comes and goes without touching the other.
side_by_side() {
  local dll64 dll32
  dll64=$(windows_path "$x64/QVA_Varnholt.dll")
  dll32=$(windows_path "$x86/QVA_Varnholt.dll")
  local regsvr64='C:\windows\system32\regsvr32.exe' regsvr32='C:\windows\syswow64\regsvr32.exe'
  registry "$work/none.reg"
  wine_run "$regsvr64" /s "$dll64"
  registry "$work/only64.reg"
  wine_run "$regsvr32" /s "$dll32"
  check "side by side: both are registered" test "$(registry "$work/both.reg" && \
    grep -cE '^"win(32|64)"="machine"' "$work/both.reg")" = 2
  wine_run "$regsvr32" /s /u "$dll32"
  check "side by side: the 64-bit one stays when the 32-bit one goes" same_registry "$work/only64.reg"
  wine_run "$regsvr32" /s "$dll32"
  wine_run "$regsvr64" /s /u "$dll64"
  registry "$work/only32.reg"
  check "side by side: the 32-bit one stays when the 64-bit one goes" \
    grep -qF '[HKEY_LOCAL_MACHINE\Software\Classes\QVA_Varnholt.CTools\CLSID]' "$work/only32.reg"
  wine_run "$regsvr32" /s /u "$dll32"
  check "side by side: nothing is left of either" same_registry "$work/none.reg"
}

# Nobody answers boxes here.
QVA_VARNHOLT_MESSAGE_LOG=$(windows_path "$work/boxes.log")
export QVA_VARNHOLT_MESSAGE_LOG

[[ $# -gt 0 ]] || set -- 64-bit screen 32-bit
libraries=build/wine-i386
tools/wine-i386.sh "$libraries" || libraries=
# Each part has a prefix as new; they are copies, since making one takes long.
tools/wine-prefix.sh build/wine-new ${libraries:+"$libraries"} || { report "a Wine prefix can be made" 1; set --; }
for part; do
  echo "== $part"
  WINEPREFIX=$prefix timeout 30 wineserver -k 2> /dev/null
  rm -rf "$prefix"
  cp -a build/wine-new "$prefix"
  case $part in
    64-bit)
      static_checks "64-bit" "$x64" x86_64-w64-mingw32
      clients "64-bit" "$x64" 'C:\windows\system32'
      demo_host "64-bit" "$x64" 'C:\windows\system32'
      ;;
    screen) screen ;;
    32-bit)
      static_checks "32-bit" "$x86" i686-w64-mingw32
      if [[ -n $libraries ]]; then
        clients "32-bit" "$x86" 'C:\windows\syswow64'
        side_by_side
        wine_test "32-bit: qva_windows_tests" "$x86/qva_windows_tests.exe"
        demo_host "32-bit" "$x86" 'C:\windows\syswow64'
      else
        not_run "the 32-bit DLL - Wine's 32-bit libraries are not at hand; the DLL was checked statically"
      fi
      ;;
    *) sed -n '2,6s/^# //p' "$0" >&2; exit 2 ;;
  esac
done
sum_up
