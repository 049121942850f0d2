#!/usr/bin/env bash
# Installs what the named package lists (tools/packages/<name>.txt) hold and the machine lacks.
# Does nothing, and needs no rights, when everything is there.
set -euo pipefail
cd "$(dirname "$0")/packages"

missing=()
for list in "$@"; do
  while read -r package; do
    [[ -z $package || $package == \#* ]] && continue
    dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
  done < "$list.txt"
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing: ${missing[*]}"
sudo=()
if [[ $EUID -ne 0 ]]; then
  command -v sudo > /dev/null || { echo "Please install these packages as root, then try again." >&2; exit 1; }
  sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null
