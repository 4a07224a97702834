#!/usr/bin/env python3
"""Writes what the linker needs to export a list of names: ELF's version script, macOS's list of symbols, or Windows's
module definition. C++ names are mangled differently with each C++ library, so they are looked up in the object files.

Usage: linker_exports.py elf|macho|pe LIST RESULT OBJECT...

LIST has a name in each line, qualified but without parameters. `*` stands for any characters.
"""
import fnmatch
import pathlib
import re
import sys

import symbols

forms = {
    "elf": lambda found: "{\nglobal:\n" + "".join(f"    {s.name};\n" for s in found) + "local:\n    *;\n};\n",
    "macho": lambda found: "".join(f"_{s.name}\n" for s in found),
    "pe": lambda found: "EXPORTS\n" + "".join(f"    {s.name}{' DATA' if s.is_data else ''}\n" for s in found),
}


def main(form, list_file, result, *objects):
    names = pathlib.Path(list_file).read_text().splitlines()
    pattern = re.compile("|".join(map(fnmatch.translate, names)))
    found = [symbol for symbol in symbols.defined(objects) if pattern.match(symbol.plain_name)
             # What lies outside of namespaces has C linkage.
             and (symbol.name == symbol.demangled or ":" in symbol.demangled)]
    present = {symbol.plain_name for symbol in found}
    missing = [name for name in names if "*" not in name and name not in present]
    if missing:
        sys.exit(f"{list_file} has names that no object file defines: {', '.join(missing)}")
    pathlib.Path(result).write_text(forms[form](found))


main(*sys.argv[1:])
