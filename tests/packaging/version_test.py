"""One version, wherever it is shown."""

import os
import pathlib
import re
import subprocess
import sys
import unittest

import meridek_felspar

PROGRAM = os.environ["FELSPAR_PROGRAM"]
TREE = pathlib.Path(__file__).parents[2]


def output(*command, **environment):
    done = subprocess.run(command, capture_output=True, text=True, env={**os.environ, **environment})
    return done.returncode, done.stdout.strip(), done.stderr.strip()


class Version(unittest.TestCase):
    def test_all_tell_the_same(self):
        version = re.search(r"^project\(\S+ VERSION (\S+)", (TREE / "CMakeLists.txt").read_text(), re.MULTILINE)[1]
        self.assertEqual(output(PROGRAM, "--version"), (0, f"felspar {version}", ""))
        self.assertEqual(meridek_felspar.__version__, version)
        self.assertEqual(
            output(sys.executable, "-m", "meridek_felspar", "--version"),
            (0, f"meridek_felspar {version}, library {os.environ['FELSPAR_LIBRARY']}", ""),
        )
        self.assertIn(f"<h1>Reference of MERIDEK_FELSPAR {version}</h1>", output(PROGRAM, "api", "--format", "html")[1])
        changes = re.search(r"^## (\S+)", (TREE / "CHANGELOG.md").read_text(), re.MULTILINE)[1]
        self.assertEqual(changes, version)

    def test_without_a_library_there_is_none(self):
        show = "import meridek_felspar; print(hasattr(meridek_felspar, '__version__'))"
        self.assertEqual(output(sys.executable, "-c", show, FELSPAR_LIBRARY="/missing")[:2], (0, "False"))
        status, _, message = output(sys.executable, "-m", "meridek_felspar", "--version", FELSPAR_LIBRARY="/missing")
        self.assertEqual(status, 1)
        self.assertIn("/missing", message)

    def test_another_library_is_named(self):
        other = os.environ["FELSPAR_HEADLESS_LIBRARY"]
        status, _, message = output(sys.executable, "-m", "meridek_felspar", "--version", FELSPAR_LIBRARY=other)
        self.assertEqual(status, 1)
        self.assertIn(other, message)
        self.assertNotIn("Traceback", message)


if __name__ == "__main__":
    unittest.main()
