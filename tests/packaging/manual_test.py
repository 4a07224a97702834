"""The manual page and the shells' completions, which are made from the command's options.

The completions are read by the shells themselves; zsh and fish only where they are installed.
"""

import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["FELSPAR_PROGRAM"]


def felspar(*arguments):
    return subprocess.run([PROGRAM, *arguments], check=True, capture_output=True, text=True).stdout


def in_zsh(script, line):
    """The line after Tab, as zsh then runs it: a command typed before it prints it."""
    child, terminal = pty.fork()
    if child == 0:
        os.environ["TERM"] = "dumb"
        os.execvp("zsh", ["zsh", "-f", "-i"])
    ready = f"autoload -U compinit; compinit -u -D; source {script}; print -r -- REA''DY\n"
    os.write(terminal, ready.encode())
    shown = read_until(terminal, "READY")
    os.write(terminal, f"{line}\t\x01print -r -- DO''NE \n".encode())
    shown = read_until(terminal, r"DONE [^\r\n]*[\r\n]")
    os.close(terminal)
    os.waitpid(child, 0)
    return re.search(r"DONE ([^\r\n]*)", shown)[1].strip()


def read_until(terminal, pattern):
    shown = ""
    while not re.search(pattern, shown):
        if not select.select([terminal], [], [], 120)[0]:
            raise TimeoutError(shown)
        shown += os.read(terminal, 4096).decode(errors="replace")
    return shown


class Manual(unittest.TestCase):
    def test_page_has_every_command_and_option(self):
        page = felspar("manual").replace("\\-", "-")
        commands = re.findall(r"^  (\w+)  ", felspar("--help").split("Subcommands:")[1], re.MULTILINE)
        self.assertIn("import", commands)
        for command in commands:
            section = re.search(rf"^\.SH felspar {command}\n(.*?)^\.SH", page, re.MULTILINE | re.DOTALL)[1]
            options = re.findall(r"^  ((?:-\w,)?--[\w-]+)", felspar(command, "--help"), re.MULTILINE)
            self.assertIn("-h,--help", options)
            for name in ",".join(options).split(","):
                self.assertIn(f"\\fB{name}\\fR", section)

    @unittest.skipUnless(shutil.which("groff"), "no groff")
    def test_page_is_well_formed(self):
        done = subprocess.run(["groff", "-man", "-Tutf8", "-ww"], input=felspar("manual"), capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("existing project stays", re.sub(r"\s+", " ", done.stdout))


class Completions(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(scratch.name)
        for name in ("scene.rpp", "line one.wav", "script.lua"):
            pathlib.Path(name).touch()
        pathlib.Path("takes").mkdir()

    def script(self, shell):
        """In a folder of its own, so that no shell offers it."""
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        file = pathlib.Path(scratch.name, shell)
        file.write_text(felspar("completion", shell))
        return file

    def test_bash(self):
        call = 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _felspar; printf "%s\\n" "${COMPREPLY[@]}"'
        script = self.script("bash")
        cases = {
            ("im",): {"import"},
            ("--v",): {"--version"},
            ("import", "--lo"): {"--loudness"},
            ("import", "--loudness", ""): {"precise", "coarse"},
            ("import", "--loudness", "=", "c"): {"coarse"},
            ("import", "--ride", "--ratio", "="): set("01234"),
            ("import", "--group", "s"): set(),
            ("import", ""): {"takes"},
            ("import", "-o", ""): {"scene.rpp", "takes"},
            ("run", ""): {"script.lua", "takes"},
            ("run", "script.lua", "l"): {"line one.wav"},
            ("ride", "li"): {"line one.wav"},
            ("completion", "z"): {"zsh"},
            ("install", "--resource-path", ""): {"takes"},
            ("api", "x"): set(),
        }
        for words, expected in cases.items():
            with self.subTest(words=words):
                command = ["bash", "-c", call, "bash", script, "felspar", *words]
                shown = subprocess.run(command, check=True, capture_output=True, text=True).stdout
                self.assertEqual(set(shown.splitlines()) - {""}, expected)

    def test_bash_gives_no_slash_to_a_command_that_is_a_folder_too(self):
        call = 'compopt() { echo "$@"; }; source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _felspar'
        for words, expected in ((["proj"], ""), (["run", "--project", ""], "-o filenames\n")):
            command = ["bash", "-c", call, "bash", self.script("bash"), "felspar", *words]
            shown = subprocess.run(command, check=True, capture_output=True, text=True).stdout
            self.assertEqual(shown, expected)
        self.assertIn("\ncomplete -F _felspar felspar\n", felspar("completion", "bash"))

    def test_offer_any_file_only_for_words_that_mean_one(self):
        words = re.findall(r":([^:\s]+):_files(?! -)", felspar("completion", "zsh"))
        self.assertEqual(set(words), {"FILE", "PATH", "ARGS"})

    # What shells make of a line.
    LINES = {
        "felspar im": "felspar import",
        "felspar import --lo": "felspar import --loudness",
        "felspar import --loudness c": "felspar import --loudness coarse",
        "felspar api --format ht": "felspar api --format html",
        "felspar import takes t": "felspar import takes takes",
        "felspar run --project s": "felspar run --project scene.rpp",
        "felspar project s": "felspar project scene.rpp",
    }

    @unittest.skipUnless(shutil.which("zsh"), "no zsh")
    def test_zsh(self):
        script = self.script("zsh")
        for line, expected in self.LINES.items():
            with self.subTest(line=line):
                self.assertEqual(in_zsh(script, line).rstrip("=/"), expected)

    @unittest.skipUnless(shutil.which("fish"), "no fish")
    def test_fish(self):
        script = self.script("fish")
        for line, expected in self.LINES.items():
            ask = f"source {script}; complete -C '{line}'"
            shown = subprocess.run(["fish", "--no-config", "-c", ask], check=True, capture_output=True, text=True).stdout
            with self.subTest(line=line):
                self.assertEqual(re.split(r"[\t/\n]", shown)[0], expected.split()[-1])  # others come after it


if __name__ == "__main__":
    unittest.main()
