#!/usr/bin/python3
"""Measures ways to make reports in LibreOffice against each other, and writes tables of ratios.

  bench/reports.py [--build-folder PATH] [--rounds N] [--growth JOBS] [part ...] [--cells N ...]

Parts: ways (reports by one LibreOffice each, by a listener, by report-runner), finish (the last steps of a report by the
library and by a macro that goes from cell to cell), growth (memory of one worker over many jobs); all of them without any.
docs/performance.md tells how to read what is printed.
"""
import argparse
import ctypes
import os
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
import xml.sax.saxutils
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent
WORKBOOK = SOURCE / "samples/balance.fods"
ANSWERS_FILE = SOURCE / "samples/balance.answers"
ANSWERS = ANSWERS_FILE.read_text()
MACRO = "Balansas.Ataskaita.Main"
SCRIPT = f"vnd.sun.star.script:{MACRO}?language=Basic&location=document"
PORT = 21437
PR_SET_CHILD_SUBREAPER = 36


class Cost:
    """What a program and all that it started took, until the last of them had ended."""

    def __init__(self, command, environment=None, watch=None):
        begin = time.monotonic()
        main = subprocess.Popen(["timeout", "--kill-after=10", "4000", *command], env={**os.environ, **(environment or {})}, stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE if watch is None else None, text=True)
        self.cpu = 0.0
        self.memory = 0
        status = None
        while True:
            try:
                # Whatever lost its parent is ours: this process is the reaper of all below it.
                pid, exit_status, usage = os.wait4(-1, os.WNOHANG if watch else 0)
            except ChildProcessError:
                break
            if pid == 0:
                watch()
                time.sleep(0.2)
                continue
            self.cpu += usage.ru_utime + usage.ru_stime
            self.memory = max(self.memory, usage.ru_maxrss)
            if pid == main.pid:
                status = os.waitstatus_to_exitcode(exit_status)
        self.seconds = time.monotonic() - begin
        main.returncode = status
        if status != 0:
            raise SystemExit(f"{command} ended with {status}: {main.stderr.read() if main.stderr else ''}")


# ---- What a user without report-runner has: a profile with the component, and a macro of his own


def url(path):
    return Path(path).resolve().as_uri()


def make_profile(folder, build):
    user = folder / "profile/user"
    for sub in ("basic/Standard", "psprint"):
        (user / sub).mkdir(parents=True)
    item = '<item oor:path="/org.openoffice.{}"><prop oor:name="{}" oor:op="fuse"><value>{}</value></prop></item>'
    (user / "registrymodifications.xcu").write_text(
        '<?xml version="1.0" encoding="UTF-8"?><oor:items xmlns:oor="http://openoffice.org/2001/registry">'
        + item.format("Office.Common/Security/Scripting", "MacroSecurityLevel", 0)
        + item.format("Setup/Office", "ooSetupInstCompleted", "true")
        + item.format("Setup/Product", "ooSetupLastVersion", "99.9") + "</oor:items>")
    (user / "psprint/psprint.conf").write_text(
        "[__Global_Printer_Defaults__]\nDisableCUPS=1\nPDFDevice=1\nPPD_PageSize=A4\n[PDF]\nPrinter=SGENPRT/PDF\n"
        'DefaultPrinter=1\nPDFDevice=1\nPPD_PageSize=A4\nCommand=cat > "$REPORT_FOLDER/printed-1.pdf"\n')
    library = ('<?xml version="1.0" encoding="UTF-8"?>\n'
               '<!DOCTYPE library:{0} PUBLIC "-//OpenOffice.org//DTD OfficeDocument 1.0//EN" "{1}.dtd">\n'
               '<library:{0} xmlns:library="http://openoffice.org/2000/library" '
               'xmlns:xlink="http://www.w3.org/1999/xlink"{2}</library:{0}>\n')
    (user / "basic/script.xlc").write_text(library.format(
        "libraries", "libraries",
        '><library:library library:name="Standard" library:link="false"/>'))
    (user / "basic/Standard/script.xlb").write_text(library.format(
        "library", "library", ' library:name="Standard" library:readonly="false" library:passwordprotected="false">'
        '<library:element library:name="Module1"/>'))
    source = xml.sax.saxutils.escape(f"""Sub RunReport
    Dim aOpen(0) As New com.sun.star.beans.PropertyValue, oBook
    aOpen(0).Name = "MacroExecutionMode"
    aOpen(0).Value = 4
    oBook = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("REPORT_FOLDER") & "/{WORKBOOK.name}"), "_blank", 0, aOpen())
    oBook.ScriptProvider.getScript("{SCRIPT}").invoke(Array(), Array(), Array())
    oBook.close(True)
    StarDesktop.terminate
End Sub
""")
    (user / "basic/Standard/Module1.xba").write_text(
        '<?xml version="1.0" encoding="UTF-8"?>\n'
        '<script:module xmlns:script="http://openoffice.org/2000/script" script:name="Module1" '
        f'script:language="StarBasic">{source}</script:module>\n')
    (folder / "qva.components").write_text(
        '<?xml version="1.0" encoding="UTF-8"?><components xmlns="http://openoffice.org/2010/uno-components">'
        f'<component loader="com.sun.star.loader.SharedLibrary" environment="gcc3" uri="{url(build / "libqva_calc.so")}">'
        '<implementation name="QVA_Varnholt.ObjectFactory" constructor="qva_create_object_factory" '
        'single-instance="true"><service name="com.sun.star.bridge.OleObjectFactory"/></implementation>'
        "</component></components>")


