"""The wheel: what it holds and needs, tried from its own files."""

import base64
import csv
import hashlib
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
import zipfile

TREE = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(TREE / "packaging" / "python"))

import abi  # noqa: E402
import wheel  # noqa: E402

PLUGIN = pathlib.Path(os.environ["BUILT_PLUGIN"])
HEADLESS = pathlib.Path(os.environ["BUILT_HEADLESS"])
JOB = """
import meridek_felspar as felspar
with felspar.headless.open() as reaper:
    felspar.import_dialogue("fr", "en", [], interval_seconds=0.5)
    print(reaper.CountMediaItems(None), felspar.library_path())
"""


class Tag(unittest.TestCase):
    def library(self, name, source, *options):
        file = pathlib.Path(self.folder, f"{name}.so")
        command = [os.environ["CXX"], "-shared", "-fPIC", "-x", "c++", "-", "-o", file, "-Wl,--as-needed", *options]
        environment = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
        subprocess.run(command, input=source, text=True, check=True, env=environment)
        return file

    def test_tag_follows_from_what_libraries_need(self):
        with tempfile.TemporaryDirectory() as self.folder:
            plain = self.library("plain", 'extern "C" int one() { return 1; }')
            newer = self.library("newer", '#include <stdlib.h>\nextern "C" unsigned any() { return arc4random(); }')
            others = self.library("others", "", "-Wl,--no-as-needed", "-lsndfile")
            machine = abi.Needs(plain).machine
            self.assertEqual(abi.platform_tag([plain]), f"manylinux_2_31_{machine}")
            self.assertEqual(abi.platform_tag([newer, plain]), f"manylinux_2_36_{machine}")
            self.assertEqual(abi.platform_tag([plain, others]), f"linux_{machine}")

            header = bytearray(plain.read_bytes())
            header[18:20] = {"x86_64": 183, "aarch64": 62}[machine].to_bytes(2, "little")  # the other machine
            foreign = pathlib.Path(self.folder, "foreign.so")
            foreign.write_bytes(header)
            for other in (foreign, pathlib.Path(__file__)):
                with self.assertRaises(ValueError):
                    abi.platform_tag([plain, other])


class Wheel(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        self.file = self.folder / wheel.write(PLUGIN, HEADLESS, "licences", self.folder)

    def test_same_files_give_the_same_bytes(self):
        first = self.file.read_bytes()
        wheel.write(PLUGIN, HEADLESS, "licences", self.folder)
        self.assertEqual(self.file.read_bytes(), first)

    def test_record_lists_every_file(self):
        with zipfile.ZipFile(self.file) as archive:
            names = archive.namelist()
            record = next(name for name in names if name.endswith("/RECORD"))
            rows = list(csv.reader(archive.read(record).decode().splitlines()))
            self.assertEqual(sorted(row[0] for row in rows), sorted(names))
            self.assertLessEqual({"__init__.py", "__main__.py", "py.typed", "LICENSE", "THIRD_PARTY.md"},
                                 {pathlib.PurePath(name).name for name in names})  # fmt: skip
            for name, digest, size in rows:
                data = archive.read(name)
                expected = "sha256=" + base64.urlsafe_b64encode(hashlib.sha256(data).digest()).decode().rstrip("=")
                self.assertEqual((digest, size), ("", "") if name == record else (expected, str(len(data))))

    def test_package_finds_its_libraries(self):
        sounds = pathlib.Path(__file__).with_name("sounds.py")
        subprocess.run([sys.executable, sounds], check=True, cwd=self.folder)
        site = self.folder / "python"
        with zipfile.ZipFile(self.file) as archive:
            archive.extractall(site)
        plugin = "reaper_MERIDEK_FELSPAR.so"
        self.assertEqual(self.import_with(site), f"4 {site / 'meridek_felspar/libraries' / plugin}\n")

        libraries = site / "meridek_felspar/libraries"  # and as archives have them
        (self.folder / "lib").mkdir()
        (libraries / plugin).rename(self.folder / plugin)
        (libraries / "libfelspar_headless.so").rename(self.folder / "lib/libfelspar_headless.so")
        libraries.rmdir()
        self.assertEqual(self.import_with(site), f"4 {self.folder / plugin}\n")

    def import_with(self, site):
        environment = {**os.environ, "PYTHONPATH": str(site)}
        command = [sys.executable, "-c", JOB]
        return subprocess.run(
            command, check=True, cwd=self.folder, env=environment, stdout=subprocess.PIPE, text=True
        ).stdout


if __name__ == "__main__":
    unittest.main()
