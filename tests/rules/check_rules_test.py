"""Feeds small trees to check-rules, and compares all that it says about them."""
import os
import subprocess
import sys
import tempfile
import unittest

SCRIPT = os.path.abspath(sys.argv.pop(1))


def offences(files):
    with tempfile.TemporaryDirectory() as root:
        for path, text in files.items():
            os.makedirs(os.path.dirname(os.path.join(root, path)), exist_ok=True)
            with open(os.path.join(root, path), "w", encoding="latin-1") as file:
                file.write(text)
        run = subprocess.run([SCRIPT, root], capture_output=True, text=True, check=False)
        lines = run.stdout.splitlines()
        assert run.stderr == "" and run.returncode == (1 if lines else 0), run
        return lines


def function_of(lines, head="void Corvid::run( int n ) const", indent=""):
    body = "".join(f"{indent}    call( {n} );\n" for n in range(lines - 2))
    return f"{indent}{head} {{\n{body}{indent}}}\n"


class CheckRules(unittest.TestCase):
    def expect(self, files, *expected):
        self.assertEqual(offences(files), list(expected))

    def test_includes_point_one_way(self):
        allowed = {
            "Platform/include/Kiv/Name.h": '#include "Kiv/String8.h"\n#include <string>\n',
            "ProfileStore/Mount.h": '#include "Kiv/Name.h"\n#include "ProfileStore/Export.h"\n',
            "ProfileParser/A.cpp": '#include "ProfileStore/Mount.h"\n#include "Cell/Cell.h"\n#include "A.h"\n',
            "Cli/main.cpp": '#include "ProfileParser/A.h"\n#include "Output.h"\n#include "EmbeddedPlatform.h"\n',
            "tests/unit/ATest.cpp": '#include "ProfileParser/A.h"\n#include "EmbeddedPlatform.h"\n',
        }
        self.expect(allowed)
        for path, name in (("Platform/include/Kiv/Name.h", "ProfileStore/Mount.h"),
                           ("ProfileStore/Mount.h", "ProfileParser/A.h"),
                           ("ProfileParser/A.h", "Cli/Output.h")):
            self.expect({path: f'#pragma once\n#include "{name}"\n'},
                        f"{path}:2: includes {name}: includes point from "
                        "Platform <- ProfileStore <- ProfileParser <- ProfileDocument <- CInterface <- Cli only")

    def test_the_embedded_platform_stays_unknown(self):
        self.expect({"ProfileParser/A.cpp": '#include "EmbeddedPlatform.h"\n'},
                    "ProfileParser/A.cpp:1: includes EmbeddedPlatform.h: only the command, tests and examples know "
                    "which platform it is")

    def test_the_parser_generator_stays_behind_the_session(self):
        text = "#include <antlr3.h>\n"
        self.expect({"ProfileParser/ParseSession.cpp": text, "ProfileParser/ErrorDescription.h": text})
        for path in ("ProfileParser/MountProfileHdlr.h", "Cli/main.cpp", "ProfileStore/Mount.h"):
            self.expect({path: text}, f"{path}:1: includes antlr3.h, which stays behind the parse session")
        self.expect({"ProfileParser/MountProfileHdlr.cpp": '\n#include "mountProfileParser.h"\n'},
                    "ProfileParser/MountProfileHdlr.cpp:2: includes mountProfileParser.h, which stays behind the "
                    "parse session")

    def test_names_out_of_files_are_in_no_hash_table(self):
        text = "#include <unordered_map>\n"
        self.expect({"Cli/main.cpp": text, "tests/a.cpp": text})
        for path in ("ProfileStore/Mount.h", "ProfileParser/A.cpp"):
            self.expect({path: text}, f"{path}:1: includes unordered_map: a file could choose names that collide; "
                                      "take an ordered container")

    def test_functions_have_forty_lines_at_most(self):
        self.expect({"A.cpp": function_of(40) + "\n" + function_of(40)})
        self.expect({"A.cpp": "int a;\n\n/// Why { not.\n" + function_of(41)}, "A.cpp:4: function of 41 lines; 40 at most")
        inside = "class A : B {\n  public:\n" + function_of(42, "A( int a = { 1 } )\n        : a_( a )", "    ") + "};\n"
        self.expect({"A.h": "namespace Corvid {\n" + inside + "}\n"}, "A.h:4: function of 43 lines; 40 at most")

    def test_braces_in_texts_comments_and_macros_are_no_functions(self):
        decoys = ("// f() {\n/* g() {\n */\nconst char* a = \"h() {\";\nconst char b = '{';\n"
                  "#define M( x ) \\\n    f( x ) {\nconst char* r = R\"( { )\";\n")
        self.expect({"A.cpp": decoys * 6 + function_of(40)})
        self.expect({"A.cpp": decoys + function_of(41)}, "A.cpp:9: function of 41 lines; 40 at most")

    def test_tables_and_types_are_no_functions(self):
        rows = "    { 1, f( 2 ) },\n" * 60
        self.expect({"A.cpp": f"const Row rows[] = {{\n{rows}}};\n"})
        for begin, end in (("const Row rows[] = {", "};"), ("std::map<int, Row> rows{", "};"), ("check( {", "} );"),
                           ("std::array<Row, 60> rows{ {", "} };"), ("check( 1, {", "} );")):
            table = f"    {begin}\n{rows}    {end}\n"
            self.expect({"A.cpp": function_of(38).replace("{\n", "{\n" + table, 1)})
            self.expect({"A.cpp": function_of(39).replace("{\n", "{\n" + table, 1)},
                        "A.cpp:1: function of 41 lines; 40 at most")
        for begin in ("if ( a ) {", "else {", "do {", "{", "auto f = [ a ] {", "auto f = [ a ]() mutable {", "case 1: {"):
            self.expect({"A.cpp": function_of(40).replace("{\n", f"{{\n    {begin}\n    }}\n", 1)},
                        "A.cpp:1: function of 42 lines; 40 at most")
        self.expect({"A.h": "struct A {\n" + "    int f();\n" * 60 + "};\n"})

    def test_files_have_four_hundred_lines_at_most(self):
        self.expect({"A.cpp": "\n" * 400, "notes.md": "\n" * 500, "ProfileParserAntlr/mountProfile.g": "\n" * 500})
        self.expect({"A.cpp": "\n" * 401}, "A.cpp:401: file of 401 lines; 400 at most")
        self.expect({"dev": "\n" * 401}, "dev:401: file of 401 lines; 400 at most")

    def test_words_that_no_file_holds(self):
        for text, what in (
                ("see the " + "spec" + "ification", "a document"), ("Part" + " 2.5", "a document"),
                ("spec" + ".md", "a document"), ("/ho" + "me/me/x", "an absolute path"),
                ('"/wo' + 'rk/x"', "an absolute path"), ("TO" + "DO", "unfinished"), ("https" + "://a.b/c", "an address")):
            found = offences({"docs/a.md": "first\n" + text + "\n"})
            self.assertEqual(len(found), 1, text)
            self.assertRegex(found[0], "^docs/a.md:2: .*" + what)
        self.expect({"docs/a.md": "a mountPart 2, a homework/x, the specification of levels, ~/work/x, a/home/b\n"})

    def test_build_trees_are_passed_over_without_git(self):
        self.expect({"build/A.cpp": "\n" * 500, ".git/x": "TO" + "DO"})


if __name__ == "__main__":
    unittest.main()