def soffice(folder, *arguments):
    program = Path(shutil.which("soffice")).resolve().parent
    return ["soffice", "--headless", "--norestore", "--nologo", "--nodefault", "--nolockcheck",
            f"-env:UserInstallation={url(folder / 'profile')}",
            f"-env:URE_MORE_SERVICES=<{url(program / 'services')}>* {url(folder / 'qva.components')}", *arguments]


def report_environment(folder, answers=ANSWERS):
    """A folder for a report, with the workbook, and the variables by which the library works there."""
    for archive in ("Archyvas", "Baltija", "Formos"):
        (folder / "drives/C/Ataskaitos" / archive).mkdir(parents=True)
    shutil.copy(WORKBOOK, folder)
    (folder / "form.answers").write_text(answers)
    settings = r"HKEY_CURRENT_USER\Software\VB and VBA Program Settings\Quillon Enterprise"
    (folder / "registry.reg").write_text(
        f'Windows Registry Editor Version 5.00\n\n[{settings}\\Forms\\MDI]\n"P0"="MEDVILNE"\n\n'
        f'[{settings}\\General]\n"AppPath"="C:\\\\Quillon"\n')
    return {"REPORT_FOLDER": str(folder), "SAL_USE_VCLPLUGIN": "svp", "LC_ALL": "C.UTF-8",
            "QVA_VARNHOLT_DRIVES": str(folder / "drives"), "QVA_VARNHOLT_REGISTRY": str(folder / "registry.reg"),
            "QVA_VARNHOLT_FORM_ANSWERS": str(folder / "form.answers"),
            "QVA_VARNHOLT_MESSAGE_LOG": str(folder / "messages.txt"),
            "QVA_HOST_DATABASE": str(folder / "host.sqlite"), "QVA_HOST_RESOURCES": str(SOURCE / "host")}


def expect_reports(folder, count):
    """Each report has left what it prints, and something is in the archive."""
    printed, archived = len(list(folder.glob("*/printed*.pdf"))), len(list(folder.glob("**/Balansas_2025.xls")))
    if printed != count or archived not in (1, count):
        raise SystemExit(f"{folder}: {printed} printed and {archived} archived of {count} reports")


# ---- The ways. Each makes so many reports in a folder, and tells what they cost


def one_office_each(context, folder, count):
    costs = []
    for n in range(count):
        report = folder / str(n)
        environment = report_environment(report)
        costs.append(Cost(soffice(context.plain, "macro:///Standard.Module1.RunReport"), environment))
    return costs


