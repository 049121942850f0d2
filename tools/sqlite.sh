#!/usr/bin/env bash
# Puts SQLite's source, one file and its header, into the named folder, unless it is there already. It comes out of the
# npm package better-sqlite3, which carries it; version and content are pinned here. Needs the network once, and npm;
# where there is none, put the package's file, as `npm pack` writes it, beside the folder.
#   tools/sqlite.sh <folder>
set -euo pipefail

package=better-sqlite3 version=13.2.0
archive=$package-$version.tgz
archive_sum=40487589df3496f2ee0079d22b73c63fccebe7db0e8ee9a2c42421861e321e0b
sums="75a4760a7b9727a4c4c877aec92eacf39e52a8f2921ce00bd33be6d3a8e8e254  sqlite3.c
d6c84557261893439b341d2e6c35187ae3ea24fbfd843ad94616f72d89242b8c  sqlite3.h"

[[ $# -eq 1 ]] || { sed -n '2,5s/^# //p' "$0" >&2; exit 2; }
here=$(dirname "$(realpath "$0")")
mkdir -p "$1"
cd "$1"
is_there() { sha256sum --check --status - <<< "$sums" 2> /dev/null; }
is_there && exit 0

# Builds side by side would spoil each other's work.
exec 9> .lock
flock --timeout 300 9
is_there && exit 0
fail() { echo "$0: $*" >&2; exit 1; }
has_archive() { sha256sum --check --status - <<< "$archive_sum  ../$archive" 2> /dev/null; }
if ! has_archive; then
  command -v npm > /dev/null || "$here/install-packages.sh" npm >&2 || fail "npm, which fetches SQLite's source, is not there"
  output=$(cd .. && timeout 300 npm pack --loglevel=error "$package@$version" 2>&1 9>&-) || {
    echo "$output" >&2
    fail "npm could not fetch $package $version, which carries SQLite's source; put $archive into $(realpath ..)"
  }
  has_archive || fail "$(realpath ..)/$archive is not the file that is expected (SHA-256 $archive_sum)"
fi
tar -xzf "../$archive" --strip-components=3 package/deps/sqlite3/sqlite3.c package/deps/sqlite3/sqlite3.h
is_there || fail "$archive does not hold the expected source"
