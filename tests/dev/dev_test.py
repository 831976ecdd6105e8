#!/usr/bin/env python3
"""dev_test.py DEV: the developer's switch tells what it does and what is wrong.

It runs in a directory of its own, with stand-ins for the programs that install and build, so that nothing is installed or
built.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

DEV = sys.argv[1]

# What the stand-ins do unless a test says otherwise. A package is installed, a preset exists, a build has its output at once.
PROGRAMS = {
    "dpkg-query": "printf 'install ok installed'",
    "apt-get": "exit 0",
    "cmake": """case "$1" in --list-presets=*) echo '  "release" - it';; esac""",
    "sleep": "exec /bin/sleep 0.05",
}


class Dev(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = os.path.realpath(folder.name)
        self.programs = os.path.join(self.root, "programs")
        os.mkdir(self.programs)
        shutil.copy(DEV, self.root)
        os.mkdir(os.path.join(self.root, "scripts"))
        shutil.copy(os.path.join(os.path.dirname(DEV), "scripts", "fuzz"), os.path.join(self.root, "scripts"))
        os.mkdir(os.path.join(self.root, "fuzz"))
        self.write("fuzz/CMakeLists.txt", "corvid_fuzz_target(lexer Lexer.cpp)\n")
        self.write("CMakePresets.json", "{}\n")
        for name, script in PROGRAMS.items():
            self.program(name, script)

    def write(self, name, text):
        with open(os.path.join(self.root, name), "w", encoding="utf-8") as file:
            file.write(text)

    def program(self, name, script):
        self.write(os.path.join("programs", name), "#!/bin/sh\n" + script + "\n")
        os.chmod(os.path.join(self.programs, name), 0o755)

    def dev(self, *arguments, status=0):
        environment = {**os.environ, "PATH": self.programs + os.pathsep + os.environ["PATH"], "TMPDIR": self.root}
        result = subprocess.run([os.path.join(self.root, "dev"), *arguments], env=environment, text=True, check=False,
                                cwd="/", stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.assertEqual(result.returncode, status, result.stdout)
        return result.stdout

    def test_without_a_verb_it_lists_them(self):
        self.assertRegex(self.dev(), r"^usage: \./dev VERB")
        self.assertEqual(self.dev("--help"), self.dev())

    def test_a_wrong_verb_or_one_argument_too_many_is_told_with_those_that_there_are(self):
        for arguments, complaint in (
                (["biuld"], "dev: no verb 'biuld'"),
                (["main"], "dev: no verb 'main'"),
                (["test", "release", "-R", "Lexer"], "dev: test does not take so many arguments: release -R Lexer"),
                (["setup", "now"], "dev: setup does not take so many arguments: now"),
                (["fuzz", "lexer", "1", "2"], "dev: fuzz does not take so many arguments: lexer 1 2")):
            self.assertEqual(self.dev(*arguments, status=2), complaint + "\n" + self.dev())

    def test_every_verb_takes_as_many_arguments_as_its_line_shows(self):
        with open(DEV, encoding="utf-8") as file:
            [function] = re.findall(r"^most_arguments\(\) \{\n.*?^\}\n", file.read(), re.M | re.S)
        verbs = re.findall(r"^  ([a-z]+) (\S.*?|)  ", self.dev(), re.M)
        self.assertGreater(len(verbs), 15)
        for verb, shown in verbs:
            taken = int(subprocess.check_output(["bash", "-c", function + 'most_arguments "$1"', "-", verb]))
            self.assertTrue(taken > 2 if shown.endswith("...") else taken >= len(shown.split()), f"{verb} {shown}: {taken}")

    def test_a_wrong_argument_is_told_with_what_it_may_be(self):
        for arguments, complaint in (
                (["build", "fast"], "no preset 'fast'; there are: release"),
                (["test", "-R"], "no preset '-R'; there are: release"),
                (["fuzz", "parser"], "no fuzz target 'parser'; there are: lexer, and all"),
                (["fuzz", "lexer", "long"], "not a number of seconds: long"),
                (["abi", "forget"], "abi takes 'record' or nothing"),
                (["package", "tset"], "package takes 'test' or nothing"),
                (["install", ""], "PREFIX is empty"),
                (["install", "--help"], "install takes a PREFIX, not an option: --help"),
                (["install", os.path.join(self.root, "dev", "usr")],
                 f"cannot write below {self.root}/dev/usr: name another PREFIX, or be root")):
            self.assertEqual(self.dev(*arguments, status=1), f"dev: {complaint}\n")

    def test_steps_are_told_and_done_quietly(self):
        self.assertEqual(self.dev("build"), "dev: configuring build/release\ndev: building build/release\n")

    def test_a_long_step_tells_how_far_it_is(self):
        self.program("cmake", PROGRAMS["cmake"] + """
            case "$1" in --build) echo '[7/9] Building CXX object a.cpp.o'; /bin/sleep 1;; esac""")
        lines = self.dev("build").splitlines()
        self.assertEqual(lines[:2], ["dev: configuring build/release", "dev: building build/release"])
        self.assertGreater(len(lines), 3)
        self.assertEqual(set(lines[2:]), {"dev: still building build/release 7/9"})

    def test_a_step_that_fails_shows_why_and_where_all_of_it_stands(self):
        self.program("cmake", PROGRAMS["cmake"] + """
            case "$1" in --build) echo '[1/9] Building CXX object a.cpp.o'; echo 'a.cpp:1:1: error: no'; exit 1;; esac""")
        self.assertEqual(self.dev("build", status=1),
                         "dev: configuring build/release\ndev: building build/release\na.cpp:1:1: error: no\n"
                         "dev: failed: cmake --build --preset release "
                         f"(log: {self.root}/build/log/build-release.log)\n")

    def test_a_fuzzer_that_finds_something_is_told_from_one_that_is_killed(self):
        self.program("cmake", PROGRAMS["cmake"].replace("release", "fuzz"))
        os.makedirs(os.path.join(self.root, "build", "fuzz", "bin"))
        for end, reason in (("exit 77", "found an input that breaks it, kept in fuzz/crashes"),
                            ("kill -TERM $$", "the fuzzer was ended by a signal: TERM")):
            self.program("../build/fuzz/bin/fuzz_lexer", end)
            self.assertEqual(self.dev("fuzz", "lexer", status=1).splitlines()[-1], f"dev: lexer: {reason}")

    def test_what_one_fuzzer_finds_does_not_stop_the_others(self):
        targets = ["lexer", "condition", "stage", "document"]
        self.write("fuzz/CMakeLists.txt", "".join(f"corvid_fuzz_target({target} Any.cpp)\n" for target in targets))
        self.program("cmake", PROGRAMS["cmake"].replace("release", "fuzz"))
        self.program("nproc", "echo 2")
        os.makedirs(os.path.join(self.root, "build", "fuzz", "bin"))
        for target in targets:
            self.program(f"../build/fuzz/bin/fuzz_{target}", f"""
                echo '{target} says'; echo 'stat::number_of_executed_units: 1200'; echo 'stat::average_exec_per_sec:     40'
                exit {77 * (target == "lexer")}""")
        told = self.dev("fuzz", "all", "1", status=1)
        for target in targets:
            self.assertEqual(f"{target} says" in told, target == "lexer")
            self.assertEqual(f"dev: {target}: 1200 inputs, 40 a second, no finding\n" in told, target != "lexer")
        self.assertIn("dev: lexer: found an input", told)

    def test_building_takes_nothing_that_only_tests_need(self):
        source = os.path.dirname(os.path.abspath(DEV))
        for folder, names, files in os.walk(source):
            names[:] = [name for name in names if not name.startswith(".") and name not in ("build", "benchmarks")]
            for name in files:
                if name == "CMakeLists.txt" or name.endswith(".cmake"):
                    with open(os.path.join(folder, name), encoding="utf-8") as file:
                        found = re.findall(r"find_program\(\w+ (\w+)[^)]*REQUIRED", file.read())
                    self.assertLessEqual(set(found), {"antlr3"}, os.path.join(folder, name))

    @unittest.skipIf(os.geteuid() == 0, "nothing is closed to root")
    def test_a_checkout_that_cannot_be_written_to_is_the_reason(self):
        os.chmod(self.root, 0o555)
        self.addCleanup(os.chmod, self.root, 0o755)
        self.assertEqual(self.dev("build", status=1), "dev: configuring build/release\n"
                         f"dev: cannot make {self.root}/build/log: the checkout has to be writable\n")

    @unittest.skipUnless(os.geteuid() == 0, "packages are installed by root")
    def test_a_list_of_packages_that_cannot_be_fetched_is_the_reason(self):
        self.program("dpkg-query", "exit 1")
        self.program("apt-get", """for argument; do case "$argument" in
            update) echo 'W: Failed to fetch the list  No address'; exit 0;;
            install) echo 'E: Unable to locate package cmake'; exit 100;; esac; done""")
        self.assertRegex(self.dev("build", status=1),
                         r"\ndev: cannot install cmake .*: W: Failed to fetch the list  No address "
                         r"E: Unable to locate package cmake \(log: \S+\)\n$")

    @unittest.skipIf(os.geteuid() == 0, "root needs no sudo")
    def test_packages_that_only_root_can_install_are_told(self):
        self.program("dpkg-query", "exit 1")
        self.program("sudo", "echo 'sudo: a password is required'; exit 1")
        self.assertRegex(self.dev("build", status=1),
                         r"\ndev: cannot install cmake .*: sudo: a password is required \(log: \S+\)\n$")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