def listener(context, folder, count):
    environment = report_environment(folder / "0", ANSWERS * count)
    office = soffice(context.plain, f"--accept=socket,host=127.0.0.1,port={PORT};urp")
    return [Cost([sys.executable, __file__, "drive", str(folder), str(count), *office], environment)]


def drive(folder, count, office):
    """The listener's client, a process of its own."""
    import uno
    from com.sun.star.beans import PropertyValue
    from com.sun.star.connection import NoConnectException

    process = subprocess.Popen(office)
    resolver = uno.getComponentContext().ServiceManager.createInstance("com.sun.star.bridge.UnoUrlResolver")
    for _ in range(600):
        try:
            remote = resolver.resolve(f"uno:socket,host=127.0.0.1,port={PORT};urp;StarOffice.ComponentContext")
            break
        except NoConnectException:
            time.sleep(0.1)
    desktop = remote.ServiceManager.createInstance("com.sun.star.frame.Desktop")
    for n in range(count):
        report = folder / str(n)
        report.mkdir(exist_ok=True)
        shutil.copy(WORKBOOK, report)
        book = desktop.loadComponentFromURL(url(report / WORKBOOK.name), "_blank", 0,
                                            (PropertyValue(Name="MacroExecutionMode", Value=4),))
        book.getScriptProvider().getScript(SCRIPT).invoke((), (), ())
        book.close(True)
        shutil.move(folder / "0/printed-1.pdf", report / "printed.pdf")
    try:
        desktop.terminate()
    except Exception:  # the connection goes with it
        pass
    process.wait()


def single_runs(context, folder, count):
    return [Cost([*context.runner, "--output-folder", str(folder / str(n)), "--form-answers", str(ANSWERS_FILE), "--no-picture",
                  str(WORKBOOK)]) for n in range(count)]


def batch(workers):
    def run(context, folder, count):
        jobs = folder / "jobs.csv"
        jobs.write_text("workbook,form-answers,output\n" + "".join(f"{WORKBOOK},{ANSWERS_FILE},{n}\n" for n in range(count)))
        return [Cost([context.runner[0], "batch", *context.runner[1:], "--workers", str(workers), "--no-picture", str(jobs)])]
    return run


WAYS = [  # name, what runs it, and how many reports it makes in a round
    ("a LibreOffice for each, macro URL", one_office_each, 5),
    ("one listener, UNO by socket", listener, 20),
    ("report-runner, single runs", single_runs, 5),
    ("report-runner batch, 1 worker", batch(1), 20),
    ("report-runner batch, 2 workers", batch(2), 20),
]


def spread(values, digits):
    return f"{statistics.median(values):.{digits}f} ({min(values):.{digits}f}–{max(values):.{digits}f})"


def ways(context):
    figures = {name: [] for name, _, _ in WAYS}
    for number in range(context.rounds):
        for name, run, count in WAYS:
            folder = Path(tempfile.mkdtemp(dir=context.folder))
            costs = run(context, folder, count)
            expect_reports(folder, count)
            figures[name].append((sum(c.seconds for c in costs) / count, sum(c.cpu for c in costs) / count,
                                  max(c.memory for c in costs) / 1024))
            shutil.rmtree(folder)
            print(f"round {number + 1}: {name}: %.2f s, %.3f CPU-s, %.0f MB" % figures[name][-1], file=sys.stderr)
    print("| | reports a minute | processor's seconds a report | MB of the largest process | reports for the same processor time |")
    print("|---|---|---|---|---|")
    base = figures[WAYS[0][0]]
    for name, rounds in figures.items():
        ratios = [b[1] / r[1] for b, r in zip(base, rounds)]
        print(f"| {name} | {spread([60 / s for s, _, _ in rounds], 0)} | {spread([c for _, c, _ in rounds], 3)} | "
              f"{spread([m for _, _, m in rounds], 0)} | {spread(ratios, 2)} |")


