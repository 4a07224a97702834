"""The headless workstation in a Python process, and the example scripts."""

import pathlib
import subprocess
import sys
from array import array

import meridek_felspar as felspar
from support import ScratchCase, WorkstationCase, write_tone
from meridek_felspar import FelsparError, headless

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "python"


class Workstation(WorkstationCase):
    def test_functions_return_value_then_outputs(self):
        (track,) = self.add_tracks(("näme", 0))
        item, reaper, peaks = self.add_item(seconds=0.5), self.reaper, array("d", [9.0] * 10)
        take = reaper.GetActiveTake(item)
        filled = reaper.GetMediaItemTake_Peaks(take, 10, 0, 1, 5, 0, peaks) & 0xFFFFF
        number = reaper.AddProjectMarker2(None, True, 1.5, 2, "é", 7, 0)
        reaper.MK_SetTrackItemMute(track, True)
        calls = {
            "a number": (reaper.CountTracks(None), 2),
            "a text": (reaper.GetTakeName(take), "tone.wav"),
            "a handle": (reaper.GetMediaItem_Track(item), felspar.tracks()[1]),
            "no handle": (reaper.GetTrack(None, 9), None),
            "a handle by its key": (reaper.GetMediaItemInfo_Value(item, "P_TRACK"), felspar.tracks()[1]),
            "nothing": (reaper.UpdateArrange(), None),
            "text in and out": (reaper.GetSetMediaTrackInfo_String(track, "P_NAME", "", False), (True, "näme")),
            "several types": (reaper.EnumProjectMarkers3(None, 0), (1, True, 1.5, 2.0, "é", number, 0)),
            "results alone": (reaper.ColorFromNative(0x030201), (1, 2, 3)),
            "an array": ((filled, len(set(peaks))), (5, 2)),
            "a registered function": (reaper.MK_GetTrackItemMute(track), (True, True)),
            "one with a text": (reaper.MK_DeleteBlankString(" a b "), (True, "ab")),
        }
        for name, (given, expected) in calls.items():
            with self.subTest(name):
                self.assertEqual(given, expected)

    def test_wrong_calls_raise(self):
        reaper = self.reaper
        calls = {
            "too few arguments": lambda: reaper.GetTrack(None),
            "too many": lambda: reaper.CountTracks(None, 1),
            "an item as a track": lambda: reaper.GetTrackName(felspar.Item(1)),
            "a text as a number": lambda: reaper.GetTrack(None, "1"),
            "a list as an array": lambda: reaper.GetMediaItemTake_Peaks(None, 1, 0, 1, 1, 0, [0.0]),
            "a second workstation": headless.open,
            "a project that is not there": lambda: reaper.save("nowhere/a.rpp"),
        }
        for name, call in calls.items():
            with self.subTest(name), self.assertRaises(FelsparError):
                call()
        with self.assertRaises(AttributeError):
            reaper.MK_Json_Serialize  # a row for reading only


class Projects(ScratchCase):
    def test_saved_project_reopens(self):
        with headless.open() as reaper:
            reaper.InsertTrackAtIndex(0, True)
            reaper.GetSetMediaTrackInfo_String(felspar.tracks()[0], "P_NAME", "a", True)
            self.assertEqual(reaper.save("a.rpp"), pathlib.Path("a.rpp"))
            stale = felspar.tracks()[0]
        self.assertEqual((felspar.tracks(), felspar.children(stale)), ([], []))
        with self.assertRaises(FelsparError):
            reaper.CountTracks(None)
        with headless.open("a.rpp") as reaper:
            self.assertEqual(len(felspar.tracks_named("a")), 1)

    def test_functions_save_in_place(self):
        with headless.open() as reaper:
            reaper.Main_SaveProject(None, False)
            self.assertRegex("\n".join(reaper.failures()), "has no file")
            reaper.save("a.rpp")
        with headless.open("a.rpp") as reaper:
            reaper.SetProjExtState(None, "name", "key", "text")
            reaper.InsertTrackAtIndex(0, True)
            self.assertEqual(reaper.IsProjectDirty(None), 1)
            reaper.Main_SaveProject(None, False)
            self.assertEqual(reaper.failures(), [])
        with headless.open("a.rpp") as reaper:
            self.assertEqual((reaper.CountTracks(None), reaper.IsProjectDirty(None)), (1, 0))

    def test_foreign_files_stay(self):
        pathlib.Path("a.rpp").write_text("mine")
        with headless.open() as reaper, self.assertRaisesRegex(FelsparError, "not overwritten"):
            reaper.save("a.rpp")
        with self.assertRaisesRegex(FelsparError, "a.rpp"):
            headless.open("a.rpp")

    def test_failures_are_reported_once(self):
        with headless.open() as reaper:
            reaper.InsertMedia("nowhere.wav", 0)
            self.assertRegex("\n".join(reaper.failures()), r"^nowhere\.wav: ")
            self.assertEqual(reaper.failures(), [])
            reaper.InsertMedia("elsewhere.wav", 0)
            with self.assertWarnsRegex(felspar.FailureWarning, "elsewhere"):
                reaper.close()


