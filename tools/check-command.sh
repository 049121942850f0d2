#!/usr/bin/env bash
# One test that is a command. The last line sums up.
#   tools/check-command.sh <name> <command>...
. "$(dirname "$0")/test-lib.sh"
check "$@"
sum_up
