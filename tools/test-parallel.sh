#!/usr/bin/env bash
# Tries docs/batch.md's commands for GNU parallel, over two logins to this machine, which stand for two machines:
#   tools/test-parallel.sh [<build folder>]
# The logins go to an sshd of its own on a high port of the loopback, with keys of its own.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install-packages.sh run parallel

build=$(realpath "${1:-build/release}")
samples=$PWD/samples
work=$(mktemp -d)
trap 'kill "$sshd" 2> /dev/null || true; rm -rf "$work"' EXIT
sshd=

# ---- Two logins
ssh-keygen -q -t ed25519 -N '' -f "$work/host"
ssh-keygen -q -t ed25519 -N '' -f "$work/user"
cp "$work/user.pub" "$work/authorized_keys"
chmod 700 "$work"
port=$(perl -MIO::Socket::INET -e 'print IO::Socket::INET->new(Listen => 1, LocalAddr => "127.0.0.1")->sockport')
cat > "$work/sshd_config" << END
ListenAddress 127.0.0.1
ListenAddress 127.0.0.2
Port $port
HostKey $work/host
AuthorizedKeysFile $work/authorized_keys
StrictModes no
UsePAM no
PasswordAuthentication no
PermitRootLogin prohibit-password
PidFile none
SetEnv PATH=$work/bin:$PATH
END
mkdir -p "$work/bin" /run/sshd 2> /dev/null || true
"$(command -v sshd || echo /usr/sbin/sshd)" -D -e -f "$work/sshd_config" 2> "$work/sshd.log" &
sshd=$!
# By its own variable: in a login, GNU parallel could not read its log any more.
export PARALLEL_SSH="ssh -p $port -i $work/user -o StrictHostKeyChecking=no -o UserKnownHostsFile=/dev/null -o LogLevel=ERROR"
until timeout 10 $PARALLEL_SSH 127.0.0.1 true 2> /dev/null; do
  [[ $SECONDS -lt 60 ]] && kill -0 "$sshd" 2> /dev/null || { cat "$work/sshd.log" >&2; exit 1; }
  sleep 0.2
done
logins=(--sshlogin 2/127.0.0.1 --sshlogin 2/127.0.0.2)

# What a machine with the package has on its search path.
cat > "$work/bin/report-runner" << END
#!/bin/sh
# Tells which login it is; the library's own options come last.
echo "\$SSH_CONNECTION" >> "$work/logins"
exec "$build/tools/report-runner" "\$@" --build-folder "$build" --host-resources "$PWD/host"
END
chmod +x "$work/bin/report-runner"
PATH=$work/bin:$PATH
export PATH PARALLEL_HOME=$work/parallel
mkdir "$PARALLEL_HOME"
touch "$PARALLEL_HOME/will-cite"

fail() { echo "$0: $*" >&2; exit 1; }

# expect_reports <count>: as many reports have a result that is ok, and the file of the archive.
expect_reports() {
  local done archived
  done=$({ grep -rl --include='*.json' '"status": "ok"' "$reports/out" || true; } | wc -l)
  archived=$(find "$reports/out" -name 'Sablonas_2025*.xls' | wc -l)
  [[ $done -eq $1 && $archived -eq $1 ]] || fail "$done results and $archived archived of $1 reports"
}

# ---- A job as one command
reports=$work/single
mkdir -p "$reports/out"
cp "$samples/sablonas.fods" "$reports"
cd "$reports"
{
  echo 'workbook;book;period;output'
  for month in 01 02 03 04; do echo "sablonas.fods;MEDVILNE;2025-$month;out/$month"; done
  echo 'sablonas.fods;NERA;2025-05;out/05'
} > jobs.csv
single() {
  parallel --colsep ';' --header : --joblog parallel.log --resume-failed --timeout 300 \
    "${logins[@]}" --workdir "$reports" \
    report-runner run --book {book} --period {period} --output-folder {output} --result {output}.json {workbook} :::: jobs.csv \
    > printed.txt 2> errors.txt
}
! single || fail "a report of a book that is not there went through"
expect_reports 4
[[ $(awk -F '\t' 'NR > 1 { print $7 }' parallel.log | sort | tr '\n' ' ') == '0 0 0 0 1 ' ]] || fail "$(cat parallel.log)"
[[ $(cut -d ' ' -f 3 "$work/logins" | sort -u | wc -l) -ge 2 ]] || fail "one login did all"
sed -i 's/NERA/BALTIJA/' jobs.csv
before=$(wc -l < "$work/logins")
single || fail "$(cat errors.txt)"
expect_reports 5
[[ $(($(wc -l < "$work/logins") - before)) -eq 1 ]] || fail "the second time did more than what had failed"

# ---- A batch for each machine
reports=$work/batches
mkdir -p "$reports/out"
cp "$samples/sablonas.fods" "$reports"
cd "$reports"
{
  echo 'workbook;book;period;output'
  for month in 01 02 03 04 05 06; do echo "sablonas.fods;MEDVILNE;2025-$month;out/$month"; done
} > jobs.csv
tail -n +2 jobs.csv | split -l 3 -d --additional-suffix .csv --filter '(head -n 1 jobs.csv; cat) > "$FILE"' - part-
parallel --joblog parallel.log --resume-failed --timeout 300 --jobs 1 "${logins[@]}" --workdir "$reports" \
  report-runner batch {} --workers 2 ::: part-*.csv > printed.txt 2> errors.txt || fail "$(cat errors.txt)"
expect_reports 6
echo "Both of GNU parallel's commands do their reports over two logins"
