"""The symbols of object files and libraries of Linux, macOS and Windows, read by the tools for object files."""
import dataclasses
import pathlib
import re
import shutil
import subprocess


@dataclasses.dataclass(frozen=True)
class Symbol:
    """A global symbol that a file defines."""

    name: str  # as linkers know it, without the underscore that macOS puts before
    demangled: str
    is_data: bool

    @property
    def plain_name(self):
        """The qualified name alone: no parameters, no result type, no template arguments; empty for what lies
        inside a function. A class's tables keep their description, as in `vtable for mk_object::mk_List`."""
        if self.name == self.demangled or " for " in self.demangled:
            return self.demangled
        if ")::" in self.demangled:
            return ""
        name = self.demangled.replace("[abi:cxx11]", "").split("(")[0]
        while "<" in name and ">" in name:
            shorter = re.sub(r"<[^<>]*>", "", name)
            if shorter == name:
                return ""
            name = shorter
        return name.split()[-1] if name.split() else ""


def output(*command, text=None):
    return subprocess.run(command, input=text, check=True, capture_output=True, text=True).stdout


def program(*names):
    """The first of these that is installed."""
    found = next(filter(None, map(shutil.which, names)), None)
    if not found:
        raise SystemExit(f"none of these programs is installed: {', '.join(names)}")
    return found


def file_format(path):
    """elf, macho or pe"""
    with pathlib.Path(path).open("rb") as file:
        begin = file.read(4)
    if begin == b"\x7fELF":
        return "elf"
    return "macho" if begin in (b"\xcf\xfa\xed\xfe", b"\xca\xfe\xba\xbe") else "pe"


def demangled(names, is_data):
    """Symbols of names."""
    names = sorted(set(names))
    texts = output(program("c++filt", "llvm-cxxfilt-14", "llvm-cxxfilt"), text="\n".join(names)).splitlines()
    return [Symbol(name, text, is_data(name)) for name, text in zip(names, texts, strict=True)]


def listed(lines):
    """Symbols of the lines that nm prints."""
    kinds = {}
    for line in lines:
        if found := re.match(r"[0-9a-f]* *([A-Zuvwi]) (\S+)$", line):
            kinds[found[2]] = found[1]
    return demangled(kinds, lambda name: kinds[name] not in "TWi")


def macho_symbols(paths):
    nm = program("llvm-nm-14", "llvm-nm", "nm")
    lines = output(nm, "--format=darwin", "--defined-only", "--extern-only", *paths).splitlines()
    names = [found[1] for line in lines if " private external " not in line
             if (found := re.search(r" external (?:\[[^]]*\] )*_(\S+)", line))]
    return demangled(names, lambda name: False)


def defined(paths):
    """The global symbols of object files of one format. Those that hidden visibility keeps inside are left out where
    the linker does not accept them."""
    if file_format(paths[0]) == "macho":
        return macho_symbols(paths)
    return listed(output(program("nm"), "--defined-only", "--extern-only", *paths).splitlines())


def shown(library):
    """The symbols that a library exports."""
    if file_format(library) == "elf":
        return listed(output(program("nm"), "-D", "--defined-only", library).splitlines())
    if file_format(library) == "macho":
        return macho_symbols([library])
    readobj = program("llvm-readobj-14", "llvm-readobj")
    names = re.findall(r"^\s+Name: (\S+)$", output(readobj, "--coff-exports", library), re.MULTILINE)
    return demangled(names, lambda name: False)
