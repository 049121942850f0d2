#!/usr/bin/env bash
# Tests the setup program for Windows under Wine, in a private prefix that is removed at the end: installed, upgraded
# below a program that holds the library, broken half-way, repaired, refused and removed, silently and on a screen;
# and its signature. The last line sums the tests up.
#   tools/test-setup.sh [--pictures <folder>] [user | all | screen]...
# user and all are for whom it installs, screen is with a user who clicks; without an argument all three. With
# --pictures each page on the screen is saved.
# The builds are build/windows-x64 and build/windows-x86.
set -uo pipefail
cd "$(dirname "$0")/.."
. tools/test-lib.sh
pictures=
[[ ${1:-} != --pictures ]] || { pictures=$(realpath "$2"); shift 2; }
[[ $# -gt 0 ]] || set -- user all screen
x64=build/windows-x64 x86=build/windows-x86
work=$(mktemp -d)
prefix=$work/prefix holder=
finish() {
  rm -f "$work/held"
  # Programs go before their screen, which some would miss aloud.
  WINEPREFIX=$prefix timeout 30 wineserver -k 2> /dev/null
  end_display
  rm -rf "$work"
}
trap finish EXIT
wine_run() { tools/wine-run.sh --timeout 60 "$prefix" "$@"; }

# --- The setup programs --------------------------------------------------------------------------------------

files=$work/files
mkdir -p "$files"/{x64,x86,samples}
cp "$x64/QVA_Varnholt.dll" "$files/x64"
cp "$x86/QVA_Varnholt.dll" "$files/x86"
echo 'Balansas' > "$files/samples/Balansas ą.txt"
make_setup() { tools/setup.sh --quick "${@:3}" "$files" "$1" "$work/$2.exe" > /dev/null; }
# With a library of one bitness that does not load.
make_broken_setup() {
  local library=$files/$1/QVA_Varnholt.dll status
  mv "$library" "$work/whole"
  echo 'not a library' > "$library"
  make_setup 1.2.0 "broken-$1" "${@:2}"
  status=$?
  mv "$work/whole" "$library"
  return "$status"
}
check "the setup program is made" make_setup 1.0.0 first
check "and one of the next version" make_setup 1.1.0 second
check "and one with a broken 32-bit library" make_broken_setup x86
check "and one with a broken 64-bit library" make_broken_setup x64

# --- Its signature -------------------------------------------------------------------------------------------

is_signed() { osslsigncode verify -CAfile "$work/certificate.pem" -in "$1" > "$work/verify.log" 2>&1; }
is_unsigned() { ! is_signed "$1"; }
signature() {
  openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj '/CN=QVA_Varnholt test' \
    -addext 'extendedKeyUsage=codeSigning' -keyout "$work/key.pem" -out "$work/certificate.pem" 2> /dev/null
  echo 'words as a password' > "$work/password"
  openssl pkcs12 -export -inkey "$work/key.pem" -in "$work/certificate.pem" -passout "file:$work/password" \
    -out "$work/certificate.p12"
  cp -r "$files" "$work/signed"
  local -x QVA_SIGN_CERTIFICATE=$work/certificate.p12 QVA_SIGN_PASSWORD_FILE=$work/password
  check "libraries are signed with a certificate" tools/sign.sh "$work/signed"/x??/*.dll
  check "the 64-bit one" is_signed "$work/signed/x64/QVA_Varnholt.dll"
  check "the 32-bit one" is_signed "$work/signed/x86/QVA_Varnholt.dll"
  make_signed_setup() { tools/setup.sh --quick "$work/signed" 1.3.0 "$work/$1.exe" > "$work/$1.log" 2>&1; }
  check "the setup program is made with a certificate" make_signed_setup signed
  check "and signed" is_signed "$work/signed.exe"
  check "without one it is not" is_unsigned "$work/first.exe"
  QVA_SIGN_PASSWORD_FILE=$work/certificate.pem
  make_signed_setup unsigned
  check "where signing fails no setup program is made" test ! -e "$work/unsigned.exe"
}

# --- What Wine shows -----------------------------------------------------------------------------------------

# setup <name> <options>...; its exit code.
setup() { wine_run "$(windows_path "$work/$1.exe")" /S "${@:2}"; }
exits() {
  local code=$1 status
  shift
  "$@"
  status=$?
  [[ $status -eq $code ]] || { echo "exit code $status"; return 1; }
}
# The uninstaller starts a copy of itself and ends; with _?=, which takes all words that follow, it stays as it is.
remove() {
  local folder
  folder=$(home_in_windows "$1")
  wine_run "$folder\\uninstall.exe" /S $(printf '_?=%s' "$folder") && rm "$1/uninstall.exe" && rmdir "$1" "$(dirname "$1")" 2> /dev/null
  test ! -e "$1/uninstall.exe"
}
home_in_windows() { printf 'C:%s' "$(tr / '\\' <<< "${1#"$drive"}")"; }

# What 64-bit or 32-bit programs see in the registry: <system32 or syswow64> <key> [<name>]
value() {
  local name=(/ve)
  [[ $# -eq 2 ]] || name=(/v "$3")
  wine_run "C:\\windows\\$1\\reg.exe" query "$2" "${name[@]}" 2> /dev/null | tr -d '\r' |
    sed -nE 's/^ .* REG_(SZ|DWORD) +//p'
}
readonly kLibrary='Software\Classes\TypeLib\{327D607E-A646-4054-ADFA-6EFAB4187E08}\1.0\0'
readonly kEntry='Software\Microsoft\Windows\CurrentVersion\Uninstall\QVA_Varnholt'
# Both libraries of the named folder are registered in the named hive.
is_registered() {
  [[ $(value system32 "$2\\$kLibrary\\win64") == "$1\\x64\\QVA_Varnholt.dll" &&
     $(value syswow64 "$2\\$kLibrary\\win32") == "$1\\x86\\QVA_Varnholt.dll" ]]
}
is_listed() {
  local version=$1 hive=$2 folder=$3
  [[ $(value system32 "$hive\\$kEntry" DisplayName) == QVA_Varnholt &&
     $(value system32 "$hive\\$kEntry" DisplayVersion) == "$version" &&
     $(value system32 "$hive\\$kEntry" Publisher) == QVA_Varnholt &&
     $(value system32 "$hive\\$kEntry" InstallLocation) == "$folder" &&
     $(($(value system32 "$hive\\$kEntry" EstimatedSize))) -gt 1500 &&
     $(value system32 "$hive\\$kEntry" UninstallString) == "\"$folder\\uninstall.exe\"" &&
     $(value system32 "$hive\\$kEntry" QuietUninstallString) == "\"$folder\\uninstall.exe\" /S" ]]
}

# Registry and files as they are, but for what Windows itself writes.
list_files() { (cd "$drive" && find . -path ./windows -prune -o -path '*/Temp/*' -prune -o -print | sort) > "$1"; }
same_files() { list_files "$work/now.files" && diff "$1" "$work/now.files"; }
remember() { registry "$work/$1.reg" && list_files "$work/$1.files"; }
same_as() { same_registry "$work/$1.reg" && same_files "$work/$1.files"; }

# A program for several things: it holds a library, as Excel does, or a name, until a file is gone; it begins the session
# of a user, of which Wine does the machine's part alone; it runs a command without an administrator's rights; it makes a
# key that may hold no lasting ones.
make_helper() {
  cat > "$work/helper.c" << 'END'
#include <stdio.h>
#include <wchar.h>
#include <windows.h>
static int log_on(void) {
  HKEY key;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce", 0, KEY_ALL_ACCESS, &key))
    return 1;
  wchar_t name[500], command[500];
  DWORD name_size = 500, size = sizeof command;
  while (!RegEnumValueW(key, 0, name, &name_size, NULL, NULL, (BYTE *)command, &size)) {
    if (size > 260 * sizeof(wchar_t)) return 3; // Windows would not run it
    RegDeleteValueW(key, name);
    STARTUPINFOW start = {.cb = sizeof start};
    PROCESS_INFORMATION process;
    if (!CreateProcessW(NULL, command, NULL, NULL, FALSE, 0, NULL, NULL, &start, &process)) return 2;
    WaitForSingleObject(process.hProcess, INFINITE);
    name_size = 500, size = sizeof command;
  }
  return 0;
}
static int run_without_rights(wchar_t *command) {
  HANDLE own, less;
  SID_IDENTIFIER_AUTHORITY windows = {SECURITY_NT_AUTHORITY};
  SID_AND_ATTRIBUTES administrators = {0};
  AllocateAndInitializeSid(&windows, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0, &administrators.Sid);
  OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, &own);
  STARTUPINFOW start = {.cb = sizeof start};
  PROCESS_INFORMATION process;
  if (!CreateRestrictedToken(own, 0, 1, &administrators, 0, NULL, 0, NULL, &less) ||
      !CreateProcessAsUserW(less, NULL, command, NULL, NULL, FALSE, 0, NULL, NULL, &start, &process)) {
    return 100;
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code;
  GetExitCodeProcess(process.hProcess, &code);
  return code;
}
int wmain(int count, wchar_t **arguments) {
  if (!wcscmp(arguments[1], L"logon")) return log_on();
  if (!wcscmp(arguments[1], L"limited")) return run_without_rights(arguments[2]);
  if (!wcscmp(arguments[1], L"obstacle")) {
    HKEY key;
    return RegCreateKeyExW(HKEY_CURRENT_USER, arguments[2], 0, NULL, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, NULL, &key, NULL);
  }
  const int is_library = !wcscmp(arguments[1], L"library");
  if (is_library ? !LoadLibraryW(arguments[2]) : !CreateMutexW(NULL, FALSE, arguments[2])) return 1;
  fclose(_wfopen(arguments[3], L"w"));
  while (GetFileAttributesW(arguments[3]) != INVALID_FILE_ATTRIBUTES) Sleep(50);
  return 0;
}
END
  x86_64-w64-mingw32-gcc -municode -Wall -o "$work/helper.exe" "$work/helper.c"
}
helper() { wine_run "$(windows_path "$work/helper.exe")" "$@"; }
within() {
  local limit=$((SECONDS + $1))
  shift
  until "$@"; do
    [[ $SECONDS -lt $limit ]] || return 1
    sleep 0.1
  done
}
# hold library <file>, or hold name <name>
hold() {
  helper "$@" "$(windows_path "$work/held")" &
  holder=$!
  within 30 test -e "$work/held"
}
let_go() { rm "$work/held" && wait "$holder"; }
log_on() { helper logon > /dev/null 2>&1 && wine_run wineboot > /dev/null 2>&1; }

# What a macro does first, by the script host of one bitness.
creates() {
  echo 'WScript.Echo TypeName(CreateObject("QVA_Varnholt.CTools"))' > "$work/create.vbs"
  wine_run "C:\\windows\\$1\\cscript.exe" //nologo "$(windows_path "$work/create.vbs")" 2> /dev/null | grep -q '^_CTools'
}

# --- The life of an installation -----------------------------------------------------------------------------

life() {
  local hive=$1 home=$2 other_hive=$3 options=("${@:4}") folder system
  folder=$(home_in_windows "$home")
  check "setup installs silently" setup first "${options[@]}"
  check "both libraries are registered" is_registered "$folder\\1.0.0" "$hive"
  check "nothing is in the other hive" test -z "$(value system32 "$other_hive\\$kLibrary\\win64")"
  check "it is among the apps" is_listed 1.0.0 "$hive" "$folder"
  check "its files are there" diff -r -x QVA_Varnholt.files "$files" "$home/1.0.0"
  check "the samples are read-only" test "$(stat -c %A "$home/1.0.0/samples"/*)" = -r--r--r--
  # Wine looks for classes in the machine's part of the registry alone.
  [[ $hive == HKCU ]] || for system in system32 syswow64; do
    check "scripts in $system create its classes" creates "$system"
  done

  [[ $hive == HKCU ]] || check "without rights it is not removed" exits 4 helper limited "\"$folder\\uninstall.exe\" /S _?=$folder"

  check "the same version repairs" setup first "${options[@]}"
  check "from a new folder" is_registered "$folder\\1.0.0-2" "$hive"
  check "in place of the old one" test ! -e "$home/1.0.0"
  rm "$home/1.0.0-2/x86/QVA_Varnholt.dll"
  check "it repairs what is damaged" setup first "${options[@]}"
  check "with all files" diff -r -x QVA_Varnholt.files "$files" "$home/1.0.0"

  echo 'mine' > "$home/1.0.0/samples/mine.txt"
  check "a program holds the library" hold library "$folder\\1.0.0\\x64\\QVA_Varnholt.dll"
  check "the next version installs below it" setup second "${options[@]}"
  check "and is the one that is registered" is_registered "$folder\\1.1.0" "$hive"
  check "and listed" is_listed 1.1.0 "$hive" "$folder"
  check "the old files are gone, but for the user's" test "$(cd "$home/1.0.0" && find . -type f)" = ./samples/mine.txt
  check "and for the one that is held" test "$(ls "$home/removed" | wc -l)" = 1
  check "the program goes on with it" let_go
  check "somebody logs on" log_on
  check "then it is gone, too" within 20 test ! -e "$home/removed"

  check "the registry can be exported" remember before
  check "an older version is refused" exits 5 setup first "${options[@]}"
  check "which changes nothing" same_as before
  check "setup with a broken 32-bit library fails" exits 8 setup broken-x86 "${options[@]}"
  check "and leaves everything as it was" same_as before
  check "setup with a broken 64-bit library fails" exits 7 setup broken-x64 "${options[@]}"
  check "and leaves everything as it was" same_as before
  check "an older version installs when it is told to" setup first "${options[@]}" /AllowDowngrade
  check "and is registered" is_registered "$folder\\1.0.0-2" "$hive"

  check "it is removed" remove "$home"
  check "but for what is the user's" test "$(cd "$home" && find . -type f)" = ./1.0.0/samples/mine.txt
  rm -r "$home"
  rmdir "$(dirname "$home")" 2> /dev/null
  check "setup fails where there is nothing" exits 8 setup broken-x86 "${options[@]}"
  check "and leaves nothing" same_as start

  setup second "${options[@]}"
  check "a program holds the library" hold library "$folder\\1.1.0\\x64\\QVA_Varnholt.dll"
  check "it is removed below it" wine_run "$folder\\uninstall.exe" /S
  check "with its uninstaller" within 20 test ! -e "$home/uninstall.exe"
  check "the program goes on" let_go
  check "somebody logs on" log_on
  check "then nothing is left" within 20 test ! -e "$home"
}

# The script for a group policy, as docs/installation.md has it, with a version and a setup program.
roll_out() {
  VERSION=$1 SETUP=$(windows_path "$work/$2.exe") perl -ne 'next unless /^\@echo off$/ .. /^exit \/b %errorlevel%$/;
    s/^set "version=\K[^"]*/$ENV{VERSION}/; s/^set "setup=\K[^"]*/$ENV{SETUP}/; s/\n/\r\n/; print' \
    docs/installation.md > "$work/roll-out.cmd"
  wine_run cmd /c "$(windows_path "$work/roll-out.cmd")"
}
# For all where the user who runs setup has an installation of his own.
takes_over() {
  local home=$drive/Program\ Files/QVA_Varnholt folder
  folder=$(home_in_windows "$home")
  check "a user has it for himself" setup second
  check "an older version for all is refused" exits 5 setup first /AllUsers
  check "the same one installs for all by the script for a group policy" roll_out 1.1.0 second
  check "and is registered" is_registered "$folder\\1.1.0" HKLM
  check "that script runs once more" roll_out 1.1.0 second
  check "and does nothing" test "$(echo "$home"/1*)" = "$home/1.1.0"
  check "the user's own registration is gone" test -z "$(value system32 "HKCU\\$kLibrary\\win64")"
  check "with its files" test ! -e "$user_home"
  check "and its place among the apps" test -z "$(value system32 "HKCU\\$kEntry" DisplayVersion)"
  check "an older version is refused to the user" exits 5 setup first
  check "it is removed" remove "$home"
}

refusals() {
  local log
  log=/Log=$(windows_path "$work/setup.log")
  log_says() { iconv -f UTF-16 -t UTF-8 "$work/setup.log" | grep -qF -- "$1"; }
  local first
  first=$(windows_path "$work/first.exe")
  check "without rights it is refused for all" exits 4 helper limited "$first /S /AllUsers"
  check "but not for the user" helper limited "$first /S"
  check "who removes it without rights, too" helper limited "$(home_in_windows "$user_home")\\uninstall.exe /S _?=$(home_in_windows "$user_home")"
  rm -r "$user_home"
  rmdir "$(dirname "$user_home")"
  check "an unknown option is refused" exits 3 setup first "$log" /AllUser
  check "and told in the log" log_says 'Nežinomas parametras /AllUser.'
  in_english() { tools/wine-run.sh --timeout 60 --locale C.UTF-8 "$prefix" "$first" /S "$log" /AllUser; }
  check "also to who does not speak Lithuanian" exits 3 in_english
  check "in English" log_says 'The option /AllUser is unknown.'
  check "another setup runs" hold name QVA_Varnholt.Setup
  check "which is not disturbed" exits 9 setup first
  check "and ends" let_go
  local key='Software\Classes\QVA_Varnholt.CSetPath' script=$work/script
  cp -r "$files" "$script"
  sed 's/$/\r/' packaging/windows/QVA_Varnholt.cmd > "$script/QVA_Varnholt.cmd"
  wine_run reg add 'HKCU\Software\Classes' /f > /dev/null 2>&1
  check "the registry refuses a key" helper obstacle "$key"
  check "then setup fails" exits 7 setup first "$log"
  check "and tells the reason in its log" log_says "0x800703FD: QVA_Varnholt: the registry key HKEY_CURRENT_USER\\$key\\CLSID"
  wine_run cmd /c "$(windows_path "$script")\\QVA_Varnholt.cmd" install < /dev/null > "$script.log" 2>&1
  check "the script fails, too" test $? -eq 1
  # Wine's command for showing a file stops within the first character of a Unicode file.
  check "and tells the cause" grep -q 'Cause: the registry could not be changed (regsvr32: 5)' "$script.log"
  wine_run reg delete 'HKCU\Software\Classes' /f > /dev/null 2>&1
  echo 'a file' > "$drive/plain"
  check "a folder below a file is refused" exits 6 setup first "$log" '/D=C:\plain\QVA'
  rm "$drive/plain"
  check "and one that cannot be written" exits 6 setup first "$log" '/D=Z:\proc\QVA'
  check "both leave nothing" same_as start
  check "a folder can be named" setup first '/D=C:\My' 'programs'
  check "from which it is registered" is_registered 'C:\My programs\1.0.0' HKCU
  check "and from which it moves" setup second '/D=C:\Elsewhere'
  check "altogether" test ! -e "$drive/My programs"
  check "to where it is registered" is_registered 'C:\Elsewhere\1.1.0' HKCU
  local tool
  for tool in system32:x64 syswow64:x86; do
    wine_run "C:\\windows\\${tool%:*}\\regsvr32.exe" /s /n /i:user "$(windows_path "$files/${tool#*:}/QVA_Varnholt.dll")"
  done
  check "it is removed from there" remove "$drive/Elsewhere"
  check "but not the registration of another place" is_registered "$(windows_path "$files")" HKCU
  for tool in system32:x64 syswow64:x86; do
    wine_run "C:\\windows\\${tool%:*}\\regsvr32.exe" /s /u /n /i:user "$(windows_path "$files/${tool#*:}/QVA_Varnholt.dll")"
  done
  setup first
  rm "$user_home/1.0.0/x86/QVA_Varnholt.dll"
  check "without a library its registration is not removed" exits 8 wine_run "$(home_in_windows "$user_home")\\uninstall.exe" /S "_?=$(home_in_windows "$user_home")"
  check "until it is repaired by setup" setup first
  check "and removed" remove "$user_home"
  check "a signed one installs" setup signed
  check "its uninstaller is signed" is_signed "$user_home/uninstall.exe"
  check "it is removed" remove "$user_home"
}

# The demo host, which is registered for the user on demand.
demo_host() {
  local bitness
  for bitness in x64 x86; do
    [[ -e build/windows-$bitness/QVA_DemoHost.dll ]] || { not_run "/Demo - this build has no demo host"; return; }
    cp "build/windows-$bitness/QVA_DemoHost.dll" "$files/$bitness"
  done
  make_setup 1.0.0 demo-first
  make_setup 1.1.0 demo-second
  rm "$files"/x??/QVA_DemoHost.dll
  local classes='Software\Classes' folder
  folder=$(home_in_windows "$user_home")
  # Wine has one place for both bitnesses in the user's hive; the 32-bit one comes last.
  host() {
    local class
    class=$(value system32 "HKCU\\$classes\\NVXCommonObjects.CommonObjects\\CLSID")
    [[ -z $class ]] || value syswow64 "HKCU\\$classes\\CLSID\\$class\\InprocServer32"
  }
  check "setup without /Demo" setup demo-first
  check "registers no host" test -z "$(host)"
  check "setup with /Demo" setup demo-first /Demo
  check "registers the demo host" test "$(host)" = "$folder\\1.0.0-2\\x86\\QVA_DemoHost.dll"
  check "the next version" setup demo-second
  check "registers its own" test "$(host)" = "$folder\\1.1.0\\x86\\QVA_DemoHost.dll"
  wine_run 'C:\windows\system32\regsvr32.exe' /s /u /n /i:user "$folder\\1.1.0\\x64\\QVA_DemoHost.dll"
  wine_run 'C:\windows\syswow64\regsvr32.exe' /s /u /n /i:user "$folder\\1.1.0\\x86\\QVA_DemoHost.dll"
  check "where it was switched off since" setup demo-second
  check "it stays so" test -z "$(host)"
  wine_run 'C:\windows\system32\regsvr32.exe' /s /n /i:user "$folder\\1.1.0-2\\x64\\QVA_DemoHost.dll"
  wine_run 'C:\windows\syswow64\regsvr32.exe' /s /n /i:user "$folder\\1.1.0-2\\x86\\QVA_DemoHost.dll"
  check "where it was switched on since" setup demo-second
  check "it is the new one" test "$(host)" = "$folder\\1.1.0\\x86\\QVA_DemoHost.dll"
  check "it is removed" remove "$user_home"
  check "with its demo host" test -z "$(host)"
  setup demo-first /Demo
  check "an installation for all in place of the user's own" setup demo-second /AllUsers
  check "takes its demo host along" test "$(host)" = 'C:\Program Files\QVA_Varnholt\1.1.0\x86\QVA_DemoHost.dll'
  check "it is removed" remove "$drive/Program Files/QVA_Varnholt"
  check "with that demo host" test -z "$(host)"
  wine_run reg add "HKLM\\$classes\\NVXCommonObjects.CommonObjects\\CLSID" /ve /d '{00000000-0000-0000-0000-000000000001}' /f > /dev/null
  check "where there is a host /Demo tells that it stays" exits 10 setup demo-first /Demo
  check "and registers none" test -z "$(host)"
  check "but the libraries" is_registered "$folder\\1.0.0" HKCU
  wine_run reg delete "HKLM\\$classes\\NVXCommonObjects.CommonObjects" /f > /dev/null
  check "they are removed" remove "$user_home"
}

# --- On a screen ---------------------------------------------------------------------------------------------

begin_screen() {
  begin_display 800x600
  # Who runs at the same time decides whether there is a display.
  WINEPREFIX=$prefix timeout 30 wineserver -k
}
# Presses a key, unless named the default button's, and then the default button of page after page until the program ends, with
# its exit code. Each page gets a picture.
#   click [--key <key>] <name of the pictures> <program> <argument>...
click() {
  local key=Return name number=0 program
  [[ $1 != --key ]] || { key=$2; shift 2; }
  name=$1
  shift
  tools/wine-run.sh --timeout 100 --on ":$display" "$prefix" "$@" &
  program=$!
  while kill -0 "$program" 2> /dev/null; do
    sleep 1.5
    DISPLAY=:$display timeout 10 xdotool search --onlyvisible --name '^QVA_Varnholt|šalinimas|diegimas' > "$work/windows" 2> /dev/null || continue
    number=$((number + 1))
    [[ -z $pictures ]] || timeout 20 import -display ":$display" -window root "$pictures/$name-$number.png"
    # The window that came last, whatever the system has given the focus to.
    DISPLAY=:$display timeout 10 xdotool windowfocus "$(sort -n "$work/windows" | tail -n 1)" key "$key"
    key=Return
  done
  wait "$program"
}
on_screen() {
  # Wine's 32-bit side has no displays: the same script makes a 64-bit setup program.
  local target=(--target amd64-unicode) folder
  make_setup 1.0.0 first "${target[@]}"
  make_setup 1.1.0 second "${target[@]}"
  make_broken_setup x86 "${target[@]}"
  begin_screen
  folder=$(home_in_windows "$user_home")
  check "a user changes his mind" exits 1 click --key Escape cancelled "$(windows_path "$work/first.exe")"
  check "and nothing is installed" test ! -e "$user_home"
  check "a user clicks through setup" click install "$(windows_path "$work/first.exe")"
  check "and has it" is_registered "$folder\\1.0.0" HKCU
  check "through the next version" click upgrade "$(windows_path "$work/second.exe")"
  check "and has that" is_registered "$folder\\1.1.0" HKCU
  check "is told of what fails" exits 8 click failure "$(windows_path "$work/broken-x86.exe")"
  check "is told of what is older" exits 5 click older "$(windows_path "$work/first.exe")"
  check "and still has that" is_registered "$folder\\1.1.0" HKCU
  check "through the uninstaller" click removal "$folder\\uninstall.exe" "_?=$folder"
  rm -r "$user_home"
  rmdir "$(dirname "$user_home")"
}

# --- The run -------------------------------------------------------------------------------------------------

libraries=build/wine-i386
if ! tools/wine-i386.sh "$libraries"; then
  signature
  not_run "the setup program - Wine's 32-bit libraries are not at hand"
  sum_up
  exit
fi
tools/wine-prefix.sh build/wine-new "$libraries" || { report "a Wine prefix can be made" 1; sum_up; exit; }
cp -a build/wine-new "$prefix"
drive=$prefix/drive_c
user_home=$(ls -d "$drive"/users/[!P]*)/AppData/Local/Programs/QVA_Varnholt
make_helper
# Wine's script host registers itself when it is first used.
echo 'WScript.Echo "ready"' > "$work/ready.vbs"
for system in system32 syswow64; do
  wine_run "C:\\windows\\$system\\cscript.exe" //nologo "$(windows_path "$work/ready.vbs")" > /dev/null 2>&1
done
# Any Windows has this key, and nothing in it.
run_once='HKCU\Software\Microsoft\Windows\CurrentVersion\RunOnce'
{ wine_run reg add "$run_once" /f && wine_run reg delete "$run_once" /ve /f; } > /dev/null 2>&1
check "registry and files can be listed" remember start
for part; do
  echo "== $part"
  case $part in
    user)
      signature
      life HKCU "$user_home" HKLM
      refusals
      demo_host
      ;;
    screen) on_screen ;;
    all)
      life HKLM "$drive/Program Files/QVA_Varnholt" HKCU /AllUsers
      takes_over
      ;;
    *) sed -n '2,9s/^# //p' "$0" >&2; exit 2 ;;
  esac
done
check "altogether nothing is left" same_as start
sum_up
