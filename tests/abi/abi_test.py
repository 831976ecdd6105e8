"""abi_test.py ABI_SCRIPT COMPILER: the check of the ABI sees what breaks programs, and takes what is waived.

Small libraries stand for the old and the new version of a large one. Exit status 77 where abidw is missing.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

SCRIPT, COMPILER = sys.argv[1:3]
HEADER = """#pragma once
#include <string>
struct Secret;
struct API Counter {
    virtual ~Counter();
    virtual int count() const;
    Secret* secret = nullptr;
    std::string name;
    int first = 0;
};
API int sum( const Counter& a, const Counter& b );
"""
SOURCE = """#define API __attribute__( ( visibility( "default" ) ) )
#include "public/counter.h"
struct Secret { int a = 0; };
Counter::~Counter() { delete secret; }
int Counter::count() const { return first; }
int sum( const Counter& a, const Counter& b ) { return a.count() + b.count(); }
"""
EXPORTS = "{ global: _Z*Counter*; local: *; };\n"
WAIVER = "[suppress_function]\n  label = differences are new\n  name = difference\n  change_kind = added-function\n"


class Abi(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = directory.name
        os.mkdir(self.path("public"))
        self.build(HEADER, SOURCE)
        self.abi("record")

    def path(self, name):
        return os.path.join(self.directory, name)

    def write(self, name, text):
        with open(self.path(name), "w", encoding="ascii") as file:
            file.write(text)

    def build(self, header, source, *flags):
        self.write("public/counter.h", header)
        self.write("counter.cpp", source)
        self.write("exports.map", EXPORTS)
        subprocess.run([COMPILER, "-std=c++20", "-g", "-fPIC", "-shared", "-fvisibility=hidden", *flags,
                        "-Wl,--version-script=exports.map", "counter.cpp", "-o", "libcounter.so"], cwd=self.directory, check=True)

    def abi(self, what, waivers=""):
        self.write("waivers", waivers)
        run = subprocess.run([SCRIPT, what, "libcounter.so", "public", "baseline.xz", "waivers"], cwd=self.directory,
                             capture_output=True, text=True, check=False)
        self.assertEqual(run.stderr, "")
        return run.returncode, run.stdout

    def expect_change(self, told, waivers=""):
        status, output = self.abi("check", waivers)
        self.assertEqual(status, 1, output)
        self.assertIn(told, output)
        self.assertIn("./dev abi record", output)

    def test_the_same_library_passes(self):
        self.assertEqual(self.abi("check"), (0, ""))

    def test_what_no_program_sees_may_change(self):
        self.build(HEADER, SOURCE.replace("int a = 0", "long a = 0, b = 1").replace("a.count() +", "2 * a.count() -"), "-O2")
        self.assertEqual(self.abi("check"), (0, ""))

    def test_a_new_member_is_told(self):
        self.build(HEADER.replace("int first = 0;", "int first = 0; long second = 0;"), SOURCE)
        self.expect_change("long int second")

    def test_a_member_of_another_type_is_told(self):
        self.build(HEADER.replace("int first", "unsigned first"), SOURCE)
        self.expect_change("unsigned int")

    def test_a_new_virtual_function_is_told(self):
        self.build(HEADER.replace("virtual int count", "virtual int other() const;\n    virtual int count"),
                   SOURCE + "int Counter::other() const { return 0; }\n")
        self.expect_change("Counter::other")

    def test_a_function_that_is_gone_is_told(self):
        self.build(HEADER, SOURCE.replace("int sum(", "static int other("))
        self.expect_change("sum")

    def test_a_function_that_is_new_is_told_unless_it_is_waived(self):
        self.build(HEADER + "API int difference( const Counter& a );\n",
                   SOURCE + "int difference( const Counter& a ) { return a.first; }\n")
        self.expect_change("difference")
        self.assertEqual(self.abi("check", WAIVER)[0], 0)

    def test_a_waiver_is_for_nothing_else(self):
        self.build(HEADER + "API int product( const Counter& a );\n",
                   SOURCE + "int product( const Counter& a ) { return a.first; }\n")
        self.expect_change("product", WAIVER)

    def test_a_library_without_debugging_data_is_no_proof(self):
        self.build(HEADER, SOURCE, "-g0")
        status, output = self.abi("check")
        self.assertEqual(status, 2)
        self.assertIn("compile it with -g", output)


if __name__ == "__main__":
    if not shutil.which("abidw"):
        print("abidw is missing")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
