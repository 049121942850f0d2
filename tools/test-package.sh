#!/usr/bin/env bash
# Tests the packages: makes them, installs the extension into a fresh LibreOffice with LibreOffice's own tool, runs
# its samples, removes it, tries the package for Debian unpacked and, as root, installed, and registers the Windows
# libraries by their scripts. The last line sums the tests up.
#   tools/test-package.sh <build with the component> <64-bit Windows build> <32-bit Windows build>
set -uo pipefail
umask 022
cd "$(dirname "$0")/.."
. tools/test-lib.sh
work=$(mktemp -d)
installed=
trap 'end_display; [[ -z $installed ]] || dpkg --purge "$installed"; WINEPREFIX=$work/prefix timeout 30 wineserver -k 2> /dev/null; rm -rf "$work"' EXIT
# With a certificate, which is the case that has more to go wrong.
openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj '/CN=QVA_Varnholt test' -addext 'extendedKeyUsage=codeSigning' \
  -keyout "$work/key.pem" -out "$work/certificate.pem" 2> /dev/null
openssl pkcs12 -export -inkey "$work/key.pem" -in "$work/certificate.pem" -passout pass: -out "$work/certificate.p12"
check "the packages are made" timeout 300 env QVA_SIGN_CERTIFICATE="$work/certificate.p12" tools/package.sh "$1" "$2" "$3" "$work"
oxt=$(echo "$work"/*.oxt) zip=$(echo "$work"/*.zip)
check "the zip unpacks" unzip -qo "$zip" -d "$work/zip"
for sample in samples/*.fods; do
  name=$(basename "$sample" .fods)
  check "Excel finds $name with its macros" tools/check-excel-workbook.py "$sample" "$work/zip/samples/$name.xlsm"
done
check "the help is beside either library" cmp "$work/zip/x64/FReport.chm" "$work/zip/x86/FReport.chm"
check "the acceptance kit is in it" test -s "$work/zip/acceptance/acceptance.cmd" -a -s "$work/zip/acceptance/expected.txt"
are_signed() {
  local file
  for file; do
    osslsigncode verify -CAfile "$work/certificate.pem" -in "$file" > "$work/verify.log" 2>&1 || { echo "${file#"$work"/} is not"; return 1; }
  done
}
check "each program and library for Windows is signed" are_signed "$work"/zip/{qva-doctor.exe,x86/qva-doctor.exe} \
  "$work"/zip/{x64,x86}/{QVA_Varnholt,QVA_DemoHost}.dll "$work"/*-setup.exe
check "the doctor is in it for either bitness" test -s "$work/zip/qva-doctor.exe" -a -s "$work/zip/x86/qva-doctor.exe"

# --- The extension -------------------------------------------------------------------------------------------

# LibreOffice's tool refuses root to install for one user.
home=$work/home
mkdir "$home"
as_user=(env -C "$home" "HOME=$home" XDG_CONFIG_HOME= XDG_DATA_HOME= LC_ALL=C.UTF-8 SAL_USE_VCLPLUGIN=svp)
if [[ $EUID -eq 0 ]]; then
  chmod a+rx "$work"
  chown 65534:65534 "$home"
  as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups "${as_user[@]}")
fi
profile=-env:UserInstallation=file://$home/profile
unopkg() { "${as_user[@]}" timeout 120 unopkg "$@" "$profile"; }
# A first start makes the profile, so that only what the extension does differs later.
start() { "${as_user[@]}" timeout 180 soffice --headless --norestore --nologo --nolockcheck "$profile" "$@"; }
# LibreOffice itself remembers the documents that the user opened.
traces() {
  sed -i '\#/qva-varnholt/drives/C/#d' "$home/profile/user/registrymodifications.xcu"
  grep -rl -i varnholt "$home/profile"
  find "$home/profile" -iname '*varnholt*'
}

start --convert-to pdf --outdir "$home" "$work/zip/samples/balance.xlsm" > "$work/start.log" 2>&1
check "the sample opens in a spreadsheet" test -s "$home/balance.pdf"
check "the extension installs" unopkg add "$oxt"
# Whole before it is searched: a second one does not start while the first one runs.
list_has() { grep -q "$1" <<< "$(unopkg list)"; }
check "and is listed" list_has 'Identifier: qva.varnholt'
description() { unzip -p "$oxt" description.xml; }
has_named_files() {
  local file files names
  files=$(unzip -l "$oxt")
  names=$(description | grep -o 'xlink:href="[^"]*' | cut -d'"' -f2)
  for file in $names; do grep -q " $file$" <<< "$files" || return 1; done
  [[ -n $names ]]
}
names_no_network() { ! description | grep -E 'href="(https?|ftp):'; }
check "each file that its description names is in it" has_named_files
check "it names no place on a network" names_no_network
check "with its help" grep -q . <(find "$home/profile" -path '*/FReport/index.html')

# On a screen of its own, by the keys of the menu: Alt+A opens "Ataskaitos", then the sample's letter follows.
begin_display 1280x900
drive=$home/.local/share/qva-varnholt/drives/C
user() { DISPLAY=:$display timeout 10 xdotool "$@" 2> /dev/null; }
# Chooses a command of the menu by its letter until another command says that it is done.
by_menu() {
  local key=$1 i window
  shift
  "${as_user[@]}" "DISPLAY=:$display" "PATH=$work/bin:$PATH" SAL_USE_VCLPLUGIN=gen timeout 120 \
    soffice --calc --norestore --nologo --nolockcheck "$profile" > "$work/menu.log" 2>&1 &
  for ((i = 0; i < 40; i++)); do
    "$@" && break
    window=$(user search --onlyvisible --name 'LibreOffice Calc' | head -n 1)
    [[ -z $window ]] || user windowfocus "$window" key Escape key alt+a key "$key"
    sleep 2
  done
  pkill -KILL -f -- "$profile"
  wait "$!" 2> /dev/null
  rm -f "$home/profile/.lock"
  "$@"
}
# A sample that does not compile. LibreOffice tells of it first, in a window of its own that the user closes.
tells_of_an_error() {
  local i window sample
  sample=$(find "$home/profile/user/uno_packages/cache" -name vat.fods)
  cp -p "$sample" "$work/vat.fods"
  sed -i 's/^Public Sub Main()$/&\n    x = = 1/' "$sample"
  rm -f "$drive/Pavyzdziai/vat.fods" "$home/messages.txt"
  "${as_user[@]}" "DISPLAY=:$display" SAL_USE_VCLPLUGIN=gen "QVA_VARNHOLT_MESSAGE_LOG=$home/messages.txt" \
    timeout 120 soffice --calc --norestore --nologo --nolockcheck "$profile" > "$work/error.log" 2>&1 &
  for ((i = 0; i < 50; i++)); do
    grep -q 'Kompiliuoti' "$home/messages.txt" 2> /dev/null && break
    if [[ -e $drive/Pavyzdziai/vat.fods ]]; then
      for window in $(user search --onlyvisible --name .); do user windowfocus "$window" key Escape; done
    else
      window=$(user search --onlyvisible --name 'LibreOffice Calc' | head -n 1)
      [[ -z $window ]] || user windowfocus "$window" key Escape key alt+a key m
    fi
    sleep 2
  done
  pkill -KILL -f -- "$profile"
  wait "$!" 2> /dev/null
  rm -f "$home/profile/.lock"
  cp -p "$work/vat.fods" "$sample"
  grep -q 'Knygos makrokomandose yra klaida, todėl jų vykdyti negalima.*„Kompiliuoti“' <(tr '\n' ' ' < "$home/messages.txt")
}
# Whether a key opens the period's window again after the user has left it, on a desktop of GTK's look, where LibreOffice is
# idle meanwhile: the keyboard comes back to the cells.
keys_reach_the_report() {
  local i manager seen=0 window
  DISPLAY=:$display openbox 2> /dev/null &
  manager=$!
  cp -p "$home/profile/user/registrymodifications.xcu" "$work/settings.xcu"
  sed -i 's#</oor:items>#<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="MacroSecurityLevel" oor:op="fuse"><value>0</value></prop></item>&#' \
    "$home/profile/user/registrymodifications.xcu"
  "${as_user[@]}" "DISPLAY=:$display" SAL_USE_VCLPLUGIN=gtk3 timeout 120 soffice --norestore --nologo --nolockcheck "$profile" \
    "$drive/Pavyzdziai/Nauja ataskaita.fods" macro://./NaujaAtaskaita.Ataskaita.Main > "$work/keys.log" 2>&1 &
  for ((i = 0; i < 60 && seen < 3; i++)); do
    sleep 1
    window=$(user search --onlyvisible --name 'Ataskaitinio periodo')
    if [[ -n $window ]]; then
      seen=$((seen + 1))
      sleep 1
      user key Escape
      sleep 1
      user key ctrl+l
    fi
  done
  pkill -KILL -f -- "$profile"
  wait "$!" 2> /dev/null
  kill "$manager"
  rm -f "$home/profile/.lock"
  cp -p "$work/settings.xcu" "$home/profile/user/registrymodifications.xcu"
  [[ $seen -eq 3 ]]
}
run_sample() {
  local name=$1 key=$2 i window
  install -m 644 "samples/$name.answers" "$home/$name.answers"
  "${as_user[@]}" "DISPLAY=:$display" SAL_USE_VCLPLUGIN=gen "QVA_VARNHOLT_FORM_ANSWERS=$home/$name.answers" \
    "QVA_VARNHOLT_MESSAGE_LOG=$home/messages.txt" \
    timeout 240 soffice --calc --norestore --nologo --nolockcheck "$profile" > "$work/sample.log" 2>&1 &
  for ((i = 0; i < 100; i++)); do
    grep -q 'Baigta' "$drive/Pavyzdziai/$name.log" 2> /dev/null && break
    window=$(user search --onlyvisible --name 'LibreOffice Calc' | head -n 1)
    # A window that has just come may not listen yet; the keys do nothing once the sample has been opened.
    if [[ -n $window && ! -e $drive/Pavyzdziai/$name.fods ]]; then
      user windowfocus "$window" key Escape key alt+a key "$key"
    fi
    sleep 2
  done
  # The report stays with its toolbar until the user closes it; then he has his own program back.
  for ((i = 0; i < 20; i++)); do
    grep -q 'Grąžinta' "$drive/Pavyzdziai/$name.log" && break
    window=$(user search --onlyvisible --name '20[0-9][0-9]-' | head -n 1)
    [[ -z $window ]] || user windowfocus "$window" key ctrl+w
    sleep 2
  done
  pkill -KILL -f -- "$profile"
  wait "$!" 2> /dev/null
  rm -f "$home/profile/.lock"
  tail -n 1 "$drive/Pavyzdziai/$name.log" | grep -q 'Grąžinta'
}
for sample in 'balance b' 'profit-loss p' 'vat m'; do
  check "its menu runs the sample ${sample% *}, which gives the user his program back when he closes it" run_sample $sample
done
check "its menu begins a report from the template" by_menu n \
  grep -qs 'library-embedded ooo:name="NaujaAtaskaita"' "$drive/Pavyzdziai/Nauja ataskaita.fods"
check "and keys reach that report after its windows" keys_reach_the_report
mkdir "$work/bin"
printf '#!/bin/sh\necho "$1" > "%s/opened"\n' "$home" > "$work/bin/xdg-open"
chmod a+x "$work/bin/xdg-open"
check "opens the guide" by_menu g grep -qs '/FReport/index.html' "$home/opened"
check "and tells what to do about macros that do not compile" tells_of_an_error
archive=$drive/Ataskaitos/Archyvas
check "and archives the reports" test -s "$archive/2025/Balansas_2025.xls" \
  -a -s "$archive/2025/PelnasNuostoliai_2025_12.xls" -a -s "$archive/2025/PVM registrai_2025_12.xls"
end_display
check "the extension is removed" unopkg remove qva.varnholt
# LibreOffice empties its cache at the next start.
start --convert-to pdf --outdir "$home" "$work/zip/samples/vat.xlsm" > "$work/start.log" 2>&1
left=$(traces)
[[ -z $left ]] || echo "$left"
check "nothing of it is left in LibreOffice" test -z "$left"

# Over other versions of itself, in a profile of their own: LibreOffice keeps what was replaced among its temporary files.
profile=-env:UserInstallation=file://$home/versions
check "it installs into another profile" unopkg add "$oxt"
same_version_is_refused() { ! unopkg add "$1" > "$work/again.log" 2>&1 && grep -q 'already been added' "$work/again.log"; }
check "the same version is refused over it" same_version_is_refused "$oxt"
another_version() {
  rm -rf "$work/other"
  unzip -qo "$oxt" -d "$work/other" && sed -i "s/<version value=\"[^\"]*\"/<version value=\"$1\"/" "$work/other/description.xml" &&
    (cd "$work/other" && rm -f "$work/other-$1.oxt" && zip -qr "$work/other-$1.oxt" .) && chmod a+r "$work/other-$1.oxt"
}
another_version 0.1.0 && another_version 99.0.0
check "an older one is refused, too" same_version_is_refused "$work/other-0.1.0.oxt"
check "a newer one takes its place" unopkg add "$work/other-99.0.0.oxt"
check "and is the one that is there" list_has 'Version: 99.0.0'
check "the first one comes back by force" unopkg add -f "$oxt"

# --- The package for Debian ----------------------------------------------------------------------------------

deb=$(echo "$work"/*.deb)
root=$work/root
field() { dpkg-deb --field "$deb" "$1"; }
version=$(field Version)
check "the package for Debian unpacks" dpkg -x "$deb" "$root"
for package in libreoffice-calc libsqlite3-0 libuno-cppu3 libc6; do
  check "it needs $package" grep -q "\b$package" <(field Depends)
done
check "its list of changes ends with its version" test "$(dpkg-parsechangelog -l packaging/debian/changelog -S Version)" = "$version"
# CPack leaves "libstdc++6 (>= 4.1.1), libstdc++6 (>= 14)" as newer releases' shlibdeps says it; apt takes both.
check "Debian's checks find no error in it" lintian --allow-root --fail-on error \
  --suppress-tags package-depends-on-multiple-libstdc-versions "$deb"
# As a user has it: in a folder of his own, with no word of where things are.
in_folder() { "${as_user[@]}" mkdir -p "$home/$1" && "${as_user[@]}" env -C "$home/$1" timeout 200 "${@:2}"; }
says_its_version() { [[ $("${as_user[@]}" "$1" --version) == "report-runner (QVA_Varnholt) $version" ]]; }
makes_and_runs_a_report() {
  in_folder "$1" "$2" new "Bandomasis balansas" > "$work/runner.log" 2>&1 &&
    in_folder "$1" "$2" --form-answers "$root/usr/share/qva-varnholt/samples/sablonas.answers" \
      --expect drives/C/Ataskaitos/Archyvas/2025/BandomasisBalansas_2025.xls "Bandomasis balansas.fods" >> "$work/runner.log" 2>&1 ||
    { cat "$work/runner.log"; return 1; }
}
check "its runner says its version" says_its_version "$root/usr/bin/report-runner"
check "makes a report from the template and runs it" makes_and_runs_a_report unpacked "$root/usr/bin/report-runner"
check "and has the help beside the library" test -s "$root/usr/lib/qva-varnholt/modules/FReport/index.html" \
  -a -s "$root/usr/share/doc/qva-varnholt/guide/index.html"
options() { "$root/usr/bin/report-runner" --help | grep -oE '^ +--[a-z-]+'; }
has_options() {
  local option text
  text=$(zcat "$root/usr/share/man/man1/report-runner.1.gz" | sed 's/\\-/-/g')
  for option in $(options); do grep -qF -- "fB$option\\fR" <<< "$text" || { echo "no $option"; return 1; }; done
}
check "its manual page has each option" has_options
completes() {
  env -C "$home/unpacked" "PATH=$root/usr/bin:$PATH" bash -c '
    . "$1"
    compopt() { :; }
    COMP_WORDS=("${@:2}") COMP_CWORD=$(($# - 2))
    _report_runner report-runner
    printf "%s\n" "${COMPREPLY[@]}"' bash "$root/usr/share/bash-completion/completions/report-runner" report-runner "$@"
}
check "bash completes its options" test "$(completes --form)" = --form-answers
check "and the names of workbooks" test "$(completes Ba)" = "Bandomasis balansas.fods"
names_its_own() {
  local name
  for name in $(grep -ohE '[A-Za-z0-9-]+\.md\b' "$1"/*.md | sort -u); do
    [[ -e $1/$name ]] || { echo "no $name"; return 1; }
  done
}
check "the documents in the zip name no others" names_its_own "$work/zip/docs"
check "and neither do those in the package for Debian" names_its_own "$root/usr/share/doc/qva-varnholt"
if [[ $EUID -ne 0 ]]; then
  not_run "the package for Debian installed, which needs root"
elif dpkg-query --show qva-varnholt > /dev/null 2>&1; then
  not_run "the package for Debian installed, which this machine has already"
else
  installed=qva-varnholt
  check "it installs" dpkg --install "$deb"
  check "its runner is a command of every user" says_its_version report-runner
  check "that makes and runs a report" makes_and_runs_a_report installed report-runner
  check "and is removed" dpkg --purge qva-varnholt
  installed=
  check "without a trace" test -z "$(find /usr /etc /var/lib/dpkg/info -name '*qva-varnholt*' -o -name 'report-runner*')"
fi

# --- Windows -------------------------------------------------------------------------------------------------

wine_run() { tools/wine-run.sh "$work/prefix" "$@"; }
readonly kLibrary='Software\Classes\TypeLib\{327D607E-A646-4054-ADFA-6EFAB4187E08}\1.0\0'
# The library of a bitness that a hive names, by that bitness' own tool: <system32 or syswow64> <hive> <win64 or win32>
library() {
  wine_run "C:\\windows\\$1\\reg.exe" query "$2\\$kLibrary\\$3" /ve 2> /dev/null | tr -d '\r' | sed -nE 's/^ .* REG_SZ +//p'
}
# What is registered in a hive: both libraries below a folder, or none.
is_registered() {
  [[ $(library system32 "$1" win64) == "$2\\x64\\QVA_Varnholt.dll" && $(library syswow64 "$1" win32) == "$2\\x86\\QVA_Varnholt.dll" ]]
}
is_unregistered() { [[ -z $(library system32 HKCU win64; library syswow64 HKCU win32; library system32 HKLM win64; library syswow64 HKLM win32) ]]; }
libraries=build/wine-i386
if ! tools/wine-i386.sh "$libraries"; then
  not_run "scripts, setup program and doctor of the package for Windows - Wine's 32-bit libraries are not at hand"
  sum_up
  exit
fi
check "Wine has a registry of its own" tools/wine-prefix.sh build/wine-new "$libraries"
cp -a build/wine-new "$work/prefix"

# The script's output and exit status. What is typed comes from $typed.
typed=
script() {
  printf '%s' "$typed" | wine_run cmd /c "$(windows_path "$work/zip/QVA_Varnholt.cmd")" "$@" > "$work/script.log" 2>&1
  local status=${PIPESTATUS[1]}
  tr -d '\r\0' < "$work/script.log" | iconv -f CP1257 -t UTF-8 > "$work/script.txt"
  return "$status"
}
ends_with() {
  local code=$1 status
  shift
  script "$@"
  status=$?
  [[ $status -eq $code ]] || { echo "exit status $status"; cat "$work/script.txt"; return 1; }
}
says() { grep -qF -- "$1" "$work/script.txt" || { cat "$work/script.txt"; return 1; }; }
folder=$(windows_path "$work/zip")
check "the script tells what is not registered" ends_with 1 check
check "by bitness" says '32-bit: not registered.'
check "and what to do" says 'What to do: QVA_Varnholt.cmd install'
waits() { says 'spauskite bet kurį klavišą'; }
waits_not() { ! grep -q 'klavišą' "$work/script.txt"; }
check "without waiting for a key" waits_not
typed=$'check\r\n'
check "double-clicked it asks what to do" ends_with 1
check "does it" says '64-bit: not registered.'
check "and waits for a key" waits
typed=
check "it registers for the user" ends_with 0 install
check "both libraries" is_registered HKCU "$folder"
check "tells so" ends_with 0 check
check "with the file" says "64-bit: registered for you: \"$folder\\x64\\QVA_Varnholt.dll\""
check "and unregisters" ends_with 0 remove
check "without a trace" is_unregistered
check "it registers for all" ends_with 0 install /AllUsers
check "in the machine's part of the registry" is_registered HKLM "$folder"
mv "$work/zip/x86/QVA_Varnholt.dll" "$work"
check "it tells of a file that is gone" ends_with 1 check
check "by its name" says 'The file is not there'
mv "$work/QVA_Varnholt.dll" "$work/zip/x86"
check "it unregisters for all" ends_with 0 remove /AllUsers
check "without a trace, too" is_unregistered
check "it refuses what it does not know" ends_with 2 instal
check "and what is too much" ends_with 2 install /AllUsers /S
cp -r "$work/zip" "$work/elsewhere"
other=$(windows_path "$work/elsewhere")
wine_run cmd /c "$other\\QVA_Varnholt.cmd" install < /dev/null > "$work/script.log" 2>&1
echo 'not a library' > "$work/zip/x86/QVA_Varnholt.dll"
check "it fails where one library does not load" ends_with 1 install
check "names it" says "32-bit: \"$folder\\x86\\QVA_Varnholt.dll\" failed."
check "the cause" says 'could not load the file (regsvr32: 3)'
check "and what to do" says 'What to do: unpack the zip anew'
check "and leaves what was registered" is_registered HKCU "$other"
rm "$work/zip/x86/QVA_Varnholt.dll"
check "it fails where one is missing" ends_with 1 install
check "and says so" says 'Cause: the file is not there.'
cp "$work/elsewhere/x86/QVA_Varnholt.dll" "$work/zip/x86"
script remove
check "all of it leaves nothing" is_unregistered

setup=$(echo "$work"/*-setup.exe)
home=$(ls -d "$work"/prefix/drive_c/users/[!P]*)/AppData/Local/Programs/QVA_Varnholt
folder=C:$(tr / '\\' <<< "${home#*/drive_c}")
check "the setup program installs" wine_run "$(windows_path "$setup")" /S
check "for the user" is_registered HKCU "$folder\\$version"
check "what is in the zip" diff -rq -x QVA_Varnholt.files -x "*.cmd" -x acceptance "$work/zip" "$home/$version"
check "and removes it" wine_run "$folder\\uninstall.exe" /S "_?=$folder"
check "without a trace" is_unregistered
check "but for the uninstaller that ran there" test "$(ls "$home")" = uninstall.exe
demo() { wine_run "$(windows_path "$work/zip/qva-doctor.exe")" demo "$1" > /dev/null 2>&1; }
has_demo() { wine_run reg query 'HKCU\Software\Classes\NVXCommonObjects.CommonObjects\CLSID' > /dev/null 2>&1; }
has_no_demo() { ! has_demo; }
check "the doctor registers the demo host" demo on
check "for the user" has_demo
check "and removes it" demo off
check "with all that it registered" has_no_demo

sum_up
