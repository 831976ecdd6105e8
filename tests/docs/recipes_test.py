#!/usr/bin/env python3
"""recipes_test.py COMMAND SOURCE: what users copy from here works: the hooks for pre-commit and the recipes for CI.

Exit status 77 without the module that reads YAML.
"""
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

try:
    import yaml
except ImportError:
    sys.exit(77)

COMMAND, SOURCE = (os.path.abspath(argument) for argument in sys.argv[1:3])
VALID = "agentName: Fan\ninclude: *.inc\n"
INVALID = "agentName: Fan\n/a, T, x\n"

# What the framework knows of a hook; values by their type.
HOOK_KEYS = {
    "id": str, "name": str, "description": str, "entry": str, "language": str, "args": list, "files": str,
    "exclude": str, "types": list, "types_or": list, "exclude_types": list, "always_run": bool, "fail_fast": bool,
    "verbose": bool, "pass_filenames": bool, "require_serial": bool, "minimum_pre_commit_version": str,
    "stages": list,
}


def content(name):
    with open(os.path.join(SOURCE, name), encoding="utf-8") as file:
        return file.read()


class Repository:
    """A directory with profiles, in which commands find mountprofile."""

    def __init__(self, test, agent):
        folder = tempfile.TemporaryDirectory()
        test.addCleanup(folder.cleanup)
        self.path = folder.name
        os.mkdir(os.path.join(self.path, "profiles"))
        self.write("profiles/agent", agent)
        self.write("profiles/fan.inc", "/fan, T, r\n")
        self.write("notes.txt", "no agent file\n")

    def write(self, name, text):
        with open(os.path.join(self.path, name), "w", encoding="utf-8") as file:
            file.write(text)

    def run(self, command):
        path = os.path.dirname(COMMAND) + os.pathsep + os.environ["PATH"]
        return subprocess.run(command, cwd=self.path, env={**os.environ, "PATH": path}, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)

    def report(self):
        with open(os.path.join(self.path, "mountprofile.sarif"), encoding="utf-8") as file:
            return json.load(file)


class Hooks(unittest.TestCase):
    hooks = yaml.safe_load(content(".pre-commit-hooks.yaml"))

    def test_are_defined_as_the_framework_wants_them(self):
        for hook in self.hooks:
            for key, value in hook.items():
                self.assertIsInstance(value, HOOK_KEYS[key], key)
            self.assertLessEqual({"id", "name", "entry", "language"}, hook.keys())
            self.assertEqual(hook["language"], "system")
        self.assertEqual(len({hook["id"] for hook in self.hooks}), len(self.hooks))

    def run_hook(self, hook, agent):
        repository = Repository(self, agent)
        names = ["profiles/agent", "profiles/fan.inc", "notes.txt"]
        matching = [name for name in names if re.search(hook.get("files", ""), name)]
        files = matching if hook.get("pass_filenames", True) else []
        return repository.run(shlex.split(hook["entry"]) + hook.get("args", []) + files)

    def test_let_valid_files_pass_and_no_others(self):
        for hook in self.hooks:
            self.assertEqual(self.run_hook(hook, VALID).returncode, 0, hook["id"])
            failed = self.run_hook(hook, INVALID)
            self.assertEqual(failed.returncode, 1, hook["id"])
            self.assertIn("profiles/agent:2:", failed.stdout)

    def test_are_named_rightly_by_the_page(self):
        page = content("docs/ci.md")
        example = yaml.safe_load(re.search(r"```yaml\n(.*?)```", page, re.S).group(1))
        ids = {hook["id"] for hook in self.hooks}
        for hook in example["repos"][0]["hooks"]:
            self.assertIn(hook["id"], ids)
        self.assertEqual(set(re.findall(r"^\| `([\w-]+)` \|", page, re.M)), ids)


class Workflow(unittest.TestCase):
    workflow = yaml.safe_load(content("examples/ci/workflow.yml"))
    steps = workflow["jobs"]["check"]["steps"]

    def runs(self):
        """The lines that call the command."""
        return [step["run"] for step in self.steps if step.get("run", "").startswith("mountprofile ")]

    def run_all(self, agent):
        repository = Repository(self, agent)
        return repository, [repository.run(["bash", "-e", "-o", "pipefail", "-c", line]) for line in self.runs()]

    def test_has_steps_that_either_run_or_use_something(self):
        self.assertEqual(self.workflow["permissions"]["security-events"], "write")
        for step in self.steps:
            self.assertEqual(len({"run", "uses"} & step.keys()), 1, step)

    def test_passes_for_valid_profiles(self):
        repository, results = self.run_all(VALID)
        self.assertEqual([result.returncode for result in results], [0, 0], results)
        self.assertEqual(repository.report()["runs"][0]["results"], [])

    def test_shows_an_error_and_reports_it(self):
        repository, results = self.run_all(INVALID)
        self.assertEqual([result.returncode for result in results], [1, 0], results)
        self.assertRegex(results[0].stdout, r"^::error .*file=profiles/agent,line=2\b")
        self.assertEqual(len(repository.report()["runs"][0]["results"]), 1)

    def test_uploads_the_report_that_it_writes(self):
        uploaded = [step["with"]["sarif_file"] for step in self.steps if "upload-sarif" in step.get("uses", "")]
        self.assertEqual(uploaded, ["mountprofile.sarif"])


class ShellRecipes(unittest.TestCase):
    def test_end_as_the_check_does_and_leave_a_report(self):
        for agent, status in ((VALID, 0), (INVALID, 1)):
            repository = Repository(self, agent)
            result = repository.run(["sh", os.path.join(SOURCE, "examples/ci/check-profiles.sh")])
            self.assertEqual(result.returncode, status, result.stdout)
            self.assertEqual(len(repository.report()["runs"][0]["results"]), status)
            self.assertEqual("profiles/agent:2:" in result.stdout, bool(status))

    def test_fail_where_nothing_could_be_checked(self):
        result = Repository(self, VALID).run(["sh", os.path.join(SOURCE, "examples/ci/check-profiles.sh"), "nowhere"])
        self.assertEqual(result.returncode, 2, result.stdout)

    def test_hook_of_the_page(self):
        script = re.search(r"```sh\n(.*?)```", content("docs/ci.md"), re.S).group(1)
        for agent, status in ((VALID, 0), (INVALID, 1)):
            self.assertEqual(Repository(self, agent).run(["sh", "-c", script]).returncode, status)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
