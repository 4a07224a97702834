"""The library's 54 functions through ctypes, as they are: their values, and calls that nobody should make."""

import ctypes
import itertools
import pathlib
import subprocess
import sys
import unittest

from support import ScratchCase, WorkstationCase, pooled, resident_kib
from meridek_felspar import library, library_path
from meridek_felspar._library import PROTOTYPES, Handle

VALUES = {"ptr": 0xFFFF_0000_1234_5678, "int": -(2**31), "double": -0.1, "bool": True, "string": b"\xff na\xc3\xafve"}
ZEROS = {"ptr": None, "int": 0, "double": 0.0, "bool": False, "string": b""}
MEBIBYTE = b"\xe3\x81\x82" * (2**20 // 3)


def read(function, *arguments):
    """An accessor's value: its result, or what it wrote to the buffer that is its last argument."""
    wants_buffer = "_string_" in function.__name__
    buffer = ctypes.create_string_buffer(b"?", 1024)
    result = function(*arguments, *([buffer] if wants_buffer else []))
    return buffer.value if wants_buffer else result


class Functions(ScratchCase):
    def setUp(self):
        super().setUp()
        self.library = library()

    def test_all_are_declared_and_no_other(self):
        symbols = subprocess.run(
            ["nm", "-D", "--defined-only", library_path()], check=True, capture_output=True, text=True
        )
        exported = {line.split()[-1] for line in symbols.stdout.splitlines() if line.split()[-1].startswith("py_")}
        self.assertEqual((set(PROTOTYPES), len(PROTOTYPES)), (exported, 54))

    def test_an_array_gives_each_value_back_by_its_type_and_the_zero_by_another(self):
        handle = self.library.py_create_array()
        for kind, value in VALUES.items():
            getattr(self.library, f"py_set_array_{kind}")(handle, value)
        self.assertEqual(self.library.py_get_obj_size(handle), 5)
        for kind, (place, stored) in itertools.product(VALUES, enumerate(VALUES)):
            expected = VALUES[kind] if kind == stored else ZEROS[kind]
            with self.subTest(asked=kind, stored=stored):
                self.assertEqual(read(getattr(self.library, f"py_get_{kind}_inarray"), handle, place), expected)
        for place in (-1, 5, 2**31 - 1):
            self.assertEqual(read(self.library.py_get_string_inarray, handle, place), b"")
        self.library.py_release_obj(handle)
        self.assertEqual(self.library.py_get_obj_size(handle), 0)

    def test_a_map_lists_its_keys_in_order_and_keeps_one_value_a_key(self):
        handle = self.library.py_create_map()
        self.library.py_set_map_int(handle, b"string", 1)
        for kind, value in reversed(VALUES.items()):
            getattr(self.library, f"py_set_map_{kind}")(handle, kind.encode(), value)
        self.assertEqual(self.library.py_get_obj_size(handle), 5)
        for place, kind in enumerate(sorted(VALUES)):
            key = ctypes.create_string_buffer(1024)
            value = read(getattr(self.library, f"py_get_{kind}_inmap"), handle, place, key)
            self.assertEqual((key.value, value), (kind.encode(), VALUES[kind]))
        self.library.py_release_obj(handle)

    def test_a_deep_release_ends_the_arrays_within(self):
        outer, inner = self.library.py_create_array(), self.library.py_create_array()
        for pointer in (inner, 1):
            self.library.py_set_array_ptr(outer, pointer)
        self.library.py_set_array_int(inner, 7)
        self.library.py_release_obj2(outer)
        self.assertEqual([self.library.py_get_obj_size(handle) for handle in (outer, inner)], [0, 0])

    def test_records_take_values_of_their_fields_types_alone(self):
        array = self.library.py_create_mkList_array()
        record = self.library.py_create_mkObj_inarray(array, b"TrackDetail")
        self.assertEqual(self.library.py_get_ptr_inarray(array, 0), record)
        for key, right in {"Name": "string", "Track": "ptr", "Volume": "double", "Depth": "int"}.items():
            for kind, value in VALUES.items():
                getattr(self.library, f"py_set_{kind}_inmkObj")(record, key.encode(), value)
            self.assertEqual(
                read(getattr(self.library, f"py_get_{right}_inmkobj"), record, key.encode()), VALUES[right]
            )
            self.assertIs(self.library.py_get_bool_inmkobj(record, key.encode()), False)
        names = [tuple(ctypes.create_string_buffer(1024) for _ in range(2)) for _ in range(4)]
        for place, pair in enumerate(names):
            self.library.py_get_key_inmkObj(record, place, *pair)
        self.assertEqual([pair[1].value for pair in names], [b"string", b"MediaTrack*", b"double", b"int"])
        self.assertEqual((self.library.py_get_obj_size(record), pooled()), (4, 2))
        self.assertEqual(self.library.py_create_mkObj_inarray(array, b"LINGOMAT_Tracks"), 0)
        self.library.py_release_obj(array)


def hostile(kind):
    """Values that an argument of that C type may have at worst; the first is an ordinary one."""
    if kind in (_BUFFER, *_OUTS):
        return [ctypes.create_string_buffer(1024) if kind is _BUFFER else kind._type_(), None]
    return {
        Handle: [0, 1, 2**64 - 1],
        ctypes.c_int: [0, 1, -1, 2**31 - 1, -(2**31)],
        ctypes.c_double: [1.0, -0.0, float("nan"), float("inf"), -1e308],
        ctypes.c_bool: [False, True],
        ctypes.c_void_p: [None, 1, 2**64 - 1],
        ctypes.c_char_p: [b"a", None, b"", b"\xff\xfe", MEBIBYTE, b"[" * 100_000, b'[{"MediaItem*":1e300}]'],
    }[kind]


_BUFFER = ctypes.POINTER(ctypes.c_char)
_OUTS = (ctypes.POINTER(Handle), ctypes.POINTER(ctypes.c_int))


def argument_rows(types, handles):
    """One hostile argument among ordinary ones, then all of them."""
    rows = [hostile(kind) + (handles if kind is Handle else []) for kind in types]
    if types[-2:] == (_BUFFER, ctypes.c_int):
        rows[-1] = [1024, 1, 0, -1, -(2**31)]  # a size is no larger than its buffer
    ordinary = [row[0] for row in rows]
    for place, row in enumerate(rows):
        yield from ([*ordinary[:place], value, *ordinary[place + 1 :]] for value in row)
    yield [row[-1] for row in rows]


def call_everything():
    """Every function with everything that is wrong, also on arrays and records that live. @returns how many calls"""
    made, calls = library(), 0
    for name, (result_type, types) in PROTOTYPES.items():
        array, values, records = made.py_create_array(), made.py_create_map(), made.py_create_mkList_array()
        record = made.py_create_mkObj_inarray(records, b"mk_Peak")
        for arguments in argument_rows(types, [array, values, records, record]):
            result = getattr(made, name)(*arguments)
            outs = [argument.value for argument in arguments if isinstance(argument, Handle)]
            for handle in [*outs, result if name.startswith("py_create_") and "inarray" not in name else 0]:
                made.py_release_obj(handle)
            calls += 1
        for handle in (array, values, records):
            made.py_release_obj(handle)
    return calls


class Abuse(WorkstationCase):
    def test_every_function_returns_in_a_workstation(self):
        self.add_tracks(("a", 0))
        self.add_item()
        self.assertGreater(call_everything(), 400)

    def test_every_function_returns_where_there_is_no_host(self):
        code = "import functions_test; print(functions_test.call_everything())"
        folder = pathlib.Path(__file__).parent
        run = subprocess.run([sys.executable, "-c", code], cwd=folder, capture_output=True, text=True)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertGreater(int(run.stdout), 400)

    def test_a_hundred_thousand_lists_leave_nothing_behind(self):
        out = Handle()
        self.add_tracks(("a", 1), ("b", -1))

        def cycle(count):
            for _ in range(count):
                self.assertTrue(library().py_GetStringSplitList(b"a,b", b",", out))
                library().py_release_obj(out.value)
                self.assertTrue(library().py_GetTrackDepthList(None, out))
                library().py_release_obj(out.value)

        cycle(1000)
        before = resident_kib()
        cycle(50_000)
        self.assertLess(resident_kib() - before, 2000)


if __name__ == "__main__":
    unittest.main()