class LeftOpen(ScratchCase):
    """Processes that end without having closed the workstation."""

    OPEN = "import sys, meridek_felspar as felspar\nr = felspar.headless.open('a.rpp')\n"

    def test_closes_and_warns_of_failures(self):
        with headless.open() as reaper:
            reaper.InsertMedia(str(write_tone(self.folder / "tone.wav")), 1)
            reaper.save("a.rpp")
        endings = {
            "at the end": ("r.GetMediaItem(None, 0)", [], 0, ""),
            "by sys.exit": ("sys.exit(3)", [], 3, ""),
            "after an error": ("raise ValueError('mine')", [], 1, "ValueError: mine"),
            "in an interactive session": ("r.CountTracks(None)\n", ["-i"], 0, ""),
            "with a failure": ("r.InsertMedia('none.wav', 0)", [], 0, "FailureWarning: none.wav: No such file"),
            "without the package's help": ("import atexit; atexit._clear()", [], 0, ""),
        }
        for name, (code, options, status, error) in endings.items():
            with self.subTest(name):
                command, text = [sys.executable, *options, "-"], self.OPEN + code
                ended = subprocess.run(command, input=text, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
                self.assertEqual(ended.returncode, status, ended.stderr)
                self.assertIn(error, ended.stderr)


class Examples(ScratchCase):
    def run_script(self, name, *arguments):
        command = [sys.executable, "-W", "error", SCRIPTS / name, *arguments]
        return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout

    def test_colours_and_names_tracks(self):
        with headless.open() as reaper:
            for index, name in enumerate(["DX anna", "", "fx door"]):
                reaper.InsertTrackAtIndex(index, True)
                reaper.GetSetMediaTrackInfo_String(reaper.GetTrack(None, index), "P_NAME", name, True)
            reaper.save("in.rpp")
        self.run_script("colour_tracks.py", "in.rpp", "out.rpp")
        with headless.open("out.rpp") as reaper:
            found = [(reaper.GetTrackName(track)[1], reaper.GetTrackColor(track)) for track in felspar.tracks()]
        self.assertEqual(found, [("DX anna", 0x1DC8246), ("track 02", 0), ("fx door", 0x12878DC)])

    def test_marks_unmatched_lines(self):
        for path in ("fr/a.wav", "fr/b.wav", "en/a.wav"):
            pathlib.Path(path).parent.mkdir(exist_ok=True)
            write_tone(path)
        self.run_script("import_dialogue.py", "fr", "en", "out.rpp")
        with headless.open("out.rpp") as reaper:
            regions = [reaper.EnumProjectMarkers2(None, i)[1:5] for i in range(reaper.CountProjectMarkers(None)[0])]
            self.assertEqual((regions, reaper.CountMediaItems(None)), ([(True, 2.5, 3.5, "b.wav")], 2))

    def test_plots_levels(self):
        lines = self.run_script("plot_levels.py", write_tone(self.folder / "tone.wav", seconds=0.25)).splitlines()
        self.assertEqual(lines, [f"    {0.1 * i:.1f} s   -6.0 dB {'#' * 54}" for i in range(3)])
