#!/usr/bin/env python3
"""formats_test.py COMMAND SOURCE_DIR [SARIF_SCHEMA]: the forms in which `check` speaks to programs.

Every document that a test gets is validated: JSON by the schema that is shipped; with SARIF_SCHEMA the tests of that
format run instead of all others, and documents are validated by that file, the official schema. The environment variable
SARIF_SCHEMA names another one. Without it they are skipped with a message, and the exit status is 77.
"""
import glob
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest

import jsonschema

COMMAND, SOURCE_DIR = sys.argv[1:3]
IS_FOR_SARIF = len(sys.argv) > 3
SARIF_SCHEMA = os.environ.get("SARIF_SCHEMA") or sys.argv[-1] if IS_FOR_SARIF else ""


def validator(path, kind):
    with open(path, encoding="utf-8") as file:
        schema = json.load(file)
    kind.check_schema(schema)
    return kind(schema)


JSON_VALIDATOR = validator(os.path.join(SOURCE_DIR, "share/mountprofile-check-1.schema.json"),
                           jsonschema.Draft202012Validator)
SARIF_VALIDATOR = (validator(SARIF_SCHEMA, jsonschema.Draft4Validator)
                   if os.path.isfile(SARIF_SCHEMA) else None)


class FormatsTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = directory.name
        self.write("valid", "agentName: Fan\n")
        self.write("invalid", "agentName: Fan\n/a, K, read\n")
        self.write("mounts", "/a, K, r\n")
        self.write("agent", "agentName: Fan\n\ninclude: inc*\n")
        self.write("inc1", "/a, K, r\n")
        self.write("inc2", "/b, K, r\n\"\u00e9\", k, r\n")

    def write(self, name, text):
        with open(os.path.join(os.fsencode(self.directory), os.fsencode(name)), "wb") as file:
            file.write(text if isinstance(text, bytes) else text.encode())

    def check(self, form, *arguments, status):
        """Standard output; nothing may be on standard error."""
        command = [COMMAND, "check", "--format", form, *arguments]
        result = subprocess.run(command, cwd=self.directory, capture_output=True, check=False)
        self.assertEqual(result.returncode, status, result)
        self.assertEqual(result.stderr, b"")
        return result.stdout.decode("ascii" if form in ("json", "sarif") else "utf-8")

    def json(self, *arguments, status):
        document = json.loads(self.check("json", *arguments, status=status))
        JSON_VALIDATOR.validate(document)
        self.assertEqual(document["exitStatus"], status)
        return document

    def sarif(self, *arguments, status):
        document = json.loads(self.check("sarif", *arguments, status=status))
        SARIF_VALIDATOR.validate(document)
        (run,) = document["runs"]
        (invocation,) = run["invocations"]
        self.assertEqual(invocation["exitCode"], status)
        self.assertEqual(invocation["executionSuccessful"], status != 2)
        for result in run["results"]:
            self.assertEqual(run["tool"]["driver"]["rules"][result["ruleIndex"]]["id"], result["ruleId"])
        return run

    def test_a_valid_file_has_no_diagnostics(self):
        document = self.json("valid", status=0)
        self.assertEqual(document["files"], [{"file": "valid", "outcome": "valid", "diagnostics": []}])
        self.assertEqual(document["summary"], {"checked": 1, "valid": 1, "invalid": 0, "notAgentFile": 0,
                                               "unreadable": 0, "passedOver": 0})
        self.assertEqual(self.check("gcc", "valid", status=0), "")
        self.assertEqual(self.check("github", "valid", status=0), "")

    def test_an_error_has_its_place_and_the_range_of_what_is_wrong(self):
        (file,) = self.json("invalid", status=1)["files"]
        message = "In mount group 'all' ,  near '\\n', illegal flag 'e'"
        (diagnostic,) = file["diagnostics"]
        diagnostic.pop("hint", None)
        self.assertEqual(diagnostic, {
            "code": "MP042", "severity": "error", "file": "invalid", "line": 2, "column": 12,
            "range": {"start": {"line": 2, "column": 8}, "end": {"line": 2, "column": 12}}, "message": message})
        self.assertEqual(self.check("gcc", "invalid", status=1).splitlines()[0],
                         f"invalid:2:12: error: {message} [MP042]")
        self.assertTrue(self.check("github", "invalid", status=1).startswith(
            f"::error file=invalid,line=2,col=8,endLine=2,endColumn=12,title=MP042::{message}"))

    def test_an_error_in_an_include_file_tells_how_that_is_reached(self):
        (file,) = self.json("agent", status=1)["files"]
        (diagnostic,) = file["diagnostics"]
        self.assertEqual((file["file"], diagnostic["file"], diagnostic["line"], diagnostic["column"]),
                         ("agent", "inc2", 2, 7))
        self.assertEqual(diagnostic["includedFrom"],
                         {"file": "agent", "line": 3, "pattern": "inc*", "match": 2, "matches": 2})
        gcc = self.check("gcc", "agent", status=1).splitlines()
        self.assertEqual(gcc[0], "In file included from agent:3:")
        self.assertTrue(gcc[1].startswith("inc2:2:7: error: In include file,"), gcc)
        github = self.check("github", "agent", status=1)
        self.assertTrue(github.startswith("::error file=inc2,line=2,col=6,endLine=2,endColumn=7,title=MP041::"), github)
        self.assertIn("%0Aincluded from agent:3 (pattern inc*, match 2 of 2)", github)

    def test_sarif_counts_characters_and_names_the_including_line(self):
        run = self.sarif("agent", "invalid", "valid", status=1)
        self.assertEqual(run["columnKind"], "unicodeCodePoints")
        included, flags = run["results"]
        location = included["locations"][0]["physicalLocation"]
        self.assertEqual(location, {"artifactLocation": {"uri": "inc2"},
                                    "region": {"startLine": 2, "startColumn": 6, "endLine": 2, "endColumn": 7}})
        related = included["relatedLocations"][0]
        self.assertEqual(related["physicalLocation"], {"artifactLocation": {"uri": "agent"}, "region": {"startLine": 3}})
        self.assertEqual(related["message"]["text"], "included from agent:3 (pattern inc*, match 2 of 2)")
        self.assertEqual((flags["ruleId"], flags["level"]), ("MP042", "error"))
        self.assertIn("illegal flag 'e'", flags["message"]["text"])

    def test_sarif_explains_the_codes_of_its_results(self):
        run = self.sarif(*self.conformance_agents(), status=2)
        rules = run["tool"]["driver"]["rules"]
        self.assertGreater(len(rules), 40)
        self.assertEqual([rule["id"] for rule in rules],
                         list(dict.fromkeys(result["ruleId"] for result in run["results"])))
        for rule in rules:
            self.assertIn("Right:", rule["help"]["text"])
            body = rule["help"]["markdown"].lstrip("\n")
            self.assertEqual(rule.get("fullDescription"), None if body.startswith("```") else {
                "text": body.split("\n\n")[0].replace("\n", " ")})
        self.assertEqual(self.sarif("valid", status=0)["tool"]["driver"]["rules"], [])

    def test_files_that_cannot_be_checked_are_told_too(self):
        document = self.json("nowhere", "mounts", ".", "valid", status=2)
        named = {file["file"]: file for file in document["files"]}
        self.assertEqual(named["nowhere"]["diagnostics"], [
            {"code": "MP090", "severity": "error", "file": "nowhere", "message": "No such file or directory"}])
        self.assertEqual(named["mounts"]["outcome"], "notAgentFile")
        self.assertEqual(named["mounts"]["diagnostics"][0]["code"], "MP091")
        self.assertEqual(document["summary"], {"checked": 6, "valid": 2, "invalid": 2, "notAgentFile": 1,
                                               "unreadable": 1, "passedOver": 3})
        self.assertEqual(self.check("gcc", "nowhere", status=2), "nowhere: error: No such file or directory [MP090]\n")
        self.assertEqual(self.check("github", "nowhere", status=2),
                         "::error file=nowhere,title=MP090::No such file or directory\n")

    USAGE_ERRORS = [
        (["--tidy", "valid"], "The following argument was not expected: --tidy"),
        ([], "PATH is required"),
        (["--jobs", "0", "valid"], "--jobs: Value 0 not in range 1 to 1024"),
        (["--system", "ar", "--config-root", "nowhere", "valid"], "nowhere: No such file or directory"),
        (["--\x1b[2J", "valid"], "The following argument was not expected: --\\x1B[2J"),
    ]

    def test_a_usage_error_is_told_in_the_format(self):
        for arguments, message in self.USAGE_ERRORS:
            with self.subTest(arguments):
                document = self.json(*arguments, status=2)
                self.assertEqual(document["files"], [])
                self.assertTrue(document["error"].pop("message").startswith(message))
                self.assertEqual(document["error"], {"code": "MP092", "severity": "error"})
                self.assertTrue(self.check("gcc", *arguments, status=2).startswith(f"mountprofile: error: {message}"))
                self.assertTrue(self.check("github", *arguments, status=2).startswith(
                    f"::error title=MP092::{message}"))

    def test_a_usage_error_is_told_in_sarif(self):
        for arguments, message in self.USAGE_ERRORS:
            with self.subTest(arguments):
                run = self.sarif(*arguments, status=2)
                self.assertEqual(run["results"], [])
                (notification,) = run["invocations"][0]["toolConfigurationNotifications"]
                self.assertTrue(notification["message"]["text"].startswith(message))

    def test_a_depfile_that_cannot_be_written_is_told_in_the_format(self):
        arguments = ["--depfile", "nowhere/x.d", "invalid"]
        message = "nowhere/x.d: No such file or directory"
        document = self.json(*arguments, status=2)
        self.assertEqual(document["error"], {"code": "MP092", "severity": "error", "message": message})
        self.assertEqual(document["summary"]["invalid"], 1)
        self.assertEqual([file["file"] for file in document["files"]], ["invalid"])
        gcc = self.check("gcc", *arguments, status=2)
        self.assertTrue(gcc.startswith("invalid:2:"), gcc)
        self.assertTrue(gcc.endswith(f"\nmountprofile: error: {message} [MP092]\n"), gcc)
        self.assertTrue(self.check("github", *arguments, status=2).endswith(f"\n::error title=MP092::{message}\n"))

    def test_a_depfile_that_cannot_be_written_is_told_in_sarif(self):
        run = self.sarif("--depfile", "nowhere/x.d", "invalid", status=2)
        self.assertEqual(len(run["results"]), 1)
        self.assertFalse(run["invocations"][0]["executionSuccessful"])
        (notification,) = run["invocations"][0]["toolConfigurationNotifications"]
        self.assertEqual(notification["message"]["text"], "nowhere/x.d: No such file or directory")

    def test_the_format_counts_wherever_it_stands(self):
        for arguments in (["check", "--format=json", "--tidy"], ["check", "--tidy", "--format", "json"],
                          ["check", "--format", "text", "--format", "json", "valid"]):
            result = subprocess.run([COMMAND, *arguments], capture_output=True, check=False)
            JSON_VALIDATOR.validate(json.loads(result.stdout))
            self.assertEqual((result.returncode, result.stderr), (2, b""))
        for arguments in (["check", "--format", "xml"], ["show", "--format", "json"], ["check", "--tidy"],
                          ["check", "--tidy", "--", "--format", "json"], ["check", "valid", "--format"]):
            result = subprocess.run([COMMAND, *arguments], capture_output=True, check=False)
            self.assertEqual((result.returncode, result.stdout), (2, b""))
            self.assertTrue(result.stderr.startswith(b"mountprofile: "))

    def test_names_and_texts_of_any_bytes_keep_to_the_form(self):
        name = b"\xc3\xa9\xff \x1b[2J%,:\n\xe2\x80\xae\xf0\x9f\x98\x80\xf4\x90\x80\x80\xed\xa0\x80"
        self.write(name, b"agentName: Fan\n/a, K, r, \"\xff\x1b\n")
        file = self.json(name, status=1)["files"][0]
        escapes = "\\xF4\\x90\\x80\\x80\\xED\\xA0\\x80"  # behind the last character, and half of one
        self.assertEqual(file["file"], "\u00e9\\xFF \x1b[2J%,:\n\u202e\U0001f600" + escapes)
        shown = "\u00e9\\xFF \\x1B[2J%,:\\x0A\\xE2\\x80\\xAE\U0001f600" + escapes
        gcc = self.check("gcc", name, status=1)
        self.assertTrue(gcc.startswith(f"{shown}:2:14: error: "), gcc)
        github = self.check("github", name, status=1)
        self.assertTrue(github.startswith("::error file=" + shown.replace("%", "%25").replace(",", "%2C")
                                          .replace(":", "%3A") + ",line=2,"), github)
        for text in (gcc, github):
            self.assertNotRegex(text, "[\x00-\x09\x0b-\x1f\x7f\u202e]")

    def test_sarif_names_files_by_references(self):
        name = b"\xff \x1b%:#?[]\n"
        self.write(name, b"agentName: Fan\n{\n")
        path = os.path.join(os.fsencode(self.directory), name)
        relative, absolute = self.sarif(name, path, status=1)["results"]
        uri = "%FF%20%1B%25%3A%23%3F%5B%5D%0A"
        self.assertEqual(relative["locations"][0]["physicalLocation"]["artifactLocation"]["uri"], uri)
        self.assertEqual(absolute["locations"][0]["physicalLocation"]["artifactLocation"]["uri"],
                         f"file://{self.directory}/{uri}")

    def test_the_output_is_the_same_for_any_number_of_jobs(self):
        for number in range(60):
            self.write(f"many{number}", f"agentName: Fan\n/a, {'K' if number % 3 else 'k'}, r\n" + "\n" * number)
        for form in ("json", "sarif", "gcc", "github"):
            one = self.check(form, "--jobs", "1", ".", status=1)
            for jobs in ("2", "16"):
                self.assertEqual(self.check(form, "--jobs", jobs, ".", status=1), one)

    def conformance_agents(self):
        agents = sorted(glob.glob(os.path.join(SOURCE_DIR, "conformance/*/*/agent")))
        self.assertGreater(len(agents), 200)
        return agents

    def test_every_conformance_case_is_told_as_the_text_form_tells_it(self):
        agents = self.conformance_agents()
        document = self.json(*agents, status=2)
        codes = set()
        for file in document["files"]:
            for diagnostic in file["diagnostics"]:
                codes.add(diagnostic["code"])
                self.assertTrue("line" in diagnostic or diagnostic["code"] in ("MP090", "MP091"), file)
        self.assertNotIn("MP000", codes)
        self.assertGreater(len(codes), 40)
        text = subprocess.run([COMMAND, "check", *agents], capture_output=True, check=False).stderr.decode("latin-1")
        shown = re.findall(r"^      = (MP\d{3}):|\[(MP09\d)\]$", text, re.M)
        self.assertEqual([a or b for a, b in shown],
                         [d["code"] for file in document["files"] for d in file["diagnostics"]])


