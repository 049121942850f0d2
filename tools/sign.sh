#!/usr/bin/env bash
# Signs Windows programs and libraries where they lie; does nothing unless the environment names a certificate:
#   QVA_SIGN_CERTIFICATE    a PKCS#12 file with certificate and key
#   QVA_SIGN_PASSWORD_FILE  a file whose first line is its password, where it has one
#   QVA_SIGN_TIMESTAMP      the address of a timestamp server, where signatures are to outlive the certificate
#   tools/sign.sh <file>...
set -euo pipefail
[[ -n ${QVA_SIGN_CERTIFICATE:-} ]] || exit 0
options=(-pkcs12 "$QVA_SIGN_CERTIFICATE" -h sha256 -n QVA_Varnholt)
[[ -z ${QVA_SIGN_PASSWORD_FILE:-} ]] || options+=(-readpass "$QVA_SIGN_PASSWORD_FILE")
[[ -z ${QVA_SIGN_TIMESTAMP:-} ]] || options+=(-ts "$QVA_SIGN_TIMESTAMP")
for file; do
  osslsigncode sign "${options[@]}" -in "$file" -out "$file.signed" > "$file.log" || { cat "$file.log" >&2; exit 1; }
  rm "$file.log"
  chmod --reference="$file" "$file.signed"
  mv "$file.signed" "$file"
done
