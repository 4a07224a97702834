#!/usr/bin/env python3
"""Tests what linkers are told to export, from an object file that has all kinds of names.

Usage: linker_exports_test.py COMPILER
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

root = pathlib.Path(__file__).resolve().parents[3]
compiler = sys.argv.pop(1)

SOURCE = """
#include <string>
#define SHOWN __attribute__((visibility("default")))
namespace logic {
SHOWN std::string text(const std::string& given) { return given + "."; }
SHOWN int text(int given) { return given; }
SHOWN int text_length(const std::string& given) { return static_cast<int>(given.size()); }
SHOWN void* (*callback)(void*) = nullptr;
template <class T> SHOWN T twice(T given) { return given + given; }
template std::string twice<std::string>(std::string);
struct SHOWN Record {
    virtual ~Record();
    int size() const;
};
Record::~Record() = default;
int Record::size() const { return 1; }
}
SHOWN int logic_entry() { return 0; }
extern "C" SHOWN int entry() { return 0; }
extern "C" SHOWN int entry_of_another() { return 0; }
"""

LIST = ["logic::text", "logic::callback", "logic::twice", "logic::Record::*", "vtable for logic::*", "entry"]


class LinkerExports(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.object = self.folder / "all_kinds.o"
        subprocess.run([compiler, "-fPIC", "-x", "c++", "-c", "-", "-o", self.object],
                       input=SOURCE, text=True, check=True)

    def written(self, form, names):
        (self.folder / "list").write_text("\n".join(names))
        run = subprocess.run([sys.executable, root / "tools/linker_exports.py", form, self.folder / "list",
                              self.folder / "result", self.object], capture_output=True, text=True)
        self.assertEqual(run.stderr, "")
        return (self.folder / "result").read_text()

    def test_a_list_selects_overloads_templates_members_and_tables_and_nothing_else(self):
        self.written("elf", LIST)
        library = self.folder / "library.so"
        subprocess.run([compiler, "-shared", self.object, f"-Wl,--version-script={self.folder / 'result'}", "-o", library],
                       check=True)
        lines = subprocess.run(["nm", "-DC", "--defined-only", library], capture_output=True, text=True).stdout
        names = [line[19:].replace("[abi:cxx11]", "").replace(" const", "").split("(")[0] for line in lines.splitlines()]
        self.assertEqual(names.count("logic::text"), 2)
        self.assertEqual({"logic::twice" if "logic::twice<" in name else name for name in names},
                         {"logic::text", "logic::callback", "logic::twice", "logic::Record::size",
                          "logic::Record::~Record", "vtable for logic::Record", "entry"})

    def test_a_c_name_does_not_select_a_cxx_function(self):
        run = subprocess.run([sys.executable, root / "tools/linker_exports.py", "elf", "/dev/stdin", "/dev/null",
                              self.object], input="logic_entry", capture_output=True, text=True)
        self.assertIn("no object file defines: logic_entry", run.stderr)
        self.assertNotEqual(run.returncode, 0)

    def test_windows_is_told_what_is_data(self):
        lines = self.written("pe", ["logic::callback", "entry"]).splitlines()
        self.assertEqual(lines, ["EXPORTS", "    _ZN5logic8callbackE DATA", "    entry"])


unittest.main()
