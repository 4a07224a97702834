"""Measures imported pairs with ffmpeg: loudness_test.py FELSPAR

Each item is cut from its active take's file and multiplied by its volumes, as the project file says, and the loudest
momentary loudness of partners must agree within 0.1 LU. ffmpeg reads it every 100 ms only, so it hears ten copies,
each delayed by 10 ms more: together they read every 10 ms. It cannot see what the workstation itself would add (pan
law, resampling), nor windows between the readings, which differ by far less.
"""

import pathlib
import re
import shutil
import subprocess
import tempfile
import wave

from felspar import SOUNDS, items_of, run_import, skip

PAIRS = 10
TOLERANCE_LU = 0.1


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
    cut = f"atrim=start={item.start_seconds}:duration={item.length_seconds},volume={item.gain}:precision=double"
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
    if not shutil.which("ffmpeg"):
        skip("no ffmpeg, so nothing independent measures the imported pairs")
    if not (SOUNDS / "fr_CA_f_June").exists():
        skip("the recorded announcements are not installed")
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        choose_pairs(folder / "subject", folder / "base")
        project = folder / "pairs.rpp"
        run_import(folder / "subject", folder / "base", "--match", "--ride", "--group", "vm-", "-o", project)
        items = items_of(project)
        assert len(items) == 2 * PAIRS, items
        for base, subject in zip(items[::2], items[1::2]):
            assert (base.track, subject.track) == ("base", "unique"), (base, subject)
            assert subject.file.parent != folder / "subject", f"{subject.file}: no ride was rendered"
            assert not base.has_active_envelope and not subject.has_active_envelope
            loudest = [momentary_maximum_lufs(item, folder / "log") for item in (base, subject)]
            print(f"{loudest[0]:8.2f} {loudest[1]:8.2f} LUFS  {base.file.name}")
            assert abs(loudest[0] - loudest[1]) <= TOLERANCE_LU, base.file.name


if __name__ == "__main__":
    main()
