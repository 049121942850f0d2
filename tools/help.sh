#!/usr/bin/env bash
# Makes the help from the Lithuanian guide and the page about error 429: pages for browsers in <folder>/FReport, and
# FReport.chm for Windows.
#   tools/help.sh <the program guide> <folder>
set -euo pipefail
[[ $# -eq 2 ]] || { sed -n '2,4s/^# //p' "$0" >&2; exit 2; }
mkdir -p "$2"
guide=$(realpath "$1") output=$(realpath "$2")
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$guide" . "$work"
cp docs/klaida-429.md "$work/gidas"
mkdir -p "$work/pages/images"
for page in "$work"/gidas/*.md; do
  markdown_py -o html -x tables -x fenced_code -x sane_lists "$page" > "$work/$(basename "$page" .md).html"
done
tools/help-pages.pl "$work/gidas" "$work" "$work/pages"
sed -nE 's/.*!\[[^]]*\]\(images\/([^)]*)\).*/\1/p' "$work"/gidas/*.md | sort -u | while read -r image; do
  cp "docs/images/$image" "$work/pages/images"
done
rm -rf "$output/FReport" "$output/FReport.chm"
mkdir "$output/FReport"
cp -r "$work"/pages/*.html "$work/pages/images" "$output/FReport"

# The viewer of Windows takes a code page's letters alone in its contents, and searches them alone in pages.
tools/help-pages.pl --chm "$work/gidas" "$work" "$work/pages"
(cd "$work/pages" && chmcmd FReport.hhp) > "$work/chmcmd.log" 2>&1 || { cat "$work/chmcmd.log" >&2; exit 1; }
[[ -s $work/pages/FReport.chm ]] || { cat "$work/chmcmd.log" >&2; exit 1; }
cp "$work/pages/FReport.chm" "$output"
