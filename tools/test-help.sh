#!/usr/bin/env bash
# Tests the site and the help that are made from the guide. The last line sums the tests up.
#   tools/test-help.sh <build with the program guide>
set -uo pipefail
cd "$(dirname "$0")/.."
. tools/test-lib.sh
guide=$1/guide
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

check "the site is built without a broken link" timeout 60 tools/site.sh "$guide"
for page in gidas guide; do
  check "its search knows the pages of $page" grep -q "\"$page/reference.html#" out/site/search/search_index.json
done
# Their tables begin with the doctor's findings, and so does the table of all of them.
findings() { grep -E '^\| `[a-z0-9-]+`' "$1" | cut -d'|' -f2 | grep -oE '`[a-z0-9-]+`' | sort; }
names_findings() { [[ -n $(findings "$1") && -z $(comm -23 <(findings "$1") <(findings docs/installation.md)) ]]; }
for page in error-429 klaida-429; do
  check "$page names findings that there are" names_findings "docs/$page.md"
done
check "both tell of the same ones" diff <(findings docs/error-429.md) <(findings docs/klaida-429.md)
page=out/site-pages/gidas/CTools.md
echo '[nowhere](nowhere.md)' >> "$page"
fails() { ! timeout 60 mkdocs build --strict --site-dir "$work/site" > "$work/broken.log" 2>&1; }
check "a broken link fails it" fails
check "and is named" grep -q 'nowhere.md' "$work/broken.log"
sed -i '$d' "$page"

check "the help is made" timeout 60 tools/help.sh "$guide" "$work"
# Every link and picture of the pages leads to a file beside them.
leads_somewhere() {
  local links
  links=$(cd "$work/FReport" && grep -oE '(href|src)="[^"#:]*"' ./*.html | sed -E 's/.*"(.*)"/\1/' | sort -u)
  [[ -n $links ]] || return 1
  while read -r link; do [[ -s $work/FReport/$link ]] || { echo "no $link"; return 1; }; done <<< "$links"
}
check "its pages lead to pages that are there" leads_somewhere
holds_all() {
  local name
  chmls list "$work/FReport.chm" > "$work/list.txt" || return 1
  for name in $(cd "$work/FReport" && find . -type f | cut -c2-); do
    grep -qF " $name" "$work/list.txt" || { echo "no $name"; return 1; }
  done
}
check "the help for Windows holds the same" holds_all
chmls extractall "$work/FReport.chm" "$work/chm" > "$work/extract.log" 2>&1
check "in Windows' Baltic code page" grep -q 'Ataskaitų autoriaus gidas' <(iconv -f cp1257 -t utf-8 "$work/chm/index.html")
check "with its contents" grep -q 'CRepPeriod.html' "$work/chm/FReport.hhc"
check "and its index of members" grep -q 'ClearFormulas (CReports)' "$work/chm/FReport.hhk"
sum_up
