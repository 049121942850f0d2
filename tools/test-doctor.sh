#!/usr/bin/env bash
# Tests the doctor under Wine: on a machine where all is well, on machines that are broken in one way each, and what it
# puts right. The last line sums the tests up.
#   tools/test-doctor.sh <64-bit Windows build> <32-bit Windows build>
set -uo pipefail
[[ $# -eq 2 ]] || { sed -n '2,4s/^# *//p' "$0" >&2; exit 2; }
x64=$(realpath "$1") x86=$(realpath "$2")
cd "$(dirname "$0")/.."
. tools/test-lib.sh
work=$(mktemp -d)
prefix=$work/prefix
trap 'WINEPREFIX=$prefix timeout 30 wineserver -k 2> /dev/null; rm -rf "$work"' EXIT

libraries=build/wine-i386
tools/wine-i386.sh "$libraries" || libraries=
tools/wine-prefix.sh build/wine-new ${libraries:+"$libraries"} || { report "a Wine prefix can be made" 1; sum_up; exit; }
cp -a build/wine-new "$prefix"
c=$prefix/drive_c
wine_run() { tools/wine-run.sh "$prefix" "$@"; }
system='C:\windows\system32'

# --- A machine where all is well -----------------------------------------------------------------------------

# The package as it was unpacked, and the library as it was installed from it.
package=$work/package
mkdir -p "$package"/{x64,x86} "$c"/{Varnholt,Host,Excel,Excel32}
cp "$x64/qva-doctor.exe" "$package"
cp "$x86/qva-doctor.exe" "$package/x86"
for bitness in x64 x86; do cp "${!bitness}/QVA_Varnholt.dll" "$package/$bitness"; done
cp "$x64/QVA_TestBench.dll" "$c/Host"
cp "$x64/qva-doctor.exe" "$c/Excel/EXCEL.EXE"
cp "$x86/qva-doctor.exe" "$c/Excel32/EXCEL.EXE"

# Another version in a file's resources.
#   set_version <file> <major> <minor>
set_version() { perl -0777 -pi -e "s/(\\xbd\\x04\\xef\\xfe.{4}).{8}/\$1 . pack('VV', $2 << 16 | $3, 0)/se" "$1"; }
set_version "$c/Excel/EXCEL.EXE" 16 0
set_version "$c/Excel32/EXCEL.EXE" 16 0

registry_script() {
  { printf '\xff\xfe'; { echo 'Windows Registry Editor Version 5.00'; cat; } | sed 's/$/\r/' | iconv -t UTF-16LE; } > "$work/script.reg"
  wine_run "$system\\reg.exe" import "$(windows_path "$work/script.reg")" > /dev/null 2>&1
}
classes='HKEY_LOCAL_MACHINE\Software\Classes'
app_paths='HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\excel.exe'
security='HKEY_CURRENT_USER\Software\Microsoft\Office\16.0\Excel\Security'
policy='HKEY_CURRENT_USER\Software\Policies\Microsoft\Office\16.0\Excel\Security'
book='HKEY_CURRENT_USER\Software\VB and VBA Program Settings\Quillon Enterprise\Forms\MDI'
register() { wine_run "$system\\regsvr32.exe" /s "$@"; }

make_well() {
  rm -rf "$c/Ataskaitos" "$c/Varnholt" "$c/Kitur" "$c/Host"
  mkdir "$c/Ataskaitos" "$c/Varnholt" "$c/Host"
  cp "$x64/QVA_Varnholt.dll" "$c/Varnholt"
  cp "$x64/QVA_TestBench.dll" "$c/Host"
  registry_script <<END
[-HKEY_CURRENT_USER\\Software\\Classes]
[-HKEY_CURRENT_USER\\Software\\QVA_Varnholt]
[-$policy]
[$security]
"AccessVBOM"=dword:00000001
"VBAWarnings"=dword:00000002
[$book]
"P0"="MEDVILNE"
[-$app_paths]
[$app_paths]
@="C:\\\\Excel\\\\EXCEL.EXE"
END
  register 'C:\Varnholt\QVA_Varnholt.dll'
  register 'C:\Host\QVA_TestBench.dll'
}

# --- What the doctor says ------------------------------------------------------------------------------------

doctor() {
  tools/wine-run.sh "$prefix" "$(windows_path "$package/qva-doctor.exe")" /lang en "$@" > "$work/said" 2> /dev/null
  local status=$?
  tr -d '\r' < "$work/said" > "$work/text"
  return $status
}
# The codes of what is wrong, each with its bitness, in a report that came to its end. The 32-bit part is not missed where
# there is none.
problems() {
  perl -ne '$bitness = $1 if /^(\d\d)-bit Excel/;
    push @found, ($bitness ? "$bitness:" : "") . $1 if /^\[(?:WARNING|ERROR)\] .*\(([-a-z0-9]+)\)$/;
    $is_whole ||= /^errors: \d+, warnings: \d+$/;
    END { print join " ", grep({ !/^(?:$ENV{IGNORED}|$ENV{OF_WINE})$/ } @found), $is_whole ? () : "no-end" }' "$work/text"
}
[[ -n $libraries ]] && export IGNORED=none || export IGNORED=32:part-not-run
# Newer releases of Wine run every program as administrator.
export OF_WINE=none
# The doctor finds exactly what is named, and ends with the status that this means.
names() {
  local status=0 found
  doctor || status=$?
  found=$(problems)
  [[ $found == "$2" && ($status -eq $1 || ($1 -eq 0 && $status -eq 1 && $IGNORED$OF_WINE != nonenone)) ]] && return
  cat "$work/text"
  echo "found: $found, status $status; expected: $2, status $1"
  return 1
}
# One broken machine, which is put right again.
#   machine <name> <status> <codes>
machine() {
  check "doctor: $1" names "$2" "$3"
  make_well
}

make_well
doctor
! grep -qF '(elevated)' "$work/text" || OF_WINE=elevated
check "doctor: finds nothing where all is well" names 0 ""
check "doctor: names library, Excel, host, book and archive there" test "$(grep -cE \
  '\((registered|creates|excel|host|book|archive|macros|project-access|code-page|windows)\)$' "$work/text")" = 10

register /u 'C:\Varnholt\QVA_Varnholt.dll'
check "doctor: no registration" names 2 "64:not-registered"
check "doctor: with class and code that a macro gets" grep -qE 'error 429 \(QVA_Varnholt\.[A-Za-z]+: 0x800401F3\)\. \(not-registered\)$' "$work/text"
make_well

rm "$c/Varnholt/QVA_Varnholt.dll"
machine "a deleted library" 2 "64:file-missing 64:does-not-create"

mv "$c/Varnholt" "$c/Kitur"
machine "a moved folder" 2 "64:folder-missing 64:does-not-create"

cp "$x86/QVA_Varnholt.dll" "$c/Varnholt"
machine "the library of the other bitness" 2 "64:wrong-bitness 64:does-not-create"

echo 'no library' > "$c/Varnholt/QVA_Varnholt.dll"
machine "a damaged library" 2 "64:file-damaged 64:does-not-create"

perl -pi -e 's/GDI32\.dll/GDI99.dll/i' "$c/Varnholt/QVA_Varnholt.dll"
machine "a library that does not load" 2 "64:file-does-not-load 64:does-not-create"

mkdir -p "$c/Senas"
cp "$x64/QVA_Varnholt.dll" "$c/Senas"
set_version "$c/Senas/QVA_Varnholt.dll" 0 9
register /n /i:user 'C:\Senas\QVA_Varnholt.dll'
# Wine shows the user's classes of one bitness to the other.
IGNORED='32:.*' machine "two registrations of different versions" 1 "64:outdated 64:two-versions"

echo '[ZoneTransfer]
ZoneId=3' > "$c/Varnholt/QVA_Varnholt.dll:Zone.Identifier"
machine "a blocked library" 1 "64:blocked"

reports=$(wine_run "$system\\reg.exe" query "$classes\\QVA_Varnholt.CReports\\CLSID" /ve | grep -o '{[-0-9A-F]*}')
registry_script <<< "[-$classes\\CLSID\\$reports]"
machine "a registration of which a part is gone" 2 "64:registration-incomplete 64:does-not-create"

registry_script <<END
[$classes\\QVA_Varnholt.CReports\\CLSID]
@="{00000000-0000-0000-0000-000000000001}"
END
machine "a name that leads to a foreign class" 2 "64:registration-foreign 64:does-not-create"

wine_run "$system\\reg.exe" export "$classes\\CLSID" "$(windows_path "$work/classes.reg")" /y > /dev/null
host_classes=$(iconv -f UTF-16 -t UTF-8 "$work/classes.reg" | tr -d '\r' |
  perl -ne '$class = $1 if /^\[.*\\(\{[-0-9A-F]+\})\\InprocServer32\]/i; print "$class\n" if /^@=.*QVA_TestBench/')
registry_script <<< "$(for library in NVXCommonObjects NVXClientTools QVA_Common; do
  for class in CommonObjects Plant ClientTools SettingsCollection CompanyAttributes DataAccess Query ConditionBuilder \
    DocumentSelection Message MessageResource; do echo "[-$classes\\$library.$class]"; done; done)"
machine "no accounting system" 2 "64:needs-host 64:host-missing"

registry_script <<< "$(for class in $host_classes; do
  printf '[-%s]\n[%s]\n@="C:\\\\Host\\\\Host32.dll"\n' "$classes\\CLSID\\$class" \
    "$classes\\Wow6432Node\\CLSID\\$class\\InprocServer32"; done)"
