"""Puts what was measured into docs/performance.md, between its marks:

<!-- measured: SUITE --> … <!-- end -->
"""

import datetime
import os
import pathlib
import platform
import re
import shlex
import subprocess
import sys


def machine():
    """The processor, the system and the compiler, in one line."""
    info = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8")
    model = re.search(r"model name\s*:\s*(.*)", info)
    compiler = subprocess.run(["c++", "--version"], check=True, stdout=subprocess.PIPE, text=True).stdout.split("\n")[0]
    return (f"{model.group(1) if model else platform.machine()}, {os.cpu_count()} processors, "
            f"Linux {platform.release().split('-')[0]}, {compiler}")


def command():
    """How to measure the same again."""
    words = [word for word in sys.argv[1:]]
    kept = []
    while words:
        word = words.pop(0)
        if word in ("--bin", "--csv", "--page"):
            words.pop(0)
        else:
            kept.append(word)
    options = next((i for i, word in enumerate(kept) if word.startswith("-")), len(kept))
    suites, options = kept[:options], kept[options:]
    return "./dev bench " + shlex.join(suites + (["--", *options] if options else []))


def block(tables):
    today = datetime.date.today().isoformat()
    load = os.getloadavg()[0]
    # One measurement at a time, on two threads at most, makes no higher one.
    busy = f" The machine was busy with other work: load average {load:.0f}." if load > 3 else ""
    return f"Measured {today} with `{command()}` on {machine()}.{busy}\n\n" + "\n\n".join(tables)


def replaced(page, suite, text):
    pattern = re.compile(rf"(<!-- measured: {re.escape(suite)} -->\n).*?(<!-- end -->)", re.DOTALL)
    if not pattern.search(page):
        sys.exit(f"the page has no marks for {suite}")
    return pattern.sub(lambda match: f"{match[1]}\n{text}\n\n{match[2]}", page)


def write(name, tables_of_suites, limits):
    """@param limits the table of limits, over all suites."""
    file = pathlib.Path(name)
    page = file.read_text(encoding="utf-8")
    for suite, tables in tables_of_suites.items():
        page = replaced(page, suite, block(tables))
    file.write_text(replaced(page, "limits", limits), encoding="utf-8")
