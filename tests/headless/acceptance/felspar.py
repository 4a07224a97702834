"""What the acceptance scripts share: the built command, recordings, and a reader of the project files it writes."""

import dataclasses
import pathlib
import re
import subprocess
import sys

PROGRAM = pathlib.Path(sys.argv[1]).resolve()
SOUNDS = pathlib.Path("/usr/share/asterisk/sounds")
SKIPPED = 77  # ctest shows a test with this exit status as skipped


def skip(reason):
    print(f"SKIPPED: {reason}")
    sys.exit(SKIPPED)


def run_import(subject, base, *options):
    subprocess.run([PROGRAM, "import", subject, base, *options], check=True, stdout=subprocess.DEVNULL)


@dataclasses.dataclass
class Item:
    """What is heard of an item: a stretch of its active take's file times a gain."""

    track: str
    position_seconds: float
    length_seconds: float
    start_seconds: float  # in the file
    gain: float  # of item and take, linear
    file: pathlib.Path
    has_active_envelope: bool


def words_of(line):
    return ["".join(groups) for groups in re.findall(r'"([^"]*)"|\'([^\']*)\'|`([^`]*)`|(\S+)', line)]


def blocks_of(text):
    """The outermost block of a project file: a list of its head's words, then of lines' words and blocks."""
    open_blocks = [[]]
    for line in map(str.strip, text.splitlines()):
        if line == ">":
            open_blocks[-2].append(open_blocks.pop())
        elif line.startswith("<"):
            open_blocks.append([words_of(line[1:])])
        else:
            open_blocks[-1].append(words_of(line))
    return open_blocks[0][0]


def items_of(project):
    """All items of a project file, by position."""
    tracks = [block for block in blocks_of(project.read_text()) if block[0][0] == "TRACK"]
    items = []
    for track in tracks:
        name = next(entry[1] for entry in track if entry[0] == "NAME")
        items += [read_item(name, block, project.parent) for block in track if block[0][0] == "ITEM"]
    return sorted(items, key=lambda item: item.position_seconds)


def read_item(track, block, folder):
    takes = [{"is_active": True}]  # until another one says so
    for entry in block[1:]:
        if entry[0] == "TAKE":
            takes.append({"is_active": "SEL" in entry})
        elif entry[0][0] == "SOURCE":
            takes[-1]["file"] = folder / entry[1][1]
        elif entry[0][0] == "VOLENV":
            takes[-1]["has_active_envelope"] = any(words[:2] == ["ACT", "1"] for words in entry)
        else:
            takes[-1][entry[0]] = entry[1:]
    first = takes[0]
    active = [take for take in takes if take["is_active"]][-1]
    take_gain = float(first["VOLPAN"][2] if active is first else active["TAKEVOLPAN"][1])
    return Item(
        track,
        float(first["POSITION"][0]),
        float(first["LENGTH"][0]),
        float(active["SOFFS"][0]),
        float(first["VOLPAN"][0]) * take_gain,
        active["file"],
        active.get("has_active_envelope", False),
    )
