"""Measures imported pairs with ffmpeg: loudness_test.py FELSPAR

Each item is cut from its active take's file and multiplied by its volumes, as the project file says, and the loudest
momentary loudness of partners must agree within 0.1 LU. ffmpeg reads it every 100 ms only, so it hears ten copies,
each delayed by 10 ms more: together they read every 10 ms. It cannot see what the workstation itself would add (pan
law, resampling), nor windows between the readings, which differ by far less.
"""

import collections
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import wave

SOUNDS = pathlib.Path("/usr/share/asterisk/sounds")
SKIPPED = 77  # ctest shows a test with this exit status as skipped
PAIRS = 10
TOLERANCE_LU = 0.1


# What is heard of an item: its active take's file from `start` on, times a linear gain. Times are in seconds.
Item = collections.namedtuple("Item", "track position length start gain file envelope_is_active")


def items_of(project):
    """All items of a project file, by position."""
    items = []
    for track in project.read_text().split("<TRACK ")[1:]:
        head, *texts = track.split("<ITEM\n")
        items += [read_item(re.search(r'NAME "(.*)"', head)[1], text, project.parent) for text in texts]
    return sorted(items, key=lambda item: item.position)


def read_item(track, text, folder):
    first, *others = re.split(r"^ *TAKE\b", text, flags=re.MULTILINE)
    active = next((take for take in others if take.startswith(" SEL")), first)

    def number(take, key, place=0):
        return float(re.search(rf"^ *{key} (.*)", take, re.MULTILINE)[1].split()[place])

    take_gain = number(first, "VOLPAN", 2) if active is first else number(active, "TAKEVOLPAN", 1)
    return Item(
        track,
        number(first, "POSITION"),
        number(first, "LENGTH"),
        number(active, "SOFFS"),
        number(first, "VOLPAN") * take_gain,
        folder / re.search(r'FILE "(.*)"', active)[1],
        "ACT 1" in active,
    )


def is_long_enough(file):
    with wave.open(str(file)) as recording:
        return recording.getnframes() >= recording.getframerate()


def choose_pairs(subject, base):
    """Pairs from all over the announcements; of every third the subject is stereo at another sample rate."""
    files = [SOUNDS / "fr_CA_f_June" / f.name for f in sorted((SOUNDS / "en_US_f_Allison").glob("*.wav"))]
    files = [file for file in files if file.exists() and is_long_enough(file)]
    subject.mkdir()
    base.mkdir()
    for number, file in enumerate(files[:: len(files) // PAIRS][:PAIRS]):
        shutil.copy(SOUNDS / "en_US_f_Allison" / file.name, base)
        converted = ["-ar", "44100", "-ac", "2"] if number % 3 == 0 else []
        subprocess.run(
            ["ffmpeg", "-v", "error", "-i", file, *converted, subject / file.name], check=True, stdin=subprocess.DEVNULL
        )


def momentary_maximum_lufs(item, log):
    delays = range(0, 100, 10)
    cut = f"atrim=start={item.start}:duration={item.length},volume={item.gain}:precision=double"
    copies = "".join(f"[c{delay}]" for delay in delays)
    meter = "ebur128=framelog=verbose:metadata=1,ametadata=print:key=lavfi.r128.M:file="
    chains = [f"[0:a]{cut},asplit={len(delays)}{copies}"]
    chains += [f"[c{d}]adelay={d}:all=1,{meter}{log}{d}[o{d}]" for d in delays]
    outputs = [word for delay in delays for word in ("-map", f"[o{delay}]", "-f", "null", "-")]
    command = ["ffmpeg", "-v", "error", "-i", item.file, "-filter_complex", ";".join(chains), *outputs]
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL)
    readings = [re.findall(r"r128\.M=(\S+)", pathlib.Path(f"{log}{delay}").read_text()) for delay in delays]
    return max(float(reading) for copy in readings for reading in copy)


def main():
    if not shutil.which("ffmpeg") or not (SOUNDS / "fr_CA_f_June").exists():
        print("SKIPPED: no ffmpeg to measure the imported pairs, or no recorded announcements to import")
        return SKIPPED
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        choose_pairs(folder / "subject", folder / "base")
        project = folder / "pairs.rpp"
        sides = [folder / "subject", folder / "base"]
        options = ["--match", "--ride", "--group", "vm-", "-o", project]
        subprocess.run([sys.argv[1], "import", *sides, *options], check=True, stdout=subprocess.DEVNULL)
        items = items_of(project)
        assert len(items) == 2 * PAIRS, items
        for base, subject in zip(items[::2], items[1::2]):
            assert (base.track, subject.track) == ("base", "unique"), (base, subject)
            assert subject.file.parent != folder / "subject", f"{subject.file}: no ride was rendered"
            assert not base.envelope_is_active and not subject.envelope_is_active
            loudest = [momentary_maximum_lufs(item, folder / "log") for item in (base, subject)]
            print(f"{loudest[0]:8.2f} {loudest[1]:8.2f} LUFS  {base.file.name}")
            assert abs(loudest[0] - loudest[1]) <= TOLERANCE_LU, base.file.name
    return 0


if __name__ == "__main__":
    sys.exit(main())
