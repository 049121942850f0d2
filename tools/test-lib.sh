# What the scripts of tests share; to be sourced. Tests are counted, and the last line of a script sums them up:
# "<n> passed, <n> failed, <n> skipped".
passed=0 failed=0 skipped=0

report() {
  local name=$1 status=$2
  if [[ $status -eq 0 ]]; then
    passed=$((passed + 1))
    echo "passed: $name"
  else
    failed=$((failed + 1))
    echo "FAILED: $name"
  fi
}
# One test that is a command: it passes when the command does.
check() {
  local name=$1
  shift
  "$@"
  report "$name" $?
}
# What cannot be tried here, and why.
not_run() {
  skipped=$((skipped + 1))
  echo "NOT RUN: $*"
}

# The clang-format that formats as the house does, which is version 14: versions differ, in a few places. Nothing where
# it is not installed.
house_clang_format() {
  local program
  program=$(command -v clang-format-14 || command -v clang-format)
  [[ $("$program" --version 2> /dev/null) != *"version 14."* ]] || echo "$program"
}
# One test: the sources that a file names, with a zero byte behind each, are formatted.
#   formatted <name> <file of names>
formatted() {
  local name=$1 sources=$2 program
  program=$(house_clang_format)
  if [[ -n $program ]]; then
    check "$name" xargs -0 -r -a "$sources" "$program" --dry-run -Werror
  else
    not_run "$name, which only clang-format 14 can tell"
  fi
}

# A Google Test program, whose tests count one by one. A program that dies counts as a failure, too.
#   google_test <name> <command>...
google_test() {
  local name=$1 log status good bad none
  shift
  log=$(mktemp)
  "$@" 2>&1 | tr -d '\r' > "$log"
  status=${PIPESTATUS[0]}
  grep -vE '^\[( RUN      |       OK |----------)\]|^$' "$log"
  good=$(grep -cE '^\[       OK \] ' "$log")
  bad=$(grep -cE '^\[  FAILED  \] .*\([0-9]+ ms\)$' "$log")
  none=$(grep -cE '^\[  SKIPPED \] .*\([0-9]+ ms\)$' "$log")
  rm -f "$log"
  passed=$((passed + good)) failed=$((failed + bad)) skipped=$((skipped + none))
  if [[ $((good + bad)) -eq 0 || ($status -ne 0 && $bad -eq 0) ]]; then
    report "$name ran $((good + bad + none)) tests and ended with status $status" 1
  else
    echo "$name: $good passed, $bad failed, $none skipped"
  fi
}

# The last words of a script of tests.
sum_up() {
  printf '\n%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
  [[ $failed -eq 0 && $passed -gt 0 ]]
}

# A display of its own: $display is its number. Whoever begins it ends it, at the latest when the script does.
#   begin_display <width>x<height>
display= display_server=
begin_display() {
  local pipe
  exec {pipe}<> <(:)
  Xvfb -displayfd "$pipe" -screen 0 "$1x24" -nolisten tcp -r -ac 2> /dev/null &
  display_server=$!
  read -r -t 60 -u "$pipe" display
}
end_display() {
  [[ -n $display_server ]] || return 0
  kill "$display_server" && wait "$display_server"
  display_server=
} 2> /dev/null

# --- Wine: the script says what wine_run is, and has a folder $work -------------------------------------------

# Everything that programs keep in the registry, as text. Wine's own settings come and go, and so do its fonts, with the
# code page of who asked for them last. Keys that hold nothing but other keys are not told.
#   registry <file>
registry() {
  local saver=$work/save-registry.exe
  [[ -e $saver ]] ||
    x86_64-w64-mingw32-gcc -Wall -Wextra -Werror -municode -o "$saver" tools/save-registry.c -ladvapi32 || return 1
  wine_run "$(windows_path "$saver")" "$(windows_path "$work/saved")" || return 1
  perl -ne '
    BEGIN { %roots = (machine => "HKEY_LOCAL_MACHINE\\Software", user => "HKEY_CURRENT_USER\\Software",
                      environment => "HKEY_CURRENT_USER\\Environment") }
    $kept = 0 if $. == 1;
    if (/^\[(.*)\] \d+$/) {
      $key = $1 =~ s/\\\\/\\/gr;
      $root = $roots{ $ARGV =~ s/.*\.//r };
      $kept = $key !~ /^Microsoft\\Windows( NT)?\\CurrentVersion\\Font(s|Substitutes)$/ &&
        ($root !~ /^HKEY_CURRENT_USER/ || $key !~ /^Wine(\\|$)/);
      $_ = $key eq "" ? "[$root]\n" : "[$root\\$key]\n";
    }
    print if $kept && !/^#/;
    close ARGV if eof' "$work"/saved.{machine,user,environment} > "$1"
}
same_registry() {
  registry "$work/now.reg" && diff -U4 "$1" "$work/now.reg" > "$work/difference"
  local status=$?
  head -n 20 "$work/difference"
  return $status
}

# The version in the resources of a program or library for Windows.
file_version() {
  perl -0777 -ne '/\xbd\x04\xef\xfe.{4}(.{8})/s and printf "%d.%d.%d.%d", (unpack "v4", $1)[1, 0, 3, 2]' "$1"
}
# A path as Windows programs see it.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }
