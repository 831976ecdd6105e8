#!/usr/bin/env python3
"""targets.py CSV: holds what measure.py has written against the project's own limits, as a Markdown table.

Ratios are of medians of one run. Exit status 1 when a limit is broken.
"""

import csv
import sys

# Ours against another loader of the same mounts: name and limit.
PEER_LIMITS = [("rapidjson", 1.0), ("simdjson-ondemand", 1.0), ("flex-bison", 0.65), ("libmount", 0.5),
               ("libyaml", 0.35), ("nlohmann", 0.35), ("yaml-cpp", 0.03), ("floor-map", 1.4), ("ours-plain", 1 / 15)]
WISHES = {"simdjson-ondemand"}  # good to reach, no defect to miss

SINGLE = "check --jobs 1, fleet"
PARSE, OUTPUT = "check, 1,000,000 mounts", "show --json, 1,000,000 mounts"


class Medians:
    def __init__(self, name):
        with open(name, newline="", encoding="utf-8") as file:
            self.values = {(r["suite"], r["case"], r["loader"], int(r["entries"]), r["metric"]): float(r["median"])
                           for r in csv.DictReader(file)}
        self.rows = []
        self.broken = False

    def limit(self, text, limit, measured, at_least=False, wish=False):
        """A row; measured is a function, so that what this CSV has not measured is left out."""
        try:
            value = measured()
        except KeyError:
            return
        met = value >= limit if at_least else value <= limit
        self.broken |= not met and not wish
        self.rows.append((text, f"{'≥' if at_least else '≤'} {limit:.3g}", f"{value:.3g}",
                          "yes" if met else "no (a wish)" if wish else "**no**"))

    def peers(self):
        for size in (100_000, 1_000_000):
            for peer, limit in PEER_LIMITS:
                key = lambda loader: ("peers", "plain", loader, size, "cpu_ns_per_entry")
                self.limit(f"{size:,} mounts: ours ÷ {peer}", limit,
                           lambda: self.values[key("ours")] / self.values[key(peer)], wish=peer in WISHES)

    def small_files(self):
        for size, limit in ((10, 2), (1_000, 1.3)):
            key = lambda loader: ("warm", "plain", loader, size, "cpu_us_per_file")
            self.limit(f"{size:,} mounts, warm: ours ÷ rapidjson", limit,
                       lambda: self.values[key("ours")] / self.values[key("rapidjson")])
        key = lambda loader, threads, clock: ("fleet", f"{threads} threads", loader, 2_000, f"{clock}_us_per_file")
        self.limit("2,000 files of 40, one thread: ours ÷ flex-bison", 0.8,
                   lambda: self.values[key("ours", 1, "cpu")] / self.values[key("flex-bison", 1, "cpu")])
        self.limit("the same on two threads: times faster than on one", 1.7,
                   lambda: self.values[key("ours", 1, "wall")] / self.values[key("ours", 2, "wall")], at_least=True)

    def processes(self):
        key = lambda case, metric="cpu_us", suite="process": (suite, case, "ours", 1, metric)
        for other, limit in (("empty program", 1.5), ("visudo -c", 1.0)):
            self.limit(f"process with a tiny file: mountprofile check ÷ {other}", limit,
                       lambda: self.values[key("mountprofile check")] / self.values[key(other)])
        self.limit("check --jobs 2 on the 2,000 files: times faster than --jobs 1", 1.7,
                   lambda: self.values[key(SINGLE, "wall_us", "command")] /
                   self.values[key("check --jobs 2, fleet", "wall_us", "command")], at_least=True)
        self.limit("1,000,000 mounts: JSON output alone ÷ parse", 1.0,
                   lambda: self.values[key(OUTPUT, suite="command")] / self.values[key(PARSE, suite="command")] - 1)

    def memory(self):
        for size in (100_000, 1_000_000):
            key = lambda metric: ("memory", "plain", "ours", size, metric)
            self.limit(f"{size:,} mounts: bytes a stored mount", 250,
                       lambda: self.values[key("store_bytes_per_entry")])
            self.limit(f"{size:,} mounts: KiB beyond file and store at the peak", 64,
                       lambda: self.values[key("kib_beyond_file_and_store")])

    def table(self):
        self.rows = []
        self.peers()
        self.small_files()
        self.processes()
        self.memory()
        header = "| limit | at | measured | met |\n| --- | ---: | ---: | --- |\n"
        return header + "\n".join("| " + " | ".join(row) + " |" for row in self.rows)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    medians = Medians(sys.argv[1])
    print(medians.table())
    return int(medians.broken)


if __name__ == "__main__":
    sys.exit(main())
