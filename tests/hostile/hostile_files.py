#!/usr/bin/env python3
"""Runs the command over files that are made to hurt: each time in a process with limits of its own.

usage: hostile_files.py --list
       hostile_files.py COMMAND CASE [--slowdown N] [--no-memory-limit]

A case is a function of hostile_cases.py, hostile_includes.py or hostile_terminal.py. In each run the command must end by
itself, with one of the expected exit statuses, within the limits of time and memory, and must not write more than it may; a
terminal must be safe from what it writes. `--slowdown` scales the limit of time, for builds with sanitizers.
"""
import argparse
import codecs
import os
import re
import resource
import signal
import subprocess
import sys
import tempfile
import time

import hostile_includes  # pylint: disable=unused-import # adds its cases to those of the other file
import hostile_terminal  # pylint: disable=unused-import # so does this
from hostile_cases import MIB, VALID, cases

SECONDS = 0.1            # of processor time, for an input of less than 1 MiB,
SECONDS_PER_MIB = 0.3    # or of more, which no longer fits into a processor's caches,
LISTED = 8 * MIB         # or for this much output: one byte can make 20 in a list of tokens
WAITING = 10             # seconds until a process that takes no processor time is ended
MEMORY = 64 * MIB        # resident, for an input of less than 1 MiB; in proportion above that
MOST_DIAGNOSTICS = 64 << 10
TRIES = 10               # other work on the machine can slow a run down, but never speed it up;
PAUSE = 0.3              # such work comes and goes, so the tries are some seconds apart
STEPS = 1000000
MOST_SLOWNESS = 4


class Output:
    """What was written to a file: not read whole, because memory that this process has used counts for its children."""

    # Those of one byte and of two, and characters that hide or reorder their neighbours or end a line.
    CONTROLS = re.compile("[\0-\x09\x0b-\x1f\x7f-\x9f\u200b-\u200f\u2028-\u202e\u2060-\u206f\ufeff]")

    def __init__(self, file):
        self.size, self.controls, self.beginning = os.fstat(file.fileno()).st_size, False, b""
        decoder = codecs.getincrementaldecoder("utf-8")()
        file.seek(0)
        try:
            while chunk := file.read(1 << 16):
                self.beginning = self.beginning or chunk[:300]
                self.controls |= bool(self.CONTROLS.search(decoder.decode(chunk)))
            decoder.decode(b"", True)
        except UnicodeDecodeError:  # a terminal with another character set may read a control
            self.controls = True


class Result:
    def __init__(self, status, usage, out, err):
        self.status = os.waitstatus_to_exitcode(status)
        self.seconds = usage.ru_utime + usage.ru_stime
        self.memory = usage.ru_maxrss << 10
        self.out, self.err = Output(out), Output(err)


def call(command, run, seconds):
    """Runs the command once; the system ends it when it takes or waits much longer than it may."""
    arguments = [command, *run.arguments]
    if run.without_rights and os.geteuid() == 0:
        arguments = ["setpriv", "--bounding-set", "-dac_override,-dac_read_search", *arguments]

    def limit():
        resource.setrlimit(resource.RLIMIT_CPU, (int(10 * seconds) + 1,) * 2)
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        signal.alarm(int(WAITING * max(1, 10 * seconds)))  # goes on in the program that takes this one's place

    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        child = subprocess.Popen(arguments, stdin=subprocess.DEVNULL, stdout=out, stderr=err, preexec_fn=limit,
                                 env={**os.environ, **run.environment})
        _, status, usage = os.wait4(child.pid, 0)
        child.returncode = 0  # waited for
        return Result(status, usage, out, err)


def problems(run, result, seconds, memory):
    expected = run.status if isinstance(run.status, list) else [run.status]
    if result.status not in expected:
        yield f"exit status {result.status}, expected {expected}: {result.err.beginning!r}"
    if result.seconds > seconds:
        yield f"{result.seconds:.3f} s of processor time, allowed are {seconds:.3f}"
    if memory and result.memory > memory:
        yield f"{result.memory / MIB:.0f} MiB of memory, allowed are {memory / MIB:.0f}"
    # What `show` and `tokens` print of a file is what they were asked for, right to the error.
    output = result.err.size + (result.out.size if run.arguments[0] == "check" else 0)
    if result.status != VALID and output > MOST_DIAGNOSTICS * run.files:
        yield f"{output} bytes of diagnostics, allowed are {MOST_DIAGNOSTICS * run.files}"
    for text in result.out, result.err:
        if text.controls:
            yield f"controls a terminal: {text.beginning!r}"


def slowness():
    """How much longer things take here and now than where the limits hold: there, counting takes 25 ns a step. Processor
    time, too, grows when others compete for caches and for the other half of a core."""
    start = time.process_time()
    for _ in range(STEPS):
        pass
    return min(MOST_SLOWNESS, max(1, (time.process_time() - start) / (STEPS * 25e-9)))


def verdict(command, run, options):
    """Why a run fails, in lines; none when it does not."""
    size = run.size / MIB
    memory = None if options.no_memory_limit else MEMORY * max(1, size)
    reading = SECONDS if size < 1 else SECONDS_PER_MIB * size
    slowest = 1  # of all moments: so a run is not failed by a slow one that `slowness` came too late to see
    for attempt in range(TRIES if memory else 1):
        time.sleep(PAUSE * attempt)
        result = call(command, run, reading * options.slowdown)
        seconds = max(reading, SECONDS * result.out.size / LISTED) * options.slowdown
        if result.seconds > seconds:
            slowest = max(slowest, slowness())
            seconds *= slowest
        if options.verbose:
            print(f"{result.seconds:6.3f} of {seconds:6.3f} s {result.memory / MIB:6.1f} MiB {result.out.size:9} + "
                  f"{result.err.size:7} bytes, size {run.size:8}: {run.arguments}")
        found = list(problems(run, result, seconds, memory))
        if result.seconds <= seconds:
            break
    return [f"{' '.join(map(os.fsdecode, run.arguments))!r}: {line}" for line in found]


def is_run(run, options):
    """Slow builds read large files once, by the command that only reads."""
    return options.slowdown == 1 or run.size < MIB // 4 or run.arguments[0] == "check"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("command", nargs="?")
    parser.add_argument("case", nargs="?", choices=cases)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--slowdown", type=float, default=1)
    parser.add_argument("--no-memory-limit", action="store_true")
    parser.add_argument("--verbose", action="store_true")
    options = parser.parse_args()
    if options.list:
        print("\n".join(cases))
        return 0
    with tempfile.TemporaryDirectory() as folder:
        options.command = os.path.abspath(options.command)
        os.chdir(folder)
        failures = [line for run in cases[options.case]() if is_run(run, options)
                    for line in verdict(options.command, run, options)]
        os.chdir("/")
    print(*failures, sep="\n")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
