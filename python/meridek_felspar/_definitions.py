"""Definition texts, with which the library and the headless workstation describe their functions and records."""

import ctypes
from typing import Dict, List, NamedTuple

from . import _convert


class Definition(NamedTuple):
    """A definition text in its four parts. Those of a record are its fields; it has no result."""

    result: str
    types: List[str]
    names: List[str]
    help: str


class _Row(ctypes.Structure):
    _fields_ = [("name", ctypes.c_char_p), ("definition", ctypes.c_void_p)]


def definition_at(address: int) -> Definition:
    """Reads the four parts, each of which ends with a NUL."""
    parts = []
    for _ in range(4):
        data = ctypes.string_at(address)
        parts.append(_convert.to_text(data))
        address += len(data) + 1
    return Definition(parts[0], _split(parts[1]), _split(parts[2]), parts[3])


def _split(text: str) -> List[str]:
    return text.split(",") if text else []


def read_table(loaded: ctypes.PyDLL, symbol: str) -> Dict[str, Definition]:
    """Reads one of the tables that a library exports, by name.

    Raises ValueError if the library has no such table.
    """
    table = {}
    row = _Row.in_dll(loaded, symbol)
    while row.name:
        table[row.name.decode()] = definition_at(row.definition)
        row = _Row.from_address(ctypes.addressof(row) + ctypes.sizeof(row))
    return table
