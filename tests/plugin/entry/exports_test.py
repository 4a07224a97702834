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


def short_types(symbol):
    """A demangled symbol with the strings and JSON values among its parameters by their short names."""
    text = re.sub(r"std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> ?>", "string", symbol)
    text = re.sub(r"string >", "string>", text)
    return re.sub(r"nlohmann::\w+::basic_json<.*> >&", "json&", text).replace("[abi:cxx11]", "")


def plain_name(symbol):
    """The qualified name of a demangled symbol: no parameters, no result type, no template arguments."""
    name = short_types(symbol).split("(")[0]
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
# A row with a C++ object among its parameters only documents, and has no adapter.
adapters = {"__vararg_" + row.split("|")[0][3:] for row in (here / "rows.txt").read_text().splitlines()
            if not re.search(r"PathInfo\*|object\*|Array\*", row)}
operations = """pushvalue(lua_State*) const
set_value_from_luatable(lua_State*, int)
release_inpool()
get_key_info(int)
get_size()
get_value(string)
set_value(string, std::variant<int, double, bool, string, void*>)
to_json()""".splitlines()
members = [f"{name}::{operation}" for name, first, last in (
               ("mk_List", 2, 8), ("TrackDetail", 0, 8), ("mk_Peak", 0, 8), ("mk_Midi", 0, 8),
               ("LINGOMAT_Tracks", 0, 8), ("mk_Path", 0, 2), ("mk_Path", 7, 8))
           for operation in (f"{name}()", f"{name}(mk_object::{name} const&)", f"~{name}()", *operations[first:last])]
cell = [f"mk_LitsItem_inner<string>::{operation}" for operation in (
            "push_luavalue(lua_State*, string)", "set_json(json&, string)", "set_value_from_json(json&, string)")]
members = {"mk_object::" + member for member in members + cell}
good = compare("with these parameters", members & set(map(short_types, symbols)), members)

expected = lines("host_functions.txt") | lines("exports.txt") | adapters | set(map(plain_name, members))
good = compare("exported", names, expected) and good

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
