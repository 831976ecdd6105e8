#!/usr/bin/env python3
"""Checks that the work and the memory that a file takes grow with its size and not faster: counts the instructions of
the command under valgrind, and measures its memory, for a file and for one with four times as many parts.

usage: growth.py --list
       growth.py COMMAND KIND
"""
import os
import re
import subprocess
import sys
import tempfile

FEW, FACTOR = 600, 4
MANY_FOR_MEMORY = 20     # times FEW: memory comes in large pieces
MEMORY_OF_NOTHING = 4 << 10  # KiB that the command takes to start
TOLERATED = 1.25         # a search among n things takes the logarithm of n longer
TITLE = "agentName: A-%s\n"

KINDS = {
    "mounts": lambda n: "".join(f"/a/{i}, T::T, rw\n" for i in range(n)),
    "mounts-downwards": lambda n: "".join(f"/a/{n - i:07}, T::T, rw\n" for i in range(n)),
    "one-mount-again": lambda n: "/a, T::T, rw\n" * n,
    "mount-groups": lambda n: "".join(f"mountGroup: g{i}, 7\n/a, T, r\n" for i in range(n)),
    "aliases": lambda n: "".join(f"alias: %a{i} = %s\n" for i in range(n)),
    "sub-agents": lambda n: "".join(f"subAgent: S{i}\n" for i in range(n)),
    "root-flags": lambda n: "rootFlags: rwicfCDSBNO\n" * n,
    "mount-filters": lambda n: "".join(f"mountFilter: f{i}\nname, x\n" for i in range(n)),
    "attributes": lambda n: "mountFilter: f\n" + "".join(f"name{i}, x\n" for i in range(n)) + "/a, T, r, f\n",
    "includes": lambda n: "include: inc\n" * n,
    "path-units": lambda n: "/a" * n + ", T, r\n",
    "string-pieces": lambda n: '"ab" ' * n + ", T, r\n",
    "comparisons": lambda n: "mountGroup: g\ncondition: " + " and ".join(["x == /a.b"] * n) + "\n",
    "flags": lambda n: "/a, T, " + "rwicfCDSBNO" * n + "\n",
    "continuations": lambda n: "/a\\\n" * n + ", T, r\n",
    "comments": lambda n: "# note\n\n" * n,
    "bad-characters": lambda n: "{ ! [\n" * n,
    "bad-lines": lambda n: "/a, b, c\n" * n,
    "open-strings": lambda n: '"ab\n' * n,
    "a-bad-word": lambda n: "/a, T, r " + "x" * 20 * n + "\n",
    "a-bad-string": lambda n: '/a, "' + "\x01" * 20 * n + '"\n',
}


def write(kind, parts):
    with open("inc", "w", encoding="latin-1") as file:
        file.write("/inc, T, r\n")
    with open("agent", "w", encoding="latin-1") as file:
        file.write(TITLE + KINDS[kind](parts) if kind != "nothing" else TITLE)


def instructions(command, kind, parts):
    write(kind, parts)
    valgrind = ["valgrind", "--tool=cachegrind", "--cache-sim=no", "--cachegrind-out-file=/dev/null"]
    run = subprocess.run([*valgrind, command, "show", "--json", "agent"], stdout=subprocess.DEVNULL,
                         stderr=subprocess.PIPE, check=False)
    return int(re.search(rb"I +refs: +([0-9,]+)", run.stderr).group(1).replace(b",", b""))


def memory(command, kind, parts):
    """In KiB; not less than what this process has itself, which its children begin with."""
    write(kind, parts)
    child = subprocess.Popen([command, "check", "--jobs", "1", "agent"], stdout=subprocess.DEVNULL,
                             stderr=subprocess.DEVNULL)
    usage = os.wait4(child.pid, 0)[2]
    child.returncode = 0  # waited for
    return usage.ru_maxrss


def grows_faster(measure, nothing, command, kind, few):
    """Says by how much a measure grows; whether that is more than the file."""
    less, more = (measure(command, kind, parts) - nothing for parts in (few, FACTOR * few))
    print(f"{kind}: {measure.__name__} {less} for {few} parts, {more} for {FACTOR * few}")
    return more > TOLERATED * FACTOR * less


def main():
    if sys.argv[1:] == ["--list"]:
        print("\n".join(KINDS))
        return 0
    command, kind = os.path.abspath(sys.argv[1]), sys.argv[2]
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        work = grows_faster(instructions, instructions(command, "nothing", 0), command, kind, FEW)
        space = grows_faster(memory, MEMORY_OF_NOTHING, command, kind, FEW * MANY_FOR_MEMORY)
        os.chdir("/")
    return 1 if work or space else 0


if __name__ == "__main__":
    sys.exit(main())
