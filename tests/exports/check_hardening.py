#!/usr/bin/env python3
"""check_hardening.py LIBRARY PROGRAM...: whether they are built so that an error in them is hard to misuse.

Stack frames are guarded; library calls with a known buffer are checked; addresses of functions are read-only once the
program runs; nothing is both writable and executable; a program can be loaded anywhere.
"""
import re
import subprocess
import sys


def readelf(*arguments):
    return subprocess.run(["readelf", "-W", *arguments], check=True, capture_output=True, text=True).stdout


def faults_of(path, is_program):
    segments, dynamic, symbols = readelf("-l", path), readelf("-d", path), readelf("--dyn-syms", path)
    flags = dict(re.findall(r"^ +(GNU_STACK|GNU_RELRO) .* ([RWE ]{3}) 0x\w+$", segments, re.M))
    if not re.search(r"\((FLAGS|FLAGS_1)\) .*\b(BIND_NOW|NOW)\b", dynamic):
        yield "functions are bound while it runs, not when it is loaded (-z now)"
    if "GNU_RELRO" not in flags:
        yield "tables of addresses stay writable (-z relro)"
    if "E" in flags.get("GNU_STACK", "E"):
        yield "the stack is executable"
    if re.search(r"^ +LOAD .* RWE 0x\w+$", segments, re.M):
        yield "memory that is writable and executable"
    if "(TEXTREL)" in dynamic:
        yield "code that is written to when it is loaded"
    if "__stack_chk_fail" not in symbols:
        yield "stack frames are not guarded (-fstack-protector-strong)"
    if not re.search(r"\b__\w+_chk\b", symbols):
        yield "library calls are not checked (-D_FORTIFY_SOURCE=2)"
    if is_program and not re.search(r"\(FLAGS_1\) .*\bPIE\b", dynamic):
        yield "it is loaded at a fixed address (-pie)"


def main(library, *programs):
    faults = [f"{library}: {fault}" for fault in faults_of(library, False)]
    faults += [f"{program}: {fault}" for program in programs for fault in faults_of(program, True)]
    print("\n".join(faults) or "hardened")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
