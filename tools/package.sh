#!/usr/bin/env bash
# Makes the installable packages from builds that are there: a setup program and a zip for Windows, an extension for
# LibreOffice, a package for Debian.
#   tools/package.sh <release build> <64-bit Windows build> <32-bit Windows build> <output folder>
# What is for Windows is signed where the environment names a certificate (tools/sign.sh).
# QVA_UPDATE_URL, where it is set, is the place from which installed extensions learn of newer ones: the URL of the
# update file that is made then, too. The extension itself is to stand beside it. QVA_MAINTAINER is who keeps the package for
# Debian, "name <address>".
set -euo pipefail
[[ $# -eq 4 ]] || { sed -n '2,8s/^# //p' "$0" >&2; exit 2; }
mkdir -p "$4"
release=$(realpath "$1") x64=$(realpath "$2") x86=$(realpath "$3") output=$(realpath "$4")
cd "$(dirname "$0")/.."
version=$(sed -nE 's/^project\(QVA_Varnholt VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A zip of a folder's content, made anew.
pack() {
  rm -f "$2"
  (cd "$1" && find . -type f | LC_ALL=C sort | zip -q -X -@ "$2")
  echo "$2"
}
documents() {
  mkdir -p "$1/docs/images"
  cp docs/{gidas,guide,diegimas,installation,klaida-429,error-429,libreoffice,host-interface,batch}.md "$1/docs"
  find docs/images -type f -exec cp {} "$1/docs/images" \;
}

# --- LibreOffice ---------------------------------------------------------------------------------------------

oxt=$work/oxt
cp -r packaging/oxt "$oxt"
sed -i "s/@VERSION@/$version/" "$oxt/description.xml"
cp "$release/libqva_calc.so" "$release/libqva_host.so" "$oxt"
strip --strip-unneeded "$oxt"/*.so
mkdir "$oxt/host" "$oxt/samples"
cp host/QVAFormRes.txt host/sample.sql "$oxt/host"
cp samples/*.fods samples/*.answers samples/QvaReport.bas "$oxt/samples"
documents "$oxt"
if [[ -n ${QVA_UPDATE_URL:-} ]]; then
  url=$(sed 's/&/\&amp;/g; s/"/\&quot;/g; s/</\&lt;/g' <<< "$QVA_UPDATE_URL")
  information="<update-information><src xlink:href=\"$url\"/></update-information>"
  URL=$information perl -i -pe 's/<!-- update-information -->/$ENV{URL}/' "$oxt/description.xml"
  cat > "$output/QVA_Varnholt.update.xml" <<EOF
<?xml version="1.0" encoding="UTF-8"?>
<description xmlns="http://openoffice.org/extensions/update/2006" xmlns:xlink="http://www.w3.org/1999/xlink">
 <identifier value="qva.varnholt"/>
 <version value="$version"/>
 <update-download><src xlink:href="${url%/*}/QVA_Varnholt-$version.oxt"/></update-download>
</description>
EOF
  echo "$output/QVA_Varnholt.update.xml"
fi
# The Help button looks beside the library: for pages here, for a help file on Windows.
tools/help.sh "$release/guide" "$work/help"
cp -r "$work/help/FReport" "$oxt"
pack "$oxt" "$output/QVA_Varnholt-$version.oxt"

# --- Debian --------------------------------------------------------------------------------------------------

cmake --build "$release" --target package-files > "$work/deb.log" 2>&1 &&
  cpack --config "$release/CPackConfig.cmake" -B "$work/deb" \
    ${QVA_MAINTAINER:+-D "CPACK_DEBIAN_PACKAGE_MAINTAINER=$QVA_MAINTAINER"} >> "$work/deb.log" 2>&1 ||
  { cat "$work/deb.log" >&2; exit 1; }
deb=("$work"/deb/*.deb)
cp "${deb[0]}" "$output"
echo "$output/$(basename "${deb[0]}")"

# --- Windows -------------------------------------------------------------------------------------------------

zip=$work/zip
mkdir -p "$zip"/{x64,x86,samples}
# What there is for each bitness. The setup program registers QVA_DemoHost.dll where it is among them (/Demo).
for bitness in x64 x86; do
  cp -r "${!bitness}"/{QVA_Varnholt.dll,QVA_Varnholt.manifest,QVA_DemoHost.dll,host} "$zip/$bitness"
done
cp "$x64/idl/QVA_Varnholt.tlb" "$zip"
for script in packaging/windows/*.cmd; do sed 's/$/\r/' "$script" > "$zip/$(basename "$script")"; done
tools/corpus.pl acceptance "$zip/acceptance"
# Excel cannot read flat documents.
tools/excel-workbooks.sh "$zip/samples" samples/*.fods
# The module that all reports share is a file of its own.
sed 's/$/\r/' samples/QvaReport.bas | iconv -f utf-8 -t cp1257 > "$zip/samples/QvaReport.bas"
documents "$zip"
for bitness in x64 x86; do cp "$work/help/FReport.chm" "$zip/$bitness"; done
cp "$x64/qva-doctor.exe" "$zip"
cp "$x86/qva-doctor.exe" "$zip/x86"
tools/sign.sh "$zip"/*.exe "$zip"/x??/*.{dll,exe}
pack "$zip" "$output/QVA_Varnholt-$version.zip"
# All of it but the scripts and the acceptance kit is in the setup program, too, which registers by itself.
rm -r "$zip"/*.cmd "$zip/acceptance"
tools/setup.sh "$zip" "$version" "$output/QVA_Varnholt-$version-setup.exe"
