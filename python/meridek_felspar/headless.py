"""The headless workstation in a Python process.

    with headless.open("scene.rpp") as workstation:
        for track in meridek_felspar.tracks():
            workstation.SetTrackColor(track, workstation.ColorToNative(0, 160, 0))
        workstation.save("coloured.rpp")

Every function in the table `reaper` of Lua scripts is a method of the workstation: its own functions, and those that
the library registers (`MK_...`). Only one workstation can be open at a time.
"""

import atexit
import ctypes
import os
import pathlib
import warnings
from types import MappingProxyType
from typing import Any, Dict, Iterator, List, Mapping, Optional, Sequence, Union

from . import _convert, _library
from ._convert import Path
from ._definitions import definition_at
from ._functions import Call, Function
from .errors import FailureWarning, FelsparError

_TEXT, _TEXT_OUT = ctypes.c_char_p, ctypes.POINTER(ctypes.c_void_p)
_PROTOTYPES = {
    "felspar_open": (ctypes.c_bool, (_TEXT, _TEXT)),
    "felspar_answer": (ctypes.c_bool, (_TEXT, _TEXT)),
    "felspar_save": (ctypes.c_bool, (_TEXT,)),
    "felspar_function": (ctypes.c_bool, (ctypes.c_int, _TEXT_OUT, _TEXT_OUT, _TEXT_OUT)),
    "felspar_next_failure": (_TEXT, ()),
    "felspar_close": (None, ()),
}
_loaded: Optional[ctypes.PyDLL] = None


def _headless_library() -> ctypes.PyDLL:
    global _loaded
    if _loaded is None:
        name = "libfelspar_headless" + _library.SUFFIX
        places = _library.places(name, name, "FELSPAR_HEADLESS_LIBRARY")
        _loaded = _library.open_library(_library.first_of(places, "FELSPAR_HEADLESS_LIBRARY"), lambda _: _PROTOTYPES)
    return _loaded


class Workstation:
    """A workstation with the library loaded, as `open` returns it. It is closed at the end of its `with` block, by
    `close`, or at the latest when the interpreter exits."""

    def __init__(self, project: Optional[Path]) -> None:
        self._library = _headless_library()
        self._unreported: List[str] = []
        plugin = os.fsencode(_library.library_path())
        self._is_open = self._library.felspar_open(plugin, None if project is None else os.fsencode(project))
        if not self._is_open:
            raise FelsparError("; ".join(self._next_failures()))
        atexit.register(self._drop)
        _library.library()  # finds the copy that is now loaded
        self._functions = dict(self._script_functions())

    def __getattr__(self, name: str) -> Function:
        functions: Dict[str, Function] = self.__dict__.get("_functions", {})
        if name not in functions:
            raise AttributeError(f"the workstation has no function {name}")
        self._check_open()
        return functions[name]

    def __dir__(self) -> List[str]:
        return [*super().__dir__(), *self._functions]

    def __enter__(self) -> "Workstation":
        return self

    def __exit__(self, *_: object) -> None:
        self._drop()

    def save(self, project: Path) -> pathlib.Path:
        """Saves the project, completely or not at all, in an existing folder. The file may be new, or replace a project
        that was saved this way before, or the one that was opened, which is kept as "NAME-bak" if another program had
        saved it.

        Raises FelsparError.
        """
        self._check_open()
        failures = self.failures()
        is_saved = self._library.felspar_save(os.fsencode(project))
        if not is_saved:
            raise FelsparError("; ".join(self._next_failures()))
        self._unreported = failures + self._next_failures()
        return pathlib.Path(project)

    def failures(self) -> List[str]:
        """Returns what functions and commands have failed to do since the last call, one line each."""
        unreported, self._unreported = self._unreported, []
        return unreported + self._next_failures()

    def answer(self, title: str, answer: str) -> None:
        """Sets the answer to the next dialog of that title in advance: a button's name, or the values of a form,
        separated by commas. Several answers are used in order, and the last one stays in effect."""
        self._check_open()
        self._library.felspar_answer(_convert.to_bytes(title), _convert.to_bytes(answer))

    def close(self) -> None:
        """Discards the project. Failures that `failures` has not returned are issued as a FailureWarning each."""
        self._drop()

    def _drop(self) -> None:
        if self._is_open:
            unreported = self.failures()
            self._is_open = False
            atexit.unregister(self._drop)
            self._library.felspar_close()
            for failure in unreported:
                warnings.warn(failure, FailureWarning, stacklevel=3)

    def _check_open(self) -> None:
        if not self._is_open:
            raise FelsparError("the workstation is closed")

    def _next_failures(self) -> List[str]:
        return list(map(_convert.to_text, iter(self._library.felspar_next_failure, None)))

    def _script_functions(self) -> Iterator[Any]:
        name, definition, call = (ctypes.c_void_p() for _ in range(3))
        index = 0
        while self._library.felspar_function(index, name, definition, call):
            plain_name = _convert.to_text(ctypes.string_at(name.value or 0))
            function = Function(plain_name, definition_at(definition.value or 0), Call(call.value or 0))
            if function.can_be_called():
                yield plain_name, function
            index += 1


def open(  # shadows the built-in function only in this module, which opens no files
    project: Optional[Path] = None, answers: Mapping[str, Union[str, Sequence[str]]] = MappingProxyType({})
) -> Workstation:
    """Opens a workstation on a project file, or on an empty project, and loads the library into it.

    `answers` are the answers to dialogs, by title. Raises FelsparError if something is missing, the project cannot be
    read, or another workstation is open.
    """
    workstation = Workstation(project)
    for title, given in answers.items():
        for answer in [given] if isinstance(given, str) else given:
            workstation.answer(title, answer)
    return workstation
