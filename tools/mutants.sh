#!/usr/bin/env bash
# Changes the library one token at a time and tells which changes no test notices. tools/mutants.pl says with what options.
cd "$(dirname "$0")/.." || exit
tools/install-packages.sh run test mutants && exec nice -n 19 tools/mutants.pl "$@"
