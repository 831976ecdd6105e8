#!/usr/bin/env python3
"""input_filter.py HEADER: the header as the reference reads it.

What follows from a rule that all classes keep needs no text in every one of them: `fooIs( value )` writes what `foo()`
reads, and copies are copies. Such a member gets its text here, unless it has one of its own.
"""
import re
import sys

WRITER = re.compile(r"\s+(?:virtual )?void (?P<name>\w+)Is\(")
COPY = re.compile(r"\s+(?:(?P<name>\w+)\( (?:const )?(?P=name)&&? |\w+& operator=\( |void swap\()")
RULES = [
    (WRITER, "Writes what {0}() reads."),
    (COPY, "Copies, or takes over, what the other one holds."),
]


def text_for(line):
    for pattern, text in RULES:
        found = pattern.match(line)
        if found:
            return text.format(found.groupdict().get("name"))
    return None


def documented(lines):
    before = ""
    for line in lines:
        text = None if before.lstrip().startswith("///") else text_for(line)
        # On the same line, so that the lines of the header keep their numbers.
        yield f"/** {text} */ {line}" if text else line
        before = line


with open(sys.argv[1], encoding="utf-8") as header:
    sys.stdout.writelines(documented(header))