check "doctor: an accounting system of the other bitness" names 2 "64:needs-host 64:host-for-other"
registry_script <<< "$(for class in $host_classes; do echo "[-$classes\\Wow6432Node\\CLSID\\$class]"; done)"
make_well

rm "$c/Host/QVA_TestBench.dll"
machine "an accounting system whose file is gone" 2 "64:needs-host 64:host-does-not-load"

registry_script <<< "[-$classes\\QVA_Common.MessageResource]"
machine "an accounting system without one of its classes" 2 "64:needs-host 64:host-incomplete"

registry_script <<< "[-$book]"
machine "no book" 2 "no-book"

registry_script <<END
[$book]
"P0"="NERA"
END
machine "a book that does not open" 2 "64:book-does-not-open"

rmdir "$c/Ataskaitos"
machine "no archive" 2 "64:archive-missing"

rmdir "$c/Ataskaitos"
ln -s /proc/sys "$c/Ataskaitos"
check "doctor: no rights to the archive" names 2 "64:archive-read-only"
rm "$c/Ataskaitos"
make_well

registry_script <<END
[$security]
"AccessVBOM"=dword:00000000
[$policy]
"VBAWarnings"=dword:00000004
END
machine "macros and access to their project switched off" 2 "macros-off project-access-off"

registry_script <<< "[-$app_paths]"
machine "no Excel" 1 "excel-missing"

