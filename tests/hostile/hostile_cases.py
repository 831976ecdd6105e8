"""The hostile files: each case is a function that fills the current folder and yields what to run there."""
import contextlib
import os
import socket
import threading

MIB = 1 << 20
VALID, INVALID, TROUBLE = 0, 1, 2  # the command's exit statuses
TITLE = b"agentName: A\n"

cases = {}


def case(function):
    cases[function.__name__.replace("_", "-")] = function
    return function


class Run:
    """One call of the command, and what is expected of it."""

    def __init__(self, *arguments, status, size=0, files=1, environment=None, without_rights=False):
        self.arguments, self.status, self.size, self.files = arguments, status, size, files
        self.environment = environment or {}
        self.without_rights = without_rights  # root's right to read everything is taken away


def write(path, *chunks):
    """Writes a file and answers its size."""
    with open(path, "wb") as file:
        for chunk in chunks:
            file.write(chunk)
    return os.path.getsize(path)


def all_commands(status, *chunks):
    """Every command over one file of this content. `tokens` has an opinion of its own on what is wrong."""
    size = write("agent", *chunks)
    yield Run("check", "agent", status=status, size=size)
    yield Run("show", "agent", status=status, size=size)
    yield Run("show", "--json", "agent", status=status, size=size)
    yield Run("tokens", "agent", status=[VALID, INVALID], size=size)


def all_places(status, *chunks):
    """All that tells something of a file, for texts that stand in many places."""
    yield from all_commands(status, *chunks)
    size = os.path.getsize("agent")
    for form in "json", "sarif", "gcc", "github":
        yield Run("check", "--format", form, "agent", status=status, size=size)
    yield Run("show", "--origin", "agent", status=status, size=size)
    yield Run("show", "--json", "--origin", "agent", status=status, size=size)
    yield Run("why", "agent", "/a", status=[VALID, INVALID], size=size)


def unreadable(path="agent", **keywords):
    for command in ["check"], ["show"], ["show", "--json"], ["tokens"]:
        yield Run(*command, path, status=TROUBLE, **keywords)


# ------------------------------------------------------------------------------------------- what is no plain file --

@case
def a_directory():
    os.mkdir("agent")
    for command in ["show"], ["show", "--json"], ["tokens"]:
        yield Run(*command, "agent", status=TROUBLE)
    write("includer", TITLE + b"include: agent\n")
    yield Run("check", "includer", status=TROUBLE)


@case
def a_fifo():
    os.mkfifo("agent")
    yield from unreadable()
    write("includer", TITLE + b"include: agent\n")
    yield Run("check", "includer", status=TROUBLE)


@case
def a_socket():
    with contextlib.closing(socket.socket(socket.AF_UNIX)) as listening:
        listening.bind("agent")
        yield from unreadable()


@case
def a_device():
    for device in "/dev/zero", "/dev/full", "/dev/tty", "/dev/stdin":
        yield from unreadable(device)


@case
def an_unreadable_file():
    write("agent", TITLE)
    os.chmod("agent", 0)
    yield from unreadable(without_rights=True)
    write("includer", TITLE + b"include: agent\n")
    yield Run("check", "includer", status=TROUBLE, without_rights=True)


@case
def a_dangling_link():
    os.symlink("nowhere", "agent")
    yield from unreadable()


@case
def a_looping_link():
    os.symlink("agent", "agent")
    yield from unreadable()


def while_changing(change, runs=25):
    """Checks a file again and again while another thread changes it."""
    over = threading.Event()

    def keep_changing():
        while not over.is_set():
            change()

    changer = threading.Thread(target=keep_changing)
    changer.start()
    try:
        for _ in range(runs):
            yield Run("check", "--jobs", "1", "agent", status=[VALID, INVALID, TROUBLE])
    finally:
        over.set()
        changer.join()


LONG_TEXT = TITLE + b"/a/b, T::T, rw\n" * 40000


@case
def a_file_that_shrinks_and_grows():
    write("agent", LONG_TEXT)

    def change():
        os.truncate("agent", 100000)
        write("agent", LONG_TEXT)

    yield from while_changing(change)


@case
def a_file_that_is_replaced():
    write("agent", LONG_TEXT)

    def change():
        for text in LONG_TEXT[:5000], b"{" * 5000, LONG_TEXT:
            write("new", text)
            os.replace("new", "agent")

    yield from while_changing(change)


@case
def a_file_that_comes_and_goes():
    write("agent", TITLE + b"include: inc*\n")

    def change():
        write("inc", b"/a, T, r\n")
        os.unlink("inc")

    yield from while_changing(change)


# ------------------------------------------------------------------------------------------------------- long texts --

@case
def one_word_of_5_MB():
    yield from all_commands(VALID, TITLE, b"/", b"a" * (5 * MIB), b", T, r\n")


@case
def one_word_of_5_MB_in_the_wrong_place():
    yield from all_commands(INVALID, TITLE, b"/a, T, r ", b"a" * (5 * MIB), b"\n")


@case
def one_comment_of_5_MB():
    yield from all_commands(VALID, TITLE, b"#", b"a" * (5 * MIB), b"\n")


@case
def one_string_of_5_MB():
    yield from all_commands(VALID, TITLE, b'"', b"a" * (5 * MIB), b'", T, r\n')


