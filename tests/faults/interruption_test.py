"""Sends signals to the commands while they work: interruption_test.py BUILD"""

import contextlib
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import unittest

from trial_folder import Contents, command_line, make_inputs, write_speech

PROGRAM = pathlib.Path(sys.argv.pop(1)).resolve() / "bin" / "felspar"

BEGINNING = """
reaper.atexit(function() reaper.ShowConsoleMsg("end\\n") end)
reaper.InsertTrackAtIndex(0, false)
local function ready() print("ready") io.stdout:flush() end
"""
DEFERS = "local function turn() ready() reaper.defer(turn) end turn()"
LOOPS_AND_CATCHES = "ready() while true do pcall(function() while true do end end) end"
LOOPS_OUT_OF_REACH = "coroutine.wrap(function() ready() while true do end end)()"
SIGNALS_ITSELF_AND_ENDS = "ready() os.execute('kill -TERM $PPID')"
SIGNALS = {signal.SIGINT: 130, signal.SIGTERM: 143, signal.SIGHUP: 129}  # and the status that they give

# Whoever started the tests may ignore them (nohup, a shell's background), and the commands would inherit that.
for number in SIGNALS:
    signal.signal(number, signal.SIG_DFL)


def handles(process, number):
    """Whether the process has a handler for the signal, which the first signal takes away."""
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    return int(re.search(r"^SigCgt:\s*(\w+)", status, re.MULTILINE)[1], 16) >> (number - 1) & 1


class Interruption(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def start(self, *words, **options):
        streams = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE}
        process = subprocess.Popen([PROGRAM, *words], cwd=self.folder, text=True, **(streams | options))
        self.addCleanup(process.kill)
        return process

    def start_script(self, text, **options):
        """Returns when the script says that it is ready."""
        (self.folder / "script.lua").write_text(BEGINNING + text)
        process = self.start("run", "script.lua", "--save", "out.rpp", **options)
        self.assertEqual(process.stdout.readline(), "ready\n")
        return process

    def start_import(self, ratio, renders):
        """Returns when the folder of takes holds so many, those of an earlier project included."""
        process = self.start(*command_line("import", ratio))
        while process.poll() is None:
            with contextlib.suppress(FileNotFoundError):
                if len(os.listdir(self.folder / "out-takes")) >= renders:
                    break
        return process

    def ended(self, process, *signals):
        """@returns the process's status, standard output and standard error, after the signals"""
        for number in signals:
            process.send_signal(number)
        output, errors = process.communicate(timeout=60)
        return process.returncode, output, errors

    def is_saved(self):
        return (self.folder / "out.rpp").exists()

    def test_waiting_script_is_saved(self):
        for number, status in SIGNALS.items():
            with self.subTest(number=number):
                (self.folder / "out.rpp").unlink(missing_ok=True)
                ended, output, errors = self.ended(self.start_script(DEFERS), number)
                self.assertEqual(errors, f"felspar: interrupted by {number.name}: the project was saved\n")
                self.assertEqual(ended, status)
                self.assertTrue(output.endswith("end\n"))
                self.assertTrue(self.is_saved())

    def test_script_that_ends_in_time_is_saved(self):
        self.assertEqual(self.ended(self.start_script(SIGNALS_ITSELF_AND_ENDS))[:2], (143, "end\n"))
        self.assertTrue(self.is_saved())

    def test_endless_script_is_not_saved(self):
        ended = self.ended(self.start_script(LOOPS_AND_CATCHES), signal.SIGTERM)
        self.assertEqual(ended, (143, "end\n", "felspar: interrupted by SIGTERM: nothing was saved\n"))
        self.assertFalse(self.is_saved())

    def test_second_signal_ends_at_once(self):
        process = self.start_script(LOOPS_OUT_OF_REACH)
        process.send_signal(signal.SIGINT)
        while handles(process, signal.SIGINT):
            pass
        self.assertEqual(self.ended(process, signal.SIGHUP)[0], -signal.SIGHUP)

    def test_ignored_signal_stays_ignored(self):
        process = self.start_script(DEFERS, preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        self.assertEqual(self.ended(process, signal.SIGHUP, signal.SIGINT)[0], 130)

    def test_ride_keeps_finished_renders(self):
        write_speech(self.folder / "first.wav", 60, 1, 300)
        names = ["first.wav", *(f"{number}.wav" for number in range(40))]
        for name in names[1:]:
            os.link(self.folder / "first.wav", self.folder / name)
        process = self.start("ride", *names, "--project", "out.rpp")
        while "first.wav" not in process.stdout.readline():
            pass
        status, output, errors = self.ended(process, signal.SIGINT)
        self.assertEqual(errors, "felspar: interrupted by SIGINT: what was ridden stays, no project was written\n")
        self.assertEqual(status, 130)
        ridden = os.listdir(self.folder / "ridden")
        self.assertIn(f"{len(ridden)} of {len(names)} files ridden into ridden", output)
        self.assertLessEqual(set(ridden), set(names))
        self.assertIn("first.wav", ridden)
        self.assertFalse(self.is_saved())

    def test_import_changes_nothing(self):
        make_inputs(self.folder)
        for number in range(400):
            for side in ["subject", "base"]:
                os.link(self.folder / side / "anna.wav", self.folder / side / f"{number}.wav")
        ended = self.ended(self.start_import(0, renders=3), signal.SIGTERM)
        self.assertEqual(ended, (143, "", "felspar: interrupted by SIGTERM: nothing was imported\n"))
        self.assertEqual(sorted(os.listdir(self.folder)), ["base", "script.lua", "subject"])
        self.start(*command_line("import", 0)).communicate()
        before = Contents(self.folder)
        process = self.start_import(1, renders=len(os.listdir(self.folder / "out-takes")) + 100)
        self.assertEqual(self.ended(process, signal.SIGTERM)[0], 143)
        self.assertEqual(Contents(self.folder).keys(), before.keys())
        self.assertEqual(Contents(self.folder), before)

    def test_closed_output_costs_no_project(self):
        make_inputs(self.folder)
        for command in ["import", "ride", "run"]:
            with self.subTest(command=command):
                reader, writer = os.pipe()
                os.close(reader)
                process = self.start(*command_line(command, 0), stdout=writer)
                os.close(writer)
                status, _, errors = self.ended(process)
                self.assertEqual(errors, "felspar: the standard output could not be written to its end\n")
                self.assertEqual(status, 1)
                self.assertTrue(Contents(self.folder).audio_of_project())
                (self.folder / "out.rpp").unlink()


if __name__ == "__main__":
    unittest.main()
