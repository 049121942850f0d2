#!/usr/bin/env bash
# Runs a command on another release of Debian, in a clean clone of what is committed here:
#   tools/debian.sh <release> <folder> <command> [<argument>...]
#   tools/debian.sh trixie ../trixie make test
# The folder holds that release's system; it is made when it is not there, which takes two minutes, and kept, with
# the packages that the command installed, its compiler cache, and the clone in root/project. Packages come from
# where this machine's apt takes those of its own release. Needs root, or sudo. The command's status is the script's.
set -euo pipefail

if [[ ${1:-} == --inside ]]; then
  # In namespaces of their own: mounts are seen by nobody else and go with the last process, which goes with us.
  system=$2
  shift 2
  mount -t proc proc "$system/proc"
  mount --rbind /dev "$system/dev"
  exec env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin TERM="${TERM:-dumb}" LANG=C.UTF-8 \
    chroot "$system" sh -c 'cd /root/project && "$@"' sh "$@"
fi

[[ $# -ge 3 ]] || { sed -n '2,7s/^# //p' "$0" >&2; exit 2; }
[[ $EUID -eq 0 ]] || exec sudo "$0" "$@"
release=$1 system=$2
shift 2
project=$(realpath "$(dirname "$0")/..")

"$project/tools/install-packages.sh" debian
# Two at a time would spoil each other's work.
mkdir -p "$system"
system=$(realpath "$system")
exec 9> "$system/.lock"
flock --nonblock 9 || { echo "$0: another run is using $system" >&2; exit 1; }

# The mark comes last, so that a system whose making was cut off is made anew.
if [[ ! -e $system/.complete ]]; then
  own_release=$(. /etc/os-release && echo "$VERSION_CODENAME")
  sources=$(apt-get indextargets --format '$(ORIGIN) deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
    sed -nE "s/^Debian (deb [^ ]+) $own_release(-updates|-security)? /\1 $release\2 /p" | sort -u)
  archive=$(sed -nE "s/^deb ([^ ]+) $release main\$/\1/p" <<< "$sources" | head -n 1)
  [[ -n $archive ]] || { echo "$0: apt names no archive of Debian $own_release; does apt-get update work?" >&2; exit 1; }
  proxy=
  eval "$(apt-config shell proxy Acquire::http::Proxy)"
  find "$system" -xdev -mindepth 1 -maxdepth 1 ! -name .lock -exec rm -rf {} +
  http_proxy=${proxy:-${http_proxy:-}} debootstrap --variant=minbase --include=ca-certificates,git,make \
    "$release" "$system" "$archive"
  echo "$sources" > "$system/etc/apt/sources.list"
  apt-config dump | grep -E '^Acquire::(https?::|Retries|Check-Valid-Until|Check-Date|Languages)' \
    > "$system/etc/apt/apt.conf.d/90machine" || true
  # An archive may be reached by https alone.
  [[ ! -e /etc/ssl/certs/ca-certificates.crt ]] || cp /etc/ssl/certs/ca-certificates.crt "$system/etc/ssl/certs"
  touch "$system/.complete"
fi
cp -L /etc/resolv.conf /etc/hosts "$system/etc"

rm -rf "$system/root/project"
git clone --quiet --no-hardlinks "$project" "$system/root/project"
# What was downloaded once serves there, too.
[[ ! -d $project/build/downloads ]] || { mkdir "$system/root/project/build" && cp -r "$project/build/downloads" "$system/root/project/build"; }
unshare --mount --pid --fork --kill-child "$0" --inside "$system" "$@" 9>&- &
# With it goes the first process of its namespace, and with that one all others.
trap 'kill -KILL $! 2> /dev/null || true' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
wait $!
