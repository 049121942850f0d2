#!/usr/bin/env bash
# Runs a Google Test program and shows what is not as it should be. The last line sums up.
#   tools/google-test.sh <program> [<argument>...]
. "$(dirname "$0")/test-lib.sh"
google_test "$(basename "$1")" "$@"
sum_up
