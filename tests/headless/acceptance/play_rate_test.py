"""Compares takes at other play rates with what ffmpeg makes of them: play_rate_test.py FELSPAR

The recording is a sum of sines, which both resamplers keep. ffmpeg plays it faster or slower by reading it at another
sample rate and converting that to the recording's. The ends are left out, where each does it its own way.
"""

import array
import pathlib
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77  # ctest shows a test with this exit status as skipped
RATES = [0.5, 2.0, 1.25]
SAMPLE_RATE = 48000
SECONDS = 4
LARGEST_DIFFERENCE = 1e-5  # of samples up to 0.32

SCRIPT = """
reaper.InsertMedia("sines.wav", 0)
local item = reaper.GetMediaItem(0, 0)
local take = reaper.GetActiveTake(item)
reaper.SetMediaItemTakeInfo_Value(take, "B_PPITCH", 0)
reaper.SetMediaItemTakeInfo_Value(take, "D_PLAYRATE", {rate})
reaper.SetMediaItemInfo_Value(item, "D_LENGTH", {seconds} / {rate})
reaper.SetMediaItemSelected(item, true)
reaper.Main_OnCommand(41999, 0)
local source = reaper.GetMediaItemTake_Source(reaper.GetActiveTake(item))
local file = io.open("rendered.txt", "w")
file:write((reaper.GetMediaSourceFileName(source)))
file:close()
"""


def ffmpeg(*arguments):
    subprocess.run(["ffmpeg", "-v", "error", "-y", *arguments], check=True, stdin=subprocess.DEVNULL)


def samples_of(file, *options):
    raw = file.with_suffix(".raw")
    ffmpeg("-i", file, *options, "-f", "f32le", raw)
    samples = array.array("f")
    samples.frombytes(raw.read_bytes())
    return samples


def rendered(felspar, folder, rate):
    script = folder / "rate.lua"
    script.write_text(SCRIPT.format(rate=rate, seconds=SECONDS))
    subprocess.run([felspar, "run", script], check=True, cwd=folder)
    return samples_of(pathlib.Path((folder / "rendered.txt").read_text()))


def main():
    if not shutil.which("ffmpeg"):
        print("SKIPPED: no ffmpeg to compare with")
        return SKIPPED
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        recording = folder / "sines.wav"
        sines = "+".join(f"0.1*sin(2*PI*{hertz}*t)" for hertz in (110, 997, 4001, 8999))
        source = f"aevalsrc={sines}:s={SAMPLE_RATE}:d={SECONDS}"
        ffmpeg("-f", "lavfi", "-i", source, "-c:a", "pcm_f32le", recording)
        for rate in RATES:
            ours = rendered(sys.argv[1], folder, rate)
            convert = f"asetrate={SAMPLE_RATE * rate},aresample={SAMPLE_RATE}:filter_size=256:cutoff=0.95"
            theirs = samples_of(recording, "-af", convert)
            assert len(ours) == SECONDS * SAMPLE_RATE / rate, len(ours)
            assert abs(len(ours) - len(theirs)) < 100, len(theirs)
            middle = range(SAMPLE_RATE // 2, len(ours) - SAMPLE_RATE // 2)
            difference = max(abs(ours[i] - theirs[i]) for i in middle)
            print(f"rate {rate}: largest difference {difference:.2g} of {max(ours):.2g}")
            assert difference <= LARGEST_DIFFERENCE, rate
    return 0


if __name__ == "__main__":
    sys.exit(main())
