#!/usr/bin/env bash
# Puts Wine's 32-bit system libraries into the named folder, unless they are there already. Debian's 64-bit Wine
# runs 32-bit programs with them alone, so that nothing needs to be installed. Needs the network and no rights.
#   tools/wine-i386.sh <folder>
set -euo pipefail

[[ $# -eq 1 ]] || { echo "usage: $0 <folder>" >&2; exit 2; }
mkdir -p "$1"
folder=$(realpath "$1")
[[ -e $folder/i386-windows ]] && exit 0

version=$(dpkg-query -W -f='${Version}' libwine:amd64)
work=$(mktemp -d "$folder/work.XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/lists/partial" "$work/archives/partial"

# Package lists of our own: the machine's stay as they are, without the foreign architecture.
apt=(timeout 300 apt-get -q -o APT::Architectures::=amd64 -o APT::Architectures::=i386
     -o Dir::State::Lists="$work/lists" -o Dir::Cache="$work" -o APT::Sandbox::User=root)
"${apt[@]}" update > "$work/log" 2>&1 || true  # one list that fails need not be the one with Wine
cd "$work"
if ! "${apt[@]}" download "libwine:i386=$version" >> "$work/log" 2>&1; then
  tail -n 5 "$work/log" >&2
  echo "$0: Wine's 32-bit libraries $version cannot be had" >&2
  exit 1
fi
dpkg-deb -x libwine_*_i386.deb unpacked
mv unpacked/usr/lib/i386-linux-gnu/wine/i386-windows "$folder/i386-windows"