registry_script <<END
[$app_paths]
@="C:\\\\Nera\\\\EXCEL.EXE"
END
machine "an Excel that is not there" 1 "excel-file-missing"

if [[ -n $libraries ]]; then
  registry_script <<END
[$app_paths]
@="C:\\\\Excel32\\\\EXCEL.EXE"
END
  machine "an Excel of the other bitness" 2 "32:registered-for-other 32:host-for-other"
else
  not_run "an Excel of the other bitness - Wine's 32-bit libraries are not at hand"
fi

printf '#include <windows.h>\nextern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) { ExitProcess(7); }\n' |
  x86_64-w64-mingw32-g++-posix -shared -static -x c++ -o "$c/Varnholt/QVA_Varnholt.dll" - 2> "$work/compile.log" || cat "$work/compile.log"
machine "a library that ends its process" 2 "64:part-stopped"

mv "$package/x86" "$work/x86"
IGNORED=none check "doctor: half a package" names 1 "32:part-not-run"
mv "$work/x86" "$package/x86"

# --- What it puts right --------------------------------------------------------------------------------------

has_server() {
  wine_run "C:\\windows\\$1\\reg.exe" query "HKCU\\Software\\Classes\\CLSID\\$reports\\InprocServer32" > /dev/null 2>&1
}
register /u 'C:\Varnholt\QVA_Varnholt.dll'
doctor repair
check "repair: registers the library beside it for the user" has_server system32
if [[ -n $libraries ]]; then
  check "repair: the 32-bit one, too" has_server syswow64
else
  not_run "repair of the 32-bit registration - Wine's 32-bit libraries are not at hand"
fi
check "repair: says so" grep -q '^64-bit: registered for the user: .*x64.QVA_Varnholt.dll$' "$work/text"
make_well

# The 64-bit part alone: Wine shows the user's classes of one bitness to the other.
mv "$package/x86" "$work/x86"
with_32_bits=$IGNORED IGNORED=32:part-not-run
register /n /i:user 'C:\Senas\QVA_Varnholt.dll'
check "repair: where a registration of the user's is" has_server system32
mv "$c/Senas" "$c/Kitur"
doctor repair
check "repair: leaves all well behind a stale registration of the user's" test -z "$(problems)"
gone() { ! has_server system32; }
check "repair: which it removes" gone
make_well