def finish(context):
    cells = {count: context.rounds for count in context.cells}
    lines = []
    for count, rounds in cells.items():
        folder = Path(tempfile.mkdtemp(dir=context.folder))
        results = folder / "results"
        Cost([*context.runner, "--output-folder", str(folder / "out"), "--no-picture", "--timeout", "3600", "--macro",
              "Baigimas.Bench.Main", str(SOURCE / "bench/calc/finish.fods")],
             {"QVA_BENCH_RESULTS": str(results), "QVA_BENCH_CELLS": str(count), "QVA_BENCH_ROUNDS": str(rounds)})
        lines += [line.split() for line in results.read_text().splitlines()]
        print(f"finish: {count} cells", file=sys.stderr)
        shutil.rmtree(folder)
    print("| cells | step | ms by the library | ms from cell to cell | times faster |\n|---|---|---|---|---|")
    steps = list(dict.fromkeys(line[1] for line in lines))
    for count in cells:
        times = {step: [(int(l[2]), int(l[3])) for l in lines if l[0] == str(count) and l[1] == step] for step in steps}
        times["all"] = [tuple(map(sum, zip(*each))) for each in zip(*times.values())]
        for step, rounds in times.items():
            print(f"| {count} | {step} | {spread([a for a, _ in rounds], 0)} | {spread([b for _, b in rounds], 0)} | "
                  f"{spread([b / max(a, 1) for a, b in rounds], 1)} |")


def growth(context):
    """Memory of the warm LibreOffice, as jobs end."""
    folder = Path(tempfile.mkdtemp(dir=context.folder))
    jobs = folder / "jobs.csv"
    jobs.write_text("workbook,form-answers,output\n" + "".join(f"{WORKBOOK},{ANSWERS_FILE},{n}\n" for n in range(context.growth)))
    seen = []

    def office():
        """The LibreOffice that other ones of its name have for a parent, or that is alone."""
        own = {}
        for stat in Path("/proc").glob("[0-9]*/stat"):
            try:
                head, _, rest = stat.read_text().partition("(soffice.bin) ")
            except OSError:
                continue
            if rest and str(context.folder) in (stat.parent / "environ").read_bytes().decode(errors="replace"):
                own[int(head)] = int(rest.split()[1])
        return next((pid for pid, parent in own.items() if parent not in own), None)

    def watch():
        done = sum(1 for _ in folder.glob("*/result.json"))
        if seen and done < seen[-1][0] + 10:
            return
        try:
            pages = int(Path(f"/proc/{office()}/statm").read_text().split()[1])
        except OSError:
            return
        seen.append((done, pages * resource.getpagesize() / 2**20))

    Cost([context.runner[0], "batch", *context.runner[1:], "--jobs-per-worker", str(context.growth + 1), "--no-picture",
          str(jobs)], {"TMPDIR": str(context.folder)}, watch)
    print("| jobs of one worker | MB |\n|---|---|")
    for done, megabytes in seen[::max(1, len(seen) // 10)] + seen[-1:]:
        print(f"| {done} | {megabytes:.1f} |")
    shutil.rmtree(folder)


def main():
    if sys.argv[1:2] == ["drive"]:
        return drive(Path(sys.argv[2]), int(sys.argv[3]), sys.argv[4:])
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build-folder", type=Path, default=SOURCE / "build/release")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--growth", type=int, default=500, metavar="JOBS")
    parser.add_argument("--cells", type=int, nargs="+", default=[1000, 10000, 100000], help="of the report that is finished")
    parser.add_argument("parts", nargs="*")
    context = parser.parse_args()
    build = context.build_folder.resolve()
    context.runner = [str(build / "tools/report-runner"), "--build-folder", str(build), "--host-resources",
                      str(SOURCE / "host")]
    ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1)
    with tempfile.TemporaryDirectory() as folder:
        context.folder = Path(folder)
        context.plain = Path(folder) / "plain"
        context.plain.mkdir()
        make_profile(context.plain, build)
        for part in context.parts or ["ways", "finish", "growth"]:
            {"ways": ways, "finish": finish, "growth": growth}[part](context)


main()
