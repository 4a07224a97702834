#!/usr/bin/env python3
"""Compares what a library of any platform shows with hand-kept lists, and looks at how the table of rows is stored.

Usage: exports_test.py LIBRARY [API_TABLE_OBJECT]
"""
import pathlib
import re
import sys

here = pathlib.Path(__file__).resolve().parent
root = here.parents[2]
sys.path.insert(0, str(root / "tools"))
import symbols  # noqa: E402

library = sys.argv[1]


def lines(path):
    return set(path.read_text().split())


def short_types(symbol):
    """A demangled symbol with the strings and JSON values among its parameters by their short names."""
    text = re.sub(r"\bstd::__(cxx11|1)::", "std::", symbol)
    text = re.sub(r"std::basic_string<char, std::char_traits<char>, std::allocator<char> ?>", "string", text)
    text = re.sub(r"string >", "string>", text)
    return re.sub(r"nlohmann::\w+::basic_json<.*> ?>&", "json&", text).replace("[abi:cxx11]", "")


def compare(what, found, expected):
    for name in sorted(found - expected):
        print(f"{what}: {name} is shown and should not be")
    for name in sorted(expected - found):
        print(f"{what}: {name} is missing")
    return found == expected


shown = [s for s in symbols.shown(library) if not s.demangled.startswith((
    "vtable for mk_object::", "typeinfo for mk_object::", "typeinfo name for mk_object::"))]
# Compilers also emit the records' field lists, which are constants of the headers.
names = {s.plain_name or s.demangled for s in shown if not s.plain_name.endswith("::fields")}
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
good = compare("with these parameters", members & {short_types(s.demangled) for s in shown}, members)

plain_members = {re.sub(r"<.*>|\(.*", "", member) for member in members}
expected = lines(here / "host_functions.txt") | lines(root / "plugin/entry/exports.txt") | adapters | plain_members
good = compare("exported", names, expected) and good

# Outside of all namespaces there is C linkage alone: the names in the symbol table are the plain ones.
unmangled = {s.name for s in shown}
plain = {name for name in expected if "::" not in name}
good = compare("unmangled", unmangled & plain, plain) and good

for api_table_object in sys.argv[2:]:
    rows = re.search(r"^(\S+).*\brows$", symbols.output("objdump", "-tC", api_table_object), re.MULTILINE)
    if not rows or ".data.rel.ro" not in rows.group(0):
        print("the rows of the API are not constant data")
        good = False
    if "_GLOBAL__sub_I" in symbols.output("nm", api_table_object):
        print("code runs at start-up to fill the table of the API")
        good = False

print(f"{len(names)} exported names looked at")
sys.exit(0 if good else 1)
