#!/usr/bin/env python3
"""Measures the library against other loaders of the same mounts, and how its time grows.

Every measurement is a fresh process, rounds are interleaved in shuffled order, and what counts is the median.

Suites:
  peers    one file of mounts through every loader: time, memory and ratios
  memory   what the store keeps of a mount, and what a run needs on top of file and store
  warm     10 and 1,000 mounts again and again in one process
  fleet    2,000 files of 40 mounts, on one thread and on two
  growth   the time an entry at ten times the size: mounts, groups, filters, aliases, sub-agents, flags
  process  a whole process with a tiny file, next to an empty program and to `visudo -c`
  command  `check --jobs` 1 and 2; JSON output of many mounts next to their parse
  all      all of them
"""

import argparse
import csv
import datetime
import json
import os
import pathlib
import random
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True  # the next ones are in the source tree

import page
import plot
import targets

OWN = "ours"
# The plain path: the same library with its fast path switched off.
PLAIN = "ours-plain"
# Loaders that take seconds for a million mounts.
SLOW = {PLAIN, "yaml-cpp", "tomlplusplus"}
SLOW_ROUNDS = 3


class Bench:
    """Where the programs and the generated files are, and what has been measured so far."""

    def __init__(self, options, directory):
        self.bin = pathlib.Path(options.bin)
        self.options = options
        self.directory = pathlib.Path(directory)
        self.rows = []
        self.texts = []
        self.random = random.Random(options.seed)
        listed = self.output([self.bin / "load", "--list"]).split("\n")
        self.formats = dict(line.split() for line in listed if line)
        if options.loaders:
            self.formats = {name: self.formats[name] for name in options.loaders}

    @staticmethod
    def output(command):
        return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout

    def load(self, loader, files, *arguments, counted=False):
        program = self.bin / ("load-counted" if counted else "load")
        return json.loads(self.output([program, *arguments, loader, *files]))

    def file(self, kind, count, extension="profile"):
        name = self.directory / f"{kind}-{count}.{extension}"
        if not name.exists():
            self.output([self.bin / "generate", kind, str(count), self.directory, "--format", extension,
                         "--seed", str(self.options.seed)])
        return name

    def fleet(self, extension="profile"):
        directory = self.directory / f"fleet-{extension}"
        if not directory.exists():
            directory.mkdir()
            self.output([self.bin / "generate", "fleet", str(self.options.fleet), directory, "--mounts", "40",
                         "--format", extension, "--seed", str(self.options.seed)])
        return sorted(directory.iterdir())

    def interleaved(self, cases, rounds_of=lambda case: None):
        """Runs cases (name: function) in rounds, shuffled anew in each. Returns the results of each case."""
        results = {name: [] for name in cases}
        for round_number in range(self.options.rounds):
            names = [n for n in cases if round_number < (rounds_of(n) or self.options.rounds)]
            self.random.shuffle(names)
            for name in names:
                results[name].append(cases[name]())
        return results

    def record(self, suite, case, loader, size, metric, values):
        value = statistics.median(values)
        self.rows.append([suite, case, loader, size, metric, f"{value:.6g}", f"{min(values):.6g}",
                          f"{max(values):.6g}", len(values)])
        return value

    def table(self, title, header, rows):
        """A Markdown table, to be read as text, too."""
        cells = [header] + [[c if isinstance(c, str) else f"{c:,.0f}" if abs(c) >= 100 else f"{c:.2f}" for c in row]
                            for row in rows]
        widths = [max(len(row[i]) for row in cells) for i in range(len(header))]
        cells.insert(1, ["-" * w if i == 0 else "-" * (w - 1) + ":" for i, w in enumerate(widths)])
        lines = ["| " + " | ".join(text.ljust(w) if i == 0 else text.rjust(w)
                                   for i, (text, w) in enumerate(zip(row, widths))) + " |" for row in cells]
        self.say("\n".join([f"{title}:", "", *lines]))

    def say(self, text):
        self.texts.append(text)
        print(f"\n{text}", flush=True)


def same_mounts(results):
    """Loaders that disagree about what they loaded must not be compared."""
    digests = {result["digest"] for runs in results.values() for result in runs}
    if len(digests) != 1:
        sys.exit(f"the loaders disagree: {({n: r[0]['digest'] for n, r in results.items()})}")


