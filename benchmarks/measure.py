"""Runs what benchmarks/run has built, keeps the results and prints them as tables.

measure.py BUILD_FOLDER [--quick] [--no-fail]
"""

import argparse
import json
import math
import os
import platform
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PEERS = ["SimpleIni", "GKeyFile", "inih", "iniparser", "QSettings", "PropertyTree"]
SIZES = [100, 1000, 10000]
# What waits for the disk is measured by the clock on the wall; all else by the time of the processor, which other
# programs on the machine disturb less.
WAITING = ("Save/", "SaveHeads/", "Replay/")


def output_of(*command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()
    except (OSError, subprocess.CalledProcessError):
        return "unknown"


def machine(build):
    lscpu = dict(
        (part.strip() for part in line.split(":", 1)) for line in output_of("lscpu").splitlines() if ":" in line
    )
    return {
        "date": time.strftime("%Y-%m-%d"),
        "processor": f"{lscpu.get('Model name', 'unknown')}, {os.cpu_count()} cores"
        + (f", {lscpu['Hypervisor vendor']} guest" if "Hypervisor vendor" in lscpu else ""),
        "system": f"{platform.freedesktop_os_release()['PRETTY_NAME']}, Linux {platform.release()}",
        "compiler": output_of("g++", "--version").splitlines()[0],
        "file system": " ".join(output_of("findmnt", "-no", "FSTYPE,OPTIONS", "-T", str(build)).split()),
        "load before": round(os.getloadavg()[0], 1),
        "packages": output_of(
            "dpkg-query", "-W", "-f", "${Package} ${Version}; ", "libbenchmark-dev", "libsimpleini-dev",
            "libglib2.0-0", "libinih1", "libiniparser1", "libqt6core6", "libboost1.74-dev",
        ).rstrip("; "),
    }


def run_benchmarks(build, work, quick):
    out = work / "benchmarks.json"
    subprocess.run(
        [
            build / "bin/helmsway-benchmarks",
            f"--benchmark_repetitions={3 if quick else 15}",
            f"--benchmark_min_time={0.005 if quick else 0.05}",
            "--benchmark_enable_random_interleaving=true",
            "--benchmark_report_aggregates_only=true",
            f"--benchmark_out={out}",
            "--benchmark_out_format=json",
        ],
        cwd=work, check=True, stdout=subprocess.DEVNULL,
    )
    results = {}
    for entry in json.loads(out.read_text())["benchmarks"]:
        if entry.get("error_occurred"):
            sys.exit(f"{entry['run_name']}: {entry['error_message']}")
        if entry.get("aggregate_name") not in ("median", "cv"):
            continue
        row = results.setdefault(entry["run_name"].removesuffix("/real_time"), {})
        scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[entry["time_unit"]] if entry["aggregate_name"] == "median" else 1
        clock = "real_time" if entry["run_name"].startswith(WAITING) else "cpu_time"
        row[entry["aggregate_name"]] = entry[clock] * scale
        if entry["aggregate_name"] == "median":
            row.update({name: entry[name] for name in ("bytes", "reads", "row", "splits") if name in entry})
    return results


def run_process(command, environment, times):
    """Medians of the time from start to end and of the processor time (ms both), and the most memory (MiB)."""
    rows = []
    for _ in range(times):
        begin = time.perf_counter()
        process = subprocess.Popen(
            command, env={**os.environ, **environment}, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE,
        )
        complaints = process.stderr.read()
        _, status, usage = os.wait4(process.pid, 0)
        end = time.perf_counter()
        process.returncode = os.waitstatus_to_exitcode(status)
        process.stderr.close()
        if process.returncode != 0:
            sys.exit(f"{command}: ended with {process.returncode}\n{complaints.decode()}")
        rows.append(((end - begin) * 1e3, (usage.ru_utime + usage.ru_stime) * 1e3))
    wall, cpu = (statistics.median(column) for column in zip(*rows))
    # A child of this program counts this program's memory, which it has until it becomes another; a child of `time`
    # that of a very small one.
    memory = subprocess.run(
        ["/usr/bin/time", "-f", "%M", *command], env={**os.environ, **environment}, stdin=subprocess.DEVNULL,
        stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=True,
    ).stderr.split()[-1]
    return {"wall ms": wall, "cpu ms": cpu, "peak MiB": int(memory) / 1024}


def run_processes(build, work, quick):
    times = 3 if quick else 21
    replay = str(build / "bin/helmsway-replay")
    script = str(build / "share/helmsway/examples/scripts/calibrate-xy.replay")
    installation = work / "installation"
    shutil.copytree(build / "share/helmsway/examples/installation", installation)
    environment = {
        "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen", "QT_LOGGING_RULES": "*=false",
        "XDG_DATA_HOME": str(work / "data"), "XDG_RUNTIME_DIR": str(work), "TMPDIR": str(work),
    }
    empty = [replay, "--instrument", "accepting", "/dev/null"]
    whole = [replay, "--instrument", "accepting", script]
    window = [
        str(build / "bin/helmsway-bench"), "--quit-when-shown", "--seed", "1", "--addin",
        str(build / "bin/libOrvelCalibrateS.so"), "--installation", str(installation),
    ]
    return {
        "start of a process: true": run_process(["true"], environment, times),
        "start of helmsway-replay: --help": run_process([replay, "--help"], environment, times),
        "helmsway-replay, a script without actions": run_process(empty, environment, times),
        "helmsway-replay, one whole calibration": run_process(whole, environment, times),
        "helmsway-bench, until its window is drawn (offscreen)": run_process(window, environment, times),
    }


def run_guarantees(build, work, quick):
    program = [build / "bin/helmsway-save-guarantees", "150" if quick else "3000"]
    environment = {**os.environ, "G_MESSAGES_DEBUG": "", "QT_LOGGING_RULES": "*=false"}
    out = subprocess.run(program, cwd=work, check=True, capture_output=True, text=True, env=environment).stdout
    return json.loads(out)


def table(title, heads, rows):
    print(f"\n### {title}\n")
    widths = [max(len(str(row[i])) for row in [heads, *rows]) for i in range(len(heads))]
    line = lambda row: "| " + " | ".join(
        str(cell).ljust(width) if i == 0 else str(cell).rjust(width)
        for i, (cell, width) in enumerate(zip(row, widths))
    ) + " |"
    print(line(heads))
    print("|" + "|".join(("-" * (width + 1) + (":" if i else "-")) for i, width in enumerate(widths)) + "|")
    for row in rows:
        print(line(row))


def number(value):
    if value >= 1000:
        return f"{value:,.0f}"
    return f"{value:.0f}" if value >= 100 else f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def percent(value):
    return f"{value * 100:.0f} %"


def times(value):
    return f"{number(value)}x"


class Results:
    def __init__(self, benchmarks):
        self.benchmarks = benchmarks

    def median(self, name):
        return self.benchmarks[name]["median"]

    def spread(self, *names):
        """Of the benchmark, or of the quotient of two: the standard deviation of the repetitions, to their mean."""
        return math.hypot(*(self.benchmarks[name]["cv"] for name in names))

    def per_read(self, who, size):
        return self.median(f"Walk/{who}/{size}") / size


def print_walk(results):
    rows = []
    for who in ["StatAlone", "Floor", "Helmsway", *PEERS]:
        reads = [results.per_read(who, size) for size in SIZES]
        rows.append([who, *(number(read) for read in reads), times(reads[-1] / results.per_read("Floor", SIZES[-1])),
                     times(reads[-1] / results.per_read("Helmsway", SIZES[-1]))])
    table("Walk: ns per read, each read with a look at the file's state",
          ["", *(f"{size:,} lines" for size in SIZES), "to the floor", "to Helmsway"], rows)
    rows = []
    for who in ["Helmsway", *PEERS]:
        reads = [results.median(f"ParsePerRead/{who}/{size}") for size in SIZES]
        rows.append([who, *(number(read / 1e3) for read in reads),
                     times(reads[-1] / results.median(f"ParsePerRead/Helmsway/{SIZES[-1]}")),
                     times(reads[-1] / results.per_read("Helmsway", SIZES[-1]))])
    table("Parse: µs to read and parse the file and find one key, which is what a read costs without a kept file",
          ["", *(f"{size:,} lines" for size in SIZES), "to Helmsway", "to a read of the walk"], rows)
    names = [f"ReadAfterChange/Helmsway/{size}" for size in SIZES]
    table("Read right after a change (less than 20 ms): µs per read, each of which takes the file's bytes anew",
          ["", *(f"{size:,} lines" for size in SIZES)],
          [["Helmsway", *(number(results.median(name) / results.benchmarks[name]["row"] / 1e3) for name in names)]])


def print_damage(results):
    sound = results.median("Parse/sound")
    rows = [[name.removeprefix("Parse/"), number(row["median"] / 1e3), times(row["median"] / sound)]
            for name, row in results.benchmarks.items() if name.startswith("Parse/")]
    table("Damaged text: µs to parse a megabyte", ["", "µs", "to sound"], rows)


def print_saves(results):
    rows = []
    for who in ["BareUnflushed", "Bare", "BareWithRead", "Helmsway", "Helmsway, a new key",
                *(peer for peer in PEERS if peer != "inih")]:
        names = [f"Save/{who}/{size}" for size in SIZES]
        ratios = [results.median(name) / results.median(f"Save/Bare/{size}") for name, size in zip(names, SIZES)]
        rows.append([who, *(f"{number(results.median(name) / 1e3)} ± {percent(results.spread(name))}" for name in names),
                     *map(times, ratios)])
    table("Save of one key, the last of the file: µs, and the spread",
          ["", *(f"{size:,} lines" for size in SIZES), *(f"to Bare, {size:,}" for size in SIZES)], rows)
    bare = results.median("SaveHeads/BareWithRead/300")
    rows = [[who, f"{number(results.median(name) / 1e6)} ± {percent(results.spread(name))}",
             times(results.median(name) / bare)]
            for who in ("BareWithRead", "Helmsway") for name in [f"SaveHeads/{who}/300"]]
    table("Save of a calibration of 300 heads, each read and written: ms, and the spread", ["", "ms", "to bare"], rows)


def print_guarantees(guarantees):
    rows = []
    for row in guarantees:
        kinds = row["kinds"]
        cells = [row["name"], f"{kinds - len(row['misread'])} of {kinds}"]
        if row["writes"]:
            cells += [f"{kinds - len(row['changed'])} of {kinds}", row["flushes"],
                      f"{row['torn']:,} of {row['reads']:,}", f"{row['missing']:,}", f"{row['saves']:,}"]
        else:
            cells += ["can't write", "", "", "", ""]
        rows.append(cells)
    table("What a save is worth", ["", "kinds of file read right", "kept but for the value", "flushes in a save",
                                   "torn reads of another program", "reads that found no file", "saves meanwhile"], rows)


def print_whole(results, processes):
    rows = []
    for group, items in (("FillLists", "the example's catalogues"), ("FillLargeLists", "1,000 items")):
        stat, alone, whole = (results.median(f"{group}/{name}") for name in ("StatAlone", "AddInAlone", "Helmsway"))
        counts = results.benchmarks[f"{group}/AddInAlone"]
        rows += [
            [f"FillSelectionLists, {items}: {counts['reads']:,.0f} reads, {counts['splits']:,.0f} splits",
             number(whole / 1e3)],
            ["  of it the add-in's own work", number(alone / 1e3)],
            ["  of it as many bare stat calls", number(stat / 1e3)],
        ]
    rows += [[name.removeprefix("Replay/") + ", within the process", number(row["median"] / 1e3)]
             for name, row in results.benchmarks.items() if name.startswith("Replay/")]
    table("What the operator waits for: µs", ["", "µs"], rows)
    table("Processes: from start to end", ["", "ms", "processor ms", "peak MiB"],
          [[name, *(number(row[key]) for key in ("wall ms", "cpu ms", "peak MiB"))] for name, row in processes.items()])


def goals(results):
    """Rows of what is wanted: what, the quotient of which two benchmarks, its factor, and the limit."""
    last = SIZES[-1]
    walk = f"Walk/Helmsway/{last}"
    best = min((f"Walk/{peer}/{last}" for peer in PEERS), key=results.median)
    parse = min((f"ParsePerRead/{who}/{last}" for who in ["Helmsway", *PEERS]), key=results.median)
    return [
        ("walk at 10,000, to stat and hash look-up", walk, f"Walk/Floor/{last}", 1, "at most", 1.3),
        ("walk at 10,000, the fastest peer to it", best, walk, 1, "at least", 1),
        ("walk at 10,000, the fastest parse per read to it", parse, walk, last, "at least", 100),
        ("a read at 10,000, to one at 100", walk, "Walk/Helmsway/100", 100 / last, "at most", 1.5),
        *((f"save at {size:,}, to the bare sequence", f"Save/Helmsway/{size}", f"Save/Bare/{size}", 1, "at most", 1.2)
          for size in SIZES),
        ("save of 300 heads, to as many bare saves", "SaveHeads/Helmsway/300", "SaveHeads/BareWithRead/300", 1,
         "at most", 1.5),
    ]


def print_goals(results):
    """Also gives whether all of them are kept."""
    rows = []
    all_kept = True
    for what, dividend, divisor, factor, word, limit in goals(results):
        value = results.median(dividend) / results.median(divisor) * factor
        spread = results.spread(dividend, divisor)
        kept = value <= limit if word == "at most" else value >= limit
        all_kept = all_kept and kept
        doubtful = abs(limit - value) <= value * spread
        rows.append([what, times(value), percent(spread), f"{word} {limit}x",
                     ("kept" if kept else "MISSED") + (", within the spread" if doubtful else "")])
    table("Goals", ["", "is", "spread", "wanted", ""], rows)
    return all_kept


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--no-fail", action="store_true")
    options = parser.parse_args()
    build = options.build.resolve()
    about = machine(build)
    with tempfile.TemporaryDirectory(dir=build, prefix="work-") as folder:
        work = Path(folder)
        benchmarks = run_benchmarks(build, work, options.quick)
        processes = run_processes(build, work, options.quick)
        guarantees = run_guarantees(build, work, options.quick)
    about["load after"] = round(os.getloadavg()[0], 1)
    (build / "results.json").write_text(json.dumps(
        {"machine": about, "quick": options.quick, "benchmarks": benchmarks, "processes": processes,
         "guarantees": guarantees}, indent=1))

    results = Results(benchmarks)
    for name, value in about.items():
        print(f"{name}: {value}")
    print_walk(results)
    print_damage(results)
    print_saves(results)
    print_guarantees(guarantees)
    print_whole(results, processes)
    missed = not print_goals(results)
    sys.exit(1 if missed and not options.no_fail else 0)


if __name__ == "__main__":
    main()