echo '[ZoneTransfer]
ZoneId=3' | tee "$c/Varnholt/QVA_Varnholt.dll:Zone.Identifier" > "$c/Varnholt/FReport.chm:Zone.Identifier"
touch "$c/Varnholt/FReport.chm"
doctor repair
check "repair: unblocks the library" test -z "$(problems)"
check "repair: and what lies beside it" test -z "$(find "$c/Varnholt" -name '*Zone*')"

doctor repair
check "repair: says that there is nothing to do" grep -q '^There is nothing' "$work/text"
mv "$work/x86" "$package/x86"
IGNORED=$with_32_bits

call_log() { wine_run "$system\\reg.exe" query 'HKCU\Software\QVA_Varnholt' /v CallLog 2> /dev/null | grep -qF "$1"; }
check "log on: goes through" doctor log on 'C:\žurnalas.log'
check "log on: sets the file" call_log 'urnalas.log'
doctor
check "log on: is told by the check" grep -qF 'C:\žurnalas.log. (call-log)' "$work/text"
check "log off: goes through" doctor log off
off() { ! call_log ''; }
check "log off: takes the file away" off

status_of() {
  local expected=$1
  shift
  doctor "$@"
  [[ $? -eq $expected ]]
}
check "demo on: is refused where there is no demo host" status_of 2 demo on
check "demo on: says so" grep -q '^64-bit: the demo host is on: failed: ' "$work/text"
for bitness in x64 x86; do cp -r "${!bitness}"/{QVA_DemoHost.dll,host} "$package/$bitness"; done
check "demo on: is refused where there is another host" status_of 2 demo on
check "demo on: names it" grep -q '^64-bit: the demo host is on: failed: .*another host is registered by HKEY_LOCAL_MACHINE' "$work/text"
register /u 'C:\Host\QVA_TestBench.dll'
has_demo() { wine_run "$system\\reg.exe" query 'HKCU\Software\Classes\NVXCommonObjects.CommonObjects\CLSID' > /dev/null 2>&1; }
has_no_demo() { ! has_demo; }
check "demo on: goes through where there is none" status_of "$([[ -n $libraries ]] && echo 0 || echo 2)" demo on
check "demo on: registers it for the user" has_demo
register 'C:\Host\QVA_TestBench.dll'
check "doctor: a host that was installed after the demo host" names 1 "64:demo-left"
check "doctor: names the one that is used" grep -qF 'C:\Host\QVA_TestBench.dll. (host)' "$work/text"
doctor repair
check "repair: switches that demo host off" has_no_demo
register /u 'C:\Host\QVA_TestBench.dll'
# Wine's programs find classes of the machine alone, and share the user's: the 64-bit ones become the machine's.
mv "$package/x86" "$work/x86"
doctor demo on
mv "$work/x86" "$package/x86"
wine_run "$system\\reg.exe" export 'HKCU\Software\Classes' "$(windows_path "$work/demo.reg")" /y > /dev/null
registry_script <<< "$(iconv -f UTF-16 -t UTF-8 "$work/demo.reg" | tr -d '\r' | sed '1d; s/HKEY_CURRENT_USER/HKEY_LOCAL_MACHINE/')"
doctor
check "the demo host is named, its book opens, and it made its archive, which can be written" test \
  "$(sed -n '/^64-bit Excel/,/^32-bit Excel/p' "$work/text" | grep -cE '\((host-demo|book|archive)\)$')" = 3
check "demo off: goes through where both are" status_of "$([[ -n $libraries ]] && echo 0 || echo 2)" demo off
check "demo off: removes it" has_no_demo
make_well

check "a wrong command line is refused" status_of 3 demo
check "and shows what can be asked for" grep -q 'qva-doctor repair' "$work/text"

doctor /report "$(windows_path "$work/report.html")"
check "a report is written" test -s "$work/report.html"
check "which is whole" test "$(tail -n 1 "$work/report.html")" = "</body></html>"
needs_nothing() { ! grep -qE '(src|href)=|@import|url\(' "$1"; }
check "and needs no other file" needs_nothing "$work/report.html"
says_lithuanian() {
  tools/wine-run.sh "$prefix" "$(windows_path "$package/qva-doctor.exe")" > "$work/said"
  grep -q '^Šis kompiuteris' "$work/said"
}
check "it speaks the user's language" says_lithuanian
sum_up
