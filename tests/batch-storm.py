#!/usr/bin/env python3
"""A batch in bad weather: workers killed at random, macros that hang or die, questions without an answer, a disk that is full.

  tests/batch-storm.py [--build-folder PATH] [--jobs 1000] [--workers 2] [--kill-every SECONDS] [--seed N]

Whatever happens, each job ends once, as done or with its cause; no output folder holds half a file; what a good job leaves is
what a single run leaves. The same command in good weather then does what is missing. Ends with status 1 where one of that is
not so. The disk that is full is a small tmpfs, for which it needs root; without, those jobs are left out.
"""
import argparse
import collections
import csv
import json
import os
import random
import signal
import subprocess
import sys
import tempfile
import threading
import time
import xml.sax.saxutils
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent
FINISHED = {  # what may become of a job of each kind, where nobody kills it
    "Report": {"ok"},
    "Hangs": {"time-limit"},
    "Dies": {"died"},
    "Asks": {"failed"},
    "FullDisk": {"failed", "died", "ok"},
}
MACROS = """Option VBASupport 1

Sub Report()
    Dim oExcel As Object, oReports As Object, oSheet As Object, bSaved As Boolean
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook
    Set oReports = CreateObject("QVA_Varnholt.CReports")
    oReports.Init "Audra"
    Set oSheet = ThisWorkbook.Sheets("Lapas")
    oSheet.Range("A1:J50").Formula = "=ROW()*COLUMN()/7"
    oReports.ClearFormulas oSheet.Range("A1:J50")
    oReports.Spauzd oSheet, True
    oSheet.Range("L1").Value = 2025
    oReports.SaveDoc oSheet.Range("L1"), oSheet.Range("L2"), bSaved
    If Not bSaved Or Not oSheet.Range("L3").Value Then Err.Raise 1004, "Report", "not stored"
    oExcel.ResetConnectEX 0
End Sub

Sub FullDisk()
    Report
End Sub

Sub Slow()
    Wait 3000
    Report
End Sub

Sub Hangs()
    Do
    Loop
End Sub

Sub Dies()
    Shell "/bin/sh", 0, "-c 'kill -9 $PPID'", True
    Hangs
End Sub

Sub Asks()
    Dim oExcel As Object, oDates As Object, dDay As Date
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook
    Set oDates = CreateObject("QVA_Varnholt.CDatePic")
    oDates.Show dDay
End Sub
"""


def write_workbook(path):
    name = '<table:named-range table:name="{}" table:base-cell-address="$Lapas.$A$1" table:cell-range-address="$Lapas.{}"/>'
    path.write_text(f"""<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:script="urn:oasis:names:tc:opendocument:xmlns:script:1.0"
 xmlns:ooo="http://openoffice.org/2004/office" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
 <office:scripts><office:script script:language="ooo:Basic"><ooo:libraries><ooo:library-embedded ooo:name="Audra">
  <ooo:module ooo:name="Ataskaita"><ooo:source-code>{xml.sax.saxutils.escape(MACROS)}</ooo:source-code></ooo:module>
 </ooo:library-embedded></ooo:libraries></office:script></office:scripts>
 <office:body><office:spreadsheet><table:table table:name="Lapas"/><table:named-expressions>
  {name.format("Print", "$A$1:.$J$50")}{name.format("Saved", "$L$3")}
 </table:named-expressions></office:spreadsheet></office:body>
</office:document>
""")


def files_of(folder):
    """What a job left, but for its own result and what tells times."""
    names = (f for f in folder.rglob("*") if f.is_file())
    return {str(f.relative_to(folder)): f for f in names if f.name not in ("result.json", "messages.txt")}


def contents(file):
    """What must be the same in each run: of a PDF its text."""
    if file.suffix == ".pdf":
        return subprocess.run(["pdftotext", "-layout", str(file), "-"], check=True, capture_output=True, timeout=60).stdout
    return file.read_bytes()


class Reference:
    """What a single run leaves. Bytes in which three of them differ are of times, which have eight: the others may change, too."""

    def __init__(self, runner, workbook, folder):
        runs = []
        for n, macro in enumerate(["Report", "Report", "Slow"]):  # how long it was worked at is in a file, too
            out = folder / f"single-{n}"
            subprocess.run([*runner, "--no-picture", "--macro", f"Ataskaita.{macro}", "--output-folder", str(out), str(workbook)],
                           check=True, stdout=subprocess.DEVNULL)
            runs.append({name: contents(f) for name, f in files_of(out).items()})
        self.names = set(runs[0])
        self.files = {}
        for name in self.names:
            first = runs[0][name]
            if len({len(run[name]) for run in runs}) > 1:
                raise SystemExit(f"single runs leave {name} of different lengths: it cannot be compared")
            differing = [n for n in range(len(first)) if len({run[name][n] for run in runs}) > 1]
            self.files[name] = first, {n + step for n in differing for step in range(-7, 8)}

    def difference(self, folder):
        """How a job's output differs from a single run's; empty where it does not."""
        left = files_of(folder)
        if set(left) != self.names:
            return f"files {sorted(left)} in place of {sorted(self.names)}"
        for name, (first, times) in self.files.items():
            bytes_ = contents(left[name])
            if len(bytes_) != len(first):
                return f"{name} has {len(bytes_)} bytes in place of {len(first)}"
            if places := [n for n, (a, b) in enumerate(zip(bytes_, first)) if a != b and n not in times]:
                return f"{name} differs at {places[:20]}"
        return ""


