"""Kills imports onto an existing project: kill_test.py FELSPAR

While they save: after each the project file must be whole, the old one or the new one. The kills come as soon as the
save begins or up to 1.5 ms later; where files are saved too quickly for any of them to come in time, the test is
skipped. While they render: the project that stands must play what it was saved with.
"""

import contextlib
import hashlib
import math
import os
import pathlib
import shutil
import signal
import struct
import subprocess
import tempfile
import time
import wave

from felspar import PROGRAM, items_of, run_import, skip

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


def write_speech(file):
    """Three seconds that swell and fall."""
    levels = [2000, 8000, 20000, 30000, 12000, 4000]
    samples = [
        int(levels[i // 8000] * abs(math.sin(2 * math.pi * i / 16000)) * math.sin(0.17 * i)) for i in range(48000)
    ]
    file.parent.mkdir(exist_ok=True)
    with wave.open(str(file), "wb") as recording:
        recording.setparams((1, 2, 16000, 0, "NONE", ""))
        recording.writeframes(struct.pack("<48000h", *samples))


def played_by(project):
    """The project file and what it plays."""
    files = [project, *sorted({item.file for item in items_of(project)})]
    return [hashlib.sha256(file.read_bytes()).hexdigest() for file in files]


def kill_while_it_renders():
    """An import with another ratio renders all lines anew. Each round starts from the same project and is killed
    a little later."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for number in range(12):
            for side in ("subject", "base"):
                write_speech(folder / side / f"line_{number}.wav")
        project = folder / "project" / "lines.rpp"
        project.parent.mkdir()
        sides = [folder / "subject", folder / "base"]
        run_import(*sides, "--match", "--ride", "-o", project)
        old = played_by(project)
        shutil.copytree(project.parent, folder / "kept")
        options = ["--match", "--ride", "--ratio", "3", "-o", project]
        start = time.monotonic()
        run_import(*sides, *options)
        duration = time.monotonic() - start
        new = played_by(project)
        assert set(old[1:]) - set(new[1:]), "the ratio makes a difference"
        left_as = {"old": 0, "new": 0}
        for number in range(ROUNDS):
            shutil.rmtree(project.parent)
            shutil.copytree(folder / "kept", project.parent)
            process = subprocess.Popen([PROGRAM, "import", *sides, *options], stdout=subprocess.DEVNULL)
            time.sleep(duration * (number + 0.5) / ROUNDS)
            process.kill()
            process.wait()
            left = played_by(project)
            assert left in (old, new), "the project plays what it was not saved with"
            left_as["old" if left == old else "new"] += 1
        print(f"killed while rendering: {left_as}")


def main():
    kill_while_it_renders()
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
