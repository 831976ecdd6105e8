"""What the --help of the command tells, as data."""
import re
import subprocess


def help_of(program, *command):
    return subprocess.run([program, *command, "--help"], capture_output=True, text=True, check=True).stdout


def commands_of(program):
    listed = help_of(program).split("\nSubcommands:\n")[1].split("\n\n")[0]
    return re.findall(r"^  (\S+) ", listed, re.M)


def options_of(help_text):
    """The options of a --help by the titles of its groups, less what is explained in parentheses; each as it would be typed:
    `--cell N`, `-h, --help`."""
    groups, title = {}, None
    for line in help_text.splitlines():
        if line.endswith(":") and not line.startswith(" "):
            title = line[:-1].partition(" (")[0]
        elif re.match(r"  -", line):
            head = re.sub(r" (Needs|Excludes): .*| REQUIRED| \.\.\.", "", line[2:].split("  ")[0])
            groups.setdefault(title, set()).add(head.strip().replace(",", ", "))
    return groups