def peers(bench):
    for size in bench.options.sizes:
        for kind in ("plain", "shuffled"):
            files = {name: bench.file(kind, size, extension) for name, extension in bench.formats.items()}
            results = bench.interleaved(
                {name: lambda n=name: bench.load(n, [files[n]]) for name in files},
                lambda name: SLOW_ROUNDS if name in SLOW and size > 100_000 else None)
            same_mounts(results)
            nanoseconds = {}
            rows = []
            for name, runs in results.items():
                record = lambda metric, values: bench.record("peers", kind, name, size, metric, values)
                nanoseconds[name] = record("cpu_ns_per_entry", [r["cpu_ns"] / size for r in runs])
                resident = record("resident_bytes_per_entry", [r["resident_kib"] * 1024 / size for r in runs])
                allocated = record("allocated_peak_bytes_per_entry",
                                   [bench.load(name, [files[name]], counted=True)["peak_bytes"] / size])
                rows.append([name, nanoseconds[name], resident, allocated])
            if OWN in nanoseconds:
                for row in rows:
                    row.append(nanoseconds[OWN] / row[1])
            bench.table(f"{size:,} mounts, {'in the order of paths' if kind == 'plain' else 'shuffled'}: an entry",
                  ["loader", "ns", "resident bytes", "allocated bytes"] + ["ours / it"] * (OWN in nanoseconds), rows)


def memory(bench):
    rows = []
    for kind, size in (("plain", 10), ("plain", 1_000), *(("plain", size) for size in bench.options.sizes),
                       *(("shuffled", size) for size in bench.options.sizes)):
        file = bench.file(kind, size)
        counted = bench.load(OWN, [file], counted=True)
        record = lambda metric, value: bench.record("memory", kind, OWN, size, metric, [value])
        kept = record("store_bytes_per_entry", counted["kept_bytes"] / size)
        more = record("kib_beyond_file_and_store",
                      (counted["peak_bytes"] - counted["kept_bytes"] - file.stat().st_size) / 1024)
        rows.append([kind, f"{size:,}", kept, more, counted["allocations"] / size])
    bench.table("Allocated memory", ["kind", "mounts", "bytes a mount in the store", "KiB beyond file and store at the peak",
                               "allocations a mount"], rows)


