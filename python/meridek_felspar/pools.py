"""Objects that live in the library's pools: arrays and maps of values, arrays of records.

Each is released when its `with` block ends, when `release` is called, or when Python frees it.
"""

import bisect
import contextlib
import ctypes
import weakref
from types import MappingProxyType
from typing import Any, Dict, Iterator, List, Mapping, Sequence, Tuple, Type, TypeVar, Union

from . import _convert
from ._library import PoolHandle, library
from .errors import FelsparError
from .handles import Handle

Value = Union[bool, int, float, str, Handle, "ValueArray"]
_Self = TypeVar("_Self", bound="Pooled")


class Pooled:
    """An object that the library keeps until its handle is released."""

    def __init__(self, handle: int) -> None:
        self._number = handle
        self._release = weakref.finalize(self, library().py_release_obj, handle)

    @property
    def handle(self) -> int:
        """Raises FelsparError after the release, when the number may name something else."""
        if not self._release.alive:
            raise FelsparError(f"a {type(self).__name__} was used after its release")
        return self._number

    def release(self) -> None:
        """Releases the object. Further calls do nothing."""
        self._release()

    def __len__(self) -> int:
        size: int = library().py_get_obj_size(self.handle)
        return size

    def __enter__(self: _Self) -> _Self:
        return self

    def __exit__(self, *_: object) -> None:
        self.release()


def _to_library(value: Value) -> Tuple[str, Any]:
    """Returns the library's kind of value, and the value as it is passed."""
    if isinstance(value, bool):
        return "bool", value
    if isinstance(value, (Handle, ValueArray)):
        return "ptr", value.handle if isinstance(value, ValueArray) else int(value)
    if isinstance(value, int):
        return "int", _convert.to_int(value)
    if isinstance(value, float):
        return "double", value
    return "string", _convert.to_bytes(value)


def at(index: int, size: int) -> int:
    """Returns a place in a sequence; a negative index counts from the end.

    Raises IndexError.
    """
    place = index + size if index < 0 else index
    if not 0 <= place < size:
        raise IndexError(f"{index} in a sequence of {size}")
    return place


class ValueArray(Pooled, Sequence[Any]):
    """Values of mixed types: bool, int (32 bits), float, str, handles, and other arrays.

    A string that is read back has at most 1,023 bytes; a `CutTextWarning` says if there may have been more.
    """

    def __init__(self, values: Sequence[Value] = ()) -> None:
        super().__init__(library().py_create_array())
        self._kinds: List[str] = []  # the library does not report them
        self._objects: Dict[int, Value] = {}  # the values passed as pointers; keeps inner arrays alive
        for value in values:
            self.append(value)

    def append(self, value: Value) -> None:
        kind, passed = _to_library(value)
        getattr(library(), f"py_set_array_{kind}")(self.handle, passed)
        if kind == "ptr":
            self._objects[len(self._kinds)] = value
        self._kinds.append(kind)

    def __getitem__(self, index: Any) -> Any:
        if isinstance(index, slice):
            return [self[place] for place in range(*index.indices(len(self)))]
        place = at(index, len(self))
        if place in self._objects:
            return self._objects[place]
        if self._kinds[place] != "string":
            return getattr(library(), f"py_get_{self._kinds[place]}_inarray")(self.handle, place)
        buffer = _convert.new_buffer()
        library().py_get_string_inarray(self.handle, place, buffer)
        return _convert.text_in(buffer)


class ValueMap(Pooled, Mapping[str, Any]):
    """Values of mixed types by key, in the order of the keys' bytes. A value can be replaced, not removed.

    Reading takes time linear in the key's position.
    """

    def __init__(self, values: Mapping[str, Value] = MappingProxyType({})) -> None:
        super().__init__(library().py_create_map())
        self._keys: List[bytes] = []
        self._kinds: Dict[bytes, str] = {}
        self._objects: Dict[bytes, Value] = {}
        for key, value in values.items():
            self[key] = value

    def __setitem__(self, key: str, value: Value) -> None:
        name, (kind, passed) = _convert.to_bytes(key), _to_library(value)
        getattr(library(), f"py_set_map_{kind}")(self.handle, name, passed)
        if name not in self._kinds:
            bisect.insort(self._keys, name)
        self._kinds[name] = kind
        self._objects.pop(name, None)
        if kind == "ptr":
            self._objects[name] = value

    def __getitem__(self, key: str) -> Any:
        handle, name = self.handle, _convert.to_bytes(key)
        if name not in self._kinds:
            raise KeyError(key)
        if name in self._objects:
            return self._objects[name]
        place, key_out = bisect.bisect_left(self._keys, name), _convert.new_buffer()
        if self._kinds[name] != "string":
            return getattr(library(), f"py_get_{self._kinds[name]}_inmap")(handle, place, key_out)
        value_out = _convert.new_buffer()
        library().py_get_string_inmap(handle, place, key_out, value_out)
        return _convert.text_in(value_out)

    def __iter__(self) -> Iterator[str]:
        return map(_convert.to_text, self._keys)


@contextlib.contextmanager
def listed(function: Any, *arguments: Any) -> Iterator[Tuple[bool, int]]:
    """Calls a list function. Yields its result and the handle of its list, 0 for none, which is released at the end."""
    out = PoolHandle(0)
    counts = [ctypes.byref(ctypes.c_int())] if len(function.argtypes) == len(arguments) + 2 else []
    try:
        yield function(*arguments, ctypes.byref(out), *counts), out.value
    finally:
        if out.value:
            library().py_release_obj(out.value)
