#!/usr/bin/env bash
# Makes the setup program for Windows of a folder that holds everything it is to install.
#   tools/setup.sh [--quick] [--target <target of makensis>] <folder> <version> <setup program>
# --quick compresses less, in a third of the time: for tests.
set -euo pipefail
# A warning is an error, but the one of a compression that was chosen before the script chooses its own.
target=x86-unicode compression=(-WX)
[[ ${1:-} != --quick ]] || { compression=("-XSetCompressor /FINAL zlib"); shift; }
[[ ${1:-} != --target ]] || { target=$2; shift 2; }
[[ $# -eq 3 ]] || { sed -n '2,4s/^# //p' "$0" >&2; exit 2; }
tools=$(dirname "$(realpath "$0")")
files=$(realpath "$1") version=$2 output=$(realpath -m "$3")

# Whatever is removed one day is in this list: first the files, then the folders, the deepest first.
(cd "$files" && rm -f QVA_Varnholt.files && {
  find . -type f -printf '%P\n' | LC_ALL=C sort
  find . -mindepth 1 -depth -type d -printf '%P/\n'
}) | sed 's/$/\r/' | tr / '\\' | iconv -f UTF-8 -t UTF-16LE > "$output.files"
mv "$output.files" "$files/QVA_Varnholt.files"

sign=()
[[ -z ${QVA_SIGN_CERTIFICATE:-} ]] || sign=("-DSIGN=\"$tools/sign.sh\"")
makensis -V2 "${compression[@]}" -INPUTCHARSET UTF8 "-XTarget $target" "-DVERSION=$version" "-DFILES=$files" \
  "-DOUTPUT=$output" "-DSIZE=$(du -sk --apparent-size "$files" | cut -f1)" "${sign[@]}" "$tools/../packaging/windows/setup.nsi"
echo "$output"
