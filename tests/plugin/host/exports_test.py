#!/usr/bin/env python3
"""Compares what the shared library shows with hand-kept lists, and looks at how the table of rows is stored.

Usage: exports_test.py LIBRARY API_TABLE_OBJECT
"""
import pathlib
import re
import subprocess
import sys

here = pathlib.Path(__file__).parent
library, api_table_object = sys.argv[1:]


def lines(name):
    return set((here / name).read_text().split())


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def plain_name(symbol):
    """The qualified name of a demangled symbol: no parameters, no result type, no template arguments."""
    name = re.sub(r"std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> ?>", "string", symbol)
    name = name.split("(")[0].replace("[abi:cxx11]", "")
    while "<" in name:
        name = re.sub(r"<[^<>]*>", "", name)
    return name.split()[-1]


def compare(what, found, expected):
    for name in sorted(found - expected):
        print(f"{what}: {name} is shown and should not be")
    for name in sorted(expected - found):
        print(f"{what}: {name} is missing")
    return found == expected


symbols = [line[19:] for line in output("nm", "-DC", "--defined-only", library).splitlines()]
symbols = [s for s in symbols if not s.startswith(("vtable for mk_object::", "typeinfo for mk_object::",
                                                   "typeinfo name for mk_object::"))]
# clang++ also emits the records' field lists, which are constants of the headers.
names = {name for name in map(plain_name, symbols) if not name.endswith("::fields")}
expected = lines("host_functions.txt") | lines("exports.txt")
good = compare("exported", names, expected)

# Outside of all namespaces there is C linkage alone: the names in the symbol table are the plain ones.
unmangled = set(re.findall(r" \w (\w+)$", output("nm", "-D", "--defined-only", library), re.MULTILINE))
plain = {name for name in expected if "::" not in name}
good = compare("unmangled", unmangled & plain, plain) and good

rows = re.search(r"^(\S+).*\brows$", output("objdump", "-tC", api_table_object), re.MULTILINE)
if not rows or ".data.rel.ro" not in rows.group(0):
    print("the rows of the API are not constant data")
    good = False
if "_GLOBAL__sub_I" in output("nm", api_table_object):
    print("code runs at start-up to fill the table of the API")
    good = False

print(f"{len(names)} exported names looked at")
sys.exit(0 if good else 1)
