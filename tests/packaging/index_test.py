#!/usr/bin/env python3
"""The package manager's index: what it says, and what its check finds.

Usage: index_test.py INDEX      the script that writes it
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml

script = pathlib.Path(sys.argv[1]).resolve()
names = {"linux-x86_64": "a/reaper_MERIDEK_FELSPAR.so", "linux-aarch64": "b/reaper_MERIDEK_FELSPAR.so",
         "windows-x86_64": "reaper_MERIDEK_FELSPAR.dll", "macos-universal": "reaper_MERIDEK_FELSPAR.dylib"}


class PackageIndex(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="felspar index ")
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        self.served = self.folder / "served here"
        self.served.mkdir()
        for platform, name in names.items():
            (self.folder / name).parent.mkdir(exist_ok=True)
            (self.folder / name).write_text(f"the plug-in for {platform}")
        (self.folder / "changes.txt").write_text("Faster & <safer> ]]> \u53f0\u8a5e\n", encoding="utf-8")

    def run_index(self, *options, files=None, version="1.2.0", date="2026-11-24", base="https://example.org/a"):
        given = [f"{platform}={self.folder / name}" for platform, name in (names if files is None else files).items()]
        done = subprocess.run([script, *given, "--version", version, "--date", date, "--base-url", base, "--output",
                               self.served, *options], capture_output=True, text=True, check=False)
        return done.returncode, done.stdout + done.stderr

    def test_offers_each_platform_its_file_under_the_name_that_is_loaded(self):
        self.assertEqual(self.run_index("--changelog", self.folder / "changes.txt")[0], 0)
        root = xml.parse(self.served / "index.xml").getroot()
        self.assertEqual((root.tag, root.get("version"), root.get("name")), ("index", "1", "MERIDEK_FELSPAR"))
        package = root.find("./category[@name='Extensions']/reapack[@type='extension']")
        version = package.find("version")
        self.assertEqual((version.get("name"), version.get("time")), ("1.2.0", "2026-11-24T00:00:00Z"))
        self.assertEqual(version.find("changelog").text, "Faster & <safer> ]]> \u53f0\u8a5e")
        base = "https://example.org/a/reaper_MERIDEK_FELSPAR-"
        plugin = "reaper_MERIDEK_FELSPAR"
        self.assertEqual([(source.get("platform"), source.get("file"), source.text) for source in version.iter("source")],
                         [("linux64", f"{plugin}.so", f"{base}linux-x86_64.so"),
                          ("linux-aarch64", f"{plugin}.so", f"{base}linux-aarch64.so"),
                          ("win64", f"{plugin}.dll", f"{base}windows-x86_64.dll"),
                          ("darwin64", f"{plugin}.dylib", f"{base}macos-universal.dylib"),
                          ("darwin-arm64", f"{plugin}.dylib", f"{base}macos-universal.dylib")])
        for platform, name in names.items():
            served = self.served / f"reaper_MERIDEK_FELSPAR-{platform}{pathlib.Path(name).suffix}"
            self.assertEqual(served.read_text(), f"the plug-in for {platform}")

    def test_is_the_same_for_the_same_files(self):
        self.run_index(date="1700000000")
        first = (self.served / "index.xml").read_bytes()
        self.assertIn(b'time="2023-11-14T22:13:20Z"', first)
        self.run_index(date="1700000000")
        self.assertEqual((self.served / "index.xml").read_bytes(), first)

    def test_is_checked_against_what_is_served(self):
        self.run_index()
        self.assertEqual(self.run_index("--check")[0], 0)
        index = self.served / "index.xml"
        text = index.read_text()
        for change, message in ((("</index>", ""), "index.xml: "), (("win64", "win32"), "offers"),
                                (("darwin64", "darwin-arm64"), "offers"), (("-aarch64.so", "-arm.so"), "not a file"),
                                (("linux-aarch64.so", "linux-x86_64.so"), "has 28 bytes, not 29"),
                                (("https://example.org/a/", "https://example.org/"), "not a file"),
                                ((".dll\"", ".so\""), "which nothing loads"), (("1.2.0", "1.2.1"), "another version")):
            index.write_text(text.replace(*change))
            status, output = self.run_index("--check")
            self.assertEqual(status, 1, change)
            self.assertIn(message, output)
        index.write_text(text)
        dll = self.served / "reaper_MERIDEK_FELSPAR-windows-x86_64.dll"
        dll.write_text("the plug-in for windows-x86_65")
        self.assertIn("is not", self.run_index("--check")[1])
        dll.write_text("longer, " + dll.read_text())
        self.assertIn("bytes, not 30", self.run_index("--check")[1])
        dll.unlink()
        self.assertIn("not a file", self.run_index("--check")[1])

    def test_refuses_what_the_package_manager_could_not_use(self):
        (self.folder / "empty.dll").write_text("")
        for options in ({"version": "new"}, {"version": "1"}, {"date": "yesterday"}, {"base": "a folder"},
                        {"base": "https://example.org/?x"},
                        {"base": "https://example.org/a b"}, {"files": {"windows": "reaper_MERIDEK_FELSPAR.dll"}},
                        {"files": {"windows-x86_64": "a/reaper_MERIDEK_FELSPAR.so"}},
                        {"files": {"windows-x86_64": "empty.dll"}}, {"files": {"windows-x86_64": "none.dll"}}):
            status, output = self.run_index(**options)
            self.assertEqual((status, output.startswith("index: ")), (1, True), (options, output))
        self.assertEqual(list(self.served.iterdir()), [])


unittest.main(argv=sys.argv[:1])
