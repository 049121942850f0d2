#!/usr/bin/env bash
# Builds the documentation's site into out/site; a broken link and a page without a place in mkdocs.yml fail it.
#   tools/site.sh <the program guide>
set -euo pipefail
[[ $# -eq 1 ]] || { sed -n '2,3s/^# //p' "$0" >&2; exit 2; }
guide=$(realpath "$1")
cd "$(dirname "$0")/.."
pages=out/site-pages
rm -rf "$pages"
mkdir -p "$pages/images"
"$guide" . "$pages"
# The guides are in folders of their own here.
sed -i -E 's#\]\((images/|error-429\.md|klaida-429\.md)#](../\1#g' "$pages"/{gidas,guide}/*.md
cp docs/{installation,diegimas,error-429,klaida-429,libreoffice,host-interface,architecture,extending}.md "$pages"
cp docs/images/* "$pages/images"
sed 's#](\.\./#](#g; s#](\([A-Za-z]*\)\.md)#](gidas/\1.md)#g' "$pages/gidas/index.md" > "$pages/index.md"
output=$(mkdocs build --strict 2>&1) || { echo "$output" >&2; exit 1; }
for page in $(cd "$pages" && find gidas guide -name '*.md'); do
  grep -q "^ *- $page\$" mkdocs.yml || { echo "$0: $page has no place in mkdocs.yml" >&2; exit 1; }
done
