"""What the tests of the Python package share: the built libraries, a scratch folder, sounds, and a look at the pools."""

import contextlib
import ctypes
import math
import os
import pathlib
import tempfile
import unittest
import wave
from array import array

from meridek_felspar import headless, library

os.dup2(os.open(os.devnull, os.O_RDONLY), 0)  # dialogs ask nobody
RECORD_POOLS = ["7mk_List11mkList_pool", "11TrackDetail4pool", "7mk_Midi4pool", "7mk_Peak4pool"]


def pooled():
    """How many arrays and records wait in the library's pools: what a std::map counts behind its tree's head."""
    symbols = (f"_ZN9mk_object{pool}E" for pool in RECORD_POOLS)
    return sum((ctypes.c_size_t * 6).in_dll(library(), symbol)[5] for symbol in symbols)


def write_tone(path, seconds=1.0, peak=0.5, rate=8000):
    """A mono sine of 100 Hz in 16 bits."""
    samples = (int(32767 * peak * math.sin(2 * math.pi * 100 * i / rate)) for i in range(int(seconds * rate)))
    with contextlib.closing(wave.open(os.fspath(path), "wb")) as file:
        file.setparams((1, 2, rate, 0, "NONE", ""))
        file.writeframes(array("h", samples).tobytes())
    return path


class ScratchCase(unittest.TestCase):
    """Runs in an empty folder, and finds the pools empty at the end."""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        self.addCleanup(lambda: self.assertEqual(pooled(), 0, "something stayed in the pools"))
        self.folder = pathlib.Path(scratch.name)
        os.chdir(self.folder)


class WorkstationCase(ScratchCase):
    """With an open workstation."""

    def setUp(self):
        super().setUp()
        self.reaper = headless.open()
        self.addCleanup(self.reaper.close)

    def add_tracks(self, *names_and_depths):
        tracks = []
        for index, (name, change) in enumerate(names_and_depths):
            self.reaper.InsertTrackAtIndex(index, True)
            tracks.append(self.reaper.GetTrack(None, index))
            self.reaper.GetSetMediaTrackInfo_String(tracks[-1], "P_NAME", name, True)
            self.reaper.SetMediaTrackInfo_Value(tracks[-1], "I_FOLDERDEPTH", change)
        return tracks

    def add_item(self, **tone):
        self.reaper.InsertMedia(os.fspath(write_tone(self.folder / "tone.wav", **tone)), 1)
        return self.reaper.GetMediaItem(None, self.reaper.CountMediaItems(None) - 1)
