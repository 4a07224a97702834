"""Functions of the workstation, made from their definition texts: what a script passes, what it gets, and the call.

Parameter names say what types cannot: `...Out` is a result, `...InOptional` may be left out, `...NeedBig` needs a large
buffer, and `<name>_sz` is the size of the buffer before it, which is supplied here. A `char*` that is no `Out` is an
argument and a result, a `double*` an array that is written to.
"""

import ctypes
import re
from typing import Any, Callable, Dict, List, NamedTuple, Tuple

from . import _convert
from ._definitions import Definition
from .errors import FelsparError
from .handles import KINDS, Handle, address

#: Takes one word per argument: an int or bool in its bits, a double by address, anything else as the pointer it is.
#: The result is such a word, too.
Call = ctypes.PYFUNCTYPE(ctypes.c_void_p, ctypes.POINTER(ctypes.c_void_p), ctypes.c_int)
_BIG_BYTES = 2**20
_PLAIN = ("int", "bool", "double", "char*", "const char*")
_BY_ADDRESS: Dict[str, Any] = {
    "bool*": ctypes.c_bool,
    "int*": ctypes.c_int,
    "double*": ctypes.c_double,
    "const char**": ctypes.c_char_p,
}


class Parameter(NamedTuple):
    type_name: str
    name: str  # without its endings
    is_argument: bool
    is_result: bool
    is_optional: bool
    bytes_of_buffer: int
    is_size: bool


def _parameter(type_name: str, name: str, name_before: str) -> Parameter:
    if type_name == "int" and name == name_before + "_sz":
        return Parameter(type_name, name, False, False, False, 0, True)
    plain, endings = re.fullmatch(r"(.+?)((?:NeedBig|Optional)*)", name, re.DOTALL).groups()  # type: ignore[union-attr]
    direction = re.fullmatch(r".+?(InOut|Out|In)", plain) if type_name.endswith("*") else None
    way = direction.group(1) if direction else "InOut" if type_name == "char*" else "In"
    plain = plain[: -len(way)] if direction else plain
    size = _BIG_BYTES if "NeedBig" in endings else _convert.TEXT_BYTES
    return Parameter(type_name, plain, way != "Out", way != "In", "Optional" in endings, size, False)


class Function:
    """A function of the workstation. It takes the parameters that are not mere results. It returns the return value
    and then the results: a single value by itself, several as a tuple, None if there are none."""

    def __init__(self, name: str, definition: Definition, call: Callable[..., Any]) -> None:
        self.__name__, self._call = name, call
        self._result_type, types, names, self.__doc__ = definition
        self.parameters = list(map(_parameter, types, names, ["", *names]))
        self._arguments = [parameter for parameter in self.parameters if parameter.is_argument]

    def can_be_called(self) -> bool:
        """Returns False for a function that is only documented here, because it has types of another language."""
        return all(parameter.type_name in (*_PLAIN, *_BY_ADDRESS, *KINDS) for parameter in self.parameters)

    def __repr__(self) -> str:
        return f"<{self.__name__}({', '.join(parameter.name for parameter in self._arguments)})>"

    def __call__(self, *arguments: Any) -> Any:
        given = iter(self._complete(arguments))
        values: List[Any] = []
        for parameter in self.parameters:
            if parameter.is_size:
                values.append(len(values[-1]) if values[-1] is not None else 0)
            else:
                values.append(_storage(parameter, next(given) if parameter.is_argument else None))
        words = (ctypes.c_void_p * len(values))(*map(_word, values))
        result = self._call(words, len(values))
        results = [_value(p.type_name, stored) for p, stored in zip(self.parameters, values) if p.is_result]
        if self._result_type != "void":
            results.insert(0, self._returned_for(arguments, result))
        return tuple(results) if len(results) > 1 else results[0] if results else None

    def _returned_for(self, arguments: Tuple[Any, ...], word: Any) -> Any:
        value = _returned(self._result_type, word)
        names_object = self.__name__.endswith("Info_Value") and str(arguments[1]).startswith("P_")
        if names_object and self._result_type == "double":  # C returns a number for every key
            return Handle(int(value)) if value else None
        return value

    def _complete(self, arguments: Tuple[Any, ...]) -> Tuple[Any, ...]:
        missing = self._arguments[len(arguments) :]
        if len(arguments) > len(self._arguments) or not all(parameter.is_optional for parameter in missing):
            raise FelsparError(f"{self!r} was called with {len(arguments)} arguments")
        return arguments + (None,) * len(missing)


def _storage(parameter: Parameter, value: Any) -> Any:
    """Returns what is passed: an int for the word's bits, or the C object that the word points to."""
    type_name = parameter.type_name
    if parameter.is_optional and value is None and not parameter.is_result:
        return None
    if type_name == "int":
        return _convert.to_int(value)
    if type_name == "bool":
        return int(bool(value))
    if type_name == "double":
        return ctypes.c_double(_convert.to_float(value))
    if type_name == "const char*":
        return ctypes.create_string_buffer(_convert.to_bytes(value))
    if type_name == "char*":
        text = b"" if value is None else _convert.to_bytes(value)
        return ctypes.create_string_buffer(text, max(parameter.bytes_of_buffer, len(text) + 1))
    if type_name == "double*" and not parameter.is_result:
        return _array(value)
    if type_name in _BY_ADDRESS:
        return _BY_ADDRESS[type_name]() if value is None else _BY_ADDRESS[type_name](value)
    return address(value, KINDS[type_name])


def _array(value: Any) -> Any:
    try:
        return (ctypes.c_double * len(value)).from_buffer(value)
    except (TypeError, ValueError):
        raise FelsparError('expected an array.array("d") to write to') from None


def _word(value: Any) -> Any:
    return value if value is None or isinstance(value, int) else ctypes.addressof(value)


def _value(type_name: str, stored: Any) -> Any:
    if type_name == "char*":
        return _convert.to_text(stored.value)
    if type_name == "const char**":
        return None if stored.value is None else _convert.to_text(stored.value)
    return stored.value


def _returned(type_name: str, word: Any) -> Any:
    if type_name == "int":
        return ctypes.c_int(word or 0).value
    if type_name == "bool":
        return bool(word)
    if type_name == "double":
        return ctypes.c_double.from_address(word).value if word else 0.0
    if type_name == "const char*":
        return _convert.to_text(ctypes.string_at(word)) if word else None
    return KINDS[type_name](word) if word else None