class Killer(threading.Thread):
    """Kills a LibreOffice of the batch now and then: a worker, or the job that it runs."""

    def __init__(self, folder, seconds, chance):
        super().__init__(daemon=True)
        self.mark, self.seconds, self.chance = f"TMPDIR={folder}".encode(), seconds, chance
        self.kills = 0
        self.over = threading.Event()

    def run(self):
        while not self.over.wait(self.chance.expovariate(1 / self.seconds)):
            own = []
            for process in Path("/proc").glob("[0-9]*"):
                try:
                    if (process / "comm").read_text() == "soffice.bin\n" and self.mark in (process / "environ").read_bytes():
                        own.append(int(process.name))
                except OSError:
                    continue
            if own:
                try:
                    os.kill(self.chance.choice(own), signal.SIGKILL)
                    self.kills += 1
                except ProcessLookupError:
                    pass


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build-folder", type=Path, default=SOURCE / "build/release")
    parser.add_argument("--jobs", type=int, default=1000)
    parser.add_argument("--workers", type=int, default=2)
    parser.add_argument("--kill-every", type=float, default=5)
    parser.add_argument("--timeout", type=int, default=8)
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    chance = random.Random(options.seed)
    build = options.build_folder.resolve()
    common = ["--build-folder", str(build), "--host-resources", str(SOURCE / "host")]
    runner = str(build / "tools/report-runner")
    wrong = []

    with tempfile.TemporaryDirectory(prefix="qva-storm-") as name:
        folder = Path(name)
        workbook, jobs_file, disk = folder / "audra.fods", folder / "jobs.csv", folder / "disk"
        write_workbook(workbook)
        reference = Reference([runner, *common], workbook, folder)
        disk.mkdir()
        has_disk = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=128k", "tmpfs", str(disk)], stderr=subprocess.DEVNULL
                                  ).returncode == 0
        try:
            kinds = chance.choices(["Report", "Asks", "Dies", "Hangs", "FullDisk"], [88, 4, 2, 1, 5 * has_disk], k=options.jobs)
            with jobs_file.open("w", newline="") as file:
                rows = csv.writer(file)
                rows.writerow(["workbook", "macro", "output"])
                for n, kind in enumerate(kinds):
                    rows.writerow([workbook, f"Ataskaita.{kind}", f"{disk if kind == 'FullDisk' else folder / 'out'}/{n}"])

            environment = {**os.environ, "TMPDIR": str(folder / "tmp")}
            (folder / "tmp").mkdir()
            command = [runner, "batch", *common, "--no-picture", "--workers", str(options.workers), "--timeout",
                       str(options.timeout), str(jobs_file)]

            def batch(kill_every):
                begin = time.monotonic()
                killer = Killer(folder / "tmp", kill_every, chance) if kill_every else None
                if killer:
                    killer.start()
                with (folder / "errors.txt").open("w") as errors:
                    status = subprocess.run(command, env=environment, stderr=errors).returncode
                if killer:
                    killer.over.set()
                    killer.join()
                seconds = time.monotonic() - begin
                if status not in (0, 11):
                    wrong.append(f"the batch ended with {status}: {(folder / 'errors.txt').read_text()[-2000:]}")
                summary = json.loads((folder / "jobs.summary/summary.json").read_text())["jobs"]
                if len(summary) != len(kinds):
                    wrong.append(f"{len(summary)} jobs in the summary of {len(kinds)}")
                counts = collections.Counter((kind, job["status"]) for kind, job in zip(kinds, summary))
                print(f"{len(kinds)} jobs in {seconds:.0f} s, {killer.kills if killer else 0} processes killed:")
                for (kind, outcome), count in sorted(counts.items(), key=str):
                    print(f"  {kind:9} {outcome or '-':12} {count}")
                for n, (kind, job) in enumerate(zip(kinds, summary)):
                    judge(n, kind, job, bool(killer))

            def judge(n, kind, job, killed):
                # Killed twice, as it ran or before it began.
                allowed = FINISHED[kind] | ({"died", "no-libreoffice"} if killed else set())
                if kind == "FullDisk":
                    allowed = allowed | {"no-libreoffice", "no-macro"}
                if job["status"] not in allowed:
                    wrong.append(f"job {n} ({kind}): {job['status']}")
                if job["status"] != "ok" and not job.get("text"):
                    wrong.append(f"job {n} ({kind}): {job['status']} without a cause")
                out = Path(job["output"]) if Path(job["output"]).is_absolute() else folder / job["output"]
                if job["status"] == "ok":
                    if difference := reference.difference(out):
                        wrong.append(f"job {n} ({kind}), which is done: {difference}")
                elif out.exists():
                    archived = out / "drives/C/Ataskaitos/Archyvas/2025/Audra_2025.xls"
                    if archived.exists() and archived.stat().st_size != len(
                            reference.files["drives/C/Ataskaitos/Archyvas/2025/Audra_2025.xls"][0]):
                        wrong.append(f"job {n} ({kind}), {job['status']}: half a file in the archive")

            batch(options.kill_every)
            left = [str(p) for p in folder.glob("*/*.part")]
            if left:
                wrong.append(f"left behind: {left}")
            batch(None)
            running = Killer(folder / "tmp", 1, chance)
            alive = [p for p in Path("/proc").glob("[0-9]*/environ") if mark_in(p, running.mark)]
            if alive:
                wrong.append(f"still running: {alive}")
            if list((folder / "tmp").iterdir()):
                wrong.append(f"left in the folder for temporary files: {[p.name for p in (folder / 'tmp').iterdir()]}")
        finally:
            if has_disk:
                subprocess.run(["umount", str(disk)], check=True)
    for line in wrong:
        print(line, file=sys.stderr)
    return 1 if wrong else 0


def mark_in(path, mark):
    try:
        return mark in path.read_bytes()
    except OSError:
        return False


sys.exit(main())
