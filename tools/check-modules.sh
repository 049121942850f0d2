#!/usr/bin/env bash
# Whether the Linux modules of a release build have what cmake/Hardening.cmake asks for. The last line sums up.
#   tools/check-modules.sh <build folder>
set -uo pipefail
[[ $# -eq 1 ]] || { sed -n '2,3s/^# *//p' "$0" >&2; exit 2; }

passed=0 failed=0
# A check passes when a line of the text has the pattern.
check() {
  if grep -qE "$2" <<< "$3"; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "FAILED: $1"
  fi
}

for module in libqva_calc.so libqva_host.so; do
  dynamic=$(readelf --wide --dynamic "$1/$module")
  segments=$(readelf --wide --program-headers "$1/$module")
  symbols=$(nm --dynamic --undefined-only "$1/$module")
  check "$module has read-only relocations" GNU_RELRO "$segments"
  check "$module resolves all symbols at its start" 'FLAGS.* (BIND_)?NOW' "$dynamic"
  check "$module has no executable stack" 'GNU_STACK.* RW ' "$segments"
  check "$module has stack protectors" ' __stack_chk_fail' "$symbols"
  check "$module has checked calls of the C library" ' __[a-z]+_chk(@|$)' "$symbols"
done
echo "$passed passed, $failed failed, 0 skipped"
[[ $failed -eq 0 ]]
