#!/usr/bin/env python3
"""The library among others in a process, as the workstation loads them: locally, one beside the other.

Usage: loaded_test.py LIBRARY EXTENSION_BESIDE
"""
import ctypes
import os
import sys
import unittest

library_file, beside_file = sys.argv[1:]
beside = ctypes.CDLL(beside_file, os.RTLD_NOW | os.RTLD_LOCAL)  # first, so that its names are there before ours
library = ctypes.CDLL(library_file, os.RTLD_NOW | os.RTLD_LOCAL)
GetFunc = ctypes.CFUNCTYPE(ctypes.c_void_p, ctypes.c_char_p)


class HostRecord(ctypes.Structure):
    _fields_ = [("caller_version", ctypes.c_int), ("hwnd_main", ctypes.c_void_p), ("Register", ctypes.c_void_p),
                ("GetFunc", GetFunc)]


def pointer(where, name):
    return ctypes.c_void_p.in_dll(where, name).value


class Loaded(unittest.TestCase):
    def test_binds_only_its_own_pointers(self):
        theirs = pointer(beside, "GetTrack")
        known = GetFunc(lambda name: 0x1000 if name == b"GetTrack" else None)
        record = HostRecord(0x20E, None, None, known)
        self.assertEqual(library.ReaperPluginEntry(None, ctypes.byref(record)), 1)
        self.assertEqual(pointer(library, "GetTrack"), 0x1000)
        self.assertEqual(pointer(library, "reaper_plugin"), ctypes.addressof(record))
        self.assertTrue(ctypes.c_bool.in_dll(library, "imported"))
        self.assertEqual(pointer(beside, "GetTrack"), theirs)
        self.assertIsNone(pointer(beside, "reaper_plugin"))
        self.assertFalse(ctypes.c_bool.in_dll(beside, "imported"))
        self.assertEqual(library.ReaperPluginEntry(None, None), 0)

    def test_registers_exported_adapters(self):
        rows, count = (ctypes.c_size_t * 2).in_dll(library, "api_define_list")
        for row in range(count):
            words = (ctypes.c_void_p * 9).from_address(rows + row * 72)
            name = ctypes.string_at(words[3]).decode().removeprefix("API_MK_")
            adapter = "__verarg_empty" if words[0] == words[1] else "__vararg_" + name
            self.assertEqual(words[1], ctypes.cast(getattr(library, adapter), ctypes.c_void_p).value, name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
