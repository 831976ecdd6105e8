"""completion_test.py SHELL SCRIPT COMMAND: what a shell offers when somebody types a command line and asks for more.

bash and zsh run in a terminal, and are asked to put all that they offer into the line; fish tells what it would offer.
Exit status 77 where the shell is missing, or terminals are.
"""
import os
import pty
import select
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest

from help_text import commands_of, help_of, options_of

SHELL, SCRIPT, COMMAND = sys.argv[1:4]
NEEDED = {"bash": "/usr/share/bash-completion/bash_completion"}
PATIENCE = 60  # seconds without a sign of life after which a shell is given up
FILES = ["Fan", "late.inc", "profiles"]


class Terminal:
    """A shell in a terminal of its own, in which ^Xa inserts all that can be offered and ^Xd shows the line."""

    def __init__(self, command, setup, directory):
        self.main, terminal = pty.openpty()
        environment = {"PATH": os.environ["PATH"], "HOME": directory, "TERM": "dumb", "INPUTRC": "/dev/null", "LC_ALL": "C"}
        self.shell = subprocess.Popen(command, stdin=terminal, stdout=terminal, stderr=terminal, cwd=directory,
                                      env=environment, start_new_session=True)
        os.close(terminal)
        self.send("\n".join(setup) + "\necho set''up\n")
        self.read_until("setup\r\n")

    def send(self, text):
        os.write(self.main, text.encode())

    def read_until(self, mark):
        text = ""
        while mark not in text:
            if not select.select([self.main], [], [], PATIENCE)[0]:
                raise TimeoutError(f"the shell says nothing more: {text!r}")
            text += os.read(self.main, 4096).decode(errors="replace")
        return text

    def line_after(self, typed):
        self.send("\x15" + typed + "\x18a\x18d")
        return self.read_until(">>>").split("<<<")[-1].split(">>>")[0]

    def close(self):
        os.close(self.main)
        self.shell.kill()
        self.shell.wait()


def bash(directory):
    return Terminal(["bash", "--noprofile", "--norc", "-i"], [
        "source " + NEEDED["bash"],
        "source " + shlex.quote(SCRIPT),
        "bind 'set enable-bracketed-paste off'",
        r"""bind '"\C-xa": insert-completions'""",
        r"""bind -x '"\C-xd": printf "<<<%s>>>" "$READLINE_LINE"'"""], directory)


def zsh(directory):
    return Terminal(["zsh", "-f", "-i"], [
        f"fpath=( {shlex.quote(os.path.dirname(SCRIPT))} $fpath )",
        "autoload -Uz compinit; compinit -u -D",
        "zle -C all-matches complete-word _generic",
        "zstyle ':completion:all-matches::::' completer _all_matches _complete",
        "zstyle ':completion:all-matches:*' insert true",
        "show-line() { print -rn -- \"<<<$BUFFER>>>\" }; zle -N show-line",
        "bindkey '^Xa' all-matches '^Xd' show-line '^U' kill-whole-line"], directory)


class Fish:
    def __init__(self, directory):
        self.directory = directory

    def line_after(self, typed):
        run = subprocess.run(["fish", "--no-config", "-c", f"source {shlex.quote(SCRIPT)}; complete -C {shlex.quote(typed)}"],
                             cwd=self.directory, capture_output=True, text=True, check=True,
                             env={"PATH": os.environ["PATH"], "HOME": self.directory})
        assert run.stderr == "", run.stderr
        offered = [line.split("\t")[0] for line in run.stdout.splitlines()]
        return typed[:typed.rfind(" ") + 1] + " ".join(offered)

    def close(self):
        pass


class Completion(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.directory = tempfile.TemporaryDirectory()
        os.mkdir(os.path.join(cls.directory.name, "profiles"))
        for name in ("Fan", "late.inc"):
            open(os.path.join(cls.directory.name, name), "w", encoding="ascii").close()
        cls.shell = {"bash": bash, "zsh": zsh, "fish": Fish}[SHELL](cls.directory.name)
        cls.commands = commands_of(COMMAND)

    @classmethod
    def tearDownClass(cls):
        cls.shell.close()
        cls.directory.cleanup()

    def offered(self, typed):
        """The words that the shell puts in place of the last one, less what shows that something may follow."""
        line = self.shell.line_after(typed)
        kept = typed[:typed.rfind(" ") + 1]
        self.assertTrue(line.startswith(kept), (typed, line))
        return [] if line == typed else sorted(word.rstrip("=/") for word in line[len(kept):].split())

    def expect(self, typed, words):
        self.assertEqual(self.offered(typed), sorted(words), typed)

    @staticmethod
    def spellings(*command):
        groups = options_of(help_of(COMMAND, *command))
        return [option.split(", ")[-1].split(" ")[0] for option in set().union(*groups.values())]

    def options_with_words(self):
        """All options whose values are fixed words: (command, option, words)."""
        for command in self.commands:
            for option in set().union(*options_of(help_of(COMMAND, command)).values()):
                name, _, value = option.split(", ")[-1].partition(" ")
                if value and not value[0].isupper():
                    yield command, name, value.split("|")

    def test_the_commands_are_offered_first(self):
        self.expect("mountprofile ", self.commands)
        self.expect("mountprofile tok", ["tokens"])

    def test_all_options_of_a_command_are_offered_and_no_others(self):
        self.expect("mountprofile --", self.spellings())
        for command in self.commands:
            self.expect(f"mountprofile {command} --", self.spellings(command))
            self.expect(f"mountprofile {command} Fan --", self.spellings(command))

    def test_words_of_options_are_offered(self):
        found = list(self.options_with_words())
        self.assertIn(("check", "--format"), [row[:2] for row in found])
        for command, option, words in found:
            self.expect(f"mountprofile {command} {option} ", words)
            self.expect(f"mountprofile {command} {option} {words[0][:2]}",
                        [word for word in words if word.startswith(words[0][:2])])

    def test_files_are_offered_where_files_stand(self):
        for typed in ("show ", "tokens ", "check ", "check Fan ", "show --json ", "show --config-root "):
            self.expect("mountprofile " + typed, FILES)
        self.expect("mountprofile show --no-defaults la", ["late.inc"])

    def test_nothing_is_offered_for_what_only_the_user_knows(self):
        for typed in ("show --system ", "show --cell ", "check --jobs "):
            self.expect("mountprofile " + typed, [])

    def test_behind_two_hyphens_everything_is_a_file(self):
        self.expect("mountprofile show -- ", FILES)
        self.expect("mountprofile show -- --", [])

    def test_a_value_behind_an_equals_sign_is_completed(self):
        self.assertEqual(self.shell.line_after("mountprofile check --format=te").strip(), "mountprofile check --format=text")
        self.assertEqual(self.shell.line_after("mountprofile show --config-root=F").strip(),
                         "mountprofile show --config-root=Fan")


if __name__ == "__main__":
    for needed in (shutil.which(SHELL), NEEDED.get(SHELL, "/")):
        if not (needed and os.path.exists(needed)):
            print(f"{SHELL} or what it needs for completion is missing")
            sys.exit(77)
    try:
        for descriptor in pty.openpty():
            os.close(descriptor)
    except OSError as error: # as in a root without /dev/pts
        print(f"there is no terminal to type into: {error}")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