@case
def one_string_of_5_MB_in_the_wrong_place():
    yield from all_commands(INVALID, TITLE, b'/a, "', b"\x01" * (5 * MIB), b'", r\n')


@case
def one_open_string_of_5_MB():
    yield from all_commands(INVALID, TITLE, b'"', b"a" * (5 * MIB), b"\n")


@case
def one_alias_of_two_keys_of_1_MB():
    yield from all_places(INVALID, TITLE, b"alias: %", b"a" * MIB, b" = %", b"b" * MIB, b"\n")


@case
def one_path_declared_with_two_types_of_1_MB():
    yield from all_commands(INVALID, TITLE, *[b"/a, T%d" % i + b"x" * (MIB // 2 - 100) + b", r\n" for i in (1, 2)])


@case
def one_agent_name_of_1_MB():
    yield from all_commands(INVALID, b"agentName: ", b"a" * (MIB - 100), b"\n/a, T\n")


@case
def one_condition_of_1_MB_given_twice():
    yield from all_commands(INVALID, TITLE, b"mountGroup: g\n",
                            *[b"condition: " + b"x" * (MIB // 2 - 100) + b" == /a.b\n"] * 2)


@case
def one_line_of_one_character_tokens():
    yield from all_commands(INVALID, TITLE, b"/a" * (MIB // 2 - 100), b"\n")


@case
def one_line_of_continuations():
    yield from all_commands(INVALID, TITLE, b"\\\n" * (MIB // 2 - 100), b"x\n")


@case
def a_path_of_100000_units():
    yield from all_commands(VALID, TITLE, b"/a" * 100000, b", T, r\n")


@case
def a_condition_of_10000_comparisons():
    yield from all_commands(VALID, TITLE, b"mountGroup: g\ncondition: ", b" and ".join([b"x == /%sysname/a.b"] * 10000),
                            b"\n")


@case
def hundreds_of_flags():
    flags = b"rwicfCDSBNO" * 60
    yield from all_commands(VALID, TITLE, b"rootFlags: ", flags, b"\n/a, T, ", flags, b"\n/a, T, ", flags, b"\n")


# -------------------------------------------------------------------------------------------------------- many things --

def numbered(line, count):
    return (line % i for i in range(count))


@case
def bad_lines():
    yield from all_commands(INVALID, TITLE, b"{ } ! @ [\n" * 20000)


@case
def bad_lines_for_the_parser():
    yield from all_commands(INVALID, TITLE, b"/a, b, c, d, e, f\n" * 20000)


@case
def a_million_empty_lines():
    yield from all_commands(VALID, TITLE, b"\n" * 1000000)


@case
def a_million_empty_lines_before_the_title():
    yield from all_commands(VALID, b"\n" * 1000000, TITLE)


@case
def mount_groups():
    yield from all_commands(VALID, TITLE, *numbered(b"mountGroup: g%d\n", 100000))


@case
def mounts():
    yield from all_commands(VALID, TITLE, *numbered(b"/a/%d, T::T, rw\n", 100000))


@case
def aliases():
    yield from all_commands(VALID, b"agentName: A-%s\n", *numbered(b"alias: %%a%d = %%s\n", 100000))


@case
def sub_agents():
    yield from all_commands(VALID, TITLE, *numbered(b"subAgent: S%d\n", 100000))


@case
def template_keys():
    yield from all_commands(VALID, b"agentName: A", *numbered(b"-%%k%d", 50000), b"\n")


@case
def mount_filters():
    yield from all_commands(VALID, TITLE, *numbered(b"mountFilter: f%d\nname, x\n", 50000))


@case
def attributes_of_a_filter():
    yield from all_commands(VALID, TITLE, b"mountFilter: f\n", *numbered(b"name%d, x\n", 25000), b"/a, T, r, f\n")


# -------------------------------------------------------------------------------------------------------- odd bytes --

@case
def only_NULs():
    yield from all_commands(INVALID, b"\0" * (MIB // 2))


@case
def NULs_behind_a_title():
    yield from all_commands(INVALID, TITLE, b"\0" * (MIB // 2))


@case
def only_carriage_returns():
    yield from all_commands(INVALID, b"\r" * (MIB - 1))


@case
def every_single_byte():
    os.mkdir("bytes")
    for byte in range(256):
        write(f"bytes/{byte:02x}", bytes([byte]))
        write(f"bytes/{byte:02x}-in-a-line", TITLE + b"/a" + bytes([byte]) + b"b, T, r\n")
        yield Run("show", "--json", f"bytes/{byte:02x}-in-a-line", status=[VALID, INVALID])
    yield Run("check", "bytes", status=INVALID, files=512)


@case
def a_byte_order_mark():
    yield from all_commands(INVALID, b"\xef\xbb\xbf" + TITLE)


@case
def text_in_UTF_8():
    yield from all_commands(VALID, TITLE, '"/Lüfter/温度", T, r\n'.encode())
    yield from all_commands(INVALID, TITLE, "/Lüfter, T, r\n".encode())


@case
def text_in_UTF_16():
    for encoding in "utf-16", "utf-16-le", "utf-16-be":
        yield from all_commands(INVALID, (TITLE.decode() + "/a, T, r\n").encode(encoding))
