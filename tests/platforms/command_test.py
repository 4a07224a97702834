#!/usr/bin/env python3
"""The command of an archive, used as a user does, in the current folder.

Usage: command_test.py COMMAND...   (with the emulator that runs it, if it needs one)
"""
import csv
import math
import struct
import subprocess
import sys
import unittest
import wave
from pathlib import Path

command = sys.argv[1:]
here = Path.cwd()
names = ["Anna_001.wav", "Émile_002.wav", "台詞_003.wav"]


def felspar(*arguments):
    done = subprocess.run([*command, *map(str, arguments)], capture_output=True, check=False)
    if done.returncode != 0:
        raise AssertionError(f"{arguments}: {done.returncode}\n{done.stdout.decode()}{done.stderr.decode()}")
    return done.stdout.decode()


def write_tone(file, amplitude):
    """Half a second of 440 Hz that swells, at 44.1 kHz."""
    frames = (int(32767 * amplitude * min(1.0, i / 8000) * math.sin(i * 2 * math.pi * 440 / 44100)) for i in range(22050))
    with wave.open(str(file), "wb") as sound:
        sound.setnchannels(1)
        sound.setsampwidth(2)
        sound.setframerate(44100)
        sound.writeframes(b"".join(struct.pack("<h", frame) for frame in frames))


class Command(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        for folder, amplitude in (("日本 é", 0.1), ("en", 0.5)):
            (here / folder).mkdir(exist_ok=True)
            for name in names:
                write_tone(here / folder / name, amplitude)
        felspar("import", here / "日本 é", here / "en", "--group", "Anna", "--match", "--ride", "-o", here / "lines.rpp",
                "--csv", here / "lines.csv")

    def test_imports_and_matches(self):
        project = (here / "lines.rpp").read_text(encoding="utf-8")
        with open(here / "lines.csv", encoding="utf-8-sig", newline="") as table:
            rows = list(csv.DictReader(table))
        self.assertEqual(len(rows), len(names))
        for name in names:
            self.assertIn(Path(name).stem, project)

    def test_runs_scripts_with_the_plug_in(self):
        script = here / "count é.lua"
        script.write_text("""
            local tracks = reaper.CountTracks(0)
            local ok, text = reaper.MK_ReplaceSearchString("line_12", "\\\\d+", "<$&>", "")
            reaper.ShowConsoleMsg(tracks .. " tracks " .. text .. "\\n")
        """, encoding="utf-8")
        told = felspar("run", script, "--project", here / "lines.rpp")
        self.assertRegex(told, r"[1-9]\d* tracks line_<12>")

    @unittest.skipUnless(command[-1].endswith(".exe"), "Windows only")
    def test_imports_from_paths_like_those_of_servers(self):
        drive = "" if here.drive else "Z:"  # the emulator's name for the root
        root = "\\\\.\\" + drive + str(here).replace("/", "\\")
        felspar("import", root + "\\日本 é\\", root + "\\en", "-o", here / "of_server.rpp")
        project = (here / "of_server.rpp").read_text(encoding="utf-8")
        self.assertIn(root, project)
        self.assertIn("(6, 0 missing)", felspar("project", here / "of_server.rpp"))

    def test_lists_its_functions(self):
        self.assertIn("MK_GetTrackItemMute", felspar("api"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
