"""The hostile files and arguments that could control a terminal, wherever text is shown."""
import os

from hostile_cases import INVALID, TITLE, TROUBLE, VALID, Run, all_places, case, write

CONTROL = b"\x1b[2J\x1b]0;x\x07\x9b31m\x00\x08\x7f\r"


@case
def terminal_escapes_in_texts():
    quoted = b'"' + CONTROL + b'"'
    for line in (CONTROL + b"\n", b"/a, " + quoted + b", r\n", quoted + b", T, x\n", b"/a " + CONTROL + b"\n",
                 quoted + b", T1, r\n" + quoted + b", T2, r\n", b'"' + CONTROL + b"\n", b"x 1." + CONTROL + b"\n",
                 b"x \\" + CONTROL + b"\n", b"x !" + CONTROL + b"\n", b"include: " + quoted + b"\n",
                 b"mountFilter: f\nname, " + quoted + quoted + b" x\n"):
        yield from all_places(INVALID, TITLE + line)
    yield from all_places(INVALID, b"agentName: " + quoted + b"\n")
    yield from all_places(VALID, TITLE + b"mountFilter: f\nname, " + quoted + b"\n" + quoted + b", T, r, f\n")


@case
def terminal_escapes_in_names_of_files():
    name = CONTROL.replace(b"\0", b"")
    directory = b"dir" + name
    os.mkdir(directory)
    for file, text, status in ((b"valid", TITLE, VALID), (b"wrong", TITLE + b"/a\n", INVALID), (b"part", b"/a, T, r\n", INVALID),
                               (b"includer", TITLE + b"include: inc*\n", INVALID), (b"missing", None, TROUBLE),
                               (b"seeker", TITLE + b"include: none\n", INVALID)):
        path = os.path.join(directory, file + name)
        if text:
            write(path, text)
        write(os.path.join(directory, b"inc" + name), b"/a\n")
        for command in (["check"], ["check", "--format", "gcc"], ["check", "--format", "github"],
                        ["check", "--format", "json"], ["check", "--format", "sarif"], ["show"], ["show", "--json"],
                        ["show", "--origin"], ["show", "--json", "--origin"]):
            yield Run(*command, path, status=status)
        yield Run("why", path, "/a", status=[INVALID, TROUBLE])
        yield Run("tokens", path, status=[VALID, TROUBLE])
    yield Run("check", directory, status=INVALID)


@case
def terminal_escapes_in_arguments():
    write("agent", TITLE + b"include: ConfigMountProfile\n")
    text = CONTROL.replace(b"\0", b"")
    for arguments in ((text,), (b"--" + text,), (b"show", b"--" + text), (b"check", b"--jobs", text, b"agent"),
                      (b"show", b"--cell", text, b"agent"), (b"check", b"--format", text, b"agent"), (b"explain", text),
                      (b"check", b"--depfile", b"nowhere/" + text, b"agent")):
        yield Run(*arguments, status=TROUBLE)
    yield Run("why", "agent", text, status=INVALID)
    yield Run("check", "--stdin-path", text, "-", status=INVALID)
    yield Run("show", "agent", status=INVALID, environment={"ACTIVE_CELLID": os.fsdecode(text)})
    write("paths" + os.fsdecode(text), text + b"\n")
    yield Run("show", "--system", "s", "--config-root", b"paths" + text, "agent", status=TROUBLE)
    yield Run("show", "--system", "s", "--config-root", b"missing" + text, "agent", status=TROUBLE)
    write("paths", text.replace(b"\r", b"") + b" T r\n")
    for form in "--tree", "--json":
        yield Run("show", form, "--system", text, "--config-root", "paths", "agent", status=VALID,
                  environment={"K7_CHROOT": "/"})
