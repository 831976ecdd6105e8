"""version_test.py SOURCE_DIR VERSION: the version of the project is told in several places, the same in all of them."""
import os
import re
import sys
import unittest

SOURCE, VERSION = sys.argv[1:3]


class Version(unittest.TestCase):
    def told_in(self, path, pattern):
        with open(os.path.join(SOURCE, path), encoding="utf-8") as file:
            found = re.search(pattern, file.read(), re.M)
        self.assertIsNotNone(found, f"{path}: nothing like {pattern}")
        return found.group(1)

    def test_the_changelogs_begin_with_it(self):
        self.assertEqual(self.told_in("CHANGELOG.md", r"^## \[(.*?)\]"), VERSION)
        self.assertEqual(self.told_in("debian/changelog", r"\A\S+ \((.*?)\)"), VERSION)

    def test_the_packages_carry_its_first_number_like_the_soname(self):
        soname = VERSION.split(".", maxsplit=1)[0]
        self.assertEqual(self.told_in("debian/control", r"^Package: libcorvidmountprofilehdlr(\d+)$"), soname)
        self.assertEqual(self.told_in(f"debian/libcorvidmountprofilehdlr{soname}.symbols", r"\.so\.(\d+) "), soname)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
