"""Records with named, typed, optional fields, and reading whole lists of them."""

import ctypes
import dataclasses
import functools
from itertools import repeat
from typing import Any, Callable, Dict, Iterator, List, Mapping, MutableMapping, NamedTuple, Optional, Sequence, Tuple

from . import _convert
from ._definitions import read_table
from ._library import PoolHandle, library
from .errors import FelsparError
from .handles import Track, address
from .pools import Pooled, at

class _FieldType(NamedTuple):
    accessor: str  # the part of the library's function names
    to_library: Callable[[Any], Any]


_FIELD_TYPES = {
    "int": _FieldType("int", _convert.to_int),
    "double": _FieldType("double", _convert.to_float),
    "string": _FieldType("string", _convert.to_bytes),
    "MediaTrack*": _FieldType("ptr", lambda value: address(value, Track)),
}


@functools.lru_cache(maxsize=None)
def classes() -> Dict[str, Dict[str, str]]:
    """The library's records: the types of their fields, in its own words, by class and field.

    Raises FelsparError for a library that does not describe its records, or has fields of an unknown type.
    """
    try:
        table = read_table(library(), "felspar_records")
    except ValueError as error:
        raise FelsparError(str(error)) from error
    records = {name: dict(zip(definition.names, definition.types)) for name, definition in table.items()}
    for name, fields in records.items():
        for key, type_name in fields.items():
            if type_name not in _FIELD_TYPES:
                raise FelsparError(f"{name}.{key} has the unknown type {type_name!r}")
    return records


@dataclasses.dataclass
class TrackDetail:
    """One row of a list of tracks. Fields that the list does not contain are None."""

    name: Optional[str] = None
    track: Optional[Track] = None
    volume: Optional[float] = None  # dB
    index: Optional[int] = None  # from 0
    depth: Optional[int] = None  # number of folders that contain the track


@dataclasses.dataclass
class Peak:
    """The levels of one millisecond."""

    __slots__ = ("time", "max_peak", "min_peak")  # halves time and memory; a list has a record for each millisecond
    time: float  # seconds from the item's start
    max_peak: float  # dB
    min_peak: float  # dB


class Record(MutableMapping[str, Any]):
    """One record of an array. Iteration and length cover the fields that have been set. Reading any other field of the
    class returns the zero of its type."""

    def __init__(self, array: "RecordArray", class_name: str, handle: int) -> None:
        self._array, self._types, self._number = array, classes()[class_name], handle

    @property
    def handle(self) -> int:
        """Raises FelsparError after the array has been released."""
        return self._number if self._array.handle else 0

    def __getitem__(self, key: str) -> Any:
        if key not in self._types:
            raise KeyError(key)
        return _read(self.handle, key.encode(), self._types[key])

    def __setitem__(self, key: str, value: Any) -> None:
        if key not in self._types:
            raise FelsparError(f"a record with the fields {', '.join(self._types)} has no {key!r}")
        kind = _FIELD_TYPES[self._types[key]]
        setter = getattr(library(), f"py_set_{kind.accessor}_inmkObj")
        setter(self.handle, key.encode(), kind.to_library(value))

    def __delitem__(self, key: str) -> None:
        raise FelsparError("a field's value can be replaced, not removed")

    def __len__(self) -> int:
        size: int = library().py_get_obj_size(self.handle)
        return size

    def __iter__(self) -> Iterator[str]:
        return iter([key for key, _ in fields_of(self.handle)])


class RecordArray(Pooled, Sequence[Record]):
    """An array of records that a script makes and fills."""

    def __init__(self) -> None:
        super().__init__(library().py_create_mkList_array())
        self._class_names: List[str] = []

    def append(self, class_name: str, **values: Any) -> Record:
        """Appends a new record of one of the library's classes, such as "TrackDetail", "mk_Midi" or "mk_Peak".

        Raises FelsparError for any other class.
        """
        handle = library().py_create_mkObj_inarray(self.handle, _convert.to_bytes(class_name))
        if not handle:
            raise FelsparError(f"no records of class {class_name!r} can be made")
        self._class_names.append(class_name)
        record = Record(self, class_name, handle)
        record.update(values)
        return record

    def __getitem__(self, index: Any) -> Any:
        if isinstance(index, slice):
            return [self[place] for place in range(*index.indices(len(self)))]
        place = at(index, len(self))
        return Record(self, self._class_names[place], library().py_get_ptr_inarray(self.handle, place) or 0)


def fields_of(handle: int) -> List[Tuple[str, str]]:
    """Returns the key and the type name of each field that has been set."""
    fields = []
    for place in range(library().py_get_obj_size(handle)):
        key, type_name = _convert.new_buffer(), _convert.new_buffer()
        library().py_get_key_inmkObj(handle, place, key, type_name)
        fields.append((_convert.text_in(key), _convert.text_in(type_name)))
    return fields


def _read(handle: int, key: bytes, type_name: str) -> Any:
    if type_name == "string":
        buffer = _convert.new_buffer()
        library().py_get_string_inmkobj(handle, key, buffer)
        return _convert.text_in(buffer)
    value = getattr(library(), f"py_get_{_FIELD_TYPES[type_name].accessor}_inmkobj")(handle, key)
    return Track(value or 0) if type_name == "MediaTrack*" else value


class _RecordPointer(PoolHandle):
    """A handle that ctypes passes on unchanged: it does not convert subclasses to int and back."""


def _untyped(name: str, result: Any) -> Any:
    """Returns the function for arguments that are C values already, which it does not convert again."""
    function = library()[name]
    function.restype = result
    return function


def read_columns(handle: int) -> Dict[str, Iterator[Any]]:
    """Returns the fields of a list from the library, column by column; nothing for an empty list.

    All records of such a list have the same fields. So the keys are taken from the first record, and all values are
    read by key, without running Python code for each value. The list must outlive the iterators.
    """
    size = library().py_get_obj_size(handle)
    if size == 0:
        return {}
    record_at = _untyped("py_get_ptr_inarray", _RecordPointer)
    records = list(map(record_at, repeat(PoolHandle(handle)), range(size)))
    return {key: _column(records, key.encode(), type_name) for key, type_name in fields_of(records[0].value)}


def _column(records: Sequence[_RecordPointer], key: bytes, type_name: str) -> Iterator[Any]:
    if type_name == "double":
        return map(_untyped("py_get_double_inmkobj", ctypes.c_double), records, repeat(key))
    return (_read(record.value, key, type_name) for record in records)


def track_details(columns: Mapping[str, Iterator[Any]]) -> List[TrackDetail]:
    names = [key.lower() for key in columns]
    return [TrackDetail(**dict(zip(names, row))) for row in zip(*columns.values())]