def warm(bench):
    for size in (10, 1000):
        repeat = str(20_000 // size + 200)
        results = bench.interleaved({
            name: lambda n=name: bench.load(n, [bench.file("plain", size, bench.formats[n])], "--repeat", repeat)
            for name in bench.formats})
        same_mounts(results)
        times = {name: bench.record("warm", "plain", name, size, "cpu_us_per_file", [r["cpu_ns"] / 1000 for r in runs])
                 for name, runs in results.items()}
        bench.table(f"{size:,} mounts, warm: a file", ["loader", "µs", "ours / it"],
              [[name, value, times[OWN] / value] for name, value in times.items()])


def fleet(bench):
    count = bench.options.fleet
    cases = {(name, threads): lambda n=name, t=threads: bench.load(n, bench.fleet(bench.formats[n]), "--threads", str(t))
             for name in bench.formats for threads in ((1, 2) if name in (OWN, "flex-bison") else (1,))}
    results = bench.interleaved(cases)
    same_mounts(results)
    rows = []
    single = {}
    for (name, threads), runs in results.items():
        record = lambda metric, key: bench.record("fleet", f"{threads} threads", name, count, metric,
                                                  [r[key] / count / 1000 for r in runs])
        cpu, wall = record("cpu_us_per_file", "cpu_ns"), record("wall_us_per_file", "wall_ns")
        single.setdefault(name, wall)
        rows.append([name, str(threads), cpu, wall, single[OWN] / wall if threads == 1 else single[name] / wall])
    bench.table(f"{count:,} files of 40 mounts: a file",
          ["loader", "threads", "CPU µs", "wall µs", "ours / it; times faster"], rows)


def growth(bench):
    sizes = {"plain": 1_000_000, "shuffled": 1_000_000, "groups": 100_000, "filters": 100_000, "aliases": 100_000,
             "sub-agents": 100_000, "merged-flags": 1_000_000}
    rows = []
    for kind, largest in sizes.items():
        counts = [n for n in (1_000, 10_000, 100_000, 1_000_000) if n <= largest]
        # The growth of any ordered map, next to ours.
        names = [OWN, "floor-map"] if kind in ("plain", "shuffled") else [OWN]
        results = bench.interleaved({(name, n): lambda a=name, n=n: bench.load(a, [bench.file(kind, n)])
                                     for name in names for n in counts})
        previous = {}
        for (name, n), runs in results.items():
            value = bench.record("growth", kind, name, n, "cpu_ns_per_entry", [r["cpu_ns"] / n for r in runs])
            rows.append([kind, name, f"{n:,}", value, value / previous[name] if name in previous else "-"])
            previous[name] = value
    bench.table("Growth: time an entry, and its ratio to that at a tenth of the size", ["kind", "loader", "entries", "ns", "ratio"],
          rows)


def spawned(command):
    """CPU and wall microseconds of a whole process, start and end included."""
    started = time.perf_counter()
    pid = os.posix_spawn(command[0], command, os.environ, file_actions=[
        (os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)])
    _, status, usage = os.wait4(pid, 0)
    if status != 0:
        sys.exit(f"{' '.join(command)}: wait status {status}")
    return (usage.ru_utime + usage.ru_stime) * 1e6, (time.perf_counter() - started) * 1e6


def spawn_rows(bench, suite, commands, base):
    """Interleaved whole processes; rows of name, CPU, wall and ratios to the base's."""
    results = bench.interleaved({name: lambda c=command: spawned([str(w) for w in c])
                                 for name, command in commands.items()})
    values = {}
    for name, runs in results.items():
        values[name] = [bench.record(suite, name, OWN, 1, metric, [run[i] for run in runs])
                        for i, metric in enumerate(("cpu_us", "wall_us"))]
    return [[name, *pair, pair[0] / values[base][0], pair[1] / values[base][1]] for name, pair in values.items()]


def process(bench):
    rounds = bench.options.rounds
    bench.options.rounds = max(rounds, 200)
    sudoers = bench.directory / "sudoers"
    sudoers.write_text("root ALL=(ALL:ALL) ALL\n")
    sudoers.chmod(0o440)
    commands = {"empty program": [bench.bin / "empty"],
                "mountprofile check": [bench.bin / "mountprofile", "check", bench.file("plain", 1)]}
    visudo = next((p for p in ("/usr/sbin/visudo", "/usr/bin/visudo") if os.access(p, os.X_OK)), None)
    if visudo:
        commands["visudo -c"] = [visudo, "-c", "-f", sudoers]
    bench.table("A process with a tiny file", ["process", "CPU µs", "wall µs", "CPU / empty", "wall / empty"],
          spawn_rows(bench, "process", commands, "empty program"))
    bench.options.rounds = rounds


def command(bench):
    program = bench.bin / "mountprofile"
    bench.fleet()
    directory = bench.directory / "fleet-profile"
    rows = spawn_rows(bench, "command", {f"check --jobs {n}, fleet": [program, "check", "--jobs", str(n), directory]
                                         for n in (1, 2)}, "check --jobs 1, fleet")
    big = bench.file("included", 1_000_000)
    rows += spawn_rows(bench, "command", {"check, 1,000,000 mounts": [program, "check", big],
                                          "show --json, 1,000,000 mounts": [program, "show", "--json", big]},
                       "check, 1,000,000 mounts")
    bench.table("The command: whole processes", ["process", "CPU µs", "wall µs", "CPU / first", "wall / first"], rows)
    parse, show = rows[-2][1], rows[-1][1]
    bench.say(f"The JSON output alone, what `show --json` takes on top of `check`: {(show - parse) / parse:.2f} × the "
              "parse.")


SUITES = {"peers": peers, "memory": memory, "warm": warm, "fleet": fleet, "growth": growth, "process": process,
          "command": command}


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("suites", nargs="+", choices=[*SUITES, "all"])
    parser.add_argument("--bin", required=True, help="directory of the benchmark programs")
    parser.add_argument("--rounds", type=int, default=11, help="measurements of each case (default 11)")
    parser.add_argument("--sizes", type=int, nargs="+", default=[100_000, 1_000_000], help="mounts, for `peers`")
    parser.add_argument("--fleet", type=int, default=2_000, help="files of a fleet")
    parser.add_argument("--loaders", nargs="+", help="only these")
    parser.add_argument("--seed", type=int, default=1, help="of the generated files and the order of measurements")
    parser.add_argument("--csv", help="file that receives all medians; rows of other suites in it are kept")
    parser.add_argument("--page", help="Markdown page with marks for the tables; next to it a plot; needs --csv")
    return parser.parse_args()


def write_csv(name, rows, suites):
    header = ["date", "suite", "case", "loader", "entries", "metric", "median", "min", "max", "rounds"]
    kept = []
    if os.path.exists(name):
        with open(name, newline="", encoding="utf-8") as file:
            kept = [row for row in list(csv.reader(file))[1:] if row[1] not in suites]
    today = datetime.date.today().isoformat()
    with open(name, "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerows([header, *sorted(kept), *([today, *row] for row in rows)])


def main():
    options = parse_arguments()
    suites = list(SUITES) if "all" in options.suites else options.suites
    texts = {}
    with tempfile.TemporaryDirectory(prefix="profile-bench-") as directory:
        bench = Bench(options, directory)
        for suite in suites:
            SUITES[suite](bench)
            texts[suite] = bench.texts
            bench.texts = []
    if options.csv:
        write_csv(options.csv, bench.rows, set(suites))
    if options.page:
        page.write(options.page, texts, targets.Medians(options.csv).table())
        plot.draw(options.csv, str(pathlib.Path(options.page).with_suffix(".svg")))


if __name__ == "__main__":
    main()
