#!/usr/bin/env python3
"""check_exports.py LIBRARY SOURCE-DIRECTORY: what the shared library shows to others.

Classes and functions of the library's own and the platform's namespaces, the C interface, and the table of token names; nothing of the
parser library, of the generated lexer and parser, or of templates of the standard library, and no class or function of
our own that its header does not mark. It has an SONAME, and finds
every symbol that it needs in the libraries that it names.
"""
import pathlib
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


def marked_names(source_directory):
    """The classes and functions that headers mark as public."""
    names = set()
    for folder in ("Platform/include", "ProfileStore", "ProfileParser"):
        for header in pathlib.Path(source_directory, folder).rglob("*.h"):
            text = header.read_text(encoding="utf-8")
            names.update(re.findall(r"\b(?:class|struct) (?:CORVID|KIV)_API (\w+)", text))
            names.update(re.findall(r"\b(?:CORVID|KIV)_API [^;(]*?(\w+)\(", text))
    for knob in re.findall(r"KIV_API [^;(]*?(\w+)\(", pathlib.Path(
            source_directory, "Platform/Embedded/EmbeddedPlatform.h").read_text(encoding="utf-8")):
        names.add(knob)
    return names


def name_of(symbol):
    """The outermost class of a symbol, or the function itself."""
    symbol = re.sub(r"^(typeinfo|typeinfo name|vtable) for ", "", symbol)
    return re.match(r"(?:(?:Corvid|Kiv|Embedded|Brae|Cell|Redundancy)::)*(operator<<|\w+)", symbol).group(1)


def main(library, source_directory):
    symbols = [line.split(maxsplit=2)[2] for line in output("nm", "-DC", "--defined-only", library).splitlines()]
    faults = [f"exported: {symbol}" for symbol in symbols if not ALLOWED.match(symbol)]
    faults += [f"not exported: {name}" for name in WANTED if not any(symbol.startswith(name) for symbol in symbols)]
    marked = marked_names(source_directory)
    faults += [f"exported, but not marked in its header: {symbol}" for symbol in symbols
               if "::" in symbol and name_of(symbol) not in marked | {"operator<<"}]
    if not re.search(r"SONAME.*\[libCorvidMountProfileHdlr\.so\.\d+\]", output("readelf", "-d", library)):
        faults.append("no SONAME")
    print("\n".join(faults) or f"{len(symbols)} symbols, all of them meant to be seen")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