class SchemaTest(unittest.TestCase):
    def test_the_schema_refuses_what_the_command_does_not_promise(self):
        good = {"schema": "urn:mountprofile:check:1", "tool": {"name": "mountprofile", "version": "1.0.0"},
                "files": [{"file": "a", "outcome": "valid", "diagnostics": []}],
                "summary": {"checked": 1, "valid": 1, "invalid": 0, "notAgentFile": 0, "unreadable": 0,
                            "passedOver": 0}, "exitStatus": 0}
        JSON_VALIDATOR.validate(good)
        for change in ({"schema": "urn:mountprofile:check:2"}, {"exitStatus": 3}, {"more": 1},
                       {"files": [{"file": "a", "outcome": "invalid", "diagnostics": []}]},
                       {"error": {"code": "MP092", "severity": "error", "message": "x"}},
                       {"files": [{"file": "a", "outcome": "invalid", "diagnostics": [
                           {"code": "42", "severity": "error", "message": "x"}]}]}):
            self.assertFalse(JSON_VALIDATOR.is_valid({**good, **change}), change)


def main():
    if IS_FOR_SARIF and not SARIF_VALIDATOR:
        print(f"skipped: no SARIF schema at '{SARIF_SCHEMA}': name one in the environment variable SARIF_SCHEMA")
        return 77
    names = [f"{case.__name__}.{name}" for case in (FormatsTest, SchemaTest)
             for name in unittest.defaultTestLoader.getTestCaseNames(case) if ("sarif" in name) == IS_FOR_SARIF]
    return 0 if unittest.main(argv=[sys.argv[0], *names], exit=False).result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
