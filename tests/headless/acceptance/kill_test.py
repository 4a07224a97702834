"""Kills imports while they save onto an existing project: kill_test.py FELSPAR

After each kill the project file must be whole, the old one or the new one. The kills come as soon as the save begins or
up to 1.5 ms later; where files are saved too quickly for any of them to come in time, the test is skipped.
"""

import contextlib
import os
import pathlib
import signal
import subprocess
import tempfile
import time
import wave

from felspar import PROGRAM, run_import, skip

LINES = 400
ROUNDS = 16


def write_lines(folder, count):
    """Lines of one second each, all links to one file."""
    folder.mkdir()
    source = folder / "line"
    with wave.open(str(source), "wb") as recording:
        recording.setparams((1, 2, 8000, 0, "NONE", ""))
        recording.writeframes(bytes(range(0, 100, 4)) * 640)
    for number in range(count):
        os.link(source, folder / f"line_{number}.wav")


def state_of(folder):
    files = [(file.name, file.stat()) for file in os.scandir(folder)]
    return {(name, status.st_ino, status.st_size) for name, status in files if status.st_size > 0}


def kill_while_it_saves(command, folder, delay_seconds):
    """Kills the command `delay_seconds` after it first wrote to a file in the folder. @returns whether it still ran"""
    before = state_of(folder)
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL)
    while process.poll() is None:
        with contextlib.suppress(FileNotFoundError):  # a file that went while it was looked at
            if state_of(folder) - before:
                break
    time.sleep(delay_seconds)
    process.kill()
    return process.wait() == -signal.SIGKILL


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        write_lines(folder / "subject", LINES)
        write_lines(folder / "base", LINES)
        sides = [folder / "subject", folder / "base"]
        project = folder / "project" / "lines.rpp"
        project.parent.mkdir()
        run_import(*sides, "-o", project)
        old = project.read_bytes()
        run_import(*sides, "--from-end", "--onto", project)
        new = project.read_bytes()

        killed_with = {"old": 0, "new": 0}
        for number in range(ROUNDS):
            project.write_bytes(old)
            command = [PROGRAM, "import", *sides, "--from-end", "--onto", project]
            was_killed = kill_while_it_saves(command, project.parent, number % 4 * 0.0005)
            left = project.read_bytes()
            assert left in (old, new), f"{len(left)} bytes of neither {len(old)} nor {len(new)} are left"
            killed_with["old" if left == old else "new"] += was_killed
        print(f"killed while saving: {killed_with}")
        project.write_bytes(old)
        run_import(*sides, "--from-end", "--onto", project)
        assert project.read_bytes() == new, "what the killed left behind changes the next import"
        if not killed_with["old"]:
            skip("files are saved too quickly here for a kill to hit")


if __name__ == "__main__":
    main()
