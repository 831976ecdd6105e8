#!/usr/bin/env python3
"""check_exports.py LIBRARY: what the shared library shows to others.

Classes and functions of the library's own and the platform's namespaces, the C interface, and the table of token names; nothing of the
parser library, of the generated lexer and parser, or of templates of the standard library. It has an SONAME, and finds
every symbol that it needs in the libraries that it names.
"""
import re
import subprocess
import sys

ALLOWED = re.compile(r"((typeinfo|typeinfo name|vtable) for )?(Corvid|Kiv|Brae|Cell|Redundancy)::|mountProfileParserTokenNames$|corvid_mount_profile_[a-z_]+$")
WANTED = [
    "mountProfileParserTokenNames",
    "corvid_mount_profile_parse",
    "corvid_mount_profile_free",
    "Corvid::MountProfileHdlr::run()",
    "Corvid::activeCellId()",
    "Corvid::PassiveAgentProfileDir::agentProfileIs(Kiv::Name)",
    "Corvid::RecognitionError::composeErrorDescMessage() const",
    "Kiv::globalDir()",
    "Brae::getGlobResult(",
    "Cell::path(",
    "vtable for Redundancy::RedundancyStatus",
]


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def main(library):
    symbols = [line.split(maxsplit=2)[2] for line in output("nm", "-DC", "--defined-only", library).splitlines()]
    faults = [f"exported: {symbol}" for symbol in symbols if not ALLOWED.match(symbol)]
    faults += [f"not exported: {name}" for name in WANTED if not any(symbol.startswith(name) for symbol in symbols)]
    if not re.search(r"SONAME.*\[libCorvidMountProfileHdlr\.so\.\d+\]", output("readelf", "-d", library)):
        faults.append("no SONAME")
    print("\n".join(faults) or f"{len(symbols)} symbols, all of them meant to be seen")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
