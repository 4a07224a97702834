"""The package: what scripts get, and what is left in the library afterwards."""

import math
import os

import meridek_felspar as felspar
import support
from support import ScratchCase, WorkstationCase, pooled
from meridek_felspar import FelsparError, Item, Track, ValueArray, ValueMap, library


class Values(ScratchCase):
    def test_array_returns_its_values(self):
        inner = ValueArray(["x"])
        values = [True, 1, -0.5, "naïve \udcff", Track(2**63), inner]
        with ValueArray(values) as array:
            self.assertEqual(list(array), values)
            self.assertEqual(
                (array[-3:-1], len(array), [type(value) for value in array[:3]]), (values[3:5], 6, [bool, int, float])
            )
            with self.assertRaises(IndexError):
                array[6]
        self.assertEqual(inner[0], "x")

    def test_map_is_ordered_by_bytes(self):
        with ValueMap({"b": 1, "é": "text", "a": Item(5), "ab": True}) as values:
            values["b"] = 2.5
            self.assertEqual(list(values.items()), [("a", 5), ("ab", True), ("b", 2.5), ("é", "text")])
            with self.assertRaises(KeyError):
                values["c"]

    def test_exceptions_release_objects(self):
        with self.assertRaises(ZeroDivisionError), ValueArray([1]) as array, felspar.RecordArray() as records:
            records.append("mk_Peak", Time=1)
            handle = array.handle
            1 / 0
        self.assertEqual((library().py_get_obj_size(handle), pooled()), (0, 0))
        for use in (lambda: array[0], lambda: len(records), array.append):
            with self.assertRaises((FelsparError, TypeError)):
                use()

    def test_dropped_objects_are_released(self):
        felspar.RecordArray().append("mk_Midi", Pitch=60)
        self.assertEqual(pooled(), 0)

    def test_records_are_mappings(self):
        with felspar.RecordArray() as records:
            note = records.append("mk_Midi", Pitch=60, StartPos=1)
            note["Pitch"] += 1
            self.assertEqual(dict(records[-1]), {"Pitch": 61, "StartPos": 1.0})
            self.assertEqual(note["EndPos"], 0.0)
            for key, value in [("pitch", 1), ("Pitch", 1.5), ("Pitch", 2**31), ("StartPos", "x")]:
                with self.assertRaises(FelsparError, msg=f"{key} = {value}"):
                    note[key] = value
            library().py_release_obj(note.handle)  # by itself
            self.assertEqual((len(records), dict(records[0])), (1, {}))

    def test_cut_strings_warn(self):
        with ValueArray(["é" * 512]) as array, self.assertWarns(felspar.CutTextWarning):
            self.assertEqual(array[0], "é" * 511 + "\udcc3")


class Tracks(WorkstationCase):
    def test_lists_of_tracks(self):
        folder, inner, outer = self.add_tracks(("Group Ä", 1), ("line \udcff", -1), ("Line", 0))
        self.assertEqual(felspar.tracks(), [folder, inner, outer])
        self.assertEqual(
            [felspar.children(folder), felspar.children_at(0), felspar.children(None)],
            [[inner], [inner], [folder, outer]],
        )
        self.reaper.SetOnlyTrackSelected(folder)
        self.assertEqual(felspar.children_of_selected(0), [inner])
        self.assertEqual([detail.depth for detail in felspar.track_depths()], [0, 1, 0])
        self.assertEqual(felspar.tracks_named("line \udcff"), [felspar.TrackDetail(track=inner, index=1)])
        self.assertEqual([detail.track for detail in felspar.tracks_including("LINE")], [inner, outer])

    def test_handles_print_like_the_workstations(self):
        (track,) = self.add_tracks(("a", 0))
        self.assertRegex(str(track), r"^\(MediaTrack\*\)0x[0-9A-F]{16}$")
        self.assertEqual(felspar.handles.address(str(track), Track), track)

    def test_wrong_arguments_raise(self):
        calls = {
            "an item as a track": lambda: felspar.children(Item(1)),
            "the text of a project as a track": lambda: felspar.children("(ReaProject*)0x1"),
            "no address": lambda: felspar.children("track 1"),
            "a negative address": lambda: felspar.tracks(-1),
            "an index beyond 32 bits": lambda: felspar.children_at(2**31),
            "a text with NUL": lambda: felspar.tracks_named("a\0b"),
            "a number as a text": lambda: felspar.split(1, ","),
            "no such item": lambda: felspar.peaks(1),
            "no such folder": lambda: felspar.files("nowhere", "wav"),
            "no such path": lambda: felspar.path_info("nowhere"),
            "a comma in a caption": lambda: felspar.ask("t", ["a,b"]),
            "no fields": lambda: felspar.ask("t", []),
            "a gap of a text": lambda: felspar.import_dialogue("a", "b", interval_seconds="x"),
        }
        for name, call in calls.items():
            with self.subTest(name), self.assertRaises(FelsparError):
                call()


