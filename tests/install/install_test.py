"""install_test.py CMAKE BUILD_DIR SOURCE_DIR COMPILER README_HOST VERSION: what `cmake --install` brings can be used.

It is installed below a temporary prefix, which is then moved. A host program is built on it in each way that the documents
tell. All compilers' include paths begin with a directory that holds an antlr3.h which does not compile.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

CMAKE, BUILD, SOURCE, COMPILER, README_HOST, VERSION = sys.argv[1:7]
AGENT = os.path.join(SOURCE, "examples", "standalone", "agent")


def run(*command, **environment):
    result = subprocess.run(command, capture_output=True, text=True, check=False, env={**os.environ, **environment})
    assert result.returncode == 0, f"{command}: exit status {result.returncode}\n{result.stdout}{result.stderr}"
    return result.stdout


def read(*path):
    with open(os.path.join(*path), encoding="utf-8") as file:
        return file.read()


def files_below(directory):
    return {os.path.relpath(os.path.join(folder, name), directory)
            for folder, _, names in os.walk(directory) for name in names}


class Install(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.directory = tempfile.TemporaryDirectory()
        first = cls.path("first place")
        run(CMAKE, "--install", BUILD, "--prefix", first)
        cls.prefix = cls.path("second", "place")
        os.mkdir(cls.path("second"))
        os.rename(first, cls.prefix)
        os.mkdir(cls.path("no-antlr"))
        with open(cls.path("no-antlr", "antlr3.h"), "w", encoding="ascii") as file:
            file.write("#error a public header asks for the parser library\n")
        cls.libdir = os.path.dirname(next(os.path.join(cls.prefix, name) for name in sorted(files_below(cls.prefix))
                                          if name.endswith("libCorvidMountProfileHdlr.so")))
        cls.pkgconfig = os.path.join(cls.libdir, "pkgconfig")
        cls.headers = os.path.join(cls.prefix, "include", "corvid-mount-profile")
        cls.flags = ["-I", cls.path("no-antlr"), "-Wall", "-Wextra", "-Wpedantic", "-Werror"]

    @classmethod
    def tearDownClass(cls):
        cls.directory.cleanup()

    @classmethod
    def path(cls, *names):
        return os.path.join(cls.directory.name, *names)

    def host_project(self, name, *instead):
        """The README's CMake project, in a directory of its own; maybe with other commands in place of find_package()."""
        [project] = re.findall(r"^```cmake\n((?:.*\n)*?)```$", read(SOURCE, "README.md"), re.M)
        source = self.path(name)
        os.mkdir(source)
        with open(os.path.join(source, "CMakeLists.txt"), "w", encoding="ascii") as file:
            file.write(re.sub(r"find_package\(.*?\)", "\n".join(instead), project) if instead else project)
        os.symlink(SOURCE, os.path.join(source, "corvid"))
        shutil.copy(README_HOST, os.path.join(source, "host.cpp"))
        build = os.path.join(source, "build")
        run(CMAKE, "-S", source, "-B", build, "-G", "Ninja", "-DCMAKE_PREFIX_PATH=" + self.prefix,
            "-DCMAKE_CXX_COMPILER=" + COMPILER, "-DCMAKE_CXX_FLAGS=" + " ".join(self.flags))
        return build

    def test_a_project_finds_the_cmake_package(self):
        build = self.host_project("consumer")
        run(CMAKE, "--build", build)
        [shown] = re.findall(r"^\$ \./host .*\n((?:.*\n)*?)```$", read(SOURCE, "README.md"), re.M)
        self.assertEqual(run(os.path.join(build, "host"), AGENT), shown)

    def test_a_project_takes_the_repository_as_a_subdirectory(self):
        commands = ["set( BUILD_TESTING OFF )", "add_subdirectory( corvid )"]
        for command in commands:
            self.assertIn(f"`{command}`", read(SOURCE, "README.md"))
        build = self.host_project("whole", *commands)
        steps = run("ninja", "-C", build, "-t", "commands", "host")
        self.assertRegex(steps, r"-o lib/libCorvidMountProfileHdlr\.so")
        self.assertRegex(steps, r"-o host ")
        self.assertNotIn("gtest", run("ninja", "-C", build, "-t", "targets", "all"))

    def test_pkg_config_tells_how_to_compile_and_link(self):
        page = read(SOURCE, "packaging", "man", "corvid-mount-profile.3")
        [program] = re.findall(r"^\.Bd -literal\n(#include (?:.*\n)*?)\.Ed$", page, re.M)
        with open(self.path("host.cpp"), "w", encoding="ascii") as file:
            file.write(program.replace("\\e", "\\"))
        [line] = re.findall(r"^\$ (c\+\+ .*)$", read(SOURCE, "README.md"), re.M)
        self.assertIn(line, page)
        run("sh", "-c", 'cd "$1" && ' + line.replace("c++", '"$2"', 1), "-", self.directory.name, COMPILER,
            PKG_CONFIG_PATH=self.pkgconfig, CPATH=self.path("no-antlr"))
        self.assertRegex(run(self.path("host"), AGENT, LD_LIBRARY_PATH=self.libdir), r"(?m)^\S+ all: 2 mounts$")
        mounts = self.path("mounts")
        with open(mounts, "w", encoding="ascii") as file:
            file.write("/a, K, r\n")
        other = subprocess.run([self.path("host"), mounts], env={**os.environ, "LD_LIBRARY_PATH": self.libdir}, check=False)
        self.assertEqual(other.returncode, 1, "it is no agent file")
        self.assertEqual(run("pkg-config", "--modversion", "corvid-mount-profile", PKG_CONFIG_PATH=self.pkgconfig).strip(),
                         VERSION)

    def test_pkg_config_serves_c_too(self):
        flags = run("pkg-config", "--cflags", "--libs", "corvid-mount-profile", PKG_CONFIG_PATH=self.pkgconfig).split()
        run("cc", "-std=c99", "-Wall", "-Wextra", "-Wpedantic", "-Werror", os.path.join(SOURCE, "examples", "c", "main.c"),
            *flags, "-o", self.path("c-host"))
        self.assertIn('"outcome": "valid"', run(self.path("c-host"), AGENT, LD_LIBRARY_PATH=self.libdir))

    def test_the_headers_compile_without_those_of_the_parser_library(self):
        headers = sorted(files_below(self.headers))
        self.assertIn("ProfileParser/MountProfileHdlr.h", headers)
        with open(self.path("all.cpp"), "w", encoding="ascii") as file:
            file.write("".join(f'#include "{name}"\n' for name in headers))
        run(COMPILER, "-std=c++20", *self.flags, "-I", self.headers, "-fsyntax-only", "-MD", "-MF", self.path("read"),
            self.path("all.cpp"))
        self.assertNotRegex(read(self.path("read")), r"(?i)antlr3")

    def test_whatever_marks_something_as_public_is_installed(self):
        installed = {os.path.basename(name) for name in files_below(self.headers)}
        for folder in ("ProfileStore", "ProfileParser", "ProfileDocument", "CInterface"):
            for name in sorted(os.listdir(os.path.join(SOURCE, folder))):
                if name.endswith(".h") and re.search(r"\bCORVID_(\w+_)?API\b", read(SOURCE, folder, name)):
                    self.assertIn(name, installed, f"{folder}/{name} marks something as public, but is not installed: "
                                                   "add it to the file set in ProfileParser/CMakeLists.txt")

    def test_the_command_runs_where_it_was_moved_to(self):
        command = os.path.join(self.prefix, "bin", "mountprofile")
        [library] = re.findall(r"libCorvidMountProfileHdlr\.so\.\d+ => (\S+)", run("ldd", command))
        self.assertEqual(os.path.dirname(os.path.realpath(library)), os.path.realpath(self.libdir))
        self.assertRegex(run(command, "show", AGENT), "^agent ")

    def test_manual_pages_and_completion_scripts_are_where_they_are_looked_for(self):
        share = files_below(os.path.join(self.prefix, "share"))
        self.assertLessEqual({
            "man/man1/mountprofile.1", "man/man5/mountprofile.5", "man/man3/corvid-mount-profile.3",
            "bash-completion/completions/mountprofile", "zsh/site-functions/_mountprofile",
            "fish/vendor_completions.d/mountprofile.fish"}, share)

    def test_nothing_that_is_installed_names_the_place_that_it_was_built_in(self):
        for name in sorted(files_below(self.prefix)):
            with open(os.path.join(self.prefix, name), "rb") as file:
                content = file.read()
            for place in (SOURCE, BUILD, self.path("first place")):
                self.assertNotIn(place.encode() + b"/", content, name)


if __name__ == "__main__":
    if not shutil.which("pkg-config"):
        print("pkg-config is missing")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
