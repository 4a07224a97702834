"""The library's 54 functions through ctypes, as they are: their values, and calls that nobody should make."""

import ctypes
import itertools
import json
import os
import pathlib
import subprocess
import sys
from unittest import mock

from support import ScratchCase, WorkstationCase, pooled, write_tone
from meridek_felspar import FelsparError, _library, library, library_path
from meridek_felspar._library import PoolHandle, described_prototypes, open_library
from meridek_felspar.records import fields_of

VALUES = {"ptr": 0xFFFF_0000_1234_5678, "int": -(2**31), "double": -0.1, "bool": True, "string": b"\xff na\xc3\xafve"}
ZEROS = {"ptr": None, "int": 0, "double": 0.0, "bool": False, "string": b""}
functions = library()
MEBIBYTE = b"\xe3\x81\x82" * (2**20 // 3)


def read(function, *arguments):
    """An accessor's value: its result, or what it wrote to the buffer that is its last argument."""
    wants_buffer = "_string_" in function.__name__
    buffer = ctypes.create_string_buffer(b"?", 1024)
    result = function(*arguments, *([buffer] if wants_buffer else []))
    return buffer.value if wants_buffer else result


class Functions(ScratchCase):
    def test_a_library_that_cannot_be_understood_is_refused(self):
        with self.assertRaisesRegex(FelsparError, "felspar_python_functions"):
            open_library(pathlib.Path(os.environ["FELSPAR_HEADLESS_LIBRARY"]), described_prototypes)
        without_double = {word: kind for word, kind in _library._C_TYPES.items() if word != "double"}
        with mock.patch.object(_library, "_C_TYPES", without_double), self.assertRaisesRegex(FelsparError, "'double'"):
            open_library(library_path(), described_prototypes)

    def test_arrays_return_zero_for_other_types(self):
        handle = functions.py_create_array()
        for kind, value in VALUES.items():
            getattr(functions, f"py_set_array_{kind}")(handle, value)
        self.assertEqual(functions.py_get_obj_size(handle), 5)
        for kind, (place, stored) in itertools.product(VALUES, enumerate(VALUES)):
            expected = VALUES[kind] if kind == stored else ZEROS[kind]
            with self.subTest(asked=kind, stored=stored):
                self.assertEqual(read(getattr(functions, f"py_get_{kind}_inarray"), handle, place), expected)
        for place in (-1, 5, 2**31 - 1):
            self.assertEqual(read(functions.py_get_string_inarray, handle, place), b"")
        functions.py_release_obj(handle)
        self.assertEqual(functions.py_get_obj_size(handle), 0)

    def test_deep_release_frees_inner_arrays(self):
        outer, inner = functions.py_create_array(), functions.py_create_array()
        for pointer in (inner, 1):
            functions.py_set_array_ptr(outer, pointer)
        functions.py_set_array_int(inner, 7)
        functions.py_release_obj2(outer)
        self.assertEqual([functions.py_get_obj_size(handle) for handle in (outer, inner)], [0, 0])

    def test_records_drop_mistyped_values(self):
        array = functions.py_create_mkList_array()
        record = functions.py_create_mkObj_inarray(array, b"TrackDetail")
        self.assertEqual(functions.py_get_ptr_inarray(array, 0), record)
        fields = {b"Name": "string", b"Track": "ptr", b"Volume": "double", b"Depth": "int"}
        for key, right in fields.items():
            for kind, value in VALUES.items():
                getattr(functions, f"py_set_{kind}_inmkObj")(record, key, value)
            self.assertEqual(read(getattr(functions, f"py_get_{right}_inmkobj"), record, key), VALUES[right])
            self.assertIs(functions.py_get_bool_inmkobj(record, key), False)
        self.assertEqual([key.encode() for key, _ in fields_of(record)], list(fields))
        self.assertEqual((functions.py_get_obj_size(record), pooled()), (4, 2))
        self.assertEqual(functions.py_create_mkObj_inarray(array, b"LINGOMAT_Tracks"), 0)
        functions.py_release_obj(array)


def hostile(kind):
    """Values that an argument of that C type may have at worst; the first is an ordinary one."""
    if kind in (_BUFFER, *_OUTS):
        return [ctypes.create_string_buffer(1024) if kind is _BUFFER else kind._type_(), None]
    return {
        PoolHandle: [0, 1, 2**64 - 1],
        ctypes.c_int: [0, 1, -1, 2**31 - 1, -(2**31)],
        ctypes.c_double: [1.0, -0.0, float("nan"), float("inf"), -1e308],
        ctypes.c_bool: [False, True],
        ctypes.c_void_p: [None, 1, 2**64 - 1],
        ctypes.c_char_p: [b"a", None, b"", b"\xff\xfe", MEBIBYTE, b"[" * 100_000, b'[{"MediaItem*":1e300}]'],
    }[kind]


_BUFFER = ctypes.POINTER(ctypes.c_char)
_OUTS = (ctypes.POINTER(PoolHandle), ctypes.POINTER(ctypes.c_int))


def argument_rows(types, handles):
    """One hostile argument among ordinary ones, then all of them."""
    rows = [hostile(kind) + (handles if kind is PoolHandle else []) for kind in types]
    if types[-2:] == (_BUFFER, ctypes.c_int):
        rows[-1] = [1024, 1, 0, -1, -(2**31)]  # a size is no larger than its buffer
    ordinary = [row[0] for row in rows]
    for place, row in enumerate(rows):
        yield from ([*ordinary[:place], value, *ordinary[place + 1 :]] for value in row)
    yield [row[-1] for row in rows]


def call_everything():
    """Every function with everything that is wrong, also on arrays and records that live. @returns how many calls"""
    calls = 0
    for name, (result_type, types) in described_prototypes(functions).items():
        containers = functions.py_create_array(), functions.py_create_map(), functions.py_create_mkList_array()
        record = functions.py_create_mkObj_inarray(containers[-1], b"mk_Peak")
        for arguments in argument_rows(types, [*containers, record]):
            result = getattr(functions, name)(*arguments)
            outs = [argument.value for argument in arguments if isinstance(argument, PoolHandle)]
            for handle in [*outs, result if name.startswith("py_create_") and "inarray" not in name else 0]:
                functions.py_release_obj(handle)
            calls += 1
        for handle in containers:
            functions.py_release_obj(handle)
    return calls


class JsonTexts(WorkstationCase):
    def test_items_to_ride_are_json_objects(self):
        address = int(self.add_item())
        for text, code in [
            (f'[{{"MediaItem*":{address}}}]', 0),
            (f'[{{"MediaItem*":{address}.0,"other":"x"}}]', 0),
            ("[1,[2],null,{}]", 0),
            ("{}", 0),
            ('[{"MediaItem*":"1"}]', 1),
            ('[{"MediaItem*":true}]', 1),
            ("[", 1),
            (None, 1),
        ]:
            with self.subTest(text):
                self.assertEqual(functions.py_SetMediaItemListRIDESCRIBER(text and text.encode(), 0), code)

    def test_unmatched_lines_are_typed_values(self):
        for line in ("a one.wav", "b two.wav"):
            (self.folder / "subject").mkdir(exist_ok=True)
            write_tone(self.folder / "subject" / line)
        (self.folder / "base").mkdir()
        subject, base = (os.fsencode(self.folder / side) for side in ("subject", "base"))
        arguments = (subject, base, 0.0, 0.0, 0, False, False, 0)
        out = ctypes.create_string_buffer(1024)
        self.assertEqual(functions.py_LINGOMAT_InsertMediaItems(*arguments, b'["a",1,"b"]', out, 1024), 0)
        paths = [os.fspath(self.folder / "subject" / line) for line in ("a one.wav", "b two.wav")]
        self.assertEqual(sorted(json.loads(out.value), key=str), [{"string": path} for path in paths])
        whole = out.value
        self.assertEqual(functions.py_LINGOMAT_InsertMediaItems(*arguments, b"[]", out, 21), 0)
        self.assertEqual(out.value, whole[:20])
        self.assertEqual(functions.py_LINGOMAT_InsertMediaItems(*arguments, b"[", out, 1024), 1)

    def test_path_info_is_null_without_a_path(self):
        out = ctypes.create_string_buffer(1024)
        self.assertEqual((functions.py_GetPathInfo(b"/no such path", out, 1024), out.value), (1, b"null"))


class Abuse(WorkstationCase):
    def test_every_function_returns(self):
        self.add_tracks(("a", 0))
        self.add_item()
        self.assertGreater(call_everything(), 400)

    def test_every_function_returns_without_a_host(self):
        code = "import functions_test; print(functions_test.call_everything())"
        folder = pathlib.Path(__file__).parent
        run = subprocess.run([sys.executable, "-c", code], cwd=folder, capture_output=True, text=True)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertGreater(int(run.stdout), 400)
