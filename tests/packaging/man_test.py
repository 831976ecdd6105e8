"""man_test.py COMMAND SOURCE_DIR: the manual pages tell what there is, and nothing else.

mountprofile(1) and the --help of every command name the same options; mountprofile(5) and the language reference name the
same statements; and the examples work.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from help_text import commands_of, help_of, options_of

COMMAND, SOURCE = sys.argv[1:3]
PAGE = "packaging/man/mountprofile.1"
STANDARD = "Options of all commands"  # the options that every command's --help has


def text_of(*path):
    with open(os.path.join(SOURCE, *path), encoding="utf-8") as file:
        return file.read()


def sections_of(page):
    """The lines of a page's sections and subsections by their titles."""
    sections, title = {}, None
    for line in page.splitlines():
        if re.match(r"\.S[hs] ", line):
            title = line[4:]
        sections.setdefault(title, []).append(line)
    return sections


def described_options(lines):
    """The options that a section's list has: `.It Fl -cell Ar N` is `--cell N`."""
    items = [line[len(".It "):] for line in lines if line.startswith(".It Fl ")]
    return {re.sub(r"Fl (\S+)", r"-\1", item).replace(" ,", ",").replace("Ar ", "") for item in items}


def mdoc_of(option):
    return ".It " + re.sub(r" (?!-)(\S+)$", r" Ar \1", re.sub(r"(?<![\w-])-", "Fl ", option)).replace(",", " ,")


def literal_blocks(page):
    return [block.replace("\\e", "\\") for block in re.findall(r"^\.Bd -literal.*\n((?:.*\n)*?)\.Ed$", page, re.M)]


class Options(unittest.TestCase):
    def setUp(self):
        self.page = sections_of(text_of(PAGE))
        self.commands = commands_of(COMMAND)
        self.help = {name: options_of(help_of(COMMAND, name)) for name in self.commands}
        self.standard = options_of(help_of(COMMAND))["Options"]

    def compare(self, where, told, described):
        for option in sorted(told - described):
            self.fail(f"--help tells of {option}, {PAGE} does not: "
                      f"add `{mdoc_of(option)}` to the list in the subsection '{where}'")
        for option in sorted(described - told):
            self.fail(f"{PAGE}: the subsection '{where}' has {option}, which no --help tells of: take it out")

    def test_every_command_has_its_subsection(self):
        described = {title.split()[1] for title in self.page if title and title.startswith("mountprofile ")}
        self.assertEqual(described, set(self.commands),
                         f"{PAGE} has a subsection `.Ss mountprofile NAME` for every command, and for nothing else")

    def test_the_options_of_each_command_are_those_of_its_help(self):
        for name in self.commands:
            with self.subTest(name):
                title = "mountprofile " + name
                told = self.help[name]["Options"] - self.standard
                self.compare(title, told, described_options(self.page.get(title, [])))

    def test_the_options_of_all_commands_are_those_of_every_help(self):
        self.compare(STANDARD, self.standard, described_options(self.page[STANDARD]))
        for name in self.commands:
            self.assertIn("-h, --help", self.help[name]["Options"])

    def test_groups_of_options_have_subsections_that_their_commands_name(self):
        titles = {title for groups in self.help.values() for title in groups} - {"Options"}
        for title in titles:
            told = set().union(*(groups.get(title, set()) for groups in self.help.values()))
            self.compare(title, told, described_options(self.page.get(title, [])))
            for name in self.commands:
                named = any(line.startswith(".Sx " + title) for line in self.page["mountprofile " + name])
                self.assertEqual(named, title in self.help[name],
                                 f"{PAGE}: `.Sx {title} .` stands below `.Ss mountprofile {name}` if it takes them")

    def test_options_stand_nowhere_else(self):
        known = {"mountprofile " + name for name in self.commands} | {STANDARD}
        known |= {title for groups in self.help.values() for title in groups}
        for title, lines in self.page.items():
            if title not in known:
                self.assertEqual(described_options(lines), set(), f"{PAGE}: options in '{title}'")

    def test_the_synopsis_names_every_command(self):
        for name in self.commands:
            self.assertIn(".Cm " + name, self.page["SYNOPSIS"], f"{PAGE}: SYNOPSIS")


