"""The folder in which a fault trial runs: recordings and a script to begin with, and what is found there afterwards."""

import hashlib
import math
import pathlib
import random
import re
import struct
import wave

SCRIPT = """
require "reaper_MERIDEK_FELSPAR"
reaper.atexit(function() reaper.ShowConsoleMsg("end\\n") end)
local ratio = tonumber(...)
assert(reaper.MK_LINGOMAT_InsertMediaItems("subject", "base", 0, 0.5, 0, true, true, ratio, {"anna"}) == 0)
reaper.defer(function()
    assert(reaper.InsertMedia("subject/ben.wav", 0) == 1)
    local item = reaper.GetSelectedMediaItem(0, 0)
    local read, peaks = reaper.MK_GetMediaItemPeakList(item)
    reaper.ShowConsoleMsg(#peaks .. " " .. peaks[200].MaxPeak .. "\\n")
    assert(reaper.MK_SetMediaItemRIDESCRIBER(item, ratio))
end)
"""


def command_line(command, ratio):
    return {
        "import": ["import", "subject", "base", "--match", "--ride", "--group", "anna", "--ratio", str(ratio)]
        + ["-o", "out.rpp", "--csv", "pairs.csv", "--unmatched", "unmatched.txt"],
        "ride": ["ride", "subject/anna.wav", "subject/ben.wav", "--ratio", str(ratio), "--project", "out.rpp"],
        "run": ["run", "script.lua", "--save", "out.rpp", "--", str(ratio)],
    }[command]


def write_speech(file, seconds, channels, pitch):
    chance = random.Random(pitch)
    levels = [chance.uniform(0.02, 0.95) for _ in range(40)]
    samples = bytearray()
    for frame in range(int(seconds * 8000)):
        at = frame / 8000
        level = levels[int(at * 20) % len(levels)] * math.sin(2 * math.pi * pitch * at)
        samples += struct.pack("<h", int(20000 * level)) * channels
    with wave.open(str(file), "wb") as recording:
        recording.setparams((channels, 2, 8000, 0, "NONE", ""))
        recording.writeframes(bytes(samples))


def make_inputs(folder):
    for number, side in enumerate(["subject", "base"]):
        (folder / side).mkdir(parents=True)
        write_speech(folder / side / "anna.wav", 0.9, 1, 300 + 100 * number)
        write_speech(folder / side / "ben.wav", 0.7, 1 + number, 500 - 70 * number)
    write_speech(folder / "subject" / "unasked.wav", 0.3, 1, 440)
    (folder / "script.lua").write_text(SCRIPT)


def is_whole_wav(data):
    """Whether the file ends where its header and its chunks say."""
    if data[:4] != b"RIFF" or struct.unpack("<I", data[4:8])[0] != len(data) - 8:
        return False
    chunks, place = {}, len("RIFFsizeWAVE")
    while place + 8 <= len(data):
        name, size = struct.unpack("<4sI", data[place : place + 8])
        chunks[name] = size
        place += 8 + size + size % 2
    return place == len(data) and chunks.get(b"data", 0) > 0


def is_temporary(name):
    return pathlib.Path(name).name.startswith(".felspar")


class Contents(dict):
    """The files of a folder by relative name; "@" stands for the folder in texts."""

    def __init__(self, folder):
        for path in filter(pathlib.Path.is_file, folder.rglob("*")):
            data = path.read_bytes()
            self[str(path.relative_to(folder))] = data if path.suffix == ".wav" else self.without_folder(data, folder)

    @staticmethod
    def without_folder(data, folder):
        return data.replace(str(folder).encode(), b"@")

    def lasting(self):
        return {name: data for name, data in self.items() if not is_temporary(name)}

    def inputs(self):
        return {name: data for name, data in self.items() if name.startswith(("subject/", "base/", "script"))}

    def audio_of_project(self):
        """The project's takes: their names and digests of what they play. @throws ValueError when it is not whole"""
        text = self["out.rpp"].decode()
        if not text.startswith("<REAPER_PROJECT") or not text.endswith("\n>\n"):
            raise ValueError("no whole project")
        takes, take = [], ""
        for key, quoted, bare in re.findall(r'^ *(NAME|FILE) (?:"([^"]*)"|(\S+))', text, re.MULTILINE):
            if key == "NAME":
                take = quoted or bare
            else:
                takes.append((take, hashlib.sha1(self[(quoted or bare).replace("@/", "")]).hexdigest()))
        return takes
