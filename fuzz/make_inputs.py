#!/usr/bin/env python3
"""Makes what the fuzz targets start from: a dictionary, and seeds for each of them from the conformance cases.

usage: make_inputs.py SOURCE_ROOT TOKEN_TABLE OUTPUT

TOKEN_TABLE is the list NAME=TYPE that the parser generator writes. OUTPUT/dictionary holds an entry for each token in it;
a token that this script knows no text for is an error. OUTPUT/TARGET/ holds the seeds.
"""
import glob
import os
import re
import shutil
import sys

SEPARATOR = b"\xfe"  # parts the texts of one input, as in Laws.h
LEAST_SEEDS = 100

# Files with a piece between, which is to be repeated within one line.
REPEATED = [
    ("agentName: A", "-x", "\n"),
    ("agentName: A-%a", "-%b", "$\n"),
    ("agentName: A-%c\nalias: %a = %c", ", %c", ", %d\n"),
    ("agentName: A\nrootFlags: ", "r w ", "\n"),
    ("agentName: A-%b\n/a", "/%b", ", T, r\n"),
    ("agentName: A\n/a", "/b", ", T, x\n"),
    ("agentName: A\n/a", "/b", " T, r\n"),
    ("agentName: A\n", '"/"', ", T, r\n"),
    ("agentName: A\n/a, T", "::U", ", r\n/b, T, r\n"),
    ("agentName: A\nmountFilter: f\n  a, ", '"b"', "\n/a, T, r, f\n"),
    ("agentName: A\nmountGroup: g\ncondition: 1 == /a", "/b", ".c\n/a, T, r\n"),
    ("agentName: A-%a\nmountGroup: g\ncondition: 1 == /a.b", " and %a == %a", " and x\n"),
    ("agentName: A\n/a", "\\\n/b", ", T, r\n"),
    ("agentName: A\n/a", "/b", " ~\n/a, T, r\n"),
    ("agentName: A\ninclude: x", "?", "\n"),
]

# Texts of the tokens that are not spelled in one way, and of what never becomes a token.
SAMPLES = {
    "NEWLN": ["\n", "\r", "\r\n"],
    "OP": ["==", "!=", "<=", ">=", "<", ">", "in", "notin"],
    "UIDENT": ["Fan", "X_1", "T"],
    "LIDENT": ["fan", "x_1", "all", "default", "len", "r", "rw", "wfc"],
    "INT": ["0", "1", "99", "100", "4294967297"],
    "HEX": ["0x1F", "0X0"],
    "FLOAT": ["1.5", "0.0"],
    "STRING": ['"a b"', '""'],
    "WS": [" ", "\t"],
    "LINE_COMMENT": ["# x\n", "#"],
    "LINECONT": ["\\\n", "\\"],
}
# Whole lines bring a target further than single tokens.
LINES = ["agentName: A\n", "\n/a, T, r\n", "mountGroup: g, 7\n", "condition: 1 == /a.b\n", "include: x*\n",
         "mountFilter: f\n", "alias: %a = %slot\n", "subAgent: S\n", "rootFlags: rw\n", "%sysname", "len( /a.b )",
         " and ", "ConfigMountProfile", "\\\n"]


def content(path):
    with open(path, "rb") as file:
        return file.read()


def token_texts(grammar, name):
    """The texts that a token may have, as far as they are known: by literal, by its letters, or from the samples."""
    literal = re.search(rf"^ +{name} += '([^']+)';", grammar, re.M)
    if literal:
        return [literal.group(1)]
    letters = re.search(rf"^{name} +: ((?:[A-Z] )+);", grammar, re.M)
    if letters:
        word = letters.group(1).replace(" ", "")
        return [word.lower(), word]
    if re.search(rf"^fragment {name} ", grammar, re.M):
        return []
    return SAMPLES[name]


def dictionary(source, table):
    grammar = content(os.path.join(source, "ProfileParserAntlr/mountProfile.g")).decode()
    names = [line.split("=")[0] for line in content(table).decode().splitlines() if line[0] != "'"]
    try:
        texts = [text for name in names for text in token_texts(grammar, name)] + LINES
    except KeyError as unknown:
        sys.exit(f"make_inputs.py: no text is known for the token {unknown}: add one to SAMPLES")
    escaped = ("".join(c if c.isalnum() else f"\\x{ord(c):02X}" for c in text) for text in texts)
    return "".join(f'"{text}"\n' for text in dict.fromkeys(escaped)).encode()


def cases(source):
    """For each conformance case: the agent file, the files beside it by name, and the lines of args and env."""
    for agent in sorted(glob.glob(os.path.join(source, "conformance/*/*/agent"))):
        folder = os.path.dirname(agent)
        files = {name: content(os.path.join(folder, name)) for name in sorted(os.listdir(folder))
                 if os.path.isfile(os.path.join(folder, name)) and not name.startswith(("expected.", "agent"))}
        options = [files.pop(name, b"") for name in ("args", "env")]
        yield content(agent), files, b"".join(options)


def agent_files(source):
    return [agent for agent, _, _ in cases(source)]


def single_files(source):
    return [text for agent, files, _ in cases(source) for text in (agent, *files.values())]


def fast_paths(source):
    return single_files(source) + [SEPARATOR.join(part.encode() for part in parts) for parts in REPEATED]


def several_files(source):
    return [SEPARATOR.join([agent] + [name.encode() + b"\n" + text for name, text in files.items()])
            for agent, files, _ in cases(source)]


def conditions(source):
    """Conditions whole, and the comparisons that they consist of."""
    whole = [found.group(1) for text in single_files(source)
             for found in re.finditer(rb"^condition(?:Blocker)?:[ \t]*([^\n]*\n?)", text, re.M | re.I)]
    single = [comparison for condition in whole for comparison in condition.split(b" and ")]
    operators = [b" == ", b" != ", b" <= ", b" >= ", b" < ", b" > ", b" in ", b" notin "]
    return whole + single + [re.sub(rb" (==|in) ", operator, condition) for condition in whole
                             for operator in operators]


def stages(source):
    """Arguments and environment, the configured paths and the agent file; each file with an entity manager, too."""
    texts = []
    for agent, files, options in cases(source):
        paths = next((text for name, text in files.items() if name.encode() in options.split(b"\n")), b"")
        texts.append(SEPARATOR.join([options, paths, agent]))
        texts.append(SEPARATOR.join([b"--system\nsys\n--config-root\npaths\n--redundancy\nK7_CHROOT=/\n",
                                     b"a/b T::T i\na/c T\n\n", agent]))
    return texts


def documents(source):
    """Agent files, and their lines as the texts of a record."""
    agents = agent_files(source)
    return agents + [b"\0" + agent.replace(b"\n", SEPARATOR) for agent in agents]


SEEDS = {
    "lexer": single_files,
    "fast-path": fast_paths,
    "agent-file": agent_files,
    "include-files": several_files,
    "condition": conditions,
    "stage": stages,
    "document": documents,
}


def write_seeds(folder, texts):
    texts = sorted(set(texts))
    if len(texts) < LEAST_SEEDS:
        sys.exit(f"make_inputs.py: only {len(texts)} seeds for {folder}")
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    for number, text in enumerate(texts):
        with open(os.path.join(folder, f"{number:04}"), "wb") as file:
            file.write(text)


def main():
    source, table, output = sys.argv[1:]
    for target, seeds in SEEDS.items():
        write_seeds(os.path.join(output, target), seeds(source))
    with open(os.path.join(output, "dictionary"), "wb") as file:
        file.write(dictionary(source, table))


if __name__ == "__main__":
    main()