class Statements(unittest.TestCase):
    def test_the_page_on_the_format_has_the_statements_of_the_reference(self):
        reference = re.findall(r"^### `(\w+)`$", text_of("docs", "language.md"), re.M)
        described = re.findall(r"^\.It Ic (\w+)", text_of("packaging", "man", "mountprofile.5"), re.M)
        self.assertEqual(sorted(described), sorted(reference),
                         "packaging/man/mountprofile.5 has `.It Ic STATEMENT` for each section of docs/language.md")

    def test_it_knows_the_keywords_of_the_grammar(self):
        grammar = text_of("ProfileParserAntlr", "mountProfile.g")
        keywords = re.findall(r"^[A-Z_]+ *: ((?:[A-Z] )+);", grammar, re.M)
        described = re.findall(r"^\.It Ic (\w+)", text_of("packaging", "man", "mountprofile.5"), re.M)
        self.assertEqual(sorted(name.upper() for name in described),
                         sorted(keyword.replace(" ", "") for keyword in keywords))


class Literals(unittest.TestCase):
    def test_brackets_stay_in_the_quotes(self):
        for page in ("mountprofile.1", "mountprofile.5", "corvid-mount-profile.3"):
            for line in text_of("packaging", "man", page).splitlines():
                self.assertNotRegex(line, r"^\.(Ql|Sq) .* [][()|](?= |$)",
                                    f"{page}: a bracket of its own is put behind the quotes; write it as `\\&)`")


class Functions(unittest.TestCase):
    def test_the_page_on_the_library_names_every_function_of_the_c_interface(self):
        declared = re.findall(r"^CORVID_MOUNT_PROFILE_API [^;(]*?(\w+)\(", text_of("CInterface", "corvid_mount_profile.h"), re.M)
        described = re.findall(r"^\.Fn (corvid_\w+)", text_of("packaging", "man", "corvid-mount-profile.3"), re.M)
        self.assertGreaterEqual(len(declared), 9)
        self.assertEqual(sorted(described), sorted(declared),
                         "packaging/man/corvid-mount-profile.3 has `.Fn NAME` below 'From C' for every function")


class Examples(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.TemporaryDirectory()
        self.addCleanup(self.directory.cleanup)
        shutil.copytree(os.path.join(SOURCE, "examples", "fan"), os.path.join(self.directory.name, "profiles"))
        os.rename(os.path.join(self.directory.name, "profiles", "agent"),
                  os.path.join(self.directory.name, "profiles", "Fan"))

    def run_in_directory(self, line):
        path = os.path.dirname(COMMAND) + os.pathsep + os.environ["PATH"]
        return subprocess.run(["sh", "-c", line], cwd=self.directory.name, capture_output=True, text=True, check=False,
                              env={**os.environ, "PATH": path})

    def test_the_commands_in_the_page_work(self):
        lines = re.findall(r"^\$ (mountprofile .*)$", "\n".join(literal_blocks(text_of(PAGE))), re.M)
        self.assertGreaterEqual(len(lines), 4)
        for line in lines:
            run = self.run_in_directory(line)
            self.assertEqual((run.returncode, run.stderr), (0, ""), line)
            _, _, written = line.partition(" > ")
            if written:
                with open(os.path.join(self.directory.name, written), encoding="utf-8") as file:
                    run.stdout += file.read()
            self.assertNotEqual(run.stdout, "", line)

    def test_the_agent_file_in_the_page_is_valid(self):
        [example] = literal_blocks(text_of("packaging", "man", "mountprofile.5"))
        with open(os.path.join(self.directory.name, "example"), "w", encoding="utf-8") as file:
            file.write(example)
        run = self.run_in_directory("mountprofile check example")
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "1 file checked: 1 valid\n", ""))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
