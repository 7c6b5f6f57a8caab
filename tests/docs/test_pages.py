"""The commands of the pages, run as they stand: in a POSIX shell, in the order of the page, in a directory with the examples.

Usage: test_pages.py TOOL LIBRARY-DIRECTORY COMPILER-OPTIONS [PAGE...]

Blocks of `sh` must succeed line by line; lines that build, install or run a script of the source tree are not run, but
what they name must be there. In other blocks lines that begin with "$ " must print what stands below them. A block after
"save as `name`:" becomes that file.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGES = ["README.md", *(f"docs/{name}.md" for name in (
    "tutorial", "recipes", "tool", "systems", "maps", "gallery", "georeferencing", "embedding", "performance"))]
NOT_RUN = ("scripts/", "cmake ", "cpack ", "sudo ", "pip ", "PATH=")
SHELL = shutil.which("dash") or "/bin/sh"


class Workshop:
    """A directory where commands run with the tool, the library and the examples at hand."""

    def __init__(self, tool, library, options):
        self.temporary = tempfile.TemporaryDirectory()
        self.place = pathlib.Path(self.temporary.name)
        (self.place / "examples").symlink_to(ROOT / "examples")
        (self.place / "orvex.pc").write_text(
            f"Name: orvex\nDescription: as built\nVersion: 1\nCflags: -I{ROOT}/include {options}\n"
            f"Libs: -L{library} -lorvex -Wl,-rpath,{library} {options}\n")
        self.environment = dict(os.environ, PATH=f"{pathlib.Path(tool).parent}{os.pathsep}{os.environ['PATH']}",
                                PKG_CONFIG_PATH=str(self.place))

    def run(self, command):
        """Exit status and all that a command prints."""
        done = subprocess.run([SHELL, "-c", command], cwd=self.place, env=self.environment, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, encoding="utf-8", timeout=300)
        return done.returncode, done.stdout.rstrip("\n")


class Pages(unittest.TestCase):
    def check_script(self, workshop, script):
        for line in script.replace("\\\n", " ").splitlines():
            command = line.partition(" #")[0].strip()
            if command.startswith(NOT_RUN):
                for name in re.findall(r"(?:^|(?<=\s))(?:\./)?((?:scripts|python|examples)(?:/\w+)*)", command):
                    self.assertTrue((ROOT / name).exists(), line)
            elif command:
                status, printed = workshop.run(line)
                self.assertEqual(status, 0, f"{line}\n{printed}")

    def check_session(self, workshop, session):
        for command, shown in re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", session, re.M):
            self.assertEqual(workshop.run(command)[1], shown.rstrip("\n"), command)

    def check_block(self, workshop, lead, language, content):
        """Whether there was something to check."""
        name = re.search(r"\bsave (?:this )?as\s+`([\w.-]+)`[^`]*:\n$", lead, re.I)
        if name:
            (workshop.place / name[1]).write_text(content)
        elif language == "sh":
            self.check_script(workshop, content)
        elif content.startswith("$ "):
            self.check_session(workshop, content)
        else:
            return False
        return True

    def test_commands(self):
        for page in PAGES:
            workshop = Workshop(*ARGUMENTS)
            text = (ROOT / page).read_text(encoding="utf-8")
            blocks = re.findall(r"((?:^[^\n]+\n)*)\n*^```(\w*)\n(.*?)^```$", text, re.M | re.S)
            checked = 0
            for lead, language, content in blocks:
                with self.subTest(page=page, block=content.split("\n", 1)[0]):
                    checked += self.check_block(workshop, lead, language, content)
            self.assertGreater(checked, 0, page)
            workshop.temporary.cleanup()


class Names(unittest.TestCase):
    """The headers call the values of their catalogues as the library does."""

    def test_values(self):
        for header, what in {"datum": "datums", "ellipsoid": "ellipsoids", "zones": "zones", "projdata": "projections"}.items():
            listed = subprocess.run([ARGUMENTS[0], "list", what, "--csv"], capture_output=True, check=True, encoding="utf-8")
            names = {int(row.split(",")[0]): row for row in listed.stdout.splitlines()[1:]}
            text = (ROOT / f"include/orvex/{header}.h").read_text(encoding="utf-8")
            said = re.findall(r"^  (?:DT|ET|SZ|PT)_\w+ = (\d+),? +///< (.*)$", text, re.M)
            self.assertGreater(len(said), 28)
            for value, name in said:
                if int(value) in names:
                    self.assertIn(name, names.pop(int(value)).replace('"', ""))
            self.assertLessEqual(len(names), 1, names)  # one name is too long for the line of its value


if __name__ == "__main__":
    ARGUMENTS = [os.path.abspath(path) for path in sys.argv[1:3]] + [sys.argv[3]]
    PAGES = sys.argv[4:] or PAGES
    unittest.main(argv=sys.argv[:1])
