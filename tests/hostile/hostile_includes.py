"""The hostile files that have others read."""
from hostile_cases import INVALID, MIB, TITLE, TROUBLE, VALID, Run, all_commands, all_places, case, write


@case
def one_include_pattern_of_1_MB():
    yield from all_commands(INVALID, TITLE, b"include: ", b"a" * (MIB - 100), b"\n")


@case
def one_include_pattern_of_1_MB_that_matches():
    write("inc", b"/a, T, r\n/b\n")
    yield from all_places(INVALID, TITLE, b"include: inc", b"*" * (MIB - 100), b"\n")


@case
def one_include_pattern_of_1_MB_of_asterisks_beside_2000_files():
    for i in range(2000):
        write(f"p{i}")
    yield from all_places(INVALID, TITLE, b"include: ", b"*" * (MIB - 100), b"zz\n")


@case
def include_files_that_one_pattern_matches():
    size = write("agent", TITLE, b"include: part-*\n")
    for i in range(4096):
        size += write(f"part-{i}", b"/a/%d, T, r\n" % i)
    yield Run("check", "agent", status=VALID, size=size)
    yield Run("show", "--json", "agent", status=VALID, size=size)


@case
def more_include_files_than_a_run_reads():
    write("x", b"/a, T, r\n")
    size = write("agent", TITLE, *[b"include: x\n"] * 95000)
    yield Run("check", "agent", status=TROUBLE, size=size)
    yield Run("show", "agent", status=TROUBLE, size=size)


@case
def many_lines_that_include_many_files():
    size = write("agent", TITLE, *[b"include: *.inc\n"] * 10000)
    for i in range(100):
        size += write(f"{i}.inc", b"/a/%d, T, r\n" % i)
    yield Run("check", "agent", status=TROUBLE, size=size)