class Media(WorkstationCase):
    def test_reads_peaks(self):
        item = self.add_item(seconds=0.25, peak=0.5)
        peaks = felspar.peaks(item)
        self.assertEqual([peak.time for peak in peaks], [i * 0.001 for i in range(250)])
        self.assertAlmostEqual(max(peak.max_peak for peak in peaks), 20 * math.log10(0.5), 2)
        columns = felspar.peak_columns(item)
        self.assertEqual(
            list(zip(columns.time, columns.max_peak, columns.min_peak)),
            [(p.time, p.max_peak, p.min_peak) for p in peaks],
        )
        self.assertEqual([felspar.peaks_at(0), felspar.peaks_of_selected(0)], [peaks, peaks])

    def test_ride_renders_a_take(self):
        item = self.add_item()
        felspar.ride([item], ratio=2)
        self.assertEqual((self.reaper.CountTakes(item), self.reaper.failures()), (2, []))

    def test_import_returns_every_unmatched_line(self):
        for side in ("subject", "base"):
            (self.folder / side).mkdir()
        tone = support.write_tone(self.folder / "base" / "both.wav")
        (self.folder / "subject" / "both.wav").write_bytes(tone.read_bytes())
        lines = {self.folder / "subject" / f'{number} "quoted"\n{"x" * 200}.WAV' for number in range(700)}
        for line in lines:
            line.touch()
        unmatched = felspar.import_dialogue("subject", "base", ["both"], start_seconds=1, interval_seconds=0.5)
        self.assertEqual((len(unmatched), set(unmatched)), (700, lines))
        self.assertEqual(
            [self.reaper.GetMediaItemInfo_Value(self.reaper.GetMediaItem(None, i), "D_POSITION") for i in (0, 1)],
            [1.0, 2.5],
        )


class Texts(WorkstationCase):
    def test_lists_files_of_any_name(self):
        for name in (b"a.wav", b"\xff.WAV", b"b.txt"):
            open(os.fsencode(self.folder) + b"/" + name, "w").close()
        self.assertEqual({path.name for path in felspar.files(self.folder, "wav")}, {"a.wav", "\udcff.WAV"})

    def test_splits_paths_of_any_length(self):
        folder = self.folder.joinpath(*["d" * 200] * 8)
        folder.mkdir(parents=True)
        path = folder / "a.b.wav"
        path.touch()
        info = felspar.path_info(path)
        self.assertEqual((info.path, info.stem, info.extension, info.type), (str(path), "a.b", "wav", "File"))

    def test_splits_strings(self):
        self.assertEqual(felspar.split(",a;é,", ",;"), ["", "a", "é"])
        self.assertEqual(felspar.split("", ","), [])

    def test_form_returns_an_answer_for_each_caption(self):
        for answer, expected in {"1,": ["1", ""], "é": ["é", "y"], ",2": ["", "2"]}.items():
            self.reaper.answer(answer, answer)
            self.assertEqual(felspar.ask(answer, ["a", "b"], ["x", "y"]), expected)
        self.assertIsNone(felspar.ask("nobody answers this", ["a"]))
